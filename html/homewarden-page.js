// The page for browsers, live: rooms change in place, presses go by script, what is wrong is said.

import { live } from "./homewarden-live.js";
import { deviceOfLink, roomOfQuery, roomQuery } from "./homewarden-markup.js";
import { Cards, stateWords, toggle } from "./homewarden-cards.js";
import { countOn, countWords, Home, make, setText } from "./homewarden-home.js";
import { bannerText, drawNotices } from "./homewarden-trouble.js";

const main = document.querySelector("main");
const heading = main.querySelector("h1");
const summary = main.querySelector(".summary");
const nav = document.querySelector("nav ul");
const list = main.querySelector("ul");
const homePlace = document.getElementById("home");
const banner = document.getElementById("banner");
const spoken = document.getElementById("spoken");
const cards = new Cards(list);
const home = new Home(homePlace);
const look = document.documentElement.classList;  // as homewarden-start.js began it
const isHome = () => !location.search;

// ---- What is shown ------------------------------------------------------------------------------

function drawHeading() {
  const room = roomOfQuery(location.search);
  if (isHome()) {
    setText(heading, home.heading());
    setText(summary, home.summary());
    document.title = "Homewarden";
  } else if (room) {
    setText(heading, room.name);
    setText(summary, countWords(room.devices));
    document.title = room.name + " \u2013 Homewarden";
  }
}

function drawNav() {
  const room = roomOfQuery(location.search);
  const homeLink = nav.querySelector(".home a");
  if (isHome()) homeLink.setAttribute("aria-current", "page");
  else homeLink.removeAttribute("aria-current");
  const places = [...nav.children].filter((place) => !place.classList.contains("home"));
  live.house.rooms.forEach((one, i) => {
    const place = places[i] || nav.appendChild(make("li"));
    place.classList.remove("over");
    let link = place.querySelector("a");
    if (!link) {
      link = make("a");
      link.append(make("font"));
      place.replaceChildren(link);
    }
    if (!link.badge) {
      link.badge = make("span", "badge");
      link.append(link.badge);
    }
    link.setAttribute("href", "index.html" + roomQuery(one));
    setText(link.querySelector("font"), one.name);
    const on = countOn(one.devices);
    link.badge.hidden = !on;
    setText(link.badge, on ? String(on) : "");
    link.setAttribute("aria-label", on ? one.name + ", " + on + " on" : one.name);
    if (one === room) link.setAttribute("aria-current", "page");
    else link.removeAttribute("aria-current");
  });
  places.slice(live.house.rooms.length).forEach((place) => place.replaceChildren());
}

function drawBanner() {
  const text = bannerText();
  banner.hidden = !text;
  document.body.classList.toggle("with-banner", Boolean(text));
  setText(banner, text);
  if (live.state !== "refused") return;
  const again = make("a", "", "Log in");
  again.href = location.href;
  banner.append(" ", again);
}

function drawAll() {
  if (!live.house) return;
  const body = document.body.classList;
  homePlace.hidden = !isHome();
  list.hidden = isHome();
  body.toggle("is-home", isHome());
  const room = roomOfQuery(location.search);
  if (isHome()) home.draw();
  else cards.show(room);
  // A room that has gone, or has another name now.
  if (!isHome() && !room && !list.children.length && live.state !== "lost"
      && live.house.rooms.length) {
    history.replaceState({}, "", "index.html");
    drawAll();
    return;
  }
  body.toggle("without-rooms", !live.house.rooms.length);
  body.toggle("without-devices", !isHome() && !list.children.length);
  body.remove("choose");
  look.remove("opening");
  drawHeading();
  drawNav();
  drawNotices();
  drawBanner();
}

// An address of a room that the house has not, or has no more, leads home.
function leaveNowhere() {
  if (live.state !== "connected" || isHome() || !live.house.rooms.length) return;
  if (roomOfQuery(location.search) || list.children.length) return;
  history.replaceState({}, "", "index.html");
  home.open();
  drawAll();
}

live.addEventListener("house", () => {
  drawAll();
  leaveNowhere();
});
live.addEventListener("device", ({ detail }) => {
  if (isHome()) home.drawDevice(detail);
  else cards.draw(detail);
  drawHeading();
  drawNav();
});
live.addEventListener("interface", drawBanner);
live.addEventListener("notices", drawNotices);
live.addEventListener("state", () => {
  look.remove("opening");
  drawBanner();
  leaveNowhere();
});

// ---- What is said -------------------------------------------------------------------------------

live.addEventListener("outcome", ({ detail: { device, press } }) => {
  const words = stateWords(device, press).toLowerCase().replace("\u00a0%", " percent");
  const done = words.endsWith("percent") ? "on, " + words : words;
  const text = device.name + (press.state === "done" ? " " + done
    : " not sent: " + done + (press.detail ? ". " + press.detail : ""));
  // The same words twice are said twice.
  spoken.textContent = "";
  setTimeout(() => { spoken.textContent = text; }, 50);
});

// ---- Going from room to room --------------------------------------------------------------------

history.scrollRestoration = "manual";
let leaving = 0;
function keepScroll() {
  history.replaceState({ ...history.state, top: window.scrollY }, "");
}
addEventListener("scroll", () => {
  clearTimeout(leaving);
  leaving = setTimeout(keepScroll, 150);
}, { passive: true });

function arrive(top) {
  if (isHome()) home.open();
  drawAll();
  window.scrollTo(0, top);
  const current = nav.querySelector("[aria-current]");
  if (current) current.scrollIntoView({ block: "nearest", inline: "center" });
}

addEventListener("popstate", (event) => {
  clearTimeout(leaving);
  if (live.house) arrive((event.state && event.state.top) || 0);
  else location.reload();
});

function go(link, byKey) {
  clearTimeout(leaving);
  keepScroll();
  if (link.search !== location.search) history.pushState({}, "", link.href);
  const inMain = main.contains(link);
  arrive(0);
  if (inMain && byKey) main.focus({ preventScroll: true });
}

const isPage = (link) => link.origin === location.origin
  && link.pathname.replace(/[^/]*$/, "") === location.pathname.replace(/[^/]*$/, "")
  && link.pathname.endsWith("/index.html") && !link.hash;

// Before the script for pages without the house does it, which may be a changed one.
document.addEventListener("click", (event) => {
  const link = event.target.closest("a");
  if (!link || !live.house || event.button || event.ctrlKey || event.metaKey || event.shiftKey
      || event.altKey) return;
  const device = deviceOfLink(link);
  if (device) {
    event.preventDefault();
    event.stopPropagation();
    toggle(device);
  } else if (isPage(link) && !banner.contains(link)
      && (!link.search || roomOfQuery(link.search))) {
    event.preventDefault();
    event.stopPropagation();
    go(link, event.detail === 0);
  }
}, true);

document.addEventListener("keydown", (event) => {
  const link = event.target.closest("a[role=switch]");
  if (event.key !== " " || !link) return;
  event.preventDefault();
  if (!event.repeat) link.click();
});

// ---- The beginning ------------------------------------------------------------------------------

live.addEventListener("house", () => {
  window.scrollTo(0, (history.state && history.state.top) || 0);
}, { once: true });
live.addEventListener("state", ({ detail }) => {
  if (detail === "absent") look.remove("live");
});
live.start();
