// The aging, tuning, configuration, CI, preset and clone pages of the reference UI:
// pages whose close row has another name, the result line, and the panel swatch
// fed by factory-sim.
"use strict";
const { test, before, after } = require("node:test");
const assert = require("node:assert");
const { launchBrowser, FakeFactoryServer, startFactorySim, waitFor } = require("./harness");

let chrome;
before(async () => {
  chrome = await launchBrowser();
});
after(async () => {
  if (chrome) await chrome.close();
});

async function fakePage() {
  const server = new FakeFactoryServer();
  const port = await server.listen();
  const page = await chrome.newPage();
  await page.goto("http://127.0.0.1:" + port + "/?control=9");
  await waitFor(() => server.received.length > 0, 5000);
  return { server, page };
}

test("tuning panels close on their own rows and show their text", async () => {
  const { server, page } = await fakePage();
  const visible = () => page.evaluate(() => window.factoryUi.visiblePages());
  const steps = [
    [["HideAllUIExcept", "VBSTuning"], ["DVBS-Tuning", "DVB-S Tuning"]], "VBSTuning", "DVB-S Tuning",
    [["DVBS-Tuning-Show", 0]], null, null,
    [["HideAllUIExcept", "FactorySetup"], ["Factory-Tuning", "CH Preset Writing"]], "FactorySetup",
    "CH Preset Writing",
    [["Factory-Tuning-Show", 0]], null, null,
    [["HideAllUIExcept", "CHPreset"], ["CHPreset", 1], ["CHPresetData", "CH Preset OK"]], "CHPreset",
    "CH Preset OK",
    [["CHPreset", 0]], null, null,
  ];
  for (let i = 0; i < steps.length; i += 3) {
    const [notes, name, text] = steps.slice(i, i + 3);
    for (const [cmd, data] of notes) server.notify(cmd, data);
    await waitFor(async () => (await visible()).join() === (name || ""), 3000);
    if (text) {
      const shown = await page.locator(`section[data-page="${name}"] .big-result`).textContent();
      assert.strictEqual(shown, text);
    }
  }
  await page.close();
  await server.close();
});

test("the CI verdict and the clone result are coloured", async () => {
  const { server, page } = await fakePage();
  const result = (name) => page.locator(`section[data-page="${name}"] .big-result`);
  server.notify("HideAllUIExcept", "CITest");
  server.notify("CITest-NG", "CI FACTORY TEST : NG");
  await result("CITest").filter({ hasText: "CI FACTORY TEST : NG" }).waitFor();
  assert.match(await result("CITest").getAttribute("class"), /\bng\b/);
  server.notify("HideAllUIExcept", "CloneCopy");
  server.notify("Clone-Copy", 0);
  await result("CloneCopy").filter({ hasText: "Copying" }).waitFor();
  server.notify("Clone-Copy", 1);
  await result("CloneCopy").filter({ hasText: "Clone copy : OK" }).waitFor();
  assert.match(await result("CloneCopy").getAttribute("class"), /\bok\b/);
  assert.ok(await page.locator("#panel-swatch.hidden").count(), "no factory-sim, no swatch");
  await page.close();
  await server.close();
});

test("the swatch follows the panel's raster on factory-sim", async () => {
  const sim = await startFactorySim();
  const page = await chrome.newPage();
  try {
    await page.goto("http://127.0.0.1:" + sim.port + "/?control=" + sim.controlPort);
    const raster = () => page.locator("#panel-swatch").getAttribute("data-raster");
    await waitFor(async () => (await raster()) === "none", 5000);
    assert.ok((await sim.control("event OnAgingMode2")).ok);
    await waitFor(async () => (await raster()) === "red", 3000);
    // Real time here: the next colour comes a second later.
    await waitFor(async () => (await raster()) === "green", 4000);
    assert.ok((await sim.control("event InternalPatternOff")).ok);
  } finally {
    await page.close();
    await sim.stop();
  }
});
