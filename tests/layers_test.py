#!/usr/bin/env python3
"""The arrows between the layers go one way: read from the includes, so that no review must."""

import pathlib
import re
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent / "PelorinApp"

# Folder of the including file -> folders it may include from (itself always).
# The longest matching prefix counts.
ALLOWED = {
    "Text": [],
    "Platform": [],
    "Platform/Simulated": ["Platform"],
    "Platform/Quick": ["Platform"],
    "Platform/Posix": ["Platform"],
    "Platform/Linux": ["Platform", "Platform/Posix", "Platform/Quick", "Resources"],
    "Platform/MacOS": ["Platform", "Platform/Posix", "Platform/Quick"],
    "Tools": ["Platform"],
    "Hub": ["Tools", "Platform", "Text"],
    "Resources": [],
    "Views": ["Hub", "Tools", "Platform", "Resources"],
    "Replay": ["Hub", "Tools", "Platform", "Platform/Simulated", "Text"],
    "AppDelegate": ["VolumeBarMenuBarButton", "Hub", "Tools", "Platform"],
    "AppDelegateMenu": ["AppDelegate", "Platform"],
    "AppDelegatePopover": ["AppDelegate", "Platform"],
    "AppDelegateVolumeLevel": ["AppDelegate", "PercentText", "Platform"],
    "PercentText": [],
    "VolumeBarMenuBarButton": ["PercentText", "Platform"],
    "PelorinAppApp": ["AppDelegate", "Hub", "Tools", "Platform"],
    "CommandLine": [],
    "DefaultsCommand": ["CommandLine", "Platform"],
    "HubCommand": ["CommandLine"],
    "HubOnFiles": ["HubCommand", "Hub"],
}
UNRESTRICTED = {"main.cpp", "MacMain.mm"}

INCLUDE = re.compile(r'^\s*#\s*(?:include|import)\s*([<"])([^">]+)[">]', re.M)
PLATFORM_FOLDERS = (
    "Platform/Simulated",
    "Platform/Posix",
    "Platform/Linux",
    "Platform/MacOS",
    "Platform/Quick",
)

# What the operating system or the screen toolkit offers; only platforms and views may see it.
SYSTEM = re.compile(
    r"^(xcb/|X11/|pulse/|libevdev|libudev|linux/|sys/|curl/|unistd\.h|fcntl\.h|poll\.h|signal\.h|dlfcn\.h|"
    r"QtGui|QtWidgets|QtQuick|QtQml|QtDBus|QtNetwork|QtSvg|QApplication|QGui|QQuick|QQml|QWindow|QWidget|QSocketNotifier|QCoreApplication|"
    r"QTimer|QThread|AppKit|Foundation|QuartzCore|CoreGraphics|CoreFoundation|ApplicationServices|dispatch/|objc/)"
)
CONDITION = re.compile(r"^\s*#\s*(?:if|ifdef|ifndef|elif)\b.*(__linux__|__APPLE__|_WIN32|Q_OS_)", re.M)


def room(path):
    """The entry of ALLOWED that a file, named relative to PelorinApp, belongs to."""
    for length in range(len(path.parts), 0, -1):
        candidate = "/".join(path.parts[:length])
        for name in (candidate, candidate.rsplit(".", 1)[0]):
            if name in ALLOWED:
                return name
    return None


def complaints(root):
    found = []
    for file in sorted(root.rglob("*")):
        if file.suffix not in {".h", ".cpp", ".mm"}:
            continue
        name = file.relative_to(root)
        if str(name) in UNRESTRICTED:
            continue
        here = room(name)
        if here is None:
            found.append(f"{name}: its folder belongs to no layer")
            continue
        text = file.read_text()
        on_platform = here in PLATFORM_FOLDERS
        if CONDITION.search(text):
            found.append(f"{name}: asks for the operating system; it is in the wrong folder")
        for kind, included in INCLUDE.findall(text):
            if SYSTEM.match(included) and not on_platform and here != "Views":
                found.append(f"{name}: includes {included}")
            if kind == '"':
                there = room(pathlib.Path(included))
                if there is None:
                    found.append(f"{name}: includes {included}, which belongs to no layer")
                elif there != here and there not in ALLOWED[here]:
                    found.append(f"{name}: {here} must not include {included}")
    return found


class Layers(unittest.TestCase):
    def test_every_include_points_the_allowed_way(self):
        self.assertEqual(complaints(ROOT), [])

    def test_a_wrong_arrow_is_seen(self):
        import tempfile

        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            (root / "Tools").mkdir()
            (root / "Tools/A.cpp").write_text(
                '#include "Platform/Linux/B.h"\n#include <xcb/xcb.h>\n#include "Hub/C.h"\n'
                "#ifdef __linux__\n#endif\n"
            )
            self.assertEqual(len(complaints(root)), 4)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
