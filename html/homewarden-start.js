// Before anything is shown: keeps space for what the scripts add, and on the home page, which they
// fill, shows nothing that would be taken away a moment later.
(function () {
  "use strict";
  if (!("noModule" in HTMLScriptElement.prototype)) return;  // they will not run
  const FIRST_MS = 1500;  // for the house, before the page shows what it came with
  const { classList } = document.documentElement;
  classList.add("live");
  if (location.search) return;
  classList.add("opening");
  setTimeout(() => classList.remove("opening"), FIRST_MS);
})();
