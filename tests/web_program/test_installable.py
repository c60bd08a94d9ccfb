"""What a phone asks of a page before it offers to install it."""

import json
import struct
from urllib.parse import urljoin

from browser import BrowserTest, wait_live
from house import curl


class Installable(BrowserTest):
  def size_of(self, path):
    answer = curl(self.house, "/" + path)
    self.assertEqual(answer.status, 200, path)
    self.assertEqual(answer.body[:8], b"\x89PNG\r\n\x1a\n", path)
    return struct.unpack(">II", answer.body[16:24])

  def test_the_manifest_and_its_icons_are_there(self):
    for page in "index.html", "wmcindex.html":
      self.open(page, host="localhost")
      linked = self.find("link[rel=manifest]").get_attribute("href")
    answer = curl(self.house, "/" + linked.rsplit("/", 1)[1])
    self.assertIn("manifest+json", answer.headers["content-type"])
    manifest = json.loads(answer.body)
    self.assertTrue(manifest["name"] and manifest["short_name"])
    self.assertIn(manifest["display"], ("standalone", "fullscreen", "minimal-ui"))
    self.assertEqual(urljoin(linked, manifest["start_url"]), urljoin(linked, "index.html"))
    for icon in manifest["icons"]:
      wanted = tuple(map(int, icon["sizes"].split("x")))
      self.assertEqual(self.size_of(icon["src"]), wanted, icon["src"])
    any_purpose = [icon["sizes"] for icon in manifest["icons"] if "any" in icon["purpose"]]
    self.assertLessEqual({"192x192", "512x512"}, set(any_purpose))
    # The browser's own judgement of the manifest.
    self.assertEqual(self.browser.execute_cdp_cmd("Page.getAppManifest", {})["errors"], [])

  def test_the_start_page_answers_without_the_house(self):
    self.open("index.html", host="localhost")
    wait_live(self)
    self.js("return navigator.serviceWorker.ready.then(() => true)")
    self.browser.refresh()
    self.wait(lambda: self.js("return Boolean(navigator.serviceWorker.controller)"), "the worker")
    wait_live(self)
    self.house.kill()
    for page in "index.html", "wmcindex.html?loadroomLivingRoom":
      self.open(page, host="localhost")
      wait_live(self, "lost")
      self.assertIn("No connection", self.find("body").text)
      self.assertIn("Living Room", self.find("nav").text)
    self.assertEqual(len(self.browser.find_elements("css selector", "section [role=switch]")), 8)
    self.house.start()
