#!/usr/bin/env python3
"""The command line of the tool hub: of a program that runs, and on the files of one that does not.

What a command has done is judged by the files, and by what another process says then."""

import fcntl
import json
import os
import pathlib
import signal
import subprocess
import tempfile
import time
import unittest

from quillon_desktop import DesktopTest
from shell_desktop import ShellTest
from witnesses import QUILLON, wait_until

VOLUME, MEDIA = "tool.volumeControl", "tool.mediaControl"
TOOLS = 6  # that come with the program
UNREACHABLE = "quillon: Quillon is running, but cannot be reached over the session bus\n"


class Commands:
    """The user's shell, with the environment and the folders of a desktop or of a test."""

    environment: dict
    data: pathlib.Path
    config: pathlib.Path

    def call(self, *arguments: str, **environment) -> subprocess.CompletedProcess:
        return subprocess.run([QUILLON, *arguments], capture_output=True, text=True, timeout=20,
                              env=self.environment | environment)

    def expect(self, status: int, *arguments: str, says="", **environment) -> str:
        """Answers what it has printed; what it says on standard error is given."""
        done = self.call(*arguments, **environment)
        self.assertEqual((done.returncode, done.stderr), (status, says), arguments)
        return done.stdout

    def refused(self, *arguments: str, says: str, **environment) -> None:
        self.assertEqual(self.expect(1, *arguments, says=f"quillon: {says}\n", **environment), "")

    def status(self) -> dict:
        return json.loads(self.expect(0, "status", "--json"))

    def tool(self, identifier: str) -> dict:
        return next(tool for tool in self.status()["tools"] if tool["id"] == identifier)

    def records_file(self) -> pathlib.Path:
        return self.data / "com.pelorin.PelorinApp/installed-tools.json"

    def records(self) -> dict[str, dict]:
        return {record["id"]: record for record in json.loads(self.records_file().read_text())}

    def settings(self) -> dict:
        file = self.config / "com.pelorin.PelorinApp/defaults.json"
        return json.loads(file.read_text())


