#!/usr/bin/env python3
"""A desktop portal that knows one setting, the preference for dark windows: 1 is dark, 2 is light, 0 is none.

usage: portal.py PREFERENCE FILE-THAT-SHOWS-IT-IS-READY

Each line of the standard input changes the preference; its end is the portal's.
"""
import sys
from pathlib import Path

from gi.repository import Gio, GLib

SETTING = ("org.freedesktop.appearance", "color-scheme")
PATH = "/org/freedesktop/portal/desktop"
INTERFACE = "org.freedesktop.portal.Settings"
DESCRIPTION = f"""<node><interface name="{INTERFACE}">
  <method name="Read"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method>
  <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
</interface></node>"""


class Portal:
    def __init__(self, preference):
        self.preference = preference
        self.loop = GLib.MainLoop()
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        interface = Gio.DBusNodeInfo.new_for_xml(DESCRIPTION).interfaces[0]
        self.bus.register_object(PATH, interface, self.answer, None, None)

    def value(self):
        return GLib.Variant("u", self.preference)

    def answer(self, _bus, _sender, _path, _interface, _method, arguments, invocation):
        if arguments.unpack() == SETTING:
            invocation.return_value(GLib.Variant("(v)", (GLib.Variant("v", self.value()),)))
        else:
            invocation.return_dbus_error("org.freedesktop.portal.Error.NotFound", "there is no such setting")

    def read_line(self, channel, _condition):
        line = channel.readline()
        if not line:
            self.loop.quit()
            return False
        self.preference = int(line)
        self.bus.emit_signal(None, PATH, INTERFACE, "SettingChanged", GLib.Variant("(ssv)", (*SETTING, self.value())))
        return True

    def run(self, ready):
        GLib.io_add_watch(sys.stdin, GLib.PRIORITY_DEFAULT, GLib.IO_IN | GLib.IO_HUP, self.read_line)
        Gio.bus_own_name_on_connection(self.bus, "org.freedesktop.portal.Desktop", Gio.BusNameOwnerFlags.NONE,
                                       lambda *_: ready.touch(), lambda *_: sys.exit("the portal's name is taken"))
        self.loop.run()


if __name__ == "__main__":
    Portal(int(sys.argv[1])).run(Path(sys.argv[2]))
