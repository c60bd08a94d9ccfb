"""Asks everything that the description of the interface for programs offers, rightly and wrongly:

    fuzz_api.py SECONDS [SEED]

Fails on an answer that the description does not allow, one that does not come, and on memory or
descriptors that keep growing. Several addresses ask, so that the limit of one hides nothing.
"""

import concurrent.futures
import contextlib
import http.client
import json
import os
import random
import socket
import sys
import time

from api_description import ROOT, Description
from house import House

ADDRESSES = 24
PATIENCE = 40  # seconds; a command that is waited for may take 30
LEAVING = 60  # seconds; a reader that left unread changes behind is cut after 30 and more
ODD_TEXTS = ("", " ", "\0", "é", "\u2028", "A" * 5000, "../..", "%00", "%", "'\"<b>", "\U0001F4A1",
             "{}", "null", "-1", "\ud800")
ODD_VALUES = (None, True, False, 0, -1, 101, 10**30, 1.5, [], {}, [[]], *ODD_TEXTS)


class Fuzzer:
  def __init__(self, house, seed, number):
    self.house = house
    self.random = random.Random(seed * 1000 + number)
    self.source = f"127.0.0.{number + 10}"
    text = self._exchange("GET", "/openapi.json", None, {})[2]
    self.description = Description(text)
    self.operations = self.description.operations()
    self.ids = self._known_ids()
    self.faults = []
    self.asked = 0

  def _known_ids(self):
    get = lambda path, name: [entry["id"] for entry in
                              json.loads(self._exchange("GET", path, None, {})[2])[name]]
    return {"devices": get("/devices", "devices"), "events": get("/events", "events"),
            "commands": []}

  def run(self, end):
    while time.monotonic() < end and not self.faults:
      method, path, operation = self.random.choice(self.operations)
      self.asked += 1
      try:
        self._ask(method, path, operation)
      except (TimeoutError, http.client.HTTPException) as error:
        self.faults.append(f"{method} {path}: {error!r}")
    return self

  def _ask(self, method, path, operation):
    body, headers = self._body(operation)
    filled = self._filled(path) + self._query(operation)
    if self.random.random() < 0.1:
      self._cut(method, filled, body)
      return
    if self.random.random() < 0.05:
      method = self.random.choice(("GET", "PUT", "POST", "DELETE", "PATCH", "TRACE"))
    if path == "/stream":
      self._listen(filled)
      return
    status, got, text = self._exchange(method, filled, body, headers)
    if method.lower() not in self.description.document["paths"][path]:
      if status < 400 or status >= 500:
        self.faults.append(f"{method} {filled:.200}: {status}")
    elif fault := self.description.fault(method, path, status, got, text):
      self.faults.append(f"{fault:.600} (asked {filled!r:.200} with {body!r:.200})")
    elif status == 202:
      self.ids["commands"].append(json.loads(text)["id"])

  def _exchange(self, method, path, body, headers):
    connection = http.client.HTTPConnection("127.0.0.1", self.house.port, timeout=PATIENCE,
                                            source_address=(self.source, 0))
    with contextlib.closing(connection):
      with contextlib.suppress(ConnectionError):  # refused while it was still being sent
        connection.request(method, ROOT + path, body, headers)
      answer = connection.getresponse()
      return answer.status, {k.lower(): v for k, v in answer.getheaders()}, answer.read()

  def _listen(self, path):
    """Reads a little of the stream, or nothing, and leaves."""
    with socket.create_connection(("127.0.0.1", self.house.port), PATIENCE,
                                  (self.source, 0)) as client:
      last = self.random.choice(("x", "", "0-0", "-", "9" * 40, "é".encode().decode("latin-1")))
      client.sendall(f"GET {ROOT}{path} HTTP/1.1\r\nHost: localhost\r\nLast-Event-ID: {last}\r\n\r\n"
                     .encode("latin-1"))
      if self.random.random() < 0.5:
        client.recv(self.random.choice((1, 100, 65536)))

  def _cut(self, method, path, body):
    text = f"{method} {ROOT}{path} HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/json\r\n"
    data = body or b""
    text = text.encode() + b"Content-Length: %d\r\n\r\n" % len(data) + data
    with socket.create_connection(("127.0.0.1", self.house.port), PATIENCE,
                                  (self.source, 0)) as client:
      client.sendall(text[:self.random.randrange(len(text) + 1)])
      # An end that comes with the head is noticed when the time for the rest is over. Many of these
      # take memory that hides what other requests leak.
      if self.random.random() < 0.95:
        time.sleep(0.02)

  def _filled(self, path):
    for name in self.description.names(path):
      known = self.ids[path.split("/")[1]]
      odd = self.random.choice(ODD_TEXTS)
      value = self.random.choice(known) if known and self.random.random() < 0.8 else odd
      quoted = "".join(c if c.isalnum() and c.isascii() or c in "-_" else
                       "".join(f"%{byte:02X}" for byte in c.encode("utf-8", "surrogatepass"))
                       for c in value)
      path = path.replace("{" + name + "}", quoted or "%20")
    return path

  def _query(self, operation):
    names = [part["name"] for part in operation.get("parameters", []) if part["in"] == "query"]
    if not names or self.random.random() < 0.3:
      return ""
    return "?" + "&".join(f"{name}={self.random.choice(('Kitchen', 'A3', '%', '%C3%BC', ''))}"
                          for name in names)

  def _body(self, operation):
    if "requestBody" not in operation:
      return None, {}
    schema = operation["requestBody"]["content"]["application/json"]["schema"]
    value = self._value(self.description.resolved(schema))
    body = json.dumps(value).encode()
    kind = "application/json"
    damage = self.random.random()
    if damage < 0.1:
      body = body[:self.random.randrange(len(body) + 1)] + bytes(self.random.choices(range(256), k=3))
    elif damage < 0.15:
      body = b"[" * self.random.choice((31, 32, 33, 5000, 16384, 20000))
    elif damage < 0.2:
      kind = self.random.choice(("text/plain", "application/json; charset=utf-8", ""))
    return body, {"Content-Type": kind}

  def _value(self, schema):
    schema = self.description.resolved(schema)
    if self.random.random() < 0.1:
      return self.random.choice(ODD_VALUES[:-1])
    if "enum" in schema:
      return self.random.choice(schema["enum"])
    if "oneOf" in schema or "anyOf" in schema:
      return self._value(self.random.choice(schema.get("oneOf") or schema["anyOf"]))
    kind = schema.get("type")
    if kind == "object":
      needed = schema.get("required", [])
      value = {name: self._value(part) for name, part in schema.get("properties", {}).items()
               if name in needed or self.random.random() < 0.4}
      # Waiting for the line is tried now and then: a second each.
      if value.get("wait") is True and self.random.random() < 0.9:
        value["wait"] = False
      if self.random.random() < 0.05:
        value[self.random.choice(ODD_TEXTS[:-1])] = 1
      return value
    if kind == "integer":
      return self.random.randint(schema.get("minimum", -5), schema.get("maximum", 105))
    if kind == "boolean":
      return self.random.random() < 0.5
    return self.random.choice(("Standard", "Holiday", *ODD_TEXTS[:-1]))


