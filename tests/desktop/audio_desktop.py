"""The sound service in a process of its own, and sound servers for it."""

import json
import subprocess

from quillon_desktop import DesktopTest
from witnesses import AUDIO_TOOL

STEP = 0.0025  # the smallest that is scrolled


class AudioTool:
    """The service, in a process of its own that does what it is told."""

    def __init__(self, desktop):
        self.process = desktop.start("audio-tool", [AUDIO_TOOL], text=True,
                                     stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def __call__(self, *words):
        self.process.stdin.write(" ".join(map(str, words)) + "\n")
        self.process.stdin.flush()
        return json.loads(self.process.stdout.readline())


class Service:
    """To be mixed into a test with the class of a `server`; a new one for each test, since what is
    left by one that fails would be in the way."""

    options = {"window_manager": None}

    def setUp(self):
        super().setUp()
        self.tool = AudioTool(self.desktop)
        self.addCleanup(self._end_tool)

    def _end_tool(self):
        """It has had nothing to say, whatever happened."""
        self.desktop.end(self.tool.process)
        self.assertEqual(self.desktop.log("audio-tool"), "")

    def start_server(self, *sinks) -> None:
        self.server.start(*sinks)
        self.addCleanup(self.server.kill)

    def volume(self):
        return self.tool("get", self.tool("device") or 0, "vmvc")

    def set_volume(self, volume):
        return self.tool("set", self.tool("device") or 0, "vmvc", volume)

    def scroll(self, up: bool, delta=STEP) -> float:
        """One step as the volume tool makes it; answers by how much the volume has followed."""
        current = self.volume()
        target = max(min(current + delta, 1.0) if up else current - delta, 0.0)
        self.assertTrue(self.set_volume(target))
        return abs(self.volume() - current)

    def expect_units(self, units, *, sink="@DEFAULT_SINK@") -> None:
        self.assertLessEqual(abs(self.server.volume(sink) - units), 1)


def on(server, tests):
    """These tests, on a server of this class."""
    class Test(tests, DesktopTest):
        @classmethod
        def setUpClass(cls):
            super().setUpClass()
            cls.server = server(cls.desktop)
    return Test
