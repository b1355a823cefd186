"""What the parts of a private desktop are started with: commands and the files they read."""

import pathlib
import xml.etree.ElementTree as ElementTree

DESKTOPS = 4

TINT2 = """\
# Backgrounds, numbered by their order: panel, active task, current desktop's name.
rounded = 0
background_color = #1b2430 100
rounded = 3
background_color = #3d4f66 100
rounded = 3
background_color = #2f81c7 100

panel_items = TSC
panel_size = 100% {thickness}
panel_position = {position}
panel_padding = 6 0 6
panel_background_id = 1
panel_layer = top
strut_policy = follow_size
wm_menu = 0

taskbar_mode = multi_desktop
taskbar_distribute_size = 1
taskbar_padding = 0 3 4
taskbar_background_id = 0
taskbar_active_background_id = 0
taskbar_name = 1
taskbar_name_padding = 8 0
taskbar_name_font = DejaVu Sans Bold 9
taskbar_name_font_color = #8fa3ba 100
taskbar_name_active_font_color = #ffffff 100
taskbar_name_background_id = 0
taskbar_name_active_background_id = 3

task_icon = 1
task_text = 1
task_centered = 0
task_maximum_size = 150 30
task_padding = 6 2 6
task_font = DejaVu Sans 9
task_font_color = #c4d0dd 100
task_active_font_color = #ffffff 100
task_background_id = 0
task_active_background_id = 2
mouse_scroll_up = none
mouse_scroll_down = none

systray_padding = 6 3 6
systray_background_id = 0
systray_icon_size = 22
systray_sort = ascending

time1_format = %H:%M
time1_font = DejaVu Sans Bold 9
clock_font_color = #ffffff 100
clock_padding = 6 0
"""


TINT2_PLACES = {  # names for tint2 at an edge: the setting, and how many pixels it is thick
    "tint2": ("top center horizontal", 30),
    "tint2-bottom": ("bottom center horizontal", 30),
    "tint2-left": ("center left vertical", 90),
}

DEVICES = {  # of the server "xorg", and what they are for the driver that plays them
    "keyboard": "Keyboard",
    "mouse": "Pointer",
    "second mouse": "Pointer",
    "touchpad": "PointerGesture",  # the only kind that says of itself to be a touchpad
}
XORG_ROLES = {"keyboard": "CoreKeyboard", "mouse": "CorePointer"}

XORG_DEVICE = """\
Section "InputDevice"
    Identifier "{name}"
    Driver "inputtest"
    Option "DeviceType" "{type}"
    Option "SocketPath" "{socket}"
    Option "PointerButtonCount" "11"
    Option "AccelerationProfile" "-1"
EndSection
"""

XORG = """\
Section "ServerFlags"
    Option "AutoAddDevices" "off"
    Option "AutoEnableDevices" "off"
    Option "AutoAddGPU" "off"
EndSection
{devices}Section "Device"
    Identifier "video"
    Driver "dummy"
    VideoRam 65536
EndSection
Section "Monitor"
    Identifier "monitor"
    HorizSync 5-1000
    VertRefresh 5-200
    Modeline "whole" {mode}
EndSection
Section "Screen"
    Identifier "screen"
    Device "video"
    Monitor "monitor"
    DefaultDepth 24
    SubSection "Display"
        Depth 24
        Modes "whole"
        Virtual {width} {height}
    EndSubSection
EndSection
Section "ServerLayout"
    Identifier "layout"
    Screen "screen"
{layout}EndSection
"""


def xvfb(screen: str, extra) -> list[str]:
    return ["Xvfb", "-screen", "0", f"{screen}x24", "-dpi", "96", "-noreset",
            "-nolisten", "tcp", *extra]


def xtigervnc(screen: str, port: int, extra) -> list[str]:
    """An X server and a VNC server in one, which answers on loopback only."""
    return ["Xtigervnc", "-geometry", screen, "-depth", "24", "-dpi", "96", "-noreset",
            "-nolisten", "tcp", "-interface", "127.0.0.1", "-localhost", "-rfbport", str(port),
            "-SecurityTypes", "None", "-AlwaysShared", "-AcceptSetDesktopSize=0",
            "-desktop", "Quillon", *extra]


