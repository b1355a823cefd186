"""Prints "free" if a client of the X display $DISPLAY can take the wheel for the whole screen,
"taken" if another client has it. What it takes, it gives back at once by disconnecting."""

import ctypes
import sys

ANY_MODIFIER, BUTTON_PRESS_MASK, ASYNCHRONOUS = 1 << 15, 1 << 2, 1
ErrorHandler = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)

x11 = ctypes.CDLL("libX11.so.6")
x11.XOpenDisplay.restype = ctypes.c_void_p
x11.XDefaultRootWindow.restype = ctypes.c_ulong
refusals = []


@ErrorHandler
def note_refusal(_display, _error):
    refusals.append(True)
    return 0


display = ctypes.c_void_p(x11.XOpenDisplay(None))
if not display:
    sys.exit("no X display")
x11.XSetErrorHandler(note_refusal)
root = ctypes.c_ulong(x11.XDefaultRootWindow(display))
for button in (4, 5, 6, 7):
    x11.XGrabButton(display, button, ANY_MODIFIER, root, False, BUTTON_PRESS_MASK,
                    ASYNCHRONOUS, ASYNCHRONOUS, ctypes.c_ulong(0), ctypes.c_ulong(0))
x11.XSync(display, False)
print("taken" if refusals else "free")
