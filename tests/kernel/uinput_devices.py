"""Input devices that the kernel takes for real ones, made and moved by this process (uinput)."""

import collections
import fcntl
import math
import os
import pathlib
import struct
import time

from pace import await_turn
from witnesses import wait_until

# An emulated processor is as much slower; motion is paced so that a mouse seems no faster to it
# than to a real one.
SLOWNESS = float(os.environ.get("SLOWNESS", "1"))


def _write(number: int, size: int) -> int:
    return 1 << 30 | size << 16 | ord("U") << 8 | number


# From linux/uinput.h.
UI_DEV_CREATE, UI_DEV_DESTROY = ord("U") << 8 | 1, ord("U") << 8 | 2
UI_DEV_SETUP, UI_ABS_SETUP = _write(3, 92), _write(4, 28)
UI_SET_EVBIT, UI_SET_KEYBIT = _write(100, 4), _write(101, 4)
UI_SET_RELBIT, UI_SET_PROPBIT = _write(102, 4), _write(110, 4)
UI_GET_SYSNAME = 2 << 30 | 80 << 16 | ord("U") << 8 | 44

# From linux/input-event-codes.h.
EV_SYN, EV_KEY, EV_REL, EV_ABS = 0, 1, 2, 3
REL_X, REL_Y, REL_HWHEEL, REL_WHEEL, REL_WHEEL_HI_RES, REL_HWHEEL_HI_RES = 0, 1, 6, 8, 11, 12
BTN_LEFT, BTN_RIGHT, BTN_MIDDLE, BTN_SIDE, BTN_EXTRA = 0x110, 0x111, 0x112, 0x113, 0x114
ABS_X, ABS_Y = 0x00, 0x01
BUS_USB, BUS_I2C = 0x03, 0x18

BUTTONS = {1: BTN_LEFT, 2: BTN_MIDDLE, 3: BTN_RIGHT, 8: BTN_SIDE, 9: BTN_EXTRA}  # X's numbers
NOTCH = 120  # of a wheel, in the units of its finer count and in those of the X server
X, Y, HORIZONTAL, VERTICAL = 0, 1, 2, 3  # the X server's axes
# The wheel's codes for whole notches and for parts, the server's axis, and the signs of both.
WHEELS = {"up": (REL_WHEEL, REL_WHEEL_HI_RES, VERTICAL, 1, -1),
          "down": (REL_WHEEL, REL_WHEEL_HI_RES, VERTICAL, -1, 1),
          "left": (REL_HWHEEL, REL_HWHEEL_HI_RES, HORIZONTAL, -1, -1),
          "right": (REL_HWHEEL, REL_HWHEEL_HI_RES, HORIZONTAL, 1, 1)}


class Device:
    """Plugged in when it is made. Each of its calls returns when the X server has done it, as far
    as that can be told from what was sent."""

    # The kernel keeps some twenty reports for a reader that is late, and drops all if it is later.
    AHEAD = 8
    # libinput takes what is quicker for a contact that bounces, and leaves it out.
    BOUNCE = 0.03  # seconds

    _products = iter(range(1, 0xffff))

    def __init__(self, desktop, name: str):
        self.name = name
        self._desktop = desktop
        self._product = next(Device._products)
        self._file = -1
        self.plug()
        desktop.at_end(self.pull)

    def plug(self) -> None:
        """Until the X server has it."""
        self._create()
        self._await(lambda: self._desktop.device_id(self.name))

    def plug_anew(self) -> None:
        """After pull(): until the X server has this one and not the one that it was before."""
        self._create()
        node = self.node()
        self._await(lambda: self._desktop.device_id_of_node(self.name, node))

    def _create(self) -> None:
        self._file = os.open("/dev/uinput", os.O_WRONLY | os.O_CLOEXEC)
        self._describe()
        fcntl.ioctl(self._file, UI_DEV_CREATE)

    def _await(self, number) -> None:
        self.number = wait_until(number, f"the X server has {self.name}")
        raw = self._desktop.raw_events
        # A new device may have the number of one that is gone.
        self._begin = {key: raw.axes[key] for key in ((self.number, axis) for axis in range(4))}
        self._sent = collections.defaultdict(float)
        self._changed = {}

    def unplug(self) -> None:
        """Until the X server has lost it."""
        self.pull()
        wait_until(lambda: not self._desktop.device_id(self.name),
                   f"the X server has lost {self.name}")

    def pull(self) -> None:
        """As unplug(), but at once. Does nothing when called again."""
        if self._file >= 0:
            fcntl.ioctl(self._file, UI_DEV_DESTROY)
            os.close(self._file)
            self._file = -1

    # What tests of other devices call it.
    disable, enable = unplug, plug

    @property
    def is_enabled(self) -> bool:
        return self._file >= 0

    def node(self) -> str:
        answer = fcntl.ioctl(self._file, UI_GET_SYSNAME, bytes(80)).rstrip(b"\0").decode()
        folder = pathlib.Path("/sys/devices/virtual/input") / answer
        return f"/dev/input/{next(folder.glob('event*')).name}"

    def sync(self) -> None:
        """Until the server has got what was sent."""
        raw = self._desktop.raw_events

        def missing():
            return {axis: sent + self._begin[self.number, axis] - raw.axes[self.number, axis]
                    for axis, sent in self._sent.items()}
        raw.wait_until(lambda: not any(abs(value) > 0.01 for value in missing().values()),
                       lambda: f"the X server gets all from {self.name}; axes lack {missing()}")

    def press(self, button: int) -> None:
        self._change(button, True)

    def release(self, button: int) -> None:
        self._change(button, False)

    def click(self, button: int) -> None:
        self.press(button)
        self.release(button)

    def release_unseen(self, button: int) -> None:
        """As release(), where the server may make nothing of it: it counts the button as up."""
        await_turn(self._changed.get(button, 0.0) + self.BOUNCE, self._file, self.name)
        self._send((EV_KEY, BUTTONS[button], False))
        self._changed[button] = time.monotonic()

    def _change(self, button: int, down: bool) -> None:
        await_turn(self._changed.get(button, 0.0) + self.BOUNCE, self._file, self.name)
        raw, key = self._desktop.raw_events, (self.number, button, down)
        before = raw.buttons[key]
        self._send((EV_KEY, BUTTONS[button], down))
        raw.wait_until(lambda: raw.buttons[key] > before,
                       lambda: f"the X server gets {'a press' if down else 'a release'} of button "
                               f"{button} of {self.name}")
        self._changed[button] = time.monotonic()

    def _describe(self) -> None:
        raise NotImplementedError

    def _declare(self, bus: int, codes: dict, axes=(), properties=()) -> None:
        """`axes`: (code, greatest value, units per millimetre) of each absolute one."""
        for kind in {*codes, *([EV_ABS] if axes else [])}:
            fcntl.ioctl(self._file, UI_SET_EVBIT, kind)
        for kind, request in ((EV_KEY, UI_SET_KEYBIT), (EV_REL, UI_SET_RELBIT)):
            for code in codes.get(kind, ()):
                fcntl.ioctl(self._file, request, code)
        for code, greatest, resolution in axes:
            fcntl.ioctl(self._file, UI_ABS_SETUP,
                        struct.pack("Hxx6i", code, 0, 0, greatest, 0, 0, resolution))
        for one in properties:
            fcntl.ioctl(self._file, UI_SET_PROPBIT, one)
        setup = struct.pack("4H80sI", bus, 0x1234, self._product, 1, self.name.encode(), 0)
        fcntl.ioctl(self._file, UI_DEV_SETUP, setup)

    def _send(self, *events) -> None:
        """(kind, code, value) each, all of one moment."""
        os.write(self._file, b"".join(struct.pack("qqHHi", 0, 0, *event)
                                      for event in (*events, (EV_SYN, 0, 0))))

    def _repeat(self, reports, gap: float) -> None:
        """At a steady pace, unless the X server is late."""
        start, gone = time.monotonic(), collections.Counter()
        for number, (events, effect) in enumerate(reports):
            await_turn(start + number * gap, self._file, self.name)
            self._send(*events)
            for axis, value in effect.items():
                self._sent[axis] += value
                gone[axis] += value
            # libinput holds back the first parts of a notch until they are half a one.
            if number % self.AHEAD == self.AHEAD - 1 or number == len(reports) - 1:
                if all(axis < HORIZONTAL or abs(gone[axis]) >= NOTCH / 2 for axis in gone):
                    self.sync()


