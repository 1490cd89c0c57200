// The reference factory UI against a stand-in server that speaks the page's
// protocol: connection handling and how each kind of notification is rendered.
"use strict";
const { test, before, after, beforeEach } = require("node:test");
const assert = require("node:assert");
const path = require("node:path");
const { launchBrowser, FakeFactoryServer, waitFor } = require("./harness");

let chrome;
let server;
let page;

before(async () => {
  chrome = await launchBrowser();
});
after(async () => {
  await chrome.close();
});

beforeEach(async () => {
  if (page) await page.close();
  if (server) await server.close();
  server = new FakeFactoryServer();
  const port = await server.listen();
  page = await chrome.newPage();
  // No factory-sim behind this server: the control endpoint is a closed port.
  await page.goto("http://127.0.0.1:" + port + "/?control=9");
  await waitFor(() => server.received.length > 0, 5000);
});

after(async () => {
  if (page) await page.close();
  if (server) await server.close();
});


const visible = () => page.evaluate(() => window.factoryUi.visiblePages());
const rowValue = (cmd) => page.locator(`tr[data-cmd="${cmd}"] td.value`).textContent();
const rowClass = (cmd) => page.locator(`tr[data-cmd="${cmd}"]`).getAttribute("class");
async function settle() {
  // One round trip through the page's event loop after the frames were written.
  await page.waitForTimeout(150);
}

test("connects with factorymode-0, asks to connect and says so", async () => {
  assert.deepStrictEqual(server.protocols, ["factorymode-0"]);
  assert.deepStrictEqual(server.received, ['{"cmd":"connect"}']);
  await page.locator("#conn", { hasText: /^connected$/ }).waitFor();
});

test("shows disconnected when the socket closes and connects again", async () => {
  server.dropAll();
  await page.locator("#conn", { hasText: "disconnected" }).waitFor();
  await waitFor(() => server.received.length === 2, 5000);
  assert.strictEqual(server.received[1], '{"cmd":"connect"}');
  await page.locator("#conn", { hasText: /^connected$/ }).waitFor();
});

test("HideAllUIExcept leaves exactly the named page visible", async () => {
  for (const name of ["Version", "PQ", "SpeakerSNC", "DMode", "Version"]) {
    server.notify("HideAllUIExcept", name);
    await settle();
    assert.deepStrictEqual(await visible(), [name]);
  }
});

test("rows appear as label and value, and the -NG/-OK markers colour them", async () => {
  server.notify("HideAllUIExcept", "Version");
  server.notify("Version", 1);
  server.notify("Version-TVModel", "VQ27-55");
  server.notify("Version-ADAjustPAL-NG", 0);
  server.notify("Version-ADAjustPAL", "NG");
  server.notify("Version-ADAjustNTSC-OK", 0);
  server.notify("Version-ADAjustNTSC", "OK");
  server.notify("URI", "NONE");
  await settle();
  assert.strictEqual(await page.locator('tr[data-cmd="Version-TVModel"] td.label').textContent(),
                     "TV model");
  assert.strictEqual(await rowValue("Version-TVModel"), "VQ27-55");
  assert.match(await rowClass("Version-ADAjustPAL"), /\bng\b/);
  assert.match(await rowClass("Version-ADAjustNTSC"), /\bok\b/);
  // A row whose key names no page belongs to the page on screen.
  assert.strictEqual(await page.locator('[data-page="Version"] tr[data-cmd="URI"]').count(), 1);
  // A repeated cmd updates its row instead of adding one.
  server.notify("Version-TVModel", "VQ27-65");
  await settle();
  assert.strictEqual(await page.locator('tr[data-cmd="Version-TVModel"]').count(), 1);
  assert.strictEqual(await rowValue("Version-TVModel"), "VQ27-65");
});

