"""Installing, starting and asking for the service, with a mock of the person's service manager and
of the log-in manager on a bus of the test's own, and systemd's own reading of the unit."""

import os
import pathlib
import shlex
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

import dbus
import dbus.bus

DRIVER = os.environ["SERVICE_DRIVER_PATH"]
SYSTEMD = "org.freedesktop.systemd1"
MANAGER = ("/org/freedesktop/systemd1", SYSTEMD + ".Manager")
LOGIN = "org.freedesktop.login1"
LOGIN_MANAGER = ("/org/freedesktop/login1", LOGIN + ".Manager")
SELF = "/org/freedesktop/login1/user/self"
MOCK = "org.freedesktop.DBus.Mock"
UNKNOWN, STOPPED, STARTING, STOPPING, RUNNING = range(5)
RELOAD = ("Reload", [])
START = ("StartUnit", ["wardengine.service", "replace"])
DISABLE = ("DisableUnitFiles", [["wardengine.service"], False])

# As the manager itself declares them.
METHODS = [("StartUnit", "ss", "o", "ret = '/job/1'"), ("StopUnit", "ss", "o", "ret = '/job/1'"),
           ("Reload", "", "", ""), ("EnableUnitFiles", "asbb", "ba(sss)", "ret = (True, [])"),
           ("DisableUnitFiles", "asb", "a(sss)", "ret = []"),
           ("ListUnitsByNames", "as", "a(ssssssouso)",
            "ret = [(args[0][0], '', *self.unit[:3], '', '/unit', int(self.unit[3] != ''), "
            "self.unit[3], '/job')]")]


