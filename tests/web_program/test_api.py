"""The interface for programs of the whole program, held against its own description."""

import hashlib
import http.client
import json
import pathlib
import subprocess
import tempfile
import unittest

from api_description import ROOT, Description
from house import House, wait_until
from node_packages import installed
from store import write_values

LAMP = "/devices/LivingRoomTableLamp"
RADIO = "/devices/LivingRoomRadio"
TOKEN_KEY = r"Software\Homewarden\webtokens"
SECRET = "hw_" + "4f" * 32
SOURCES = pathlib.Path(__file__).parent / "node"


class Api:
  def __init__(self, house, **headers):
    self.port = house.port
    self.headers = headers

  def ask(self, method, path, body=None, **headers):
    """Status, headers and body."""
    connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=60)
    text = body if isinstance(body, (str, bytes, type(None))) else json.dumps(body)
    if text is not None:
      headers = {"Content-Type": "application/json", **headers}
    connection.request(method, ROOT + path, text, {**self.headers, **headers})
    answer = connection.getresponse()
    read = answer.status, {k.lower(): v for k, v in answer.getheaders()}, answer.read()
    connection.close()
    return read


class TokenHouse(House):
  """A house with a token that may only read."""

  def furnish(self):
    digest = hashlib.sha256(SECRET.encode()).hexdigest()
    write_values(self.folder, "user", TOKEN_KEY, {"1": f"read 2026-11-24 07:30 {digest} Wall panel"})