test("-Show 0 hides a panel and a page cmd with 0 closes its page", async () => {
  server.notify("HideAllUIExcept", "SpeakerSNC");
  server.notify("SpeakerSNC", "Set SKP to CMSNC : Writing");
  await settle();
  assert.deepStrictEqual(await visible(), ["SpeakerSNC"]);
  server.notify("SpeakerSNC-Show", 0);
  await settle();
  assert.deepStrictEqual(await visible(), []);

  server.notify("HideAllUIExcept", "Version");
  server.notify("Version", 1);
  await settle();
  for (const name of ["Version", "ColorTemperature", "PQ", "Tuner", "TunerDVBS"]) {
    server.notify(name, 0);
  }
  await settle();
  assert.deepStrictEqual(await visible(), []);
  // Closing pages that were never opened must not create them.
  assert.strictEqual(await page.locator('[data-page="TunerDVBS"]').count(), 0);
});

test("satellite tuner rows stay on the satellite page", async () => {
  server.notify("HideAllUIExcept", "TunerDVBS");
  server.notify("Tuner-Frequency-DVBS", "11954 MHz");
  await settle();
  assert.strictEqual(
    await page.locator('[data-page="TunerDVBS"] tr[data-cmd="Tuner-Frequency-DVBS"]').count(), 1);
  assert.strictEqual(await page.locator('[data-page="Tuner"]').count(), 0);
});

test("D-mode editor, M-mode keys, volume and serial number have their own displays", async () => {
  server.notify("HideAllUIExcept", "DMode");
  server.notify("DMode", 1);
  server.notify("DMode-Option", "AUD OUTPUT");
  server.notify("DMode-Value-Color", 0);
  server.notify("DMode-Addr", "0x0805");
  server.notify("DMode-Data", "7FH");
  server.notify("DMode-Bin", "01111111B");
  server.notify("M-Mode-Key", "UP KEY");
  server.notify("SerialNum-Ready", "OK!! Serial No: 12345678901234");
  await settle();
  const dmode = page.locator('[data-page="DMode"]');
  assert.strictEqual(await dmode.locator(".dmode-option").textContent(), "AUD OUTPUT");
  assert.match(await dmode.locator(".dmode").textContent(), /0x0805.*7FH.*01111111B/);
  assert.strictEqual(await dmode.locator(".readonly").count(), 1);
  assert.strictEqual(await page.locator("#mmode-key").textContent(), "UP KEY");
  assert.ok(await page.locator("#serial.ok").isVisible());

  server.notify("M-Mode-Key_Finish-Show", 0);
  server.notify("SerialNum-Show", 0);
  server.notify("HideAllUIExcept", "volume");
  server.notify("set-volume", 30);
  server.notify("set-volumeBar", 30);
  server.notify("volume", 1);
  await settle();
  assert.ok(!(await page.locator("#mmode-key").isVisible()));
  assert.ok(!(await page.locator("#serial").isVisible()));
  assert.deepStrictEqual(await visible(), ["volume"]);
  assert.strictEqual(await page.locator(".volume-number").textContent(), "30");
  server.notify("volume", 0);
  await settle();
  assert.deepStrictEqual(await visible(), []);
});

test("screenshot of the version page", async () => {
  const rows = [
    ["Version-TVModel", "VQ27-55UHD"], ["Version-TVModelID", "27"],
    ["Version-ZYTAppVersion", "V1.02.07"], ["Version-BootCodeVersion", "MBOOT 2.11"],
    ["Version-AppSWVersion", "FW 5.1.0"], ["Version-PQ-Version", "PQ 3.4"],
    ["Version-ADAjustPAL-OK", 0], ["Version-ADAjustPAL", "OK"],
    ["Version-ADAjustNTSC-NG", 0], ["Version-ADAjustNTSC", "NG"],
    ["Version-EDID-VGA", "VGA EEPROM Ver.01"], ["Version-CI+-Algorithm", "OK"],
    ["URI", "NONE"], ["Version-Serial-No", "VQ2755A0001234"],
    ["Version-MACAddress", "00:1A:2B:3C:4D:5E"], ["Version-WLAN-MAC-Address", "00:1A:2B:3C:4D:5F"],
  ];
  server.notify("HideAllUIExcept", "Version");
  server.notify("Version", 1);
  for (const [cmd, data] of rows) server.notify(cmd, data);
  server.notify("M-Mode-Key", "FUNCTION KEY");
  await settle();
  const out = process.env.SCREENSHOT || path.join(__dirname, "..", "..", "docs", "factory-ui.png");
  await page.screenshot({ path: out });
});
