// What is wrong, in words for both kinds of pages: with the connection, the interface, and the
// notices at the foot.

import { live } from "./homewarden-live.js";

function seenWords() {
  const seen = new Date(live.seen);
  const time = String(seen.getHours()).padStart(2, "0") + ":"
    + String(seen.getMinutes()).padStart(2, "0");
  return seen.toDateString() === new Date().toDateString() ? time
    : seen.toLocaleDateString("en-GB", { day: "numeric", month: "long" }) + ", " + time;
}

// "" when all is well, or not known yet.
export function bannerText() {
  if (live.state === "refused") return live.reason;
  if (live.state === "lost")
    return "No connection." + (live.house ? " What is shown is from " + seenWords() + "." : "")
      + " Trying again\u2026";
  if (live.state !== "connected") return "";
  if (live.house.interface.state === "away")
    return "The X10 interface is not connected. What you switch now cannot be sent.";
  if (live.house.interface.state === "none")
    return "No X10 interface has been found yet. Nothing can be switched.";
  return "";
}

// The foot as the program would have sent it: none without notices.
export function drawNotices() {
  const notices = live.house.notices || [];
  let foot = document.querySelector("footer");
  if (!foot && notices.length) {
    foot = document.createElement("footer");
    foot.setAttribute("role", "status");
    document.body.append(foot);
  }
  if (!foot) return;
  const now = [...foot.children].map((line) => line.textContent);
  if (JSON.stringify(now) === JSON.stringify(notices)) return;
  if (!notices.length) foot.remove();
  foot.replaceChildren(...notices.map((text) => {
    const line = document.createElement("p");
    line.textContent = text;
    return line;
  }));
}
