"""The icon on desktops whose panel takes icons over the session bus, and comes after the program."""

import os
import subprocess
import sys
import time
import unittest

import dbus
import dbus.bus

from desktop import PROGRAM, Desktop, wait_for

WATCHER = "org.kde.StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
MENU = "com.canonical.dbusmenu"
PANEL = os.path.join(os.path.dirname(__file__), "notifier_panel.py")


class NotifierTest(Desktop):

  def setUp(self):
    super().setUp()
    daemon = self.start("dbus-daemon", "--session", "--nofork", "--print-address",
                        stdout=subprocess.PIPE)
    address = daemon.stdout.readline().decode().strip()
    self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
    self.bus = dbus.bus.BusConnection(address)
    self.addCleanup(self.bus.close)

  def icons(self):
    panel = self.bus.get_object(WATCHER, "/StatusNotifierWatcher", introspect=False)
    return panel.Get(WATCHER, "RegisteredStatusNotifierItems",
                     dbus_interface=dbus.PROPERTIES_IFACE)

  def open_panel(self):
    """Returns its process and the icon that the program puts into it."""
    panel = self.start(sys.executable, "-B", PANEL)
    wait_for("the panel", lambda: self.bus.name_has_owner(WATCHER))
    name = wait_for("the icon", self.icons)[-1]
    return panel, self.bus.get_object(name, "/StatusNotifierItem", introspect=False)

  def test_the_icon_comes_when_the_panel_does_and_brings_the_window_back(self):
    program = self.open_program()
    self.tell("windowminimize")
    wait_for("an icon of the window manager", lambda: self.state() == "Iconic")
    panel, icon = self.open_panel()
    time.sleep(1)
    self.assertEqual(self.state(), "Iconic", "whoever minimised it looks for it where it is")
    icon.Activate(0, 0, dbus_interface=ITEM)
    wait_for("the window", self.is_painted)

    tip = icon.Get(ITEM, "ToolTip", dbus_interface=dbus.PROPERTIES_IFACE)
    self.assertRegex(tip[2], r"^Homewarden Version \d")
    path = icon.Get(ITEM, "Menu", dbus_interface=dbus.PROPERTIES_IFACE)
    menu = self.bus.get_object(icon.bus_name, path, introspect=False)
    entries = menu.GetLayout(0, -1, dbus.Array([], signature="s"), dbus_interface=MENU)[1][2]
    self.assertEqual([str(entry[1].get("label", "-")).replace("_", "") for entry in entries],
                     ["Listen for a command", "-", "About Homewarden", "-", "Exit"])

    self.tell("windowminimize")
    self.check_hidden()
    icon.Activate(0, 0, dbus_interface=ITEM)
    wait_for("the window", self.is_painted)
    self.end(panel)
    wait_for("no panel", lambda: not self.bus.name_has_owner(WATCHER))
    self.tell("windowminimize")
    wait_for("an icon of the window manager", lambda: self.state() == "Iconic")
    panel, icon = self.open_panel()
    icon.Activate(0, 0, dbus_interface=ITEM)
    wait_for("the window", self.is_painted)
    self.tell("windowminimize")
    self.check_hidden()

    self.end(panel)  # the next session: the program is there before the panel
    self.end(program)
    program = self.start(PROGRAM, "--demo")
    wait_for("an icon of the window manager", lambda: self.state() == "Iconic")
    panel, icon = self.open_panel()
    self.check_hidden()
    menu = self.bus.get_object(icon.bus_name, path, introspect=False)
    menu.Event(entries[-1][0], "clicked", dbus.String("", variant_level=1), dbus.UInt32(0),
               dbus_interface=MENU)
    self.assertEqual(program.wait(timeout=20), 0)


if __name__ == "__main__":
  unittest.main()