def xorg(screen: str, folder: pathlib.Path, extra) -> list[str]:
    """An X server with DEVICES that scroll as real ones do. It needs no rights, no console and no
    graphics card."""
    width, height = (int(number) for number in screen.split("x"))
    # Blanking intervals as of a tube; with shorter ones the server turns the mode down.
    mode = (f"{(width + 240) * (height + 40) * 60 / 1e6} {width} {width + 48} {width + 80} "
            f"{width + 240} {height} {height + 3} {height + 9} {height + 40}")
    devices = "".join(XORG_DEVICE.format(name=name, type=kind, socket=device_socket(folder, name))
                      for name, kind in DEVICES.items())
    layout = "".join(f'    InputDevice "{name}" "{XORG_ROLES.get(name, "SendCoreEvents")}"\n'
                     for name in DEVICES)
    _write(folder / "xorg.conf",
           XORG.format(devices=devices, layout=layout, mode=mode, width=width, height=height))
    # Of a seat of its own it takes no console; without -novtswitch it would still look for one.
    return ["/usr/lib/xorg/Xorg", "-config", str(folder / "xorg.conf"), "-logfile",
            str(folder / "xorg.log"), "-seat", "seat-1", "-novtswitch", "-dpi", "96", "-noreset",
            "-nolisten", "tcp", *extra]


def device_socket(folder: pathlib.Path, name: str) -> pathlib.Path:
    """Where the server listens for what a device of its is to do."""
    return folder / "run" / f"device-{name.replace(' ', '-')}"


def dbus(address_fd: int, runtime: pathlib.Path) -> list[str]:
    return ["dbus-daemon", "--session", "--nofork", "--nopidfile", "--nosyslog",
            f"--address=unix:path={runtime}/bus", f"--print-address={address_fd}"]


def pulseaudio(socket: pathlib.Path) -> list[str]:
    """Sound that goes nowhere, through a sink named "speakers"."""
    return ["pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1",
            "--disallow-exit", "--disable-shm", "--realtime=no", "--log-target=stderr",
            "-L", "module-null-sink sink_name=speakers"
                  " sink_properties=device.description=Speakers",
            "-L", f"module-native-protocol-unix socket={socket} auth-anonymous=1"]


def window_manager(name: str, home: pathlib.Path, config: pathlib.Path) -> list[str]:
    """The command of a window manager, after writing the files that give it four desktops.

    metacity and xfwm4 are told the number when they run, see PrivateDesktop."""
    if name == "openbox":
        _write(config / "openbox/rc.xml", _openbox_settings())
        return ["openbox", "--sm-disable"]
    if name == "icewm":
        names = ",".join(f'"{number + 1}"' for number in range(DESKTOPS))
        # Its own panel would take the tray, and the wheel there switches desktops.
        _write(home / ".icewm/preferences", f"WorkspaceNames={names}\nShowTaskBar=0\n")
        return ["icewm"]
    if name == "metacity":
        return ["metacity", "--sm-disable", "--no-composite"]
    if name == "xfwm4":
        return ["xfwm4", "--sm-client-disable", "--compositor=off"]
    if name == "xfwm4-composited":
        return ["xfwm4", "--sm-client-disable", "--compositor=on"]
    raise ValueError(f"no such window manager: {name}")


def panel(name: str, config: pathlib.Path) -> list[str]:
    """tint2 has a tray of the old kind, xfce4-panel (which wants the bus) both kinds."""
    if name == "xfce4-panel":
        return ["xfce4-panel", "--disable-wm-check"]
    position, thickness = TINT2_PLACES[name]
    _write(config / "tint2/tint2rc", TINT2.format(position=position, thickness=thickness))
    return ["tint2", "-c", str(config / "tint2/tint2rc")]


def _write(path: pathlib.Path, text: str) -> None:
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text)


def _openbox_settings() -> str:
    """openbox's own settings, less the wheel: by default the wheel on the bare desktop switches
    desktops too, and then nobody could tell who did it. And less the popup that would cover the
    middle of the screen for a second after each change, and take the input there."""
    space = "http://openbox.org/3.4/rc"
    ElementTree.register_namespace("", space)
    root = ElementTree.parse("/etc/xdg/openbox/rc.xml").getroot()
    for context in root.iter(f"{{{space}}}context"):
        for binding in context.findall(f"{{{space}}}mousebind"):
            if binding.get("button", "").split("-")[-1] in ("Up", "Down"):
                context.remove(binding)
    desktops = root.find(f"{{{space}}}desktops")
    desktops.find(f"{{{space}}}number").text = str(DESKTOPS)
    desktops.find(f"{{{space}}}popupTime").text = "0"
    names = desktops.find(f"{{{space}}}names")
    for number in range(DESKTOPS):
        ElementTree.SubElement(names, f"{{{space}}}name").text = f"Desktop {number + 1}"
    return ElementTree.tostring(root, encoding="unicode", xml_declaration=True)
