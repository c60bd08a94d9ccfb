"""The pages with the house read live, two of them open, on an emulated interface."""

import re
import time
import urllib.request

from browser import BrowserTest
from live_house import ODD, LiveHouse

PILLS = "return [...document.querySelectorAll('main b > a')].map((a) => a.dataset.pill)"
# Each lamp that is on a page, by its name, pressed in turn.
TAP = """
const [names, done] = arguments;
const link = (name) => [...document.querySelectorAll("main b > a")].find(
    (a) => a.textContent === name);
names.forEach((name, i) => setTimeout(() => {
  link(name).click();
  if (i === names.length - 1) done(names.map((one) => link(one).dataset.pill));
}, 120 * i));
"""


class LivePages(BrowserTest):
  house_kind = LiveHouse

  @classmethod
  def setUpClass(cls):
    super().setUpClass()
    cls.browser.set_script_timeout(30)
    cls.windows = [cls.browser.current_window_handle]
    cls.browser.switch_to.new_window("window")
    cls.windows.append(cls.browser.current_window_handle)

  def setUp(self):
    self.begin = len(self.house.switched("ABC"))

  def switched(self):
    return self.house.switched("ABC")[self.begin:]

  def on(self, window, room="LivingRoom"):
    self.browser.switch_to.window(self.windows[window])
    self.open("index.html" + (f"?loadroom{room}" if room else ""))
    self.wait(lambda: self.js("return document.body.dataset.live") == "connected", "the house")

  def both(self, condition, what):
    for window in self.windows:
      self.browser.switch_to.window(window)
      self.wait(condition, what)

  def pill(self, name):
    return self.js("return [...document.querySelectorAll('main b > a')].find("
                   "(a) => a.textContent === arguments[0]).dataset.pill", name)

  def cut_off(self, is_cut_off):
    self.browser.execute_cdp_cmd("Network.enable", {})
    speed = 0 if is_cut_off else -1
    self.browser.execute_cdp_cmd("Network.emulateNetworkConditions", {
        "offline": is_cut_off, "latency": 0, "downloadThroughput": speed,
        "uploadThroughput": speed})

  def spoken(self):
    return self.find("#spoken").get_attribute("textContent")

  def banner(self):
    return self.find("#banner").text

  def test_ten_taps_in_two_seconds_are_ten_commands_in_order(self):
    for window in (0, 1):
      self.on(window)
    names = [f"Lamp {n}" for n in (3, 1, 2, 10, 9, 11, 5, 6, 8, 4)]
    shown = self.browser.execute_async_script(TAP, names)
    for words in shown:
      self.assertIn(words, ("Waiting: on", "Turning on", "On"))
    self.wait(lambda: len(self.switched()) >= 10, "ten commands")
    self.both(lambda: self.js(PILLS).count("On") == 10, "ten lamps on")
    self.assertEqual(self.switched(), [("A" + name.split()[1], "On") for name in names])
    self.wait(lambda: self.spoken() == "Lamp 4 on", "what was pressed last, said")
    self.assertEqual(self.find("h1 ~ .summary").text, "10 of 11 on")
    self.assertEqual(self.find("main b > a").get_attribute("aria-checked"), "true")

  def test_both_pages_follow_wall_switch_macro_event_and_links(self):
    self.on(0, "Hall")
    self.on(1, "")
    self.house.type("remote C1 on")  # a macro follows
    chips = lambda: [chip.text for chip in self.browser.find_elements("css selector", ".chip b")]
    self.wait(lambda: {"Lamp 1", "Fan"} <= set(chips()), "what is on")
    self.assertRegex(self.find("h1").text, r"^\d+ devices are on$")
    self.assertIn("All 2 on", self.find(".tiles").text)
    self.assertEqual(self.find("nav .badge:not([hidden])").tag_name, "span")
    self.browser.switch_to.window(self.windows[0])
    self.wait(lambda: self.js(PILLS) == ["On", "On"], "the wall switch and its macro")
    self.house.type("remote C1 off")
    self.wait(lambda: self.js(PILLS)[0] == "Off", "the wall switch")
    self.house.write_events([("B1", self.house.minute() + 2)])
    self.open("index.html?loadroomK%FCche")
    self.wait(lambda: self.js(PILLS)[0] == "On", "the event")
    urllib.request.urlopen(f"http://127.0.0.1:{self.house.port}/index.html"
                           "?B~1~K%FCcheLamp1~turnoff~K%FCche", timeout=30).close()
    self.wait(lambda: self.js(PILLS)[0] == "Off", "the page without a script")

  def test_a_slider_sets_the_level_and_odd_names_are_switched(self):
    self.on(0, "K%C3%BCche")
    self.assertEqual(self.find("h1").text, "Küche")
    for name, address in zip(ODD, ("B2", "B3")):
      self.browser.execute_async_script(TAP, [name])
      self.wait(lambda: self.pill(name) == "On", name)
      self.assertEqual(self.switched()[-1], (address, "On"))
    slider = self.find("main li:nth-of-type(2) input[type=range]")
    said = len(self.house.said)
    slider.send_keys(*["\ue012"] * 12)  # from 100 to 40, by keys
    self.wait_for("main li:nth-of-type(2)[data-phase=recorded] [data-pill='40\u00a0%']")
    self.switched()
    self.assertEqual(slider.get_attribute("aria-valuetext"), "40 percent")
    dims = [line for _, line in self.house.said[said:] if "Dim" in line]
    self.assertEqual(len(dims), 1, "each key sent a level of its own")
    self.assertEqual(self.find("main li:nth-of-type(1) b > a").get_attribute("aria-checked"),
                     "false", "the lamp of the same name, or another, was switched")

  def test_what_was_not_sent_stays_until_something_else_has_switched_the_device(self):
    self.on(0, "K%C3%BCche")
    name, was = ODD[1], self.pill(ODD[1])
    self.browser.execute_async_script(TAP, [name])  # on its way while the next one fails
    self.cut_off(True)
    self.addCleanup(self.cut_off, False)
    self.browser.execute_async_script(TAP, [name])
    self.wait(lambda: self.pill(name) == "Not sent", "not sent")
    self.cut_off(False)
    self.wait(lambda: len(self.switched()) == 1 and not self.banner(), "the first one")
    time.sleep(1)
    for _ in range(2):
      self.assertEqual(self.pill(name), "Not sent")
      self.browser.refresh()
      self.wait_for("[data-live=connected] main [data-pill]")
    now = "Off" if was == "Off" else "On"
    self.house.type("remote B3 " + now.lower())
    self.wait(lambda: self.pill(name) == now, "the wall switch")
    self.browser.refresh()
    self.wait_for("[data-live=connected] main [data-pill]")
    self.assertEqual(self.pill(name), now)

  def test_back_and_forth_keep_the_page_and_its_place(self):
    self.on(0, "")
    self.js("window.isTheSame = true")
    self.find(".tile").click()
    self.wait(lambda: self.find("h1").text == "Living Room", "the room")
    self.assertEqual(len(self.js(PILLS)), 11)
    self.js("window.scrollTo(0, 100)")
    self.wait(lambda: self.js("return (history.state || {}).top") == 100, "the place")
    self.find("nav a[href$=Hall]").click()
    self.assertEqual(self.find("h1").text, "Hall")
    self.browser.back()
    self.wait(lambda: self.find("h1").text == "Living Room", "the room before")
    self.assertEqual(self.js("return [scrollY, window.isTheSame]"), [100, True])
    self.on(0, "Attic")  # no room any more
    self.wait(lambda: self.address() == "/index.html" and self.find("#home").is_displayed(), "home")

  def test_without_the_server_the_page_says_so_and_comes_back(self):
    self.on(0, "Hall")
    self.wait(lambda: self.js("return navigator.serviceWorker.controller !== null"), "the worker")
    self.wait(lambda: self.js("return localStorage.length"), "what is kept")
    self.house.kill()
    self.wait(self.banner, "the banner")
    self.assertRegex(self.banner(), r"^No connection\. What is shown is from \d\d:\d\d\. Trying")
    before = self.switched()
    self.browser.execute_async_script(TAP, ["Lamp 1"])
    self.wait(lambda: self.pill("Lamp 1") == "Not sent", "not sent")
    self.wait(lambda: "Lamp 1 not sent: o" in self.spoken(), "not sent, said")
    # Another page comes from what is kept; a switch never does.
    self.browser.switch_to.window(self.windows[1])
    self.browser.get(f"http://127.0.0.1:{self.house.port}/index.html?loadroomHall")
    self.wait(lambda: self.banner().startswith("No connection. What is shown is from"), "the shell")
    self.assertEqual((self.find("h1").text, len(self.js(PILLS))), ("Hall", 2))
    self.assertEqual(self.browser.execute_async_script(
        "fetch('index.html?C~2~HallFan~turnon~Hall').then(() => arguments[0]('answered'), "
        "() => arguments[0]('not answered'))"), "not answered")
    self.browser.switch_to.window(self.windows[0])
    self.browser.refresh()
    self.wait(lambda: self.pill("Lamp 1") == "Not sent", "not sent, after loading the page anew")
    self.js("window.isTheSame = true")
    self.house.begin()
    self.both(lambda: not self.banner(), "the house again")
    self.browser.switch_to.window(self.windows[0])
    self.assertTrue(self.js("return window.isTheSame"))
    self.assertEqual(self.switched(), before, "sent by itself")
    self.assertEqual(self.pill("Lamp 1"), "Not sent")
    self.find(".retry").click()
    self.wait(lambda: self.pill("Lamp 1") in ("On", "Off"), "sent by Retry")
    self.assertEqual(len(self.switched()), len(before) + 1)

  def test_a_page_that_slept_is_right_again(self):
    self.browser.switch_to.new_window("window")  # it counts as hidden for good
    self.addCleanup(lambda: (self.browser.close(), self.browser.switch_to.window(self.windows[0])))
    self.open("index.html?loadroomHall")
    self.wait_for("[data-live=connected] main [data-pill]")
    was = self.pill("Fan")
    self.cut_off(True)
    self.browser.execute_cdp_cmd("Page.setWebLifecycleState", {"state": "frozen"})
    self.house.type("remote C2 " + ("off" if was == "On" else "on"))
    time.sleep(2)
    self.browser.execute_cdp_cmd("Page.setWebLifecycleState", {"state": "active"})
    self.cut_off(False)
    self.wait(lambda: self.pill("Fan") != was and not self.banner(), "what happened meanwhile")

  def test_without_scripts_all_is_links_and_the_page_says_what_is_missing(self):
    self.browser.switch_to.window(self.windows[0])
    self.browser.execute_cdp_cmd("Emulation.setScriptExecutionDisabled", {"value": True})
    self.addCleanup(self.browser.execute_cdp_cmd, "Emulation.setScriptExecutionDisabled",
                    {"value": False})
    self.open("index.html?loadroomHall")
    shown = self.find("main").text
    self.assertNotIn("More devices", shown)
    fan = self.browser.find_element("link text", "Fan")
    word = re.search("turnon|turnoff", fan.get_attribute("href")).group()
    fan.click()
    self.wait(lambda: self.switched() == [("C2", "On" if word == "turnon" else "Off")], "the link")
    self.open("index.html?loadroomLivingRoom")
    self.assertIn("More devices are shown with scripts switched on.", self.find("main").text)