class Wheeled(Device):
    """With wheels that count notches and, if `fine`, parts of them."""

    fine = True
    way = 1  # -1 where the X server makes the opposite of each turn

    def __init__(self, desktop, name: str):
        self._gone = collections.defaultdict(int)
        super().__init__(desktop, name)

    def scroll(self, direction: str, notches: int, gap=0.001, part=1.0) -> None:
        """So many times this part of a notch."""
        self._repeat([self._turn(direction, round(part * NOTCH)) for _ in range(notches)], gap)

    def _turn(self, direction: str, units: int):
        coarse, fine, axis, sign, server_sign = WHEELS[direction]
        self._gone[coarse] += sign * units
        notches = math.trunc(self._gone[coarse] / NOTCH)
        self._gone[coarse] -= notches * NOTCH
        events = [(EV_REL, coarse, notches)] if notches else []
        if self.fine:
            events.append((EV_REL, fine, sign * units))
        return events, {axis: self.way * server_sign * units}

    def _wheel_codes(self):
        fine = [REL_WHEEL_HI_RES, REL_HWHEEL_HI_RES] if self.fine else []
        return [REL_WHEEL, REL_HWHEEL, *fine]


class Mouse(Wheeled):
    """As the kernel's drivers show newer mice."""

    def move(self, dx: int, dy: int) -> None:
        self._repeat([self._step(dx, dy)], 0)

    def glide(self, dx: int, dy: int, steps: int, gap=0.001) -> None:
        self._repeat([self._step(dx, dy)] * steps, gap * SLOWNESS)

    @staticmethod
    def _step(dx: int, dy: int):
        return ([(EV_REL, code, value) for code, value in ((REL_X, dx), (REL_Y, dy)) if value],
                {X: dx, Y: dy})

    def _describe(self) -> None:
        self._declare(BUS_USB, {EV_KEY: BUTTONS.values(),
                                EV_REL: [REL_X, REL_Y, *self._wheel_codes()]})


class CoarseMouse(Mouse):
    """As older ones: it counts whole notches only."""

    fine = False


class Tablet(Wheeled):
    """A pointer with a place for each place of the screen, as a virtual machine's."""

    GREATEST = 32767

    def go(self, x: int, y: int) -> None:
        """To the middle of a pixel, until the pointer is there."""
        width, height = self._desktop.size
        self._send(*((EV_ABS, code, int((place + 0.5) * (self.GREATEST + 1) / whole))
                     for code, place, whole in ((ABS_X, x, width), (ABS_Y, y, height))))
        wait_until(lambda: self._desktop.pointer() == (x, y), f"the pointer is at {x}, {y}")

    def _describe(self) -> None:
        self._declare(BUS_USB, {EV_KEY: BUTTONS.values(), EV_REL: self._wheel_codes()},
                      [(ABS_X, self.GREATEST, 0), (ABS_Y, self.GREATEST, 0)])
