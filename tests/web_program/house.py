"""The program as a process with a house of its own, and its clients from outside."""

import contextlib
import os
import pathlib
import random
import re
import resource
import socket
import subprocess
import tempfile
import time
from dataclasses import dataclass

from store import MACHINE_KEY, USER_KEY, write_values

PROGRAM = os.environ["HOMEWARDEN_PATH"]
CURL = ["curl", "-q", "-sS", "--noproxy", "*", "--max-time", "30"]
ROOM = "/index.html?loadroom"


def wait_until(condition, what, seconds=60):
  end = time.monotonic() + seconds
  while not condition():
    if time.monotonic() > end:
      raise AssertionError(f"waited {seconds} s in vain: {what}")
    time.sleep(0.05)


def namespaces_are_allowed(*kinds):
  """Tries it. A container's rules answer "not permitted", a system's limit of 0 "no space left"."""
  tried = subprocess.run(["unshare", "--map-root-user", *kinds, "true"], stderr=subprocess.PIPE,
                         env={**os.environ, "LC_ALL": "C"}, check=False)
  refusals = (b"not permitted", b"Permission denied", b"No space left")
  return tried.returncode == 0 or not any(text in tried.stderr for text in refusals)


def free_port():
  """Below those that the system gives to clients, of which there are thousands here."""
  while True:
    port = random.randrange(20000, 32000)
    with contextlib.suppress(OSError), socket.create_server(("", port)):
      return port


class House:
  """A demo house with the program running in it. `inside` is a command that starts others, `before`
  a script for the shell that starts the program on disks of its own; what is printed goes to `sink`,
  or to where text() finds it. The settings are those of the web server panel."""

  def __init__(self, passwords=None, descriptors=None, inside=(), before="", sink=None,
               options=(), program=PROGRAM, **settings):
    self.home = tempfile.TemporaryDirectory()
    self.folder = pathlib.Path(self.home.name) / "homewarden-demo"
    self.html = self.folder / "html"
    self.inside = list(inside)
    self.port = free_port()
    write_values(self.folder, "machine", MACHINE_KEY, {"webport": self.port})
    write_values(self.folder, "user", USER_KEY, settings)
    if passwords is not None:
      self.html.mkdir()
      (self.html / "htaccess.txt").write_bytes(passwords)
    self.furnish()
    self.descriptors = descriptors
    self.before = before
    self.sink = sink
    self.options = list(options)
    self.program = program
    self.output = pathlib.Path(self.home.name) / "output"
    self.start()

  def start(self):
    """The program in the house, also once more after kill(); what it prints starts anew."""
    limit = lambda: resource.setrlimit(resource.RLIMIT_NOFILE, (self.descriptors,) * 2)
    with self.sink or open(self.output, "wb") as output:
      self.process = subprocess.Popen(
          [*self.inside, *self._disks(), self.program, "--demo", "--report-loop", *self.options],
          stdout=output, stderr=subprocess.STDOUT, env=self.environment(),
          preexec_fn=limit if self.descriptors else None)
    try:
      wait_until(self._is_ready, "the web server and the power line")
    except BaseException:
      self._leave()
      raise

  def environment(self):
    environment = {name: value for name, value in os.environ.items()
                   if name not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM",
                                   "DBUS_SESSION_BUS_ADDRESS")}
    for name in ("HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"):
      environment[name] = self.home.name
    if not self.inside:  # a network of the test's own has addresses of all kinds
      environment["HOMEWARDEN_WEB_ADDRESS"] = "127.0.0.1"
    return environment

  def kill(self):
    self.process.kill()
    self.process.wait()

  def _disks(self):
    if not self.before:
      return []
    return ["unshare", "--map-root-user", "--mount", "sh", "-ec", self.before + '; exec "$@"', "sh"]

  def furnish(self):
    """Rooms and devices other than those of the demo."""

  def _is_ready(self):
    if self.process.poll() is not None:
      raise AssertionError("the program ended: " + self.text())
    return "Found and Initialized" in self.text() and self.answers()

  def answers(self):
    knock = [*self.inside, *CURL, "-o", os.devnull, f"http://127.0.0.1:{self.port}/"]
    return subprocess.run(knock, stderr=subprocess.DEVNULL, check=False).returncode == 0

  def _leave(self):
    self.kill()
    self.home.cleanup()

  def longest_turn(self):
    """Milliseconds, also those that it waited and those that the machine was elsewhere."""
    return max(map(float, re.findall(r"^loop ([\d.]+) ms late", self.text(), re.M)), default=0)

  def text(self):
    return self.output.read_text(errors="replace")

  def switched(self):
    """What reached the power line, like "A3 On"."""
    return re.findall(r"^On the power line: (\w+ \w+)", self.text(), re.MULTILINE)

  def close(self):
    """Ends the program, which must have come through: sanitizers tell by the exit code."""
    self.process.terminate()
    try:
      code = self.process.wait(60)
      if code != 0:
        raise AssertionError(f"the program ended with {code}: " + self.text())
    finally:
      self._leave()


@dataclass
class Answer:
  status: int
  headers: dict  # names in lower case; values of those that come twice in lines
  body: bytes = b""

  @staticmethod
  def parse(head):
    first, *lines = head.decode("latin-1").split("\r\n")
    headers = {}
    for name, value in (line.split(": ", 1) for line in lines):
      headers[name.lower()] = "\n".join([*headers.get(name.lower(), "").splitlines(), value])
    return Answer(int(first.split()[1]), headers)

  @property
  def room(self):
    """The heading of a page."""
    found = re.search(rb"<h1>(.*?)</h1>", self.body)
    return found.group(1).decode() if found else None


def curl(house, path, *options, host="127.0.0.1"):
  command = [*house.inside, *CURL, "-i", "--path-as-is", "--globoff", *options,
             f"http://{host}:{house.port}{path}"]
  output = subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout
  head, body = output.split(b"\r\n\r\n", 1)
  answer = Answer.parse(head)
  answer.body = body
  return answer


class Client:
  """A connection. Reading gives up after a time that no answer needs."""

  def __init__(self, house, source="127.0.0.1"):
    self.socket = socket.create_connection(("127.0.0.1", house.port), 30, (source, 0))
    self.socket.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
    self.input = b""

  def __enter__(self):
    return self

  def __exit__(self, *_):
    self.socket.close()

  def send(self, data):
    with contextlib.suppress(ConnectionError):  # reading shows what has become of it
      self.socket.sendall(data)
    return self

  def has_ended(self):
    """Waits for more input or the end, unless the socket is one that does not wait."""
    data = b""
    try:
      data = self.socket.recv(65536)
    except BlockingIOError:
      return False
    except ConnectionError:
      pass
    self.input += data
    return not data

  def read(self, head=False):
    """The next answer, None when the connection has ended instead."""
    while b"\r\n\r\n" not in self.input:
      if self.has_ended():
        return None
    start, self.input = self.input.split(b"\r\n\r\n", 1)
    answer = Answer.parse(start)
    size = 0 if head else int(answer.headers["content-length"])
    while len(self.input) < size:
      if self.has_ended():
        raise AssertionError("an answer was cut off")
    answer.body, self.input = self.input[:size], self.input[size:]
    return answer


def ask(house, target, *headers, method="GET", source="127.0.0.1", host="localhost"):
  lines = [f"{method} {target} HTTP/1.1", f"Host: {host}", *headers, "", ""]
  with Client(house, source) as client:
    return client.send("\r\n".join(lines).encode("latin-1")).read(head=method == "HEAD")
