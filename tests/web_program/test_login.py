"""Who logs in, and how guessing is slowed down."""

import base64
import time
import unittest

from house import House, ask, curl

SWITCH = "/index.html?A~1~LivingRoomCeilingLight~turnon~LivingRoom"
ACCENTED = ["josé:grüße", "björn:€5"]
RIGHT = ("-u", "anna:secret")


def setUpModule():
  global HOUSE
  HOUSE = House(passwords="\r\n".join(["anna:secret", *ACCENTED, "bo:a:b::", ""]).encode("cp1252"),
                webproxies="127.0.0.9")
  unittest.addModuleCleanup(HOUSE.close)


def basic(text):
  return "Authorization: Basic " + base64.b64encode(text).decode()


class LoginTest(unittest.TestCase):

  def test_admits_the_right_ones(self):
    coded = [user.encode(code) for user in ACCENTED for code in ("cp1252", "utf-8")]
    lower = basic(b"anna:secret").replace("Basic", "bAsIc ")
    self.assertEqual(ask(HOUSE, "/", lower).status, 200)
    for user in (b"anna:secret", b"bo:a:b::", *coded):
      self.assertEqual(curl(HOUSE, "/", "-u", user).status, 200, user)

  def test_admits_nobody_else(self):
    right = basic(b"anna:secret")
    wrong = [basic(text) for text in (
        b"anna:Secret", b"Anna:secret", b"anna:secret ", b"anna:secret\r\n", b"anna:secret\0",
        b"anna:", b"anna", b":secret", b":", b"", b"bo:a", b"bo:a:b:", b"jos:gr",
        b"anna:secret\r\nbo:a:b::")]
    wrong += [right[:-1], right.lower(), right.replace("Basic", "Digest"), "Authorization: Basic",
              "Authorization:", "Authorization: Basic ", right + "!!!!",
              right.replace("Basic ", ""), right.replace("Basic ", "Basic ="),
              right.replace("Basic Y", "Basic "), "Proxy-" + right, "Cookie: " + right]
    for number, header in enumerate(wrong):  # each from an address of its own: none has to wait
      for target in ("/", "/bulbon.gif", SWITCH):
        answer = ask(HOUSE, target, header, source=f"127.0.1.{number + 1}")
        self.assertEqual(answer.status, 401, header)
        self.assertTrue(answer.headers["www-authenticate"].startswith("Basic realm="), header)
    self.assertEqual(ask(HOUSE, SWITCH).status, 401)
    self.assertEqual(ask(HOUSE, SWITCH, right, right).status, 400)
    self.assertEqual(HOUSE.switched(), [])

  def test_guessing_has_to_wait_and_holds_up_nobody_else(self):
    for _ in range(5):
      self.assertEqual(curl(HOUSE, "/", "--interface", "127.0.0.3", "-u", "anna:wrong").status, 401)
    refused = curl(HOUSE, "/", "--interface", "127.0.0.3", *RIGHT)  # the right one has to wait too
    self.assertEqual((refused.status, refused.headers["retry-after"]), (429, "1"))
    self.assertEqual(curl(HOUSE, "/", "--interface", "127.0.0.2", *RIGHT).status, 200)
    time.sleep(1)
    self.assertEqual(curl(HOUSE, "/", "--interface", "127.0.0.3", *RIGHT).status, 200)

  def test_behind_a_proxy_each_visitor_counts_for_himself(self):
    def log_in(address, *options):
      return curl(HOUSE, "/", "--interface", "127.0.0.9", "-H", "X-Forwarded-Proto: https",
                  "-H", f"X-Forwarded-For: 192.168.1.1, {address}", *options)

    owner = log_in("203.0.113.1", *RIGHT).headers["set-cookie"].split("\n")[1]
    self.assertRegex(owner, "; Max-Age=2592000; SameSite=Strict; HttpOnly; Secure$")
    for _ in range(5):
      self.assertEqual(log_in("203.0.113.1", "-u", "anna:wrong").status, 401)
    self.assertEqual(log_in("203.0.113.1", *RIGHT).status, 429)
    self.assertEqual(log_in("203.0.113.2", *RIGHT).status, 200)
    self.assertEqual(log_in("203.0.113.1", *RIGHT, "-b", owner.split(";")[0]).status, 200)
