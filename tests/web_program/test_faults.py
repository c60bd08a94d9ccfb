"""Settings on disks that refuse them: nothing acknowledged is lost, nothing waits, all is told."""

import contextlib
import os
import pathlib
import random
import shutil
import sqlite3
import subprocess
import tempfile
import time
import unittest

from house import ROOM, House, curl, wait_until
from store import MACHINE_KEY, read_value, write_values

LAMP = "LivingRoomReadingLamp"
ON = f"/index.html?A~2~{LAMP}~turnon~LivingRoom"
OFF = ON.replace("turnon", "turnoff")
MOUNT = "unshare --map-root-user --mount mount -t tmpfs tmpfs /mnt".split()
AGAIN = "The settings can be written again; nothing was lost."
LOCK_SECONDS = float(os.environ.get("HOMEWARDEN_LOCK_SECONDS", 4))


class LitHouse(House):
  """The lamp is on from the start."""

  def furnish(self):
    write_values(self.folder, "machine", MACHINE_KEY, {LAMP: "True", "dim" + LAMP: "100"})
    (self.folder / "machine/ports").mkdir()


def is_on(house):
  return f"{LAMP}~turnoff".encode() in curl(house, ROOM + "LivingRoom").body


class FaultTest(unittest.TestCase):

  def house(self, before=""):
    if before and subprocess.run(MOUNT, stderr=subprocess.DEVNULL, check=False).returncode:
      self.skipTest("the system forbids it: disks of a test's own")
    house = LitHouse(before=before)
    self.addCleanup(house.close)
    return house

  def press(self, house, address, is_lit):
    """A press is answered with what it did, and the pages go on."""
    self.assertEqual(curl(house, address).room, "Living Room")
    self.assertEqual(is_on(house), is_lit)

  def stored(self, folder):
    """What a kill at this moment would leave: the file and its log, from whatever disk."""
    with tempfile.TemporaryDirectory() as copy:
      for path in folder.glob("machine.db*"):
        if not path.name.endswith(("-shm", ".turn")):
          shutil.copy(path, copy)
      return read_value(pathlib.Path(copy) / "machine.db", MACHINE_KEY, LAMP)

  def tear_off(self, house):
    """Kills the program: what it had only in memory is gone."""
    house.process.kill()
    house.process.wait()

  def report(self, house, what):
    print(f"longest turn of the loop, {what}: {house.longest_turn()} ms")

  def test_a_read_only_folder_is_read_and_told(self):
    house = self.house("cd $HOME/homewarden-demo/machine; mount --bind . .; mount -t tmpfs tmpfs "
                       "$HOME/homewarden-demo/machine/ports; "
                       "mount -o remount,bind,ro $HOME/homewarden-demo/machine; cd /")
    self.assertTrue(is_on(house), "what could be read was not")
    self.assertIn("cannot be written: the disk is read-only", house.text())
    self.press(house, OFF, False)
    self.assertEqual(self.stored(house.folder / "machine"), "True")
    self.assertEqual([*house.folder.glob("machine/*.broken*")], [])
    self.report(house, "read-only")

  def test_a_full_disk_that_has_room_again(self):
    house = self.house("cd $HOME/homewarden-demo/machine; cp machine.db ..; mount -t tmpfs -o "
                       "size=400k tmpfs .; cd ../machine; cp ../machine.db .; mkdir ports; cd /")
    folder = pathlib.Path(f"/proc/{house.process.pid}/root/{house.folder}/machine")
    with open(folder / "filler", "wb", 0) as filler, contextlib.suppress(OSError):
      while True:
        filler.write(bytes(1024))
    for _ in range(20):  # until what was reserved is used up
      if "no space left" in house.text():
        break
      self.press(house, OFF, False)
    self.assertIn("cannot be written: there is no space left on the disk", house.text())
    self.press(house, ON, True)
    self.press(house, OFF, False)
    (folder / "filler").unlink()
    wait_until(lambda: self.stored(folder) == "False", "the disk had room again")
    wait_until(lambda: AGAIN in house.text(), "what was told goes")
    self.report(house, "full")

  def test_another_programs_lock(self):
    house = self.house()
    path = house.folder / "machine/machine.db"
    with contextlib.closing(sqlite3.connect(path, isolation_level=None)) as other:
      other.execute("BEGIN EXCLUSIVE")
      end = time.monotonic() + LOCK_SECONDS
      self.press(house, OFF, False)  # were it to wait, it would never come
      while time.monotonic() < end:
        self.press(house, ON, True)
      self.press(house, OFF, False)
      self.assertIn("cannot be written: another program has locked the file", house.text())
      other.execute("ROLLBACK")
    wait_until(lambda: AGAIN in house.text(), "the lock was gone")
    self.assertEqual(self.stored(path.parent), "False")
    self.report(house, "locked")

  def test_a_kill_right_after_an_answer(self):
    house = self.house()
    for number in range(4):
      if number:
        house.start()
      self.press(house, OFF if number % 2 == 0 else ON, number % 2 == 1)
      self.tear_off(house)
      self.assertEqual(self.stored(house.folder / "machine"), str(number % 2 == 1))
    house.start()

  def test_damage_is_set_aside_and_told(self):
    house = self.house()
    self.tear_off(house)
    path = house.folder / "user/user.db"
    path.write_bytes(random.Random(1).randbytes(path.stat().st_size))
    house.start()
    self.assertIn(f"{path} were damaged. The file was set aside as {path}.broken-1", house.text())
    self.assertTrue((path.parent / "user.db.broken-1").exists())


if __name__ == "__main__":
  unittest.main()
