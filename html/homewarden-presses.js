// What the person at this page has asked for: posted one after the other in the order of the
// presses, and never dropped. One that cannot be posted stays, as "failed", until it is tried again
// or a newer order of its device, of whomever, takes its place.

import { ask, Refusal } from "./homewarden-stream.js";

const KEPT = "homewarden-presses";
const SETTLE_MS = 1000;    // for the device's record behind the command's end
const KEPT_COMMANDS = 64;  // that were heard of before the answer that names them

// What an order leaves a device at.
function outcome(device, { command, level }) {
  if (command === "on") return { on: true, level: 100 };
  if (command === "off") return { on: false, level: 0 };
  if (command === "level") return { on: level > 0, level };
  if (command === "toggle") return { on: !device.on, level: device.on ? 0 : 100 };
  if (command === "repeat" && device.not_sent) return device.not_sent;
  return { on: device.on, level: device.level };
}

export class Presses {
  #queue = [];              // not posted yet
  #newest = new Map();      // device's id -> its newest press
  #posted = new Map();      // command's id -> press
  #heard = new Map();       // command's id -> how it is, of commands of nobody here
  #posting = false;

  // `changed(deviceId)` when what is to be shown of a device changed, `ended(press)` once when the
  // newest press of a device has come to its end.
  constructor(root, changed, ended) {
    this.root = root;
    this.changed = changed;
    this.ended = ended;
    this.#takeFailed();
  }

  // The newest press of a device, or undefined: { device, command, on, level, state, detail } with
  // state "waiting", "sending", "done" (soon forgotten) or "failed".
  of(id) {
    return this.#newest.get(id);
  }

  press(device, { command, level }) {
    const wanted = outcome(device, { command, level });
    const last = this.#newest.get(device.id);
    // Only the newest level of a slider waits to be posted.
    if (command === "level" && last && last.command === "level" && this.#queue.includes(last)) {
      Object.assign(last, wanted);
      this.changed(device.id);
      return last;
    }
    const press = { device: device.id, command, ...wanted, state: "waiting", detail: "", id: "",
      after: device.changed || "" };
    this.#newest.set(device.id, press);
    this.#queue.push(press);
    this.#keepFailed();
    this.changed(device.id);
    this.#post();
    return press;
  }

  // What is not posted yet when the page goes. It may come back from the browser's memory, so each
  // press remains what it is.
  flush() {
    for (const press of this.#queue.splice(0)) this.#send(press);
  }

  async #post() {
    if (this.#posting) return;
    this.#posting = true;
    while (this.#queue.length) {
      const failed = await this.#send(this.#queue.shift());
      // Without a connection the others would each wait in vain.
      if (failed && !(failed instanceof Refusal))
        for (const press of this.#queue.splice(0)) this.#fail(press, failed);
    }
    this.#posting = false;
  }

  // Nothing, or the error.
  async #send(press) {
    const body = { command: press.command };
    if (press.command === "level") body.level = press.level;
    try {
      const command = await ask(
        new URL("devices/" + encodeURIComponent(press.device) + "/commands", this.root), {
          method: "POST",
          headers: { "Content-Type": "application/json" },
          body: JSON.stringify(body),
          keepalive: true,  // reaches the house when the page is left meanwhile
        });
      press.id = command.id;
      this.#posted.set(command.id, press);
      this.follow(this.#heard.get(command.id) || command);
      return null;
    } catch (error) {
      // What was to be repeated has got through meanwhile.
      if (press.command === "repeat" && error instanceof Refusal && error.status === 422)
        this.#forget(press);
      else
        this.#fail(press, error);
      return error;
    }
  }

  #fail(press, error) {
    press.state = "failed";
    press.detail = error instanceof Refusal ? error.message : "No connection.";
    this.#end(press);
  }

  #end(press) {
    if (this.#newest.get(press.device) !== press) return;
    this.#keepFailed();
    this.changed(press.device);
    this.ended(press);
  }

  #forget(press) {
    if (this.#newest.get(press.device) !== press) return;
    this.#newest.delete(press.device);
    this.changed(press.device);
  }

  // What failed is there to be tried again when the page has been loaded anew.
  #keepFailed() {
    const failed = [...this.#newest.values()].filter((press) => press.state === "failed");
    try {
      sessionStorage.setItem(KEPT, JSON.stringify(failed));
    } catch (error) { /* storage is full or switched off: then a new page does not know */ }
  }

  #takeFailed() {
    try {
      for (const press of JSON.parse(sessionStorage.getItem(KEPT)) || [])
        this.#newest.set(press.device, press);
    } catch (error) { /* as above */ }
  }

  // How a command is, from whomever.
  follow(command) {
    const press = this.#posted.get(command.id);
    if (!press) {
      this.#heard.set(command.id, command);
      if (this.#heard.size > KEPT_COMMANDS) this.#heard.delete(this.#heard.keys().next().value);
      return;
    }
    if (command.state === "waiting" || command.state === "sending") {
      press.state = command.state;
      this.changed(press.device);
      return;
    }
    this.#posted.delete(command.id);
    const newest = this.#newest.get(press.device);
    if (newest && newest.after < command.ended) {
      newest.after = command.ended;
      this.#keepFailed();
    }
    press.detail = command.detail || "";
    if (command.state === "done") {
      press.state = "done";
      this.#end(press);
      setTimeout(() => this.#forget(press), SETTLE_MS);
    } else if (command.state === "not_sent") {
      press.state = "not_sent";  // the device's record says it from now on
      if (this.#newest.get(press.device) === press) this.ended(press);
      this.#forget(press);
    } else if (press.command === "level") {
      this.#forget(press);  // somebody's newer level took its place
    } else {
      press.state = "failed";
      this.#end(press);
    }
  }

  // A device's record has come: it tells what a finished press did.
  recorded(device) {
    const press = this.#newest.get(device.id);
    if (press && press.state === "done") this.#newest.delete(device.id);
    else this.compare(device);
  }

  // What failed is no longer to be sent when something has switched the device since: something
  // newer than the press, and no older press of this page that was still on its way.
  compare({ id, changed }) {
    const press = this.#newest.get(id);
    if (!press || !changed || changed <= press.after) return;
    if (press.state !== "failed") {
      press.after = changed;
    } else if (![...this.#posted.values()].some((other) => other.device === id)) {
      this.#newest.delete(id);
      this.#keepFailed();
    }
  }

  // The house has been read anew; what ended meanwhile was not heard.
  async settle() {
    for (const [id, press] of [...this.#posted]) {
      try {
        this.follow(await ask(new URL("commands/" + encodeURIComponent(id), this.root)));
      } catch (error) {
        if (!(error instanceof Refusal)) return;
        this.#posted.delete(id);
        this.#forget(press);
      }
    }
    this.#heard.clear();
  }
}
