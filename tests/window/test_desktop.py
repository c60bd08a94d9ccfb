"""Hiding where an icon brings the window back, and the second start of the program."""

import time
import unittest

from desktop import PROGRAM, Desktop, wait_for


class DesktopTest(Desktop):

  def test_minimising_hides_where_an_icon_brings_the_window_back(self):
    program = self.open_program()
    self.tell("windowsize", "900", "600")
    self.tell("windowmove", "211", "107")
    wait_for("another place", lambda: self.place() == (211, 107, 900, 600))

    self.tell("windowminimize")
    wait_for("an icon of the window manager", lambda: self.state() == "Iconic")
    self.tell("windowactivate")
    wait_for("the window", self.is_painted)

    self.start("trayer", "--edge", "bottom", "--width", "20")  # the panel comes late
    wait_for("the icon", self.icon)
    time.sleep(0.5)
    for _ in range(2):
      self.tell("windowminimize")
      self.check_hidden()
      self.click_icon()
      wait_for("its old place", lambda: self.place() == (211, 107, 900, 600))

    self.tell("windowminimize")
    self.check_hidden()
    self.end(program)
    self.start(PROGRAM, "--demo")
    wait_for("the icon", self.icon)
    self.check_hidden()
    self.click_icon()
    wait_for("the place that was saved", lambda: self.place() == (211, 107, 900, 600))

  def test_a_box_that_is_open_comes_back_with_the_window(self):
    self.start("trayer", "--edge", "bottom", "--width", "20")
    self.open_program()
    wait_for("the icon", self.icon)
    about = lambda: self.say("xdotool", "search", "--onlyvisible", "--name", "About Homewarden")
    for hidden in (False, True):  # what a box that is opened while the window is hidden lies behind
      if hidden:
        self.tell("windowminimize")
        self.check_hidden()
      self.say("xdotool", "mousemove", *map(str, self.icon()), "click", "3", "sleep", "0.5",
               "key", "Down", "Down", "Return")
      wait_for("the box", about)
      if not hidden:
        self.tell("windowminimize")
        self.check_hidden()
      self.click_icon()
      wait_for("the box in front", lambda: self.active() and self.active() == about().strip())
      self.say("xdotool", "key", "Return")
      wait_for("its end", lambda: not about())

  def test_a_second_start_brings_the_first_window_forward_and_ends(self):
    self.start("trayer", "--edge", "bottom", "--width", "20")
    self.open_program()
    wait_for("the icon", self.icon)
    for hide in ("windowminimize", "windowlower"):
      self.tell(hide)
      if hide == "windowminimize":
        self.check_hidden()
      self.start("xcalc", "-geometry", "1000x800+100+20")  # a person works with something else
      wait_for("the calculator", lambda: self.active_class() == "xcalc")
      second = self.start(PROGRAM, "--demo")
      wait_for("the window", lambda: self.active() == self.window())
      self.assertTrue(self.is_painted())
      self.assertEqual(second.wait(timeout=20), 0)
      self.assertEqual(self.active(), self.window())


if __name__ == "__main__":
  unittest.main()
