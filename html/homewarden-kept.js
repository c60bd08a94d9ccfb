// The house as it was last seen, kept in this browser for a time without it: its record here, what
// the pages are made of by the service worker.

const KEY = "homewarden-house " + new URL("api/v1/", import.meta.url).pathname;

// `seen` in milliseconds by this machine's clock.
export function keepHouse(house, seen) {
  try {
    localStorage.setItem(KEY, JSON.stringify({ seen, house }));
  } catch (error) { /* storage is full or switched off: nothing is shown without the house */ }
}

// { seen, house }, or null when nothing is kept.
export function keptHouse() {
  try {
    return JSON.parse(localStorage.getItem(KEY));
  } catch (error) {
    return null;
  }
}

export function forgetHouse() {
  try {
    localStorage.removeItem(KEY);
  } catch (error) { /* then there is none */ }
}

// Once the house was there: what it is made of can be fetched. Where there may be no worker, as
// over unencrypted connections from elsewhere, nothing is kept.
export function keepPages() {
  if (!("serviceWorker" in navigator)) return;
  navigator.serviceWorker.register(new URL("sw.js", import.meta.url)).catch(() => {});
}
