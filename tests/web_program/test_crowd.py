"""Many at once: presses that nobody waits for any more, floods, and the others who want a page.

The program may open 256 files, as in a small container.
"""

import contextlib
import resource
import time
import unittest

from house import ROOM, Client, House, ask

LAMPS = range(1, 8)  # one on the line and six that wait
PHONE, OTHER, OWNER = "127.0.5.1", "127.0.5.2", "127.0.5.3"
FLOOD = [f"127.0.6.{number}" for number in range(1, 9)]


def switch(unit, state="on"):
  return (f"GET /index.html?A~{unit}~Lamp{unit}~turn{state}~LivingRoom HTTP/1.1\r\n"
          "Host: localhost\r\nAccept: text/html\r\n\r\n").encode()


def setUpModule():
  global HOUSE
  _, most = resource.getrlimit(resource.RLIMIT_NOFILE)
  if most < 5000:
    raise unittest.SkipTest(f"the system forbids it: 5000 sockets of clients, {most} are allowed")
  resource.setrlimit(resource.RLIMIT_NOFILE, (most, most))
  HOUSE = House(descriptors=256)
  unittest.addModuleCleanup(HOUSE.close)


class CrowdTest(unittest.TestCase):

  def setUp(self):
    self.before = len(HOUSE.switched())

  def switched(self):
    return HOUSE.switched()[self.before:]

  def expect_pages(self, seconds):
    """What another person sees meanwhile. A loaded machine is slow, but no switch is so fast."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
      asked = time.monotonic()
      self.assertEqual(ask(HOUSE, ROOM + "Study", source=OTHER).room, "Study")
      self.assertLess(time.monotonic() - asked, 1, "a page waited for what others switch")
      time.sleep(0.01)

  def test_presses_of_a_phone_that_leaves(self):
    with contextlib.ExitStack() as phone:
      for unit in LAMPS:
        phone.enter_context(Client(HOUSE, PHONE)).send(switch(unit))
      answer = phone.enter_context(Client(HOUSE, PHONE)).send(switch(8)).read()
      self.assertEqual((answer.status, "retry-after" in answer.headers), (429, True))
      self.assertIn(b">Press again<", answer.body)
      self.expect_pages(0.5)
    self.expect_pages(3)
    self.assertEqual(ask(HOUSE, ROOM + "Kitchen", source=PHONE).room, "Kitchen")
    self.expect_pages(2)
    self.assertIn(self.switched(), (["A1 On"], ["A1 On", "A2 On"]))

  def test_an_owner_among_floods_and_idle_connections(self):
    with contextlib.ExitStack() as clients:
      for number in range(2000):
        clients.enter_context(Client(HOUSE, f"127.0.7.{number % 20 + 1}"))
      # Three of four switch, each its own; many are refused a place at once.
      for number in range(256):
        for source in FLOOD:
          press = switch(number % 16 + 1, "off" if number % 32 < 16 else "on")
          page = f"GET {ROOM}{number} HTTP/1.1\r\nHost: localhost\r\n\r\n".encode()
          with contextlib.suppress(ConnectionError):
            clients.enter_context(Client(HOUSE, source)).send(press if number % 4 else page)
        if number % 32 == 0:
          self.expect_pages(0.1)
      owner = clients.enter_context(Client(HOUSE, OWNER)).send(switch(8))
      self.expect_pages(2)
      self.assertEqual(owner.read().room, "Living Room")
      self.assertIn("A8 On", self.switched()[-2:])
    count = len(self.switched())
    self.expect_pages(4)
    self.assertLessEqual(len(self.switched()), count + 1, "switched for clients that have left")
