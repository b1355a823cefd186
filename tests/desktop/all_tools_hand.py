"""A hand that does at random what people do with a mouse and a trackpad, and knows what the
programs below are to get of it."""

import collections

from all_tools import ROW, THREE, AllToolsTest
from quillon_desktop import BAND, HEIGHT, WIDTH
from witnesses import SCROLLS, await_wheel, wait_until

HALF = HEIGHT // 2
CENTRE = {"GTK 3": (WIDTH // 2, HALF // 2), "Qt 6": (WIDTH // 2, HALF + HALF // 2)}
BOTTOM = 50  # pixels from the lower frame within which the window switcher's band reaches
DOUBT = 3  # pixels about a band's border, of which is not said here what they belong to
REVERSED = {"up": "down", "down": "up", "left": "right", "right": "left"}


def within(distance: int, width: int) -> bool | None:
    """Of a band; None near its border."""
    return None if abs(distance - width) <= DOUBT else distance < width


class RandomHand(AllToolsTest):
    """A notch in a band that consumes, made before the program has taken the wheel there, may go to
    the program below or to the tool; to one of the two it must."""

    def begin(self) -> None:
        self.start_all()
        self.events, self.done = 0, collections.Counter()
        self.contacts, self.is_settled = 0, True  # whether the left button is held, if it is to be
        self.current = ROW // 2
        self.expected = {name: collections.Counter() for name in CENTRE}  # what clients get
        self.doubtful = {name: collections.Counter() for name in CENTRE}  # and may get besides
        self.notches, self.consumed = 0, 0
        self.middle_clicks = 0  # made as such
        self.volume_turns = collections.Counter()
        self.acted_before = self.acted()
        self.go(*CENTRE["GTK 3"])

    # Where we are

    def client(self) -> str:
        return "GTK 3" if self.place[1] < HALF else "Qt 6"

    def is_left(self) -> bool | None:
        return within(self.place[0], BAND)

    def is_bottom(self) -> bool | None:
        return within(HEIGHT - 1 - self.place[1], BOTTOM)

    def is_consuming(self) -> bool | None:
        bands = (self.is_left(), self.is_bottom())
        return True if True in bands else None if None in bands else False

    def go(self, x: int, y: int) -> None:
        self.injector.move(x, y)
        self.place = x, y
        self.count("motions")

    def count(self, what: str, times=1) -> None:
        self.done[what] += times
        self.events += times

    def jump(self) -> None:
        near, chance = BAND + 20, self.random
        self.go(chance.choice([chance.randrange(near), WIDTH - 1 - chance.randrange(near),
                               chance.randrange(WIDTH)]),
                chance.choice([chance.randrange(near), HEIGHT - 1 - chance.randrange(near),
                               chance.randrange(HEIGHT), chance.randrange(HEIGHT)]))

    def glide(self) -> None:
        """As a device moves, of which programs hear when the server has time."""
        steps = self.random.randint(1, 20)
        dx, dy = self.random.randint(-40, 40), self.random.randint(-25, 25)
        x, y = self.place
        for _ in range(steps):
            self.injector.quietly(f"nudge {dx} {dy}")
            x, y = min(max(x + dx, 0), WIDTH - 1), min(max(y + dy, 0), HEIGHT - 1)
        self.count("motions", steps)
        self.go(x, y)

    # Scrolling

    def acted(self) -> int:
        """What the two tools that consume have done, a notch each."""
        return self.changes["change"] + self.says["cycled"]

    def accounted(self) -> int:
        return (sum(tally.sum("scroll") for tally in self.tallies.values())
                + self.acted() - self.acted_before)

    def await_accounted(self) -> None:
        wait_until(lambda: self.accounted() >= self.notches,
                   f"{self.notches} notches, of which {self.accounted()} are accounted for")
        self.assertEqual(self.accounted(), self.notches)

    def turn(self, direction: str, notches: int) -> None:
        self.trace[-1] += f", {notches} {direction}"
        self.notches += notches
        raises = direction in ("down", "left")  # reversed
        self.volume_turns["raise" if raises else "lower"] += notches
        self.injector.scroll(direction, notches)
        self.count("notches", notches)

    def inwards(self) -> str:
        """A direction in which the desktops do not end."""
        return self.random.choice(["up", "right"] if self.current < ROW // 2 else ["down", "left"])

    def scroll(self) -> None:
        is_consuming = self.is_consuming()
        if is_consuming is False:
            direction = self.random.choice([*SCROLLS])
            self.scroll_below(self.client(), direction, self.random.randint(1, 12))
            return
        notches = self.random.randint(1, 3)
        if is_consuming and self.random.random() < 0.7:
            self.scroll_tool(self.inwards(), notches)
        else:
            self.scroll_doubtfully(self.inwards(), notches)

    def scroll_below(self, client: str, direction: str, notches: int) -> None:
        """The program below gets it all."""
        self.expected[client][SCROLLS[REVERSED[direction]]] += notches
        self.turn(direction, notches)

    def scroll_tool(self, direction: str, notches: int) -> None:
        """The tool whose band it is gets it all."""
        await_wheel(self.desktop, "taken")
        self.await_accounted()
        self.history.forget()
        acted, there = self.acted(), self.current
        there += notches if direction in ("up", "right") else -notches
        self.turn(direction, notches)
        self.consumed += notches
        wait_until(lambda: self.acted() >= acted + notches, f"{notches} notches are consumed")
        self.await_accounted()
        self.follow_desktop()
        if self.is_left() and self.is_bottom() is False:
            self.assertEqual(self.current, there)

    def scroll_doubtfully(self, direction: str, notches: int) -> None:
        self.await_accounted()
        self.history.forget()
        self.doubtful[self.client()][SCROLLS[REVERSED[direction]]] += notches
        self.turn(direction, notches)
        self.await_accounted()
        self.follow_desktop()

    def follow_desktop(self) -> None:
        self.current = (self.history.changes() or [self.current])[-1]

    # Buttons

    def may_be_turned(self, button: int) -> bool:
        return button == 1 and (self.contacts == THREE or not self.is_settled)

    def expect_click(self, name: str, button: int) -> None:
        self.expected[name].update([f"press {button}", f"release {button}"])

    def press(self, name: str, button: int) -> None:
        """Until it has arrived: while the window manager makes up its mind about one, the server
        loses what is injected."""
        self.trace[-1] += f", button {button}"
        self.expect_click(name, button)
        self.injector.press(button)
        self.count("presses")
        self.middle_clicks += button == 2
        line = f"press {button}"
        wait_until(lambda: self.tallies[name][line] >= self.expected[name][line],
                   f"{name} gets {line!r}")

    def click(self) -> None:
        self.push(self.random.choice([1, 1, 1, 2, 3, 8]), lambda: None)

    def drag(self) -> None:
        self.push(self.random.choice([1, 1, 2, 3]), self.glide)

    def push(self, button: int, meanwhile) -> None:
        name = self.client()
        if self.may_be_turned(button):
            self.push_left(name, meanwhile)
            return
        self.press(name, button)
        meanwhile()
        if meanwhile == self.glide and self.random.random() < 0.2:
            # Who has the button has the wheel.
            self.scroll_below(name, self.random.choice([*SCROLLS]), 2)
        self.injector.release(button)

    def push_left(self, name: str, meanwhile) -> None:
        """With three fingers on the trackpad, or that may just have been."""
        tally, middle = self.tallies[name], self.expected[name]["press 2"]
        presses = middle + self.expected[name]["press 1"] + 1
        self.injector.press(1)
        self.count("presses")
        wait_until(lambda: tally["press 1"] + tally["press 2"] >= presses, f"{name} gets a press")
        is_turned = tally["press 2"] > middle
        if self.is_settled:
            self.assertTrue(is_turned, "three fingers' press is a middle click")
        self.done["turned"] += is_turned
        self.expect_click(name, 2 if is_turned else 1)
        if is_turned:
            wait_until(lambda: tally["release 2"] > middle, f"{name} gets a release")
            self.injector.await_up()
        if self.random.random() < 0.3:
            self.rest(self.random.choice([0, THREE]))
        meanwhile()
        self.injector.release(1)

    def chord(self) -> None:
        """Two buttons at once, of those that GTK 3 knows to be down."""
        name = self.client()
        buttons = [each for each in (1, 2, 3) if not self.may_be_turned(each)]
        buttons = self.random.sample(buttons, 2)
        for button in buttons:
            self.press(name, button)
        if self.random.random() < 0.5:
            self.glide()
        for button in self.random.sample(buttons, 2):
            self.injector.release(button)

    # Fingers

    def rest(self, number: int) -> None:
        changes = (number == THREE) != (self.contacts == THREE)
        self.fingers.rest(number)
        self.contacts = number
        self.is_settled = self.is_settled and not changes
        self.count("touches")

    def settle_fingers(self) -> None:
        self.await_left_button(self.contacts)
        self.is_settled = True

    def touch(self) -> None:
        self.rest(self.random.choice([0, 1, 2, THREE, THREE, 4]))
        if self.random.random() < 0.7:
            self.settle_fingers()
