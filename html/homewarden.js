// Shared by the pages for browsers and for ten-foot screens: keeps addresses clean and shows
// states. Where the house is not read live, it also shows presses and refreshes the page while
// nobody touches it; otherwise homewarden-live.js says so on the body (data-live).
(function () {
  "use strict";

  const REFRESH_MS = 30000;
  const QUIET_MS = 10000;     // without a touch before a refresh
  const PATIENCE_MS = 30000;  // for an answer, before another press counts
  const STORE = "homewarden";

  // The query of the room's page for a query that switches, "?A~3~KitchenLamp~turnon~Kitchen";
  // any other query as it is.
  function roomQuery(query) {
    const fields = query.slice(1).split(/~|%7e/i);
    return fields.length < 5 ? query : "?loadroom" + fields[4];
  }

  // Loading the page again must not switch again.
  if (roomQuery(location.search) !== location.search)
    history.replaceState(null, "", roomQuery(location.search));

  const links = Array.from(document.querySelectorAll("nav a, main a")).filter(
    (link) => link.search);
  const isSwitch = (link) => roomQuery(link.search) !== link.search;
  // Sends once more what could not be sent.
  const repeats = (link) => link.search.endsWith("~again");
  const deviceKey = (link) => link.search.split("~")[2];

  // ---- What is shown ----------------------------------------------------------------------------

  function showDevice(link) {
    if (repeats(link)) {
      const place = link.closest("li, section > div");
      const name = place.querySelector("b").textContent;
      place.dataset.trouble = "";
      link.setAttribute("aria-label", name + ": " + link.textContent);
      return;
    }
    const on = link.search.includes("~turnoff~");
    const place = link.closest("li, section > div");
    place.dataset.state = on ? "on" : "off";
    const picture = link.querySelector("img");
    if (picture) {
      picture.alt = "";
      link.tabIndex = -1;
      link.setAttribute("aria-hidden", "true");
      return;
    }
    const name = link.textContent;
    link.title = "Turn " + name + (on ? " off" : " on");
    link.setAttribute("aria-label", name + (on ? ", on" : ", off"));
    place.dataset.label = name + (on ? ", on" : ", off");
  }

  function showPage() {
    const heading = document.querySelector("h1");
    const title = heading.textContent.trim();
    const rooms = links.filter((link) => !isSwitch(link));
    const devices = links.filter(isSwitch);
    devices.forEach(showDevice);
    const current = rooms.find((link) => location.search
      ? link.search.toLowerCase() === location.search.toLowerCase()
      : devices.length > 0 && link.textContent === title);
    if (current) {
      current.setAttribute("aria-current", "page");
      current.scrollIntoView({ block: "nearest", inline: "center" });
      document.title = current.textContent + " \u2013 Homewarden";
      if (!title) heading.textContent = current.textContent;  // a room without devices
    }
    const body = document.body.classList;
    body.toggle("without-rooms", rooms.length === 0);
    body.toggle("without-devices", devices.length === 0 && !title);
    body.toggle("choose", devices.length === 0 && title !== "");
  }

  // ---- Presses ----------------------------------------------------------------------------------

  let busy = 0;  // timer of the press that waits for its answer
  let pressed = null;

  function finishPress() {
    clearTimeout(busy);
    busy = 0;
    document.body.classList.remove("busy");
    if (pressed) pressed.forEach((link) => link.removeAttribute("aria-busy"));
    pressed = null;
  }

  function startPress(link) {
    pressed = links.filter((other) => other.search === link.search);
    pressed.forEach((other) => other.setAttribute("aria-busy", "true"));
    document.body.classList.add("busy");
    busy = setTimeout(finishPress, PATIENCE_MS);
  }

  // What the next page takes over: where the reader was. Storage may be switched off.
  function keepPlace(query, focus) {
    try {
      sessionStorage.setItem(STORE, JSON.stringify({ query, focus, top: window.scrollY }));
    } catch (error) { /* then the page starts at its top */ }
  }

  function takePlace() {
    try {
      const place = JSON.parse(sessionStorage.getItem(STORE));
      sessionStorage.removeItem(STORE);
      if (!place || place.query !== location.search) return;
      window.scrollTo(0, place.top);
      if (!place.focus) return;
      document.body.dataset.keptFocus = place.focus;
      const link = links.find((other) => !other.querySelector("img") && !repeats(other)
        && place.focus === (isSwitch(other) ? deviceKey(other) : other.search));
      if (link) link.focus({ preventScroll: true });
    } catch (error) { /* as above */ }
  }

  document.addEventListener("click", (event) => {
    const link = event.target.closest("a");
    if (event.defaultPrevented || !links.includes(link) || event.button || event.ctrlKey
        || event.metaKey || event.shiftKey) return;
    if (busy) {
      event.preventDefault();
      return;
    }
    startPress(link);
    if (!isSwitch(link)) return;
    // Takes the place of this page in the history: going back leads to the room before.
    event.preventDefault();
    keepPlace(roomQuery(link.search), event.detail === 0 ? deviceKey(link) : "");
    location.replace(link.href);
  });

  // ---- Refreshing -------------------------------------------------------------------------------

  let touched = 0;
  for (const type of ["pointerdown", "pointermove", "keydown", "wheel", "touchmove"])
    document.addEventListener(type, () => { touched = Date.now(); }, { passive: true });

  function focusName() {
    const focused = document.activeElement;
    if (focused.id) return focused.id;
    if (!links.includes(focused)) return "";
    return isSwitch(focused) ? deviceKey(focused) : focused.search;
  }

  // Only when the server answers: an old page is better than the browser's error page.
  function refresh() {
    const { live } = document.body.dataset;
    if (document.hidden || busy || (live && live !== "absent")) return;
    const probe = new Image();
    probe.onload = () => {
      if (document.hidden || busy) return;
      keepPlace(location.search, focusName());
      location.reload();
    };
    probe.src = "homewarden.png?" + Date.now();
  }

  setInterval(() => {
    if (Date.now() - touched > QUIET_MS) refresh();
  }, REFRESH_MS);
  document.addEventListener("visibilitychange", refresh);
  window.addEventListener("pageshow", (event) => {
    if (!event.persisted) return;
    finishPress();
    refresh();
  });

  showPage();
  takePlace();
})();
