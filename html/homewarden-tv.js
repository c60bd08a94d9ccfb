// The focus of ten-foot pages: arrow keys move it among the page's stops, Enter presses. At first
// these are the elements marked MCFocusable; it starts where the body's MCFocusStart says.
(function () {
  "use strict";

  // Whoever types only the server's name on a small screen wants the other page.
  if (location.pathname.endsWith("/") && !location.search
      && matchMedia("(max-width: 899px), (orientation: portrait)").matches) {
    location.replace("index.html");
    return;
  }

  const isShown = (element) => element.getClientRects().length > 0;
  const stops = () => Array.from(document.querySelectorAll("[data-stop]")).filter(isShown);
  const focusedStop = () => document.activeElement && document.activeElement.closest("[data-stop]");

  function focusStop(stop) {
    for (const other of document.querySelectorAll("[data-stop]"))
      other.tabIndex = other === stop ? 0 : -1;
    stop.focus({ preventScroll: true });
    stop.scrollIntoView({ block: "nearest" });
  }

  for (const box of document.querySelectorAll("[MCFocusable=true]")) {
    const inside = Array.from(box.querySelectorAll("a"));
    if (!inside.length) {
      box.remove();  // nothing was put in
      continue;
    }
    box.dataset.stop = "";
    box.tabIndex = -1;
    box.setAttribute("role", "link");
    box.setAttribute("aria-label", box.dataset.label || box.textContent);
    inside.forEach((link) => { link.tabIndex = -1; });
  }

  const count = (selector) => stops().filter((stop) => stop.matches(selector)).length;
  document.body.classList.toggle("few-rooms", count("nav > div") <= 10);
  document.body.classList.toggle("few-devices", count("section > div") <= 6);

  // ---- Moving -----------------------------------------------------------------------------------

  // The rectangle as seen by somebody who looks in the direction of the key.
  function seen(stop, key) {
    const r = stop.getBoundingClientRect();
    switch (key) {
      case "ArrowRight": return { near: r.left, far: r.right, low: r.top, high: r.bottom };
      case "ArrowLeft": return { near: -r.right, far: -r.left, low: r.top, high: r.bottom };
      case "ArrowDown": return { near: r.top, far: r.bottom, low: r.left, high: r.right };
      case "ArrowUp": return { near: -r.bottom, far: -r.top, low: r.left, high: r.right };
      default: return null;
    }
  }

  const side = (stop) => stop.closest("nav, main");

  // How far it is from one stop to another, infinite when it cannot be reached with this key. Rooms
  // lie beside devices: up and down stay in their column, left and right in a row of devices. A
  // device's level is reached from the device alone: whoever goes through the rows is not held up.
  function distance(from, to, key) {
    const a = seen(from, key);
    const b = seen(to, key);
    const ahead = b.near - a.far;
    if (to === from || ahead < -1) return Infinity;
    if (to.matches("[role=slider]") && to.parentNode !== from.parentNode) return Infinity;
    const aside = Math.max(0, b.low - a.high, a.low - b.high);
    const sideways = key === "ArrowLeft" || key === "ArrowRight";
    const related = side(from) === side(to);
    if (aside > 0 && sideways === related) return Infinity;
    const middle = Math.abs(a.low + a.high - b.low - b.high) / 2;
    return ahead + 3 * aside + middle / 10;
  }

  function move(from, key) {
    let nearest = null;
    let shortest = Infinity;
    for (const stop of stops()) {
      const length = distance(from, stop, key);
      if (length >= shortest) continue;
      nearest = stop;
      shortest = length;
    }
    if (nearest) focusStop(nearest);
  }

  // ---- Keys and mouse ---------------------------------------------------------------------------

  document.addEventListener("keydown", (event) => {
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    const stop = focusedStop();
    if (event.key.startsWith("Arrow")) {
      const first = stops()[0];
      if (!first) return;
      event.preventDefault();
      if (stop) move(stop, event.key);
      else focusStop(first);
    } else if (stop && (event.key === "Enter" || event.key === " ")) {
      event.preventDefault();
      if (!event.repeat) (stop.querySelector("i a") || stop.querySelector("a") || stop).click();
    }
  });

  // Movements only: a pointer at rest under a new page takes no focus away.
  document.addEventListener("mousemove", (event) => {
    const stop = event.target.closest("[data-stop]");
    if (stop && stop !== focusedStop()) focusStop(stop);
  });

  // The device named may have gone: then the first of the room, or the first room.
  const byId = (id) => stops().find((stop) => stop.id === id);
  const start = byId(document.body.dataset.keptFocus)
    || byId(document.body.getAttribute("MCFocusStart"))
    || byId("module1") || stops()[0];
  if (start) focusStop(start);

  // For the script that keeps the page as the house is.
  window.homewardenStops = { stops, focusedStop, focusStop, move };
})();
