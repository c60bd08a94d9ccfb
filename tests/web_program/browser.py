"""A browser at a house of five rooms."""

import os
import shutil
import tempfile
import unittest

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By

from house import House, namespaces_are_allowed, wait_until
from store import MACHINE_KEY, TYPE_KEY, write_values

ROOMS = """Living Room~~~
Küche~~~
Bedroom~~~
Study~~~
Garden~~~
Living Room~Ceiling Light~A~1
Living Room~Reading Lamp~A~2
Living Room~Table Lamp~A~3
Living Room~Radio~A~4
Living Room~Ceiling Fan~A~5
Living Room~Christmas Tree~A~6
Living Room~Floor Lamp~A~7
Living Room~Television~A~8
Küche~Café Lampe~B~1
Küche~Spülmaschine~B~2
Garden~Fountain~C~1
"""
TYPES = {"LivingRoomCeilingLight": "bulb", "LivingRoomReadingLamp": "bulb2",
         "LivingRoomTableLamp": "bulb2", "LivingRoomRadio": "radio", "LivingRoomCeilingFan": "fan",
         "LivingRoomFloorLamp": "bulb2", "KücheCaféLampe": "bulb"}


class FurnishedHouse(House):
  rooms = ROOMS

  def furnish(self):
    (self.folder / "rmlst.hwd").write_bytes(self.rooms.replace("\n", "\r\n").encode("cp1252"))
    write_values(self.folder, "machine", MACHINE_KEY, {"port": 2})
    write_values(self.folder, "user", TYPE_KEY, TYPES)


def start_browser(folder):
  options = webdriver.ChromeOptions()
  options.binary_location = "/usr/bin/chromium"
  arguments = ["--headless=new", "--disable-background-networking", "--disable-component-update",
               "--no-first-run", "--disable-sync", "--hide-scrollbars", "--disable-gpu",
               "--disable-dev-shm-usage", "--user-data-dir=" + folder,
               # Names instead of addresses; everything else stays unknown.
               "--host-resolver-rules=MAP house.lan 127.0.0.1, MAP evil.example 127.0.0.1, "
               "MAP * ~NOTFOUND, EXCLUDE 127.0.0.1, EXCLUDE localhost"]
  # It talks to this machine alone. Its sandbox is made of namespaces and refuses root.
  if os.geteuid() == 0 or not namespaces_are_allowed():
    arguments.append("--no-sandbox")
  for argument in arguments:
    options.add_argument(argument)
  options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
  # What it keeps besides the profile stays in there too.
  environment = {**os.environ, "HOME": folder, "XDG_CONFIG_HOME": folder, "XDG_CACHE_HOME": folder}
  service = Service("/usr/bin/chromedriver", env=environment)
  return webdriver.Chrome(service=service, options=options)


def wait_live(test, state="connected"):
  """Until the page's script has read the house, or whatever else has become of that."""
  test.wait_for(f"body[data-live={state}]")


class BrowserTest(unittest.TestCase):
  """One house and one browser for the tests of a class."""

  house_kind = FurnishedHouse

  @classmethod
  def setUpClass(cls):
    cls.house = cls.house_kind()
    cls.addClassCleanup(cls.house.close)
    profile = tempfile.mkdtemp()
    cls.addClassCleanup(shutil.rmtree, profile, ignore_errors=True)
    cls.browser = start_browser(profile)
    cls.addClassCleanup(cls.browser.quit)
    cls.browser.set_page_load_timeout(60)

  def open(self, page, size=(1280, 800), host="127.0.0.1"):
    self.resize(size)
    self.browser.get(f"http://{host}:{self.house.port}/{page}")

  def resize(self, size):
    phone = size[0] < 500
    self.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
        "width": size[0], "height": size[1], "deviceScaleFactor": 1, "mobile": phone})
    self.browser.execute_cdp_cmd("Emulation.setTouchEmulationEnabled", {"enabled": phone})

  def js(self, script, *arguments):
    return self.browser.execute_script(script, *arguments)

  def find(self, css):
    return self.browser.find_element(By.CSS_SELECTOR, css)

  def click_link(self, text):
    self.browser.find_element(By.LINK_TEXT, text).click()

  def press(self, *keys):
    ActionChains(self.browser).send_keys(*keys).perform()

  def address(self):
    return self.js("return decodeURI(location.pathname + location.search"
                   ".replace(/%FC/g, 'ü').replace(/%E9/g, 'é'))")

  def wait(self, condition, what):
    wait_until(condition, what, 20)

  def wait_for(self, css):
    self.wait(lambda: self.browser.find_elements(By.CSS_SELECTOR, css), css)

  def shoot(self, name):
    """Keeps a picture of the page when somebody asked for it."""
    folder = os.environ.get("HOMEWARDEN_SCREENSHOTS")
    if folder:
      self.browser.save_screenshot(os.path.join(folder, name + ".png"))
