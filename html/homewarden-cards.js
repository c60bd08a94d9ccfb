// The cards of devices: the program's cells, made live. What was asked for shows at once, orange
// only what is recorded.

import { live } from "./homewarden-live.js";
import { deviceOfLink, makeCell, updateCell } from "./homewarden-markup.js";

const PAGE = "index.html";
const KEY_PAUSE_MS = 350;  // after the last key on a slider, before its level is sent

const percent = (level) => level + "\u00a0%";
// "On", "Off" or "40 %".
export function stateWords(device, { on, level }) {
  if (!on) return "Off";
  return device.dimmable && level < 100 ? percent(level) : "On";
}

// What stands on a card's pill.
export function pillWords(device, shown) {
  const words = stateWords(device, shown);
  switch (shown.state) {
    case "waiting": return "Waiting: " + words.toLowerCase();
    case "sending":
      return words.endsWith("%") ? "Setting " + words : "Turning " + words.toLowerCase();
    case "not_sent": return "Not sent";
    default: return words;
  }
}

// How bright it shines, 0 to 1.
export const lightOf = (device) =>
  device.on ? (device.dimmable ? device.level : 100) / 100 : 0;

// To the other state than what was last asked for, or what is recorded where that was not sent.
export function toggle(device) {
  const shown = live.shown(device);
  const on = shown.state === "not_sent" ? device.on : shown.on;
  live.press(device, { command: on ? "off" : "on" });
}

function makeSlider(device, moved) {
  const slider = document.createElement("input");
  slider.type = "range";
  slider.min = 0;
  slider.max = 100;
  slider.step = 5;
  slider.setAttribute("aria-label", "Level of " + device.name);
  let timer = 0;
  const send = () => {
    clearTimeout(timer);
    if (!timer) return;
    timer = 0;
    const level = Number(slider.value);
    live.press(device, level ? { command: "level", level } : { command: "off" });
  };
  // A finger sends when it lets go, keys when they rest.
  slider.addEventListener("input", () => {
    clearTimeout(timer);
    timer = setTimeout(() => { if (!slider.matches(":active")) send(); }, KEY_PAUSE_MS);
    moved(Number(slider.value));
  });
  slider.addEventListener("change", () => { if (!slider.matches(":focus-visible")) send(); });
  slider.addEventListener("pointerup", () => setTimeout(send));
  slider.addEventListener("blur", send);
  slider.isMoving = () => timer !== 0;
  return slider;
}

export class Card {
  // `place` is a list's element with the program's cell in it, or empty.
  constructor(place, device, room) {
    this.place = place;
    this.device = device;
    this.room = room;
    if (!place.querySelector("a")) place.replaceChildren(makeCell(device));
    this.link = place.querySelector("b > a");
    this.dress();
    this.draw();
  }

  dress() {
    const { place, device, link } = this;
    const again = place.querySelector("i");
    if (again) again.remove();
    delete place.dataset.trouble;
    const pictured = place.querySelector("img").parentNode;
    pictured.tabIndex = -1;
    pictured.setAttribute("aria-hidden", "true");
    link.setAttribute("role", "switch");
    link.setAttribute("aria-label", device.name);
    link.removeAttribute("title");
    link.draggable = false;
    this.foot = document.createElement("div");
    this.foot.className = "foot";
    if (device.dimmable) {
      this.slider = makeSlider(device, (level) => this.preview(level));
      this.foot.append(this.slider);
    }
    this.retry = document.createElement("button");
    this.retry.type = "button";
    this.retry.className = "retry";
    this.retry.textContent = "Retry";
    this.retry.addEventListener("click", () => {
      live.retry(this.device);
      this.link.focus({ preventScroll: true });  // the button goes
    });
    place.querySelector("font").append(this.foot);
  }

  // The level under a finger that has not let go.
  preview(level) {
    this.level(level);
    this.link.dataset.pill = level ? percent(level) : "Off";
    this.place.dataset.phase = "moving";
  }

  level(level) {
    this.slider.style.setProperty("--level", level + "%");
    this.slider.setAttribute("aria-valuetext", level ? level + " percent" : "off");
  }

  draw() {
    const { place, device, link, slider } = this;
    const shown = live.shown(device);
    const words = pillWords(device, shown);
    updateCell(place, device, this.room, PAGE);
    place.dataset.state = device.on ? "on" : "off";
    place.style.setProperty("--light", lightOf(device));
    link.setAttribute("aria-checked", String(device.on));
    const plain = shown.state === "recorded";
    if (plain) link.removeAttribute("aria-description");
    else link.setAttribute("aria-description", words.replace("\u00a0%", " percent"));
    const failed = shown.state === "not_sent";
    if (slider && !slider.isMoving()) {
      const level = failed ? device.on ? device.level : 0 : shown.on ? shown.level : 0;
      slider.value = level;
      this.level(level);
    }
    if (!slider || !slider.isMoving()) {
      link.dataset.pill = words;
      place.dataset.phase = shown.state;
      this.foot.title = shown.detail;
    }
    if (slider) slider.hidden = failed;
    if (failed) {
      if (!this.retry.isConnected) this.foot.append(this.retry);
      this.retry.setAttribute("aria-label", "Retry " + device.name + ": turn "
        + stateWords(device, shown).toLowerCase());
    } else {
      this.retry.remove();
    }
  }
}

// The list of a room's devices. Cells that the program has put in become cards as they stand.
export class Cards {
  #cards = new Map();  // device's id -> Card

  constructor(list) {
    this.list = list;
  }

  // All devices of the room, in its order; or, without one, those that the page came with.
  show(room) {
    const places = new Map();
    for (const place of this.list.children) {
      const link = place.querySelector("b > a");
      const device = link && deviceOfLink(link);
      if (device && !places.has(device.id)) places.set(device.id, place);
      else if (link) places.set(place, null);  // not in the house any more
    }
    const devices = room ? room.devices : [...places.keys()].map((id) => live.device(id))
      .filter(Boolean);
    const wanted = devices.map((device) => {
      const known = this.#cards.get(device.id);
      const place = places.get(device.id) || (known && known.place)
        || document.createElement("li");
      if (known && known.place === place && known.device === device) return known;
      return this.#make(place, device, room);
    });
    this.#cards = new Map(wanted.map((card) => [card.device.id, card]));
    const elements = wanted.map((card) => card.place);
    for (const place of [...this.list.children]) if (!elements.includes(place)) place.remove();
    elements.forEach((place, i) => {
      if (this.list.children[i] !== place)
        this.list.insertBefore(place, this.list.children[i] || null);
    });
    wanted.forEach((card) => card.draw());
  }

  #make(place, device, room) {
    const known = this.#cards.get(device.id);
    // A device read anew keeps its card, and with it the focus, unless it is another kind.
    if (known && known.place === place && known.device.name === device.name
        && known.device.dimmable === device.dimmable) {
      known.device = device;
      known.room = room || known.room;
      return known;
    }
    if (known) place.replaceChildren();
    return new Card(place, device, room || live.house.rooms.find((one) =>
      one.devices.includes(device)));
  }

  draw(device) {
    const card = this.#cards.get(device.id);
    if (card) card.draw();
  }
}
