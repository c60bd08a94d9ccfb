"""Which requests switch something."""

import socket
import unittest

from house import ROOM, Client, House, ask, curl

BROWSER = "User-Agent: Mozilla/5.0 (X11; Linux x86_64; rv:120.0) Gecko/20100101 Firefox/120.0"
OFF = "/index.html?A~2~LivingRoomReadingLamp~turnoff~LivingRoom"
ON = OFF.replace("turnoff", "turnon")
HOME = "Please Select A Room From The List On The Left"
# Judged like a switch, but with nothing to switch.
EMPTY = "/index.html?turnon"
SWITCHES = [ON, OFF, EMPTY, ON.replace("turnon", "%74urnon"), ON.replace("turnon", "TurnOn"),
            ON.replace("index", "wmcindex") + "~1", ON.replace("/index", "/%69ndex")]


def setUpModule():
  global HOUSE, HERE
  HOUSE = House(webhosts="house.example.org, second.example.net",
                weborigins="http://dash.example:3000")
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
      cases += [["Origin: " + page], [BROWSER, "Sec-Fetch-Site: none", "Origin: " + page],
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
      unproven = not any(name in header for name in ("Sec-", "Origin", "Referer: ")
                         for header in headers)
      looks = ask(HOUSE, ROOM + "Kitchen", *headers, host=HERE)
      self.assertEqual((looks.status, looks.room), (200, "Kitchen") if unproven else (403, None),
                       headers)
    self.assertIn(b"open the home page first", ask(HOUSE, EMPTY, BROWSER).body)
    # What reaches the line is in order: had one of them switched, it would stand before this.
    self.assertEqual(curl(HOUSE, ON.replace("~2~", "~1~")).room, "Living Room")
    self.assertEqual(self.switched(), ["A1 On"])

  def test_a_person_presses_again_with_one_tap(self):
    for headers in ([], ["Sec-Fetch-Site: cross-site", "Sec-Fetch-Mode: navigate"]):
      refused = ask(HOUSE, OFF, BROWSER, "Accept: text/html", *headers, host=HERE)
      self.assertEqual(refused.status, 403)
      self.assertIn(f'<a href="{OFF}">'.encode(), refused.body)
      self.assertIn(b"press again.", refused.body)
      cookie = "Cookie: " + refused.headers["set-cookie"].split(";")[0]
      self.assertEqual(self.switched(), [])
      for again in ([cookie, *headers], ["Sec-Fetch-Site: same-origin"], [cookie]):
        self.assertEqual(ask(HOUSE, EMPTY, BROWSER, *again, host=HERE).status,
                         403 if again[1:] else 200, again)

  def test_own_pages_and_typed_addresses_and_programs_switch(self):
    cookie = ask(HOUSE, "/", BROWSER).headers["set-cookie"].split(";")[0]
    browser = [["Sec-Fetch-Site: none"], ["Sec-Fetch-Site: same-origin"], ["Cookie: " + cookie],
               ["Sec-Fetch-Site: same-origin", "Origin: https://behind.a.proxy.example"],
               ["Sec-Fetch-Site: cross-site", "Origin: http://dash.example:3000"],
               ["Cookie: a=b", "Cookie: c=d;" + cookie], [f"Cookie: a=b;{cookie}; c"],
               [f"Origin: http://{HERE}"], [f"Referer: http://{HERE}{ROOM}Kitchen"]]
    for headers in [[], ["User-Agent: script"], ["User-Agent: Mozilla/5.0 WindowsPowerShell/5.1"]] + [[BROWSER, *headers] for headers in browser]:
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
                 "a.home.arpa", "localhost.", "8.8.8.8", "house.example.org", "a.b.internal",
                 "fritz.box", "tv.localdomain", "tv", "second.example.net:99"):
      self.assertEqual(ask(HOUSE, EMPTY, host=host).status, 200, host)
      absolute = f"http://{host}{EMPTY}"  # counts in place of the header
      self.assertEqual(ask(HOUSE, absolute, host="evil.example").room, HOME, host)
    old = f"GET {EMPTY} HTTP/1.0\r\n\r\n".encode()
    with Client(HOUSE) as client:
      self.assertEqual(client.send(old).read().status, 200)
    for host in ("evil.example", "evil.example:80", "", "localhost.evil.example",
                 "house.example.org.evil.example", "xhouse.example.org", "example.org", "[::1",
                 "127.0.0.1.evil.example", "localhost@evil.example", "evil.example/.local",
                 "evil.example?.local", "evil.example#.local", "evil.example\\.local", "a b.local",
                 ":80", ".local", ".a.local", "home.arpa", "x.xlocal", "::1", "[evil]", "[::1]x",
                 "[::1].evil.example", "localhost:80:80", "localhost:8x", "localhost:123456"):
      for target in SWITCHES:
        self.assertEqual(ask(HOUSE, target, host=host).status, 403, host)
      # Who follows a link under such a name sees a page, and on it nothing of the house.
      self.assertEqual(ask(HOUSE, ROOM + "Kitchen", host=host).status, 403, host)
      seen = ask(HOUSE, ROOM + "Kitchen", "Accept: text/html", host=host)
      self.assertRegex(seen.room, "^No room is shown under this name", host)
      self.assertNotIn(b"~turno", seen.body)
    self.assertEqual(ask(HOUSE, "http://evil.example/bulbon.gif").status, 421)
    self.assertIn(b"house.example.org, second.example.net",
                  ask(HOUSE, EMPTY, host="evil.example").body)
    self.assertEqual(self.switched(), [])

  def test_a_foreign_page_changes_nothing_that_others_see(self):
    ten_foot = "/wmcindex.html?loadroom"
    self.assertEqual(ask(HOUSE, ten_foot + "Study", host=HERE).room, "Study")
    page = "Accept: text/html"
    for headers in (["Sec-Fetch-Site: cross-site"], ["Referer: http://evil.example/"],
                    ["Origin: null"]):
      self.assertEqual(ask(HOUSE, ten_foot + "Kitchen", *headers, host=HERE).status, 403)
    for headers in (["Referer: http://evil.example/", page], [BROWSER], [BROWSER, page]):
      self.assertEqual(ask(HOUSE, ten_foot + "Kitchen", *headers, host=HERE).room, "Study")
    self.assertRegex(ask(HOUSE, ten_foot + "Kitchen", page, host="evil.example").room, "^No room")
    self.assertEqual(ask(HOUSE, "/wmcindex.html", host=HERE).room, "Study")
    dash = ask(HOUSE, ten_foot + "Kitchen", "Origin: http://dash.example:3000", host=HERE)
    self.assertEqual((dash.room, dash.headers["access-control-allow-origin"]),
                     ("Kitchen", "http://dash.example:3000"))
