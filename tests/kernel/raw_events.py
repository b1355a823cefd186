"""What the X server has got from each device, by its raw events: they come whoever holds what."""

import collections
import ctypes
import select
import struct
import threading
import time

import wheel
from witnesses import Failed

XI_ALL_DEVICES, XI_RAW_BUTTON_PRESS, XI_RAW_BUTTON_RELEASE, XI_RAW_MOTION = 0, 15, 16, 17
GENERIC_EVENT, EMULATED = 35, 1 << 16
HEADER = struct.Struct("=BBHIHHIIHHI4x4x")  # with the place where the library keeps a number
MASKS = struct.Struct("=HHI")  # device, words of the mask, the mask
VALUE = struct.Struct("=iI")  # whole part, and the rest in parts of 2 to the power of 32

xcb, xinput = wheel.xcb, ctypes.CDLL("libxcb-xinput.so.0")
xcb.xcb_poll_for_event.restype = ctypes.c_void_p
for name in ("xcb_input_xi_query_version", "xcb_input_xi_select_events_checked"):
    getattr(xinput, name).restype = wheel.Cookie
xinput.xcb_input_xi_query_version_reply.restype = ctypes.c_void_p


class RawEvents:
    """From its making on. Counts by the number that the server has given a device. Hands at several
    devices may wait at the same time."""

    def __init__(self, stack, environment: dict[str, str]):
        """The connection is closed when `stack` is left."""
        self._display = stack.enter_context(wheel.connection(environment))
        self.axes = collections.defaultdict(float)  # (device, axis): sum
        self.buttons = collections.Counter()  # (device, button, whether pressed)
        self.stops = collections.Counter()  # device: how often fingers ended their scrolling
        self._seen, self._lock = 0, threading.Lock()
        version = xinput.xcb_input_xi_query_version(self._display, ctypes.c_uint16(2),
                                                    ctypes.c_uint16(2))
        wheel.libc.free(ctypes.c_void_p(xinput.xcb_input_xi_query_version_reply(
            self._display, version, None)))
        setup = ctypes.c_void_p(xcb.xcb_get_setup(self._display))
        root = xcb.xcb_setup_roots_iterator(setup).first[0]
        kinds = XI_RAW_BUTTON_PRESS, XI_RAW_BUTTON_RELEASE, XI_RAW_MOTION
        masks = MASKS.pack(XI_ALL_DEVICES, 1, sum(1 << kind for kind in kinds))
        request = xinput.xcb_input_xi_select_events_checked(
            self._display, ctypes.c_uint32(root), ctypes.c_uint16(1), masks)
        if xcb.xcb_request_check(self._display, request):
            raise Failed("the X server does not tell of raw events")

    def wait_until(self, condition, what, limit=10.0) -> None:
        """`what` is called for the text of a failure."""
        deadline = time.monotonic() + limit
        self._read()
        while not condition():
            if time.monotonic() > deadline:
                raise Failed(f"not within {limit:g} s: {what()}")
            select.select([xcb.xcb_get_file_descriptor(self._display)], [], [], 0.05)
            self._read()

    def await_quiet(self, seconds: float, limit=10.0) -> None:
        """Until nothing has come for this long."""
        self._read()
        seen, since = self._seen, time.monotonic()

        def quiet():
            nonlocal seen, since
            if self._seen != seen:
                seen, since = self._seen, time.monotonic()
            return time.monotonic() - since >= seconds
        self.wait_until(quiet, lambda: f"the devices are quiet for {seconds:g} s", limit)

    def _read(self) -> None:
        with self._lock:
            while event := xcb.xcb_poll_for_event(self._display):
                try:
                    self._take(event)
                finally:
                    wheel.libc.free(ctypes.c_void_p(event))

    def _take(self, event) -> None:
        (kind, _, _, length, what, device, _, detail, source, words,
         flags) = HEADER.unpack(ctypes.string_at(event, HEADER.size))
        # Each comes for the device itself, and again for the pointer that it moves.
        if kind & 0x7f != GENERIC_EVENT or device != source or flags & EMULATED:
            return
        self._seen += 1
        if what != XI_RAW_MOTION:
            self.buttons[device, detail, what == XI_RAW_BUTTON_PRESS] += 1
            return
        body = ctypes.string_at(event + HEADER.size, length * 4)
        mask = int.from_bytes(body[:4 * words], "little")
        values = {}
        for axis in (axis for axis in range(32 * words) if mask >> axis & 1):
            whole, rest = VALUE.unpack_from(body, 4 * words + VALUE.size * len(values))
            values[axis] = whole + rest / 2**32
            self.axes[device, axis] += values[axis]
        if values == {2: 0, 3: 0}:
            self.stops[device] += 1
