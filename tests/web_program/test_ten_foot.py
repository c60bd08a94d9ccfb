"""The pages for televisions, with the keys of a remote control."""

from selenium.webdriver.common.keys import Keys

from browser import BrowserTest


class TenFootPages(BrowserTest):
  def focus(self):
    return self.js("return document.activeElement.id")

  def go(self, expected, *keys):
    self.press(*keys)
    self.assertEqual(self.focus(), expected)

  def test_arrow_keys_and_enter_do_it_all(self):
    self.open("", (1920, 1080))
    self.wait(lambda: self.focus() == "option1", "the first focus")
    self.go("option2", Keys.DOWN)
    self.go("option5", *[Keys.DOWN] * 5)  # the last room
    self.go("option1", *[Keys.UP] * 5)
    self.press(Keys.ENTER)
    self.wait(lambda: self.address() == "/wmcindex.html?loadroomLivingRoom", "the room")
    self.wait(lambda: self.focus() == "option1", "the focus in the room")
    self.go("module3", Keys.RIGHT, Keys.RIGHT, Keys.RIGHT)
    self.press(Keys.ENTER)
    self.wait_for("#module3[data-state=on]")
    self.assertEqual(self.house.switched(), ["A3 On"])
    self.assertEqual(self.address(), "/wmcindex.html?loadroomLivingRoom")
    self.wait(lambda: self.focus() == "module3", "the focus on what was pressed")
    self.shoot("web-ten-foot")

    self.browser.refresh()
    self.wait(lambda: self.focus() == "module3", "the focus as MCFocusStart says")
    self.assertEqual(self.js("return document.body.getAttribute('MCFocusStart')"), "module3")
    self.assertEqual(self.house.switched(), ["A3 On"], "reloading switched")
    reached = self.js("return [...document.querySelectorAll('[role=link]')].map((e) => e.id)")
    self.assertEqual(reached, [f"option{n}" for n in range(1, 6)] +
                     [f"module{n}" for n in range(1, 9)])
    self.press(Keys.ENTER)
    self.wait_for("#module3[data-state=off]")
    self.assertEqual(self.house.switched(), ["A3 On", "A3 Off"])
