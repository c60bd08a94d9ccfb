"""What the service tells the manager that started it."""

import os
import socket
import subprocess
import threading
import time
import unittest

from house import House, wait_until
from store import DELAY_KEY, write_values

ENGINE = os.environ["WARDENGINE_PATH"]


class Manager:
  """Listens where a service manager would, and looks at once whether what it hears is true."""

  def __init__(self, folder, answers):
    self.address = os.path.join(folder, f"notify-{id(self)}")
    self.socket = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
    self.socket.bind(self.address)
    self.heard = []  # what, when, whether the web server answered then
    threading.Thread(target=self._listen, args=(answers,), daemon=True).start()

  def _listen(self, answers):
    while True:
      text = self.socket.recv(4096).decode()
      self.heard.append((text, time.monotonic(), text == "READY=1" and answers()))

  def words(self):
    """In their order, without the status lines."""
    return [text for text, *_ in self.heard if not text.startswith("STATUS=")]


class ManagedHouse(House):

  def furnish(self):
    write_values(self.folder, "machine", DELAY_KEY, {"Homewardendelay": "delayed"})
    self.manager = Manager(self.home.name, self.answers)
    self.began = time.monotonic()

  def environment(self):
    return {**super().environment(), "NOTIFY_SOCKET": self.manager.address,
            "WATCHDOG_USEC": "6000000"}


class NotifyTest(unittest.TestCase):

  def test_is_ready_when_the_pages_are_and_no_failure_when_it_steps_aside(self):
    house = ManagedHouse(program=ENGINE)
    self.addCleanup(house.close)
    manager = house.manager
    when, answered = next(said[1:] for said in manager.heard if said[0] == "READY=1")
    self.assertTrue(answered, "ready before the pages were")
    self.assertGreaterEqual(when - house.began, 20, "ready before the delay was over")
    heard = [text for text, *_ in manager.heard]
    self.assertIn("STATUS=Time Delay 7", heard[:heard.index("READY=1")])
    self.assertGreater(manager.words()[:-1].count("WATCHDOG=1"), 5, "taken for stuck")

    house.manager = beside = Manager(house.home.name, house.answers)
    with subprocess.Popen([ENGINE, "--demo"], env=house.environment(), stderr=subprocess.DEVNULL,
                          stdout=subprocess.DEVNULL) as second:
      self.assertEqual(second.wait(60), 0)
    wait_until(lambda: beside.words()[-2:] == ["READY=1", "STOPPING=1"],
               "what keeps it from being started again and again")

    house.process.terminate()
    self.assertEqual(house.process.wait(60), 0)
    wait_until(lambda: "STOPPING=1" in manager.words(), "the word that it ends")
    self.assertEqual(manager.words().count("READY=1"), 1)
