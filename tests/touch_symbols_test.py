#!/usr/bin/env python3
"""What the touch library shows to the program that opens it, and what it needs.

    touch_symbols_test.py LIBRARY"""

import re
import subprocess
import sys
import unittest

LIBRARY = sys.argv.pop()


def output(*command) -> str:
    return subprocess.run(command, check=True, text=True, stdout=subprocess.PIPE).stdout


class TouchSymbols(unittest.TestCase):
    def test_exports_what_it_is_opened_for(self):
        lines = output("nm", "-D", "--defined-only", LIBRARY).splitlines()
        self.assertEqual(sorted(line.split()[-1] for line in lines), [
            "MTDeviceCreateDefault", "MTDeviceStart", "MTDeviceStop",
            "MTRegisterContactFrameCallback", "MTUnregisterContactFrameCallback"])

    def test_needs_no_toolkit(self):
        needed = re.findall(r"NEEDED.*\[(.*)\]", output("readelf", "-d", LIBRARY))
        self.assertIn("libevdev.so.2", needed)
        toolkits = re.compile(r"libQt|libX|libxcb|libglib")
        self.assertEqual([name for name in needed if toolkits.match(name)], [])


if __name__ == "__main__":
    unittest.main()
