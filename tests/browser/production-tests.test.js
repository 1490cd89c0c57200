// The production-test pages of the reference UI: a speaker-type command from the
// library through factory-sim, and the verdict pages against a stand-in server.
"use strict";
const { test, before, after } = require("node:test");
const assert = require("node:assert");
const { launchBrowser, startFactorySim, FakeFactoryServer, waitFor } = require("./harness");

let chrome;

before(async () => {
  chrome = await launchBrowser();
});
after(async () => {
  if (chrome) await chrome.close();
});

const visible = (page) => page.evaluate(() => window.factoryUi.visiblePages());

test("a speaker-type command shows Writing, then Finished, then closes", async () => {
  const sim = await startFactorySim();
  const page = await chrome.newPage();
  try {
    await page.goto("http://127.0.0.1:" + sim.port + "/?control=" + sim.controlPort);
    await page.locator("#conn", { hasText: /^connected$/ }).waitFor();
    assert.ok((await sim.control("event SelectSpeakerTypeToIEC")).ok);
    const panel = page.locator('[data-page="SpeakerIEC"]');
    await panel.locator("td.value", { hasText: "Set SKP to IEC : Writing" }).waitFor();
    assert.deepStrictEqual(await visible(page), ["SpeakerIEC"]);
    // Two seconds each on the set's real clock here.
    await panel.locator("td.value", { hasText: "Set SPK to IEC : Finished" })
      .waitFor({ timeout: 5000 });
    assert.deepStrictEqual(await visible(page), ["SpeakerIEC"]);
    await waitFor(async () => (await visible(page)).length === 0, 5000);
  } finally {
    await page.close();
    await sim.stop();
  }
});

test("ADC, WLAN and shipout pages show their OK and NG states and close", async () => {
  const server = new FakeFactoryServer();
  const port = await server.listen();
  const page = await chrome.newPage();
  const settle = () => page.waitForTimeout(150);
  const verdict = (name) => page.locator(`[data-page="${name}"] .verdict`);
  try {
    await page.goto("http://127.0.0.1:" + port + "/?control=9");
    await waitFor(() => server.received.length > 0, 5000);

    server.notify("HideAllUIExcept", "ADCAdjustment");
    server.notify("ADC-Adjustment", 0);
    await settle();
    assert.strictEqual(await verdict("ADCAdjustment").textContent(), "ADC adjusting");
    server.notify("ADC-Adjustment", 2);
    await settle();
    assert.strictEqual(await verdict("ADCAdjustment").textContent(), "ADC NG");
    assert.match(await verdict("ADCAdjustment").getAttribute("class"), /\bng\b/);
    server.notify("ADC-Adjustment-NG-Show", 0);
    await settle();
    assert.deepStrictEqual(await visible(page), []);

    // A pass hides the testing and NG panels first; the page stays on OK.
    server.notify("HideAllUIExcept", "WLANTest");
    server.notify("WLANPrepare-Show", 0);
    server.notify("WLANTest-TEST-RSSI", "");
    server.notify("WLANTest-Show", 0);
    server.notify("WLANTest-NG-Show", 0);
    server.notify("WLANTest-OK-RSSI", "-42, -47");
    await settle();
    assert.deepStrictEqual(await visible(page), ["WLANTest"]);
    assert.strictEqual(await verdict("WLANTest").textContent(), "WLAN OK");
    assert.match(await verdict("WLANTest").getAttribute("class"), /\bok\b/);
    assert.strictEqual(
      await page.locator('[data-page="WLANTest"] tr[data-cmd="RSSI"] td.value').textContent(),
      "-42, -47");
    server.notify("WLANTest-OK-Show", 0);
    await settle();
    assert.deepStrictEqual(await visible(page), []);

    server.notify("HideAllUIExcept", "UKShipout");
    server.notify("UK-Shipout", "UK Writing");
    await settle();
    assert.strictEqual(await verdict("UKShipout").textContent(), "UK Writing");
    server.notify("UK-Shipout", "UK OK");
    await settle();
    assert.match(await verdict("UKShipout").getAttribute("class"), /\bok\b/);

    server.notify("HideAllUIExcept", "WLANAPScan");
    server.notify("WLAN-AP-Scan", "Scanning");
    server.notify("WLAN-AP-Row", "LINE 5\t86%");
    server.notify("WLAN-AP-Scan", "Access points : 1");
    await settle();
    assert.strictEqual(await page.locator('[data-page="WLANAPScan"] td.ssid').textContent(),
                       "LINE 5");
    assert.strictEqual(await page.locator('[data-page="WLANAPScan"] td.signal').textContent(),
                       "86%");
    server.notify("WLANAPScan-Show", 0);
    await settle();
    assert.deepStrictEqual(await visible(page), []);
  } finally {
    await page.close();
    await server.close();
  }
});
