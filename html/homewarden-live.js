// The house as it is now, for the scripts of both kinds of pages: read once, then kept true by the
// stream of changes. Used like this:
//
//   import { live } from "./homewarden-live.js";
//   live.addEventListener("device", ({ detail }) => draw(detail));
//   live.press(live.device("KitchenTableLamp"), { command: "level", level: 40 });
//   live.start();
//
// Events, each with its `detail`:
//   state      live.state: "connecting", "connected", "lost", "refused" (live.reason says why) or
//              "absent" (this program has no such interface: the page's links do it all)
//   house      everything anew: rooms, devices and what stands in live.house beside them
//   device     a device whose record, or what was asked of it here, has changed
//   outcome    { device, press }: how the newest press of this page ended, for announcing it
//   interface, notices, profile           that part of live.house
// A device is an object of GET /api/v1/house; `live.shown(device)` says what its card shows.

import { forgetHouse, keepHouse, keepPages, keptHouse } from "./homewarden-kept.js";
import { ask, follow, Refusal, SILENCE_MS } from "./homewarden-stream.js";
import { Presses } from "./homewarden-presses.js";

const ROOT = new URL("api/v1/", import.meta.url);
const FIRST_DELAY_MS = 500;
const LONGEST_DELAY_MS = 10000;
const REFUSED_DELAY_MS = 30000;
const PATIENCE_MS = 3000;   // for a connection after coming back, before it counts as lost
const HIDDEN_MS = 20000;    // then a page nobody sees gives its connection to others
const TOGETHER_MS = 100;    // what tells to read anew comes in bunches
const KEEP_MS = 2000;

const place = (id) => {
  const [, run, number] = /^(.*)-(\d+)$/.exec(id || "") || [];
  return { run, number: Number(number) };
};

class Live extends EventTarget {
  state = "connecting";
  reason = "";
  house = null;
  seen = 0;  // when the house was last known to be as shown, by this machine's clock

  #devices = new Map();
  #presses = new Presses(ROOT, (id) => this.#tellDevice(id), (press) => this.#tellEnd(press));
  #lastId = "";       // of the stream; "" when the house has to be read
  #early = null;      // events that come while the house is read
  #abort = null;      // of the stream
  #wake = null;       // ends the pause between two tries
  #paused = false;
  #forbidden = false;
  #reading = null;
  #clock = 0;         // the house's local time less this machine's
  #timers = {};

  // ---- What there is ----------------------------------------------------------------------------

  device(id) {
    return this.#devices.get(id);
  }

