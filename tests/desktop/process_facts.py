"""What the kernel says about processes."""

import os
import pathlib
import re


def status(pid: int, field: str) -> str:
    text = pathlib.Path(f"/proc/{pid}/status").read_text()
    return re.search(rf"^{field}:\s*(.*)$", text, re.MULTILINE)[1]


def of_threads(pid: int, name: str) -> list[str]:
    """What this file says of each thread. One may end meanwhile."""
    texts = []
    for task in pathlib.Path(f"/proc/{pid}/task").iterdir():
        try:
            texts.append((task / name).read_text())
        except (FileNotFoundError, ProcessLookupError):
            continue
    return texts


def children(pid: int) -> dict[int, str]:
    """Those that live, and the names of their programs."""
    found = {}
    for task in pathlib.Path(f"/proc/{pid}/task").iterdir():
        for child in (task / "children").read_text().split():
            try:
                if status(int(child), "State")[0] != "Z":
                    found[int(child)] = os.path.basename(os.readlink(f"/proc/{child}/exe"))
            except (FileNotFoundError, ProcessLookupError):  # it has ended meanwhile
                continue
    return found


def is_alive(pid: int) -> bool:
    """Not ended, nor merely unburied."""
    try:
        return status(pid, "State")[0] != "Z"
    except (FileNotFoundError, ProcessLookupError):
        return False


def private_memory(pid: int) -> int:
    """Bytes that are its own. What it shares counts for more or less as others come and go."""
    return 1024 * int(status(pid, "RssAnon").split()[0])


def processor_time(pid: int) -> float:
    """Seconds that it has used."""
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def exact_processor_time(pid: int) -> float:
    """Seconds that its threads which live have used, to the nanosecond."""
    return sum(int(text.split()[0]) for text in of_threads(pid, "schedstat")) / 1e9


def resident_memory(pid: int) -> int:
    """Bytes that it has in memory, shared or not."""
    return 1024 * int(status(pid, "VmRSS").split()[0])


def peak_memory(pid: int) -> int:
    """Bytes that it has had in memory at most, shared or not."""
    return 1024 * int(status(pid, "VmHWM").split()[0])


def wakeups(pid: int) -> int:
    """How often its threads have gone on after waiting."""
    return sum(int(re.search(r"^voluntary_ctxt_switches:\s*(\d+)", text, re.MULTILINE)[1])
               for text in of_threads(pid, "status"))


def is_sanitized(program: str) -> bool:
    """Whether it looks for its own mistakes, and so is slow, and keeps what is freed."""
    return b"__asan_init" in pathlib.Path(program).read_bytes()
