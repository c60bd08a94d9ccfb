"""The program without a window, as a process, and how it and the window give way to each other."""

import contextlib
import os
import pathlib
import re
import sqlite3
import subprocess
import time
import unittest

from house import CURL, PROGRAM, ROOM, House, curl, wait_until
from store import MACHINE_KEY, read_value

ENGINE = os.environ["WARDENGINE_PATH"]
SWITCH = "/index.html?A~2~LivingRoomReadingLamp~turnon~LivingRoom"


class EngineTest(unittest.TestCase):

  def setUp(self):
    self.house = House(program=ENGINE, options=["--trace-serial"])
    self.addCleanup(self.house.close)

  def closeengine(self):
    return read_value(self.house.folder / "machine" / "machine.db", MACHINE_KEY, "closeengine")

  def start_beside(self, program):
    process = subprocess.Popen([program, "--demo"], env=self.house.environment(),
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    self.addCleanup(process.communicate)
    self.addCleanup(process.kill)
    return process

  def test_runs_what_is_due_answers_browsers_and_finishes_the_command_when_it_is_ended(self):
    due = time.localtime(time.time() + 65)
    self.house.folder.joinpath("evelst.hwd").write_text(
        time.strftime("Garden Porch Light~C~3~100~%H:%M~on~daily~mtwufsr\r\n", due))
    self.assertEqual(curl(self.house, ROOM + "Kitchen").room, "Kitchen")
    wait_until(lambda: "C3 On" in self.house.switched(), "the event", 150)

    url = f"http://127.0.0.1:{self.house.port}{SWITCH}"
    with subprocess.Popen([*CURL, "-o", os.devnull, "-w", "%{http_code}", url],
                          stdout=subprocess.PIPE) as press:
      wait_until(lambda: " > 04 " in self.house.text().split("C3 On")[-1], "the press on the wire")
      self.house.process.terminate()
      wait_until(lambda: "Closing communications" in self.house.text(), "the end")
      self.house.process.terminate()  # as by a supervisor that was asked as well
      self.assertEqual(press.communicate()[0], b"200")
    self.assertEqual(self.house.process.wait(60), 0)
    self.assertIn("A2 On", self.house.switched())

  def test_window_and_engine_never_have_the_house_both(self):
    self.assertEqual(self.closeengine(), "False")
    window = self.start_beside(PROGRAM)  # no manager that would stop the engine
    self.assertEqual(self.house.process.wait(60), 0, "the engine stayed")
    self.assertIn("The window takes the house over", self.house.text())
    self.assertEqual(self.closeengine(), "True")
    wait_until(self.house.answers, "the window's pages, on the port that the engine had")

    late = self.start_beside(ENGINE)
    self.assertIn(b"The window has the house", late.communicate(timeout=60)[0])
    self.assertEqual(late.returncode, 0)
    self.assertIsNone(window.poll())
    self.assertEqual(curl(self.house, ROOM + "Kitchen").room, "Kitchen")

    window.terminate()
    self.assertEqual(window.wait(60), 0)
    wait_until(lambda: self.closeengine() == "False", "the mark that the house is free")

  def test_the_flag_alone_is_enough_to_step_aside(self):
    """Nothing else makes the engine look at the disk."""
    database = self.house.folder / "machine" / "machine.db"
    with contextlib.closing(sqlite3.connect(database, timeout=30)) as connection, connection:
      connection.execute("UPDATE value SET data='True' WHERE key=? AND name='closeengine'", (MACHINE_KEY,))
    self.assertEqual(self.house.process.wait(30), 0)

  def test_needs_no_face(self):
    """Nothing it has loaded, be it linked, needed by another library or found at run time, draws,
    plays, or speaks to a desktop."""
    maps = pathlib.Path(f"/proc/{self.house.process.pid}/maps").read_text()
    loaded = set(re.findall(r"/lib([^/\s]+?)(?:-[\d.]+)?\.so", maps))
    self.assertEqual({name for name in loaded if name.startswith("Qt")},
                     {"Qt6Core", "Qt6SerialPort"})
    faces = r"X11|xcb|wayland|GL|EGL|dbus|asound|pulse|fontconfig|freetype"
    self.assertEqual([name for name in loaded if re.match(faces, name)], [])
