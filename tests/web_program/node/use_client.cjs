// Uses the house with the client that was made from its description: node use_client.cjs ADDRESS
// SECRET, the secret of a token that may only read.
"use strict";

const assert = require("node:assert");
const api = require("./built/sdk.gen.js");
const { client } = require("./built/client.gen.js");

async function main(baseUrl, secret) {
  client.setConfig({ baseUrl, throwOnError: true });
  const { data: { devices } } = await api.listDevices();
  const lamp = devices.find((device) => device.room === "Living Room" && device.dimmable);
  const path = { id: lamp.id };

  const { data: done } = await api.sendCommand({ path, body: { command: "level", level: 30, wait: true } });
  assert.strictEqual(done.state, "done");
  assert.strictEqual((await api.getDevice({ path })).data.level, 30);
  const { data: taken } = await api.sendCommand({ path, body: { command: "off" } });
  for (let command = taken; command.state !== "done";) {
    await new Promise((resolve) => setTimeout(resolve, 50));
    command = (await api.getCommand({ path: { id: taken.id } })).data;
  }
  assert.strictEqual((await api.getDevice({ path })).data.on, false);

  const { data: { events } } = await api.listEvents();
  assert.ok(events.every((event) => event.enabled && event.days.length > 0));
  await api.chooseProfile({ body: { name: "Holiday" } });
  assert.strictEqual((await api.getHouse()).data.profile, "Holiday");
  await api.chooseProfile({ body: { name: "Standard" } });

  client.setConfig({ auth: secret });
  const asked = await api.getHouse({ security: [{ scheme: "bearer", type: "http" }] });
  assert.strictEqual(asked.data.access, "read");
  const refused = await api.sendCommand({
    path, body: { command: "on" }, throwOnError: false, security: [{ scheme: "bearer", type: "http" }],
  });
  assert.strictEqual(refused.response.status, 403);
  assert.strictEqual((await api.getDevice({ path })).data.on, false);
}

main(...process.argv.slice(2)).catch((error) => {
  console.error(error);
  process.exit(1);
});
