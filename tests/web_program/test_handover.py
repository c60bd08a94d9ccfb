"""Window and service in turn while the house is in use: nothing is lost, nothing happens twice."""

import collections
import contextlib
import itertools
import sqlite3
import threading
import time
import unittest

from house import ROOM, ask, wait_until
from two_programs import SERVICE, WINDOW, Machine

HAND_OVERS = 20
FACTOR = 12  # a minute in five seconds

WALL = [f"A{unit}" for unit in range(1, 11)]
MACROS = [("A1", "B1"), ("A5", "B5")]
WEB = [f"I{unit}" for unit in range(1, 9)]
TIMED = [f"{house}{unit}" for house in "CDEF" for unit in range(1, 17)]


def device_names():
  names = {address: f"Wall {address}" for address in WALL}
  names |= {address: f"Macro {address}" for _, address in MACROS}
  names |= {address: f"Web {address}" for address in WEB}
  return names | {address: f"House{address[0]} {address}" for address in TIMED}


class HandOverTest(unittest.TestCase):

  def set_up(self, service_mode):
    self.service_mode = service_mode
    self.machine = Machine(FACTOR, device_names(), MACROS, service_mode)
    self.addCleanup(self.machine.close)
    self.done = threading.Event()
    self.pressed = {"wall": [], "web": []}
    self.faults = []
    self.both_open = 0
    self.looks = 0

  def in_background(self, work):
    def run():
      try:
        work()
      except Exception as fault:
        self.faults.append(f"{work.__name__}: {fault!r}")
    thread = threading.Thread(target=run)
    thread.start()
    self.addCleanup(thread.join)
    self.addCleanup(self.done.set)
    return thread

  def press_walls(self):
    """The interface keeps one press for whoever comes; the next comes when that is recorded."""
    for turn in itertools.count():
      for address in WALL:
        if self.done.wait(0.1):
          return
        on = turn % 2 == 0
        self.machine.type(f"remote {address} {'on' if on else 'off'}")
        wait_until(lambda: self.machine.recorded(address) == str(on), f"{address} {on}, recorded")
        self.pressed["wall"].append((address, "On" if on else "Off"))

  def press_in_browser(self):
    """Until it is answered: what is not may have been done or not."""
    for turn in itertools.count():
      for address in WEB:
        way = "On" if turn % 2 == 0 else "Off"
        target = f"/index.html?I~{address[1:]}~Web{address}~turn{way.lower()}~Web"
        wait_until(lambda: self.was_done(target), f"{address} {way}, answered")
        self.pressed["web"].append((address, way))
        if self.done.wait(0.05):
          return

  def was_done(self, target):
    """A window that has not found its interface yet says so on the page."""
    with contextlib.suppress(ConnectionError, TimeoutError):
      answer = ask(self.machine, target)
      return answer is not None and answer.status == 200 and b"Try again" not in answer.body
    return False

  def watch_port(self):
    while not self.done.wait(0.003):
      if self.looks % 20 == 0:
        pids = self.machine.pids()
      self.both_open += sum(map(self.machine.has_port, pids)) > 1
      self.looks += 1

  def hand_over(self, old, program):
    """An ordinary close of the window. In service mode it starts and stops the service; else that
    steps aside by itself."""
    if program == SERVICE:
      old.terminate()
      self.assertEqual(old.wait(60), 0, old.text())
      if self.service_mode:
        return self.machine.wait_for_service()
    new = self.machine.start(program)
    self.assertEqual(old.wait(60), 0, old.text())
    self.machine.wait_until_ready(new)
    return new

  def test_nothing_is_lost_or_doubled_in_twenty_hand_overs(self):
    self.set_up(service_mode=False)
    self.check_hand_overs(HAND_OVERS)

  def test_nor_when_the_window_starts_and_stops_the_service(self):
    self.set_up(service_mode=True)
    self.check_hand_overs(HAND_OVERS)

  def check_hand_overs(self, number_of_hand_overs):
    first = self.machine.minute() + 2
    self.machine.write_events(zip(TIMED, itertools.count(first)))
    program = self.machine.start(WINDOW)
    self.machine.wait_until_ready(program)
    background = [self.in_background(work)
                  for work in (self.press_walls, self.press_in_browser, self.watch_port)]
    for number in range(number_of_hand_overs):
      # So that a minute often begins while nobody has the house.
      time.sleep((50 + number * 7 % 10 - self.machine.seconds()) % 60 / FACTOR)
      program = self.hand_over(program, WINDOW if number % 2 else SERVICE)
    self.done.set()
    for thread in background:
      thread.join()
    last = self.machine.minute()
    timed = TIMED[:last - first + 1]
    wait_until(lambda: (timed[-1], "On") in self.machine.switched("CDEF"), "the last event")
    self.assertEqual(self.faults, [])

    print(f"{len(timed)} events, {len(self.pressed['wall'])} wall presses, "
          f"{len(self.pressed['web'])} web requests, {self.looks} looks at the port")
    self.assertEqual(self.both_open, 0, "the port was open in both")
    times = collections.Counter(address for address, _ in self.machine.switched("CDEF"))
    self.assertEqual({address: times[address] for address in timed}, dict.fromkeys(timed, 1))
    self.assertLessEqual(max(times.values()), 1)
    self.check_macros()
    self.check_web_requests()
    self.check_stores(program)

  def check_macros(self):
    targets = dict(MACROS)
    wanted = [(targets[address], way) for address, way in self.pressed["wall"] if address in targets]
    with contextlib.suppress(AssertionError):
      wait_until(lambda: len(self.machine.switched("B")) >= len(wanted), "the macros", 5)
    self.assertEqual(self.machine.switched("B"), wanted, "what the macros did")

  def check_web_requests(self):
    """What was not answered may have come twice."""
    for address in WEB:
      sent = [way for one, way in self.machine.switched("I") if one == address]
      answered = [way for one, way in self.pressed["web"] if one == address]
      changes = [way for way, _ in itertools.groupby(sent)]
      self.assertEqual(changes[:len(answered)], answered, address)

  def check_stores(self, program):
    """The disk, and what window and service each show."""
    lamps = self.machine.lamps()
    on_disk = lambda: {one for one in self.machine.devices if self.machine.recorded(one) == "True"}
    with contextlib.suppress(AssertionError):
      wait_until(lambda: on_disk() == lamps, "the states on the disk", 5)
    self.assertEqual(on_disk(), lamps)
    database = sqlite3.connect(self.machine.path / "machine" / "machine.db")
    with contextlib.closing(database):
      unsent = database.execute("SELECT name FROM value WHERE key LIKE '%NotSent'").fetchall()
    self.assertEqual(unsent, [])
    for following in (SERVICE, None):
      for room in ("Wall", "Macro", "Web"):
        page = ask(self.machine, ROOM + room).body.decode()
        shown = {address for address, name in self.machine.devices.items()
                 if name.startswith(room) and f"{name.replace(' ', '')}~turnoff" in page}
        self.assertEqual(shown, {one for one in lamps if self.machine.devices[one].startswith(room)})
      if following:
        program = self.hand_over(program, following)
