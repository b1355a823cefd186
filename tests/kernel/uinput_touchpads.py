"""Touchpads that the kernel takes for real ones, and the fingers on them."""

import time

from pace import await_turn
from uinput_devices import ABS_X, ABS_Y, BTN_LEFT, BUS_I2C, EV_ABS, EV_KEY, Device

# From linux/input-event-codes.h.
BTN_TOOL_FINGER, BTN_TOOL_QUINTTAP, BTN_TOUCH = 0x145, 0x148, 0x14a
BTN_TOOL_DOUBLETAP, BTN_TOOL_TRIPLETAP, BTN_TOOL_QUADTAP = 0x14d, 0x14e, 0x14f
ABS_MT_SLOT, ABS_MT_POSITION_X, ABS_MT_POSITION_Y = 0x2f, 0x35, 0x36
ABS_MT_TOOL_TYPE, ABS_MT_TRACKING_ID = 0x37, 0x39
MT_TOOL_FINGER, MT_TOOL_PALM = 0, 2
# For up to five fingers, in millimetres: in the middle, away from where a touchpad has its buttons.
PLACES = [(20 + 12 * finger, 30) for finger in range(5)]
INPUT_PROP_POINTER, INPUT_PROP_BUTTONPAD, INPUT_PROP_SEMI_MT = 0, 2, 3


class Touchpad(Device):
    """One that is itself a button, and sees each finger."""

    UNITS = 40  # per millimetre
    WIDTH, HEIGHT = 100, 60  # millimetres
    TOOLS = (0, BTN_TOOL_FINGER, BTN_TOOL_DOUBLETAP, BTN_TOOL_TRIPLETAP, BTN_TOOL_QUADTAP,
             BTN_TOOL_QUINTTAP)
    SLOTS = 5  # places that it follows fingers in
    KNOWS_PALMS = False
    PROPERTIES = INPUT_PROP_POINTER, INPUT_PROP_BUTTONPAD
    REPORT = 0.008  # seconds from one to the next

    def touch(self, *places) -> None:
        """A finger on each place, in millimetres."""
        self.hold(dict(enumerate(places)))

    def hold(self, places: dict, new=(), palms=()) -> None:
        """From now on, fingers on these places and on no other, by slot, all in one report. A
        finger that was there is the same unless it is `new`, and a finger unless it is one of the
        `palms`."""
        before, self._places = self._places, places
        if not before and not places:
            return
        events = []
        for slot in sorted({*before, *places}):
            if slot >= self.SLOTS:
                continue  # it feels that there is one more, and that is all
            tracking = [(EV_ABS, ABS_MT_SLOT, slot)]
            if slot not in places or slot in new:
                tracking.append((EV_ABS, ABS_MT_TRACKING_ID, -1))
            if slot in places:
                if slot not in before or slot in new:
                    self._touches += 1
                    tracking.append((EV_ABS, ABS_MT_TRACKING_ID, self._touches))
                if self.KNOWS_PALMS:
                    tool = MT_TOOL_PALM if slot in palms else MT_TOOL_FINGER
                    tracking.append((EV_ABS, ABS_MT_TOOL_TYPE, tool))
                tracking += self._place(places[slot])
            events += tracking
        if bool(before) != bool(places):
            events.append((EV_KEY, BTN_TOUCH, bool(places)))
        if len(before) != len(places):
            events += [(EV_KEY, self.TOOLS[len(them)], value)
                       for them, value in ((before, 0), (places, 1)) if them]
        self._report(places or before, *events)

    def slide(self, dx: float, dy: float, steps: int) -> None:
        """All fingers, by so much in all."""
        begin = self._places
        for step in range(1, steps + 1):
            self._places = {slot: (x + dx * step / steps, y + dy * step / steps)
                            for slot, (x, y) in begin.items()}
            self._report(self._places, *(
                event for slot, place in self._places.items() if slot < self.SLOTS
                for event in ((EV_ABS, ABS_MT_SLOT, slot), *self._place(place))))

    def lift(self) -> None:
        self.hold({})

    def scroll(self, direction: str, millimetres: float, steps=0) -> None:
        """With two fingers; up is what turns the content as a wheel does that turns up, which is
        fingers going up."""
        dx, dy = {"up": (0, -1), "down": (0, 1), "left": (-1, 0), "right": (1, 0)}[direction]
        x, y = (middle - way * millimetres / 2
                for middle, way in ((self.WIDTH / 2, dx), (self.HEIGHT / 2, dy)))
        raw, key = self._desktop.raw_events, self.number
        before = raw.stops[key]
        self.touch((x - 10, y), (x + 10, y))
        self.slide(dx * millimetres, dy * millimetres, steps or max(4, round(2 * millimetres)))
        self.lift()
        raw.wait_until(lambda: raw.stops[key] > before,
                       lambda: f"the X server gets the end of the scrolling of {self.name}")

    def _units(self, place) -> tuple[int, int]:
        x, y = place
        return round(x * self.UNITS), round(y * self.UNITS)

    def _place(self, place):
        x, y = self._units(place)
        return [(EV_ABS, ABS_MT_POSITION_X, x), (EV_ABS, ABS_MT_POSITION_Y, y)]

    def _report(self, places: dict, *events) -> None:
        """The pointer follows the first of them."""
        x, y = self._units(places[min(places)])
        await_turn(self._reported + self.REPORT, self._file, self.name)
        # The kernel drops what this device has no code for.
        self._send(*events, (EV_ABS, ABS_X, x), (EV_ABS, ABS_Y, y))
        self._reported = time.monotonic()

    def _describe(self) -> None:
        self._places, self._touches, self._reported = {}, 0, 0.0
        width, height = self.WIDTH * self.UNITS, self.HEIGHT * self.UNITS
        slots = [(ABS_MT_SLOT, self.SLOTS - 1, 0), (ABS_MT_TRACKING_ID, 65535, 0),
                 (ABS_MT_POSITION_X, width, self.UNITS), (ABS_MT_POSITION_Y, height, self.UNITS)]
        palms = [(ABS_MT_TOOL_TYPE, MT_TOOL_PALM, 0)] if self.KNOWS_PALMS else []
        self._declare(
            BUS_I2C, {EV_KEY: [BTN_LEFT, BTN_TOUCH, *self.TOOLS[1:]]},
            [(ABS_X, width, self.UNITS), (ABS_Y, height, self.UNITS),
             *(slots if self.SLOTS else []), *palms], self.PROPERTIES)


class PalmTouchpad(Touchpad):
    """One that tells palms from fingers."""

    KNOWS_PALMS = True


class SemiTouchpad(Touchpad):
    """One that knows the corners of where fingers are, and how many there are."""

    SLOTS = 2
    PROPERTIES = INPUT_PROP_POINTER, INPUT_PROP_SEMI_MT


class OldTouchpad(Touchpad):
    """One that knows where one finger is, and how many there are."""

    SLOTS = 0
    PROPERTIES = INPUT_PROP_POINTER,
