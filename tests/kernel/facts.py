#!/usr/bin/env python3
"""Prints what the X server makes of each kind of device: axes, properties and raw events."""

import re
import sys

from kernel_desktop import KernelDesktop
from uinput_devices import CoarseMouse, Mouse, Tablet
from uinput_touchpads import Touchpad
from witnesses import wait_until


def main() -> int:
    with KernelDesktop() as desktop:
        mouse, old = Mouse(desktop, "mouse"), CoarseMouse(desktop, "old mouse")
        tablet, fingers = Tablet(desktop, "tablet"), Touchpad(desktop, "fingers")
        print(desktop.run("xinput", "list", "--short"))
        for device in (mouse, old, tablet, fingers):
            print(f"==== {device.name}, {device.node()}")
            print(desktop.run("udevadm", "info", "--query=property", device.node()))
            print(desktop.run("xinput", "list", "--long", device.name))
            print(desktop.run("xinput", "list-props", device.name))
        listener = desktop.start("events", ["stdbuf", "-oL", "xinput", "test-xi2", "--root"])
        # It speaks once it listens, and something happens.
        desktop.wait_for(listener, lambda: mouse.move(1, 0) or desktop.log("events"), "a listener")
        for title, step in (
                ("the mouse moves by 10, 5", lambda: mouse.move(10, 5)),
                ("the mouse turns a notch up", lambda: mouse.scroll("up", 1)),
                ("the mouse turns a notch right", lambda: mouse.scroll("right", 1)),
                ("the mouse turns two notches down by quarters",
                 lambda: mouse.scroll("down", 8, part=0.25)),
                ("the old mouse turns a notch up", lambda: old.scroll("up", 1)),
                ("the mouse clicks", lambda: mouse.click(1)),
                ("the tablet goes to 100, 100", lambda: tablet.go(100, 100)),
                ("the tablet turns a notch up", lambda: tablet.scroll("up", 1)),
                ("one finger goes 10 mm right", lambda: (
                    fingers.touch((40, 30)), fingers.slide(10, 0, 5), fingers.lift())),
                ("two fingers go 10 mm down", lambda: fingers.scroll("down", 10)),
                ("two fingers go 10 mm right", lambda: fingers.scroll("right", 10))):
            desktop.raw_events.await_quiet(0.3)
            seen = len(desktop.log("events"))
            step()
            desktop.raw_events.await_quiet(0.3)
            wait_until(lambda: desktop.log("events").endswith("\n"), "the listener has told all")
            print(f"==== {title}; then the pointer is at {desktop.pointer()}")
            print_raw_events(desktop.log("events")[seen:])
    return 0


def print_raw_events(log: str) -> None:
    for event in re.split(r"^(?=EVENT )", log, flags=re.MULTILINE):
        kind = re.search(r"\((Raw\w+|DeviceChanged)\)", event)
        if not kind:
            continue
        device = re.search(r"device: (.*)", event)[1]
        detail = re.search(r"detail: (.*)", event)
        flags = re.search(r"flags: (emulated|)", event)
        values = re.findall(r"^\s+(\d+: -?\d.*)$", event.partition("valuators:")[2], re.MULTILINE)
        print("   ", kind[1], "device", device, "button", detail[1] if detail else "-",
              flags[1] if flags else "", "; ".join(values))


if __name__ == "__main__":
    sys.exit(main())
