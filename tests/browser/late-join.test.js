// A browser that opens the factory UI after the set drew a factory page sees that
// page at once: the screen since the last "HideAllUIExcept" and the native layer.
"use strict";
const { test, before, after } = require("node:test");
const assert = require("node:assert");
const { launchBrowser, startFactorySim, waitFor } = require("./harness");

let chrome;
let sim;

before(async () => {
  chrome = await launchBrowser();
  sim = await startFactorySim();
});

after(async () => {
  if (chrome) await chrome.close();
  if (sim) await sim.stop();
});

async function openPage() {
  const page = await chrome.newPage();
  await page.goto("http://127.0.0.1:" + sim.port + "/");
  await page.locator("#conn", { hasText: /^connected$/ }).waitFor();
  return page;
}

const rowText = (page, cmd) => page.evaluate((c) => {
  const row = [...document.querySelectorAll("[data-cmd]")].find((r) => r.dataset.cmd === c);
  return row ? row.textContent : null;
}, cmd);

test("the endpoint's screen starts at the last HideAllUIExcept and keeps each value's type", async () => {
  assert.ok((await sim.control("event InternalPatternOff\nevent FactoryVersion")).ok);
  const answer = await sim.control("screen");
  assert.ok(answer.ok, answer.text);
  const screen = JSON.parse(answer.text);
  assert.deepStrictEqual(screen.slice(0, 3), [
    { cmd: "HideAllUIExcept", data: "Version" },
    { cmd: "Version", data: 1 },
    { cmd: "Version-TVModel", data: "QV32H249" },
  ]);
  assert.strictEqual(screen.filter((n) => n.cmd === "HideAllUIExcept").length, 1);
});

test("a page opened after the version page was shown draws it, and the next page replaces it", async () => {
  const page = await openPage();
  await waitFor(async () => (await page.evaluate(() => window.factoryUi.visiblePages())).includes("Version"), 5000);
  assert.deepStrictEqual(await page.evaluate(() => window.factoryUi.visiblePages()), ["Version"]);
  assert.match(await rowText(page, "Version-TVModel"), /QV32H249/);
  // From here the socket drives the page as usual.
  assert.ok((await sim.control("event FactoryVersion")).ok);  // a second 188 closes the pages
  await waitFor(async () => (await page.evaluate(() => window.factoryUi.visiblePages())).length === 0, 5000);
  await page.close();
  // A page opened now finds the pages closed: nothing of the earlier screen comes back.
  const late = await openPage();
  await new Promise((r) => setTimeout(r, 500));
  assert.deepStrictEqual(await late.evaluate(() => window.factoryUi.visiblePages()), []);
  await late.close();
});

test("a page opened while the set shows its native layer shows the layer", async () => {
  assert.ok((await sim.control("set m-mode 1\nevent FactoryMModeStart")).ok);
  const page = await openPage();
  await waitFor(() => page.evaluate(() => {
    const img = document.getElementById("native-layer");
    return img && !img.classList.contains("hidden") && img.complete && img.naturalWidth > 0;
  }), 5000);
  await page.close();
});
