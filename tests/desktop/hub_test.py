#!/usr/bin/env python3
"""Which tools are installed and on, from launch to launch, as the hub's files say."""

import json
import shutil
import unittest

from hub_desktop import TOOLS, HubTest
from quillon_desktop import BAND, GestureTest
from witnesses import await_idle, wheel_is_free, write_settings


class Launches(HubTest):
    def expect_tools(self, off=()) -> None:
        """All are installed from no package, and on but for these."""
        records = self.await_records(lambda found: set(found) >= set(TOOLS) and not any(
            record["isDownloaded"] for record in found.values()))
        for tool in TOOLS:
            record = records[tool]
            self.assertEqual((record["version"], record["isDownloaded"]), ("1.0.0", False), tool)
            self.assertEqual(record["isEnabled"], tool not in off, tool)
        self.expect_records_in_form()
        said = self.tools()
        self.assertEqual(list(said)[:len(TOOLS)], TOOLS)
        for tool in TOOLS:
            self.assertEqual((said[tool]["installed"], said[tool]["enabled"]),
                             (True, records[tool]["isEnabled"]), tool)

    def test_first_launch(self):
        quillon = self.launch()
        self.expect_tools()
        self.assertEqual(quillon.stop(), 0)
        self.assertTrue(self.settings()["HubMigrationV1Done"])

    def test_after_an_older_release(self):
        write_settings(self.desktop, {"Tool2Enabled": False, "Tool3Enabled": 0, "Tool5Enabled": 1,
                                      "Tool1Enabled": "NO", "Tool4Enabled": "YES"})
        quillon = self.launch()
        off = ["tool.mediaControl", "tool.trackpadMiddleClick", "tool.windowSwitcher"]
        self.expect_tools(off=off)
        self.assertEqual(quillon.stop(), 0)
        settings = self.settings()
        self.assertEqual({key: value for key, value in settings.items()
                          if key.startswith("HubEnabled.")},
                         {f"HubEnabled.{tool}": tool not in off for tool in TOOLS[:5]})
        self.assertIs(settings["Tool2Enabled"], False)
        # It is not asked again.
        settings["Tool5Enabled"] = False
        write_settings(self.desktop, settings)
        self.launch()
        self.expect_tools(off=off)

    def test_records_that_are_damaged(self):
        good = [{"id": tool, "version": "0.9", "installedAt": "2024-05-01T09:30:00Z",
                 "isEnabled": False, "isDownloaded": True} for tool in TOOLS]
        whole = json.dumps(good, indent=2)
        undated = [dict(good[0], installedAt="yesterday"), *good[1:]]
        incomplete = [*good[1:], {"id": "tool.x"}]
        for damaged in ("", whole[:-20], "\x7fELF", "{}", "null", json.dumps(undated),
                        json.dumps(incomplete), "[" * 100000):
            with self.subTest(damaged[:40]):
                shutil.rmtree(self.support, ignore_errors=True)
                self.support.mkdir()
                self.records_file.write_text(damaged)
                quillon = self.launch()
                try:
                    self.expect_tools()
                finally:
                    self.assertEqual(quillon.stop(), 0)
                self.assertEqual(quillon.unexpected_lines(), [])
                kept = self.support / "installed-tools.json.damaged"
                self.assertEqual(kept.read_text(), damaged)

    def test_records_of_somebody_else(self):
        self.support.mkdir(exist_ok=True)
        foreign = {"id": "tool.foreign", "version": "7", "installedAt": "2024-05-01T09:30:00Z",
                   "isEnabled": True, "isDownloaded": False}
        media = dict(foreign, id="tool.mediaControl", isEnabled=False)
        self.records_file.write_text(json.dumps([foreign, media]))
        self.launch()
        records = self.await_records(lambda found: len(found) == 7)
        self.assertEqual(list(records)[:2], ["tool.foreign", "tool.mediaControl"])
        self.assertEqual(records["tool.foreign"], foreign)
        self.assertEqual(records["tool.mediaControl"], media)
        said = self.tools()
        self.assertEqual(list(said), [*TOOLS, "tool.foreign"])
        self.assertEqual(said["tool.foreign"]["name"], "tool.foreign")
        self.assertFalse(said["tool.mediaControl"]["enabled"])

    def test_uninstalled_it_comes_back_off(self):
        quillon = self.launch()
        (self.support / "tool.volumeControl").mkdir()
        self.command("uninstall", "tool.volumeControl")
        self.await_records(lambda found: "tool.volumeControl" not in found)
        self.assertFalse((self.support / "tool.volumeControl").exists())
        self.assertFalse(self.tools()["tool.volumeControl"]["installed"])
        self.assertEqual(quillon.stop(), 0)
        self.assertIs(self.settings()["HubEnabled.tool.volumeControl"], False)
        self.launch()
        self.expect_tools(off=["tool.volumeControl"])

    def test_what_is_off_stays_off(self):
        quillon = self.launch()
        self.command("disable", "tool.scrollReverse")
        self.assertEqual(quillon.stop(), 0)
        self.launch()
        self.expect_tools(off=["tool.scrollReverse"])

    def test_a_folder_that_cannot_be_made(self):
        shutil.rmtree(self.support, ignore_errors=True)
        self.support.write_text("in the way")
        self.addCleanup(self.support.unlink)
        quillon = self.launch()
        quillon.wait_for_line("Failed to persist install metadata: ")
        self.assertTrue(self.tools()["tool.mediaControl"]["enabled"])


class Gestures(GestureTest):
    def test_nothing_is_held_until_an_edge_is_armed(self):
        write_settings(self.desktop, {})
        quillon = self.run_quillon()
        quillon.wait_for_line("Setup complete!")
        for x, y in ((0, 300), (600, 0), (600, 799), (1279, 300)):
            self.injector.move(x, y)
            await_idle(quillon.process)
            self.assertTrue(wheel_is_free(self.desktop))

    def test_a_tool_that_is_off_holds_nothing(self):
        quillon = self.start_quillon("Left", **{"HubEnabled.tool.desktopSwitcher": False})
        self.injector.move(BAND // 2, 300)
        await_idle(quillon.process)
        self.assertTrue(wheel_is_free(self.desktop))


if __name__ == "__main__":
    unittest.main()
