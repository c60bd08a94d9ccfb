// The ten-foot page as the house is: cards that switch, levels, what is on. The page as it was sent
// stays until the house has been read, and for good where there is no interface for programs.
import { live } from "./homewarden-live.js";
import { roomOfQuery, roomQuery } from "./homewarden-markup.js";
import { Card } from "./homewarden-tv-card.js";
import { make, makeStop, say, showBanner, showHint, showNext } from "./homewarden-tv-signs.js";
import { drawNotices } from "./homewarden-trouble.js";

const PLACES = 10;  // devices on a page
const HOME_PLACES = 6;
const ROOM_PLACES = 19;
const KEPT = "homewarden-tv";

const { focusedStop, focusStop, stops } = window.homewardenStops;
const nav = document.querySelector("nav");
const section = document.querySelector("section");
const heading = document.querySelector("h1");
const sentTitle = heading.textContent;

function makeButton(className, pressed) {
  const button = makeStop(make("button", className), "button");
  button.type = "button";
  button.addEventListener("click", pressed);
  return button;
}

// ---- What is looked at --------------------------------------------------------------------------

let cards = [];
let page = 0;
let roomPage = -1;      // -1: that of the room shown
const wereOn = new Set();  // devices that stay on the page "What is on" when they go off
let records = new Map();  // device's id -> what was recorded last, to tell what changes

// The one asked for; without a query that of the page as it was sent.
function currentRoom() {
  if (location.hash === "#home") return undefined;
  return roomOfQuery(location.search)
    || live.house.rooms.find((room) => room.name === sentTitle);
}

function view() {
  const room = currentRoom();
  if (room) return { name: room.slug, title: room.name, devices: room.devices, room };
  for (const device of live.devices()) if (device.on) wereOn.add(device.id);
  return {
    name: "#home",
    title: "What is on",
    devices: live.devices().filter((device) => wereOn.has(device.id)),
    isHome: true,
  };
}

// ---- The focus, which stays with what it was on -------------------------------------------------

function focusPlace() {
  const stop = focusedStop();
  if (!stop) return null;
  const slot = stop.closest("section > div");
  const card = cards.find((other) => other.place === slot);
  return {
    device: card && card.device ? card.device.id : undefined,
    slot: slot ? Array.from(section.children).indexOf(slot) : -1,
    isLevel: stop.matches("[role=slider]"),
    id: stop.id,
    room: stop.dataset.room,
  };
}

function restoreFocus(place) {
  if (!place) return;
  const used = cards.filter((card) => card.device);
  const card = used.find((other) => other.device.id === place.device)
    || (place.slot >= 0 ? cards[place.slot].device && cards[place.slot] || used.at(-1) : undefined);
  let stop = place.room && stops().find((other) => other.dataset.room === place.room);
  if (card) stop = place.isLevel && !card.level.hidden ? card.level : card.press;
  stop = stop || stops().find((other) => other.id && other.id === place.id) || stops()[0];
  if (stop && stop !== document.activeElement) focusStop(stop);
}

// Reloading comes back to where the focus was. Storage may be switched off.
function keepPlace() {
  try {
    sessionStorage.setItem(KEPT, JSON.stringify({ view: view().name, page, focus: focusPlace() }));
  } catch (error) { /* then it starts where the page says */ }
}

function keptPlace() {
  try {
    const kept = JSON.parse(sessionStorage.getItem(KEPT));
    return kept && kept.view === view().name ? kept : null;
  } catch (error) {
    return null;
  }
}

// ---- The rooms ----------------------------------------------------------------------------------

const home = makeStop(make("div", "button2 home"), "link");
home.id = "home";
const homeLink = make("a", "", home);
homeLink.href = "wmcindex.html#home";
homeLink.textContent = "Home";
homeLink.tabIndex = -1;
home.setAttribute("aria-label", "Home");

const moreRooms = makeButton("button2 more", () => {
  roomPage += 1;
  drawKeepingFocus();
});
moreRooms.id = "more-rooms";

function markCurrent(link, isCurrent) {
  if (isCurrent) link.setAttribute("aria-current", "page");
  else link.removeAttribute("aria-current");
}

function drawRoom(box, room, isCurrent) {
  const on = room.devices.filter((device) => device.on).length;
  let link = box.querySelector("a.name");
  if (box.dataset.room !== room.slug || !link) {
    box.replaceChildren();
    link = make("a", "name", box);
    link.href = "wmcindex.html" + roomQuery(room);
    link.textContent = room.name;
    link.tabIndex = -1;
    make("span", "count", box);
    makeStop(box, "link").dataset.room = room.slug;
  }
  const count = on ? on + " on" : "";
  box.querySelector(".count").textContent = count;
  box.setAttribute("aria-label", count ? room.name + ", " + count : room.name);
  markCurrent(link, isCurrent);
}

