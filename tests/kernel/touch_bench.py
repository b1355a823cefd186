"""A program that uses our touch library, on the kernel's devices."""

import pathlib
import re
import subprocess
import unittest

import device_tests  # noqa: F401  (first: it says where the other modules are)
from kernel_desktop import KernelDesktop
from uinput_touchpads import Touchpad
from witnesses import QUILLON, TOUCH_PROBE

LIBRARY = QUILLON.parent / "libquillon-touch.so"


class Probe:
    """A program that uses the library."""

    _numbers = iter(range(1, 1000))

    def __init__(self, desktop, prefix=()):
        self._name = f"touch_probe {next(self._numbers)}"
        self._desktop = desktop
        self.process = desktop.start(self._name, [*prefix, TOUCH_PROBE, LIBRARY], text=True,
                                     stdin=subprocess.PIPE)
        self._seen = 0

    def lines(self) -> list[str]:
        """Since it was last told to do something or its frames were expected."""
        return self._desktop.log(self._name).splitlines()[self._seen:]

    def start(self, *frames: int) -> None:
        """With frames of so many contacts at once."""
        self.do("start", "started")
        self.expect(*frames)

    def stop(self) -> None:
        self.do("stop", "stopped")

    def do(self, command: str, answer: str) -> None:
        self.process.stdin.write(f"{command}\n")
        self.process.stdin.flush()
        self._await([answer], exactly=False)

    def expect(self, *frames: int) -> None:
        """These and no other."""
        self._await([f"frame {count}" for count in frames])

    def expect_last(self, frame: int) -> int:
        """Whatever came before; answers how many that were."""
        self._desktop.wait_for(self.process, lambda: self.lines()[-1:] == [f"frame {frame}"],
                               f"frame {frame} at last")
        count = len(self.lines())
        self._seen += count
        return count

    def _await(self, wanted: list[str], exactly=True) -> None:
        """What comes after what is wanted must be wanted next."""
        self._desktop.wait_for(self.process, lambda: len(self.lines()) >= len(wanted),
                               f"{wanted}, not only {self.lines()}")
        got = self.lines()
        if got[:len(wanted)] != wanted or (exactly and len(got) != len(wanted)):
            raise AssertionError(f"{got} instead of {wanted}")
        self._seen += len(wanted)

    def wakings(self) -> int:
        """How often threads of it have slept till now."""
        line = re.compile(r"^voluntary_ctxt_switches:\s*(\d+)", re.MULTILINE)
        return sum(int(line.search((task / "status").read_text())[1])
                   for task in pathlib.Path(f"/proc/{self.process.pid}/task").iterdir())


class TouchTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.desktop = cls.enterClassContext(KernelDesktop())

    def plugged(self, kind=Touchpad, name="fingers"):
        """A touchpad until the test ends."""
        touchpad = kind(self.desktop, name)
        self.addCleanup(lambda: touchpad.is_enabled and touchpad.unplug())
        return touchpad

    def probe(self, *prefix) -> Probe:
        probe = Probe(self.desktop, prefix)
        self.addCleanup(self.desktop.end, probe.process)
        return probe