def in_use(process):
  """Descriptors, and kilobytes that are in no file: those change with every other program that has
  the same library. 0 of these where a sanitizer keeps what was freed."""
  descriptors = len(os.listdir(f"/proc/{process.pid}/fd"))
  with open(f"/proc/{process.pid}/maps", encoding="utf-8") as maps:
    if "libasan" in maps.read():
      return descriptors, 0
  with open(f"/proc/{process.pid}/smaps_rollup", encoding="ascii") as rollup:
    kilobytes = next(int(line.split()[1]) for line in rollup if line.startswith("Pss_Anon:"))
  return descriptors, kilobytes


def settled(process, most):
  """What is in use when so few descriptors are; else after the time in which the server notices
  at the latest that readers of the stream have left."""
  end = time.monotonic() + LEAVING
  while in_use(process)[0] > most and time.monotonic() < end:
    time.sleep(0.5)
  time.sleep(1)
  return in_use(process)


def fuzz(house, seconds, seed):
  """What was found, how often was asked, and what was in use after half of the time and at the end."""
  fuzzers = [Fuzzer(house, seed, number) for number in range(ADDRESSES)]
  used = []
  most = in_use(house.process)[0] + 20
  with concurrent.futures.ThreadPoolExecutor(ADDRESSES) as pool:
    for _ in range(2):
      end = time.monotonic() + seconds / 2
      list(pool.map(lambda fuzzer: fuzzer.run(end), fuzzers))
      used.append(settled(house.process, most))
  faults = [fault for fuzzer in fuzzers for fault in fuzzer.faults]
  if house.process.poll() is not None:
    faults.append("the program ended: " + house.text())
  (_, kilobytes), (descriptors, more_kilobytes) = used
  if descriptors > most:
    faults.append(f"descriptors grew to {descriptors}")
  if more_kilobytes > kilobytes + 6144:
    faults.append(f"memory grew from {kilobytes} to {more_kilobytes} KB")
  return faults, sum(fuzzer.asked for fuzzer in fuzzers), used


def main(seconds, seed=None):
  seed = int(seed or random.randrange(1000000))
  house = House()
  try:
    faults, asked, used = fuzz(house, float(seconds), seed)
    print(f"asked {asked} times, seed {seed}; descriptors and KB in use: {used}")
    print("\n".join(faults[:10]))
    if not faults:
      house.close()
    return 1 if faults else 0
  finally:
    with contextlib.suppress(ProcessLookupError):
      house.kill()


if __name__ == "__main__":
  sys.exit(main(*sys.argv[1:]))
