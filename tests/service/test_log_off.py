"""The window when its desktop goes: with service mode on, the service takes the house over."""

import os
import pathlib
import signal
import subprocess
import unittest
import urllib.request

from desktop import PROGRAM, Desktop, wait_for
from house import free_port
from store import MACHINE_KEY, USER_KEY, write_values


class LogOffTest(Desktop):
  title = "^Homewarden$"

  def setUp(self):
    super().setUp()
    self.folder = pathlib.Path(self.home)
    self.port = free_port()
    write_values(self.folder, "machine", MACHINE_KEY, {"webport": self.port, "port": 1})
    write_values(self.folder, "user", USER_KEY, {"service": 1, "run1": 1})
    (self.folder / "user/service.installed").touch()
    (self.folder / "machine/ports").mkdir()
    self.environment["HOMEWARDEN_MACHINE_DIR"] = str(self.folder / "machine")
    self.environment["HOMEWARDEN_USER_DIR"] = str(self.folder / "user")
    line = self.start(os.environ["CM11_EMULATOR_PATH"], "--fast", "--link",
                      self.folder / "machine/ports/com1", stdin=subprocess.PIPE,
                      stdout=subprocess.PIPE)
    line.stdout.readline()
    self.addCleanup(self.end_service)

  def end_service(self):
    number = self.supervisor()
    if number:
      os.kill(number, signal.SIGTERM)
      wait_for("the supervisor's end", lambda: not self.supervisor(), 60)

  def supervisor(self):
    """Its number, which it takes out of the file when it ends."""
    file = self.folder / "machine/wardengine.pid"
    words = file.read_text().split() if file.exists() else []
    return int(words[0]) if words else None

  def answers(self):
    try:
      with urllib.request.urlopen(f"http://127.0.0.1:{self.port}/", timeout=10) as page:
        return page.status == 200
    except OSError:
      return False

  def test_the_service_has_the_house_when_the_window_ends_in_whatever_way(self):
    for signal_number in (signal.SIGHUP, signal.SIGTERM, None):
      with self.subTest(signal_number):
        window = self.start(PROGRAM, "--folder", self.folder / "house")
        wait_for("the window", self.is_painted, 60)
        wait_for("its pages", self.answers, 60)
        self.assertIsNone(self.supervisor(), "both have the house")
        if signal_number:
          window.send_signal(signal_number)
        else:
          self.display.kill()  # as at the end of the session
        code = window.wait(60)
        if signal_number:
          self.assertEqual(code, 0)
        wait_for("the service's pages", lambda: self.supervisor() and self.answers(), 60)
