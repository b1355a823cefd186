#!/usr/bin/env python3
"""Every screen and every control, used by somebody who does not see them."""

import json
import unittest

from screen_reader import ALWAYS_ON, ScreenReader, start_accessibility_bus
from shell_desktop import ShellTest
from witnesses import ask_until, wait_until

BUTTON, SWITCH, SLIDER, FIELD = "push button", "check box", "slider", "text"
TOOLS = ["Window+", "Media+", "Desktop+", "Volume+", "Trackpad+", "Scroll+"]
EDGES = ["Top edge", "Bottom edge", "Left edge", "Right edge"]

# What each tool's settings offer: switches and sliders (where, lowest, highest), with the keys of
# the settings that they change.
SWITCHES = {
    "Window+": dict.fromkeys(EDGES),
    "Media+": dict.fromkeys([*EDGES, "Middle mouse button", "Left mouse button"]),
    "Desktop+": dict(zip(EDGES, ("Tool4TopEdge", "Tool4BottomEdge", "Tool4LeftEdge",
                                 "Tool4RightEdge"))),
    "Volume+": dict(zip(EDGES, ("Tool5TopEdge", "Tool5BottomEdge", "Tool5LeftEdge",
                                "Tool5RightEdge"))),
    "Trackpad+": {},
    "Scroll+": dict.fromkeys(["Reverse trackpad", "Reverse mouse wheel"]),
}
SLIDERS = {
    "Window+": {"Edge sensitivity": (10, 100), "Scroll sensitivity": (1, 10)},
    "Media+": {"Edge sensitivity": (10, 100)},
    "Desktop+": {"Edge sensitivity": (10, 100), "Scroll sensitivity": (1, 10)},
    "Volume+": {"Edge sensitivity": (10, 100), "Step size": (1, 10)},
    "Trackpad+": {},
    "Scroll+": {},
}


class Screens(ShellTest):
    options = {"panel": "tint2", "bus": True, "environment": ALWAYS_ON}

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        start_accessibility_bus(cls.desktop)

    def setUp(self):
        super().setUp()
        self.start_shell()
        self.shell.open_hub()
        self.reader = ScreenReader(self.desktop, "Quillon")

    def settings(self) -> dict:
        return json.loads((self.desktop.config / "com.pelorin.PelorinApp/defaults.json").read_text())

    def await_setting(self, key: str, value) -> None:
        wait_until(lambda: self.settings().get(key) == value, f"{key} is {value}")

    def open_tool(self, tool: str) -> None:
        self.reader.press(BUTTON, "Customize", tool)
        self.reader.find(BUTTON, "Back")

    def back(self) -> None:
        self.reader.press(BUTTON, "Back")
        self.reader.find(BUTTON, "Customize", TOOLS[0])

    def slider(self, title: str):
        return self.reader.find(SLIDER, "Slider", f"{title}: ")

    def test_everything_has_a_name(self):
        for tool in [None, *TOOLS]:
            if tool:
                self.open_tool(tool)
            for thing in self.reader.things():
                if "focusable" in thing.states and thing.role in (BUTTON, SWITCH, SLIDER, FIELD):
                    self.assertNotEqual(thing.name, "", thing)
                    self.assertTrue(thing.actions or thing.role in (SLIDER, FIELD), thing)
            if tool:
                self.back()

    def test_the_list(self):
        for tool in TOOLS:
            for state in (False, True):
                self.reader.press(BUTTON, "Power", tool)
                wait_until(lambda: self.reader.find(BUTTON, "Power", tool).is_on == state,
                           f"{tool} is {'on' if state else 'off'}")
        for section in ("Installed", "Marketplace"):
            for state in (False, True):
                self.reader.press(BUTTON, section)
                wait_until(lambda: self.reader.find(BUTTON, section).is_on == state, section)

    def test_a_tool_is_removed_and_installed(self):
        self.reader.press(BUTTON, "Remove", "Media+")
        self.reader.find("dialog", "Remove Media+?")
        self.reader.press(BUTTON, "Cancel")
        self.reader.find(BUTTON, "Customize", "Media+")
        self.reader.press(BUTTON, "Remove", "Media+")
        sheet = self.reader.find("dialog", "Remove Media+?")
        self.reader.act(self.reader.find(BUTTON, "Remove", within=sheet), "Press")
        ask_until(lambda: self.reader.press(BUTTON, "Install", "Media+"),
                  lambda: self.reader.shows(BUTTON, "Back") is False
                  and self.reader.find(BUTTON, "Customize", "Media+"), "it is back")

    def test_switches(self):
        for tool, switches in SWITCHES.items():
            self.open_tool(tool)
            for name, key in switches.items():
                before = self.reader.find(SWITCH, name).is_on
                for state in (not before, before):
                    self.reader.act(self.reader.find(SWITCH, name), "Toggle")
                    wait_until(lambda: self.reader.find(SWITCH, name).is_on == state,
                               f"{tool} {name} {state}")
                    if key:
                        self.await_setting(key, state)
            self.back()

    def test_sliders(self):
        for tool, sliders in SLIDERS.items():
            self.open_tool(tool)
            for title, (lowest, highest) in sliders.items():
                self.assertEqual(self.slider(title).value[:2], [lowest, highest])
                for number in (highest, lowest, 7 if highest == 10 else 33.25):
                    self.reader.set_value(self.slider(title), number)
                    wait_until(lambda: self.slider(title).value[2] == number,
                               f"{tool} {title} {number}")
                    self.assertEqual(self.slider(title).name, "Slider")
                    self.assertIn(f"{number:.2f}", self.slider(title).description)
            self.back()

    def test_excluded_applications(self):
        self.open_tool("Window+")
        for name in ("Mail", "  Terminal "):
            self.reader.focus(self.reader.find(FIELD, "App name (e.g. Slack)"))
            self.desktop.run("xdotool", "type", name)
            self.reader.press(BUTTON, "Add")
            self.reader.find(BUTTON, f"Remove {name.strip()}")
        self.reader.press(BUTTON, "Remove Mail")
        wait_until(lambda: not self.reader.shows(BUTTON, "Remove Mail"), "it is gone")
        self.reader.find(BUTTON, "Remove Terminal")


if __name__ == "__main__":
    unittest.main()
