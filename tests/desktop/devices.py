"""Mice and touchpads with scroll axes, as nearly all real ones have them, and what is held of them.

The server's test driver plays them. Each listens on a socket of its own for what it is to do; its
messages are those of xf86-input-inputtest-protocol.h."""

import re
import socket
import struct
import time

from pace import await_turn
from witnesses import X11_PROBE, Failed, parts, wait_until

# The axes, and by how much one of them changes with a notch. Down and right are positive.
X, Y, HORIZONTAL, VERTICAL = 0, 1, 2, 3
NOTCH = 120
STEPS = {"up": (VERTICAL, -NOTCH), "down": (VERTICAL, NOTCH),
         "left": (HORIZONTAL, -NOTCH), "right": (HORIZONTAL, NOTCH)}

VERSION, SYNC, MOTION, BUTTON = 0, 1, 2, 4  # types of message
HEADER = struct.Struct("=II")  # length of the whole message, type
VERSION_BODY = struct.Struct("=HH")
MOTION_BODY = struct.Struct("=I4x")  # whether absolute
BUTTON_BODY = struct.Struct("=iiI4x")  # whether absolute, number, whether a press
AXES = 64
VALUATORS = struct.Struct(f"=I8s4x{AXES}d{AXES}d")  # whether also unaccelerated, which ones, values


class Device:
    """One device. Each of its calls returns when the X server has done it."""

    def __init__(self, desktop, name: str):
        self.name = name
        self._desktop, self._path = desktop, parts.device_socket(desktop.folder, name)
        self._socket = None
        self._connect()

    @property
    def is_enabled(self) -> bool:
        return self._socket is not None

    def move(self, dx: int, dy: int) -> None:
        self._send(_motion({X: dx, Y: dy}))
        self.sync()

    def glide(self, dx: int, dy: int, steps: int, gap=0.001) -> None:
        """So many moves, at a steady pace."""
        self.repeat([_motion({X: dx, Y: dy})], steps, gap)

    def scroll(self, direction: str, notches: int, gap=0.001, part=1.0) -> None:
        """So many times this part of a notch, at a steady pace of `gap` seconds."""
        axis, step = STEPS[direction]
        self.repeat([_motion({axis: step * part})], notches, gap)

    def repeat(self, messages: list[bytes], count: int, gap: float) -> None:
        start = time.monotonic()
        for number in range(count):
            await_turn(start + number * gap, self._socket, self.name)
            for message in messages:
                self._send(message)
        self.sync()

    def press(self, button: int) -> None:
        self._send(_button(button, True))
        self.sync()

    def release(self, button: int) -> None:
        self._send(_button(button, False))
        self.sync()

    def click(self, button: int) -> None:
        self.press(button)
        self.release(button)

    def disable(self) -> None:
        """As if it were unplugged. Buttons that are down go up."""
        self._desktop.run("xinput", "disable", self.name)
        self._socket.close()
        self._socket = None

    def enable(self) -> None:
        self._desktop.run("xinput", "enable", self.name)
        self._connect()

    def sync(self) -> None:
        self._send(_message(SYNC))
        self._receive(HEADER.size)

    def _connect(self) -> None:
        """The server minds a device that hangs up: only one that is disabled may come again."""
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.settimeout(10)
        self._socket.connect(str(self._path))
        self._send(_message(VERSION, VERSION_BODY.pack(1, 0)))
        self._receive(HEADER.size + VERSION_BODY.size)

    def _send(self, message: bytes) -> None:
        self._socket.sendall(message)

    def _receive(self, size: int) -> bytes:
        received = b""
        while len(received) < size:
            try:
                part = self._socket.recv(size - len(received))
            except TimeoutError:
                raise Failed(f"the X server does not answer the {self.name}") from None
            if not part:
                raise Failed(f"the X server has hung up on the {self.name}")
            received += part
        return received


def _message(kind: int, body=b"") -> bytes:
    return HEADER.pack(HEADER.size + len(body), kind) + body


def _valuators(values: dict[int, float]) -> bytes:
    mask = sum(1 << axis for axis in values).to_bytes(8, "little")
    return VALUATORS.pack(0, mask, *(values.get(axis, 0.0) for axis in range(AXES)), *[0.0] * AXES)


def _motion(values: dict[int, float]) -> bytes:
    return _message(MOTION, MOTION_BODY.pack(0) + _valuators(values))


def _button(number: int, down: bool) -> bytes:
    return _message(BUTTON, BUTTON_BODY.pack(0, number, down) + _valuators({}))


def taken_devices(desktop) -> set[str]:
    """The names of the input devices that some program has grabbed at this moment. Asking changes
    nothing."""
    return set(re.findall("^taken (.*)$", desktop.run(X11_PROBE, "grabs"), re.MULTILINE))


def await_taken(desktop, names, limit=10.0, apart_from=()) -> None:
    """Until these devices are grabbed and no others, apart from some that do not matter."""
    def taken():
        return taken_devices(desktop) - set(apart_from)

    try:
        wait_until(lambda: taken() == set(names), "", limit)
    except Failed:
        raise Failed(f"not within {limit:g} s: only {sorted(names)} are held, but "
                     f"{sorted(taken())}") from None
