"""A house on an emulated interface for pages that are kept true, in time that runs faster."""

import urllib.error
import urllib.request

from house import wait_until
from store import TYPE_KEY, write_values
from two_programs import WINDOW, Machine

FACTOR = 12  # a minute in five seconds
ODD = ['"Lampe" & <b>', "L'été 50% #1"]
ROOMS = {"Living Room": [f"Lamp {n}" for n in range(1, 12)], "Küche": ["Lamp 1", *ODD],
         "Hall": ["Lamp 1", "Fan"]}


class LiveHouse(Machine):
  def __init__(self):
    names = {}
    for code, (room, devices) in zip("ABC", ROOMS.items()):
      for unit, device in enumerate(devices, 1):
        names[f"{code}{unit}"] = (room, device)
    super().__init__(FACTOR, {address: " ".join(name.replace(" ", "") for name in both)
                              for address, both in names.items()}, [("C1", "C2")])
    lines = [f"{room}~{device}~{address[0]}~{address[1:]}"
             for address, (room, device) in names.items()]
    self.write("rmlst.hwd", [f"{room}~~~" for room in ROOMS] + lines)
    write_values(self.path, "user", TYPE_KEY, {
        "".join(both).replace(" ", ""): "bulb" for both in names.values() if "Fan" not in both[1]})
    try:
      self.begin()
    except BaseException as error:
      said = self.process.text()
      self.close()  # else the threads of this test go on for ever
      raise AssertionError("the program said: " + said) from error

  def begin(self):
    self.process = self.start(WINDOW)
    self.wait_until_ready(self.process)
    wait_until(self.answers, "the web server")

  def answers(self):
    try:
      with urllib.request.urlopen(f"http://127.0.0.1:{self.port}/index.html", timeout=30) as page:
        return page.status == 200
    except urllib.error.URLError:
      return False

  def kill(self):
    self.process.kill()
    self.process.wait()
