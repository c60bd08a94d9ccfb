// The card of a device on a ten-foot page: a switch and, where the device can be dimmed, its level
// below. Down goes to the level, left and right change it.
import { live } from "./homewarden-live.js";
import { picture } from "./homewarden-markup.js";
import { make, makeStop } from "./homewarden-tv-signs.js";

const STEP = 10;         // per cent
const SETTLED_MS = 350;  // without another key before a level is sent

const { focusStop, move } = window.homewardenStops;

export class Card {
  device = undefined;
  #level = undefined;  // chosen with the keys and not sent yet
  #timer = 0;

  // Takes the place of what the page was sent with.
  constructor(place, id) {
    this.place = place;
    this.id = id;
  }

  #build() {
    const { place } = this;
    for (const name of ["role", "tabindex", "aria-label", "data-stop", "data-trouble", "data-label"])
      place.removeAttribute(name);
    place.id = this.id;
    place.className = "imcl1";
    place.replaceChildren();
    this.press = makeStop(make("div", "press", place), "switch");
    this.picture = make("img", "", this.press);
    this.picture.alt = "";
    this.name = make("b", "", this.press);
    this.room = make("small", "", this.press);
    this.state = make("span", "state", this.press);
    this.level = makeStop(make("div", "level", place), "slider");
    this.level.setAttribute("aria-valuemin", "0");
    this.level.setAttribute("aria-valuemax", "100");
    this.bar = make("span", "bar", this.level);
    this.figure = make("span", "figure", this.level);
    this.press.addEventListener("click", () => this.#pressed());
    this.level.addEventListener("click", (event) => this.#levelClicked(event));
    this.level.addEventListener("keydown", (event) => this.#levelKey(event));
    this.level.addEventListener("blur", () => this.send());
  }

  // Nothing: the place stays empty.
  draw(device, tellsRoom) {
    if (this.device && (!device || device.id !== this.device.id)) this.send();
    this.device = device;
    this.place.hidden = !device;
    if (!device) {
      this.place.className = "";
      this.place.replaceChildren();
      this.press = this.level = undefined;
      return;
    }
    if (!this.press) this.#build();
    const { on, level, state, detail } = this.#shown();
    const recorded = on ? "On" : "Off";
    const text = device.switchable
      ? { waiting: "Waiting\u2026", sending: "Switching\u2026", not_sent: "Not sent" }[state] || recorded
      : "No address";
    const source = picture({ type: device.type, on });
    if (this.picture.getAttribute("src") !== source) this.picture.src = source;
    this.name.textContent = device.name;
    this.room.textContent = tellsRoom ? device.room : "";
    this.state.textContent = text;
    this.place.dataset.state = on ? "on" : "off";
    this.place.dataset.press = state;
    this.press.setAttribute("aria-checked", String(on));
    this.press.setAttribute("aria-disabled", String(!device.switchable));
    const parts = [device.name];
    if (tellsRoom) parts.push(device.room);
    if (on && device.dimmable) parts.push(level + " %");
    if (text !== recorded) parts.push(text);
    if (detail) parts.push(detail);
    this.press.setAttribute("aria-label", parts.join(", "));
    this.press.dataset.hint = !device.switchable ? "The power line has no such address"
      : (state === "not_sent" ? "OK sends it again" : "OK switches")
        + (device.dimmable ? ", \u25BC its level" : "");
    this.level.hidden = !device.dimmable || !device.switchable;
    if (!this.level.hidden) this.#drawLevel(level);
  }

  #drawLevel(level) {
    this.level.setAttribute("aria-label", this.device.name + ", level");
    this.level.setAttribute("aria-valuenow", String(level));
    this.level.setAttribute("aria-valuetext", level + " %");
    this.level.dataset.hint = "\u25C0 \u25B6 by 10 %, OK switches, \u25B2 leaves the level";
    this.bar.style.width = level + "%";
    this.figure.textContent = level + " %";
  }

  #shown() {
    const shown = live.shown(this.device);
    const { on, level: recorded } = this.device;
    if (this.#level === undefined)
      return shown.state === "not_sent" ? { ...shown, on, level: recorded } : shown;
    return { ...shown, on: this.#level > 0, level: this.#level, state: "waiting" };
  }

  // ---- What a person does -----------------------------------------------------------------------

  #pressed() {
    const { device } = this;
    if (!device.switchable) return;
    this.send();
    const { state, on } = live.shown(device);
    if (state === "not_sent") live.retry(device);
    else live.press(device, { command: on ? "off" : "on" });
  }

  #levelClicked(event) {
    if (event.detail === 0) {  // a key
      this.#pressed();
      return;
    }
    const { left, width } = this.level.getBoundingClientRect();
    this.#choose(Math.round((event.clientX - left) / width * 100 / STEP) * STEP);
  }

  #levelKey(event) {
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    const { level } = this.#shown();
    const steps = {
      ArrowLeft: Math.ceil(level / STEP) * STEP - STEP,
      ArrowRight: Math.floor(level / STEP) * STEP + STEP,
      Home: 0,
      End: 100,
    };
    if (event.key === "ArrowUp") focusStop(this.press);
    else if (event.key === "ArrowDown") move(this.level, event.key);
    else if (event.key in steps) this.#choose(steps[event.key]);
    else return;
    event.preventDefault();
    event.stopPropagation();
  }

  #choose(level) {
    this.#level = Math.max(0, Math.min(100, level));
    clearTimeout(this.#timer);
    this.#timer = setTimeout(() => this.send(), SETTLED_MS);
    this.draw(this.device, Boolean(this.room.textContent));
  }

  // The level that was chosen, if it was not sent yet: of a key that is held only the newest.
  send() {
    clearTimeout(this.#timer);
    if (this.#level === undefined) return;
    const level = this.#level;
    this.#level = undefined;
    live.press(this.device, { command: "level", level });
  }
}
