#!/usr/bin/python3
"""The pages and the interface for programs under way, on a house of 200 devices.
usage: bench/live.py [reaction | requests | streams]...   (after a release build; all by default)

reaction  a browser with a room open, 49 further streams, 100 commands of a program: milliseconds
          from when the new state was recorded until the frame that shows it is about to be painted
requests  requests per second of programs beside those for the room page, by wrk
streams   memory with 0, 50 and 200 streams, and the processor time of 200 idle ones"""

import contextlib
import datetime
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import threading
import time

sys.dont_write_bytecode = True
ROOT = pathlib.Path(__file__).resolve().parents[1]
os.environ.setdefault("HOMEWARDEN_PATH", str(ROOT / "build/release/bin/homewarden"))
sys.path.insert(0, str(ROOT / "tests/web_program"))
from browser import start_browser
from house import House, curl, wait_until
from store import MACHINE_KEY, TYPE_KEY, write_values
from streams import Reader, read_until

ROOMS, DEVICES = 20, 10
TYPES = ["switch", "bulb", "fan", "radio", "bulb2"]
PRESSES = 100
OTHERS = 49
ROUNDS = 3
SECONDS = 4
IDLE = 30
ADDRESSES = [f"127.0.1.{last}" for last in range(1, 11)]
# Each request as if from an address of its own behind a proxy: one address may ask a hundred times
# a second, which is about people and not about speed.
FROM_MANY = """
local count = 0
request = function()
  count = count + 1
  local from = string.format("10.%d.%d.%d", count / 65536 % 256, count / 256 % 256, count % 256)
  return wrk.format(METHOD, nil, {["X-Forwarded-For"] = from, ["Content-Type"] = "application/json"},
                    BODY)
end
"""
# Whoever shows it draws behind it.
WATCH = """
const link = document.querySelector('[role=switch][aria-label="Device 1"]');
window.shown = [];
new MutationObserver((changes) => {
  if (changes.every((one) => one.oldValue === link.getAttribute("aria-checked"))) return;
  const state = link.getAttribute("aria-checked");
  requestAnimationFrame(() => shown.push([state, performance.timeOrigin + performance.now()]));
}).observe(link, { attributeFilter: ["aria-checked"], attributeOldValue: true });
"""


class BenchHouse(House):
  def furnish(self):
    lines, states, types = [], {}, {}
    for number in range(ROOMS * DEVICES):
      room, device = f"Room {number // DEVICES + 1}", f"Device {number % DEVICES}"
      if number % DEVICES == 0:
        lines.append(f"{room}~~~")
      lines.append(f"{room}~{device}~{chr(65 + number // 16)}~{number % 16 + 1}")
      key = (room + device).replace(" ", "")
      states[key], types[key] = str(number % 3 == 0), TYPES[number % len(TYPES)]
    (self.folder / "rmlst.hwd").write_bytes("".join(line + "\r\n" for line in lines).encode())
    write_values(self.folder, "machine", MACHINE_KEY, states)
    write_values(self.folder, "user", TYPE_KEY, types)

  def ask(self, path, *options):
    return curl(self, "/api/v1" + path, *options)

  def memory(self):
    """Kilobytes that it shares with nobody, so that no other program changes them."""
    text = pathlib.Path(f"/proc/{self.process.pid}/smaps_rollup").read_text("utf-8")
    return sum(map(int, re.findall(r"^Private_(?:Clean|Dirty): +(\d+)", text, re.M)))

  def used(self):
    """Nanoseconds that all its threads have had a core."""
    tasks = pathlib.Path(f"/proc/{self.process.pid}/task").glob("*/schedstat")
    return sum(int(task.read_text("ascii").split()[0]) for task in tasks)


def open_streams(house, count):
  readers = [Reader(house, ADDRESSES[n % len(ADDRESSES)]) for n in range(count)]
  read_until(readers, lambda: all(reader.last_id for reader in readers), 30)
  return readers


def load():
  return "load " + " ".join(f"{one:.1f}" for one in os.getloadavg()[:2])


def moment(text):
  return datetime.datetime.fromisoformat(text.replace("Z", "+00:00")).timestamp() * 1000


def percentile(values, part):
  return sorted(values)[min(len(values) - 1, int(len(values) * part / 100))]


