"""A desktop of its own: X server, window manager with four desktops, and what else is asked for.

    with PrivateDesktop(programs=["xterm"]) as desktop:
        client = desktop.start("client", ["./client", "Title"])
        desktop.move_pointer(5, 300)
        desktop.scroll("up", 4)
        wait_until(lambda: desktop.current_desktop() == 0, "the desktop to the left")

Everything in it is a child of this process and ends with it, whatever ends it: the end of the
block, an exception, SIGINT, SIGTERM or SIGHUP (which raise Interrupted while the desktop is
open, if the main thread opened it), even SIGKILL. Its programs see no display, bus or sound of
the user's session; their files are in a folder of mode 700 that is removed at the end.
"""

import atexit
import contextlib
import os
import pathlib
import secrets
import select
import shutil
import socket
import struct
import subprocess
import tempfile
import threading

import desktop_parts as parts
from desktop_children import (Children, Failed, Interrupted, interruptible, uninterrupted,
                              wait_until)
from desktop_tools import DesktopTools

__all__ = ["PrivateDesktop", "Failed", "Interrupted", "wait_until", "free_port"]

PROGRAMS = {  # the command of an ordinary program, and what its window's title contains
    "xterm": (["xterm", "-T", "Terminal", "-fa", "DejaVu Sans Mono", "-fs", "10"], "Terminal"),
    "mousepad": (["mousepad", "--disable-server"], "Mousepad"),
    "galculator": (["galculator"], "galculator"),
}


