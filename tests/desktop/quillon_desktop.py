"""The ground of the tests of the real program on a real X server with a real window manager."""

import itertools
import signal
import unittest

from witnesses import (GTK3_CLIENT, QT6_CLIENT, QUILLON, Client, DesktopHistory, Failed, Injector,
                       Lines, PrivateDesktop, await_idle, await_wheel, wait_until,
                       write_settings)

WIDTH, HEIGHT = 1280, 800  # of a private desktop
BAND = 40  # pixels from the frame within which a band reaches by default, the last one included

# As a setting: the desktop switcher is off.
OFF = {"HubEnabled.tool.desktopSwitcher": False}

_numbers = itertools.count(1)

# What it says on every start, or its toolkit when the X server goes, or the leak checker of a thread
# that is just ending then.
USUAL_LINES = ("App launched!", "Creating status bar item", "Status bar item created", "Icon set",
               "Setup complete!", "No tray on this desktop", "Status bar item clicked",
               "Popover opened", "Popover closed", "The X11 connection broke", "X connection to",
               "XIO:  fatal IO error", "requests (",
               "QSocketNotifier: Invalid socket", "xcb_shm_create_segment() failed",
               "Unable to get registers from thread",
               "Media Control:", "Edge check -", "Window switcher",
               "Cannot start monitoring: no accessibility permission")


class Quillon:
    """A running program under test."""

    def __init__(self, desktop, arguments=(), program=QUILLON, **popen):
        self.name = f"quillon-{next(_numbers)}"
        self._desktop, self._lines = desktop, Lines(desktop, self.name)
        self._expected = list(USUAL_LINES)
        self.process = desktop.start(self.name, [program, *arguments], **popen)

    def lines(self) -> list[str]:
        return self._lines.all()

    def unexpected_lines(self) -> list[str]:
        """Those that the test does not reckon with."""
        return [line for line in self.lines()
                if not any(part in line for part in self._expected)]

    def may_say(self, part: str) -> None:
        self._expected.append(part)

    def wait_for_line(self, part: str, limit=10.0) -> None:
        self.may_say(part)
        self._desktop.wait_for(self.process, lambda: any(part in line for line in self.lines()),
                               f"a line with {part!r}", limit)

    def is_running(self) -> bool:
        return self.process.poll() is None

    def stop(self, number=signal.SIGTERM, limit=5.0) -> int:
        """Sends a signal and answers the status with which it ends."""
        self.process.send_signal(number)
        return self.wait(limit)

    def wait(self, limit=5.0) -> int:
        return self.process.wait(limit)


class ProgramTest(unittest.TestCase):
    """Each test starts the program, on the desktop that somebody has put into `desktop`."""

    def start_quillon(self, *edges: str, environment=None, **settings) -> Quillon:
        """With these edges armed and everything else as by default."""
        write_settings(self.desktop, {f"Tool4{edge}Edge": True for edge in edges} | settings)
        return self.run_quillon(env=self.desktop.environment | (environment or {}))

    def run_quillon(self, **how) -> Quillon:
        """With what is stored."""
        quillon = Quillon(self.desktop, **how)
        self.addCleanup(self._end, quillon)
        return quillon

    def _end(self, quillon: Quillon) -> None:
        """A program that a test leaves running must still be there, and end cleanly, and it has
        said nothing that the test does not reckon with."""
        try:
            if quillon.process.returncode is None:
                self.assertTrue(quillon.is_running(),
                                f"the program has ended by itself: {quillon.process.poll()}")
                self.assertEqual(quillon.stop(), 0)
            self.assertEqual(quillon.unexpected_lines(), [])
        finally:
            print(f"{self.id()}: {quillon.name} printed:", *quillon.lines(), sep="\n    ")


class DesktopTest(ProgramTest):
    """Each class has one desktop for all its tests."""

    options = {}  # for PrivateDesktop

    @classmethod
    def setUpClass(cls):
        cls.desktop = cls.enterClassContext(PrivateDesktop(**cls.options))


class GestureTest(DesktopTest):
    """With a hand at the mouse and a record of the desktops."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.injector = Injector(cls.desktop)
        cls.history = DesktopHistory(cls.desktop)

    def start_quillon(self, *edges: str, **how) -> Quillon:
        """Until it has done all that it does at its start: the hand does not hurry."""
        quillon = super().start_quillon(*edges, **how)
        quillon.wait_for_line("Setup complete!")
        await_idle(quillon.process)
        return quillon

    def go_into_band(self, x: int, y: int) -> None:
        self.injector.move(x, y)
        await_wheel(self.desktop, "taken")

    def go_out_of_band(self, x=WIDTH // 2, y=HEIGHT // 2) -> None:
        self.injector.move(x, y)
        await_wheel(self.desktop, "free")

    def expect_changes(self, count: int, last: int, limit=10.0) -> None:
        """So many changes of the desktop, the last one to `last`."""
        try:
            wait_until(lambda: len(self.history.changes()) >= count, f"{count} changes", limit)
        except Failed as failure:
            self.fail(f"{failure}, only {self.history.changes()}")
        changes = self.history.changes()
        self.assertEqual((len(changes), changes[-1]), (count, last), changes)
        self.history.forget()

    def expect_no_more_changes(self, quillon: Quillon) -> None:
        """Ends the program, and with it all that it still had to do."""
        self.assertEqual(quillon.stop(), 0)
        self.assertEqual(self.history.remainder(), [])


class ClientTest(GestureTest):
    """With a GTK 3 and a Qt 6 program, one above the other, over the whole screen."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        half = HEIGHT // 2
        cls.gtk = Client(cls.desktop, cls.injector, GTK3_CLIENT, "GTK 3", (0, 0, WIDTH, half))
        cls.qt = Client(cls.desktop, cls.injector, QT6_CLIENT, "Qt 6", (0, half, WIDTH, half))
        cls.clients = [(cls.gtk, half // 2), (cls.qt, half + half // 2)]  # and a height in each

    def setUp(self):
        super().setUp()
        for client, _ in self.clients:
            client.forget()