class Files(Commands, unittest.TestCase):
    """No program runs, and there is neither display nor session bus."""

    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.data, self.config = self.folder / "data", self.folder / "config"
        hidden = {"DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR", "WAYLAND_DISPLAY"}
        self.environment = {name: value for name, value in os.environ.items()
                            if name not in hidden}
        self.environment |= {"XDG_DATA_HOME": str(self.data), "XDG_CONFIG_HOME": str(self.config),
                             "HOME": str(self.folder / "home")}

    def everything(self) -> list[str]:
        return sorted(str(path.relative_to(self.folder)) for path in self.folder.rglob("*"))

    def test_telling_writes_nothing(self):
        lines = self.expect(0, "status").splitlines()
        self.assertEqual(lines[0], "Quillon is not running")
        self.assertEqual(len(lines), 1 + TOOLS)
        self.assertTrue(all(line.endswith("not installed") for line in lines[1:]), lines)
        self.assertIn("Edge scroll controls system volume", self.expect(0, "list"))
        self.assertIn(VOLUME, self.expect(0, "list", "--ids").splitlines())
        listed = json.loads(self.expect(0, "list", "--json"))
        self.assertEqual([tool["installed"] for tool in listed], [False] * TOOLS)
        status = self.status()
        self.assertEqual(list(status), ["running", "version", "busy", "tools"])
        self.assertFalse(status["running"])
        self.assertEqual(self.everything(), [])

    def test_changes_before_the_first_start(self):
        self.assertEqual(self.expect(0, "disable", VOLUME), "")
        self.assertEqual(len(self.records()), TOOLS)
        self.assertFalse(self.records()[VOLUME]["isEnabled"])
        self.assertTrue(self.records()[MEDIA]["isEnabled"])
        self.assertIs(self.settings()[f"HubEnabled.{VOLUME}"], False)
        self.assertFalse(self.tool(VOLUME)["enabled"])
        self.expect(0, "enable", VOLUME)
        self.assertTrue(self.records()[VOLUME]["isEnabled"])
        self.assertIs(self.settings()[f"HubEnabled.{VOLUME}"], True)
        self.expect(0, "uninstall", VOLUME)
        self.assertNotIn(VOLUME, self.records())
        self.assertFalse(self.tool(VOLUME)["installed"])
        self.expect(0, "install", VOLUME)
        self.assertTrue(self.tool(VOLUME)["installed"])

    def test_unknown_tools(self):
        for command in ("enable", "disable", "install", "uninstall"):
            self.refused(command, "nonsense", says="there is no tool 'nonsense'")
            self.refused(command, VOLUME.lower(), says=f"there is no tool '{VOLUME.lower()}'; "
                                                       f"did you mean {VOLUME}?")

    def test_nobody_to_show_or_to_quit(self):
        for command in ("show", "quit"):
            self.expect(3, command, says="quillon: Quillon is not running\n")
        self.assertEqual(self.everything(), [])

    def test_wrong_usage(self):
        for arguments in (["enable"], ["status", "--yaml"], ["enable", VOLUME, MEDIA], ["show", "x"]):
            self.assertEqual(self.call(*arguments).returncode, 2, arguments)

    def test_what_cannot_be_stored(self):
        self.data.write_text("in the way")
        done = self.call("disable", VOLUME)
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stdout, "")
        self.assertIn("quillon: the change could not be stored\n", done.stderr)
        self.assertTrue(all(line.startswith("quillon: ") for line in done.stderr.splitlines()),
                        done.stderr)

    def test_damaged_records_are_kept(self):
        file = self.data / "com.pelorin.PelorinApp/installed-tools.json"
        file.parent.mkdir(parents=True)
        file.write_text("[{")
        self.assertFalse(self.tool(VOLUME)["installed"])
        self.assertEqual(file.read_text(), "[{")
        self.expect(0, "disable", VOLUME)
        self.assertEqual((file.parent / "installed-tools.json.damaged").read_text(), "[{")

    def test_records_that_somebody_else_writes(self):
        lock = self.data / "com.pelorin.PelorinApp/installed-tools.json.lock"
        lock.parent.mkdir(parents=True)
        with lock.open("w") as held:
            fcntl.flock(held, fcntl.LOCK_EX)
            for arguments in (["disable", VOLUME], ["status"], ["quit"]):
                self.expect(1, *arguments, says=UNREACHABLE)
            waiting = subprocess.Popen([QUILLON, "disable", VOLUME], env=self.environment)
        self.assertEqual(waiting.wait(10), 0)  # the other has ended while it waited
        self.assertFalse(self.records()[VOLUME]["isEnabled"])

    def test_commands_at_once(self):
        commands = [subprocess.Popen([QUILLON, verb, tool], env=self.environment)
                    for tool in (VOLUME, MEDIA, "tool.desktopSwitcher")
                    for verb in ("disable",)]
        self.assertEqual([command.wait(20) for command in commands], [0, 0, 0])
        self.assertEqual(sum(not record["isEnabled"] for record in self.records().values()), 3)

    def test_killed_in_a_command(self):
        self.expect(0, "disable", MEDIA)
        for milliseconds in range(0, 60, 4):
            command = subprocess.Popen([QUILLON, "disable", VOLUME], env=self.environment)
            try:
                command.wait(milliseconds / 1000)
            except subprocess.TimeoutExpired:
                command.kill()
                command.wait()
            records = self.records()  # which is whole in any case
            self.assertEqual(len(records), TOOLS)
            self.assertFalse(records[MEDIA]["isEnabled"])
        self.expect(0, "enable", MEDIA)  # and nobody's lock is left

    def test_what_is_asked_for_is_seen_when_output_ends(self):
        with open("/dev/full", "w") as full:
            done = subprocess.run([QUILLON, "status"], stdout=full, stderr=subprocess.PIPE,
                                  text=True, timeout=20, env=self.environment)
        self.assertEqual(done.returncode, 1)
        self.assertIn("cannot be written", done.stderr)


class OfADesktop(Commands):
    @property
    def environment(self):
        return self.desktop.environment

    @property
    def data(self):
        return self.desktop.home / ".local/share"

    @property
    def config(self):
        return self.desktop.config


