"""The pages for televisions, with the keys of a remote control."""

from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

from browser import BrowserTest, FurnishedHouse, wait_live
from house import curl

ROOM = "wmcindex.html?loadroomLivingRoom"


class LargeHouse(FurnishedHouse):
  rooms = ("".join(f"Room {n}~~~\n" for n in range(1, 26)) +
           "".join(f"Room 24~Lamp {n}~D~{n}\n" for n in range(1, 14)))


class TenFootTest(BrowserTest):
  def focus(self):
    return self.js("return (document.activeElement.closest('[id]') || {}).id")

  def is_level(self):
    return self.js("return document.activeElement.getAttribute('role')") == "slider"

  def go(self, expected, *keys):
    self.press(*keys)
    self.assertEqual(self.focus(), expected)

  def sent(self, *expected):
    self.wait(lambda: len(self.house.switched()) >= len(expected), "the power line")
    self.assertEqual(self.house.switched(), list(expected))


class TenFootPages(TenFootTest):
  def test_arrow_keys_and_enter_do_it_all(self):
    self.open("", (1920, 1080))
    self.wait(lambda: self.focus() == "option1", "the first focus")
    wait_live(self)
    self.go("option2", Keys.DOWN)
    self.go("option5", *[Keys.DOWN] * 5)  # the last room
    self.go("option1", *[Keys.UP] * 4)
    self.press(Keys.ENTER)
    self.wait(lambda: self.address() == "/" + ROOM, "the room")
    wait_live(self)
    self.wait(lambda: self.focus() == "option1", "the focus in the room")
    self.go("module3", Keys.RIGHT, Keys.RIGHT, Keys.RIGHT)
    self.press(Keys.ENTER)
    self.wait_for("#module3[data-state=on][data-press=recorded]")
    self.sent("A3 On")
    self.assertEqual(self.focus(), "module3")
    self.shoot("web-ten-foot")

    self.browser.refresh()
    wait_live(self)
    self.wait(lambda: self.focus() == "module3", "the focus where it was")
    self.sent("A3 On")  # reloading does not switch
    reached = self.js("return [...document.querySelectorAll('[data-stop]')]"
                      ".filter((e) => e.getClientRects().length).map((e) => e.closest('[id]').id)")
    levels = [1, 2, 3, 7]
    self.assertEqual(reached, ["home"] + [f"option{n}" for n in range(1, 6)] +
                     [f"module{n}" for n in range(1, 9) for _ in range(1 + (n in levels))])
    self.press(Keys.ENTER)
    self.wait_for("#module3[data-state=off][data-press=recorded]")
    self.sent("A3 On", "A3 Off")


