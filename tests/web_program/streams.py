"""Readers of the stream of changes, and a program that changes the house behind their backs."""

import contextlib
import json
import re
import selectors
import socket
import sqlite3
import time

from store import MACHINE_KEY

IDS = re.compile(rb"^id: ?\S+-(\d+)$", re.M)
NAMED_ID = re.compile(rb"^id: ?(\S+)$", re.M)
HELLO = re.compile(rb"^event: ?hello\ndata: ?(.*)$", re.M)
TOLD = re.compile(rb"^event: ?refetch$", re.M)


class Reader:
  """One stream. It looks that no event is missing: their numbers go on one by one, from the place
  that the stream names at its beginning, or from that which was asked for."""

  def __init__(self, house, source="127.0.0.1", token=None, last_id=None, buffer=None):
    self.socket = socket.socket()
    if buffer:
      self.socket.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, buffer)
    self.socket.bind((source, 0))
    self.socket.settimeout(30)
    self.socket.connect(("127.0.0.1", house.port))
    self.last_id = last_id    # of the last event, as the stream names it
    self.number = int(last_id.rpartition("-")[2]) if last_id else None
    self.told = self.over = False
    self.events = 0
    self.gaps = []
    self.raw = self.text = b""
    self.left = 0             # of the chunk
    head = "GET /api/v1/stream HTTP/1.1\r\nHost: localhost\r\n"
    head += f"Authorization: Bearer {token}\r\n" if token else ""
    head += f"Last-Event-ID: {last_id}\r\n" if last_id else ""
    self.socket.sendall((head + "\r\n").encode())
    answer = b""
    while b"\r\n\r\n" not in answer:
      more = self.socket.recv(65536)
      if not more:
        raise ConnectionError("no head: " + answer.decode("latin-1"))
      answer += more
    head, _, self.raw = answer.partition(b"\r\n\r\n")
    self.status = int(head.split()[1])
    self._take()

  def read(self):
    """What there is now, without waiting."""
    self.socket.setblocking(False)
    with contextlib.suppress(BlockingIOError):
      while not self.over:
        try:
          data = self.socket.recv(1 << 18)
        except ConnectionError:
          data = b""
        if not data:
          self.over = True
        self.raw += data
        self._take()

  def _take(self):
    parts = []
    while self.raw:
      if self.left == 0:
        size, end, rest = self.raw.lstrip(b"\r\n").partition(b"\r\n")
        if not end:
          break
        self.left, self.raw = int(size, 16), rest
        if self.left == 0:
          self.over = True
          break
      parts.append(self.raw[:self.left])
      self.raw = self.raw[len(parts[-1]):]
      self.left -= len(parts[-1])
    self.text += b"".join(parts)
    whole, _, self.text = self.text.rpartition(b"\n\n")
    if whole:
      self._count(whole)

  def _count(self, text):
    hello = HELLO.search(text)
    if hello and self.number is None:
      self.last_id = json.loads(hello.group(1))["event_id"]
      self.number = int(self.last_id.rpartition("-")[2])
    self.told = self.told or bool(TOLD.search(text))
    numbers = [int(number) for number in IDS.findall(text)]
    if hello and numbers and numbers[0] == self.number:
      numbers = numbers[1:]  # the greeting may carry its place as an id
    for number in numbers:
      if number != self.number + 1 and not self.told:
        self.gaps.append((self.number, number))
      self.number = number
    self.events += len(numbers)
    if numbers:
      self.last_id = NAMED_ID.findall(text)[-1].decode()

  def close(self):
    self.socket.close()


def read_until(readers, condition, seconds):
  """Reads all until the condition holds; False when it does not in time."""
  end = time.monotonic() + seconds
  with selectors.DefaultSelector() as selector:
    for reader in readers:
      if not reader.over:
        selector.register(reader.socket, selectors.EVENT_READ, reader)
    while not condition() and time.monotonic() < end:
      for key, _ in selector.select(0.05):
        key.data.read()
        if key.data.over:
          selector.unregister(key.fileobj)
  return condition()


class Elsewhere:
  """Another program that records states of devices, all in one change of the disk: what a command
  on the power line would take hours for."""

  def __init__(self, house, keys):
    self.path = house.folder / "machine" / "machine.db"
    self.keys = keys

  def record_level(self, level):
    with contextlib.closing(sqlite3.connect(self.path, timeout=30)) as database, database:
      database.executemany(
          "INSERT INTO value VALUES (?, ?, 1, ?) ON CONFLICT (key, name) DO UPDATE SET data = excluded.data",
          [row for key in self.keys for row in ((MACHINE_KEY, key, b"True"),
                                                (MACHINE_KEY, "dim" + key, str(level).encode()))])
