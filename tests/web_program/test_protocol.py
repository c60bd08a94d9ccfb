"""Clients that break the rules, come in crowds or take their time.

The program may open 1,024 files, as on most systems; a third of that is for sockets of clients.
"""

import contextlib
import random
import socket
import struct
import time
import unittest

from house import ROOM, Client, House, ask

START = b"GET /index.html HTTP/1.1\r\nHost: localhost\r\n"
LENGTH = START + b"Content-Length: "
CHUNKED = START + b"Transfer-Encoding: chunked\r\n"
POST = b"POST / HTTP/1.1\r\nHost: a\r\nContent-Length: "
API = (b"POST /api/v1/x HTTP/1.1\r\nHost: a\r\nContent-Type: application/json\r\n"
       b"Content-Length: ")
SWITCH = b"GET /index.html?A~1~LivingRoomCeilingLight~turnon~LivingRoom HTTP/1.1\r\nHost: a\r\n\r\n"


def get(target, version="1.1", method="GET"):
  return f"{method} {target} HTTP/{version}\r\nHost: localhost\r\n\r\n".encode("latin-1")


# The connection goes on behind these.
ANSWERED = [
    (302, get("/index.html?" + "a" * 4084)), (414, get("/index.html?" + "a" * 4085)),
    (200, START + b"X: " + b"a" * 8000 + b"\r\n\r\n"), (200, b"\r\n\r\n" + get("/")),
    (200, START.replace(b"\r", b"") + b"\n"), (200, get("/index.html#x")), (200, get("/?")),
    (200, LENGTH + b"0\r\n\r\n"), (200, START + b"Upgrade: h2c\r\n\r\n"),
    (400, b"GET / HTTP/1.1\r\n\r\n"), (400, START + b"Host: localhost\r\n\r\n"),
    (400, SWITCH.replace(b"Host:", b"Host :")), (400, SWITCH.replace(b" a\r", b" b\r\n .local\r")),
    (200, get("HTTP://localhost/index.html")), (200, get("http://localhost:99")),
    (404, get("http://localhost//index.html")), (404, get("ftp://localhost/index.html")),
    (421, get("https://evil.example/")), (421, get("http://")), (421, get("http://a@localhost/")),
    (404, get("index.html")), (404, get("?")),
    (404, get("//evil.example/index.html")), (404, get("/index html")),
    (405, get("*", method="OPTIONS")), (405, get("a:1", method="CONNECT")),
    (413, API + b"20000\r\n\r\n" + b"x" * 20000), (415, API.replace(b"json", b"x") + b"1\r\n\r\nx"),
]

# It ends behind these, with or without an answer: what follows must not be read as a request.
ENDED = [
    (200, get("/", version="1.0")), (200, START + b"Connection: close\r\n\r\n"),
    (400, LENGTH + b"5\r\n\r\nhello"), (400, LENGTH + b"0\r\nContent-Length: 5\r\n\r\nhello"),
    (400, LENGTH + b"-1\r\n\r\n"), (400, LENGTH + b"x\r\n\r\n"),
    (413, LENGTH + b"9" * 30 + b"\r\n\r\n"),
    (400, CHUNKED + b"\r\n0\r\n\r\n"), (400, CHUNKED + b"\r\nzz\r\n"),
    (400, CHUNKED + b"Content-Length: 3\r\n\r\n0\r\n\r\n"), (405, POST + b"9999999\r\n\r\nhello"),
    (405, POST + b"5\r\nExpect: 100-continue\r\n\r\n"), (414, get("/" + "a" * 60000)),
    (413, API + b"9999999\r\n\r\nhello"), (400, API + b"2\r\nTransfer-Encoding: chunked\r\n\r\n{}"),
    (431, START + b"X: " + b"a" * 60000 + b"\r\n\r\n"), (431, START + b"X: a\r\n" * 6000 + b"\r\n"),
    (400, START + b"no colon\r\n\r\n"), (400, get("/", version="1.x")), (400, b"GET /\r\n\r\n"),
    (505, get("/", version="2.0")), (None, get("/", method="")),
    (None, b"\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03" + b"x" * 500 + b"\r\n\r\n"),
]


def setUpModule():
  global HOUSE
  HOUSE = House(descriptors=1024)
  unittest.addModuleCleanup(HOUSE.close)


