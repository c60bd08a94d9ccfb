// The focus of ten-foot pages: arrow keys move it among the elements marked MCFocusable, Enter
// presses. It starts where the body's MCFocusStart says.
(function () {
  "use strict";

  // Whoever types only the server's name on a small screen wants the other page.
  if (location.pathname.endsWith("/") && !location.search
      && matchMedia("(max-width: 899px), (orientation: portrait)").matches) {
    location.replace("index.html");
    return;
  }

  const boxes = [];
  for (const box of document.querySelectorAll("[MCFocusable=true]")) {
    const inside = Array.from(box.querySelectorAll("a"));
    if (!inside.length) {
      box.remove();  // nothing was put in
      continue;
    }
    boxes.push(box);
    box.tabIndex = -1;
    box.setAttribute("role", "link");
    box.setAttribute("aria-label", box.dataset.label || box.textContent);
    inside.forEach((link) => { link.tabIndex = -1; });
  }

  const count = (selector) => boxes.filter((box) => box.matches(selector)).length;
  document.body.classList.toggle("few-rooms", count("nav > div") <= 10);
  document.body.classList.toggle("few-devices", count("section > div") <= 6);

  const focusedBox = () => boxes.find((box) => box.contains(document.activeElement));

  function focusBox(box) {
    boxes.forEach((other) => { other.tabIndex = other === box ? 0 : -1; });
    box.focus({ preventScroll: true });
    box.scrollIntoView({ block: "nearest" });
  }

  // ---- Moving -----------------------------------------------------------------------------------

  // The rectangle as seen by somebody who looks in the direction of the key.
  function seen(box, key) {
    const r = box.getBoundingClientRect();
    switch (key) {
      case "ArrowRight": return { near: r.left, far: r.right, low: r.top, high: r.bottom };
      case "ArrowLeft": return { near: -r.right, far: -r.left, low: r.top, high: r.bottom };
      case "ArrowDown": return { near: r.top, far: r.bottom, low: r.left, high: r.right };
      case "ArrowUp": return { near: -r.bottom, far: -r.top, low: r.left, high: r.right };
      default: return null;
    }
  }

  // How far it is from one box to another, infinite when it cannot be reached with this key. Rooms
  // lie beside devices: up and down stay in their column, left and right in a row of devices.
  function distance(from, to, key) {
    const a = seen(from, key);
    const b = seen(to, key);
    const ahead = b.near - a.far;
    if (to === from || ahead < -1) return Infinity;
    const aside = Math.max(0, b.low - a.high, a.low - b.high);
    const sideways = key === "ArrowLeft" || key === "ArrowRight";
    const related = from.parentNode === to.parentNode;
    if (aside > 0 && sideways === related) return Infinity;
    const middle = Math.abs(a.low + a.high - b.low - b.high) / 2;
    return ahead + 3 * aside + middle / 10;
  }

  function move(from, key) {
    let nearest = null;
    let shortest = Infinity;
    for (const box of boxes) {
      const length = distance(from, box, key);
      if (length >= shortest) continue;
      nearest = box;
      shortest = length;
    }
    if (nearest) focusBox(nearest);
  }

  // ---- Keys and mouse ---------------------------------------------------------------------------

  document.addEventListener("keydown", (event) => {
    if (event.ctrlKey || event.altKey || event.metaKey || !boxes.length) return;
    const box = focusedBox();
    if (event.key.startsWith("Arrow")) {
      event.preventDefault();
      if (box) move(box, event.key);
      else focusBox(boxes[0]);
    } else if (event.key === "Enter" && box) {
      event.preventDefault();
      if (!event.repeat) (box.querySelector("i a") || box.querySelector("a")).click();
    }
  });

  // Movements only: a pointer at rest under a new page takes no focus away.
  document.addEventListener("mousemove", (event) => {
    const box = boxes.find((other) => other.contains(event.target));
    if (box && box !== focusedBox()) focusBox(box);
  });

  // The device named may have gone: then the first of the room, or the first room.
  const byId = (id) => boxes.find((box) => box.id === id);
  const start = byId(document.body.dataset.keptFocus)
    || byId(document.body.getAttribute("MCFocusStart"))
    || byId("module1") || boxes[0];
  if (start) focusBox(start);
})();
