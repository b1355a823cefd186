"""Plays the gestures that exist, by injected input, and tells what other programs saw happen.

A gesture is a function of the stage; it says what it does, expects what must follow, and a
missed expectation ends the demo with a non-zero status. See script/demo."""

import pathlib
import re
import shutil
import sys
import time

from demo_stage import Stage
from desktop import Failed, Interrupted, PrivateDesktop

TREE = pathlib.Path(__file__).resolve().parents[2]
PROGRAM = TREE / "build/release/quillon"
PICTURES = TREE / "build/demo"
VOLUME_STEP = 65536 * 10 / 400
HAND = 0.1  # seconds between the clicks of a hand


def desktop_switcher(stage: Stage) -> None:
    desktop = stage.desktop
    desktop.set_desktop(1)
    stage.say("Desktop switcher. The pointer is over a client, outside of every band.")
    stage.go_to(stage.outside)
    stage.expect(lambda: stage.wheel_is("free"), "any other program could take the wheel")
    for direction in ("up", "right"):
        received = stage.turn_wheel(direction, 4)
        stage.expect(lambda: received == 4, f"wheel {direction}: the client got 4 of 4 notches")
        stage.expect(lambda: desktop.current_desktop() == 1, "and the desktop is still 2")
    stage.picture("outside")

    for band, where in ((stage.left_band, "left"), (stage.right_band, "right")):
        stage.go_to(band)
        stage.say(f"The pointer is in the {where} band.")
        stage.expect(lambda: stage.wheel_is("taken"), "the wheel is Quillon's")
        for direction, target in (("up", 0), ("down", 1), ("left", 2), ("right", 1)):
            before = desktop.current_desktop()
            received = stage.turn_wheel(direction, 4)
            stage.expect(lambda: desktop.current_desktop() == target,
                         f"wheel {direction}, 4 notches: desktop {before + 1} -> {target + 1}")
            stage.expect(lambda: received == 0, "and the client got none of them")
            if direction != "right":
                stage.picture(f"{where}-band-{direction}")
    stage.go_to(stage.outside)
    stage.expect(lambda: stage.wheel_is("free"), "out of the band, the wheel is free again")


def window_switcher(stage: Stage) -> None:
    desktop = stage.desktop

    def in_front() -> str:
        window = desktop.run("xdotool", "getactivewindow").strip()
        return desktop.run("xprop", "-id", window, "-notype", "WM_CLASS").rpartition('"')[0].rpartition('"')[2]

    desktop.set_desktop(0)
    stage.say("Window switcher. The pointer is in the band at the bottom.")
    stage.go_to(stage.bottom_band)
    stage.expect(lambda: stage.wheel_is("taken"), "the wheel is Quillon's")
    seen = [in_front()]
    for direction in ("up", "up", "down"):
        before = in_front()
        received = stage.turn_wheel(direction, 4)
        stage.expect(lambda: in_front() != before, f"wheel {direction}, 4 notches: {before} is in front no more")
        stage.expect(lambda: received == 0, "and the client got none of them")
        seen.append(in_front())
        stage.picture(f"window-{len(seen) - 1}-{direction}")
    stage.say(f"   In front were: {', '.join(seen)}")
    stage.expect(lambda: in_front() == seen[1], "down goes back to the one before")
    stage.go_to(stage.outside)


def status_item(stage: Stage) -> None:
    view, desktop = stage.view, stage.desktop
    stage.say("The item in the tray.")
    stage.expect(view.item, "it is in the panel's tray")
    stage.picture("item")
    stage.go_to(view.item().middle)
    stage.expect_picture_of_tooltip()

    stage.say("A left click opens the hub.")
    stage.click()
    stage.expect(view.hub, "the hub is open")
    stage.picture("hub")
    stage.click()
    stage.expect(lambda: view.hub() is None, "another one closes it")

    stage.say("A right click opens the menu.")
    stage.click(3)
    stage.expect(view.menu, "the menu is open, and not the hub")
    stage.picture("menu")
    desktop.run("xdotool", "key", "Escape")
    stage.expect(lambda: view.menu() is None, "Escape closes it")

    stage.say("While the volume changes the item shows it.")
    stage.go_to(stage.outside)
    desktop.run(PROGRAM, "show-level", 42, 42.5)
    stage.picture("level")


