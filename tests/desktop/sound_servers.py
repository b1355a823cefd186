"""Sound servers on a private desktop (opened without audio=True): PulseAudio, and PipeWire as
PulseAudio. The desktop's programs find them where servers of a session are, by no variable."""

import contextlib
import pathlib
import re
import signal

import desktop_parts
from witnesses import Failed, ask_until, wait_until

NORM = 65536  # 100 % in the raw units of a sink's channels


class SoundServer:
    """None runs before start(). Its sinks lead nowhere, and have two channels.

    Everything that is asked here goes through pactl. A server that is stopped answers nothing."""

    process = None  # that programs are connected to

    def __init__(self, desktop):
        self._desktop = desktop
        self._started = 0

    def start(self, *sinks: str) -> None:
        """Until it answers, with these sinks ("speakers" when none are named), the first of them
        the default one."""
        self._started += 1
        self._start_server()
        self._await_answers()
        for name in sinks or ("speakers",):
            self.add_sink(name)
        self.switch_to((sinks or ("speakers",))[0])

    def end(self) -> None:
        """Asks it to, and waits."""
        self._desktop.end(self.process)

    def kill(self) -> None:
        """With SIGKILL, also when it is stopped. Its socket stays."""
        self.process.kill()
        self._desktop.end(self.process)

    def stop(self) -> None:
        """It hangs until go_on()."""
        self.process.send_signal(signal.SIGSTOP)

    def go_on(self) -> None:
        self.process.send_signal(signal.SIGCONT)

    # Sinks

    def default_sink(self) -> str:
        return self._pactl("get-default-sink").strip()

    def sinks(self) -> list[str]:
        return [line.split("\t")[1] for line in self._pactl("list", "short", "sinks").splitlines()]

    def add_sink(self, name: str) -> None:
        self._pactl("load-module", "module-null-sink", f"sink_name={name}", "channels=2")
        wait_until(lambda: name in self.sinks(), f"sink {name}")

    def remove_sink(self, name: str) -> None:
        modules = self._pactl("list", "short", "modules")
        module = re.search(rf"^(\d+)\t.*sink_name={name}\b", modules, re.MULTILINE)[1]
        self._pactl("unload-module", module)
        wait_until(lambda: name not in self.sinks(), f"no sink {name}")

    def switch_to(self, name: str) -> None:
        """Makes it the default sink, as soon as there is somebody to keep that: PipeWire's session
        manager starts beside it."""
        def ask() -> None:
            with contextlib.suppress(Failed):
                self._pactl("set-default-sink", name)

        ask_until(ask, lambda: self.default_sink() == name, f"{name} is the default sink", again=0.1)

    # Volumes, in raw units

    def volumes(self, sink="@DEFAULT_SINK@") -> list[int]:
        """Of its channels."""
        text = self._pactl("get-sink-volume", sink)
        return [int(value) for value in re.findall(r": +(\d+) /", text)]

    def volume(self, sink="@DEFAULT_SINK@") -> int:
        """That of its loudest channel."""
        return max(self.volumes(sink))

    def set_volume(self, *units: int, sink="@DEFAULT_SINK@") -> None:
        """One for all channels, or one for each."""
        self._pactl("set-sink-volume", sink, *units)
        expected = list(units) if len(units) > 1 else [units[0]] * 2

        def is_so():
            return all(abs(is_ - to_be) <= 1
                       for is_, to_be in zip(self.volumes(sink), expected, strict=True))
        wait_until(is_so, f"the volume {units}")

    def is_muted(self, sink="@DEFAULT_SINK@") -> bool:
        return "yes" in self._pactl("get-sink-mute", sink)

    def set_mute(self, is_muted: bool, sink="@DEFAULT_SINK@") -> None:
        self._pactl("set-sink-mute", sink, int(is_muted))
        wait_until(lambda: self.is_muted(sink) == is_muted, "mute")

    # Starting

    def _pactl(self, *arguments) -> str:
        return self._desktop.run("pactl", *arguments)

    def _await_answers(self) -> None:
        def answers():
            with contextlib.suppress(Failed):
                return self._pactl("info")
        self._desktop.wait_for(self.process, answers, "a sound server")

    def _start_server(self) -> None:
        raise NotImplementedError


class PulseAudio(SoundServer):
    # Quick to start, and without what wants a bus, real devices or rights.
    COMMAND = ["pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1",
               "--realtime=no", "--log-target=stderr", "-L", "module-native-protocol-unix"]

    def _start_server(self) -> None:
        # It would start a bus where there is none.
        environment = {"DBUS_SESSION_BUS_ADDRESS": "disabled:"} | self._desktop.environment
        self.process = self._desktop.start(f"pulseaudio-{self._started}", self.COMMAND,
                                           env=environment)


class PipeWire(SoundServer):
    """What ends, hangs and comes back is the one that speaks PulseAudio's protocol. Without any
    sink of a test's there is one called auto_null."""

    def __init__(self, desktop):
        super().__init__(desktop)
        runtime = pathlib.Path(desktop.environment["XDG_RUNTIME_DIR"])
        # The session manager wants a bus, which the desktop need not have.
        bus = runtime / "sound-bus"
        self._environment = desktop.environment | {
            "DBUS_SESSION_BUS_ADDRESS": f"unix:path={bus}"}
        command = desktop_parts.dbus(1, bus.parent)
        command[-2] = f"--address=unix:path={bus}"
        self._start("sound-bus", command, bus)
        self._start("pipewire", ["pipewire"], runtime / "pipewire-0")
        desktop.start("wireplumber", ["wireplumber"], env=self._environment)

    def _start(self, name, command, socket) -> None:
        process = self._desktop.start(name, command, env=self._environment)
        self._desktop.wait_for(process, socket.is_socket, f"the socket of {name}")

    def _start_server(self) -> None:
        self.process = self._desktop.start(f"pipewire-pulse-{self._started}", ["pipewire-pulse"],
                                           env=self._environment)
