"""Drives the window under a virtual display and takes its pictures; started by screenshot.sh.

What is pressed is found by its name over the accessibility bus, so that a page may change its
layout without a change here.
usage: screenshot.py stills|animation FOLDER"""

import os
import pathlib
import subprocess
import sys
import time
import unittest

import dbus
import dbus.bus

import reader
from desktop import PROGRAM, wait_for

PORTAL = ("org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
          "org.freedesktop.portal.Settings")
DARK = "ret = dbus.UInt32(1 if args[1] == 'color-scheme' else 0, variant_level=1)"
POINTER = [(0, 0), (0, 17), (4, 13), (7, 19), (10, 18), (7, 12), (12, 12)]
FRAME = 0.12  # seconds between two looks at the window
LAST_FRAME = 1.5
COLOURS = 96  # one palette for all frames, so that only what changes is stored


class Stage(reader.ReaderDesktop):
  """A desktop of its own with one window of the program on it."""
  title = "^Homewarden( - Demo)?$"

  def __init__(self, size):
    super().__init__()
    self.size = size
    self.pointer = (size[0] - 60, size[1] - 60)
    self.while_waiting = lambda: None

  def open(self, *options):
    for name in ("MACHINE", "USER"):
      self.environment[f"HOMEWARDEN_{name}_DIR"] = os.path.join(self.home, name.lower())
    self.program = self.start(PROGRAM, *options)
    self.watch(self.program)
    wait_for("the window", self.is_painted)
    self.tell("windowmove", "0", "0")
    self.tell("windowsize", *map(str, self.size))
    self.say("xdotool", "mousemove", *map(str, self.pointer))
    self.wait(2)

  def wait(self, seconds):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
      self.while_waiting()
      time.sleep(0.02)

  def named(self, start):
    """The one that is shown with this name, else the first whose name begins so."""
    def look():
      all_of_them = [one for one in self.reach(self.window_of()) if one.name.startswith(start)]
      return min(all_of_them, key=lambda one: one.name != start, default=None)
    return wait_for(start, look)

  def reach(self, parent):
    """As shown(), and the rows of trees and lists too."""
    for child in parent:
      if child and child.getState().contains(reader.pyatspi.STATE_SHOWING):
        yield child
        yield from self.reach(child)

  def place(self, start, across=0.5, down=0.5):
    box = self.named(start).queryComponent().getExtents(reader.pyatspi.WINDOW_COORDS)
    return int(box.x + box.width * across), int(box.y + box.height * down)

  def glide(self, to, steps=7):
    """As a hand would: quickly, then slowly."""
    begin = self.pointer
    for step in range(1, steps + 1):
      part = 1 - (1 - step / steps) ** 2
      self.pointer = tuple(round(a + (b - a) * part) for a, b in zip(begin, to))
      self.say("xdotool", "mousemove", *map(str, self.pointer))
      self.wait(0.04)

  def click(self, start, **where):
    self.glide(self.place(start, **where))
    self.say("xdotool", "click", "1")
    self.wait(0.5)

  def set_level(self, name, level):
    """Drags the slider of a card."""
    bar = "Brightness of " + name
    ends = [self.place(bar, across=part) for part in (0.04, 0.96)]
    at = self.named(bar).queryValue()
    part = max(0, at.currentValue) / 100
    x_of = lambda share: round(ends[0][0] + (ends[1][0] - ends[0][0]) * share)
    self.glide((x_of(part), ends[0][1]))
    self.say("xdotool", "mousedown", "1")
    self.glide((x_of(level / 100), ends[0][1]), 10)
    self.say("xdotool", "mouseup", "1")

  def rest(self):
    """The pointer over nothing."""
    self.pointer = (self.size[0] - 8, self.size[1] // 2)
    self.say("xdotool", "mousemove", *map(str, self.pointer))
    self.wait(1)

  def picture(self, path):
    subprocess.run(["import", "-window", self.window(), "+repage", "-strip", "-define",
                    "png:compression-level=9", path], env=self.environment, check=True)

  def light(self, room, *devices):
    """Switches on and waits until the last command is through."""
    self.act(self.named(room + ", "))
    for device in devices:
      self.act(self.await_one("check box", f"{device}, {room}"), "Toggle")
    for device in devices:
      wait_for(device, lambda: self.await_one("check box", f"{device}, {room}").getState().contains(
          reader.pyatspi.STATE_CHECKED), 60)


def on_stage(size, act, dark=False):
  stage = Stage(size)
  try:
    stage.setUp()
    if dark:
      stage.start(sys.executable, "-m", "dbusmock", "--session", *PORTAL)
      bus = dbus.bus.BusConnection(os.environ["DBUS_SESSION_BUS_ADDRESS"])
      wait_for("the portal", lambda: bus.name_has_owner(PORTAL[0]))
      bus.get_object(*PORTAL[:2]).AddMethod(PORTAL[2], "Read", "ss", "v", DARK,
                                            dbus_interface="org.freedesktop.DBus.Mock")
      bus.close()
    act(stage)
  finally:
    stage.doCleanups()


def take_stills(folder):
  for theme in ("light", "dark"):
    path = lambda name: str(folder / f"{name}-{theme}.png")

    def demo(stage):
      stage.open("--demo")
      stage.await_one("label", "Interface connected on port 2")
      stage.light("Kitchen", "Worktop Light")
      stage.click("Home")
      stage.light("Living Room", "Ceiling Light", "Ceiling Fan", "Reading Lamp")
      stage.set_level("Reading Lamp", 40)
      stage.wait(9)
      stage.click("Table Lamp")
      stage.rest()
      stage.picture(path("room"))
      stage.wait(5)
      stage.click("Home")
      stage.rest()
      stage.picture(path("home"))
      stage.click("Events")
      row = next(one.name for one in stage.reach(stage.named("Filter by").parent.parent.parent)
                 if "Bedside Lamp on" in one.name)
      stage.click(row, across=0.3)
      stage.say("xdotool", "key", "Return")
      stage.rest()
      stage.picture(path("events"))

    def first_run(stage):
      stage.open()
      stage.wait(3)
      stage.rest()
      stage.picture(path("first-run"))

    on_stage((1120, 720), demo, theme == "dark")
    on_stage((1120, 720), first_run, theme == "dark")


def take_animation(folder):
  """A press, a drag, an event and what is on then, in 20 seconds."""
  frames = []

  def play(stage):
    stage.open("--demo")
    stage.await_one("label", "Interface connected on port 2")
    stage.wait(4)
    window = stage.window()
    last = [0.0]

    def look():
      now = time.monotonic()
      if now - last[0] < FRAME:
        return
      last[0] = now
      path = folder / f"frame-{len(frames):03}.ppm"
      subprocess.run(["import", "-window", window, "+repage", str(path)], env=stage.environment,
                     check=True)
      if not frames or (stage.pointer, path.read_bytes()) != (frames[-1][2],
                                                              frames[-1][1].read_bytes()):
        frames.append((now, path, stage.pointer))

    begin = time.monotonic()
    stage.while_waiting = look
    stage.wait(0.8)
    stage.click("Living Room, 5 off")
    stage.wait(0.4)
    stage.click("Ceiling Light, ", down=0.4)
    stage.set_level("Reading Lamp", 60)
    stage.wait(3.6)
    stage.click("Events")
    row = next(one.name for one in stage.reach(stage.named("Filter by").parent.parent.parent)
               if "Porch Light on" in one.name)
    stage.click(row, across=0.3)
    stage.say("xdotool", "key", "Return")
    stage.wait(0.4)
    stage.click("Run now")
    stage.wait(2.2)
    stage.say("xdotool", "key", "Escape")  # without which the editor stays
    stage.wait(0.2)
    stage.click("Home")
    stage.named("3 devices are on")
    stage.wait(max(2, begin + 20 - time.monotonic()))

  on_stage((960, 640), play)
  write_animation(folder / "demo.gif", frames)


def write_animation(path, frames):
  """The display does not hand out the pointer, so it is drawn here."""
  command = ["convert"]
  ends = [at for at, _, _ in frames[1:]] + [frames[-1][0] + LAST_FRAME]
  for (at, picture, (x, y)), end in zip(frames, ends):
    arrow = " ".join(f"{x + dx},{y + dy}" for dx, dy in POINTER)
    command += ["(", str(picture), "-set", "delay", str(round((end - at) * 100)), "-fill", "black",
                "-stroke", "white", "-draw", f"polygon {arrow}", ")"]
  subprocess.run([*command, "+dither", "-colors", str(COLOURS), "+map", "-layers", "optimize", "-loop", "0",
                  str(path)], check=True)


if __name__ == "__main__":
  reader.open_bus()
  try:
    {"stills": take_stills, "animation": take_animation}[sys.argv[1]](pathlib.Path(sys.argv[2]))
  finally:
    unittest.doModuleCleanups()