class Running(OfADesktop, ShellTest):
    """A program runs, and can be reached."""

    def start_shell(self, **how):
        quillon = super().start_shell(**how)
        quillon.wait_for_line("Setup complete")
        for part in ("monitoring", "Install fallback"):  # the tools are switched, and say so
            quillon.may_say(part)
        return quillon

    def test_all_commands(self):
        quillon = self.start_shell()
        self.assertTrue(self.status()["running"])
        self.assertEqual(self.expect(0, "status").splitlines()[0], "Quillon is running")
        self.assertEqual(len(self.expect(0, "list").splitlines()), TOOLS)
        for _ in range(2):
            self.assertEqual(self.expect(0, "disable", VOLUME), "")
            self.assertFalse(self.records()[VOLUME]["isEnabled"])
            self.assertFalse(self.tool(VOLUME)["enabled"])
            wait_until(lambda: self.settings().get(f"HubEnabled.{VOLUME}") is False, "it is kept")
        self.expect(0, "enable", VOLUME)
        self.assertTrue(self.records()[VOLUME]["isEnabled"])
        self.assertTrue(self.tool(VOLUME)["enabled"])
        self.expect(0, "uninstall", VOLUME)
        self.assertNotIn(VOLUME, self.records())
        self.assertFalse(self.tool(VOLUME)["installed"])
        for command in ("enable", "disable", "uninstall"):
            self.refused(command, VOLUME, says=f"'{VOLUME}' is not installed")
        self.assertEqual(self.expect(0, "install", VOLUME), "")
        self.assertIn(VOLUME, self.records())
        self.assertTrue(self.tool(VOLUME)["installed"])
        for command in ("enable", "disable", "install", "uninstall"):
            self.refused(command, "tool.volumecontrol",
                         says=f"there is no tool 'tool.volumecontrol'; did you mean {VOLUME}?")
        self.assertTrue(quillon.is_running())

    def test_install_as_soon_as_it_runs(self):
        quillon = self.start_shell()
        self.expect(0, "uninstall", MEDIA)
        self.assertEqual(quillon.stop(), 0)
        self.start_shell()
        installs = [subprocess.Popen([QUILLON, "install", MEDIA], env=self.environment)
                    for _ in range(3)]
        self.assertEqual([install.wait(20) for install in installs], [0, 0, 0])
        self.assertTrue(self.tool(MEDIA)["installed"])

    def test_it_is_shown(self):
        self.start_shell()
        for _ in range(2):
            self.expect(0, "show")
            wait_until(self.shell.hub_has_focus, "the hub is open and has the keyboard's focus")

    def test_it_is_ended(self):
        for _ in range(3):
            quillon = self.start_shell()
            self.expect(0, "quit")
            self.assertFalse(self.status()["running"])  # at once
            self.assertEqual(quillon.wait(), 0)
            self.expect(3, "quit", says="quillon: Quillon is not running\n")
            # Nothing of it keeps a command from the files.
            self.expect(0, "disable", VOLUME)
            self.assertFalse(self.records()[VOLUME]["isEnabled"])
            self.expect(0, "enable", VOLUME)

    def test_what_it_finds_was_done_before(self):
        self.expect(0, "disable", MEDIA)
        quillon = self.run_quillon()
        quillon.wait_for_line("Setup complete!")
        self.assertFalse(self.tool(MEDIA)["enabled"])
        self.expect(0, "enable", MEDIA)

    def test_one_that_hangs(self):
        quillon = self.start_shell()
        quillon.process.send_signal(signal.SIGSTOP)
        self.addCleanup(quillon.process.send_signal, signal.SIGCONT)
        begun = time.monotonic()
        commands = [subprocess.Popen([QUILLON, *arguments], env=self.environment, text=True,
                                     stdout=subprocess.PIPE, stderr=subprocess.PIPE)
                    for arguments in (["status"], ["disable", VOLUME], ["install", VOLUME],
                                      ["show"], ["quit"])]
        for command in commands:
            self.assertEqual(command.communicate(timeout=10),
                             ("", "quillon: Quillon is running but does not answer\n"))
            self.assertEqual(command.returncode, 1)
        self.assertLess(time.monotonic() - begun, 7)  # they wait for five seconds

    def test_killed_in_a_command(self):
        for _ in range(5):
            quillon = self.start_shell()
            wait_until(self.records_file().exists, "the first start has written its records")
            before = set(self.records())
            command = subprocess.Popen([QUILLON, "install", VOLUME], env=self.environment,
                                       stderr=subprocess.PIPE, text=True)
            quillon.process.kill()
            self.assertEqual(quillon.wait(), -signal.SIGKILL)
            complaint = command.communicate(timeout=20)[1]
            self.assertIn((command.returncode, complaint), [
                (0, ""), (1, "quillon: Quillon ended before it had answered\n")])
            self.assertLessEqual(before, set(self.records()))
            self.assertFalse(self.status()["running"])

    def test_it_cannot_be_reached(self):
        self.start_shell()
        elsewhere = {"DBUS_SESSION_BUS_ADDRESS": "disabled:", "XDG_RUNTIME_DIR": ""}
        before = self.records()
        for arguments in (["disable", VOLUME], ["status"], ["show"]):
            self.expect(1, *arguments, says=UNREACHABLE, **elsewhere)
        self.assertEqual(self.records(), before)


class NothingShown(OfADesktop, DesktopTest):
    """On a desktop without a tray."""

    options = {"bus": True}

    def test_commands_work_while_it_starts(self):
        quillon = self.run_quillon()
        quillon.may_say("")
        wait_until(lambda: self.call("status").stdout.startswith("Quillon is running"),
                   "the program answers")
        self.expect(0, "disable", VOLUME)
        self.assertFalse(self.records()[VOLUME]["isEnabled"])
        self.expect(0, "quit")
        self.assertEqual(quillon.wait(), 0)


if __name__ == "__main__":
    unittest.main()