class PrivateDesktop(DesktopTools):
    """Opened by `with`, or by open() and close(). Using it: see also DesktopTools.

    server          "xvfb"; or "xtigervnc", which can be watched: see vnc_port; or "xorg", the only
                    one with devices that scroll smoothly: see desktop_parts.DEVICES
    screen          its size, "WIDTHxHEIGHT"
    server_args     more arguments for it, such as ["-extension", "XTEST"]
    window_manager  "openbox", "icewm", "metacity", "xfwm4", "xfwm4-composited" (these two want the
                    bus) or None
    panel           None or a panel with a tray: "tint2", "tint2-bottom", "tint2-left",
                    "xfce4-panel" (which wants the bus)
    bus, audio      whether there is a D-Bus session, a PulseAudio with the null sink "speakers"
    programs        any of PROGRAMS; their windows are open when the desktop is
    environment     variables to add for everything that runs in it
    logs            folder for what its programs print, one NAME.log each; without it they go
                    with the rest

    Failed is raised when a part does not come up: it names the part and quotes its log.

    While open: display, environment, folder, home, config (XDG_CONFIG_HOME), vnc_port, and the
    processes server, bus, window_manager and panel (Popen, None where not asked for).
    """

    def __init__(self, *, server="xvfb", screen="1280x800", server_args=(),
                 window_manager="openbox", panel=None, bus=False, audio=False, programs=(),
                 environment=None, logs=None):
        self._wanted = dict(server=server, window_manager=window_manager, panel=panel, bus=bus,
                            audio=audio, programs=programs, environment=environment or {})
        self._screen, self._server_args, self._logs = screen, server_args, logs
        self._children = None
        self._signals = contextlib.ExitStack()
        self.server = self.bus = self.window_manager = self.panel = self.vnc_port = None

    def __enter__(self):
        self.open()
        return self

    def __exit__(self, *_):
        self.close()

    def open(self) -> None:
        if threading.current_thread() is threading.main_thread():
            self._signals.enter_context(interruptible())
        atexit.register(self.close)
        try:
            self._make_folders()
            self._start_server()
            if self._wanted["bus"]:
                self._start_bus()
            sound = self._start_sound() if self._wanted["audio"] else None
            if self._wanted["window_manager"]:
                self.start_window_manager(self._wanted["window_manager"])
            if self._wanted["panel"]:
                self.start_panel(self._wanted["panel"])
            self._open_programs(self._wanted["programs"])
            if sound:
                self.wait_for(sound, self._has_sound, "sound")
        except BaseException:
            self.close()
            raise

    def close(self) -> None:
        """Stops everything, last started first. Does nothing when called again."""
        with uninterrupted():
            children, self._children = self._children, None
            atexit.unregister(self.close)
            try:
                if children:
                    children.stop_all()
            finally:
                if children:
                    shutil.rmtree(self.folder, ignore_errors=True)
                self._signals.close()

    # Programs

    def start(self, name: str, arguments, **popen) -> subprocess.Popen:
        """Starts a program in the desktop (keyword arguments as for Popen). What it prints goes
        to log(name) unless stdout or stderr say otherwise."""
        return self._children.start(name, arguments, **popen)

    def end(self, process: subprocess.Popen) -> int:
        """Asks a started program to stop, makes sure of it and answers its status."""
        self._children.stop(process)
        return process.returncode

    def run(self, *arguments, limit=10.0) -> str:
        try:
            return super().run(*arguments, limit=limit)
        except Failed as failure:
            if "display" in str(failure) or "connection" in str(failure):
                with contextlib.suppress(subprocess.TimeoutExpired):
                    self.server.wait(1.0)  # then its log says why
                    self.wait_for(self.server, lambda: False, str(failure))
            raise

    def log(self, name: str) -> str:
        return self._children.log(name)

    def log_from(self, name: str, start: int) -> bytes:
        """What follows the first `start` bytes of a log that grows long."""
        return self._children.log_from(name, start)

    def wait_for(self, process: subprocess.Popen, condition, what: str, limit=10.0):
        """wait_until for what a started program is to bring about: Failed at once if it ends
        before, and with its log in any case."""
        return self._children.wait_until_ready(process, condition, what, limit)

    def start_window_manager(self, name: str) -> None:
        """Also for a second one, after end(desktop.window_manager)."""
        if name.startswith("xfwm4") and not self.bus:
            # Without one it depends on whether the machine has a program that launches buses.
            raise ValueError(f"{name} wants bus=True")
        command = parts.window_manager(name, self.home, self.config)
        self.window_manager = self.start("window-manager", command)
        self.wait_for(self.window_manager, self.has_window_manager, "a running window manager")
        if self.desktop_count() != parts.DESKTOPS:
            self.run("wmctrl", "-n", parts.DESKTOPS)
        self.wait_for(self.window_manager, lambda: self.desktop_count() == parts.DESKTOPS
              and self.current_desktop() is not None, "four desktops")

    def start_panel(self, name: str) -> None:
        """Also for a second one, after end(desktop.panel)."""
        self.panel = self.start("panel", parts.panel(name, self.config))
        # The panel's strut, so that windows are placed beside it.
        whole = f"0, 0, {self._screen.replace('x', ', ')}"

        def leaves_less():
            area = self.root_property("_NET_WORKAREA")
            return area and not f"{area}, ".startswith(f"{whole}, ")
        self.wait_for(self.panel, leaves_less, "a panel on the screen")

    # Starting the other parts

    def _make_folders(self) -> None:
        with uninterrupted():
            self.folder = pathlib.Path(tempfile.mkdtemp(prefix="quillon-desktop-"))
            logs = pathlib.Path(self._logs or self.folder / "log")
            self._children = Children(self.folder, logs)
        self.home, self.config = self.folder / "home", self.folder / "home/.config"
        places = {"HOME": self.home, "XDG_CONFIG_HOME": self.config,
                  "XDG_DATA_HOME": self.home / ".local/share",
                  "XDG_STATE_HOME": self.home / ".local/state",
                  "XDG_CACHE_HOME": self.home / ".cache",
                  "XDG_RUNTIME_DIR": self.folder / "run", "TMPDIR": self.folder / "tmp"}
        for place in places.values():
            place.mkdir(mode=0o700, parents=True, exist_ok=True)
        self.environment = self._children.environment
        self.environment.update({name: str(place) for name, place in places.items()})
        self.environment.update({
            "LANG": "C.UTF-8", "XDG_SESSION_TYPE": "x11",
            "XAUTHORITY": str(self.folder / "authority"),
            # Settings in a file, no virtual file systems, no accessibility bus: fewer daemons.
            "GSETTINGS_BACKEND": "keyfile", "GIO_USE_VFS": "local", "NO_AT_BRIDGE": "1"})
        self.environment.update(self._wanted["environment"])

    def _start_server(self) -> None:
        # Without a cookie file, an X server lets in every user of the machine.
        family_wild, name, cookie = 0xFFFF, b"MIT-MAGIC-COOKIE-1", secrets.token_bytes(16)
        (self.folder / "authority").write_bytes(
            struct.pack(f">HHHH{len(name)}sH16s", family_wild, 0, 0, len(name), name, 16, cookie))
        extra = ["-auth", self.folder / "authority", *self._server_args]
        if self._wanted["server"] == "xvfb":
            self._await_server(parts.xvfb(self._screen, extra))
        elif self._wanted["server"] == "xtigervnc":
            self._start_watchable_server(extra)
        elif self._wanted["server"] == "xorg":
            self._await_server(parts.xorg(self._screen, self.folder, extra))
        else:
            raise ValueError(f"no such X server: {self._wanted['server']}")
        # Any tool that this user starts elsewhere may look at the desktop, without the cookie.
        self.run("xhost", f"+si:localuser:#{os.getuid()}")

    def _start_watchable_server(self, extra, attempts=5) -> None:
        while True:
            attempts -= 1
            self.vnc_port = free_port()
            try:
                return self._await_server(parts.xtigervnc(self._screen, self.vnc_port, extra))
            except Failed:  # somebody else may have taken the port meanwhile
                if attempts == 0 or self.server.poll() is None:
                    raise

    def _await_server(self, command) -> None:
        read_end, write_end = os.pipe()
        self.server = self.start("x-server", [*command, "-displayfd", write_end],
                                 pass_fds=[write_end])
        os.close(write_end)
        self.display = f":{self._first_line(self.server, read_end, 'a display number')}"
        self.environment["DISPLAY"] = self.display

    def _start_bus(self) -> None:
        read_end, write_end = os.pipe()
        self.bus = self.start("bus", parts.dbus(write_end, self.folder / "run"), pass_fds=[write_end])
        os.close(write_end)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = self._first_line(self.bus, read_end,
                                                                        "an address")

    def _first_line(self, child: subprocess.Popen, read_end: int, what: str) -> str:
        """What a child reports, on a pipe, when it is ready."""
        line = b""

        def complete():
            nonlocal line
            if select.select([read_end], [], [], 0)[0]:
                line += os.read(read_end, 1024)
            return line.endswith(b"\n")
        try:
            self.wait_for(child, complete, what)
        finally:
            os.close(read_end)
        return line.decode().strip()

    def _start_sound(self) -> subprocess.Popen:
        sock = self.folder / "run/sound"
        self.environment["PULSE_SERVER"] = f"unix:{sock}"
        return self.start("sound", parts.pulseaudio(sock))

    def _has_sound(self) -> bool:
        try:
            return "Default Sink: speakers" in self.run("pactl", "info")
        except Failed:
            return False

    def _open_programs(self, names) -> None:
        opened = [(self.start(name, PROGRAMS[name][0]), PROGRAMS[name][1]) for name in names]
        for child, title in opened:
            self.wait_for(child, lambda: self.window(title), "its window")


def free_port() -> int:
    """A TCP port of the loopback interface that nobody listened on a moment ago."""
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]
