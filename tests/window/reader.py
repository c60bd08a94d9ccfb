"""The window as a screen reader finds it: over the accessibility bus, from outside."""

import os
import shutil
import subprocess
import tempfile
import unittest

from desktop import Desktop, wait_for


def open_bus():
  """For all programs of this process: the client library stays on the first bus that it finds."""
  global pyatspi, GLib
  runtime = tempfile.mkdtemp()
  unittest.addModuleCleanup(shutil.rmtree, runtime, ignore_errors=True)
  daemon = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address"],
                            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                            env={"PATH": os.environ["PATH"], "HOME": runtime, "LANG": "C.UTF-8",
                                 "XDG_RUNTIME_DIR": runtime})
  unittest.addModuleCleanup(daemon.stdout.close)
  unittest.addModuleCleanup(daemon.wait)
  unittest.addModuleCleanup(daemon.terminate)
  os.environ["DBUS_SESSION_BUS_ADDRESS"] = daemon.stdout.readline().decode().strip()
  for name in ("DISPLAY", "AT_SPI_BUS_ADDRESS"):
    os.environ.pop(name, None)
  import pyatspi
  from gi.repository import GLib


class ReaderDesktop(Desktop):

  def setUp(self):
    super().setUp()
    self.environment["DBUS_SESSION_BUS_ADDRESS"] = os.environ["DBUS_SESSION_BUS_ADDRESS"]
    self.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"

  def watch(self, program):
    """Takes the window of this process from now on; it has to be there soon."""
    self.window_of = lambda: self.find_window(program.pid)
    wait_for("the window on the bus", self.window_of)

  @staticmethod
  def take_news():
    """What the bus has brought: until then the library tells what it knew before."""
    while GLib.MainContext.default().iteration(False):
      pass

  def find_window(self, process):
    self.take_news()
    for application in pyatspi.Registry.getDesktop(0):
      if application and application.get_process_id() == process:
        for window in application:
          if window and window.getRole() == pyatspi.ROLE_FRAME:
            return window
    return None

  def shown(self, start=None):
    """All that a reader reaches from the window or from an object, without what is not shown."""
    for child in start or self.window_of():
      if child and child.getState().contains(pyatspi.STATE_SHOWING):
        yield child
        if child.getRole() not in (pyatspi.ROLE_TREE, pyatspi.ROLE_LIST):
          yield from self.shown(child)

  def find(self, role, name):
    try:
      return next((one for one in self.shown() if one.getRoleName() == role and one.name == name),
                  None)
    except GLib.Error:  # it went while it was looked at
      return None

  def await_one(self, role, name):
    return wait_for(f"{role} {name!r}", lambda: self.find(role, name))

  def await_named(self, name):
    return wait_for(name, lambda: next((one for one in self.shown() if one.name == name), None))

  def act(self, one, wanted="Press"):
    actions = one.queryAction()
    names = [actions.getName(index) for index in range(actions.nActions)]
    self.assertIn(wanted, names, one.name)
    actions.doAction(names.index(wanted))

  def open_panel(self, name):
    """With the finder, which a reader's keys reach like everybody's."""
    self.say("xdotool", "key", "--window", self.window(), "ctrl+k")
    self.await_one("list", "What was found")
    self.say("xdotool", "type", name)
    wait_for("what was typed", lambda: self.find("text", "Find anything") is None or any(
        row.name.startswith(name) for row in self.find("list", "What was found")))
    self.say("xdotool", "key", "Return")

  def hear(self, *events):
    """Collects what is announced of these kinds as (kind, name, detail)."""
    heard = []
    def note(event):
      heard.append((str(event.type), event.source.name if event.source else "", event.detail1))
    pyatspi.Registry.registerEventListener(note, *events)
    self.addCleanup(pyatspi.Registry.deregisterEventListener, note, *events)
    return heard

  def wait_to_hear(self, heard, *wanted):
    def look():
      self.take_news()
      return wanted in heard
    wait_for(f"{wanted}", look)