  devices() {
    return [...this.#devices.values()];
  }

  // The device of a page's switch link: its key (field 3, decoded) and address, like "A3", which
  // decides between two devices of the same key.
  deviceOfLink(key, address = "") {
    const found = this.devices().filter((device) => device.page_key === key);
    return found.find((device) => device.address === address) || found[0];
  }

  // What a card shows: { state, on, level, detail } with state "recorded", "waiting", "sending" or
  // "not_sent"; unless recorded, on and level are what was asked for.
  shown(device) {
    const press = this.#presses.of(device.id);
    if (press) {
      const state = { done: "recorded", failed: "not_sent" }[press.state] || press.state;
      return { state, on: press.on, level: press.level, detail: press.detail };
    }
    const { pending, not_sent: notSent } = device;
    if (pending) return { state: pending.state, on: pending.on, level: pending.level, detail: "" };
    if (notSent) return { state: "not_sent", on: notSent.on, level: notSent.level, detail: "" };
    return { state: "recorded", on: device.on, level: device.level, detail: "" };
  }

  // The house's clock, as a Date whose UTC parts are the house's local ones.
  houseNow() {
    return new Date(Date.now() + this.#clock);
  }

  // ---- What a person does -----------------------------------------------------------------------

  // `command` is "on", "off", "toggle", "level" (with `level` 0 to 100), "up", "down" or "repeat".
  press(device, { command, level }) {
    this.#presses.press(device, { command, level });
  }

  // Once more what could not be sent.
  retry(device) {
    const press = this.#presses.of(device.id);
    if (press && press.state === "failed") this.press(device, press);
    else this.press(device, { command: "repeat" });
  }

  // Reads everything anew, soon.
  refresh() {
    clearTimeout(this.#timers.refresh);
    this.#timers.refresh = setTimeout(() => {
      this.#read().catch(() => this.#reconnect());
    }, TOGETHER_MS);
  }

  start() {
    document.body.dataset.live = this.state;
    // An older program's pages may ask for nothing.
    document.addEventListener("securitypolicyviolation", (event) => {
      this.#forbidden = this.#forbidden || event.effectiveDirective === "connect-src";
    });
    window.addEventListener("online", () => this.#reconnect());
    window.addEventListener("offline", () => this.#reconnect());
    document.addEventListener("resume", () => this.#resume());
    window.addEventListener("pageshow", (event) => { if (event.persisted) this.#resume(); });
    window.addEventListener("pagehide", () => {
      this.#presses.flush();
      this.#keep();
      this.#pause();
    });
    document.addEventListener("visibilitychange", () => {
      clearTimeout(this.#timers.hidden);
      if (document.hidden) this.#timers.hidden = setTimeout(() => this.#pause(), HIDDEN_MS);
      else this.#resume();
    });
    this.addEventListener("state", ({ detail }) => { if (detail === "connected") keepPages(); });
    this.#run();
  }

  // ---- The connection ---------------------------------------------------------------------------

  async #run() {
    for (let failures = 0; ;) {
      const began = Date.now();
      try {
        if (!this.#lastId) await this.#read();
        this.#abort = new AbortController();
        await follow(new URL("stream", ROOT), this.#lastId, this.#abort,
          (name, text, id) => this.#heard(name, text, id), () => this.#alive());
        throw new Error("ended");
      } catch (error) {
        if (this.#paused) {
          await new Promise((resolve) => { this.#wake = resolve; });
          failures = 0;
          continue;
        }
        if (this.seen >= began) failures = 0;
        if (!this.house && (this.#forbidden || error.status === 404)) {
          this.#become("absent");
          return;
        }
        const refused = error instanceof Refusal && (error.status === 401 || error.status === 403);
        if (refused) {
          forgetHouse();
          this.#become("refused", error.message);
        } else if (failures) {
          this.#lose();
        }
        await this.#delay(refused ? REFUSED_DELAY_MS : failures
          ? Math.max(Math.min(LONGEST_DELAY_MS, FIRST_DELAY_MS * 2 ** (failures - 1)),
            1000 * (error.retryAfter || 0)) : 100);
        failures += 1;
      }
    }
  }

  #delay(milliseconds) {
    return new Promise((resolve) => {
      this.#wake = resolve;
      setTimeout(resolve, milliseconds * (0.7 + 0.6 * Math.random()));
    });
  }

  #become(state, reason = "") {
    clearTimeout(this.#timers.patience);
    if (state === this.state && reason === this.reason) return;
    this.state = state;
    this.reason = reason;
    document.body.dataset.live = state;  // for the script that does without
    this.#tell("state", state);
  }

  #lose() {
    if (!this.house) this.#takeKept();
    this.#become("lost");
  }

  // Something came: the house is as it is shown.
  #alive() {
    this.seen = Date.now();
    if (this.house) this.#become("connected");
  }

  #reconnect() {
    if (this.#abort) this.#abort.abort();
    if (this.#wake) this.#wake();
  }

  #pause() {
    this.#paused = true;
    if (this.#abort) this.#abort.abort();
  }

  #resume() {
    const stale = this.#paused || Date.now() - this.seen > SILENCE_MS / 2;
    this.#paused = false;
    if (!stale || this.state === "absent") return;
    clearTimeout(this.#timers.patience);
    this.#timers.patience = setTimeout(() => this.#lose(), PATIENCE_MS);
    this.#reconnect();
  }

  // ---- Reading the house ------------------------------------------------------------------------

  #read() {
    this.#reading = this.#reading || this.#readOnce().finally(() => { this.#reading = null; });
    return this.#reading;
  }

  async #readOnce() {
    this.#early = [];
    this.#lastId = "";  // until it is known: a failure must not pass for a complete house
    try {
      const house = await ask(new URL("house", ROOT));
      this.#take(house, Date.now());
      this.#lastId = house.event_id;
      const read = place(house.event_id);
      for (const [name, data, id] of this.#early.splice(0)) {
        const { run, number } = place(id);
        if (run === read.run && number > read.number) this.#apply(name, data, id);
      }
      this.#presses.settle();
    } finally {
      this.#early = null;
    }
  }

  #take(house, when) {
    this.house = house;
    this.seen = when;
    this.#clock = Date.parse(house.local_time + "Z") - when;
    this.#devices.clear();
    for (const room of house.rooms)
      for (const device of room.devices) this.#devices.set(device.id, device);
    this.#devices.forEach((device) => this.#presses.compare(device));
    this.#tell("house", house);
    this.#keepSoon();
  }

  // ---- The stream -------------------------------------------------------------------------------

  #heard(name, text, id) {
    let data;
    try {
      data = JSON.parse(text);
    } catch (error) {
      this.refresh();
      return;
    }
    if (name === "refetch") {
      this.#lastId = "";
      this.refresh();
    } else if (name === "hello") {
      // Another run of the program knows nothing of what this one missed.
      if (place(data.event_id).run !== place(this.#lastId).run) this.refresh();
    } else if (this.#early) {
      this.#early.push([name, data, id]);
    } else {
      this.#apply(name, data, id);
    }
  }

  #apply(name, data, id) {
    const before = place(this.#lastId);
    const now = place(id);
    if (now.run) {
      if (now.run === before.run && now.number <= before.number) return;  // known already
      if (now.run !== before.run || now.number > before.number + 1) this.refresh();  // a gap
      this.#lastId = id;
    }
    const { house } = this;
    switch (name) {
      case "device": this.#takeDevice(data); break;
      case "command": this.#presses.follow(data); break;
      case "interface": house.interface = data; this.#tell("interface", data); break;
      case "notices": house.notices = data.notices; this.#tell("notices", data.notices); break;
      case "profile":
        house.profile = data.active;
        this.#tell("profile", data.active);
        this.refresh();
        break;
      case "house": case "events": this.refresh(); break;
      default:  // of a later version
    }
    this.#keepSoon();
  }

  #takeDevice(device) {
    const known = this.#devices.get(device.id);
    if (!known) {
      this.refresh();
      return;
    }
    Object.assign(known, device);
    this.#presses.recorded(known);
    this.#tell("device", known);
  }

  // ---- Telling ----------------------------------------------------------------------------------

  #tell(type, detail) {
    this.dispatchEvent(new CustomEvent(type, { detail }));
  }

  #tellDevice(id) {
    const device = this.#devices.get(id);
    if (device) this.#tell("device", device);
  }

  #tellEnd(press) {
    const device = this.#devices.get(press.device);
    if (device) this.#tell("outcome", { device, press });
  }

  // ---- What is kept for a time without the house ------------------------------------------------

  #keepSoon() {
    this.#timers.keep = this.#timers.keep || setTimeout(() => this.#keep(), KEEP_MS);
  }

  #keep() {
    clearTimeout(this.#timers.keep);
    this.#timers.keep = 0;
    if (this.state !== "connected") return;
    keepHouse(this.house, this.seen);
  }

  #takeKept() {
    const kept = keptHouse();
    if (kept) this.#take(kept.house, kept.seen);
  }
}

export const live = new Live();
