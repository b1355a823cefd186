"""Furnishes a private desktop for people: wallpaper with marked edges, windows, a word."""

import pathlib

from desktop import PrivateDesktop, wait_until

BAND = 40  # how wide an edge band is by default, in points
WELCOME = pathlib.Path(__file__).with_name("welcome.txt")
MOUSEPAD_SETTINGS = "[org/xfce/mousepad/preferences/window]\npath-in-title=false\n"


def furnish(desktop: PrivateDesktop) -> None:
    """Paints the wallpaper and opens a terminal, an editor and a calculator."""
    paint_wallpaper(desktop)
    welcome = desktop.folder / "welcome.bash"
    welcome.write_text(f"PS1='\\$ '\ncat '{WELCOME}'\n")
    open_terminal(desktop, ["bash", "--rcfile", welcome, "-i"], (76, 66, 690, 300))
    open_editor(desktop, (76, 406, 690, 340))
    open_calculator(desktop)


def open_terminal(desktop: PrivateDesktop, command, place) -> str:
    """Answers the window, as the others do. A place is (x, y, width, height)."""
    look = ["-b", "10", "-fa", "DejaVu Sans Mono", "-fs", "10",
            "-bg", "#141c26", "-fg", "#d8e2ee", "-cr", "#2f81c7"]
    return open_window(desktop, ["xterm", "-T", "Terminal", *look, "-e", *command], "Terminal", place)


def open_editor(desktop: PrivateDesktop, place) -> str:
    settings = desktop.config / "glib-2.0/settings/keyfile"
    settings.parent.mkdir(parents=True, exist_ok=True)
    settings.write_text(MOUSEPAD_SETTINGS)
    text = desktop.home / "Scroll here.txt"
    lines = ["Here the wheel is this editor's: scroll, and the text moves.",
             "In the marked bands at the left and right edge it is Quillon's:",
             "scroll there, even over a window, and the desktop changes.", ""]
    text.write_text("\n".join([*lines, *(f"line {number}" for number in range(5, 201)), ""]))
    return open_window(desktop, ["mousepad", "--disable-server", text], "Scroll here", place)


def open_calculator(desktop: PrivateDesktop) -> str:
    return open_window(desktop, ["galculator"], "galculator", (800, 66, 390, 420))


def open_window(desktop: PrivateDesktop, command, title: str, place) -> str:
    desktop.start(title, command, cwd=desktop.home)
    window = wait_until(lambda: desktop.window(title), f"a window titled {title!r}")
    desktop.place(window, *place)
    return window


def paint_wallpaper(desktop: PrivateDesktop) -> None:
    """A gradient on which the bands at the left and right edge are marked."""
    width, height = (int(number) for number in desktop.run("xdotool", "getdisplaygeometry").split())
    picture = desktop.folder / "wallpaper.png"
    words = "scroll here: up, a desktop to the left  ·  down, a desktop to the right"
    text = ["-font", "DejaVu-Sans", "-pointsize", "15", "-fill", "#e6eef7cc", "-gravity", "center"]
    offset = width // 2 - BAND // 2
    desktop.run("convert", "-size", f"{width}x{height}", "gradient:#27496d-#142230",
                "-fill", "#ffffff1c", "-draw", f"rectangle 0,0 {BAND - 1},{height}",
                "-draw", f"rectangle {width - BAND},0 {width},{height}", *text,
                "-draw", f"translate {-offset},0 rotate -90 text 0,0 '{words}'",
                "-draw", f"translate {offset},0 rotate 90 text 0,0 '{words}'", picture)
    desktop.run("hsetroot", "-fill", picture)
