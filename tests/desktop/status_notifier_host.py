#!/usr/bin/env python3
"""A panel whose tray knows only the StatusNotifierItem protocol.

It shows the icons that items publish in a bar at the top of the screen; a left click there
activates the item, a right click asks it for its menu. It prints what it learns:

    ready                       it may be asked
    item SERVICE                one has come
    tooltip TEXT                its tooltip, at first and whenever it changes
    icon WIDTH HEIGHT           it has published another picture; this is the one that is shown
    gone SERVICE
"""

import struct
import sys

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, GdkPixbuf, Gio, GLib, Gtk  # noqa: E402

WATCHER, WATCHER_PATH = "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
HEIGHT, ICON, MARGIN = 28, 22, 60

WATCHER_INTERFACE = f"""
<node><interface name="{WATCHER}">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
  <signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
  <signal name="StatusNotifierItemUnregistered"><arg type="s"/></signal>
  <signal name="StatusNotifierHostRegistered"/>
</interface></node>"""


def say(*words) -> None:
    print(*words, flush=True)


class Item:
    """One program's item, in the bar."""

    def __init__(self, bus, service: str, path: str, bar: Gtk.Box):
        self.service = service
        self._proxy = Gio.DBusProxy.new_sync(
            bus, Gio.DBusProxyFlags.DO_NOT_LOAD_PROPERTIES | Gio.DBusProxyFlags.DO_NOT_AUTO_START,
            None, service, path, ITEM, None)
        self._proxy.connect("g-signal", lambda _p, _s, signal, _v: self._changed(signal))
        self._image = Gtk.Image()
        self.widget = Gtk.EventBox()
        self.widget.add(self._image)
        self.widget.set_size_request(HEIGHT, HEIGHT)
        self.widget.connect("button-release-event", self._clicked)
        bar.pack_end(self.widget, False, False, 0)
        self.widget.show_all()
        self._read_tooltip()
        self._read_icon()

    def _read(self, name: str, then) -> None:
        def answered(proxy, result):
            try:
                then(proxy.call_finish(result).unpack()[0])
            except GLib.Error as error:
                say("error", name, error.message)
        self._proxy.call("org.freedesktop.DBus.Properties.Get", GLib.Variant("(ss)", (ITEM, name)),
                         Gio.DBusCallFlags.NONE, 5000, None, answered)

    def _changed(self, signal: str) -> None:
        if signal == "NewIcon":
            self._read_icon()
        elif signal == "NewToolTip":
            self._read_tooltip()

    def _read_tooltip(self) -> None:
        self._read("ToolTip", lambda tooltip: say("tooltip", tooltip[2] or tooltip[3]))

    def _read_icon(self) -> None:
        self._read("IconPixmap", self._show)

    def _show(self, pictures) -> None:
        width, height, data = min(pictures, key=lambda picture: (picture[0] < ICON, picture[0]))
        rgba = bytearray()
        for (argb,) in struct.iter_unpack(">I", bytes(data)):
            rgba += struct.pack(">I", (argb << 8 | argb >> 24) & 0xFFFFFFFF)
        picture = GdkPixbuf.Pixbuf.new_from_bytes(GLib.Bytes.new(bytes(rgba)),
                                                  GdkPixbuf.Colorspace.RGB, True, 8, width, height,
                                                  4 * width)
        if (width, height) != (ICON, ICON):
            picture = picture.scale_simple(ICON, ICON, GdkPixbuf.InterpType.BILINEAR)
        self._image.set_from_pixbuf(picture)
        say("icon", width, height)

    def _clicked(self, _widget, event) -> None:
        method = {1: "Activate", 2: "SecondaryActivate", 3: "ContextMenu"}.get(event.button)
        if method:
            self._proxy.call(method, GLib.Variant("(ii)", (int(event.x_root), int(event.y_root))),
                             Gio.DBusCallFlags.NONE, 5000, None, None)


class Host:
    def __init__(self):
        self._items = []
        self._bar = self._make_bar()
        Gio.bus_own_name(Gio.BusType.SESSION, WATCHER, Gio.BusNameOwnerFlags.NONE,
                         self._got_bus, lambda *_: say("ready"), lambda *_: sys.exit("no name"))

    @staticmethod
    def _make_bar() -> Gtk.Box:
        css = Gtk.CssProvider()
        css.load_from_data(b"window { background: #232a31; }")
        Gtk.StyleContext.add_provider_for_screen(Gdk.Screen.get_default(), css,
                                                 Gtk.STYLE_PROVIDER_PRIORITY_APPLICATION)
        window = Gtk.Window(title="status-notifier-host")
        window.set_type_hint(Gdk.WindowTypeHint.DOCK)
        window.set_default_size(window.get_screen().get_root_window().get_width(), HEIGHT)
        window.move(0, 0)
        bar = Gtk.Box(margin_end=MARGIN)
        window.add(bar)
        window.show_all()
        return bar

    def _got_bus(self, bus, _name) -> None:
        self._bus = bus
        interface = Gio.DBusNodeInfo.new_for_xml(WATCHER_INTERFACE).interfaces[0]
        bus.register_object(WATCHER_PATH, interface, self._called, self._property, None)

    def _called(self, bus, sender, _path, _interface, method, parameters, invocation) -> None:
        if method == "RegisterStatusNotifierItem":
            name = parameters.unpack()[0]
            service, path = (sender, name) if name.startswith("/") else (name, "/StatusNotifierItem")
            GLib.idle_add(self._add, service, path)
            Gio.bus_watch_name_on_connection(bus, service, Gio.BusNameWatcherFlags.NONE, None,
                                             lambda _bus, gone: self._remove(gone))
            bus.emit_signal(None, WATCHER_PATH, WATCHER, "StatusNotifierItemRegistered",
                            GLib.Variant("(s)", (service + path,)))
        invocation.return_value(None)

    def _property(self, _bus, _sender, _path, _interface, name) -> GLib.Variant:
        return {"RegisteredStatusNotifierItems":
                GLib.Variant("as", [item.service for item in self._items]),
                "IsStatusNotifierHostRegistered": GLib.Variant("b", True),
                "ProtocolVersion": GLib.Variant("i", 0)}[name]

    def _add(self, service: str, path: str) -> None:
        say("item", service)
        self._items.append(Item(self._bus, service, path, self._bar))

    def _remove(self, service: str) -> None:
        for item in [item for item in self._items if item.service == service]:
            self._items.remove(item)
            item.widget.destroy()
            say("gone", service)


if __name__ == "__main__":
    host = Host()
    Gtk.main()
