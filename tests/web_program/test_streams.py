"""The stream of changes under load, behind tokens, and for those who were away."""

import contextlib
import hashlib
import json
import sqlite3
import time
import unittest

from house import House, curl, wait_until
from store import TYPE_KEY, write_values
from streams import Elsewhere, Reader, read_until

TOKEN_KEY = r"Software\Homewarden\webtokens"
READING, DOING, REVOKED = ("hw_" + letter * 64 for letter in "abc")
ADDRESSES = [f"127.0.1.{last}" for last in range(1, 11)]
STREAMS = 200
DEVICES = 200
CHANGES = 10_000
GROWTH = 8 * 1024  # kilobytes, between the first tenth of the changes and the last
ASLEEP = 60        # seconds


def entry(right, secret, name):
  return f"{right} 2026-11-24 07:30 {hashlib.sha256(secret.encode()).hexdigest()} {name}"


class LargeHouse(House):
  """With tokens, and a password for everybody else."""

  def furnish(self):
    places = [(f"Room {n // 10}", f"Lamp {n % 10}", "ABCDEFGHIJKLMNOP"[n // 16], n % 16 + 1)
              for n in range(DEVICES)]
    self.keys = [(room + lamp).replace(" ", "") for room, lamp, _, _ in places]
    lines = [f"{room}~~~" for room in dict.fromkeys(place[0] for place in places)]
    lines += ["~".join(map(str, place)) for place in places]
    (self.folder / "rmlst.hwd").write_bytes("".join(line + "\r\n" for line in lines).encode())
    write_values(self.folder, "user", TYPE_KEY, {key: "bulb" for key in self.keys})
    write_values(self.folder, "user", TOKEN_KEY, {
        "1": entry("read", READING, "Dashboard"), "2": entry("full", DOING, "Script"),
        "3": entry("read", REVOKED, "Old phone")})

  def memory(self):
    """Kilobytes; nothing where a sanitizer keeps what was freed."""
    with open(f"/proc/{self.process.pid}/maps", encoding="utf-8") as maps:
      if "libasan" in maps.read():
        return 0
    with open(f"/proc/{self.process.pid}/status", encoding="utf-8") as status:
      return next(int(line.split()[1]) for line in status if line.startswith("VmRSS"))

  def ask(self, path, token, *options):
    return curl(self, "/api/v1" + path, "-H", "Authorization: Bearer " + token, *options)

  def revoke(self, place):
    with contextlib.closing(sqlite3.connect(self.folder / "user" / "user.db", timeout=30)) as file:
      file.execute("DELETE FROM value WHERE key = ? AND name = ?", (TOKEN_KEY, str(place)))
      file.commit()


class StreamTest(unittest.TestCase):

  def setUp(self):
    self.house = LargeHouse(passwords=b"anna:secret\r\n")
    self.addCleanup(self.house.close)
    self.elsewhere = Elsewhere(self.house, self.house.keys)
    self.level = 0

  def open(self, **kind):
    reader = Reader(self.house, **{"token": READING, **kind})
    self.addCleanup(reader.close)
    self.assertEqual(reader.status, 200)
    return reader

  def change(self, readers, count):
    """Every device changes so often, all readers reading."""
    for _ in range(count):
      self.level = self.level % 99 + 1
      wanted = [reader.events + DEVICES for reader in readers]
      self.elsewhere.record_level(self.level)
      self.assertTrue(read_until(readers, lambda: all(
          reader.over or reader.told or reader.events >= events
          for reader, events in zip(readers, wanted)), 60), "changes that not every stream tells of")

  def test_every_stream_is_complete_or_told_and_memory_stays(self):
    first = self.open()
    read_until([first], lambda: first.last_id, 10)
    early = first.last_id
    # Phones that take nothing while most of it happens.
    asleep = [self.open(source=ADDRESSES[0], buffer=4096) for _ in range(3)]
    read_until(asleep, lambda: all(reader.last_id for reader in asleep), 10)
    readers = [first] + [self.open(source=ADDRESSES[n % len(ADDRESSES)]) for n in range(STREAMS - 4)]
    asleep_since = time.monotonic()

    self.change(readers, CHANGES // DEVICES // 10)
    begin = self.house.memory()
    self.change(readers, CHANGES // DEVICES - CHANGES // DEVICES // 10)
    growth = self.house.memory() - begin
    self.assertLess(growth, GROWTH, "it grows with the changes")
    for reader in readers:
      self.assertEqual(reader.gaps, [])
      self.assertTrue(reader.told or not reader.over, "a stream ended without a word")
    complete = [reader for reader in readers if not reader.told]
    self.assertGreater(len(complete), STREAMS // 2)
    self.assertGreaterEqual(min(reader.events for reader in complete), CHANGES)
    house = json.loads(self.house.ask("/house", READING).body)
    self.assertEqual(house["event_id"], first.last_id)
    print(f"{len(complete)} of {len(readers)} streams complete, {first.events} events, memory "
          f"{growth} KB more, {time.monotonic() - asleep_since:.0f} s", flush=True)

    read_until(readers, lambda: time.monotonic() > asleep_since + ASLEEP, ASLEEP)
    for sleeper in asleep:
      wait_until(lambda s=sleeper: s.read() or s.over or s.told or s.last_id == first.last_id,
                 "the end of what a phone missed")
      self.assertEqual(sleeper.gaps, [])
      again = self.open(source=ADDRESSES[0], last_id=sleeper.last_id)
      self.assertTrue(read_until([again], lambda r=again: r.told or r.last_id == first.last_id, 20))
      self.assertEqual(again.gaps, [])

    for gone in (early, "elsewhere-7"):
      reader = self.open(last_id=gone)
      self.assertTrue(read_until([reader], lambda r=reader: r.told, 10), gone)

  def test_a_place_that_is_known_goes_on_behind_it(self):
    reader = self.open()
    self.change([reader], 1)
    run, _, number = reader.last_id.rpartition("-")
    again = self.open(last_id=f"{run}-{int(number) - 150}")
    self.assertTrue(read_until([again], lambda: again.last_id == reader.last_id, 10))
    self.assertEqual((again.gaps, again.told, again.events), ([], False, 150))

  def test_a_token_that_reads_cannot_switch_and_a_revoked_one_ends(self):
    lamp = json.loads(self.house.ask("/devices", READING).body)["devices"][0]["id"]
    command = ("-H", "Content-Type: application/json", "-d", '{"command":"on","wait":true}')
    self.assertEqual(self.house.ask(f"/devices/{lamp}/commands", READING, *command).status, 403)
    self.assertEqual(self.house.ask("/house", "hw_" + "d" * 64).status, 401)
    self.assertEqual(self.house.switched(), [])
    self.assertEqual(self.house.ask(f"/devices/{lamp}/commands", DOING, *command).status, 200)
    self.assertEqual(self.house.switched(), ["A1 On"])
    readers = [self.open(token=REVOKED), self.open()]
    self.house.revoke(3)
    self.assertTrue(read_until(readers, lambda: readers[0].over, 10), "it reads on")
    self.assertFalse(readers[1].over)
    self.assertEqual(self.house.ask("/house", REVOKED).status, 401)


if __name__ == "__main__":
  unittest.main()
