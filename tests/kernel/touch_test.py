"""How many fingers touch, as our touch library tells another program."""

import contextlib
import os
import pathlib
import re
import signal

from touch_bench import TouchTest  # first: it says where the other modules are
from kernel_desktop import TREE
from uinput_devices import Mouse
from uinput_touchpads import PLACES, OldTouchpad, PalmTouchpad, SemiTouchpad, Touchpad
from witnesses import wait_until

DOCUMENT = TREE / "docs/touchpad.md"
# The owner of a device, who may read it only if its mode says so.
WITHOUT_RIGHTS = ["setpriv", "--bounding-set", "-dac_override,-dac_read_search"]


class Touches(TouchTest):
    def test_together(self):
        fingers, probe = self.plugged(), self.probe()
        probe.start(0)
        for count in (2, 3, 4, 5, 3, 1):
            fingers.touch(*PLACES[:count])
            probe.expect(count)
            fingers.lift()
            probe.expect(0)

    def test_in_turn(self):
        fingers, probe = self.plugged(), self.probe()
        probe.start(0)
        for slots in ([0], [0, 1], [0, 1, 2], [0, 1, 2, 3], [0, 2, 3], [2, 3], [1, 2, 3], [1], []):
            fingers.hold({slot: PLACES[slot] for slot in slots})
            probe.expect(len(slots))

    def test_only_how_many_there_are_is_told(self):
        fingers, probe = self.plugged(), self.probe()
        probe.start(0)
        three = dict(enumerate(PLACES[:3]))
        fingers.hold(three)
        fingers.slide(5, 10, 20)
        fingers.hold(three, new=[1])
        fingers.hold(three, new=[0, 2])
        fingers.lift()
        probe.expect(3, 0)

    def test_a_finger_that_moves_wakes_nobody_and_goes_to_the_server(self):
        fingers, probe = self.plugged(), self.probe()
        probe.start(0)
        fingers.touch(PLACES[0])
        probe.expect(1)
        before, begin = probe.wakings(), self.desktop.pointer()
        fingers.slide(20, 10, 50)
        wait_until(lambda: self.desktop.pointer() != begin, "the pointer moves")
        fingers.slide(20, 10, 50)
        self.desktop.raw_events.await_quiet(0.3)
        self.assertEqual(probe.wakings(), before)
        fingers.lift()
        probe.expect(0)

    def test_palms(self):
        fingers, probe = self.plugged(PalmTouchpad), self.probe()
        probe.start(0)
        four = dict(enumerate(PLACES[:4]))
        fingers.hold(four, palms=[3])
        probe.expect(3)
        fingers.hold(four)
        probe.expect(4)
        fingers.hold(four, palms=[0, 1, 2, 3])
        probe.expect(0)

    def test_more_fingers_than_slots(self):
        self.expect_counts(SemiTouchpad)

    def test_no_slots(self):
        self.expect_counts(OldTouchpad)

    def expect_counts(self, kind) -> None:
        fingers, probe = self.plugged(kind), self.probe()
        probe.start(0)
        for count in (1, 2, 3, 4, 3, 2, 1, 3, 0):
            fingers.touch(*PLACES[:count])
            probe.expect(count)

    def test_fingers_that_rest_at_the_start(self):
        for kind in (Touchpad, SemiTouchpad, OldTouchpad):
            with self.subTest(kind=kind.__name__):
                fingers, probe = self.plugged(kind, kind.__name__), self.probe()
                fingers.touch(*PLACES[:3])
                probe.start(3)
                fingers.lift()
                probe.expect(0)

    def test_stopped_and_started(self):
        fingers, probe = self.plugged(), self.probe()
        for _ in range(3):
            probe.start(0)
            fingers.touch(*PLACES[:3])
            probe.expect(3)
            probe.stop()
            fingers.touch(*PLACES[:4])
            probe.start(4)
            probe.stop()
            fingers.lift()

    def test_a_program_that_ends_without_stopping(self):
        fingers, probe = self.plugged(), self.probe()
        probe.start(0)
        fingers.touch(*PLACES[:2])
        probe.expect(2)
        probe.process.stdin.close()
        self.assertEqual(probe.process.wait(10), 0)

    def test_more_than_the_kernel_keeps(self):
        fingers, probe = self.plugged(), self.probe()
        probe.start(0)
        touches = 150
        for last in ([0, 2], []):
            probe.process.send_signal(signal.SIGSTOP)
            for _ in range(touches):
                fingers.touch(PLACES[1])
                fingers.lift()
            fingers.touch(*(PLACES[finger] for finger in last))
            probe.process.send_signal(signal.SIGCONT)
            if last:
                frames = probe.expect_last(len(last))
                self.assertLess(frames, touches, "something was lost")
                fingers.hold({0: PLACES[0]})
                probe.expect(1)
            else:
                probe.expect_last(0)


