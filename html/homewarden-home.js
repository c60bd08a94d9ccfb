// The home page: what is on, the rooms with their counts, what comes next.

import { live } from "./homewarden-live.js";
import { picture, roomQuery } from "./homewarden-markup.js";
import { lightOf, pillWords, toggle } from "./homewarden-cards.js";

const PAGE = "index.html";
const STAY_MS = 8000;  // a chip switched off can be switched on again for so long
const TICK_MS = 10000;
const MOST_DOTS = 17;
const DAYS = ["Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"];
const MONTHS = ["January", "February", "March", "April", "May", "June", "July", "August",
  "September", "October", "November", "December"];

export function make(name, className = "", text = "") {
  const element = document.createElement(name);
  if (className) element.className = className;
  if (text) element.textContent = text;
  return element;
}

export function setText(element, text) {
  if (element.textContent !== text) element.textContent = text;
}

export const countOn = (devices) => devices.filter((device) => device.on).length;

// "3 of 17 on", "4 off", "All 4 on".
export function countWords(devices) {
  const on = countOn(devices);
  if (!devices.length) return "No devices yet";
  if (!on) return devices.length === 1 ? "Off" : devices.length + " off";
  if (on === devices.length) return on === 1 ? "On" : "All " + on + " on";
  return on + " of " + devices.length + " on";
}

// ---- When an event runs -------------------------------------------------------------------------

const utcDay = (date) => Math.floor(date.getTime() / 86400000);

// "in 22 min", "today", "tomorrow", "Thursday": from the house's now to a local time of its.
function until(next, now) {
  const then = new Date(next + "Z");
  const minutes = Math.ceil((then - now) / 60000);
  if (minutes <= 0) return "now";
  if (minutes < 60) return "in " + minutes + " min";
  const days = utcDay(then) - utcDay(now);
  if (days === 0) return then.getUTCHours() >= 18 ? "tonight" : "today";
  if (days === 1) return "tomorrow";
  return days < 7 ? DAYS[then.getUTCDay()]
    : then.getUTCDate() + " " + MONTHS[then.getUTCMonth()];
}

// ---- Chips --------------------------------------------------------------------------------------

class Chip {
  constructor(device) {
    this.device = device;
    this.place = make("li");
    this.button = make("button", "chip");
    this.button.type = "button";
    this.button.setAttribute("role", "switch");
    this.image = make("img");
    this.image.alt = "";
    this.words = make("span", "detail");
    const text = make("span", "text");
    text.append(make("b", "", device.name), this.words);
    this.button.append(this.image, text, make("span", "power"));
    this.button.addEventListener("click", () => {
      if (live.shown(this.device).state === "not_sent") live.retry(this.device);
      else toggle(this.device);
    });
    this.place.append(this.button);
    this.since = 0;  // when it went off
  }

  draw(room) {
    const { device } = this;
    const shown = live.shown(device);
    this.place.dataset.state = device.on ? "on" : "off";
    this.place.dataset.phase = shown.state;
    this.place.style.setProperty("--light", lightOf(device));
    const source = picture(device);
    if (this.image.getAttribute("src") !== source) this.image.setAttribute("src", source);
    const words = pillWords(device, shown);
    setText(this.words, words === "On" ? room.name : room.name + ", " + words);
    this.button.setAttribute("aria-checked", String(device.on));
    this.button.setAttribute("aria-label", device.name + ", " + room.name);
  }
}

// ---- The page -----------------------------------------------------------------------------------

export class Home {
  #chips = new Map();  // device's id -> Chip
  #tiles = new Map();  // room's name -> its elements
  #timer = 0;
  #eventsSeen = "";

