#!/usr/bin/env python3
"""A program on the session's bus that says that it plays, and does what it is told.

    mpris_player.py NAME STATUS [cannot PROPERTY...]

NAME is the end of its name on the bus, STATUS Playing, Paused or Stopped. It prints "ready" and
each command that it gets, with nanoseconds of the monotonic clock:

    PlayPause 123456789

On standard input: "status STATUS" changes that, and it says so on the bus.
"""

import sys
import time

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

PATH, PLAYER = "/org/mpris/MediaPlayer2", "org.mpris.MediaPlayer2.Player"
COMMANDS = ("PlayPause", "Play", "Pause", "Stop", "Next", "Previous")
ABILITIES = ("CanControl", "CanPlay", "CanPause", "CanGoNext", "CanGoPrevious", "CanSeek")
INTERFACES = Gio.DBusNodeInfo.new_for_xml(f"""
<node><interface name="org.mpris.MediaPlayer2">
  <method name="Raise"/><method name="Quit"/>
  <property name="Identity" type="s" access="read"/>
  <property name="CanQuit" type="b" access="read"/>
  <property name="CanRaise" type="b" access="read"/>
  <property name="HasTrackList" type="b" access="read"/>
  <property name="SupportedUriSchemes" type="as" access="read"/>
  <property name="SupportedMimeTypes" type="as" access="read"/>
</interface><interface name="{PLAYER}">
  {"".join(f'<method name="{name}"/>' for name in COMMANDS)}
  <property name="PlaybackStatus" type="s" access="read"/>
  <property name="Metadata" type="a{{sv}}" access="read"/>
  {"".join(f'<property name="{name}" type="b" access="read"/>' for name in ABILITIES)}
</interface></node>""").interfaces


class Player:
    def __init__(self, name: str, status: str, cannot: list[str]):
        self._name, self._status, self._cannot = name, status, cannot
        self._bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        for interface in INTERFACES:
            self._bus.register_object(PATH, interface, self._call, self._get, None)
        owner = Gio.BusNameOwnerFlags.DO_NOT_QUEUE
        Gio.bus_own_name_on_connection(self._bus, f"org.mpris.MediaPlayer2.{name}", owner,
                                       lambda *_: print("ready", flush=True),
                                       lambda *_: sys.exit("the name is taken"))

    def set_status(self, status: str) -> None:
        self._status = status
        changed = GLib.Variant("(sa{sv}as)", (
            PLAYER, {"PlaybackStatus": GLib.Variant("s", status)}, []))
        self._bus.emit_signal(None, PATH, "org.freedesktop.DBus.Properties", "PropertiesChanged",
                              changed)

    def _call(self, _bus, _sender, _path, _interface, method, _arguments, invocation) -> None:
        print(method, time.clock_gettime_ns(time.CLOCK_MONOTONIC), flush=True)
        plays = self._status == "Playing"
        after = {"PlayPause": "Paused" if plays else "Playing", "Play": "Playing",
                 "Pause": "Paused" if plays else self._status, "Stop": "Stopped"}
        if (status := after.get(method, self._status)) != self._status:
            self.set_status(status)
        invocation.return_value(None)

    def _get(self, _bus, _sender, _path, interface, name) -> GLib.Variant:
        if name in ABILITIES:
            return GLib.Variant("b", name not in self._cannot)
        return {"PlaybackStatus": GLib.Variant("s", self._status),
                "Identity": GLib.Variant("s", self._name),
                "Metadata": GLib.Variant("a{sv}", {"xesam:title": GLib.Variant("s", self._name)}),
                "SupportedUriSchemes": GLib.Variant("as", []),
                "SupportedMimeTypes": GLib.Variant("as", [])}.get(name, GLib.Variant("b", False))


def main() -> None:
    name, status, *rest = sys.argv[1:]
    player = Player(name, status, rest[1:])
    loop = GLib.MainLoop()

    def obey(source, _condition) -> bool:
        words = source.readline().split()
        if not words:
            loop.quit()
            return False
        player.set_status(words[1])
        print(*words, flush=True)
        return True

    GLib.io_add_watch(sys.stdin, GLib.PRIORITY_DEFAULT, GLib.IO_IN | GLib.IO_HUP, obey)
    loop.run()


if __name__ == "__main__":
    main()
