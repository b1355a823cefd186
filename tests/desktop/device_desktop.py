"""The ground of the tests with devices that have scroll axes, on a server that has such devices."""

import itertools

from quillon_desktop import HEIGHT, WIDTH, GestureTest
from devices import Device, await_taken
from witnesses import GTK3_CLIENT, QT6_CLIENT, Client, await_idle, wait_until

SCROLLERS = ("mouse", "second mouse", "touchpad")
SCROLLS = ("scroll", "derived")  # as clients call them
HALF = HEIGHT // 2
# In the midst of each client, and well away from an edge between two monitors.
CENTRE = {"GTK 3": (WIDTH // 4, HALF // 2), "Qt 6": (WIDTH // 4, HALF + HALF // 2)}


class DeviceTest(GestureTest):
    """With a GTK 3 and a Qt 6 program, one above the other, over the whole screen, and hands at
    several devices. What the programs get when there is no Quillon is what they shall get."""

    options = {"server": "xorg"}
    quillon = None  # the one that runs, if any

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.mouse, cls.second_mouse, cls.touchpad = (Device(cls.desktop, name)
                                                     for name in SCROLLERS)
        cls.clients = {
            name: Client(cls.desktop, cls.mouse, program, name, (0, y, WIDTH, HALF), ["--all"])
            for name, program, y in (("GTK 3", GTK3_CLIENT, 0), ("Qt 6", QT6_CLIENT, HALF))}
        cls._introduce()

    @classmethod
    def _introduce(cls) -> None:
        """The first that a toolkit ever hears of a device may go wrong."""
        for name, (x, y) in CENTRE.items():
            cls.injector.move(x, y)
            for device in (cls.mouse, cls.second_mouse, cls.touchpad):
                for direction in ("up", "down", "left", "right"):
                    cls.clients[name].await_click(device)
                    device.scroll(direction, 1)

    def start(self, *edges: str, **settings) -> None:
        """Starts the program; the pointer is outside of every band."""
        self.quillon = self.start_quillon(*edges, **settings)
        self.addCleanup(setattr, self, "quillon", None)

    # The pointer, moved by the mouse

    def go_to(self, x: int, y: int) -> None:
        """In one step."""
        was_x, was_y = self.desktop.pointer()
        self.mouse.move(x - was_x, y - was_y)
        self.await_pointer(x, y)

    def step(self, dx: int, dy: int, device: Device | None = None) -> None:
        """Until a program has got it: a toolkit that is busy makes one motion out of several."""
        x, y = self.desktop.pointer()
        target = min(max(x + dx, 0), WIDTH - 1), min(max(y + dy, 0), HEIGHT - 1)
        line = "motion {} {}".format(*target)
        (device or self.mouse).move(dx, dy)
        if target != (x, y):
            wait_until(lambda: any(client.last("motion") == line
                                   for client in self.clients.values()), f"a program gets {line!r}")

    def press(self, button: int, device=None) -> None:
        self._act("press", button, device or self.mouse)

    def release(self, button: int, device=None) -> None:
        self._act("release", button, device or self.mouse)

    def click(self, button: int, device=None) -> None:
        self.press(button, device)
        self.release(button, device)

    def _act(self, what: str, button: int, device) -> None:
        """Until a program has got it: Qt loses some of those that are faster than any finger."""
        def count():
            return sum(client.count(f"{what} {button}") for client in self.clients.values())

        before = count()
        getattr(device, what)(button)
        wait_until(lambda: count() > before, f"a program gets {what} {button}")

    def await_pointer(self, x: int, y: int, limit=5.0) -> None:
        wait_until(lambda: self.desktop.pointer() == (x, y), f"the pointer is at {x}, {y}", limit)

    def go_into_band(self, x: int, y: int) -> None:
        """Until the program, if there is one, has taken the devices."""
        self.go_to(x, y)
        self.await_held()

    def go_out_of_band(self, x=WIDTH // 4, y=HALF // 2) -> None:
        self.go_to(x, y)
        self.await_free()

    def await_held(self) -> None:
        if self.quillon:
            await_taken(self.desktop, SCROLLERS)

    def await_free(self) -> None:
        await_taken(self.desktop, ())

    # What programs receive

    def settle(self) -> None:
        """Until the program under the pointer has read everything."""
        _, y = self.desktop.pointer()
        await_idle(self.clients["GTK 3" if y < HALF else "Qt 6"].process)

    def scroll(self, device: Device, direction: str, notches: int, **how) -> None:
        """Until the program under the pointer has read it: Qt drops what it has not yet read when
        a motion of other axes follows."""
        device.scroll(direction, notches, **how)
        self.settle()

    def take_up(self, device: Device) -> None:
        """Until the program under the pointer knows that this device moves it now. When it learns
        of that by scrolling, it makes of the first scrolling whatever it can."""
        _, y = self.desktop.pointer()
        self.clients["GTK 3" if y < HALF else "Qt 6"].await_click(device)

    def listen(self, scenario) -> dict[str, list[str]]:
        """What each program receives of it, from and to a place in the midst of the first one."""
        for name in reversed(CENTRE):
            self.go_out_of_band(*CENTRE[name])
            self.clients[name].received()
        for client in self.clients.values():
            client.forget()
        scenario()
        received = {}
        for name, place in CENTRE.items():
            self.go_out_of_band(*place)
            received[name] = gathered(self.clients[name].received())
        return received

    def expect_as_without(self, scenario, *edges: str, leave_out="",
                          **settings) -> dict[str, list[str]]:
        """That all programs receive the same with Quillon as without it; answers what. One kind of
        event may be left out."""
        def heard():
            return {name: [line for line in lines if line.split()[0] != leave_out]
                    for name, lines in self.listen(scenario).items()}

        without = heard()
        self.start(*edges, **settings)
        self.maxDiff = None
        self.assertEqual(heard(), without)
        return without


def gathered(lines: list[str]) -> list[str]:
    """Without what does nothing: motion to where the pointer is already, of which Qt tells nobody,
    and scrolling by nothing, as which GTK 3 reports the first that it hears of an axis. What is
    scrolled without anything else in between is added up: a toolkit that is busy does so too. Sums
    are exact to a millionth of a notch."""
    result, place = [], None
    lines = [line for line in lines
             if not line.startswith("motion") or place != (place := line)]
    for are_scrolls, run in itertools.groupby(lines, lambda line: line.split()[0] in SCROLLS):
        run = list(run)
        if not are_scrolls:
            result += run
        else:
            sums = {kind: total(run, kind) for kind in SCROLLS}
            result += ["{} {:g} {:g}".format(kind, *sums[kind])
                       for kind in SCROLLS if any(sums[kind])]
    return result


def total(lines: list[str], kind="scroll") -> tuple[float, float]:
    """By how much they scroll to the right and up."""
    steps = [line.split() for line in lines if line.startswith(f"{kind} ")]
    return tuple(round(sum(float(step[axis]) for step in steps), 6) + 0.0 for axis in (1, 2))
