"""How long a program's main thread is held up by what it does itself."""

import threading
import time
from dataclasses import dataclass

import gi
gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

ROUND = 0.002  # seconds from an answer to the next question
SHORT = 0.02   # seconds; what takes no longer is not looked at


@dataclass(frozen=True)
class Ask:
    start: float
    end: float
    waited: float = 0  # seconds for which the main thread could have run and got no processor
    ran: float = 0     # seconds for which it ran

    def held_up(self, others: list["Ask"]) -> float:
        """Less than it took where the machine had something else to do: then the main thread waited
        for a processor, or nobody else had an answer meanwhile either."""
        shared = max((min(self.end, other.end) - max(self.start, other.start) for other in others),
                     default=0)
        return self.end - self.start - max(self.waited, shared, 0)


class Pulse:
    """Asks the program for something that its main thread refuses, one time after the other; and
    beside it the bus, which shows when it is not the program that is slow."""

    def __init__(self, address: str, process: int):
        self._address = address
        self._main_thread = f"/proc/{process}/task/{process}/schedstat"
        self._ends = threading.Event()
        self._asks: list[Ask] = []
        self._bus_asks: list[Ask] = []
        self._threads = [threading.Thread(target=self._ask_program),
                         threading.Thread(target=self._ask_bus)]

    def __enter__(self):
        for thread in self._threads:
            thread.start()
        return self

    def __exit__(self, *_):
        self._ends.set()
        for thread in self._threads:
            thread.join()

    @property
    def longest(self) -> float:
        """Seconds."""
        return max((ask.held_up(self._bus_asks) for ask in self._asks), default=0)

    def __str__(self) -> str:
        worst = max(self._asks, key=lambda ask: ask.held_up(self._bus_asks), default=Ask(0, 0))
        bus = max((ask.end - ask.start for ask in self._bus_asks), default=0)
        return (f"longest stall {1000 * self.longest:.1f} ms (answer after "
                f"{1000 * (worst.end - worst.start):.1f}, ran {1000 * worst.ran:.1f}, waited for a "
                f"processor {1000 * worst.waited:.1f}; the bus at worst {1000 * bus:.1f})")

    def _ask_program(self):
        def ask(bus):
            nothing = GLib.Variant("(sava{sv})", ("none", [], {}))
            try:
                bus.call_sync("com.pelorin.PelorinApp", "/com/pelorin/PelorinApp",
                              "org.freedesktop.Application", "ActivateAction", nothing, None,
                              Gio.DBusCallFlags.NO_AUTO_START, 10000)
            except GLib.Error as error:
                if "none" not in error.message:
                    raise
        self._go_on_asking(ask, self._asks)

    def _ask_bus(self):
        def ask(bus):
            bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus",
                          "org.freedesktop.DBus.Peer", "Ping", None, None,
                          Gio.DBusCallFlags.NONE, 10000)
        self._go_on_asking(ask, self._bus_asks)

    def _go_on_asking(self, ask, asks: list[Ask]) -> None:
        flags = Gio.DBusConnectionFlags
        bus = Gio.DBusConnection.new_for_address_sync(
            self._address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION)
        while not self._ends.is_set():
            (ran, waited), start = self._scheduled(), time.monotonic()
            ask(bus)
            end, (ran_now, waited_now) = time.monotonic(), self._scheduled()
            if end - start > SHORT:
                asks.append(Ask(start, end, waited_now - waited, ran_now - ran))
            self._ends.wait(ROUND)
        bus.close_sync()

    def _scheduled(self) -> tuple[float, float]:
        with open(self._main_thread) as times:
            ran, waited, _ = times.read().split()
        return int(ran) / 1e9, int(waited) / 1e9
