"""The settings that the program finds when it starts, written as it writes them itself."""

import contextlib
import sqlite3

MACHINE_KEY = r"Software\Microsoft\Windows\Homewarden"
DELAY_KEY = r"Software\Microsoft\Windows\CurrentVersion"
USER_KEY = r"Software\Homewarden\data"
TYPE_KEY = r"Software\Homewarden\type"
SCHEMA = """CREATE TABLE IF NOT EXISTS value (key TEXT NOT NULL COLLATE NOCASE,
  name TEXT NOT NULL COLLATE NOCASE, type INTEGER NOT NULL, data BLOB NOT NULL,
  PRIMARY KEY (key, name)) WITHOUT ROWID"""


def read_value(path, key, name):
  """What a reader finds in a file of settings; None for nothing."""
  with contextlib.closing(sqlite3.connect(path, timeout=30)) as database:
    found = database.execute("SELECT data FROM value WHERE key=? AND name=?", (key, name)).fetchone()
    return found and found[0].decode("cp1252")


def write_values(folder, store, key, values):
  """Adds texts to the store "machine" or "user" below the folder of a house."""
  (folder / store).mkdir(parents=True, exist_ok=True)
  with contextlib.closing(sqlite3.connect(folder / store / f"{store}.db")) as database:
    database.execute(SCHEMA)
    # Names are texts in the system code page, which are bytes here.
    database.executemany("INSERT INTO value VALUES (?, CAST(? AS TEXT), 1, ?)",
                         [(key, name.encode("cp1252"), str(value).encode("cp1252"))
                          for name, value in values.items()])
    database.commit()
