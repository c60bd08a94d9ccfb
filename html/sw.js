// Keeps what the pages are made of for a time without the house: styles, scripts, pictures and the
// two pages. While the house answers, everything comes from it; the states themselves are kept by
// homewarden-live.js, and nothing that switches is ever answered from here.

const KEPT = "homewarden-shell";
const ANSWER_MS = 4000;  // then what is kept is shown, and the page's script goes on trying
const PAGES = ["index.html", "wmcindex.html"];
const SCRIPTS = ["", "-start", "-live", "-stream", "-presses", "-kept", "-markup", "-trouble",
  "-cards", "-home", "-page", "-tv", "-tv-card", "-tv-live", "-tv-signs"];
const STYLES = ["-base", "", "-live", "-tv"];
const TYPES = ["switch", "bulb", "fan", "radio", "bulb2"];
const FILES = [
  ...SCRIPTS.map((name) => "homewarden" + name + ".js"),
  ...STYLES.map((name) => "homewarden" + name + ".css"),
  ...TYPES.flatMap((type) => [type + "on.gif", type + "off.gif"]),
  "homewarden.png", "icon-192.png", "icon-512.png", "icon-maskable.png", "manifest.webmanifest",
];
const ROOT = new URL("./", self.location).href;

// The file of an address that may be kept, or "". What an address asks for behind "?" is a room, a
// moment, or a switch, which is not answered from here.
function fileOf(address) {
  const [path, query = ""] = address.split("#")[0].split("?");
  if (!path.startsWith(ROOT) || /~|%7e|turnon|turnoff/i.test(query)) return "";
  const file = path.slice(ROOT.length) || "wmcindex.html";
  if (PAGES.includes(file)) return file;
  return FILES.includes(file) && !query ? file : "";
}

async function keep(file, response) {
  const kept = await caches.open(KEPT);
  await kept.put(ROOT + file, response);
}

async function keepAll() {
  await Promise.all([...PAGES, ...FILES].map(async (file) => {
    try {
      const response = await fetch(ROOT + file, { cache: "no-cache" });
      if (response.ok && !response.redirected) await keep(file, response);
    } catch (error) { /* kept when it is asked for */ }
  }));
}

self.addEventListener("install", (event) => {
  event.waitUntil(keepAll().then(() => self.skipWaiting()));
});

self.addEventListener("activate", (event) => {
  event.waitUntil((async () => {
    for (const name of await caches.keys())
      if (name.startsWith("homewarden-") && name !== KEPT) await caches.delete(name);
    await self.clients.claim();
  })());
});

// The browser asks for the name and password only where no worker stands between: this one leaves,
// with all it keeps, and the page is asked for once more.
async function leave(request) {
  await caches.delete(KEPT);
  await self.registration.unregister();
  return Response.redirect(request.url, 302);
}

async function answer(event, file) {
  const { request } = event;
  const fresh = fetch(request);
  const late = new Promise((resolve) => { setTimeout(resolve, ANSWER_MS); });
  const kept = () => caches.open(KEPT).then((all) => all.match(ROOT + file));
  fresh.catch(() => {});
  try {
    const response = await Promise.race([fresh, late]);
    if (!response) return (await kept()) || await fresh;
    if (response.status === 401 && request.mode === "navigate") return await leave(request);
    // A proxy that has lost the house.
    if (response.status >= 502 && response.status <= 504) return (await kept()) || response;
    // A page with a room is kept as well: the script fills in the room that is asked for.
    if (response.ok && !response.redirected)
      event.waitUntil(keep(file, response.clone()).catch(() => {}));
    return response;
  } catch (error) {
    const shell = await kept();
    if (shell) return shell;
    throw error;
  }
}

self.addEventListener("fetch", (event) => {
  const file = event.request.method === "GET" ? fileOf(event.request.url) : "";
  if (file) event.respondWith(answer(event, file));
});
