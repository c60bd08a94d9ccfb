"""A house on an emulated interface in a process of its own, for window and service in turn, in time
that runs faster."""

import contextlib
import os
import pathlib
import re
import signal
import subprocess
import tempfile
import threading
import time

from house import PROGRAM, free_port, wait_until
from store import MACHINE_KEY, USER_KEY, read_value, write_values

WINDOW, SERVICE, EMULATOR = (PROGRAM, os.environ["WARDENGINE_PATH"], os.environ["CM11_EMULATOR_PATH"])


class Supervised:
  """The service as a window started it: no child of the test."""

  def __init__(self, pid):
    self.pid = pid

  def wait(self, seconds):
    wait_until(lambda: not os.path.exists(f"/proc/{self.pid}"), "the end of the service", seconds)
    return 0

  def text(self):
    return ""


class Machine:
  """A folder with a house. `devices` are the names of devices by their addresses, a room each ten;
  `macros` lead from one address to another, at On and Off. Minutes are those of the lapse, since
  1970, and local time is UTC."""

  screen = {"QT_QPA_PLATFORM": "offscreen"}

  def __init__(self, factor, devices, macros=(), service_mode=False, **settings):
    self.home = tempfile.TemporaryDirectory()
    self.path = pathlib.Path(self.home.name)
    self.folder = self.path / "house"
    self.factor, self.origin = factor, int(time.time())
    self.port = free_port()
    self.devices = devices
    self.inside = []
    write_values(self.path, "machine", MACHINE_KEY, {"webport": self.port, "port": 1})
    # Without the service mode that a first run brings.
    write_values(self.path, "user", USER_KEY,
                 {"run1": "True", "service": int(service_mode), **settings})
    if service_mode:
      (self.path / "user" / "service.installed").touch()
    self.folder.mkdir()
    self.write("rmlst.hwd", [f"{name.split()[0]}~{name.split()[1]}~{address[0]}~{address[1:]}"
                             for address, name in devices.items()])
    self.write("macs.hlk", [
        f"When~{source}~{devices[source].replace(' ', '~')}~turns~{way}~Turn~{way.title()}~{target}~"
        + devices[target].replace(" ", "~") for source, target in macros for way in ("on", "off")])
    ports = self.path / "machine" / "ports"
    ports.mkdir()
    self.emulator = subprocess.Popen([EMULATOR, "--speed", "6", "--link", ports / "com1"], text=True,
                                     stdin=subprocess.PIPE, stdout=subprocess.PIPE)
    self.terminal = self.emulator.stdout.readline().strip()
    self.said = []
    self.reader = threading.Thread(target=lambda: self.said.extend(iter(self._line, None)))
    self.reader.start()
    self.started = []

  def _line(self):
    line = self.emulator.stdout.readline()
    return (time.monotonic(), line.strip()) if line else None

  def write(self, file, lines):
    (self.folder / file).write_bytes("".join(line + "\r\n" for line in lines).encode("cp1252"))

  def write_events(self, minutes):
    """Addresses to be switched on and the minutes in which they are."""
    self.write("evelst.hwd", [
        f"{self.devices[address]}~{address[0]}~{address[1:]}~100~"
        f"{minute // 60 % 24:02}:{minute % 60:02}~on~daily~mtwufsr" for address, minute in minutes])

  def seconds(self):
    return self.origin + (time.time() - self.origin) * self.factor

  def minute(self):
    return int(self.seconds()) // 60

  def start(self, program, *options):
    environment = {name: value for name, value in os.environ.items()
                   if name not in ("DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS")
                   and not name.startswith(("XDG_", "HOMEWARDEN_"))}
    environment |= {"HOME": self.home.name, "XDG_RUNTIME_DIR": self.home.name, "TZ": "UTC",
                    **self.screen, "HOMEWARDEN_WEB_ADDRESS": "127.0.0.1",
                    "HOMEWARDEN_MACHINE_DIR": f"{self.path}/machine",
                    "HOMEWARDEN_USER_DIR": f"{self.path}/user",
                    "HOMEWARDEN_TIME_LAPSE": f"{self.factor}@{self.origin}"}
    output = self.path / f"output{len(self.started)}"
    with open(output, "wb") as sink:
      process = subprocess.Popen([program, "--folder", self.folder, *options], env=environment,
                                 stdout=sink, stderr=subprocess.STDOUT)
    process.text = lambda: output.read_text(errors="replace")
    self.started.append(process)
    return process

  def wait_until_ready(self, process):
    try:
      wait_until(lambda: "Found and Initialized" in process.text() or process.poll() is not None,
                 "the power line")
    finally:
      assert process.poll() is None and "Initialized" in process.text(), process.text()

  def type(self, line):
    print(line, file=self.emulator.stdin, flush=True)

  def switched(self, houses):
    """What the programs sent to devices of these house codes, like ("A3", "On")."""
    found = (re.match(r"(\w)(\d+) (On|Off): (?!.*remote)", line) for _, line in list(self.said))
    return [(one[1] + one[2], one[3]) for one in found if one and one[1] in houses]

  def lamps(self):
    """Addresses of the lamps that are on, as the emulator tells when it is asked."""
    begin = len(self.said)
    for line in ("show", "show P16"):
      self.type(line)
    wait_until(lambda: any(line.startswith("P16 ") for _, line in self.said[begin:]), "the lamps")
    return {found[1] for _, line in self.said[begin:]
            if (found := re.match(r"(\w\d+) lamp: on", line))}

  def recorded(self, address):
    """"True", "False", or None for nothing, as it is on the disk."""
    key = self.devices[address].replace(" ", "")
    return read_value(self.path / "machine" / "machine.db", MACHINE_KEY, key)

  def pids(self, name=""):
    """Of the programs of this house, whoever started them: supervisors before services."""
    found = []
    for pid in (int(one) for one in os.listdir("/proc") if one.isdigit()):
      with contextlib.suppress(OSError):
        line = pathlib.Path(f"/proc/{pid}/cmdline").read_bytes().decode(errors="replace").split("\0")
        if str(self.folder) in line and name in line[0]:
          found.append(("--supervise" not in line, pid))
    return [pid for is_served, pid in sorted(found) if is_served or not name]

  def wait_for_service(self):
    wait_until(lambda: any(map(self.has_port, self.pids(SERVICE))), "the service on the power line")
    return Supervised(self.pids(SERVICE)[0])

  def has_port(self, pid):
    folder = f"/proc/{pid}/fd"
    try:
      return any(os.readlink(f"{folder}/{one}") == self.terminal for one in os.listdir(folder))
    except OSError:  # it has ended, or closed one just now
      return False

  def close(self):
    for process in self.started:
      process.kill()
      process.wait()
    while pids := self.pids():
      with contextlib.suppress(ProcessLookupError):
        os.kill(pids[0], signal.SIGKILL)
      time.sleep(0.05)
    self.emulator.kill()
    self.emulator.wait()
    self.reader.join()
    self.emulator.stdin.close()
    self.emulator.stdout.close()
    self.home.cleanup()
