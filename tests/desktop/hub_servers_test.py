#!/usr/bin/env python3
"""Catalogs and packages from real servers, however bad they are: what becomes of the tools, and
whether the program goes on answering meanwhile."""

import shutil
import subprocess
import time
import unittest

from catalog_server import HUGE, PACKAGE, Server, digest, item
from hub_desktop import TOOLS, HubTest
from process_facts import is_sanitized, peak_memory
from pulse import Pulse
from witnesses import QUILLON, wait_until

# Seconds for which a main thread may be held up. Most often it is 0.03; whoever waits for one of
# these servers, or takes in all that it sends, is held up for much longer. What a sanitized program
# does takes as long as its allocator likes.
LONGEST_STALL = 5 if is_sanitized(QUILLON) else 0.5
MEMORY = HUGE // 5  # bytes; what a server's flood may cost at most

BAD = ["empty", "loop", "to-file", "missing", "broken", "wrong", "huge", "endless", "headers",
       "slow", "reset", "never"]


class ServerTest(HubTest):
    def setUp(self):
        super().setUp()
        self.server = Server()
        self.addCleanup(self.server.close)

    def launch_with(self, mode: str):
        self.write_info(HubCatalogBaseURL=self.server.address(mode))
        self.server.asked.clear()
        quillon = self.launch()
        wait_until(lambda: self.server.asked, f"the {mode} server is asked")
        return quillon

    def pulse(self, quillon) -> Pulse:
        return Pulse(self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"], quillon.process.pid)

    def expect_no_stall(self, pulse: Pulse, quillon, mode: str) -> None:
        said = f"{mode}: {pulse}, peak memory {peak_memory(quillon.process.pid) >> 20} MiB"
        print(said)
        self.assertLess(pulse.longest, LONGEST_STALL, said)
        if not is_sanitized(QUILLON):
            self.assertLess(peak_memory(quillon.process.pid), MEMORY, mode)


class Catalogs(ServerTest):
    def test_what_a_good_server_says(self):
        for mode in ("good", "moved"):
            quillon = self.launch_with(mode)
            wait_until(lambda: "tool.served1" in self.tools(), "the server's catalog")
            said = self.tools()
            self.assertEqual(list(said)[0], "tool.served1")
            self.assertEqual(set(said), {"tool.served1", *TOOLS})
            self.assertFalse(said["tool.served1"]["installed"])
            self.assertEqual(quillon.stop(), 0)

    def test_whatever_a_bad_one_says_the_tools_are_those_built_in(self):
        for mode in BAD:
            with self.subTest(mode):
                quillon = self.launch_with(mode)
                try:
                    with self.pulse(quillon) as pulse:
                        # An install is possible once there is a catalog.
                        wait_until(self.install_works, "a catalog", 20)
                    self.assertEqual(list(self.tools()), TOOLS)
                    self.expect_no_stall(pulse, quillon, mode)
                finally:
                    self.assertEqual(quillon.stop(), 0)
                self.assertEqual(quillon.unexpected_lines(), [])

    def test_one_item_that_lacks_a_field_spoils_the_catalog(self):
        incomplete = item(2)
        del incomplete["minHubVersion"]
        self.server.catalog = [item(1), incomplete]
        self.launch_with("good")
        wait_until(self.install_works, "a catalog")
        self.assertEqual(list(self.tools()), TOOLS)

    def install_works(self) -> bool:
        return subprocess.run([QUILLON, "install", TOOLS[0]], capture_output=True, timeout=20,
                              env=self.desktop.environment).returncode == 0

    def test_ten_thousand_tools(self):
        self.server.catalog = [item(number, downloadURL=self.server.package("good"),
                                    sha256=digest()) for number in range(10000)]
        self.write_info(HubCatalogBaseURL=self.server.address("good"))
        quillon = self.launch()
        with self.pulse(quillon) as pulse:
            self.command("install", "tool.served9999")  # once they are there
        self.expect_no_stall(pulse, quillon, "ten thousand tools")
        self.assertEqual(len(self.tools()), 10000 + len(TOOLS))

    def test_the_end_does_not_wait_for_a_server(self):
        for mode in ("never", "slow", "endless", "headers"):
            quillon = self.launch_with(mode)
            start = time.monotonic()
            self.assertEqual(quillon.stop(), 0)
            self.assertLess(time.monotonic() - start, 2, mode)


class Packages(ServerTest):
    def setUp(self):
        super().setUp()
        self.folder = self.support / "tool.served1"

    def launch_offering(self, mode: str, **more):
        self.server.catalog = [item(downloadURL=self.server.package(mode)) | more]
        quillon = self.launch_with("good")
        wait_until(lambda: "tool.served1" in self.tools(), "the server's catalog")
        return quillon

    def expect_package(self, **more) -> None:
        quillon = self.launch_offering("good", **more)
        self.command("install", "tool.served1")
        self.assertEqual((self.folder / "package.bin").read_bytes(), PACKAGE)
        self.assertEqual([entry.name for entry in self.folder.iterdir()], ["package.bin"])
        record = self.await_records(lambda found: "tool.served1" in found)["tool.served1"]
        self.assertEqual((record["version"], record["isEnabled"], record["isDownloaded"]),
                         ("3.2.1", True, True))
        self.assertEqual(quillon.stop(), 0)

    def test_a_good_one(self):
        self.expect_package()

    def test_with_its_digest(self):
        self.expect_package(sha256=digest())

    def test_with_its_digest_in_capitals(self):
        self.expect_package(sha256=digest().upper())

    def test_with_no_digest(self):
        self.expect_package(sha256=None)

    def test_with_an_empty_digest(self):
        self.expect_package(sha256="")

    def expect_placeholder(self, quillon, mode: str, reason: str) -> None:
        with self.pulse(quillon) as pulse:
            self.command("install", "tool.served1")
        quillon.wait_for_line(f"Install fallback for tool.served1: {reason}")
        self.assertEqual((self.folder / "package.placeholder").read_text(),
                         "Placeholder package for tool.served1 (3.2.1)")
        record = self.await_records(lambda found: "tool.served1" in found)["tool.served1"]
        self.assertEqual((record["isEnabled"], record["isDownloaded"]), (True, False))
        self.expect_no_stall(pulse, quillon, mode)

    def test_with_another_digest(self):
        self.expect_package()
        quillon = self.launch_offering("good", sha256=digest(b"another"))
        self.expect_placeholder(quillon, "another digest", "Tool signature verification failed")
        self.assertEqual((self.folder / "package.bin").read_bytes(), PACKAGE, "the earlier one")

    def test_from_a_bad_server(self):
        reasons = {"missing": "Tool download failed", "broken": "Tool download failed"}
        for mode in BAD:
            if mode in ("empty", "wrong"):
                continue  # as good a package as any
            with self.subTest(mode):
                quillon = self.launch_offering(mode)
                try:
                    self.expect_placeholder(quillon, mode, reasons.get(mode, ""))
                finally:
                    quillon.stop()
                self.assertFalse((self.folder / "package.bin").exists())
                shutil.rmtree(self.support)


if __name__ == "__main__":
    unittest.main()
