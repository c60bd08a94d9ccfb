"""The template of one's own that the guide shows, as it stands there."""

import pathlib
import re

from browser import BrowserTest
from house import curl

GUIDE = pathlib.Path(__file__).parents[2] / "docs" / "web-pages.md"


class OwnTemplate(BrowserTest):
  def test_it_switches_and_follows_the_house(self):
    template = re.search(r"```html\n(.*?)```", GUIDE.read_text(), re.S).group(1)
    (self.house.html / "index.html").write_text(template, "cp1252", newline="\r\n")
    self.open("index.html?loadroomLivingRoom")
    lamp = "//button[starts-with(., '%s')]"
    button = lambda name: self.browser.find_element("xpath", lamp % name)
    self.wait(lambda: self.browser.find_elements("xpath", lamp % "Radio"), "the script")
    self.assertEqual(button("Radio").value_of_css_property("padding"), "24px", "style was refused")
    button("Radio").click()
    self.wait(lambda: button("Radio").get_attribute("aria-pressed") == "true", "the stream")
    self.assertEqual(self.house.switched(), ["A4 On"])
    curl(self.house, "/index.html?C~1~GardenFountain~turnon~Garden")
    self.wait(lambda: button("Fountain").get_attribute("aria-pressed") == "true", "the stream")
    errors = [line for line in self.browser.get_log("browser") if "favicon" not in line["message"]]
    self.assertEqual(errors, [])
