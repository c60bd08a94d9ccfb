"""Everything at once: addresses that flood, connections that idle, people who press, somebody who
edits the lists, a program that locks the settings, an event that comes due, and a power cut."""

import contextlib
import random
import re
import resource
import socket
import sqlite3
import threading
import time
import unittest

from house import ROOM, Client, House, ask, wait_until

DESCRIPTORS = 256
FLOODING = [f"127.0.0.{last}" for last in range(2, 10)]
AT_ONCE = 256      # connections of each of them
IDLE = 2000
UNDER_WAY = 10     # seconds
SETTLED = 15       # seconds that all goes on behind the due minute
ONE_COMMAND = 6    # seconds on the line, of a lamp that is dimmed, on a machine that is busy
DEVICES = [f"{house}{unit}" for house in "KLMNOP" for unit in range(1, 17)]


class Stress:
  """Runs functions over and over, each in a thread of its own, until it is left."""

  def __init__(self):
    self.over = threading.Event()
    self.threads = []
    self.faults = []

  def go_on(self, function, *arguments, every=0.0):
    def run():
      while not self.over.is_set():
        try:
          function(*arguments)
        except ConnectionError:
          pass  # the program was killed, or had no place
        except Exception as fault:  # pylint: disable=broad-except
          self.faults.append(f"{function.__name__}: {fault!r}")
          return
        self.over.wait(every)
    self.threads.append(threading.Thread(target=run))
    self.threads[-1].start()

  def __enter__(self):
    return self

  def __exit__(self, *_):
    self.over.set()
    for thread in self.threads:
      thread.join()


def switch(device, state, room="Nowhere"):
  return f"/index.html?{device[0]}~{device[1:]}~{room}Thing{device}~turn{state}~{room}"


def flood(house, source, dice):
  """Half of what it asks switches; it leaves without reading what it gets."""
  with contextlib.ExitStack() as all_open:
    for _ in range(AT_ONCE):
      target = dice.choice([switch(dice.choice(DEVICES), dice.choice(["on", "off"])),
                            ROOM + "Kitchen", "/wmcindex.html", "/index.html?" + "~" * 500])
      client = all_open.enter_context(Client(house, source))
      client.send(f"GET {target} HTTP/1.1\r\nHost: localhost\r\n\r\n".encode())
    time.sleep(dice.random())


def idle(house, connections):
  while len(connections) < IDLE:
    connections.append(Client(house, "127.0.0.50"))


class StressTest(unittest.TestCase):

  def setUp(self):
    _, most = resource.getrlimit(resource.RLIMIT_NOFILE)
    resource.setrlimit(resource.RLIMIT_NOFILE, (most, most))
    self.house = House(descriptors=DESCRIPTORS)
    self.addCleanup(self.house.close)
    # An event of each kind for the first minute by which all is under way.
    self.due = (int(time.time() + UNDER_WAY) // 60 + 1) * 60
    at = time.strftime("%H:%M", time.localtime(self.due))
    self.events = self.house.folder / "evelst.hwd"
    self.events.write_text(
        f"Garden Fountain~C~2~100~{at}~on~daily~mtwufsr\r\nKitchen Radio~A~9~100~{at}~on~once~"
        f"mtwufsr\r\nKitchen Coffee Maker~A~8~ ~{at}~off~daily~mtwufsr\r\n", newline="")
    self.has_power = True
    self.seen = {}        # when each command was first read in what the program prints
    self.waits = []       # of the pages of somebody who is not in the crowd
    self.asked = self.acknowledged = "off"
    self.added = 0

  def ask_honestly(self, target, source):
    answer = ask(self.house, target, source=source)
    if answer is None and not self.has_power:
      raise ConnectionResetError
    self.assertEqual(answer.status, 200, answer.body)
    return answer

  def watch_the_line(self):
    now = time.time()
    for command in self.house.switched():
      self.seen.setdefault(command, now)

  def look(self):
    start = time.monotonic()
    self.assertEqual(self.ask_honestly(ROOM + "Kitchen", "127.0.0.100").room, "Kitchen")
    self.waits.append(time.monotonic() - start)

  def press(self):
    """One who presses the same lamp in turns, and believes the page that comes."""
    self.asked = "on" if self.acknowledged == "off" else "off"
    self.ask_honestly(f"/index.html?B~4~StudyDeskLamp~turn{self.asked}~Study", "127.0.0.101")
    self.acknowledged = self.asked

  def edit(self):
    """A line more, by a script that adds in place or by an editor that replaces the list."""
    line = b"Study Printer~B~5~ ~03:%02d~off~daily~m\r\n" % (self.added % 60)
    events = self.events
    if self.added % 2 == 0:
      with open(events, "ab") as appended:
        appended.write(line)
    else:
      edited = events.with_suffix(".edited")
      edited.write_bytes(events.read_bytes() + line)
      edited.rename(events)
    self.added += 1

  def lock(self):
    path = self.house.folder / "machine" / "machine.db"
    with contextlib.closing(sqlite3.connect(path, timeout=1)) as database:
      with contextlib.suppress(sqlite3.OperationalError):
        database.execute("BEGIN EXCLUSIVE")
        time.sleep(4)
        database.rollback()

  def test_all_at_once(self):
    house, connections = self.house, []
    with contextlib.ExitStack() as leaving, Stress() as stress:
      leaving.callback(lambda: [connection.socket.close() for connection in connections])
      stress.go_on(idle, house, connections, every=1)
      for number, source in enumerate(FLOODING):
        stress.go_on(flood, house, source, random.Random(number))
      stress.go_on(self.watch_the_line, every=0.1)
      stress.go_on(self.look, every=0.1)
      stress.go_on(self.press, every=0.5)
      stress.go_on(self.edit, every=2)
      stress.go_on(self.lock, every=5)
      time.sleep(max(0, self.due + SETTLED - time.time()))
      self.has_power = False
      house.kill()
    self.report()
    self.assertEqual(stress.faults, [])
    for command in ("C2 On", "A9 On", "A8 Off"):
      late = min((when for seen, when in self.seen.items() if seen.startswith(command)),
                 default=float("inf")) - self.due
      self.assertLess(late, 3 * ONE_COMMAND, f"{command} came late by {late} s")
    self.assertLess(self.waits[len(self.waits) * 99 // 100], 2)

    house.start()
    picture = re.search(rb'src=(\S+)></a><br><b><a [^>]*~StudyDeskLamp~',
                        ask(house, ROOM + "Study").body).group(1).decode()
    self.assertIn(picture, [f"bulb2{state}.gif" for state in (self.acknowledged, self.asked)])
    wait_until(lambda: b"~once~" not in self.events.read_bytes(), "the once-event is removed")
    self.assertEqual(self.events.read_bytes().count(b"Study Printer"), self.added)

  def report(self):
    self.waits.sort()
    print(f"{len(self.waits)} pages, half of them within {self.waits[len(self.waits) // 2]:.3f} s, "
          f"99 of 100 within {self.waits[len(self.waits) * 99 // 100]:.3f} s; "
          f"{len(self.house.switched())} functions on the line, {self.added} lines added")
