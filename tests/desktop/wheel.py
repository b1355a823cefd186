"""Whether another client could take the wheel, asked so that nobody notices the question.

The server is grabbed meanwhile: whoever wants the wheel at the same moment must not find it
taken by us."""

import contextlib
import ctypes
import os

BUTTONS = (4, 5, 6, 7)
BUTTON_PRESS_MASK, ASYNCHRONOUS, ANY_MODIFIER = 1 << 2, 1, 1 << 15

xcb, libc = ctypes.CDLL("libxcb.so.1"), ctypes.CDLL(None)


class Cookie(ctypes.Structure):
    _fields_ = [("sequence", ctypes.c_uint)]


class Screens(ctypes.Structure):
    _fields_ = [("first", ctypes.POINTER(ctypes.c_uint32)), ("left", ctypes.c_int),
                ("index", ctypes.c_int)]


for name, result in (("xcb_connect", ctypes.c_void_p), ("xcb_get_setup", ctypes.c_void_p),
                     ("xcb_setup_roots_iterator", Screens), ("xcb_grab_server", Cookie),
                     ("xcb_grab_button_checked", Cookie), ("xcb_request_check", ctypes.c_void_p)):
    getattr(xcb, name).restype = result


@contextlib.contextmanager
def connection(environment: dict[str, str]):
    before = dict(os.environ)
    os.environ.update({name: environment[name] for name in ("DISPLAY", "XAUTHORITY")})
    try:
        display = ctypes.c_void_p(xcb.xcb_connect(None, None))
    finally:
        os.environ.clear()
        os.environ.update(before)
    try:
        if xcb.xcb_connection_has_error(display):
            raise ConnectionError(f"no X server at {environment['DISPLAY']}")
        yield display
    finally:
        xcb.xcb_disconnect(display)  # which gives back whatever was taken


def is_free(environment: dict[str, str]) -> bool:
    with connection(environment) as display:
        setup = ctypes.c_void_p(xcb.xcb_get_setup(display))
        root = xcb.xcb_setup_roots_iterator(setup).first[0]  # a screen begins with its root window
        xcb.xcb_grab_server(display)
        return all([take(display, root, button) for button in BUTTONS])


def take(display, root: int, button: int) -> bool:
    request = xcb.xcb_grab_button_checked(
        display, ctypes.c_uint8(0), ctypes.c_uint32(root), ctypes.c_uint16(BUTTON_PRESS_MASK),
        ctypes.c_uint8(ASYNCHRONOUS), ctypes.c_uint8(ASYNCHRONOUS), ctypes.c_uint32(0),
        ctypes.c_uint32(0), ctypes.c_uint8(button), ctypes.c_uint16(ANY_MODIFIER))
    error = ctypes.c_void_p(xcb.xcb_request_check(display, request))
    libc.free(error)
    return not error