class ServicesTest(unittest.TestCase):

  def setUp(self):
    self.home = tempfile.mkdtemp()
    self.addCleanup(shutil.rmtree, self.home)
    self.folder = pathlib.Path(self.home, "Anna's \"new\" 50%h é; $HOME")
    self.folder.mkdir()
    self.unit = pathlib.Path(self.home, "config/systemd/user/wardengine.service")
    self.environment = {"PATH": os.environ["PATH"], "HOME": self.home, "LANG": "C.UTF-8",
                        "XDG_RUNTIME_DIR": self.home,
                        "LSAN_OPTIONS": os.environ.get("LSAN_OPTIONS", ""),
                        "HOMEWARDEN_WEB_ADDRESS": "a\\b\tc $HOME"}
    daemon = self.run_beside("dbus-daemon", "--session", "--nofork", "--print-address",
                             stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    address = daemon.stdout.readline().decode().strip()
    self.environment.update(DBUS_SESSION_BUS_ADDRESS=address, DBUS_SYSTEM_BUS_ADDRESS=address)
    self.bus = dbus.bus.BusConnection(address)
    self.addCleanup(self.bus.close)
    self.drive(self.folder)
    self.reports = []

  def run_beside(self, *command, **options):
    process = subprocess.Popen(command, env=self.environment, **options)
    self.addCleanup(self.end, process)
    return process

  @staticmethod
  def end(process):
    for pipe in (process.stdin, process.stdout):
      if pipe:
        pipe.close()
    process.send_signal(signal.SIGCONT)
    process.terminate()
    process.wait(30)

  def drive(self, folder):
    """The driver in a folder with the house and the program."""
    shutil.copy("/bin/true", folder / "wardengine")
    driver = shutil.copy(DRIVER, folder)
    self.driver = self.run_beside(driver, self.home + "/config", folder, stdin=subprocess.PIPE,
                                  stdout=subprocess.PIPE)

  def say(self, word):
    """The answer, and the milliseconds that the call took."""
    self.driver.stdin.write(word.encode() + b"\n")
    self.driver.stdin.flush()
    while True:
      kind, text = self.read()
      if kind != "reported":
        return kind, int(text)
      self.reports.append(text)

  def read(self):
    kind, _, text = self.driver.stdout.readline().decode("cp1252").strip().partition(" ")
    return kind, text

  def state(self):
    return int(self.say("query")[0])

  def report_of(self, word):
    self.say(word)
    return self.reports.pop() if self.reports else self.read()[1]

  def mock(self, name, path, interface, methods):
    process = self.run_beside(sys.executable, "-m", "dbusmock", "--session", name, path, interface,
                              stdout=subprocess.DEVNULL)
    while not self.bus.name_has_owner(name):
      time.sleep(0.05)
    mock = dbus.Interface(self.bus.get_object(name, path), MOCK)
    for method in methods:
      mock.AddMethod(interface, *method)
    return process, mock

  def start_manager(self):
    process, self.manager = self.mock(SYSTEMD, *MANAGER, METHODS)
    self.manager.AddMethod("", "SetUnit", "ssss", "", "self.unit = [str(arg) for arg in args]")
    self.set_unit("not-found", "inactive")
    return process

  def set_unit(self, load, active, sub="", job=""):
    manager = self.bus.get_object(SYSTEMD, MANAGER[0])
    manager.SetUnit(load, active, sub, job, dbus_interface=MANAGER[1])

  def start_login(self, lingers, code="self.objects = None"):
    self.login = self.mock(LOGIN, *LOGIN_MANAGER, [("SetUserLinger", "ubb", "", code)])[1]
    self.login.AddObject(SELF, LOGIN + ".User", {"Linger": lingers}, dbus.Array([], "(ssss)"))

  @staticmethod
  def calls(mock):
    """Since it was asked last, without questions."""
    calls = [(str(name), list(arguments)) for _, name, arguments in mock.GetCalls()]
    mock.ClearCalls()
    return [call for call in calls if call[0] not in ("ListUnitsByNames", "SetUnit")]

  def test_remove_undoes_what_install_did(self):
    self.assertEqual(self.say("there")[0], "no")
    self.start_manager()
    self.start_login(lingers=False)
    self.assertEqual(self.say("there")[0], "yes")
    enable = ("EnableUnitFiles", [[str(self.unit)], False, True])
    linger = lambda on: ("SetUserLinger", [os.getuid(), on, True])
    for _ in range(2):  # again renews it
      self.assertEqual(self.report_of("install"), "")
      self.assertEqual(self.calls(self.manager), [enable, RELOAD])
      self.assertEqual(self.calls(self.login), [linger(True)])
    self.assertTrue(self.unit.exists())
    self.assertEqual(self.report_of("remove"), "")
    self.assertEqual(self.calls(self.manager), [DISABLE, RELOAD])
    self.assertEqual(self.calls(self.login), [linger(False)])

    self.bus.get_object(LOGIN, SELF).UpdateProperties(LOGIN + ".User", {"Linger": True},
                                                      dbus_interface=MOCK)
    self.assertEqual(self.report_of("install"), "")
    self.assertEqual(self.report_of("remove"), "")
    self.assertEqual(self.calls(self.login), [], "somebody else's lingering was touched")
    left = [path for path in pathlib.Path(self.home, "config").rglob("*") if path.is_file()]
    self.assertEqual(left, [])

  def test_says_what_could_not_be_done_and_what_to_do(self):
    self.start_manager()
    report = r"will end when you log out.*{}.*, run: sudo loginctl enable-linger \w"
    self.assertRegex(self.report_of("install"), report.format("login1"))  # nobody has that name
    self.start_login(False, "raise dbus.exceptions.DBusException('Not for you.', name='a.Denied')")
    self.assertRegex(self.report_of("install"), report.format("(Not for you)"))
    self.assertEqual(len(self.calls(self.login)), 1)
    self.assertEqual(self.report_of("remove"), "")
    self.assertEqual(self.calls(self.login), [], "switched off what was refused")

    self.manager.AddMethod("", "DisableUnitFiles", "asb", "a(sss)",
                           "raise dbus.exceptions.DBusException('No such unit.', name='a.Gone')")
    self.assertEqual(self.report_of("remove"), "", "nothing is wrong when it is not installed")
    self.report_of("install")
    self.assertIn("could not be removed: No such unit", self.report_of("remove"))
    self.unit.unlink()

    self.unit.parent.rmdir()
    self.unit.parent.write_text("no folder")
    self.calls(self.manager)
    self.assertIn("wardengine.service cannot be written", self.report_of("install"))
    self.assertEqual(self.calls(self.manager), [])

  def test_starts_what_this_version_would_install(self):
    self.start_manager()
    self.start_login(lingers=True)
    self.say("start")
    self.assertFalse(self.unit.exists(), "installed without being asked")
    self.report_of("install")
    written = self.unit.read_text()
    self.unit.write_text(written.replace("--folder", "--older"))
    self.calls(self.manager)
    self.say("start")
    self.say("start")
    self.say("stop")
    self.say("others")
    self.state()
    self.assertEqual(self.calls(self.manager),
                     [RELOAD, START, START, ("StopUnit", ["wardengine.service", "replace"])])
    self.assertEqual(self.unit.read_text(), written)

    self.say("start")
    self.driver.stdin.close()
    self.assertEqual(self.driver.wait(30), 0)
    end = time.monotonic() + 10
    while not (calls := self.calls(self.manager)) and time.monotonic() < end:
      time.sleep(0.05)
    self.assertEqual(calls, [START], "lost when the window was gone at once")

  def test_states(self):
    self.start_manager()
    for unit, state in [(("not-found", "inactive"), UNKNOWN), (("masked", "inactive"), UNKNOWN),
                        (("loaded", "inactive", "dead"), STOPPED),
                        (("loaded", "inactive", "dead", "start"), STARTING),
                        (("loaded", "failed", "failed"), STOPPED),
                        (("loaded", "activating", "auto-restart"), STARTING),
                        (("loaded", "active", "running"), RUNNING),
                        (("not-found", "active", "running"), RUNNING),  # its file has been removed
                        (("loaded", "deactivating", "stop-sigterm"), STOPPING)]:
      self.set_unit(*unit)
      self.assertEqual(self.state(), state, unit)
    self.assertEqual(int(self.say("others")[0]), UNKNOWN)

  def test_a_manager_that_hangs_holds_the_window_up_for_a_moment_and_once(self):
    process = self.start_manager()
    self.set_unit("loaded", "active")
    self.assertEqual(self.state(), RUNNING)
    process.send_signal(signal.SIGSTOP)
    answer, took = self.say("query")
    self.assertEqual(int(answer), UNKNOWN)
    self.assertLess(took, 5000)  # the bus alone would wait 25 seconds
    later = [self.say(word)[1] for word in ("query", "start", "stop", "install", "query")]
    self.assertLess(sum(later), 900, "it waited again")  # each wait is of 500
    process.send_signal(signal.SIGCONT)
    while self.state() != RUNNING:  # unless it is not asked any more
      time.sleep(0.1)

  def verify(self, level):
    command = ["systemd-analyze", "verify", "--user", "--man=no", self.unit]
    return subprocess.run(command, env={**self.environment, "SYSTEMD_LOG_LEVEL": level},
                          check=True, capture_output=True)

  def test_systemd_reads_the_unit_as_it_is_meant(self):
    plain = pathlib.Path(self.home, "my house 50%h é; $HOME")  # no shell is needed for this one
    plain.mkdir()
    self.start_manager()
    self.start_login(lingers=True)
    for folder in (self.folder, plain):
      if folder == plain:
        self.drive(folder)
      self.assertEqual(self.report_of("install"), "")
      self.assertEqual(self.verify("info").stderr, b"")
      said = self.verify("debug").stdout.decode()
      lines = [line.strip().partition(": ") for line in said.splitlines()]
      started = [shlex.split(text)[-3:] for name, _, text in lines if name == "Command Line"]
      started = [[word.replace("\\$", "$") for word in words] for words in started]
      self.assertEqual(started, [[str(folder / "wardengine"), "--folder", str(folder)]])
      self.assertIn(("Environment", ": ", "HOMEWARDEN_WEB_ADDRESS=a\\b\tc $HOME"), lines)
      self.assertIn(f"ConditionFileIsExecutable: {folder}/wardengine", said)
