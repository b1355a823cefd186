"""A private desktop whose X server drives the kernel's input devices by libinput."""

import collections
import contextlib
import pathlib
import sys

TREE = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(TREE / "tests/desktop"))

from raw_events import RawEvents  # noqa: E402
from witnesses import Failed, PrivateDesktop  # noqa: E402

XORG = "/usr/lib/xorg/Xorg"
CONFIGURATION = """\
Section "ServerFlags"
    Option "AutoAddGPU" "false"
    Option "DontVTSwitch" "true"
    Option "BlankTime" "0"
EndSection
Section "Device"
    Identifier "memory"
    Driver "dummy"
    VideoRam 16384
EndSection
Section "Monitor"
    Identifier "monitor"
    HorizSync 5.0-1000.0
    VertRefresh 5.0-200.0
    Modeline "1280x800" 83.50 1280 1352 1480 1680 800 803 809 831
EndSection
Section "Screen"
    Identifier "screen"
    Device "memory"
    Monitor "monitor"
    DefaultDepth 24
    SubSection "Display"
        Depth 24
        Modes "1280x800"
        Virtual 1280 800
    EndSubSection
EndSection
# A pixel for each unit, however fast: where the pointer goes must not hang on the time it takes.
Section "InputClass"
    Identifier "no acceleration"
    MatchIsPointer "true"
    Option "AccelProfile" "flat"
EndSection
Section "InputClass"
    Identifier "no acceleration of fingers"
    MatchIsTouchpad "true"
    Option "AccelProfile" "flat"
EndSection
"""


class KernelDesktop(PrivateDesktop):
    """Devices come and go with the kernel's."""

    size = 1280, 800
    places = collections.deque(maxlen=8)  # where the pointer was, to tell of a test that fails

    def open(self) -> None:
        self._stack = contextlib.ExitStack()
        super().open()

    def close(self) -> None:
        try:
            self._stack.close()
        finally:
            super().close()

    def pointer(self) -> tuple[int, int]:
        place = super().pointer()
        if place not in list(self.places)[-1:]:
            self.places.append(place)
        return place

    def at_end(self, callback) -> None:
        """Calls it before the desktop closes."""
        self._stack.callback(callback)

    def _await_server(self, command) -> None:
        """Another server in the place of the one that was asked for."""
        configuration = self.folder / "kernel-xorg.conf"
        configuration.write_text(CONFIGURATION)
        (self.folder / "xorg.conf.d").mkdir()
        super()._await_server([
            XORG, "-config", configuration, "-configdir", self.folder / "xorg.conf.d",
            "-logfile", self.folder / "xorg.log", "-noreset", "-nolisten", "tcp", "-keeptty",
            "-novtswitch", "vt7", *command[command.index("-auth"):]])
        self.raw_events = RawEvents(self._stack, self.environment)

    def device_id(self, name: str) -> int | None:
        """The number that the server has given a device, None while it has none of this name."""
        try:
            return int(self.run("xinput", "list", "--id-only", name))
        except (Failed, ValueError):
            return None

    def device_id_of_node(self, name: str, node: str) -> int | None:
        """The same, if it is the device that the kernel shows at this place."""
        number = self.device_id(name)
        try:
            return number if number and node in self.run("xinput", "list-props", number) else None
        except Failed:  # it has gone meanwhile
            return None