class TouchpadsComeAndGo(TouchTest):
    def test_unplugged_while_touched(self):
        fingers, probe = self.plugged(), self.probe()
        probe.start(0)
        for count in (3, 2, 3):
            fingers.touch(*PLACES[:count])
            probe.expect(count)
            fingers.unplug()
            probe.expect(0)
            fingers.plug()

    def test_back_before_anybody_looks(self):
        fingers, probe = self.plugged(), self.probe()
        probe.start(0)
        for _ in range(5):
            fingers.touch(*PLACES[:3])
            probe.expect(3)
            fingers.pull()
            fingers.plug_anew()
            probe.expect(0)

    def test_the_one_touched_last_counts(self):
        one, other, probe = self.plugged(), self.plugged(name="other fingers"), self.probe()
        probe.start(0)
        one.touch(*PLACES[:3])
        probe.expect(3)
        other.touch(PLACES[0])
        probe.expect(1)
        other.lift()
        probe.expect(0)
        one.hold(dict(enumerate(PLACES[:2])))
        probe.expect(2)
        other.unplug()
        one.hold(dict(enumerate(PLACES[:3])))
        probe.expect(3)
        one.unplug()
        probe.expect(0)

    def test_none_at_first(self):
        probe = self.probe()
        probe.start(0)
        fingers = self.plugged()
        fingers.touch(*PLACES[:3])
        probe.expect(3)

    def test_without_rights(self):
        fingers, probe = self.plugged(), self.probe(*WITHOUT_RIGHTS)
        os.chmod(fingers.node(), 0)
        probe.do("start", "no device")
        os.chmod(fingers.node(), 0o400)
        probe.start(0)
        fingers.touch(*PLACES[:3])
        probe.expect(3)

    def test_rights_that_come_later(self):
        fingers, probe = self.plugged(), self.probe(*WITHOUT_RIGHTS)
        probe.start(0)
        with self.rule('KERNEL=="event*", ATTRS{name}=="other fingers", MODE="0000"'):
            other = self.plugged(name="other fingers")
            self.desktop.run("udevadm", "settle")
            self.assertEqual(os.stat(other.node()).st_mode & 0o777, 0)
            other.touch(*PLACES[:4])
            fingers.touch(*PLACES[:2])
            probe.expect(2)
            other.lift()
        other.touch(*PLACES[:3])
        os.chmod(other.node(), 0o400)
        self.desktop.run("udevadm", "trigger", "--action=change", f"--name-match={other.node()}")
        probe.expect(3)

    def test_the_rule_that_grants_access(self):
        """As written for people; who sits at the machine is known only where people log in."""
        name, rule = re.search(r"`/etc/udev/rules.d/(\S+)`:\n\n    (.*)\n",
                               DOCUMENT.read_text()).groups()
        fingers, mouse = self.plugged(), self.plugged(Mouse, "mouse")

        def tags(device):
            self.desktop.run("udevadm", "trigger", "--action=change",
                             f"--name-match={device.node()}", "--settle")
            return self.desktop.run("udevadm", "info", "--query=property",
                                    "--property=CURRENT_TAGS", "--value", device.node())
        self.assertNotIn(":uaccess:", tags(fingers))
        with self.rule(rule, name):
            self.assertIn(":uaccess:", tags(fingers))
            self.assertNotIn(":uaccess:", tags(mouse))
            # What acts upon it comes later.
            after = [file.name for folder in ("/lib/udev/rules.d", "/etc/udev/rules.d")
                     for file in pathlib.Path(folder).glob("*.rules")
                     if re.search(r'TAG=="uaccess",.*RUN\{builtin\}', file.read_text())]
            self.assertTrue(after)
            self.assertLess(name, min(after))

    @contextlib.contextmanager
    def rule(self, text: str, name="90-touch-test.rules"):
        file = pathlib.Path("/run/udev/rules.d") / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(f"{text}\n")
        self.desktop.run("udevadm", "control", "--reload")
        try:
            yield
        finally:
            file.unlink()
            self.desktop.run("udevadm", "control", "--reload")