  constructor(place) {
    this.chips = make("ul", "chips");
    this.chips.setAttribute("aria-label", "What is on");
    this.rooms = make("ul", "tiles");
    this.events = make("ol", "events");
    const rooms = make("section");
    rooms.append(make("h2", "", "Rooms"), this.rooms);
    this.next = make("section", "next");
    this.next.append(make("h2", "", "Next events"), this.events);
    const below = make("div", "below");
    below.append(rooms, this.next);
    place.replaceChildren(this.chips, below);
    setInterval(() => { if (live.house && !place.hidden) this.#tick(); }, TICK_MS);
  }

  // What the heading and the line below it say.
  heading() {
    const on = countOn(live.devices());
    if (!on) return "Everything is off";
    return on === 1 ? "1 device is on" : on + " devices are on";
  }

  summary() {
    const now = live.houseNow();
    const day = DAYS[now.getUTCDay()] + " " + now.getUTCDate() + " " + MONTHS[now.getUTCMonth()];
    return live.house.profile ? day + ", profile " + live.house.profile : day;
  }

  // Starts anew: what went off while the page was away leaves.
  open() {
    this.#chips.clear();
    this.chips.replaceChildren();
    this.draw();
  }

  draw() {
    for (const room of live.house.rooms)
      for (const device of room.devices) this.#drawChip(device, room);
    for (const [id, chip] of this.#chips) {
      if (live.device(id)) continue;
      chip.place.remove();
      this.#chips.delete(id);
    }
    this.#drawRooms();
    this.#drawEvents();
  }

  drawDevice(device) {
    const room = live.house.rooms.find((one) => one.devices.includes(device));
    if (!room) return;
    this.#drawChip(device, room);
    this.#drawTile(room);
  }

  // A chip that goes off stays for a while where it is: the next one must not come under a finger
  // that presses twice.
  #drawChip(device, room) {
    let chip = this.#chips.get(device.id);
    const notSent = live.shown(device).state === "not_sent";
    if (!chip && !device.on && !notSent) return;
    if (!chip) {
      chip = new Chip(device);
      this.#chips.set(device.id, chip);
      this.chips.append(chip.place);
    }
    chip.device = device;
    chip.draw(room);
    const stays = device.on || live.shown(device).state !== "recorded";
    if (stays) chip.since = 0;
    else if (!chip.since) chip.since = Date.now();
    if (!stays) this.#sweepSoon();
  }

  #sweepSoon() {
    this.#timer = this.#timer || setTimeout(() => this.#sweep(), 1000);
  }

  #sweep() {
    this.#timer = 0;
    const gone = [...this.#chips.values()].filter((chip) => chip.since);
    const busy = this.chips.matches(":hover") || this.chips.contains(document.activeElement);
    const late = Date.now() - STAY_MS;
    if (!gone.length) return;
    if (!busy && gone.every((chip) => chip.since < late))
      for (const chip of gone) {
        chip.place.remove();
        this.#chips.delete(chip.device.id);
      }
    else this.#sweepSoon();
  }

  #drawRooms() {
    const { rooms } = live.house;
    const tiles = rooms.map((room) => this.#drawTile(room));
    const known = new Set(rooms.map((room) => room.name));
    for (const name of [...this.#tiles.keys()]) if (!known.has(name)) this.#tiles.delete(name);
    if (tiles.some((tile, i) => this.rooms.children[i] !== tile)
        || this.rooms.children.length !== tiles.length) this.rooms.replaceChildren(...tiles);
  }

  #drawTile(room) {
    let tile = this.#tiles.get(room.name);
    if (!tile) {
      const place = make("li");
      const link = make("a", "tile");
      const count = make("span", "count");
      const dots = make("span", "dots");
      dots.setAttribute("aria-hidden", "true");
      link.append(make("b", "", room.name), count, dots);
      place.append(link);
      tile = { place, link, count, dots };
      this.#tiles.set(room.name, tile);
    }
    tile.link.setAttribute("href", PAGE + roomQuery(room));
    setText(tile.count, countWords(room.devices));
    const dots = room.devices.slice(0, MOST_DOTS).map((device) => device.on ? "on" : "off");
    const more = room.devices.length - dots.length;
    const drawn = dots.join(" ") + more;
    if (tile.dots.dataset.drawn !== drawn) {
      tile.dots.dataset.drawn = drawn;
      tile.dots.replaceChildren(...dots.map((state) => make("i", state)));
      if (more > 0) tile.dots.append(make("span", "", "+" + more));
    }
    return tile.place;
  }

  #drawEvents() {
    const events = live.house.next_events || [];
    const now = live.houseNow();
    const drawn = JSON.stringify(events.map((event) => [event, until(event.next, now)]));
    if (drawn === this.#eventsSeen) return;
    this.#eventsSeen = drawn;
    this.events.replaceChildren(...events.map((event) => {
      const place = make("li");
      const text = make("span", "text");
      text.append(make("b", "", event.text.replace(/ %/g, "\u00a0%")),
        make("span", "detail", [event.room, until(event.next, now)].filter(Boolean).join(", ")));
      const time = make("time", "", event.next.slice(11, 16));
      time.dateTime = event.next;
      place.append(time, make("i", event.action), text);
      return place;
    }));
    if (!events.length) this.events.append(make("li", "none", "No events are planned."));
  }

  #tick() {
    this.#drawEvents();
    const [first] = live.house.next_events || [];
    // It has run: what comes behind the last one is known to the house alone.
    if (first && live.state === "connected" && new Date(first.next + "Z") < live.houseNow() - 5000)
      live.refresh();
  }
}
