// The markup that the program puts into the pages, and the addresses in it.

import { live } from "./homewarden-live.js";

// Letters beyond ASCII stand in links as their byte in Windows-1252.
const WINDOWS = new TextDecoder("windows-1252");
const BYTES = new Map(Array.from({ length: 128 }, (_, i) => {
  const byte = 128 + i;
  return [WINDOWS.decode(Uint8Array.of(byte)), byte];
}));

const hex = (byte) => "%" + byte.toString(16).toUpperCase().padStart(2, "0");

// As the program writes names into links. What is not in Windows-1252 is written in UTF-8.
function encoded(name) {
  return Array.from(name).map((letter) => {
    if (/^[A-Za-z0-9\-._~!$()*,;=:@/?]$/.test(letter)) return letter;
    if (letter.charCodeAt(0) < 128) return hex(letter.charCodeAt(0));
    return BYTES.has(letter) ? hex(BYTES.get(letter)) : encodeURIComponent(letter);
  }).join("");
}

// What a part of a link may say: as the program wrote it, and as somebody typed it, in UTF-8.
function decodings(text) {
  const bytes = [];
  for (let i = 0; i < text.length; ++i) {
    const code = /^%[0-9a-f]{2}/i.exec(text.slice(i, i + 3));
    if (code) {
      bytes.push(parseInt(text.slice(i + 1, i + 3), 16));
      i += 2;
    } else {
      bytes.push(...new TextEncoder().encode(text[i]));
    }
  }
  const said = [WINDOWS.decode(Uint8Array.from(bytes))];
  try {
    said.push(new TextDecoder("utf-8", { fatal: true }).decode(Uint8Array.from(bytes)));
  } catch (error) { /* only as the program wrote it */ }
  return said;
}

// ---- Rooms --------------------------------------------------------------------------------------

export const roomQuery = (room) => "?loadroom" + encoded(room.slug);

// The room of a query "?loadroomKitchen", as one of live.house; undefined when there is none.
export function roomOfQuery(query) {
  if (!/loadroom/i.test(query) || !live.house) return undefined;
  const { rooms } = live.house;
  const slugs = decodings(query.slice(1).replace(/loadroom/gi, "").replace(/\+/g, ""))
    .map((slug) => slug.replace(/ /g, ""));
  for (const slug of slugs) {
    const room = rooms.find((one) => one.slug === slug)
      || rooms.find((one) => one.slug.toLowerCase() === slug.toLowerCase());
    if (room) return room;
  }
  return undefined;
}

// ---- Devices ------------------------------------------------------------------------------------

// The fields of a query that switches, or null.
function switchFields(query) {
  const fields = query.slice(1).split(/~|%7e/i);
  return fields.length < 5 ? null : fields;
}

// The device that a link of the program's switches; undefined for other links.
export function deviceOfLink(link) {
  const fields = switchFields(link.search);
  if (!fields) return undefined;
  for (const key of decodings(fields[2])) {
    const device = live.deviceOfLink(key, fields[0] + fields[1]);
    if (device) return device;
  }
  return undefined;
}

export const picture = (device) => device.type + (device.on ? "on" : "off") + ".gif";

function switchAddress(device, room, page) {
  const [, house, unit] = /^(.)(.*)$/.exec(device.address) || ["", "", ""];
  return page + "?" + [house, unit, encoded(device.page_key), device.on ? "turnoff" : "turnon",
    encoded(room.slug)].join("~");
}

// Gives a device's picture and links what they say now: `place` is the element around its cell.
export function updateCell(place, device, room, page) {
  const address = switchAddress(device, room, page);
  for (const link of place.querySelectorAll("a:not(i > a)"))
    if (link.getAttribute("href") !== address) link.setAttribute("href", address);
  const image = place.querySelector("img");
  if (image && image.getAttribute("src") !== picture(device))
    image.setAttribute("src", picture(device));
}

// A cell as the program would have put it in.
export function makeCell(device) {
  const cell = document.createElement("font");
  const pictured = document.createElement("a");
  const image = document.createElement("img");
  image.alt = "";
  pictured.append(image);
  const named = document.createElement("b");
  const link = document.createElement("a");
  const name = document.createElement("font");
  name.textContent = device.name;
  link.append(name);
  named.append(link);
  cell.append(pictured, document.createElement("br"), named);
  return cell;
}
