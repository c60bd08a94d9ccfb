#!/usr/bin/env python3
"""Writes a demo house of 20 rooms with 10 devices each below the folder given, with a free port for
its web server, and prints that port and another free one."""

import pathlib
import socket
import sys

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "tests/web_program"))
from store import MACHINE_KEY, TYPE_KEY, write_values

TYPES = ["switch", "bulb", "fan", "radio", "bulb2"]
ROOMS, DEVICES = 20, 10


def main():
  folder = pathlib.Path(sys.argv[1]) / "homewarden-demo"
  with socket.socket() as first, socket.socket() as second:
    first.bind(("127.0.0.1", 0))
    second.bind(("127.0.0.1", 0))
    port, other = first.getsockname()[1], second.getsockname()[1]

  lines, states, types = [], {"webport": port, "port": 2}, {}
  for room in range(1, ROOMS + 1):
    lines.append(f"Room {room}~~~")
    for device in range(DEVICES):
      number = (room - 1) * DEVICES + device
      lines.append(f"Room {room}~Device {device}~{chr(65 + number // 16)}~{number % 16 + 1}")
      key = f"Room{room}Device{device}"
      states[key] = str(number % 3 == 0)
      types[key] = TYPES[number % len(TYPES)]
  write_values(folder, "machine", MACHINE_KEY, states)
  write_values(folder, "user", TYPE_KEY, types)
  (folder / "rmlst.hwd").write_bytes("".join(line + "\r\n" for line in lines).encode("cp1252"))
  print(port, other)


main()
