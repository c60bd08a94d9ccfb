#!/usr/bin/env python3
"""Clients of the web server for crowd_bench, each from an address of this machine of its own.
usage: crowd.py PORT SECONDS visit ADDRESS WHAT | browse ADDRESS WHAT | press ADDRESS LAMPS
     | flood ADDRESSES REQUESTS IDLE

visit   wants a page every 20 ms and prints how late they came, counted from when each was wanted
browse  asks for a page as soon as the one before has come and prints how many come in a second
press   switches so many lamps at once and leaves as soon as it has asked
flood   keeps so many switches waiting from each address, each asked for again when it has been
        answered, or a second after its connection was cut; and so many idle connections"""

import resource
import selectors
import signal
import socket
import sys
import time

PORT, END = int(sys.argv[1]), time.monotonic() + float(sys.argv[2])


def request(path):
  return f"GET {path} HTTP/1.1\r\nHost: localhost\r\n\r\n".encode()


def switch(number):
  lamp = number % 10 + 1
  on = "turnon" if number // 10 % 2 == 0 else "turnoff"
  return request(f"/index.html?A~{lamp}~WebLamp{lamp}~{on}~Web")


def connect(address, blocking=True):
  client = socket.socket()
  client.bind((address, 0))
  client.setblocking(blocking)
  try:
    client.connect(("127.0.0.1", PORT))
  except BlockingIOError:
    pass
  return client


class Visitor:
  def __init__(self, address):
    self.address, self.client, self.failures = address, None, 0

  def page(self):
    """Asks until a page has come; False when the time is over before."""
    while time.monotonic() < END:
      try:
        self.client = self.client or connect(self.address)
        self.client.settimeout(max(END - time.monotonic(), 0.01))
        self.client.sendall(request("/index.html?loadroomWeb"))
        answer = b""
        while b"\r\n\r\n" not in answer:
          answer += self._more()
        head, _, body = answer.partition(b"\r\n\r\n")
        length = int(head.lower().partition(b"content-length:")[2].split(b"\r\n")[0])
        while len(body) < length:
          body += self._more()
        if head.startswith(b"HTTP/1.1 200"):
          return True
      except OSError:
        self.client = None
      self.failures += 1
      time.sleep(0.01)
    return False

  def _more(self):
    part = self.client.recv(65536)
    if not part:
      raise ConnectionError
    return part


def visit(address, what):
  visitor, late, wanted = Visitor(address), [], time.monotonic()
  while wanted < END:
    time.sleep(max(wanted - time.monotonic(), 0))
    visitor.page()
    late.append((time.monotonic() - wanted) * 1000)
    wanted += 0.02
  late.sort()
  median, tail = (late[int(part * (len(late) - 1))] for part in (0.5, 0.99))
  print(f"=> a page, {what}: median {median:.1f} ms, 99th percentile {tail:.1f} ms,"
        f" worst {late[-1]:.1f} ms ({len(late)} pages, {visitor.failures} more were refused)")


def browse(address, what):
  visitor, pages, start = Visitor(address), 0, time.monotonic()
  while visitor.page():
    pages += 1
  print(f"=> pages per second, {what}: {pages / (time.monotonic() - start):.0f}")


def press(address, lamps):
  clients = [connect(address) for _ in range(int(lamps))]
  for number, client in enumerate(clients):
    client.sendall(switch(number))
  for client in clients:
    client.close()


def flood(addresses, requests, idle):
  limit = resource.getrlimit(resource.RLIMIT_NOFILE)[1]
  resource.setrlimit(resource.RLIMIT_NOFILE, (limit, limit))
  ready, kept, asked = selectors.DefaultSelector(), [], 0
  crowd = [f"127.0.0.{20 + i}" for i in range(int(addresses))] * int(requests)

  def join(address):
    ready.register(connect(address, blocking=False), selectors.EVENT_WRITE, address)

  for address in crowd:
    join(address)
  for number in range(int(idle)):
    kept.append(connect(f"127.0.0.{100 + number % 100}", blocking=False))
  answers, leaving = {}, []
  while time.monotonic() < END:
    while leaving and leaving[0][0] < time.monotonic():
      join(leaving.pop(0)[1])
    for key, event in ready.select(0.1):
      try:
        if event == selectors.EVENT_WRITE:
          key.fileobj.send(switch(asked))
          asked += 1
          ready.modify(key.fileobj, selectors.EVENT_READ, key.data)
          continue
        answer = key.fileobj.recv(65536)
        status = answer[9:12].decode() if answer.startswith(b"HTTP") else ""
      except OSError:
        answer = b""
      if answer and status:
        answers[status] = answers.get(status, 0) + 1
        ready.modify(key.fileobj, selectors.EVENT_WRITE, key.data)
      elif not answer:
        answers["closed"] = answers.get("closed", 0) + 1
        ready.unregister(key.fileobj)
        key.fileobj.close()
        leaving.append((time.monotonic() + 1, key.data))
    time.sleep(0.005)
  print(f"the flood asked for {asked} switches; answers: {answers}")


def stop(*_):
  global END
  END = 0


signal.signal(signal.SIGTERM, stop)
globals()[sys.argv[3]](*sys.argv[4:])
