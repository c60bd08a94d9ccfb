"""What the tests use of npm, installed as the lock file says."""

import fcntl
import os
import pathlib
import subprocess
import tempfile

FOLDER = pathlib.Path(__file__).parent / "node"


def installed():
  """The folder of the packages. The first test that asks installs them; others wait for it."""
  packages = FOLDER / "node_modules"
  done = packages / ".package-lock.json"  # written by npm at its end
  lock = FOLDER / "package-lock.json"
  with open(lock, "rb") as turn:
    fcntl.flock(turn, fcntl.LOCK_EX)
    if not done.exists() or done.stat().st_mtime < lock.stat().st_mtime:
      with tempfile.TemporaryDirectory() as home:
        subprocess.run(["npm", "ci", "--no-audit", "--no-fund"], cwd=FOLDER, check=True,
                       stdout=subprocess.DEVNULL,
                       env={**os.environ, "npm_config_cache": home, "npm_config_update_notifier": "false"})
      done.touch()
  return packages
