"""Fingers on a real touchpad and a press of it, through the whole program and its touch library."""

from chain_test import ChainTest
from device_desktop import CENTRE
from press_tap import left_button
from quillon_desktop import BAND
from switcher_desktop import SAYS, write_switcher_settings
from uinput_touchpads import PLACES
from witnesses import X11_PROBE, wait_until

MIDDLE, LEFT = ["press 2", "release 2"], ["press 1", "release 1"]


class Presses(ChainTest):
    def start_tool(self, **settings) -> None:
        write_switcher_settings(self.desktop, **settings)
        self.quillon = self.start_quillon()
        self.addCleanup(setattr, self, "quillon", None)
        for part in (*SAYS, "Middle mouse click simulated"):
            self.quillon.may_say(part)
        # Meanwhile it makes its hub, for which an emulated processor takes its time.
        self.quillon.wait_for_line("Window switcher monitoring started", 60)

    def buttons(self, name: str) -> list[str]:
        return [line for line in self.clients[name].received()
                if line.split()[0] in ("press", "release")]

    def press_with(self, contacts: int, name: str) -> list[str]:
        """Fingers touch, press, let go and leave: what the program there gets of it."""
        self.buttons(name)
        self.fingers.touch(*PLACES[:contacts])
        state = "taken" if contacts == 3 else "free"
        wait_until(lambda: left_button(self.desktop) == state, f"the left button is {state}")
        before = self.clients[name].count("release")
        self.fingers.press(1)
        self.fingers.release_unseen(1)
        wait_until(lambda: self.clients[name].count("release") > before, "a release")
        self.fingers.lift()
        wait_until(lambda: left_button(self.desktop) == "free", "the left button is free")
        got = self.buttons(name)
        self.assertEqual(self.desktop.run(X11_PROBE, "buttons"), "", "a button is stuck")
        return got

    def test_two_three_and_four_fingers(self):
        self.start_tool()
        for name, place in CENTRE.items():
            self.go_out_of_band(*place)
            for contacts in (2, 3, 4, 3, 1, 3):
                self.assertEqual(self.press_with(contacts, name),
                                 MIDDLE if contacts == 3 else LEFT, contacts)

    def test_in_a_band(self):
        self.start_tool(LeftEdge=True)
        for name, (_, y) in CENTRE.items():
            self.go_out_of_band(*CENTRE[name])
            self.go_into_band(BAND // 2, y)
            for contacts in (3, 2, 3):
                self.assertEqual(self.press_with(contacts, name),
                                 MIDDLE if contacts == 3 else LEFT, contacts)

    def test_unplugged_in_mid_press(self):
        self.start_tool()
        name = "GTK 3"
        self.go_out_of_band(*CENTRE[name])
        self.buttons(name)
        self.fingers.touch(*PLACES[:3])
        wait_until(lambda: left_button(self.desktop) == "taken", "the left button is taken")
        before = self.clients[name].count("release 2")
        self.fingers.press(1)
        self.fingers.unplug()
        wait_until(lambda: left_button(self.desktop) == "free", "the left button is free")
        wait_until(lambda: self.clients[name].count("release 2") > before, "the middle click's end")
        self.fingers.plug()
        self.assertEqual(self.buttons(name), MIDDLE)
        self.assertEqual(self.press_with(3, name), MIDDLE)


del ChainTest  # its tests are run where they are
