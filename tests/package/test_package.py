"""What the Debian package holds. HOMEWARDEN_PACKAGE names it."""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest

PACKAGE = os.environ["HOMEWARDEN_PACKAGE"]
SOURCES = pathlib.Path(__file__).resolve().parents[2]
PROGRAMS = ["homewarden", "wardengine", "cm11-emulator"]

# Asks zsh on a terminal what it would complete, and prints it.
ZSH = r"""
zmodload zsh/zpty
zpty -b shell "PS1= TERM=dumb zsh -f"
zpty -w shell "fpath=($1 \$fpath); autoload -Uz compinit; compinit -u -d $2/dump"
zpty -w shell "zstyle ':completion:*' list-prompt ''; LISTMAX=0; print R''EADY"
while zpty -r shell line; do [[ $line == *READY* ]] && break; done
zpty -n -w shell "$3"$'\t\t'
for i in {1..30}; do sleep 0.1; while zpty -r -t shell line; do print -rn -- $line; done; done
zpty -d shell
"""


def run(*command, **options):
  return subprocess.run([str(word) for word in command], stdout=subprocess.PIPE,
                        stderr=subprocess.STDOUT, text=True, timeout=120, check=False, **options)


class PackageTest(unittest.TestCase):

  @classmethod
  def setUpClass(cls):
    folder = tempfile.TemporaryDirectory()
    cls.addClassCleanup(folder.cleanup)
    cls.root = pathlib.Path(folder.name)
    subprocess.run(["dpkg-deb", "-x", PACKAGE, cls.root], check=True)
    cls.share = cls.root / "usr/share"
    for page in (cls.share / "man/man1").iterdir():
      subprocess.run(["gunzip", page], check=True)

  def program(self, name, *options, **more):
    return run(self.root / "usr/bin" / name, *options,
               env={**os.environ, "QT_QPA_PLATFORM": "offscreen"}, **more).stdout

  def manual(self, name):
    page = self.share / f"man/man1/{name}.1"
    return run("man", "--warnings", "-l", page, env={**os.environ, "LC_ALL": "C", "MANWIDTH": "200"})

  def test_checkers_find_nothing(self):
    user = ["--allow-root"] if os.getuid() == 0 else []
    metainfo = list((self.share / "metainfo").iterdir())
    for command in (
        ["lintian", *user, "--fail-on", "error,warning", PACKAGE],
        ["desktop-file-validate", *(self.share / "applications").iterdir()],
        ["appstreamcli", "validate", "--no-net", *metainfo],
        ["appstreamcli", "validate-tree", "--no-net", self.root],
        ["mandoc", "-T", "lint", "-W", "style", *(self.share / "man/man1").iterdir()]):
      with self.subTest(command[0]):
        result = run(*command)
        self.assertEqual(result.returncode, 0, result.stdout)

  def test_one_version_everywhere(self):
    header = (SOURCES / "core/version.h").read_text()
    version = re.search(r'kVersion = "([0-9.]+)"', header)[1]
    changes = run("zcat", self.share / "doc/homewarden/changelog.gz").stdout
    metainfo = next((self.share / "metainfo").iterdir()).read_text()
    self.assertEqual(run("dpkg-deb", "-f", PACKAGE, "Version").stdout.strip(), version)
    self.assertEqual(re.search(r"\((.*?)\)", changes)[1], version, "packaging/changelog")
    self.assertEqual(re.search(r'<release version="(.*?)"', metainfo)[1], version, "metainfo")
    self.assertIn(f"homewarden {version}", self.program("homewarden", "--version"))
    for name in PROGRAMS:
      self.assertIn(f"Homewarden {version}", self.manual(name).stdout)

  def test_the_service_links_nothing_of_a_face(self):
    linked = run("ldd", self.root / "usr/bin/wardengine").stdout
    self.assertEqual(set(re.findall(r"libQt\w+", linked)), {"libQt6Core", "libQt6SerialPort"})
    self.assertNotRegex(linked, r"lib(X11|xcb|wayland|GL|dbus|asound|pulse)|not found")

  def test_manual_and_completions_know_the_options_that_there_are(self):
    self.assertEqual(sorted(PROGRAMS), sorted(file.name for file in
                                              (self.root / "usr/bin").iterdir()))
    for name in PROGRAMS:
      options = set(re.findall(r"--[a-z][a-z-]*", self.program(name, "--help")))
      described = set(re.findall(r"^ +(?:-\w, )?(--[a-z-]+)", self.manual(name).stdout, re.M))
      self.assertEqual(described, options, f"manual page of {name}")
      completions = {
          "bash": (f"bash-completion/completions/{name}", r"--[a-z][a-z-]*"),
          "zsh": (f"zsh/vendor-completions/_{name}", r"--[a-z][a-z-]*(?=[\[=}])"),
          "fish": (f"fish/vendor_completions.d/{name}.fish", r"(?<=-l )[a-z-]+")}
      for shell, (file, pattern) in completions.items():
        found = re.findall(pattern, (self.share / file).read_text())
        self.assertEqual({"--" + option.removeprefix("--") for option in found}, options,
                         f"completion of {name} in {shell}")

  def test_each_shell_completes_every_fault(self):
    listing = self.program("cm11-emulator", input="fault list\n")
    faults = re.findall(r"^([a-z-]+): .*happened", listing, re.M)
    self.assertGreater(len(faults), 10)
    typed = "cm11-emulator --fault "
    bash = run("bash", "-c", f"source {self.share}/bash-completion/completions/cm11-emulator;"
               "COMP_WORDS=(cm11-emulator --fault ''); COMP_CWORD=2; _cm11_emulator;"
               "printf '%s\n' ${COMPREPLY[@]}")
    fish = run("fish", "-c", f"source {self.share}/fish/vendor_completions.d/cm11-emulator.fish;"
               f"complete -C '{typed}'", env={**os.environ, "HOME": str(self.root)})
    zsh = run("zsh", "-f", "-c", ZSH, "zsh", self.share / "zsh/vendor-completions", self.root, typed)
    for shell, result in (("bash", bash), ("fish", fish), ("zsh", zsh)):
      found = re.findall(r"[a-z][a-z-]+", result.stdout)
      self.assertEqual([fault for fault in faults if fault not in found], [], f"{shell}: {found}")


if __name__ == "__main__":
  unittest.main()
