"""The emulator as its users start it, and a client that shares nothing with it but the protocol."""

import fcntl
import os
import pathlib
import re
import select
import subprocess
import tempfile
import termios
import time
import tty
import unittest


class Tool:
  def __init__(self, test, *options):
    self.process = subprocess.Popen([os.environ["CM11_EMULATOR_PATH"], *options], text=True,
                                    stdin=subprocess.PIPE, stdout=subprocess.PIPE)
    test.addCleanup(self.process.communicate)
    test.addCleanup(self.process.kill)

  def line(self):
    return self.process.stdout.readline().rstrip("\n")

  def type(self, line):
    print(line, file=self.process.stdin, flush=True)

  def wait_until_read(self):
    """Until the tool has taken all that was typed, on a busy machine a while later."""
    while any(fcntl.ioctl(self.process.stdin, termios.FIONREAD, bytes(4))):
      time.sleep(0.01)


class Client:
  def __init__(self, test, path):
    self.port = os.open(path, os.O_RDWR | os.O_NOCTTY)
    test.addCleanup(os.close, self.port)
    tty.setraw(self.port)

  def ask(self, text=""):
    os.write(self.port, bytes.fromhex(text))
    return os.read(self.port, 1).hex() if select.select([self.port], [], [], 10)[0] else None


class ToolTest(unittest.TestCase):

  def test_unplugged_it_is_gone_and_comes_back_under_another_name(self):
    folder = tempfile.TemporaryDirectory()
    self.addCleanup(folder.cleanup)
    link = pathlib.Path(folder.name) / "com1"
    tool = Tool(self, "--fast", "--link", str(link))
    path = tool.line()
    self.assertEqual(os.readlink(link), path)
    client = Client(self, link)
    self.assertEqual((client.ask("0462"), client.ask("00")), ("66", "55"))
    tool.type("unplug")
    self.assertEqual(tool.line(), "unplugged")
    with self.assertRaises(OSError):
      while client.ask():
        pass
    self.assertFalse(link.is_symlink())
    tool.type("plug")
    said = tool.line()
    self.assertRegex(said, "^plugged in as /")
    self.assertNotEqual(said.split()[-1], path)
    client = Client(self, link)
    self.assertEqual((client.ask("0662"), client.ask("00")), ("68", "55"), "it forgot the address")
    self.assertEqual(tool.line(), "A3 On: on 100 %")
    tool.type("remote B2 on")
    self.assertEqual((tool.line(), client.ask()), ("B2 On: on 100 % (remote)", "5a"))
    tool.process.terminate()
    self.assertEqual(tool.process.wait(10), 0)
    self.assertFalse(link.is_symlink(), "something is left behind")

  def test_a_program_that_had_the_port_alone_and_was_killed_leaves_it_to_the_next(self):
    path = Tool(self).line()
    os.chmod(path, 0o666)
    user = 65534 if os.getuid() == 0 else None  # for root no port is busy
    script = "import fcntl, os, sys, termios; port = os.open(sys.argv[1], os.O_RDWR | os.O_NOCTTY);" \
             "fcntl.ioctl(port, termios.TIOCEXCL); print(flush=True); sys.stdin.read()"
    take = lambda: subprocess.Popen(["/usr/bin/python3", "-c", script, path], user=user, text=True,
                                    stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                    stderr=subprocess.PIPE)
    with take() as first:
      first.stdout.readline()
      with take() as second:
        self.assertIn("busy", second.communicate()[1])
      first.kill()
    end = time.monotonic() + 10
    while True:
      with take() as next_one:
        error = next_one.communicate()[1]
      if not error:
        return
      self.assertLess(time.monotonic(), end, error)

  def test_waits_for_nobody_who_reads_what_it_prints(self):
    tool = Tool(self, "--fast")
    client = Client(self, tool.line())
    for _ in range(3000):
      tool.type("show B")
      tool.type("help")
    tool.wait_until_read()
    self.assertEqual((client.ask("0462"), client.ask("00")), ("66", "55"))
    left_out = None
    while not left_out:
      line = tool.line()
      self.assertNotEqual(line, "", "the tool has ended")
      left_out = re.fullmatch(r"\((\d+) lines left out\)", line)
    self.assertGreater(int(left_out.group(1)), 1000)
    tool.process.stdout.close()
    tool.type("show")
    self.assertEqual((client.ask("0662"), client.ask("00")), ("68", "55"))

  def test_refuses_bad_options_and_a_link_where_something_else_is(self):
    folder = tempfile.TemporaryDirectory()
    self.addCleanup(folder.cleanup)
    for code, *options in ((1, "--link", folder.name), (2, "--mains", "55"),
                           (2, "--fault", "nothing")):
      self.assertEqual(Tool(self, *options).process.wait(10), code, options)
    self.assertTrue(os.path.isdir(folder.name))
