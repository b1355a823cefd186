#!/usr/bin/env python3
"""What makes an application of the program on a Mac says what the system goes by."""

import pathlib
import plistlib
import re
import subprocess
import tempfile
import unittest

TREE = pathlib.Path(__file__).resolve().parents[2]
PACKAGING = TREE / "packaging/macos"

ENTRIES = """
include(cmake/InfoPlist.cmake)
quillon_plist_entry(entries SUFeedURL "https://quillon.example/feed?a=1&b=<2>")
quillon_plist_entry(entries SUPublicEDKey "")
file(WRITE "${output}" "${entries}")
"""


def entries() -> str:
    """As they are made for the bundle."""
    with tempfile.TemporaryDirectory() as folder:
        script, output = pathlib.Path(folder, "entries.cmake"), pathlib.Path(folder, "entries")
        script.write_text(ENTRIES.replace("cmake/InfoPlist.cmake",
                                          str(TREE / "cmake/InfoPlist.cmake")))
        subprocess.run(["cmake", f"-Doutput={output}", "-P", script], check=True)
        return output.read_text()


class Bundle(unittest.TestCase):
    def information(self) -> dict:
        values = {"PROJECT_VERSION": "1.2.3", "CMAKE_OSX_DEPLOYMENT_TARGET": "12.0",
                  "QUILLON_PLIST_ENTRIES": entries()}
        text = (PACKAGING / "Info.plist.in").read_text()
        return plistlib.loads(re.sub("@([A-Z_]+)@", lambda name: values[name[1]], text).encode())

    def test_it_has_no_place_in_the_dock(self):
        self.assertIs(self.information()["LSUIElement"], True)

    def test_it_is_known_by_its_identifier(self):
        information = self.information()
        self.assertEqual(information["CFBundleIdentifier"], "com.pelorin.PelorinApp")
        self.assertEqual(information["CFBundleShortVersionString"], "1.2.3")
        self.assertEqual(information["LSMinimumSystemVersion"], "12.0")

    def test_it_says_why_it_sends_events_to_others(self):
        """Without both the system refuses, and does not even ask the user."""
        self.assertIn("System Events", self.information()["NSAppleEventsUsageDescription"])
        entitlements = plistlib.loads((PACKAGING / "Quillon.entitlements").read_bytes())
        self.assertEqual(entitlements, {"com.apple.security.automation.apple-events": True})

    def test_a_catalog_of_this_computer_may_be_fetched(self):
        self.assertEqual(self.information()["NSAppTransportSecurity"],
                         {"NSAllowsLocalNetworking": True})

    def test_addresses_are_texts_as_they_are_and_what_is_not_set_is_not_there(self):
        information = self.information()
        self.assertEqual(information["SUFeedURL"], "https://quillon.example/feed?a=1&b=<2>")
        self.assertNotIn("SUPublicEDKey", information)


if __name__ == "__main__":
    unittest.main()
