"""A desktop's panel that takes icons over the session bus. Ends with its standard input."""

import sys

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

NAME = "org.kde.StatusNotifierWatcher"
FORM = f"""<node><interface name="{NAME}">
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
</interface></node>"""


class Panel(dbus.service.Object):

  def __init__(self, bus):
    super().__init__(dbus.service.BusName(NAME, bus), "/StatusNotifierWatcher")
    self.icons = []

  @dbus.service.method(NAME, in_signature="s", sender_keyword="sender")
  def RegisterStatusNotifierItem(self, icon, sender):
    self.icons.append(sender if icon.startswith("/") else icon)

  @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature="ss", out_signature="v")
  def Get(self, interface, name):
    return {"IsStatusNotifierHostRegistered": True,
            "RegisteredStatusNotifierItems": dbus.Array(self.icons, signature="s")}[name]

  @dbus.service.method(dbus.INTROSPECTABLE_IFACE, out_signature="s")
  def Introspect(self):
    return FORM

  @dbus.service.signal(NAME)
  def StatusNotifierHostRegistered(self):
    pass


dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
panel = Panel(dbus.SessionBus())
panel.StatusNotifierHostRegistered()
loop = GLib.MainLoop()
GLib.io_add_watch(sys.stdin, GLib.IO_HUP, lambda *_: loop.quit())
loop.run()