class Described(unittest.TestCase):
  @classmethod
  def setUpClass(cls):
    cls.house = TokenHouse()
    cls.addClassCleanup(cls.house.close)
    cls.api = Api(cls.house)
    cls.description = Description(cls.api.ask("GET", "/openapi.json")[2])

  def check(self, method, pattern, path=None, body=None, status=200, **headers):
    got, got_headers, text = self.api.ask(method, path or pattern, body, **headers)
    self.assertEqual(got, status, text)
    self.assertEqual(self.description.fault(method, pattern, got, got_headers, text), "")
    return json.loads(text)

  def test_answers_are_as_described(self):
    for method, path, _ in self.description.operations():
      if method == "GET" and "{" not in path and path != "/stream":
        with self.subTest(path):
          self.check("GET", path)
    self.check("GET", "/devices/{id}", LAMP)
    self.assertEqual(len(self.check("GET", "/devices", "/devices?room=Kitchen")["devices"]), 4)
    self.assertEqual(self.check("GET", "/devices", "/devices?address=a3")["devices"][0]["name"],
                     "Table Lamp")

  def test_commands_and_what_becomes_of_them(self):
    commands = "/devices/{id}/commands"
    done = self.check("POST", commands, LAMP + "/commands",
                      {"command": "level", "level": 60, "wait": True})
    self.assertEqual((done["state"], done["level"]), ("done", 60))
    self.assertEqual(self.check("GET", "/devices/{id}", LAMP)["level"], 60)
    taken = self.check("POST", commands, LAMP + "/commands", {"command": "toggle"}, 202)
    self.assertFalse(taken["on"])
    one = f"/commands/{taken['id']}"
    wait_until(lambda: self.check("GET", "/commands/{id}", one)["state"] == "done", "the toggle")
    for body, status in (({"command": "dim"}, 400), ({"command": "level"}, 400), ("{", 400),
                         ({"command": "level", "level": 101}, 400), ({"command": "repeat"}, 422),
                         ({"command": "on", "brightness": 3}, 400), ([], 400)):
      with self.subTest(body):
        self.check("POST", commands, LAMP + "/commands", body, status)
    self.check("POST", commands, RADIO + "/commands", {"command": "level", "level": 5}, 422)
    self.check("POST", commands, "/devices/nobody/commands", {"command": "on"}, 404)

  def test_events_and_profiles(self):
    event = self.check("GET", "/events")["events"][0]
    one = f"/events/{event['id']}"
    off = self.check("PUT", "/events/{id}", one, {"enabled": False})
    self.assertFalse(off["enabled"])
    self.assertFalse(self.check("GET", "/events/{id}", one)["enabled"])
    self.assertTrue(self.check("PUT", "/events/{id}", one, {"enabled": True})["enabled"])
    ran = self.check("POST", "/events/{id}/run", one + "/run", {"wait": True})
    self.assertEqual(ran["state"], "done")
    self.check("PUT", "/profiles/active", None, {"name": "Holiday"})
    self.assertEqual(self.check("GET", "/house")["profile"], "Holiday")
    self.check("PUT", "/profiles/active", None, {"name": "Standard"})
    self.check("PUT", "/profiles/active", None, {"name": "../rmlst"}, 404)
    self.check("PUT", "/events/{id}", "/events/e0", {"enabled": True}, 404)

  def test_the_stream_is_as_described_and_goes_on_where_it_was_left(self):
    before = self.check("GET", "/house")["event_id"]
    self.check("POST", "/devices/{id}/commands", RADIO + "/commands",
               {"command": "toggle", "wait": True})
    connection = http.client.HTTPConnection("127.0.0.1", self.house.port, timeout=30)
    self.addCleanup(connection.close)
    connection.request("GET", ROOT + "/stream", headers={"Last-Event-ID": before})
    answer = connection.getresponse()
    self.assertEqual(answer.getheader("Content-Type"), "text/event-stream")
    names, ids = [], []
    while names[-1:] != ["command"] or '"done"' not in data:
      line = answer.readline().decode().rstrip("\n")
      if line.startswith("id: "):
        ids.append(int(line.rsplit("-", 1)[1]))
      elif line.startswith("event: "):
        names.append(line[7:])
      elif line.startswith("data: "):
        data = line[6:]
        self.assertEqual(self.description.event_fault(names[-1], data), "")
    self.assertEqual(names[0], "hello")
    self.assertIn("device", names)
    self.assertEqual(ids[1:], list(range(ids[0] + 1, ids[0] + len(ids))), "none left out")

  def test_what_programs_must_not_do(self):
    on = {"command": "on"}
    for headers, status in (({"Origin": "http://evil.example"}, 403),
                            ({"Host": "evil.example"}, 403),
                            ({"Content-Type": "text/plain"}, 415),
                            ({"Authorization": "Bearer hw_wrong"}, 401)):
      with self.subTest(headers):
        self.check("POST", "/devices/{id}/commands", LAMP + "/commands", on, status, **headers)
    self.check("POST", "/devices/{id}/commands", LAMP + "/commands", "x" * 20000, 413)
    status, headers, _ = self.api.ask("DELETE", "/house")
    self.assertEqual((status, headers["allow"], headers["content-type"]),
                     (405, "GET, HEAD", "application/problem+json"))

  def test_a_generated_client_finds_its_way(self):
    packages = installed()
    with tempfile.TemporaryDirectory() as folder:
      work = pathlib.Path(folder)
      (work / "node_modules").symlink_to(packages)
      (work / "openapi.json").write_bytes(self.api.ask("GET", "/openapi.json")[2])
      (work / "use_client.cjs").write_bytes((SOURCES / "use_client.cjs").read_bytes())

      def node(*command):
        ran = subprocess.run(["node", *command], cwd=work, timeout=200, text=True, check=False,
                             stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT)
        self.assertEqual(ran.returncode, 0, ran.stdout)

      node("node_modules/@hey-api/openapi-ts/bin/index.cjs", "-i", "openapi.json", "-o", "client")
      node("node_modules/typescript/bin/tsc", "--noCheck", "--module", "commonjs",
           "--moduleResolution", "node10", "--target", "es2022", "--outDir", "built",
           *(str(file.relative_to(work)) for file in work.glob("client/**/*.ts")))
      node("use_client.cjs", f"http://127.0.0.1:{self.house.port}{ROOT}", SECRET)


if __name__ == "__main__":
  unittest.main()
