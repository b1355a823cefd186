"""The ground of the tests of the volume tool: a hand that turns the wheel no faster than the tool
follows, and somebody who knows what the volume is."""

from quillon_desktop import HEIGHT, WIDTH, ClientTest
from sound_servers import NORM, PulseAudio
from witnesses import await_idle, wait_until

INTERVAL = 0.085  # seconds between two scrolls that count
AT_EDGE = WIDTH - 5
STEPS = 400  # smallest ones in the full volume


class VolumeTest(ClientTest):
    """The right edge is armed for the volume, and nothing else is."""

    server_type = PulseAudio

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.sound = cls.server_type(cls.desktop)

    def setUp(self):
        super().setUp()
        self.injector.move(WIDTH // 2, HEIGHT // 4)

    def start_tool(self, steps=1, **settings):
        self.quillon = self.start_quillon(Tool5RightEdge=True, Tool5VolumeSteps=float(steps),
                                          **settings)
        # The last of the tools that listen has started.
        self.quillon.wait_for_line("Event monitor successfully created")
        return self.quillon

    def start_sound(self, volume=NORM // 2) -> None:
        self.sound.start()
        self.addCleanup(self.sound.kill)
        self.sound.set_volume(volume)

    def go_to_edge(self) -> None:
        self.injector.move(AT_EDGE, HEIGHT // 4)

    def turn(self, direction: str) -> None:
        """One notch, that the tool has heard of long enough ago for another to count."""
        self.injector.scroll(direction, 1)
        await_idle(self.quillon.process)

    def expect_volume(self, units: float, limit=10.0) -> None:
        """To one raw unit."""
        wait_until(lambda: abs(self.sound.volume() - units) <= 1,
                   f"volume {units:.1f}; it is {self.sound.volume()}", limit)

    def expect_step(self, direction: str, steps: int) -> None:
        change = steps * NORM / STEPS * (1 if direction in ("up", "right") else -1)
        before = self.sound.volume()
        self.turn(direction)
        self.expect_volume(before + change)
