// The reference page with factory-sim behind it: the page's own remote control and
// event list reach the library through factory-sim's control endpoint.
"use strict";
const { test, before } = require("node:test");
const assert = require("node:assert");
const { useFactoryUi, waitFor } = require("./harness");

// The library's own HTTP server hands out the page factory-sim put in the root,
// which names the control endpoint whatever its port.
const ui = useFactoryUi({ control: false, ready: "control" });
let page;
let sim;
before(async () => ({ page, sim } = await ui.ready));

test("the page served by the library connects to it", async () => {
  await page.locator("#conn", { hasText: /^connected$/ }).waitFor();
});

test("M-mode panel keys show their names on the page", async () => {
  assert.ok((await sim.control("set m-mode 1\nevent FactoryMModeStart")).ok);
  for (const [key, name] of [["panel-up", "UP KEY"], ["panel-down", "DOWN KEY"],
                             ["panel-function", "FUNCTION KEY"]]) {
    await page.click(`button[data-key="${key}"]`);
    await page.locator("#mmode-key", { hasText: name }).waitFor();
  }
  assert.ok((await sim.control("set m-mode 0")).ok);
});

test("the library's volume page takes the screen alone and closes on its timer", async () => {
  assert.ok((await sim.control("set m-mode 1\nset factory-volume 35\nevent FactoryVolumeAdj")).ok);
  await waitFor(async () => {
    const pages = await page.evaluate(() => window.factoryUi.visiblePages());
    return pages.length === 1 && pages[0] === "volume";
  }, 5000);
  await page.locator(".volume-number", { hasText: "35" }).waitFor();
  // Timer 66 closes it three seconds later (real time here).
  await waitFor(async () => (await page.evaluate(() => window.factoryUi.visiblePages())).length === 0,
                8000);
  assert.ok((await sim.control("set m-mode 0")).ok);
});

test("the event list is filled from factory-sim's event table", async () => {
  await waitFor(async () => (await page.locator("#event-list option").count()) > 60, 5000);
  assert.strictEqual(await page.locator('#event-list option[value="191"]').textContent(),
                     "191  FactoryMModeStart");
});

test("a remote-control click reaches the library as a key", async () => {
  await page.click('#remote button[data-key="exit"]');
  // factory-sim answers only after the library's key dispatcher has returned.
  await page.locator("#ctl-out", { hasText: /key exit \(0xF062\): (consumed|not consumed)/ }).waitFor();
});

test("an event sent from the list is delivered with its parameters", async () => {
  await page.selectOption("#event-list", "235");
  await page.fill("#p1", "1");
  await page.click("#send-event");
  await page.locator("#ctl-out", { hasText: "event 235 DefaultIPAddress delivered" }).waitFor();
});

test("a refused command shows the reason and changes nothing", async () => {
  await page.fill("#command", "set key-manager maybe");
  await page.press("#command", "Enter");
  await page.locator("#ctl-out", { hasText: /not 0\/1[\s\S]*refused/ }).waitFor();
  assert.match((await sim.control("get key-manager")).text, /key-manager = 1/);
  assert.strictEqual((await sim.control("quit")).ok, false, "only the console may stop the set");
});
