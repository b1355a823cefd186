#!/usr/bin/env python3
"""The item in the tray, the hub that it opens and the menu, on the panels and window managers that
people have."""

import signal
import time
import unittest

from quillon_desktop import HEIGHT, WIDTH
from shell_desktop import SCREEN, NotifierShell, ShellTest
from witnesses import SHELL_WITH_SCREEN, X11_PROBE, wait_until

OPENING = 0.35  # seconds after opening within which clicks elsewhere do not count
FAR = (WIDTH // 3, HEIGHT * 3 // 4)


class TrayTests:
    """The same on each of them."""

    def test_left_click_opens_and_left_click_closes(self):
        self.start_shell()
        shell = self.shell
        for _ in range(3):
            shell.open_hub()
            self.assertTrue(SCREEN.contains(shell.hub_place()), shell.hub_place())
            shell.click_item()
            shell.await_no_hub()
        self.assertIsNone(shell.menu())

    def test_the_hub_is_in_no_taskbar_or_pager_and_on_every_desktop(self):
        self.start_shell()
        self.shell.open_hub()
        hub = self.shell.hub()
        state = self.desktop.run("xprop", "-id", hub, "_NET_WM_STATE", "_NET_WM_DESKTOP")
        for part in ("SKIP_TASKBAR", "SKIP_PAGER", "= 4294967295"):
            self.assertIn(part, state)

    def test_clicks_outside(self):
        """Not in the first moments, then the first one closes it."""
        self.start_shell()
        for _ in range(3):
            before = time.monotonic()
            self.shell.open_hub()
            self.injector.move(*FAR)
            while self.shell.hub() is not None:
                self.assertLess(time.monotonic() - before, 5, "a click outside did not close it")
                self.injector.click(1)
            self.assertGreater(time.monotonic() - before, OPENING)

    def test_the_menu_by_mouse_and_keyboard(self):
        quillon = self.start_shell()
        shell = self.shell
        shell.click_item(3)
        menu = shell.await_menu()
        self.assertTrue(SCREEN.contains(menu), menu)
        self.assertIsNone(shell.hub())
        shell.press_key("Escape")
        shell.await_no_menu()

        shell.click_item(3)
        shell.await_menu()
        self.injector.move(*FAR)
        self.injector.click(1)
        shell.await_no_menu()

        shell.click_item(3)
        shell.await_menu()
        shell.press_key("Up", "Return")
        self.assertEqual(quillon.wait(), 0)

    def test_quit_by_mouse(self):
        quillon = self.start_shell()
        self.shell.click_item(3)
        menu = self.shell.await_menu()
        self.injector.move(menu.x + menu.width // 2, menu.y + menu.height - 14)
        self.injector.click(1)
        self.assertEqual(quillon.wait(), 0)

    def test_a_right_click_leaves_the_hub_as_it_is(self):
        self.start_shell()
        self.shell.open_hub()
        self.shell.click_item(3)
        self.shell.await_menu()
        self.assertIsNotNone(self.shell.hub())
        self.shell.press_key("Escape")
        self.shell.await_no_menu()
        self.assertIsNotNone(self.shell.hub())

    def test_escape_closes(self):
        self.start_shell()
        self.shell.open_hub()
        self.shell.press_key("Escape")
        self.shell.await_no_hub()

    def test_the_panel_is_killed_and_starts_again(self):
        self.start_shell()
        for _ in range(2):
            self.restart_panel()
            wait_until(self.has_tray, "a tray")
            started = time.monotonic()
            self.shell.await_item()
            print(f"{self.id()}: {time.monotonic() - started:.2f} s after the tray")
            self.assertLess(time.monotonic() - started, 1)
            self.shell.open_hub()
            self.shell.click_item()
            self.shell.await_no_hub()

    def has_tray(self):
        return self.desktop.run(X11_PROBE, "owner", "_NET_SYSTEM_TRAY_S0").strip() == "somebody"

    def restart_panel(self):
        self.desktop.panel.send_signal(signal.SIGKILL)
        self.desktop.panel.wait()
        wait_until(lambda: self.shell.item() is None, "the item is gone with the panel")
        self.desktop.start_panel(self.options["panel"])


class NotifierTests(TrayTests):
    shell_type = NotifierShell

    def setUp(self):
        super().setUp()
        self._host = self.shell.start_host()
        self.addCleanup(lambda: self.desktop.end(self._host))

    def restart_panel(self):
        self._host.send_signal(signal.SIGKILL)
        self._host.wait()
        self._host = self.shell.start_host()

    def has_tray(self):
        return True  # it has said so


class Tint2Openbox(TrayTests, ShellTest):
    pass


class Tint2Icewm(TrayTests, ShellTest):
    options = {"panel": "tint2", "bus": True, "window_manager": "icewm"}


class Tint2Xfwm4(TrayTests, ShellTest):
    options = {"panel": "tint2", "bus": True, "window_manager": "xfwm4"}


class Xfce4PanelOpenbox(TrayTests, ShellTest):
    options = {"panel": "xfce4-panel", "bus": True}


class Xfce4PanelIcewm(TrayTests, ShellTest):
    options = {"panel": "xfce4-panel", "bus": True, "window_manager": "icewm"}


class Xfce4PanelXfwm4(TrayTests, ShellTest):
    options = {"panel": "xfce4-panel", "bus": True, "window_manager": "xfwm4-composited"}


class NotifierOpenbox(NotifierTests, ShellTest):
    options = {"bus": True}


class NotifierIcewm(NotifierTests, ShellTest):
    options = {"bus": True, "window_manager": "icewm"}


class NotifierXfwm4(NotifierTests, ShellTest):
    options = {"bus": True, "window_manager": "xfwm4"}


class NoTray(ShellTest):
    options = {"bus": True}

    def test_it_says_so_and_a_second_start_shows_the_hub(self):
        quillon = self.start_quillon()
        quillon.wait_for_line("No tray on this desktop")
        for _ in range(2):  # the second time it is open already, and stays
            self.assertEqual(self.run_quillon().wait(), 0)
            self.shell.await_hub()
            wait_until(self.shell.hub_has_focus, "the hub has the keyboard's focus")
            self.assertTrue(SCREEN.contains(self.shell.hub_place()))
        self.shell.press_key("Escape")
        self.shell.await_no_hub()

    def test_a_tray_that_comes_late(self):
        quillon = self.start_quillon()
        quillon.wait_for_line("No tray on this desktop")
        self.desktop.start_panel("tint2")
        self.addCleanup(lambda: self.desktop.end(self.desktop.panel))
        quillon.wait_for_line("The tray is there")
        self.shell.open_hub()


class OtherPlaces(ShellTest):
    """Panels elsewhere than at the top."""

    options = {"bus": True}

    def open_beside(self, panel: str):
        self.desktop.start_panel(panel)
        self.addCleanup(lambda: self.desktop.end(self.desktop.panel))
        self.start_shell()
        self.shell.open_hub()
        place = self.shell.hub_place()
        self.assertTrue(SCREEN.contains(place), place)
        return self.shell.await_item(), place

    def test_a_panel_at_the_bottom(self):
        item, hub = self.open_beside("tint2-bottom")
        self.assertLessEqual(hub.y + hub.height, HEIGHT - 30)
        self.assertGreater(hub.y + hub.height, HEIGHT - 30 - 20)
        self.assertLessEqual(abs(hub.x + hub.width // 2 - item.middle[0]), WIDTH)

    def test_points_that_are_two_pixels_on_a_low_screen(self):
        resources = self.desktop.folder / "resources"
        resources.write_text("Xft.dpi: 192\n")
        self.desktop.run("xrdb", "-merge", resources)
        self.addCleanup(self.desktop.run, "xrdb", "-remove")
        _item, hub = self.open_beside("tint2")
        self.assertEqual(hub.width, 720)
        self.assertGreaterEqual(hub.y, 30)

    def test_a_panel_at_the_left(self):
        _item, hub = self.open_beside("tint2-left")
        self.assertGreaterEqual(hub.x, 90)
        self.assertLess(hub.x, 90 + 20)


class OpenSheet(ShellTest):
    """A question in the hub that is to be answered first."""

    SCREEN = """
        import QtQuick
        import QtQuick.Window
        Rectangle {
            implicitWidth: 300; implicitHeight: 200
            property bool sheetAttached: true
            Window.onActiveChanged: answered.start()
            Timer { id: answered; interval: 2000; onTriggered: parent.sheetAttached = false }
        }"""

    def test_clicks_outside_close_the_hub_only_without_it(self):
        screen = self.desktop.folder / "Screen.qml"
        screen.write_text(self.SCREEN)
        quillon = self.run_quillon(program=SHELL_WITH_SCREEN, arguments=[screen])
        quillon.may_say("Info.json")  # which lies beside the real program
        self.shell.await_item()
        self.shell.open_hub()
        opened = time.monotonic()  # the sheet goes two seconds after the hub had the keyboard
        self.injector.move(*FAR)
        clicks = 0
        while self.shell.hub() is not None:
            self.assertLess(time.monotonic() - opened, 10, "a click outside did not close it")
            self.injector.click(1)
            clicks += 1
        print(f"{self.id()}: open for {time.monotonic() - opened:.2f} s, {clicks} clicks")
        self.assertGreater(time.monotonic() - opened, 1.5)
        self.assertGreater(clicks, 3)
        self.assertTrue(quillon.is_running())


if __name__ == "__main__":
    unittest.main()