function drawRooms(shown) {
  const { rooms } = live.house;
  const places = rooms.length > ROOM_PLACES ? ROOM_PLACES - 1 : ROOM_PLACES;
  const pages = Math.max(1, Math.ceil(rooms.length / places));
  if (roomPage < 0) roomPage = Math.max(0, Math.floor(rooms.indexOf(shown.room) / places));
  roomPage %= pages;
  nav.prepend(home);
  markCurrent(homeLink, shown.isHome);
  const boxes = Array.from(nav.querySelectorAll(":scope > div:not(.home)"));
  while (boxes.length < places) boxes.push(make("div", "", nav));
  boxes.forEach((box, index) => {
    const room = index < places ? rooms[roomPage * places + index] : undefined;
    box.hidden = !room;
    if (!room) {
      box.replaceChildren();
      box.removeAttribute("data-room");
      box.removeAttribute("data-stop");
      return;
    }
    box.id = "option" + (index + 1);
    box.className = "button2";
    drawRoom(box, room, room === shown.room);
  });
  nav.append(moreRooms);
  moreRooms.hidden = pages === 1;
  const next = (roomPage + 1) % pages;
  moreRooms.textContent = next ? "More rooms" : "First rooms";
  document.body.classList.toggle("few-rooms", rooms.length < 10);
  document.body.classList.toggle("without-rooms", rooms.length === 0);
}

// ---- The devices --------------------------------------------------------------------------------

const moreDevices = makeButton("imcl1 more", () => {
  page += 1;
  drawKeepingFocus();
});
moreDevices.id = "more-devices";
section.after(moreDevices);

function drawDevices({ devices, isHome, title }) {
  const places = isHome ? HOME_PLACES : PLACES;
  const pages = Math.max(1, Math.ceil(devices.length / places));
  page %= pages;
  if (!cards.length) {
    const sent = Array.from(section.querySelectorAll(":scope > div"));
    while (sent.length < PLACES) sent.push(make("div", "", section));
    cards = sent.map((place, index) => new Card(place, "module" + (index + 1)));
  }
  const shown = devices.slice(page * places, (page + 1) * places);
  cards.forEach((card, index) => card.draw(shown[index], Boolean(isHome)));
  heading.textContent = title;
  const first = ((page + 1) % pages) * places + 1;
  moreDevices.hidden = pages === 1;
  const last = Math.min(first + places - 1, devices.length);
  moreDevices.textContent = (first > 1 ? "More: " : "Back to ") + first
    + (last > first ? " to " + last : "") + " of " + devices.length;
  const body = document.body.classList;
  body.toggle("few-devices", devices.length <= 6 || Boolean(isHome));
  body.toggle("without-devices", devices.length === 0 && !isHome);
  body.toggle("nothing-on", devices.length === 0 && Boolean(isHome));
  body.toggle("at-home", Boolean(isHome));
  body.remove("choose");
}

// ---- All of it ----------------------------------------------------------------------------------

let isDrawn = false;

function draw() {
  const shown = view();
  document.title = (shown.isHome ? "" : shown.title + " \u2013 ") + "Homewarden";
  drawRooms(shown);
  drawDevices(shown);
  showNext(shown.isHome ? live.house.next_events : [], live.houseNow());
  document.body.classList.add("live");
  isDrawn = true;
}

function drawKeepingFocus() {
  const place = focusPlace();
  draw();
  restoreFocus(place);
  showHint();
}

// From the page as it was sent, or as it was left. Who comes from the rooms stays with the one
// chosen: the page as it was sent knows the first alone.
function firstDraw() {
  const place = focusPlace();
  const kept = keptPlace();
  if (kept) ({ page } = kept);
  draw();
  if (kept) restoreFocus(kept.focus || {});
  else if (location.hash && cards[0].press) focusStop(cards[0].press);
  else if (place && place.id === "option1" && currentRoom())
    restoreFocus({ room: currentRoom().slug });
  else restoreFocus(place || {});
}

function remember() {
  records = new Map(live.devices().map(({ id, on, level }) => [id, { on, level }]));
}

live.addEventListener("house", () => {
  if (isDrawn) drawKeepingFocus();
  else firstDraw();
  remember();
  drawNotices();
  showBanner();
});

live.addEventListener("device", ({ detail: device }) => {
  const before = records.get(device.id);
  const { on, level } = device;
  records.set(device.id, { on, level });
  drawKeepingFocus();
  if (before && (before.on !== on || before.level !== level) && cards.some((card) => card.device === device))
    say(device.name + (on ? device.dimmable ? " on at " + level + " %" : " on" : " off"));
});

live.addEventListener("outcome", ({ detail: { device, press } }) => {
  if (press.state !== "done") say(device.name + ": not sent. " + press.detail);
});

live.addEventListener("notices", drawNotices);
live.addEventListener("interface", showBanner);
live.addEventListener("state", showBanner);
window.addEventListener("hashchange", () => {
  page = 0;
  wereOn.clear();
  if (live.house) drawKeepingFocus();
});
window.addEventListener("pagehide", () => {
  cards.forEach((card) => card.send());
  if (live.house) keepPlace();
});
setInterval(() => { if (live.house && live.state === "connected") drawKeepingFocus(); }, 60000);

live.start();
