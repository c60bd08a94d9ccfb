"""The figures of bench/service.sh."""

import contextlib
import math
import os
import pathlib
import statistics
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "tests/web_program"))
from house import ROOM, ask, wait_until
from two_programs import SERVICE, WINDOW, Machine

DEVICES, EVENTS = 50, 100
ADDRESSES = [f"{'ABCDEF'[number // 10]}{number % 10 + 1}" for number in range(DEVICES)]


@contextlib.contextmanager
def house(factor=1):
  names = {address: f"Room{address[0]} Lamp{address}" for address in ADDRESSES}
  machine = Machine(factor, names, [("A1", "B1"), ("A2", "B2")])
  try:
    first = machine.minute() + 1
    machine.write_events((ADDRESSES[number % DEVICES], first + number * 60 // EVENTS)
                         for number in range(EVENTS))
    yield machine
  finally:
    machine.close()


def tell(what, figure, limit):
  load = os.getloadavg()[0]
  print(f"=> {what}: {figure} (at most {limit}); load {load:.1f}", flush=True)


def proportional_set(process):
  """Megabytes, of what it shares with other processes its part."""
  lines = pathlib.Path(f"/proc/{process.pid}/smaps_rollup").read_text().splitlines()
  return next(int(line.split()[1]) for line in lines if line.startswith("Pss:")) / 1024


def threads(process, file):
  return [one.read_text() for one in pathlib.Path(f"/proc/{process.pid}/task").glob(f"*/{file}")]


def voluntary_switches(process):
  return sum(int(line.split()[1]) for status in threads(process, "status")
             for line in status.splitlines() if line.startswith("voluntary"))


def processor_seconds(process):
  """As /proc/PID/stat has it, utime and stime, but in nanoseconds instead of hundredths."""
  return sum(int(one.split()[0]) for one in threads(process, "schedstat")) / 1e9


def memory():
  with house(60) as machine:
    service = machine.start(SERVICE)
    machine.wait_until_ready(service)
    print(f"memory at the start: {proportional_set(service):.1f} MB")
    begin, turn = machine.seconds(), 0
    while machine.seconds() < begin + 3600:
      turn += 1
      way = "on" if turn % 2 else "off"
      unit = turn // 2 % 10 + 1
      machine.type(f"remote A{unit} {way}")
      assert ask(machine, f"/index.html?C~{unit}~RoomCLampC{unit}~turn{way}~RoomC").status == 200
      assert ask(machine, ROOM + "RoomD").status == 200
      time.sleep(0.3)
    sent = len(machine.switched("ABCDEF"))
    print(f"an hour with {turn} wall presses, {2 * turn} web requests, {sent} commands sent")
    tell("memory of the service after it (PSS)", f"{proportional_set(service):.1f} MB", "25")


def idleness():
  with house() as machine:
    machine.write("evelst.hwd", [])
    service = machine.start(SERVICE)
    machine.wait_until_ready(service)
    time.sleep(5)
    begin = time.monotonic()
    before = processor_seconds(service), voluntary_switches(service)
    time.sleep(60)
    length = time.monotonic() - begin
    used = processor_seconds(service) - before[0]
    woken = voluntary_switches(service) - before[1]
    tell("processor time with the interface connected", f"{100 * used / length:.3f} % of a core",
         "0.1")
    tell("wake-ups of all threads", f"{woken / length:.2f} a second", "5")


def start_to_answer(machine):
  begin = time.monotonic()
  service = machine.start(SERVICE)
  answer = None
  while answer is None:
    with contextlib.suppress(ConnectionError):
      answer = ask(machine, "/")
    time.sleep(0.001)
  length = time.monotonic() - begin
  assert answer.status == 200
  service.terminate()
  service.wait(60)
  return 1000 * length


def starts(number):
  with house() as machine:
    start_to_answer(machine)
    lengths = [start_to_answer(machine) for _ in range(number)]
    tell(f"start to the first web answer, median of {number}",
         f"{statistics.median(lengths):.0f} ms, worst {max(lengths):.0f}", "150")


def wait_for_line(process, line):
  """When it was printed."""
  while line not in process.text():
    time.sleep(0.001)
  return time.time()


def hand_overs(number):
  """Without control: from the line with which one takes nothing more to the one with which the
  other has the interface. Documented: a window that finds the service's process waits for five
  seconds, by the wall clock's whole ones, and half a second after it shows looks for the
  interface."""
  lengths = {WINDOW: [], SERVICE: []}
  with house() as machine:
    machine.write("evelst.hwd", [])  # one that is on the line is finished first
    old = machine.start(WINDOW)
    machine.wait_until_ready(old)
    for _ in range(2 * number):
      to = SERVICE if len(lengths[SERVICE]) == len(lengths[WINDOW]) else WINDOW
      time.sleep(2)
      if to == SERVICE:
        old.terminate()
        left = wait_for_line(old, "Closing communications")
        old.wait(60)
        new = machine.start(to)
        ready = wait_for_line(new, "STATUS: Ready")
        waits = 0
      else:
        new = machine.start(to)
        left = wait_for_line(old, "Closing communications")
        ready = wait_for_line(new, "STATUS: Ready")
        waits = math.floor(ready - 0.5) - left + 0.5
      machine.wait_until_ready(new)
      lengths[to].append(ready - left - waits)
      print(f"to the {'service' if to == SERVICE else 'window'}: {ready - left:.2f} s, of which"
            f" {waits:.2f} s documented waits")
      old = new
  for program, name in ((SERVICE, "window to service"), (WINDOW, "service to window")):
    tell(f"nobody has the house, {name}, without documented waits",
         f"worst of {number} {1000 * max(lengths[program]):.0f} ms", "1000")


def main():
  number_of_starts, number_of_hand_overs = (*map(int, sys.argv[1:]), *(20, 5)[len(sys.argv) - 1:])
  print(f"{os.cpu_count()} cores, load {os.getloadavg()[0]:.1f}")
  starts(number_of_starts)
  hand_overs(number_of_hand_overs)
  memory()
  idleness()


main()
