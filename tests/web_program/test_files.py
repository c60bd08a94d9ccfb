"""What is served at all: no passwords, nothing outside the folder, headers on everything."""

import base64
import os
import unittest

from house import ROOM, Client, House, ask, curl

AUTH = "Authorization: Basic " + base64.b64encode(b"anna:topsecret").decode()

NEVER = """
/htaccess.txt /HTACCESS.TXT /HtAccess.Txt /htaccess%2etxt /%68taccess.txt /%48%54access%2Etxt
/%2568taccess.txt /htaccess%252etxt /htaccess.txt. /htaccess.txt%2e /htaccess.txt%20
/%20htaccess.txt /htaccess.txt%09 /htaccess.txt%0d%0a /htaccess.txt/ /htaccess.txt%2f
/htaccess.txt%5c /htaccess.txt%00 /htaccess.txt%00.gif /htaccess.txt::$DATA
/htaccess.txt%3a%3a$DATA /HTACCE~1.TXT /htacce%7e1.txt /./htaccess.txt //htaccess.txt
/sub/../htaccess.txt /sub/%2e%2e/htaccess.txt /htaccess.txt?x /htaccess.txt?/index.html
/htaccess.txt.bak /copy.gif /.htaccess.new /.hidden.gif /%2ehidden.gif /sub/.hidden.gif
/sub /sub/ /sub/. /sub/.. /. /.. /../ /%2e%2e /../rmlst.hwd /%2e%2e/rmlst.hwd /.%2e/rmlst.hwd
/..%2frmlst.hwd /%252e%252e/rmlst.hwd /..%5crmlst.hwd /..\\rmlst.hwd /....//rmlst.hwd
/..;/rmlst.hwd /sub/../../rmlst.hwd /%c0%ae%c0%ae/rmlst.hwd /../machine/machine.db
/etc/passwd //etc/passwd /%2fetc/passwd /file:///etc/passwd /C:/etc/passwd
/../../../../../../../etc/passwd /link.gif /out/rmlst.hwd /in/bulbon.gif /pipe.gif
/bulbon.gif/ /bulbon.gif. /bulbon.gif%00 /%62ulbon%252egif /sub/../bulbon.gif
""".split()

# As no client of good manners writes them.
RAW = ["htaccess.txt", "/htaccess.txt ", "/htaccess.txt\t", "/htaccess.txt\0.gif",
       "/htaccess.txt#x", "\\..\\rmlst.hwd", "../rmlst.hwd", "/../rmlst.hwd\0.gif",
       "http://localhost/htaccess.txt", "file:///etc/passwd", "*", "/%", "/%2", "/%zz"]


def setUpModule():
  global HOUSE
  HOUSE = House(passwords=b"anna:topsecret\r\n")
  unittest.addModuleCleanup(HOUSE.close)
  (HOUSE.html / "sub").mkdir()
  for name in ("htaccess.txt.bak", ".htaccess.new", ".hidden.gif", "sub/.hidden.gif", "sub/a.gif"):
    (HOUSE.html / name).write_bytes(b"anna:topsecret")
  (HOUSE.html / "sub" / os.fsdecode(b"b \xfc.gif")).write_bytes(b"GIF89a")
  os.link(HOUSE.html / "htaccess.txt", HOUSE.html / "copy.gif")
  for name, target in (("link.gif", "../rmlst.hwd"), ("out", ".."), ("in", HOUSE.html)):
    os.symlink(target, HOUSE.html / name)
  os.mkfifo(HOUSE.html / "pipe.gif")


