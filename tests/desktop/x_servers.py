"""X servers that come and go under one name, and how often somebody asks for one."""

import itertools
import os
import pathlib
import select
import socket
import threading
import time

from witnesses import DesktopHistory, Failed, Injector, await_idle, await_wheel, wait_until

# Not those of tests that run beside this one.
_candidates = itertools.count(1000 + os.getpid() % 1000 * 50)


def free_display() -> str:
    """A display name that stays ours while its server is away: servers that choose a number by
    themselves take the lowest."""
    for number in _candidates:
        places = pathlib.Path(f"/tmp/.X{number}-lock"), pathlib.Path(f"/tmp/.X11-unix/X{number}")
        if not any(place.exists() for place in places):
            return f":{number}"


def stop_server(desktop) -> None:
    """The programs that need the server end with it."""
    desktop.end(desktop.server)
    if desktop.window_manager:
        desktop.end(desktop.window_manager)


def start_server(desktop, *arguments) -> None:
    """Another one under the name of that which was stopped."""
    desktop.server = desktop.start("x-server", [
        "Xvfb", desktop.display, "-screen", "0", "1280x800x24", "-noreset", "-nolisten", "tcp",
        "-auth", desktop.folder / "authority", *arguments])

    def answers():
        try:
            return desktop.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK")
        except Failed:
            return False
    desktop.wait_for(desktop.server, answers, "a server that answers")


def expect_gestures_on_a_new_server(quillon, desktop) -> None:
    """The program finds the server that starts now, and works there."""
    start_server(desktop)
    desktop.start_window_manager("openbox")
    quillon.wait_for_line("Setup complete")
    await_idle(quillon.process)
    injector, history = Injector(desktop), DesktopHistory(desktop)
    history.go_to(2)
    injector.move(5, 400)
    await_wheel(desktop, "taken")
    injector.scroll("up", 4)
    history.expect(1)


class Relay:
    """A display that passes every connection on to another one, or closes it at once when there
    is none, and remembers when they came."""

    def __init__(self, display: str | None = None):
        self._target = display and f"/tmp/.X11-unix/X{display.lstrip(':')}"
        self._listener = socket.create_server(("127.0.0.1", 0))
        self.display = f"127.0.0.1:{self._listener.getsockname()[1] - 6000}"
        self.times: list[float] = []
        self._run(self._accept)

    def close(self) -> None:
        # Closing alone would not end the wait for the next connection.
        self._listener.shutdown(socket.SHUT_RDWR)
        self._listener.close()

    def await_connections(self, count: int, limit: float, meanwhile=lambda: None) -> None:
        """So many more; `meanwhile` is called again and again."""
        before = len(self.times)

        def came():
            meanwhile()
            return len(self.times) >= before + count
        wait_until(came, f"{count} connections", limit)

    @staticmethod
    def _run(work, *arguments) -> None:
        threading.Thread(target=work, args=arguments, daemon=True).start()

    def _accept(self) -> None:
        while True:
            try:
                client, _ = self._listener.accept()
            except OSError:
                return
            self.times.append(time.monotonic())
            self._run(self._serve, client)

    def _serve(self, client: socket.socket) -> None:
        with client, socket.socket(socket.AF_UNIX) as server:
            if not self._target:
                return
            server.connect(self._target)
            others = {client: server, server: client}
            while True:
                for source in select.select(list(others), [], [])[0]:
                    if not (data := source.recv(65536)):
                        return
                    others[source].sendall(data)
