#!/usr/bin/env python3
"""A tray of the kind that icons reach over the session bus, as large desktops have it. It shows nothing: it writes down the icons.

usage: notifier_host.py FILE-THAT-GETS-A-LINE-FOR-EACH-ICON [late]

A line is the icon's name on the bus; the first one is empty, when the service is ready. With "late" the service has no tray yet, until
a line comes on the input, whose end is the tray's.
"""
import sys
from pathlib import Path

from gi.repository import Gio, GLib

PATH = "/StatusNotifierWatcher"
NAME = "org.kde.StatusNotifierWatcher"
DESCRIPTION = f"""<node><interface name="{NAME}">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
  <signal name="StatusNotifierHostRegistered"/>
</interface></node>"""
PROPERTIES = {
    "RegisteredStatusNotifierItems": GLib.Variant("as", []),
    "ProtocolVersion": GLib.Variant("i", 0),
}


def run(lines, is_late):
    def write(line):
        with open(lines, "a", encoding="utf-8") as file:
            file.write(f"{line}\n")

    def answer(_bus, sender, _path, _interface, method, _arguments, invocation):
        if method == "RegisterStatusNotifierItem":
            write(sender)
        invocation.return_value(None)

    def read_line(channel, _condition):
        if not channel.readline():
            loop.quit()
            return False
        properties["IsStatusNotifierHostRegistered"] = GLib.Variant("b", True)
        bus.emit_signal(None, PATH, NAME, "StatusNotifierHostRegistered", None)
        return True

    properties = dict(PROPERTIES, IsStatusNotifierHostRegistered=GLib.Variant("b", not is_late))
    loop = GLib.MainLoop()
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    interface = Gio.DBusNodeInfo.new_for_xml(DESCRIPTION).interfaces[0]
    bus.register_object(PATH, interface, answer, lambda _b, _s, _p, _i, name: properties[name], None)
    GLib.io_add_watch(sys.stdin, GLib.PRIORITY_DEFAULT, GLib.IO_IN | GLib.IO_HUP, read_line)
    Gio.bus_own_name_on_connection(bus, NAME, Gio.BusNameOwnerFlags.NONE, lambda *_: write(""), lambda *_: sys.exit("the name is taken"))
    loop.run()


if __name__ == "__main__":
    run(Path(sys.argv[1]), "late" in sys.argv[2:])
