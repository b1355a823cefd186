#!/usr/bin/env python3
"""What somebody does who has just got the program, with nothing but mouse and keyboard."""

import json
import unittest

from quillon_desktop import BAND, HEIGHT, GestureTest
from screen_reader import ALWAYS_ON, ScreenReader, start_accessibility_bus
from shell_desktop import Shell
from witnesses import await_idle, await_wheel, wait_until

TOOL = "Desktop+"


class FirstUse(GestureTest):
    options = {"panel": "tint2", "bus": True, "environment": ALWAYS_ON}

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        start_accessibility_bus(cls.desktop)

    def setUp(self):
        self.quillon = self.start_quillon(**{"HubEnabled.tool.desktopSwitcher": False})
        self.shell = Shell(self.desktop, self.injector)
        self.eyes = ScreenReader(self.desktop, "Quillon")  # only to know where things are
        self.shell.await_item()

    def look_for(self, role: str, name: str, description=""):
        """Scrolls the list until it is there to be clicked."""
        hub = self.shell.hub_place()

        def is_whole(thing) -> bool:
            _x, y, _width, height = thing.place
            return hub.y + 60 <= y and y + height <= hub.y + hub.height

        self.eyes.find(role, name, description)
        await_idle(self.quillon.process)  # what slides in has arrived
        thing = self.eyes.find(role, name, description)
        self.injector.move(hub.middle[0] + 60, hub.middle[1])
        while not is_whole(thing):
            self.injector.scroll("up" if thing.place[1] < hub.y + 60 else "down", 1)
            await_idle(self.quillon.process)
            thing = self.eyes.find(role, name, description)
        return thing

    def click(self, role: str, name: str, description="") -> None:
        self.injector.move(*self.look_for(role, name, description).middle)
        self.injector.click(1)

    def stored(self, key: str):
        """What a setting's file says of it at this moment."""
        return json.loads((self.desktop.config / "com.pelorin.PelorinApp/defaults.json")
                          .read_text()).get(key)

    def drag_to_start(self, slider, key: str) -> None:
        x, y, width, height = slider.place
        self.injector.move(x + width - 4, y + height // 2)
        self.injector.press(1)
        for step in range(10, 4, -1):
            self.injector.move(x + width * step // 10, y + height // 2)
        wait_until(lambda: self.stored(key) in (5, 6), "half of the way is stored while it is dragged")
        for step in range(4, -1, -1):
            self.injector.move(x + width * step // 10 - (0 if step else 5), y + height // 2)
        self.injector.release(1)
        wait_until(lambda: self.stored(key) == 1, "and its end")

    def close_hub(self) -> None:
        for _ in range(2):  # out of the tool's settings, then out of the hub
            self.shell.press_key("Escape")
        self.shell.await_no_hub()

    def scroll_at_edge(self) -> None:
        self.injector.move(BAND // 2, HEIGHT // 2)
        await_wheel(self.desktop, "taken")
        self.injector.scroll("up", 1)

    def test_from_the_first_click_to_a_tool_that_works(self):
        self.shell.open_hub()
        self.click("push button", "Power", TOOL)
        wait_until(lambda: self.eyes.find("push button", "Power", TOOL).is_on, "the tool is on")
        self.click("push button", "Customize", TOOL)
        self.click("check box", "Left edge")
        wait_until(lambda: self.eyes.find("check box", "Left edge").is_on, "the edge is armed")
        slider = [thing for thing in self.eyes.things() if thing.role == "slider"][-1]
        self.drag_to_start(slider, "Tool4ScrollSensitivity")
        wait_until(lambda: [thing.value[2] for thing in self.eyes.things()
                            if thing.role == "slider"][-1] == 1, "one notch for a step")
        self.close_hub()

        self.history.go_to(2)
        self.scroll_at_edge()
        self.history.expect(1)

        self.shell.open_hub()
        self.click("push button", "Remove", TOOL)
        sheet = self.eyes.find("dialog", f"Remove {TOOL}?")
        self.injector.move(*self.eyes.find("push button", "Remove", within=sheet).middle)
        self.injector.click(1)
        self.shell.press_key("Escape")
        self.injector.move(BAND // 2, HEIGHT // 2)
        await_wheel(self.desktop, "free")

        self.shell.open_hub()
        self.click("push button", "Install", TOOL)
        self.eyes.find("push button", "Power", TOOL)
        self.shell.press_key("Escape")
        self.shell.await_no_hub()
        self.scroll_at_edge()
        self.history.expect(0)


if __name__ == "__main__":
    unittest.main()
