"""The ground of the tests of the tool hub: its files, and what the program says of it."""

import datetime
import json
import pathlib
import shutil
import subprocess

from quillon_desktop import DesktopTest
from witnesses import QUILLON, wait_until, write_settings

TOOLS = ["tool.windowSwitcher", "tool.mediaControl", "tool.desktopSwitcher", "tool.volumeControl",
         "tool.trackpadMiddleClick", "tool.scrollReverse"]  # in the order of the hub

FIELDS = ["id", "version", "installedAt", "isEnabled", "isDownloaded"]


class HubTest(DesktopTest):
    """A fresh user for each test."""

    options = {"bus": True}

    def setUp(self):
        shutil.rmtree(self.support, ignore_errors=True)
        write_settings(self.desktop, {})
        self.info = self.desktop.folder / "info.json"
        self.write_info()

    @property
    def support(self) -> pathlib.Path:
        return self.desktop.home / ".local/share/com.pelorin.PelorinApp"

    @property
    def records_file(self) -> pathlib.Path:
        return self.support / "installed-tools.json"

    def write_info(self, **more) -> None:
        """The configuration, with a catalog server that is not there."""
        self.info.write_text(json.dumps({"identifier": "com.pelorin.PelorinApp", "version": "1",
                                         "HubCatalogBaseURL": "http://127.0.0.1:9",
                                         "HubRequestTimeout": "2"} | more))
        self.desktop.environment["QUILLON_INFO"] = str(self.info)

    def launch(self, **how):
        quillon = self.run_quillon(**how)
        quillon.wait_for_line("Setup complete!")
        return quillon

    def records(self) -> dict[str, dict]:
        """By id, in order."""
        return {record["id"]: record for record in json.loads(self.records_file.read_text())}

    def await_records(self, expected, what="the records") -> dict[str, dict]:
        """Once `expected` is true of them."""
        def there():
            try:
                records = self.records()
            except (FileNotFoundError, TypeError, ValueError, RecursionError):  # not there, or not ours
                return None
            return records if expected(records) else None
        return wait_until(there, what)

    def settings(self) -> dict:
        return json.loads((self.desktop.config / "com.pelorin.PelorinApp/defaults.json").read_text())

    def command(self, *arguments, status=0) -> str:
        """What the program prints on this command line."""
        result = subprocess.run([QUILLON, *arguments], capture_output=True, text=True, timeout=20,
                                env=self.desktop.environment)
        self.assertEqual(result.returncode, status, result.stderr)
        return result.stdout

    def status(self) -> dict:
        """By a second process."""
        return json.loads(self.command("status", "--json"))

    def tools(self) -> dict[str, dict]:
        """What the status says of each tool, by id, in order."""
        return {tool["id"]: tool for tool in self.status()["tools"]}

    def expect_records_in_form(self) -> None:
        text = self.records_file.read_text()
        records = json.loads(text)
        self.assertEqual(text, json.dumps(records, indent=2))
        for record in records:
            self.assertEqual(list(record), FIELDS)
            installed = datetime.datetime.strptime(record["installedAt"], "%Y-%m-%dT%H:%M:%SZ")
            age = datetime.datetime.utcnow() - installed
            self.assertLess(abs(age.total_seconds()), 3600, record)