class FilesTest(unittest.TestCase):

  def test_serves_what_is_in_the_folder_only(self):
    for path in ("/bulbon.gif", "/%62ulbon%2egif", "/bulbon.gif?x", "/sub/a.gif",
                 "/sub/b%20%fc.gif"):
      self.assertEqual(curl(HOUSE, path, "-H", AUTH).status, 200, path)
    answers = [(path, curl(HOUSE, path, "-H", AUTH)) for path in NEVER]
    answers += [(path, ask(HOUSE, path, AUTH)) for path in RAW]
    for path, answer in answers:
      self.assertEqual((answer.status, answer.body), (404, b"There is no such page.\n"), path)

  def test_looks_at_get_and_head_only(self):
    switch = "/index.html?A~1~LivingRoomCeilingLight~turnon~LivingRoom"
    for method in ("POST", "PUT", "DELETE", "OPTIONS", "TRACE", "PATCH", "CONNECT", "get", "GETS"):
      for target in ("/index.html", switch, "/bulbon.gif", "/htaccess.txt"):
        answer = ask(HOUSE, target, AUTH, method=method)
        self.assertEqual((answer.status, answer.headers.get("allow")), (405, "GET, HEAD"), method)
    self.assertEqual(curl(HOUSE, switch, "-H", AUTH, "-d", "x=1").status, 405)
    self.assertEqual(ask(HOUSE, switch, AUTH, method="HEAD").headers["allow"], "GET")
    self.assertEqual(HOUSE.switched(), [])

  def test_head_tells_the_length_and_sends_no_body(self):
    for target in ("/", ROOM + "Kitchen", "/bulbon.gif", "/missing.gif"):
      with Client(HOUSE) as client:
        for method in ("GET", "HEAD", "GET"):
          client.send(f"{method} {target} HTTP/1.1\r\nHost: a\r\n{AUTH}\r\n\r\n".encode())
        whole, head, again = client.read(), client.read(head=True), client.read()
        self.assertEqual(head.status, whole.status, target)
        self.assertEqual(head.headers["content-length"], str(len(whole.body)), target)
        self.assertEqual(again.body, whole.body, target)

  def test_headers_protect_every_answer(self):
    page, picture, script = "no-store", "private, max-age=3600", "private, no-cache"
    cookie = "homewarden=1; Path=/; Max-Age=31536000; SameSite=Strict; HttpOnly"
    for status, keep, sets, target, headers in (
        (200, page, cookie, "/", [AUTH]), (200, page, cookie, ROOM + "Kitchen", [AUTH]),
        (200, page, cookie, "/wmcindex.html", [AUTH]), (302, page, None, "/index.html?x", [AUTH]),
        (200, picture, None, "/fanoff.gif", [AUTH]), (200, script, None, "/homewarden.js", [AUTH]),
        (400, page, None, "/", [AUTH, AUTH]), (401, page, None, "/", []),
        (403, page, None, "/index.html?turnon", [AUTH, "Origin: null"]),
        (404, page, None, "/missing", [AUTH]), (414, page, None, "/" + "x" * 4096, [AUTH])):
      answer = ask(HOUSE, target, *headers)
      self.assertEqual(answer.status, status, target)
      self.assertIn("default-src 'none'", answer.headers["content-security-policy"])
      for name, value in (("cache-control", keep), ("set-cookie", sets),
                          ("x-content-type-options", "nosniff"), ("x-frame-options", "DENY")):
        first = answer.headers.get(name, "").split("\n")[0]  # that of the log-in comes second
        self.assertEqual(first, value or "", target)

  def test_a_picture_is_sent_again_when_it_has_changed_only(self):
    content = bytes(range(256)) * 1000
    (HOUSE.html / "fanon.gif").write_bytes(content)
    first = curl(HOUSE, "/fanon.gif", "-H", AUTH)
    self.assertEqual((first.status, first.body), (200, content))
    tag = "If-None-Match: " + first.headers["etag"]
    date = "If-Modified-Since: " + first.headers["last-modified"]
    weak, other = tag.replace(": ", ': "x", W/'), 'If-None-Match: "other"'
    for status, *headers in ((304, tag), (304, weak), (304, date), (200, other),
                             (200, other, date)):
      answer = ask(HOUSE, "/fanon.gif", AUTH, *headers)
      self.assertEqual((answer.status, answer.body), (status, content if status == 200 else b""))
      self.assertEqual(answer.headers["x-content-type-options"], "nosniff")
    (HOUSE.html / "fanon.gif").write_bytes(b"GIF89a")
    self.assertEqual(curl(HOUSE, "/fanon.gif", "-H", AUTH, "-H", tag).body, b"GIF89a")


class CarriedFolderTest(unittest.TestCase):

  def start(self, furnish):
    kind = type("Carried", (House,), {"furnish": furnish})
    house = kind()
    self.addCleanup(house.close)
    return house

  def test_a_folder_from_elsewhere_keeps_its_names_and_its_password(self):
    def furnish(house):
      (house.folder / "HTML").mkdir()
      (house.folder / "HTML" / "HTACCESS.TXT").write_bytes(b"anna:topsecret\r\n")
      (house.folder / "HTML" / "INDEX.HTML").write_bytes(b"<h1><room></h1><dev0>")
      os.link(house.folder / "HTML" / "HTACCESS.TXT", house.folder / "HTML" / "copy.gif")
      (house.folder / "RMLST.HWD").write_bytes(b"Attic~~~\r\nAttic~Lamp~A~9\r\n")
    house = self.start(furnish)
    self.assertEqual(curl(house, "/").status, 401)
    self.assertEqual(curl(house, ROOM + "Attic", "-H", AUTH).room, "Attic")
    for name in ("htaccess.txt", "HTACCESS.TXT", "copy.gif"):
      self.assertEqual(curl(house, "/" + name, "-H", AUTH).status, 404, name)
    self.assertEqual([p.name for p in house.html.glob("[iI]*.[hH]*")], ["INDEX.HTML"])

  def test_nobody_logs_in_when_the_password_cannot_be_read(self):
    makers = (lambda file: file.symlink_to("nowhere"), lambda file: file.mkdir())
    for make in makers:
      def furnish(house):
        house.html.mkdir()
        make(house.html / "htaccess.txt")
      house = self.start(furnish)
      for headers in ((), ("-H", AUTH), ("-u", ":")):
        self.assertEqual(curl(house, "/", *headers).status, 401)
      self.assertIn("The web server lets nobody in", house.text())
