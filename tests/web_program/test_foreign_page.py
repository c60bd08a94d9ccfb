"""Pages of somebody else's that try to switch something, in a browser."""

import http.server
import threading
from browser import BrowserTest

LAMP = "index.html?A~1~LivingRoomCeilingLight~turnon~LivingRoom"
PAGE = """<!DOCTYPE html><title>foreign</title>
<a id="link" href="{lamp}" rel="noreferrer">link</a>
<form id="form" action="{page}" referrerpolicy="no-referrer"></form>
<script type="speculationrules">
{{ "prefetch": [{{ "source": "list", "urls": ["{lamp}&early"], "referrer_policy": "no-referrer" }}] }}
</script>
<script>
let open = 6;
const done = () => {{ if (--open === 0) document.title = "tried"; }};
for (const policy of ["no-referrer", "unsafe-url"]) {{
  const image = new Image();
  image.referrerPolicy = policy;
  image.onload = image.onerror = done;
  image.src = "{lamp}&" + policy;
  const look = new Image();
  look.referrerPolicy = policy;
  look.onload = look.onerror = done;
  look.src = "{look}";
  fetch("{lamp}&fetch-" + policy,
        {{ mode: "no-cors", credentials: "include", referrerPolicy: policy }})
    .then(done, done);
}}
</script>"""


class ForeignPages(BrowserTest):
  @classmethod
  def setUpClass(cls):
    super().setUpClass()

    class Foreign(http.server.BaseHTTPRequestHandler):
      def do_GET(self):
        host = self.path.strip("/")
        lamp = f"http://{host}:{cls.house.port}/{LAMP}"
        self.send_response(200)
        self.send_header("Content-Type", "text/html")
        self.end_headers()
        page = lamp.split("?")[0]
        look = page.replace("index", "wmcindex") + "?loadroomKitchen"
        self.wfile.write(PAGE.format(lamp=lamp, page=page, look=look).encode())

      def log_message(self, *_):
        pass

    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Foreign)
    cls.foreign_port = server.server_port
    threading.Thread(target=server.serve_forever, daemon=True).start()
    cls.addClassCleanup(server.server_close)
    cls.addClassCleanup(server.shutdown)

  # Under a name, and without encryption, browsers do not tell where a request comes from.
  def test_nothing_is_switched_for_them(self):
    for foreign, house in [("127.0.0.1", "127.0.0.1"), ("localhost", "127.0.0.1"),
                           ("evil.example", "house.lan"), ("evil.example", "127.0.0.1")]:
      with self.subTest(foreign=foreign, house=house):
        self.open("index.html", host=house)  # whoever visits both has the cookie
        self.browser.get(f"http://{foreign}:{self.foreign_port}/{house}")
        self.wait(lambda: self.browser.title == "tried", "what the page tries by itself")
        self.find("#link").click()
        self.wait(lambda: "Nothing was switched" in self.find("body").text, "the refusal")
    self.assertEqual(self.house.switched(), [])
    self.find('a[href*="turnon"]').click()  # the person wants it all the same
    self.wait(lambda: self.house.switched() == ["A1 On"], "the tap")
    # No televisions show another room, which the page tells without its script.
    for text in "Please Select", "What is on":
      self.browser.execute_cdp_cmd("Emulation.setScriptExecutionDisabled",
                                   {"value": text != "What is on"})
      self.open("wmcindex.html", host="house.lan")
      self.wait(lambda: self.find("h1").text.startswith(text), text)

    # The same address switches for the person who types it.
    self.open(LAMP, host="house.lan")
    self.wait(lambda: self.house.switched() == ["A1 On"] * 2, "the lamp")
