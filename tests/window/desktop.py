"""The program on a real desktop: a virtual display with a window manager and a notification area."""

import os
import re
import shutil
import signal
import subprocess
import tempfile
import time
import unittest

PROGRAM = os.environ["HOMEWARDEN_PATH"]


def wait_for(what, test, limit=20):
  end = time.monotonic() + limit
  while time.monotonic() < end:
    result = test()
    if result:
      return result
    time.sleep(0.05)
  raise AssertionError("waited in vain for " + what)


class Desktop(unittest.TestCase):
  title = "Homewarden - Demo"  # of the window, as a regular expression

  def setUp(self):
    self.home = tempfile.mkdtemp()
    self.addCleanup(shutil.rmtree, self.home, ignore_errors=True)
    self.environment = {"PATH": os.environ["PATH"], "HOME": self.home, "LANG": "C.UTF-8",
                        "XDG_RUNTIME_DIR": self.home, "QT_QPA_PLATFORM": "xcb",
                        "HOMEWARDEN_WEB_ADDRESS": "127.0.0.1",
                        # What libraries keep until the end is no fault of a copy that ends itself.
                        "LSAN_OPTIONS": os.environ.get("LSAN_OPTIONS", "")}
    self.display = self.start("Xvfb", "-displayfd", "1", "-noreset", "-nolisten", "tcp", "-screen", "0",
                         "1280x900x24", stdout=subprocess.PIPE)
    number = self.display.stdout.readline().decode().strip()
    if not number:
      self.skipTest("the system forbids it: a virtual display")
    self.environment["DISPLAY"] = ":" + number
    self.start("openbox")
    wait_for("the window manager",
             lambda: "window id" in self.say("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))

  def start(self, *command, stdin=None, stdout=subprocess.DEVNULL):
    process = subprocess.Popen(command, env=self.environment, stdin=stdin, stdout=stdout,
                               stderr=subprocess.DEVNULL)
    self.addCleanup(self.end, process)
    return process

  @staticmethod
  def end(process):
    if process.poll() is None:
      process.send_signal(signal.SIGTERM)
      process.wait(timeout=30)
    for stream in filter(None, (process.stdin, process.stdout)):
      stream.close()

  def say(self, *command):
    return subprocess.run(command, env=self.environment, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, timeout=20, check=False).stdout.decode()

  def open_program(self):
    program = self.start(PROGRAM, "--demo")
    wait_for("the window", self.is_painted)
    time.sleep(2)  # before it has put up its icon it cannot be hidden
    return program

  def window(self):
    """Another one when the program makes it anew; "0" before there is one."""
    return (self.say("xdotool", "search", "--name", self.title).split() or ["0"])[-1]

  def tell(self, command, *arguments):
    self.say("xdotool", command, self.window(), *arguments)

  def state(self):
    """Normal, Iconic, or Withdrawn for one that the window manager does not know any more."""
    found = re.search(r"window state: (\w+)", self.say("xprop", "-id", self.window(), "WM_STATE"))
    return found.group(1) if found else "Withdrawn"

  def is_mapped(self):
    return "IsViewable" in self.say("xwininfo", "-id", self.window())

  def is_painted(self):
    picture = subprocess.run(["xwd", "-silent", "-id", self.window()], env=self.environment,
                             stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False).stdout
    dots = picture[len(picture) // 10:]
    return len(dots) > 100000 and dots.count(0) < len(dots) // 2

  def place(self):
    """Where the window with its frame lies, and the size without."""
    window = self.window()
    text = self.say("xwininfo", "-id", window)
    frame = re.findall(r"\d+", self.say("xprop", "-id", window, "_NET_FRAME_EXTENTS"))
    found = [re.search(name + r": +(-?\d+)", text)
             for name in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")]
    if not frame or not all(found):
      return None
    left, top, width, height = (int(number.group(1)) for number in found)
    return left - int(frame[0]), top - int(frame[2]), width, height

  def icon(self):
    found = re.search(r'\("homewarden" "homewarden"\) +2\dx2\d\+\S+ +\+(\d+)\+(\d+)',
                      self.say("xwininfo", "-root", "-tree"))
    return found and (int(found.group(1)) + 8, int(found.group(2)) + 8)

  def check_hidden(self):
    wait_for("hiding", lambda: self.state() == "Withdrawn")
    time.sleep(1)
    self.assertFalse(self.is_mapped(), "an empty window came back by itself")

  def click_icon(self):
    self.say("xdotool", "mousemove", *map(str, self.icon()), "click", "1")
    wait_for("the window", self.is_painted)

  def active(self):
    return self.say("xdotool", "getactivewindow").strip()

  def active_class(self):
    found = re.search(r'= "(\w+)"', self.say("xprop", "-id", self.active(), "WM_CLASS"))
    return found and found.group(1)
