"""Which requests switch something."""

import socket
import unittest

from house import ROOM, House, ask, curl

BROWSER = "User-Agent: Mozilla/5.0 (X11; Linux x86_64; rv:120.0) Gecko/20100101 Firefox/120.0"
OFF = "/index.html?A~2~LivingRoomReadingLamp~turnoff~LivingRoom"
ON = OFF.replace("turnoff", "turnon")
# Judged like a switch, but with nothing to switch.
EMPTY = "/index.html?turnon"
SWITCHES = [ON, OFF, EMPTY, ON.replace("turnon", "%74urnon"), ON.replace("turnon", "TurnOn"),
            ON.replace("index", "wmcindex") + "~1", ON.replace("/index", "/%69ndex")]


def setUpModule():
  global HOUSE, HERE
  HOUSE = House(hosts="house.example.org, second.example.net")
  unittest.addModuleCleanup(HOUSE.close)
  HERE = f"localhost:{HOUSE.port}"


class SwitchingTest(unittest.TestCase):

  def setUp(self):
    self.before = len(HOUSE.switched())

  def switched(self):
    return HOUSE.switched()[self.before:]

  def test_a_foreign_page_switches_nothing(self):
    cases = [["Sec-Fetch-Site: " + site] for site in ("cross-site", "same-site", "nonsense", "")]
    for page in ("null", "http://evil.example", f"http://evil.example:{HOUSE.port}",
                 f"http://localhost:{HOUSE.port + 1}", "http://localhost", f"https://{HERE}x",
                 f"http://127.0.0.1:{HOUSE.port}", f"http://{HERE}.evil.example",
                 f"http://{HERE}@evil.example", f"http://evil.example/{HERE}", "file:///tmp/x",
                 "", "http://", HERE, f"http:/{HERE}", f"ftp://{HERE}",
                 f"http://evil.example?//{HERE}"):
      cases += [["Origin: " + page], [BROWSER, "Sec-Fetch-Site: same-origin", "Origin: " + page],
                [BROWSER, "Cookie: homewarden=1", f"Referer: {page}/index.html"]]
    # From here on a page that forbids the Referer; then with cookies of other names.
    cases += [[BROWSER], [BROWSER, "Referer:"]]
    cases += [[BROWSER, "Cookie: " + cookie] for cookie in (
        "homewarden", "Homewarden=1", "xhomewarden=1", "a=homewarden=1", "a; b=homewarden=1")]
    for headers in cases:
      for target in SWITCHES:
        answer = ask(HOUSE, target, *headers, host=HERE)
        self.assertEqual((answer.status, answer.body.count(b"\n")), (403, 1), headers)
        self.assertNotIn("set-cookie", answer.headers)
      self.assertEqual(ask(HOUSE, ROOM + "Kitchen", *headers, host=HERE).room, "Kitchen")
    self.assertIn(b"open the home page first", ask(HOUSE, EMPTY, BROWSER).body)
    # What reaches the line is in order: had one of them switched, it would stand before this.
    self.assertEqual(curl(HOUSE, ON.replace("~2~", "~1~")).room, "Living Room")
    self.assertEqual(self.switched(), ["A1 On"])

  def test_own_pages_and_typed_addresses_and_programs_switch(self):
    cookie = ask(HOUSE, "/", BROWSER).headers["set-cookie"].split(";")[0]
    browser = [["Sec-Fetch-Site: none"], ["Sec-Fetch-Site: same-origin"], ["Cookie: " + cookie],
               ["Cookie: a=b", "Cookie: c=d;" + cookie], [f"Cookie: a=b;{cookie}; c"],
               [f"Origin: http://{HERE}"], [f"Referer: http://{HERE}{ROOM}Kitchen"]]
    for headers in [[], ["User-Agent: script"]] + [[BROWSER, *headers] for headers in browser]:
      self.assertEqual(ask(HOUSE, EMPTY, *headers, host=HERE).status, 200, headers)
    for page, host in (("http://a.lan:80", "a.lan"), ("http://A.LAN", "a.lan:80"),
                       ("https://a.lan", "a.lan:443"), ("http://[::1]:8080", "[::1]:8080")):
      answer = ask(HOUSE, EMPTY, BROWSER, "Origin: " + page, f"Referer: {page}/x", host=host)
      self.assertEqual(answer.status, 200, page)
    for target, headers in ((ON, []), (OFF, [BROWSER, "Cookie: " + cookie]),
                            (ON, [BROWSER, f"Referer: http://{HERE}/"])):
      self.assertEqual(ask(HOUSE, target, *headers, host=HERE).room, "Living Room", headers)
    self.assertEqual(self.switched(), ["A2 On", "A2 Off", "A2 On"])

  def test_a_foreign_name_of_this_machine_switches_nothing(self):
    for host in ("127.0.0.1", "127.0.0.1:81", "192.168.7.5", "[::1]", "[fd00::5]:8080", "localhost",
                 "LOCALHOST:1", socket.gethostname(), "a.local", "a.lan", "A.HOME:80",
                 "a.home.arpa", "localhost.", "8.8.8.8", "house.example.org",
                 "second.example.net:99"):
      self.assertEqual(ask(HOUSE, EMPTY, host=host).status, 200, host)
    for host in ("evil.example", "evil.example:80", "", "localhost.evil.example", "local",
                 "house.example.org.evil.example", "xhouse.example.org", "example.org", "[::1",
                 "127.0.0.1.evil.example", "localhost@evil.example", "evil.example/.local",
                 "evil.example?.local", "evil.example#.local", "evil.example\\.local", "a b.local",
                 ":80", ".local", ".a.local", "home.arpa", "xlocal", "::1", "[evil]", "[::1]x",
                 "[::1].evil.example", "localhost:80:80", "localhost:8x", "localhost:123456"):
      for target in SWITCHES:
        self.assertEqual(ask(HOUSE, target, host=host).status, 403, host)
    self.assertEqual(self.switched(), [])