def reaction():
  house = BenchHouse()
  with contextlib.closing(house), tempfile.TemporaryDirectory() as profile:
    readers = open_streams(house, OTHERS)
    over = threading.Event()
    draining = threading.Thread(target=read_until, args=(readers, over.is_set, 3600))
    draining.start()
    browser = start_browser(profile)
    try:
      browser.get(f"http://127.0.0.1:{house.port}/index.html?loadroomRoom1")
      wait_until(lambda: browser.execute_script(
          "return !!document.querySelector('[role=switch][aria-label=\"Device 1\"]')"), "the card")
      browser.execute_script(WATCH)
      times, others = [], 0
      for _ in range(PRESSES):
        before = browser.execute_script("return shown.length")
        done = house.ask("/devices/Room1Device1/commands", "-H", "Content-Type: application/json",
                         "-d", '{"command":"toggle","wait":true}')
        assert done.status == 200 and json.loads(done.body)["state"] == "done", done
        recorded = moment(json.loads(house.ask("/devices/Room1Device1").body)["changed"])
        wait_until(lambda seen=before: browser.execute_script("return shown.length") > seen,
                   "the card's change")
        state, seen_at = browser.execute_script("return shown[shown.length - 1]")
        times.append(seen_at - recorded)
        others += state == "true"
    finally:
      browser.quit()
      over.set()
      draining.join()
    events = min(reader.events for reader in readers)
    assert not any(reader.gaps or reader.told for reader in readers) and events >= PRESSES, events
    assert others == PRESSES // 2, others
    print(f"=> recorded to shown in another browser, {PRESSES} commands, {OTHERS} further streams: "
          f"median {percentile(times, 50):.0f}, p99 {percentile(times, 99):.0f}, longest "
          f"{max(times):.0f} ms (p99 at most 100); {load()}")


def wrk(house, path, connections, method="GET", body=""):
  """Requests per second, the 99th percentile in milliseconds, our microseconds per request."""
  with tempfile.NamedTemporaryFile("w", suffix=".lua") as script:
    script.write(f"METHOD, BODY = '{method}', '{body}'\n" + FROM_MANY)
    script.flush()
    before = house.used()
    output = subprocess.run(
        ["wrk", "-t1", f"-c{connections}", f"-d{SECONDS}s", "--latency", "-s", script.name,
         f"http://127.0.0.1:{house.port}{path}"], check=True, stdout=subprocess.PIPE, text=True).stdout
    used = house.used() - before
  if "Non-2xx" in output:
    raise AssertionError(path + ": " + output)
  count = int(re.search(r"(\d+) requests in", output).group(1))
  tail, unit = re.search(r"99% +([\d.]+)(us|ms|s)", output).groups()
  return (float(re.search(r"Requests/sec: +([\d.]+)", output).group(1)),
          float(tail) * {"us": 0.001, "ms": 1, "s": 1000}[unit], used / 1000 / count)


def requests():
  house = BenchHouse(webproxies="127.0.0.1")
  with contextlib.closing(house):
    command = "/api/v1/devices/Room1Device1/commands"
    kinds = [("room page, ten devices", "/index.html?loadroomRoom7"),
             ("GET /devices/{id}", "/api/v1/devices/Room7Device3"),
             ("GET /house, 200 devices", "/api/v1/house"),
             ("POST of a level", command, "POST", '{"command":"level","level":40}')]
    figures = {}
    for connections in (1, 12):
      for _ in range(ROUNDS):
        for name, path, *rest in kinds:
          figures.setdefault((connections, name), []).append(wrk(house, path, connections, *rest))
    page = kinds[0][0]
    for (connections, name), rounds in figures.items():
      ratio = percentile([one[0] / other[0] for one, other in
                          zip(rounds, figures[connections, page])], 50)
      rate, tail, cost = (percentile([one[n] for one in rounds], 50) for n in range(3))
      print(f"=> {name}, {connections} connections: {rate:.0f}/s ({ratio:.2f} of the page's), p99 "
            f"{tail:.2f} ms, {cost:.0f} us of processor time each; medians of {ROUNDS}; {load()}")


def streams():
  for count in (0, 50, 200):
    house = BenchHouse()
    with contextlib.closing(house):
      house.ask("/house")
      readers = open_streams(house, count)
      time.sleep(2)
      memory = house.memory()
      before = house.used()
      read_until(readers, lambda: False, IDLE)
      used = (house.used() - before) / 1e9
      assert not any(reader.over for reader in readers)
      print(f"=> {count} streams: {memory / 1024:.1f} MB of its own; idle for {IDLE} s: {used:.2f} s of "
            f"processor time, {100 * used / IDLE:.1f} % of a core; {load()}", flush=True)
      for reader in readers:
        reader.close()


def main():
  kinds = {"reaction": reaction, "requests": requests, "streams": streams}
  for name in sys.argv[1:] or kinds:
    kinds[name]()


main()
