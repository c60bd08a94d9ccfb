// What a ten-foot page says beside its cards: what is wrong, what comes next, what a key does.
import { live } from "./homewarden-live.js";
import { bannerText } from "./homewarden-trouble.js";

const main = document.querySelector("main");

export function make(kind, className, parent) {
  const element = document.createElement(kind);
  element.className = className;
  if (parent) parent.append(element);
  return element;
}

// Reached by the arrow keys, see homewarden-tv.js.
export function makeStop(element, role) {
  element.dataset.stop = "";
  element.tabIndex = -1;
  element.setAttribute("role", role);
  return element;
}

// ---- What is wrong ------------------------------------------------------------------------------

const banner = make("p", "banner");
banner.setAttribute("role", "status");
banner.hidden = true;
document.body.prepend(banner);

export function showBanner() {
  const text = bannerText();
  banner.hidden = !text;
  if (banner.textContent !== text) banner.textContent = text;
  document.body.classList.toggle("with-banner", Boolean(text));
  document.body.classList.toggle("out-of-touch", live.state === "lost" || live.state === "refused");
}

// ---- What changes, for those who hear the page --------------------------------------------------

const said = make("p", "said");
said.setAttribute("aria-live", "polite");
main.append(said);

export function say(text) {
  said.textContent = text;
}

// ---- What comes next ----------------------------------------------------------------------------

const nothing = make("p", "nothing");
nothing.textContent = "Everything is off.";
const next = make("div", "next");
next.hidden = true;
main.querySelector("section").before(nothing);
main.append(next);

const MINUTE_MS = 60000;
const DAY_MS = 86400000;

// "07:30", "Tomorrow 07:30", "Sat 07:30". Both are the house's local time, as if it were UTC.
function when(text, now) {
  const time = text.slice(11, 16);
  const days = Math.floor(Date.parse(text + "Z") / DAY_MS) - Math.floor(now.getTime() / DAY_MS);
  if (days <= 0) return time;
  if (days === 1) return "Tomorrow " + time;
  const day = new Date(text + "Z").toLocaleDateString("en", { weekday: "short", timeZone: "UTC" });
  return day + " " + time;
}

const NEXT = 3;

export function showNext(events, now) {
  const isAhead = ({ next: time }) => time && Date.parse(time + "Z") > now.getTime() - MINUTE_MS;
  const shown = events.filter(isAhead).slice(0, NEXT);
  next.hidden = !shown.length;
  next.replaceChildren(...shown.map((event) => {
    const tile = make("div", "");
    make("b", "", tile).textContent = when(event.next, now);
    make("span", "", tile).textContent = event.text;
    make("small", "", tile).textContent = event.detail;
    return tile;
  }));
}

// ---- What the keys do ---------------------------------------------------------------------------

const hint = make("p", "hint");
hint.setAttribute("aria-hidden", "true");
main.append(hint);

export function showHint() {
  const stop = document.activeElement.closest("[data-stop]");
  hint.textContent = (stop && stop.dataset.hint) || "";
}

document.addEventListener("focusin", showHint);
