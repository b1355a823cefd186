"""Runs the program: on the user's X11 desktop when there is one, else on a private desktop that
can be watched and used over VNC or from a browser. See script/run."""

import argparse
import json
import os
import pathlib
import subprocess
import sys
import urllib.error
import urllib.request

import scene
from desktop import Failed, Interrupted, PrivateDesktop, free_port, wait_until

TREE = pathlib.Path(__file__).resolve().parents[2]
PROGRAM = TREE / "build/release/quillon"
EDGES = [f"Tool4{edge}Edge" for edge in ("Left", "Right", "Top", "Bottom")]
NOVNC = "/usr/share/novnc"


def main() -> int:
    parser = argparse.ArgumentParser(
        prog="script/run", allow_abbrev=False, description="Builds Quillon and runs it, on your X11 desktop if there "
        "is one, else on a private desktop. Other arguments go to quillon.")
    parser.add_argument("--private", action="store_true", help="use a private desktop in any case")
    parser.add_argument("--seconds", type=float, metavar="N", help="end by itself after N seconds")
    options, arguments = parser.parse_known_args()
    command = [str(PROGRAM), *(argument for argument in arguments if argument != "--")]
    if not options.private and has_desktop():
        return run_here(command, options.seconds)
    try:
        return run_privately(command, options.seconds)
    except Interrupted as interruption:
        print("script/run: stopped", flush=True)
        return interruption.status
    except Failed as failure:
        print(f"script/run: {failure}", file=sys.stderr)
        return 1


def has_desktop() -> bool:
    """Whether there is a display and it answers."""
    if not os.environ.get("DISPLAY"):
        return False
    try:
        return subprocess.run(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], timeout=5,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0
    except subprocess.TimeoutExpired:
        return False


def run_here(command, seconds) -> int:
    if not any_edge_armed():
        print("script/run: no screen edge is armed yet. To arm the left one, stop this and do:\n"
              "    build/release/quillon defaults write Tool4LeftEdge true && script/run",
              flush=True)
    if seconds:
        command = ["timeout", "--foreground", "--kill-after=5", str(seconds), *command]
    os.execvp(command[0], command)


def any_edge_armed() -> bool:
    config = os.environ.get("XDG_CONFIG_HOME") or pathlib.Path.home() / ".config"
    try:
        stored = json.loads((pathlib.Path(config) / "com.pelorin.PelorinApp/defaults.json").read_text())
        return any(stored.get(edge) is True for edge in EDGES)
    except (OSError, ValueError, AttributeError):
        return False  # what is wrong with the file, the program says itself


def run_privately(command, seconds) -> int:
    with PrivateDesktop(server="xtigervnc", panel="tint2", bus=True, audio=True,
                        logs=TREE / "build/run") as desktop:
        address = start_browser_access(desktop)
        scene.furnish(desktop)
        for edge in EDGES[:2]:
            desktop.run(PROGRAM, "defaults", "write", edge, "true")
        quillon = desktop.start("quillon", command, stdout=None, stderr=None)
        print(f"""
Quillon runs on a private desktop, X display {desktop.display}. Only this machine can reach it.

  watch and use it   in a browser:    {address}
                     a VNC viewer:    127.0.0.1::{desktop.vnc_port}
  try                scroll with the pointer at the left or right edge: four notches up or down
                     click its item at the right end of the panel: left for the hub, right for a menu
  stop               Ctrl-C here, or: kill {os.getpid()}
  logs               build/run/
""", flush=True)
        try:
            status = quillon.wait(timeout=seconds)
        except subprocess.TimeoutExpired:
            print(f"script/run: {seconds:g} seconds are over", flush=True)
            return 0
        print(f"script/run: quillon ended with status {status}", flush=True)
        return status if status >= 0 else 128 - status


def start_browser_access(desktop: PrivateDesktop) -> str:
    """Serves the VNC client page on loopback and answers its address."""
    for _attempt in range(5):  # somebody else may take the port before it does
        port = free_port()
        # Any web page may try to connect to loopback; only the served one shall get through.
        origins = f"http://127.0.0.1:{port} http://localhost:{port}"
        server = desktop.start("browser-access", [
            "websockify", "--web", NOVNC, "--auth-plugin", "ExpectOrigin", "--auth-source", origins,
            f"127.0.0.1:{port}", f"127.0.0.1:{desktop.vnc_port}"])
        address = f"http://127.0.0.1:{port}/vnc.html?autoconnect=1&resize=scale"
        wait_until(lambda: server.poll() is not None or answers(address), "the page for browsers")
        if server.poll() is None:
            return address
    raise Failed(f"the page for browsers does not come up: {desktop.log('browser-access')}")


def answers(address: str) -> bool:
    try:
        with urllib.request.urlopen(address, timeout=2) as response:
            return response.status == 200
    except (urllib.error.URLError, OSError):
        return False


if __name__ == "__main__":
    sys.exit(main())
