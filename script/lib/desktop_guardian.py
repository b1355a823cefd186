"""Ends whatever a private desktop leaves behind, also when its owner is killed.

usage: desktop_guardian.py MARK FOLDER

Standard input is a pipe whose other end only the owner holds, so its end means that the owner
is done or dead. Every process of the desktop carries MARK in its environment, however deep it
was started and whoever adopted it; those still there are asked to stop, then killed. FOLDER is
removed last. Prints "PID NAME" for each process that it had to end.
"""

import os
import select
import shutil
import signal
import sys
import time

GRACE = 2.0  # seconds between asking and killing
LIMIT = 10.0  # seconds after which what refuses to die is reported instead


def open_marked(pid: str, mark: bytes) -> int | None:
    """A descriptor for the process if it carries the mark: a number alone may be reused."""
    try:
        descriptor = os.pidfd_open(int(pid))
    except OSError:
        return None
    try:
        with open(f"/proc/{pid}/environ", "rb") as file:
            if mark in file.read().split(b"\0"):
                return descriptor
    except OSError:
        pass
    os.close(descriptor)
    return None


def marked(mark: bytes) -> dict[int, int]:
    """Process numbers and descriptors of the living processes that carry the mark."""
    found = {}
    for pid in filter(str.isdigit, os.listdir("/proc")):
        descriptor = open_marked(pid, mark)
        if descriptor is not None:
            found[int(pid)] = descriptor
    return found


def name_of(pid: int) -> str:
    try:
        with open(f"/proc/{pid}/comm") as file:
            return file.read().strip()
    except OSError:
        return "?"


def report(descriptor: int, line: str) -> None:
    try:
        os.write(descriptor, f"{line}\n".encode())
    except OSError:
        pass  # nobody is left to read it


def wait_for_end(descriptors: set[int], limit: float) -> None:
    deadline = time.monotonic() + limit
    while descriptors and (left := deadline - time.monotonic()) > 0:
        ended, _, _ = select.select(descriptors, [], [], left)
        descriptors -= set(ended)


def sweep(mark: bytes) -> list[str]:
    """Ends the marked processes and those they start meanwhile; answers who is left."""
    named = set()
    start = time.monotonic()
    while found := marked(mark):
        late = time.monotonic() - start > GRACE
        for pid, descriptor in found.items():
            if pid not in named:
                named.add(pid)
                report(1, f"{pid} {name_of(pid)}")
            for number in [signal.SIGKILL] if late else [signal.SIGTERM, signal.SIGCONT]:
                try:
                    signal.pidfd_send_signal(descriptor, number)
                except ProcessLookupError:
                    pass
        wait_for_end(set(found.values()), GRACE)
        for descriptor in found.values():
            os.close(descriptor)
        if time.monotonic() - start > LIMIT:
            return [f"{pid} {name_of(pid)}" for pid in marked(mark)]
    return []


def main() -> int:
    mark, folder = sys.argv[1].encode(), sys.argv[2]
    for number in (signal.SIGINT, signal.SIGHUP, signal.SIGTERM):
        signal.signal(number, signal.SIG_IGN)
    while os.read(0, 64):
        pass
    left = sweep(mark)
    shutil.rmtree(folder, ignore_errors=True)
    for process in left:
        report(2, f"still alive: {process}")
    return 1 if left else 0


if __name__ == "__main__":
    sys.exit(main())