def volume_control(stage: Stage) -> None:
    desktop = stage.desktop

    def volume() -> int:
        """Of 65536, as the sound server tells it."""
        return int(desktop.run("pactl", "get-sink-volume", "@DEFAULT_SINK@").split()[2])

    desktop.run("pactl", "set-sink-volume", "@DEFAULT_SINK@", "40%")
    stage.say("Volume control. Its band is wider than that of the desktops.")
    stage.go_to(stage.beside_right_band)
    for direction, sign in (("up", 1), ("up", 1), ("down", -1)):
        target = round(volume() + sign * VOLUME_STEP)
        received = stage.turn_wheel(direction, 1)
        stage.expect(lambda: abs(volume() - target) <= 1,
                     f"wheel {direction}: the volume is {target / 655.36:.1f} %")
        stage.expect(lambda: received == 1, "and the client got the notch as well")
    stage.picture("volume")


def media_control(stage: Stage) -> None:
    desktop = stage.desktop
    stage.say("Media control. Nobody plays and nobody has the keys: they go to the keyboard.")
    keymap = desktop.run("xmodmap", "-pke")
    codes = {name: re.search(rf"keycode +(\d+) = {name}\b", keymap)[1]
             for name in ("XF86AudioPlay", "XF86AudioNext", "XF86AudioPrev")}
    desktop.start("keys", ["stdbuf", "-oL", "xinput", "test-xi2", "--root"])
    stage.go_to(stage.beside_right_band)
    for times, key in enumerate(codes, 1):
        before = stage.received(2)
        for _ in range(times):
            stage.click(2)
            time.sleep(HAND)
        pressed = re.compile(rf"RawKeyPress.*?detail: {codes[key]}$", re.MULTILINE | re.DOTALL)
        stage.expect(lambda: pressed.search(desktop.log("keys")),
                     f"{times} click(s) of the middle button: {key}")
        stage.expect(lambda: stage.received(2) == before + times, "and the client got them as well")


def scroll_reverse(stage: Stage) -> None:
    stage.say("Scroll reverse, switched on.")
    stage.desktop.run(PROGRAM, "defaults", "write", "ScrollReverseMouse", "true")
    stage.start_again()
    stage.go_to(stage.outside)
    before = stage.received(4), stage.received(5)
    stage.turn_wheel("up", 3)
    after = stage.received(4), stage.received(5)
    stage.expect(lambda: (after[0] - before[0], after[1] - before[1]) == (0, 3),
                 "3 notches up are 3 down for the client")
    stage.picture("reversed")


GESTURES = [desktop_switcher, window_switcher, status_item, volume_control, media_control,
            scroll_reverse]


def main() -> int:
    start = time.monotonic()
    shutil.rmtree(PICTURES, ignore_errors=True)
    PICTURES.mkdir(parents=True)
    try:
        with PrivateDesktop(panel="tint2", bus=True, audio=True, logs=PICTURES / "log") as desktop:
            for setting in ("Tool4LeftEdge", "Tool4RightEdge", "Tool5RightEdge",
                            "MediaControlRightEdge"):
                desktop.run(PROGRAM, "defaults", "write", setting, "true")
            for setting, points in (("Tool5EdgeSensitivity", 80), ("Tool5VolumeSteps", 10),
                                    ("MediaControlEdgeSensitivity", 80)):
                desktop.run(PROGRAM, "defaults", "write", setting, points)
            desktop.run(PROGRAM, "defaults", "--suite", "com.pelorin.shared", "write",
                        "WindowSwitcher_BottomEdge", "true")
            stage = Stage(desktop, PROGRAM, PICTURES)
            for gesture in GESTURES:
                gesture(stage)
    except Failed as failure:
        print(f"script/demo: {failure}", file=sys.stderr)
        return 1
    except Interrupted as interruption:
        return interruption.status
    seconds = time.monotonic() - start
    print(f"Every gesture happened, in {seconds:.0f} s. Pictures: build/demo/")
    return 0


if __name__ == "__main__":
    sys.exit(main())