class TenFootLive(TenFootTest):
  def test_left_and_right_change_the_level_and_the_focus_stays(self):
    self.open(ROOM)
    wait_live(self)
    level = lambda: self.js("return document.querySelector('#module2 .level').ariaValueNow")
    self.go("module2", Keys.RIGHT, Keys.RIGHT, Keys.DOWN)
    self.assertTrue(self.is_level())
    before = len(self.house.switched())
    self.press(*[Keys.RIGHT] * 4)
    self.assertEqual(level(), "40", "not shown at once")
    self.wait_for("#module2[data-state=on][data-press=recorded]")
    self.assertEqual(level(), "40")
    steps = self.house.switched()[before:]
    # Another client switches; this page and its focus stay.
    curl(self.house, "/index.html?A~4~LivingRoomRadio~turnon~LivingRoom")
    self.wait_for("#module4[data-state=on]")
    self.assertTrue(self.is_level() and self.focus() == "module2")
    self.press(Keys.UP)
    self.assertFalse(self.is_level())
    self.go("module7", Keys.DOWN, Keys.DOWN)
    self.go("module2", Keys.UP)
    self.assertFalse(self.is_level(), "a way through the rows is held up by a level")
    self.assertTrue(steps and all(step.startswith("A2 ") for step in steps), steps)

  def test_a_press_while_the_house_is_away_is_sent_by_enter_when_it_is_back(self):
    self.open(ROOM)
    wait_live(self)
    self.go("module5", *[Keys.RIGHT] * 5)
    self.house.kill()
    wait_live(self, "lost")
    self.assertIn("No connection", self.find(".banner").text)
    self.press(Keys.ENTER)
    self.wait_for("#module5[data-press=not_sent][data-state=off]")
    self.house.start()
    wait_live(self)
    self.wait(lambda: not self.find(".banner").is_displayed(), "the house and its interface")
    self.assertEqual(self.focus(), "module5")
    self.press(Keys.ENTER)
    self.wait_for("#module5[data-press=recorded][data-state=on]")

  def test_home_shows_what_is_on(self):
    curl(self.house, "/index.html?C~1~GardenFountain~turnon~Garden")
    self.open("wmcindex.html#home")
    wait_live(self)
    self.assertIn("Fountain", self.find("section").text)
    self.assertNotIn("Television", self.find("section").text)
    curl(self.house, "/index.html?A~8~LivingRoomTelevision~turnon~LivingRoom")
    self.wait(lambda: "Television" in self.find("section").text, "what was switched on elsewhere")

  def test_without_script_links_do_it_all(self):
    self.browser.execute_cdp_cmd("Emulation.setScriptExecutionDisabled", {"value": True})
    try:
      self.open("wmcindex.html?loadroomGarden")
      self.assertIn(self.find("#module1 b").text, "Fountain")
      before = self.find("#module1 b a").get_attribute("href")
      self.find("#module1 b a").click()
      self.wait(lambda: self.find("#module1 b a").get_attribute("href") != before, "the new state")
    finally:
      self.browser.execute_cdp_cmd("Emulation.setScriptExecutionDisabled", {"value": False})

  def test_what_is_typed_finds_its_room_and_anything_else_the_home_page(self):
    for page in "index.html", "wmcindex.html":
      with self.subTest(page):
        for room in "K%C3%BCche", "K%FCche":
          self.open(f"{page}?loadroom{room}")
          wait_live(self)
          self.wait(lambda: self.find("h1").text == "Küche", "the heading")
          self.assertIn("Küche", self.find("nav [aria-current]").text)
        unescaped = curl(self.house, f"/{page}?loadroomKüche").body
        self.assertIn(b"<h1>K\xfcche</h1>", unescaped)
        self.open(page + "?foo")
        self.assertEqual(self.address(), "/" + page)
        self.assertIn("Living Room", self.find("nav").text)
        self.open(page + "?loadroomCellar")
        self.wait(lambda: any(box.text == "Home" for box in self.browser.find_elements(
            By.CSS_SELECTOR, "nav [aria-current]")), "home")


class ManyRoomsAndDevices(TenFootTest):
  house_kind = LargeHouse

  def test_more_shows_the_others(self):
    self.open("wmcindex.html?loadroomRoom24", (1280, 720))
    wait_live(self)
    self.assertIn("Room 25", self.find("nav").text)  # the page of rooms with the one shown
    self.assertEqual(self.js("return document.activeElement.dataset.room"), "Room24")
    self.js("window.homewardenStops.focusStop(document.querySelector('#more-rooms'))")
    self.press(Keys.ENTER)
    self.assertIn("Room 18", self.find("nav").text)
    self.assertEqual(self.focus(), "more-rooms")
    self.js("window.homewardenStops.focusStop(document.querySelector('#module10 .press'))")
    self.go("more-devices", Keys.DOWN)
    self.press(Keys.ENTER)
    self.assertEqual(self.find("#module3 b").text, "Lamp 13")
    self.go("module3", Keys.UP)
    self.press(Keys.ENTER)
    self.wait_for("#module3[data-state=on][data-press=recorded]")
    self.sent("D13 On")