class ProtocolTest(unittest.TestCase):

  def tearDown(self):
    self.assertEqual(ask(HOUSE, ROOM + "Kitchen").room, "Kitchen")
    self.assertEqual(HOUSE.switched(), [])

  def test_answers_or_ends_whatever_comes(self):
    for status, request in ANSWERED:
      with Client(HOUSE) as client:
        self.assertEqual(client.send(request).read().status, status, request[:80])
        self.assertEqual(client.send(get(ROOM + "Study")).read().room, "Study", request[:80])
    for status, request in ENDED:
      with Client(HOUSE) as client:
        answer = client.send(request + SWITCH).read()
        self.assertEqual(answer and answer.status, status, request[:80])
        self.assertIsNone(client.read(), request[:80])

  def test_answers_what_comes_byte_by_byte_and_all_at_once(self):
    with Client(HOUSE) as client:
      for byte in get(ROOM + "Garden"):
        client.send(bytes([byte]))
      self.assertEqual(client.read().room, "Garden")
    picture = (HOUSE.html / "bulbon.gif").read_bytes()
    rooms = ["Kitchen", "Study", "Bedroom", "Garden"] * 10
    with Client(HOUSE) as client:
      client.send(b"".join(get(ROOM + room) + get("/bulbon.gif") + get("/", method="HEAD") +
                           get("/missing") for room in rooms))
      for room in rooms:
        self.assertEqual(client.read().room, room)
        self.assertEqual(client.read().body, picture)
        self.assertEqual(client.read(head=True).status, 200)
        self.assertEqual(client.read().status, 404)

  def test_goes_on_whatever_is_cut_or_damaged(self):
    whole = get("/bulbon.gif") + LENGTH + b"9\r\nCookie: a=b; homewarden=1\r\n\r\nbo"
    sent = [whole[:length] for length in range(0, len(whole), 3)]
    chance = random.Random(7)
    head = get("/index.html?turnon")[:-2] + (b"Cookie: a=b; c=\"d\"\r\nAuthorization: Basic YTpi\r\n"
                          b"Origin: http://evil.example\r\nReferer: http://[::1]/x\r\n\r\n")
    for _ in range(600):
      data = bytearray(head)
      for _ in range(chance.randint(1, 4)):
        place, end = sorted(chance.sample(range(len(data)), 2))
        chance.choice((lambda: data.__setitem__(place, chance.randrange(256)),
                       lambda: data.__delitem__(slice(place, place + chance.randint(1, 9))),
                       lambda: data.__setitem__(slice(place, place), data[place:end])))()
      sent.append(bytes(data))
    for reset in (1, 0):
      for data in sent:
        with Client(HOUSE) as client:
          client.socket.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", reset, 0))
          client.send(data)

  def test_slow_clients_are_ended_and_hold_up_nobody(self):
    start = time.monotonic()
    worst = 0
    with contextlib.ExitStack() as clients:
      for _ in range(20):  # they never read
        clients.enter_context(Client(HOUSE)).send(get("/bulbon.gif") * 100)
      slow = [clients.enter_context(Client(HOUSE)) for _ in range(52)]
      silent = slow[0]
      slow[1].send(get("/")).read()
      for client in slow:
        client.send(b"" if client is silent else START + b"X: ")
        client.socket.setblocking(False)
      while slow:
        self.assertLess(time.monotonic() - start, 20, f"{len(slow)} slow clients are still there")
        for client in slow:
          client.send(b"" if client is silent else b"x")
        slow = [client for client in slow if not client.has_ended()]
        asked = time.monotonic()
        self.assertEqual(ask(HOUSE, ROOM + "Study").room, "Study")
        worst = max(worst, time.monotonic() - asked)
        time.sleep(0.2)  # between two bytes of the slow ones
    self.assertGreater(time.monotonic() - start, 10, "they had no time to send a request")
    self.assertLess(worst, 1, "a room page waited for slow clients")

  def test_files_that_nobody_takes_leave_descriptors_for_a_room_page(self):
    with open(HOUSE.html / "big.gif", "wb") as file:
      file.truncate(1 << 26)
    with contextlib.ExitStack() as clients:
      for number in range(600):
        client = clients.enter_context(Client(HOUSE, f"127.0.2.{number % 16 + 1}"))
        client.send(get("/big.gif"))
      self.assertIn(b"~StudyDeskLamp~", ask(HOUSE, ROOM + "Study").body)
