// The service-data editor's layout: rendered from the editor's notifications, and
// driven end to end with factory-sim behind the page.
"use strict";
const { test, before, after } = require("node:test");
const assert = require("node:assert");
const { launchBrowser, FakeFactoryServer, startFactorySim, waitFor, UI_PAGE } = require("./harness");

let chrome;

before(async () => {
  chrome = await launchBrowser();
});
after(async () => {
  await chrome.close();
});

const text = (page, cls) => page.locator(`section[data-page="DMode"] .${cls}`).textContent();

test("the layout follows every notification of the editor", async () => {
  const server = new FakeFactoryServer();
  const port = await server.listen();
  const page = await chrome.newPage();
  try {
    await page.goto("http://127.0.0.1:" + port + "/?control=9");
    await waitFor(() => server.received.length > 0, 5000);
    const send = [["HideAllUIExcept", "DMode"], ["DMode", 1], ["DMode-Option", "COLC VIDEO DYNA"],
                  ["DMode-Value-Color", 1], ["DMode-Addr", "0x0856"], ["DMode-Data", "05H"],
                  ["DMode-Bin", "00000101B"], ["S-D", "S"], ["S-Mode", 1]];
    for (const [cmd, data] of send) server.notify(cmd, data);
    await page.locator('section[data-page="DMode"] .service-bin', { hasText: "00000101B" }).waitFor();
    assert.deepStrictEqual(await page.evaluate(() => window.factoryUi.visiblePages()), ["DMode"]);
    assert.strictEqual(await text(page, "service-name"), "COLC VIDEO DYNA");
    assert.strictEqual(await text(page, "service-addr"), "0x0856");
    assert.strictEqual(await text(page, "service-hex"), "05H");
    assert.strictEqual(await text(page, "service-sd"), "S");
    assert.strictEqual(await text(page, "service-access"), "editable");
    assert.strictEqual(await text(page, "service-command"), "mode selector");
    // No stray table rows: every editor notification has its place in the layout.
    assert.strictEqual(await page.locator('section[data-page="DMode"] tr').count(), 0);

    // A read-only, nameless item after a white-balance command; then the editor closes.
    for (const [cmd, data] of [["DMode-Option", ""], ["DMode-Value-Color", 0], ["S-D", "D"],
                               ["S-Mode", 0]]) {
      server.notify(cmd, data);
    }
    await page.locator('section[data-page="DMode"] .service-access', { hasText: "read-only" }).waitFor();
    assert.match(await page.locator('section[data-page="DMode"] .service-hex').getAttribute("class"),
                 /\breadonly\b/);
    assert.strictEqual(await text(page, "service-name"), "");
    assert.strictEqual(await text(page, "service-sd"), "D");
    assert.strictEqual(await text(page, "service-command"), "white balance");
    server.notify("DMode-Value-Color", 1);
    await page.locator('section[data-page="DMode"] .service-access', { hasText: "editable" }).waitFor();
    server.notify("DMode", 0);
    await waitFor(async () => (await page.evaluate(() => window.factoryUi.visiblePages())).length === 0,
                  5000);
  } finally {
    await page.close();
    await server.close();
  }
});

test("a service command opens the editor and the remote steps to the next item", async () => {
  // The page of this tree, whatever copy the build put beside factory-sim.
  const sim = await startFactorySim(["--ui", UI_PAGE]);
  const page = await chrome.newPage();
  try {
    await page.goto("http://127.0.0.1:" + sim.port + "/?control=" + sim.controlPort);
    await page.locator("#ctl-state", { hasText: "control online" }).waitFor();
    await page.locator("#conn", { hasText: /^connected$/ }).waitFor();
    const prepared = await sim.control("set service-dmode-open 1\nset factory[0x805] 5\n" +
                                       "set factory[0x806] 0x2A\nservice show 0x805");
    assert.ok(prepared.ok, prepared.text);
    await page.locator('section[data-page="DMode"] .service-name', { hasText: "BDRV" }).waitFor();
    assert.strictEqual(await text(page, "service-hex"), "05H");
    assert.strictEqual(await text(page, "service-addr"), "0x0805");

    await page.click('#remote button[data-key="up"]');
    await page.locator('section[data-page="DMode"] .service-name', { hasText: "OSRC COOL" }).waitFor();
    await page.locator('section[data-page="DMode"] .service-hex', { hasText: "2AH" }).waitFor();
    assert.strictEqual(await text(page, "service-bin"), "00101010B");
    assert.strictEqual(await text(page, "service-addr"), "0x0806");

    await page.click('#remote button[data-key="exit"]');
    await waitFor(async () => (await page.evaluate(() => window.factoryUi.visiblePages())).length === 0,
                  5000);
  } finally {
    await page.close();
    await sim.stop();
  }
});
