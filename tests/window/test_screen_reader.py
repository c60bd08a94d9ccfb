"""What a screen reader finds in the window, asked from outside over the accessibility bus."""

import pathlib
import unittest

import reader
from desktop import PROGRAM
from store import MACHINE_KEY, TYPE_KEY, write_values

ROOM = "Living Room"
LAMPS = ["Reading Lamp", *(f"Lamp {number:02}" for number in range(2, 24))]
BUTTONS = ("push button", "toggle button", "check box", "radio button", "combo box", "slider")
FIELDS = ("text", "password text", "entry", "spin button")
PANELS = {"Home": "Next events", "Events": "Events", "Macros": "New macro",
          "Web Server": "Open in browser", "Profiles": "Standard, active", ROOM: "Menu of the room"}


def setUpModule():
  reader.open_bus()
  global pyatspi
  pyatspi = reader.pyatspi


class ScreenReaderTest(reader.ReaderDesktop):

  def setUp(self):
    super().setUp()
    folder = pathlib.Path(self.home, ".local/share/homewarden-demo")
    write_values(folder, "machine", MACHINE_KEY,
                 {"port": 2, "LivingRoomReadingLamp": "True", "dimLivingRoomReadingLamp": "40"})
    write_values(folder, "user", TYPE_KEY, {"LivingRoomReadingLamp": "bulb2"})
    units = [f"{house}~{unit}" for house in "AB" for unit in range(1, 17)]
    rooms = [f"{ROOM}~~~", *(f"{ROOM}~{lamp}~{unit}" for lamp, unit in zip(LAMPS, units)),
             "Study~~~", "Study~Reading Lamp~C~1"]
    (folder / "rmlst.hwd").write_bytes("".join(line + "\r\n" for line in rooms).encode())
    self.watch(self.start(PROGRAM, "--demo"))
    self.await_one("label", "Interface connected on port 2")

  def card(self, name):
    return self.await_one("check box", f"{name}, {ROOM}")

  def open_room(self):
    self.act(self.await_named(f"{ROOM}, 1 of 23 on"))
    self.card("Lamp 02")

  def turn_to(self, page, last):
    self.act(self.await_named(page), "Toggle")
    return self.card(last)

  def test_every_card_says_its_room_state_and_level(self):
    self.open_room()
    found = {}
    for page, last in (("Devices 1 to 10", "Lamp 11"), ("Devices 11 to 20", "Lamp 21"),
                       ("Devices 21 to 23", "Reading Lamp")):
      self.turn_to(page, last)
      for one in self.shown():
        if one.name.endswith(", " + ROOM):
          below = {(child.getRoleName(), child.name) for child in one
                   if child.getState().contains(pyatspi.STATE_SHOWING)}
          found[one.name] = (one.getRoleName(), one.getState().contains(pyatspi.STATE_CHECKED),
                             one.queryValue().currentValue, below)
    menu = ("push button", "Menu")
    wanted = {f"{name}, {ROOM}": ("check box", False, 0, {menu}) for name in LAMPS}
    bar = ("slider", "Brightness of Reading Lamp")
    wanted[f"Reading Lamp, {ROOM}"] = ("check box", True, 40, {menu, bar})
    self.assertEqual(found, wanted)

  def test_a_card_is_switched_and_announced(self):
    self.open_room()
    lamp = self.turn_to("Devices 21 to 23", "Reading Lamp")
    heard = self.hear("object:state-changed:checked", "object:property-change:accessible-value",
                      "object:property-change:accessible-description")
    self.act(lamp, "Toggle")
    self.wait_to_hear(heard, "object:state-changed:checked", lamp.name, 0)
    lamp = self.card("Reading Lamp")
    self.assertEqual(lamp.queryValue().currentValue, 0)
    self.assertFalse(lamp.getState().contains(pyatspi.STATE_CHECKED))
    kinds = {kind for kind, name, _ in heard if name == lamp.name}
    self.assertIn("object:property-change:accessible-value", kinds)
    self.assertIn("object:property-change:accessible-description", kinds, "sending was kept quiet")

    del heard[:]
    slider = next(child for child in lamp if child.getRole() == pyatspi.ROLE_SLIDER)
    slider.queryValue().currentValue = 70
    self.wait_to_hear(heard, "object:state-changed:checked", lamp.name, 1)
    lamp = self.card("Reading Lamp")
    self.assertEqual(lamp.queryValue().currentValue, 70)
    self.assertTrue(lamp.getState().contains(pyatspi.STATE_CHECKED))

  def test_every_control_of_every_panel_has_a_name(self):
    nameless = []
    for panel, mark in PANELS.items():
      self.open_panel(panel)
      self.await_named(mark)
      nameless += self.nameless(panel)
    self.act(self.find("check box", "Settings"), "Toggle")
    self.await_named("Delayed start")
    self.assertEqual(nameless + self.nameless("Settings"), [])

  def nameless(self, panel):
    controls = [(one.getRoleName(), one.name, one.parent) for one in self.shown()
                if one.getRoleName() in BUTTONS + FIELDS]
    self.assertGreater(len(controls), 5, panel)
    return [(panel, role, parent.name) for role, name, parent in controls if not name.strip()]


if __name__ == "__main__":
  unittest.main()
