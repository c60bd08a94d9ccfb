// Reads a stream of events (text/event-stream) by fetch: unlike EventSource it can begin where the
// house was read, and tells a refusal from a lost connection.

export const SILENCE_MS = 40000;  // a heartbeat comes every 15 s
const ANSWER_MS = 10000;

// An answer that is none: `status` of HTTP, `message` the sentence of the answer for a person.
export class Refusal extends Error {
  constructor(status, message, retryAfter = 0) {
    super(message);
    this.status = status;
    this.retryAfter = retryAfter;  // seconds, 0 when the answer says nothing
  }
}

async function refusal(response) {
  let detail = "";
  try {
    const problem = await response.json();
    detail = problem.detail || problem.title || "";
  } catch (error) { /* a proxy's page */ }
  return new Refusal(response.status, detail || "The server answered " + response.status + ".",
    Number(response.headers.get("Retry-After")) || 0);
}

// An answer within the time, or an error: Refusal when there is one with another status than 2xx.
export async function ask(url, options = {}) {
  const abort = new AbortController();
  const timer = setTimeout(() => abort.abort(), ANSWER_MS);
  try {
    const response = await fetch(url, { cache: "no-store", ...options, signal: abort.signal });
    if (!response.ok) throw await refusal(response);
    return await response.json();
  } finally {
    clearTimeout(timer);
  }
}

// Takes the text of a stream as it comes, calls back with each whole event.
class Parser {
  #rest = "";
  #name = "";
  #data = [];
  #id = "";

  constructor(heard) {
    this.heard = heard;
  }

  take(text) {
    const lines = (this.#rest + text).split(/\r\n|\n|\r(?!$)/);
    this.#rest = lines.pop();
    for (const line of lines) this.#line(line);
  }

  #line(line) {
    if (line === "") {
      if (this.#data.length) this.heard(this.#name || "message", this.#data.join("\n"), this.#id);
      this.#name = "";
      this.#data = [];
      this.#id = "";
      return;
    }
    const [, field, value] = /^([^:]*):? ?(.*)$/.exec(line);
    if (field === "event") this.#name = value;
    else if (field === "data") this.#data.push(value);
    else if (field === "id") this.#id = value;
  }
}

// Follows the stream until it ends, or throws: Refusal, or an error when it was lost, was silent
// for SILENCE_MS or `abort` was used. `heard(name, text, id)` gets each event, `alive()` is called
// for whatever comes, heartbeats too.
export async function follow(url, lastId, abort, heard, alive) {
  let timer = setTimeout(() => abort.abort(), ANSWER_MS);
  try {
    const headers = { Accept: "text/event-stream" };
    if (lastId) headers["Last-Event-ID"] = lastId;
    const response = await fetch(url, { cache: "no-store", headers, signal: abort.signal });
    if (!response.ok) throw await refusal(response);
    const parser = new Parser(heard);
    const decoder = new TextDecoder();
    const reader = response.body.getReader();
    for (;;) {
      const { done, value } = await reader.read();
      if (done) return;
      clearTimeout(timer);
      timer = setTimeout(() => abort.abort(), SILENCE_MS);
      alive();
      parser.take(decoder.decode(value, { stream: true }));
    }
  } finally {
    clearTimeout(timer);
  }
}
