"""Where the program's item, hub and menu are on a desktop, as the X server tells."""

import re

from desktop_children import Failed

TITLE = "Quillon"
LARGEST_ITEM = 64  # pixels; what is larger is no tray item
_WINDOW = re.compile(r'(0x\w+) (?:"(?P<title>[^"]*)"|\(has no name\)): \((?P<names>.*?)\)\s+'
                     r"(\d+)x(\d+)\+-?\d+\+-?\d+\s+\+(-?\d+)\+(-?\d+)")


class Rectangle:
    """In pixels, from the screen's top left corner."""

    def __init__(self, x: int, y: int, width: int, height: int):
        self.x, self.y, self.width, self.height = x, y, width, height

    @property
    def middle(self) -> tuple[int, int]:
        return self.x + self.width // 2, self.y + self.height // 2

    def contains(self, other: "Rectangle") -> bool:
        return (self.x <= other.x and other.x + other.width <= self.x + self.width
                and self.y <= other.y and other.y + other.height <= self.y + self.height)

    def __repr__(self):
        return f"{self.width}x{self.height}+{self.x}+{self.y}"

    def __eq__(self, other):
        return repr(self) == repr(other)


class ShellView:
    def __init__(self, desktop):
        self.desktop = desktop

    def item(self) -> Rectangle | None:
        """Where it is, if it is in a tray."""
        return next((place for _window, place in self._windows(TITLE)
                     if place.width <= LARGEST_ITEM and place.x >= 0 and place.y >= 0), None)

    def hub(self) -> str | None:
        """Its window, if it is open."""
        try:
            return self.desktop.window(TITLE)
        except Failed:  # it went away meanwhile
            return None

    def hub_place(self) -> Rectangle:
        place = {}
        for line in self.desktop.run("xwininfo", "-id", self.hub()).splitlines():
            name, _, value = line.partition(":")
            place[name.strip()] = value.strip()
        return Rectangle(*(int(place[name]) for name in (
            "Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")))

    def menu(self) -> Rectangle | None:
        """Where it is, if it is open."""
        return next((place for window, place in self._windows()
                     if place.height > LARGEST_ITEM and self._is_open_menu(window)), None)

    def _is_open_menu(self, window: str) -> bool:
        try:
            facts = self.desktop.run("xwininfo", "-id", window)
            return "IsViewable" in facts and "Override Redirect State: yes" in facts
        except Failed:
            return False

    def _windows(self, title=None):
        """Those of the program, and their places."""
        for line in self._tree().splitlines():
            found = _WINDOW.search(line)
            if found and "quillon" in found["names"] and title in (None, found["title"]):
                width, height, x, y = (int(number) for number in found.groups()[-4:])
                yield found[1], Rectangle(x, y, width, height)

    def _tree(self) -> str:
        for _attempt in range(20):
            try:
                return self.desktop.run("xwininfo", "-root", "-tree")
            except Failed as failure:
                if "Bad" not in str(failure):
                    raise
                latest = failure  # a window went away while it was being asked about
        raise latest
