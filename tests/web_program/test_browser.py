"""The pages for phones and desktops, in a browser."""

from browser import BrowserTest, FurnishedHouse

CARD = "main > ul > li:nth-of-type(%d)"

# What is less readable than 4.5 to 1, with its contrast.
PALE = """
function rgb(text) { return text.match(/[\\d.]+/g).map(Number); }
function light(text) {
  const [r, g, b] = rgb(text).map((v) => { v /= 255;
    return v <= 0.03928 ? v / 12.92 : ((v + 0.055) / 1.055) ** 2.4; });
  return 0.2126 * r + 0.7152 * g + 0.0722 * b;
}
function ground(element) {
  for (; element; element = element.parentElement) {
    const colour = getComputedStyle(element).backgroundColor;
    if ((rgb(colour)[3] ?? 1) === 1) return colour;
  }
  return "rgb(255, 255, 255)";
}
return [...document.querySelectorAll("h1, nav a font, main b a font, header a, header p")]
  .filter((e) => e.getClientRects().length).map((e) => {
    const a = light(getComputedStyle(e).color), b = light(ground(e));
    return [e.textContent, (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05)];
  }).filter(([, contrast]) => contrast < 4.5);
"""
SMALL = """
return [...document.querySelectorAll("nav li a, main li > font, header a")].filter((e) => {
  const r = e.getBoundingClientRect();
  return r.height < 44 || r.width < 44;
}).map((e) => e.textContent);
"""
EMPTY = """
return [...document.querySelectorAll("li")]
  .filter((e) => !e.querySelector("a") && e.getClientRects().length).length;
"""


class BrowserPages(BrowserTest):
  def on(self, card):
    return (self.find(CARD % card).get_attribute("data-state") == "on" and
            "on.gif" in self.find(CARD % card + " img").get_attribute("src"))

  def switch(self, press, card, to, sent):
    before = len(self.house.switched())
    press()
    self.wait(lambda: self.on(card) == to, "the new state")
    self.wait(lambda: len(self.house.switched()) > before, "the power line")
    self.assertEqual(self.house.switched()[before:], [sent])

  def test_a_press_switches_once_and_reloading_does_not(self):
    self.open("index.html", (390, 844))
    self.click_link("Küche")
    self.wait_for(CARD % 1 + "[data-state=off]")
    self.assertEqual(self.browser.title, "Küche \u2013 Homewarden")
    self.assertEqual(self.find("h1").text, "Küche")
    self.assertIn("Café Lampe", self.find(CARD % 1).text)

    self.switch(self.find(CARD % 1 + " img").click, 1, True, "B1 On")
    self.assertEqual(self.address(), "/index.html?loadroomKüche")
    self.browser.refresh()
    self.wait_for(CARD % 1 + "[data-state=on]")
    self.switch(lambda: self.click_link("Spülmaschine"), 2, True, "B2 On")
    sent = self.house.switched()
    self.browser.back()
    self.wait(lambda: self.address() == "/index.html", "the page before")
    self.browser.forward()
    self.wait_for(CARD % 2 + "[data-state=on]")
    self.assertEqual(self.house.switched(), sent, "going back and forth or reloading switched")
    self.switch(self.find(CARD % 1 + " img").click, 1, False, "B1 Off")

  def test_pressing_twice_switches_once(self):
    self.open("index.html?loadroomGarden")
    twice = "const a = document.querySelector('main li b > a'); a.click(); a.click();"
    self.switch(lambda: self.js(twice), 1, True, "C1 On")

  def test_every_width_is_readable(self):
    self.open("index.html?loadroomLivingRoom")
    for card, sent in [(1, "A1 On"), (4, "A4 On"), (6, "A6 On")]:
      if not self.on(card):
        self.switch(self.find(CARD % card + " img").click, card, True, sent)
    for name, size in [("phone", (390, 844)), ("desktop", (1280, 800)), ("wide", (1920, 1080))]:
      with self.subTest(name):
        self.open("index.html?loadroomLivingRoom", size)
        self.wait_for(CARD % 8 + "[data-state]")
        self.shoot("web-" + name)
        width = self.js("return [document.documentElement.scrollWidth, innerWidth]")
        self.assertLessEqual(*width, "the page scrolls sideways")
        self.assertEqual(self.js(PALE), [], "hard to read")
        self.assertEqual(self.js(SMALL), [], "hard to hit")
        self.assertEqual(self.js(EMPTY), 0, "places without a device or room can be seen")
        self.assertNotRegex(self.find("body").text, r"<?(dev|room|url|mrl)\d")

  def test_nothing_is_missing_or_forbidden(self):
    for page in ["index.html?loadroomLivingRoom", "wmcindex.html?loadroomLivingRoom"]:
      self.browser.get_log("browser")
      self.open(page)
      self.wait_for("[data-state]")
      self.assertEqual(self.js("return [...document.images].filter((i) => !i.naturalWidth)"), [])
      self.assertEqual(self.browser.get_log("browser"), [])


