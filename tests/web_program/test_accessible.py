"""What axe-core finds on the pages, in both schemes, with the house shown live."""

from browser import BrowserTest, FurnishedHouse, wait_live
from node_packages import installed

CHECK = """
const done = arguments[arguments.length - 1];
axe.run(document, { resultTypes: ["violations"] }).then(({ passes, violations }) => done(
  [passes.length ? [] : ["nothing was looked at"], violations
    .filter((rule) => ["serious", "critical"].includes(rule.impact))
    .map((rule) => rule.id + ": " + rule.nodes.map((node) => node.html + " " +
        node.failureSummary).join("\\n"))].flat()), (error) => done([String(error)]));
"""


class CrowdedHouse(FurnishedHouse):
  """More devices than a page has places, one without an address, a notice."""
  rooms = (FurnishedHouse.rooms + "Garden~Fount\nGarden~Lost Lamp~Q~99\n" +
           "".join(f"Study~Lamp {n}~D~{n}\n" for n in range(1, 14)))


class EmptyHouse(FurnishedHouse):
  rooms = ""


class PagesForEverybody(BrowserTest):
  def check(self, name):
    """In both schemes, as the page is now."""
    self.js((installed() / "axe-core" / "axe.min.js").read_text())
    for scheme in "light", "dark":
      self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"features": [
          {"name": "prefers-color-scheme", "value": scheme},
          {"name": "prefers-reduced-motion", "value": "reduce"}]})  # colours at rest
      with self.subTest(name, scheme=scheme):
        self.shoot(f"axe-{name}-{scheme}")
        self.assertEqual(self.browser.execute_async_script(CHECK), [])

  def look(self, name, page, size, host="127.0.0.1"):
    self.open(page, size, host)
    if host == "127.0.0.1":
      wait_live(self)
    self.check(name)


class EveryPage(PagesForEverybody):
  house_kind = CrowdedHouse
  FAMILIES = [("phone", "index.html", (390, 844)), ("desktop", "index.html", (1280, 800)),
              ("ten-foot", "wmcindex.html", (1920, 1080))]

  def test_a_home_page_a_room_and_a_refusal(self):
    for kind, page, size in self.FAMILIES:
      self.look(kind + "-home", page + "#home", size)
      for room in "LivingRoom", "Study", "Garden", "Bedroom":
        self.look(f"{kind}-{room}", f"{page}?loadroom{room}", size)
      press = "?A~1~LivingRoomCeilingLight~turnon~LivingRoom~0"
      self.browser.execute_cdp_cmd("Network.clearBrowserCookies", {})  # as one that was never here
      self.look(kind + "-refusal", page + press, size, host="house.lan")
      self.assertEqual(self.find("h1").text, "Nothing was switched")

  def test_a_house_that_is_away_and_a_press_that_was_not_sent(self):
    for kind, page, size in self.FAMILIES:
      self.open(page + "?loadroomLivingRoom", size)
      wait_live(self)
      self.house.kill()
      wait_live(self, "lost")
      self.js("document.querySelector('main [role=switch]').click()")
      self.wait(lambda: "ot sent" in self.find("main").text, "the press that failed")
      self.check(kind + "-lost")
      self.house.start()
      wait_live(self)


class NoRooms(PagesForEverybody):
  house_kind = EmptyHouse

  def test_both_families(self):
    self.look("empty", "index.html", (1280, 800))
    self.look("ten-foot-empty", "wmcindex.html", (1920, 1080))
