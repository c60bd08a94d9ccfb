"""The window at rest: memory after all panels have been opened, and what wakes it while nobody does
anything, on a virtual display with the demo house. Started by window.sh.
usage: window.py [IDLE_SECONDS]"""

import collections
import os
import pathlib
import re
import subprocess
import sys
import time
import unittest

import reader
from desktop import PROGRAM

PANELS = ("Events", "Macros", "Web Server", "Profiles", "Kitchen", "Living Room", "Home")


class Figures(reader.ReaderDesktop):
  """Opens the panels by the finder; no screen reader is told of anything, which would take memory
  of its own."""

  def open(self):
    self.environment["NO_AT_BRIDGE"] = "1"
    del self.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"]
    self.program = self.open_program()
    self.tell("windowsize", "1280", "800")
    time.sleep(5)

  def open_panels(self):
    for panel in PANELS:
      self.say("xdotool", "key", "--window", self.window(), "ctrl+k")
      time.sleep(0.5)
      self.say("xdotool", "type", panel)
      time.sleep(0.5)
      self.say("xdotool", "key", "Return")
      time.sleep(1.5)

  def pss(self):
    text = pathlib.Path(f"/proc/{self.program.pid}/smaps_rollup").read_text(encoding="ascii")
    return int(re.search(r"^Pss: +(\d+)", text, re.M).group(1)) / 1024

  def wakes(self):
    """Of each thread: how often it went to sleep so far, by its name."""
    counts = {}
    for status in pathlib.Path(f"/proc/{self.program.pid}/task").glob("*/status"):
      text = status.read_text(encoding="ascii")
      name = re.search(r"Name:\s+(.*)", text).group(1)
      counts[f"{name} {status.parent.name}"] = int(
          re.search(r"^voluntary_ctxt_switches:\s+(\d+)", text, re.M).group(1))
    return counts

  def idle(self, seconds):
    before = self.wakes()
    time.sleep(seconds)
    after = self.wakes()
    for thread, count in after.items():
      rate = (count - before.get(thread, 0)) / seconds
      if rate:
        print(f"  {thread.rsplit(' ', 1)[0]}: {rate:.2f} wake-ups a second")

  def calls(self, seconds):
    """What the thread of the window asks of the system while idle."""
    log = os.path.join(self.home, "calls")
    trace = subprocess.Popen(["strace", "-r", "-s", "60", "-o", log, "-p", str(self.program.pid)],
                             stderr=subprocess.DEVNULL)
    time.sleep(seconds)
    trace.terminate()
    trace.wait()
    kinds = collections.Counter()
    for line in pathlib.Path(log).read_text(encoding="latin-1").splitlines():
      found = re.match(r" *[\d.]+ (\w+\([^,]*)", line)
      if found:
        kinds[found.group(1)] += 1
    for call, count in kinds.most_common(8):
      print(f"  {call}...: {count / seconds:.1f} a second")


def main():
  seconds = int(sys.argv[1]) if len(sys.argv) > 1 else 60
  figures = Figures()
  try:
    figures.setUp()
    figures.open()
    print(f"memory (PSS) at the start: {figures.pss():.1f} MB")
    figures.open_panels()
    print(f"after all panels: {figures.pss():.1f} MB")
    print(f"load {os.getloadavg()[0]:.1f}; idle for {seconds} s:")
    figures.idle(seconds)
    figures.calls(10)
  finally:
    figures.doCleanups()


if __name__ == "__main__":
  reader.open_bus()
  try:
    main()
  finally:
    unittest.doModuleCleanups()