class OwnTemplateHouse(FurnishedHouse):
  """With a template of a person's own: a script and a style in it, and what must not run."""

  def furnish(self):
    super().furnish()
    self.html.mkdir(exist_ok=True)
    for end in ("\n", "\r\n"):
      lines = ("<!doctype html>", "<style>", "h1 { color: rgb(1, 2, 3); }", "</style>",
               "<h1 onclick=\"document.title = 'attribute'\" style=\"width: 7px\"><room></h1>",
               "<script>", "// Küche", "document.title = 'Grüße';", "</script>",
               "<script>document.body.dataset.filled = '<room1>';</script>", "")
      name = "index.html" if end == "\n" else "wmcindex.html"
      (self.html / name).write_bytes(end.join(lines).encode("cp1252"))


class OwnTemplate(BrowserTest):
  house_kind = OwnTemplateHouse

  def test_its_own_script_and_style_work_and_nothing_else_does(self):
    for page in ("index.html", "wmcindex.html"):
      with self.subTest(page):
        self.open(page + "?loadroomGarden")
        self.assertEqual(self.browser.title, "Grüße")
        self.assertEqual(self.js("return getComputedStyle(document.querySelector('h1')).color"),
                         "rgb(1, 2, 3)")
        self.assertNotEqual(self.js("return document.querySelector('h1').style.width"), "7px")
        self.find("h1").click()
        self.assertEqual(self.browser.title, "Grüße", "an attribute ran")
        self.assertIsNone(self.js("return document.body.dataset.filled ?? null"),
                          "a script ran into which a name was put")


class HouseWithABadLine(FurnishedHouse):
  rooms = FurnishedHouse.rooms + "Garden~Fount\nGarden~Fountain beside the pond~C~2\n"


CUT_OFF = """return Array.from(document.querySelectorAll(".imcl1 b > a"))
  .filter((link) => link.offsetHeight < link.scrollHeight ||
      link.querySelector("font").offsetHeight < link.querySelector("font").scrollHeight)
  .map((link) => link.textContent)"""


class Foot(BrowserTest):
  house_kind = HouseWithABadLine

  def test_what_is_wrong_can_be_read_on_every_page_and_hides_nothing(self):
    for name, page, size in [("phone", "index.html", (390, 844)),
                             ("desktop", "index.html", (1280, 800)),
                             ("ten-foot", "wmcindex.html", (1920, 1080))]:
      with self.subTest(name):
        self.open(page + "?loadroomLivingRoom", size)
        foot = self.find("footer")
        self.assertIn("Line 17 of rmlst.hwd cannot be understood and is left out. The", foot.text)
        self.js("arguments[0].scrollIntoView()", foot)
        self.shoot("web-notice-" + name)
        self.assertEqual(self.js(PALE), [], "hard to read")
        bottom = self.js("return document.querySelector('main').getBoundingClientRect().bottom")
        self.assertLessEqual(bottom, foot.rect["y"] - self.js("return scrollY") + 1, "hides devices")
    self.open("wmcindex.html?loadroomGarden", (1280, 720))
    self.assertEqual(self.js(CUT_OFF), [], "cut off")


ROOM = 'Anna\'s "Den" & 50% #1 + <é> &copy %41'
DEVICE = '"Lampe" <b>&lt #2 50% +é %7E'


class AwkwardHouse(FurnishedHouse):
  rooms = f"{ROOM}~~~\n{ROOM}~{DEVICE}~D~1\n"


class AwkwardNames(BrowserTest):
  """A name must not end its link, nor be taken for markup or for an encoded letter."""
  house_kind = AwkwardHouse

  def press(self, element, card, to, sent):
    before = len(self.house.switched())
    element.click()
    self.wait_for(f"{card}[data-state={to}]")
    self.wait(lambda: len(self.house.switched()) > before, "the power line")
    self.assertEqual(self.house.switched()[before:], [sent])

  def test_both_families_lead_to_the_room_and_switch_its_device(self):
    for page, card, link in (("index.html", CARD % 1, " b a"), ("wmcindex.html", "#module1", " .press")):
      with self.subTest(page):
        self.open(page)
        self.find("nav a[href*=loadroom]").click()
        self.wait_for("[data-live=connected] " + card + link)
        self.assertEqual(self.find("h1").text, ROOM)
        self.assertEqual(self.find(card + " b").text, DEVICE)
        self.press(self.find(card + " img"), card, "on", "D1 On")
        self.press(self.find(card + link), card, "off", "D1 Off")
        self.assertEqual(self.find("h1").text, ROOM)
