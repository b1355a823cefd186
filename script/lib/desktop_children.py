"""Child processes that cannot outlive their owner, and waiting for them by condition.

Each child leads a process group of its own, so that a Ctrl-C in the terminal reaches only the
owner, which then stops the children in order. The kernel ends a child whose owner dies (the
thread that started it, to be exact: start children from the main thread). What the children
start in their turn is found by a mark in its environment and ended by a guardian process that
outlives even a killed owner.
"""

import contextlib
import ctypes
import os
import pathlib
import secrets
import shutil
import signal
import subprocess
import sys
import time

from desktop_guardian import marked

GRACE = 3.0  # seconds a child has to stop when asked to, before it is killed
GUARDIAN = pathlib.Path(__file__).with_name("desktop_guardian.py")
SET_CHILD_SUBREAPER = 36  # from linux/prctl.h

# What a child gets to see of the owner's environment: nothing of the user's session.
INHERITED = ("PATH", "USER", "LOGNAME", "SHELL", "TZ", "ASAN_OPTIONS", "LSAN_OPTIONS",
             "UBSAN_OPTIONS", "TSAN_OPTIONS", "LLVM_PROFILE_FILE", "GCOV_PREFIX",
             "GCOV_PREFIX_STRIP", "QT_LOGGING_RULES", "G_MESSAGES_DEBUG")


class Failed(Exception):
    """Something did not come up, ended early or did not happen in time."""


class Interrupted(KeyboardInterrupt):
    """A signal asked the owner to stop; `status` is what a shell reports for it."""

    def __init__(self, number: int):
        super().__init__(signal.Signals(number).name)
        self.status = 128 + number


def wait_until(condition, what: str, limit: float = 10.0, also_fail=None):
    """Polls until the condition is true and answers its value; Failed after the limit.

    `also_fail` is called between polls and may raise to end the wait early."""
    deadline = time.monotonic() + limit
    while not (value := condition()):
        if also_fail:
            also_fail()
        if time.monotonic() > deadline:
            raise Failed(f"not within {limit:g} s: {what}")
        time.sleep(0.01)
    return value


@contextlib.contextmanager
def interruptible():
    """Signals that ask for an end raise Interrupted while this lasts.

    SIGHUP stays ignored where it was: that is what nohup is for."""
    def interrupt(number, _frame):
        raise Interrupted(number)

    before = {}
    for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        if number != signal.SIGHUP or signal.getsignal(number) != signal.SIG_IGN:
            before[number] = signal.signal(number, interrupt)
    try:
        yield
    finally:
        for number, handler in before.items():
            signal.signal(number, handler)


@contextlib.contextmanager
def uninterrupted():
    """Signals that ask for an end wait until this is over."""
    asked = {signal.SIGINT, signal.SIGTERM, signal.SIGHUP}
    before = signal.pthread_sigmask(signal.SIG_BLOCK, asked)
    try:
        yield
    finally:
        signal.pthread_sigmask(signal.SIG_SETMASK, before)


class Children:
    """The processes of one owner. `folder` is theirs and goes with them."""

    def __init__(self, folder: pathlib.Path, logs: pathlib.Path):
        logs.mkdir(parents=True, exist_ok=True)
        self.logs = logs
        self._started: list[tuple[str, subprocess.Popen]] = []
        self._logged: set[str] = set()
        self._mark = f"QUILLON_PRIVATE_DESKTOP={secrets.token_hex(8)}"
        self.environment = {name: os.environ[name] for name in INHERITED if name in os.environ}
        self.environment.update([self._mark.split("=")])
        # Grandchildren that lose their parent come to us, so that they are reaped in any case.
        ctypes.CDLL(None).prctl(SET_CHILD_SUBREAPER, 1, 0, 0, 0)
        self._guardian = subprocess.Popen(
            [sys.executable, "-I", "-S", str(GUARDIAN), self._mark, str(folder)],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
            env={"PATH": os.environ.get("PATH", os.defpath)}, start_new_session=True)

    def start(self, name: str, arguments, **popen) -> subprocess.Popen:
        """Starts a child; its output goes to the log of that name unless told otherwise."""
        arguments = [str(argument) for argument in arguments]
        if not shutil.which(arguments[0]):
            hint = "" if "/" in arguments[0] else "; script/bootstrap installs what is needed"
            raise Failed(f"{name}: no program {arguments[0]!r}{hint}")
        popen.setdefault("env", self.environment)
        popen.setdefault("stdin", subprocess.DEVNULL)
        # A log of an earlier desktop in the same folder must not pass for this one's.
        with open(self.log_path(name), "ab" if name in self._logged else "wb") as log:
            self._logged.add(name)
            popen.setdefault("stdout", log)
            popen.setdefault("stderr", log)
            # The signal lets an X server remove its socket and lock when its owner is killed.
            child = subprocess.Popen(["setpriv", "--pdeathsig", "TERM", *arguments],
                                     start_new_session=True, **popen)
        self._started.append((name, child))
        return child

    def log_path(self, name: str) -> pathlib.Path:
        return self.logs / f"{name}.log"

    def log(self, name: str) -> str:
        return self.log_from(name, 0).decode(errors="replace")

    def log_from(self, name: str, start: int) -> bytes:
        """What follows the first `start` bytes."""
        try:
            with open(self.log_path(name), "rb") as log:
                log.seek(start)
                return log.read()
        except FileNotFoundError:
            return b""

    def wait_until_ready(self, child: subprocess.Popen, condition, what: str, limit=10.0):
        """Waits for a condition that this child is to bring about; says why if it does not."""
        name = next(name for name, known in self._started if known is child)

        def fail_if_ended():
            if child.poll() is not None:
                raise Failed(f"ended with status {child.returncode} before: {what}")
        try:
            return wait_until(condition, what, limit, fail_if_ended)
        except Failed as failure:
            tail = "".join(f"\n    {line}" for line in self.log(name).splitlines()[-12:])
            raise Failed(f"{name}: {failure}; {self.log_path(name)} ends with:"
                         f"{tail or ' nothing, it is empty'}") from None

    def stop(self, child: subprocess.Popen) -> None:
        """Asks one child to stop, with its process group, kills it if it does not, waits for it."""
        for number in (signal.SIGTERM, signal.SIGCONT):
            _signal_group(child, number)
        try:
            child.wait(GRACE)
        except subprocess.TimeoutExpired:
            _signal_group(child, signal.SIGKILL)
            child.wait()
        for stream in (child.stdin, child.stdout, child.stderr):
            if stream:
                with contextlib.suppress(BrokenPipeError):
                    stream.close()
        self._started = [entry for entry in self._started if entry[1] is not child]

    def stop_all(self) -> None:
        """Stops the children, last started first, then whatever they left behind."""
        known = marked(self._mark.encode())
        for _, child in reversed(self._started):
            self.stop(child)
        swept, _ = self._guardian.communicate()
        for descriptor in known.values():
            os.close(descriptor)
        for pid in {*known, *(int(line.split()[0]) for line in swept.splitlines())}:
            # Ours to reap if its parent went before it.
            with contextlib.suppress(ChildProcessError):
                os.waitpid(pid, os.WNOHANG)
        if self._guardian.returncode != 0:
            raise Failed("processes of the private desktop refuse to end")


def _signal_group(child: subprocess.Popen, number: int) -> None:
    with contextlib.suppress(ProcessLookupError):
        if child.poll() is None:
            os.killpg(child.pid, number)
