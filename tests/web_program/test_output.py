"""What the program prints, to readers that do not read."""

import os
import unittest

from house import ROOM, House, curl

SWITCH = "/index.html?A~2~LivingRoomReadingLamp~turnon~LivingRoom"


class UnreadHouse(House):
  """Its standard output and error are a pipe that is full from the start."""

  def __init__(self):
    self.reader, writer = os.pipe()
    os.write(writer, b"." * 65536)
    super().__init__(sink=os.fdopen(writer, "wb"), options=["--trace-serial"])

  def text(self):
    return "Found and Initialized"

  def read_until(self, *texts):
    read = b""
    while not all(text in read for text in texts):
      read += os.read(self.reader, 4096)


class OutputTest(unittest.TestCase):

  def test_a_reader_that_stops_or_goes_neither_holds_up_nor_ends_the_house(self):
    house = UnreadHouse()
    self.addCleanup(house.close)
    self.assertEqual(curl(house, ROOM + "Kitchen").room, "Kitchen")
    house.read_until(b"There is no display", b" > 8B\n", b"Found and Initialized")
    self.assertEqual(curl(house, SWITCH).status, 200)
    house.read_until(b"On the power line: A2 On")
    os.close(house.reader)
    self.assertEqual(curl(house, SWITCH.replace("turnon", "turnoff")).status, 200)
    self.assertIsNone(house.process.poll(), "the closed pipe ended the program")
