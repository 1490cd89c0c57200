// The information pages in the reference page with factory-sim behind it: the
// version page opens with every row laid out and its NG rows coloured, the remote's
// down key pages to the tuner page, which then redraws itself with live readings.
"use strict";
const { test, before } = require("node:test");
const assert = require("node:assert");
const { useFactoryUi, waitFor } = require("./harness");

const ui = useFactoryUi();
let page;
let sim;
before(async () => ({ page, sim } = await ui.ready));

const visible = () => page.evaluate(() => window.factoryUi.visiblePages());
const row = (name, cmd) => page.locator(`[data-page="${name}"] tr[data-cmd="${cmd}"]`);

test("the version page shows every row in order and colours the NG ones", async () => {
  assert.ok((await sim.control("set factory[303] 0\nset factory[87] 0\nevent FactoryVersion")).ok);
  await waitFor(async () => JSON.stringify(await visible()) === '["Version"]', 5000);
  await row("Version", "Version-BlueTooth").locator("td.value", { hasText: "70:5A:B6:12:C3:DE" })
    .waitFor();
  const cmds = await page.locator('[data-page="Version"] tr').evaluateAll(
    (trs) => trs.map((tr) => tr.dataset.cmd));
  assert.strictEqual(cmds.length, 44);
  assert.deepStrictEqual(cmds.slice(0, 3),
                         ["Version-TVModel", "Version-TVModelID", "Version-ZYTAppVersion"]);
  assert.match(await row("Version", "Version-ADAjustNTSC").getAttribute("class"), /\bng\b/);
  assert.match(await row("Version", "Version-ADAjustPAL").getAttribute("class"), /\bok\b/);
  assert.match(await row("Version", "Version-EDID-VGA").getAttribute("class"), /\bng\b/);
  assert.strictEqual(await page.locator('[data-page="Version"] .tabs .current').textContent(),
                     "Version");
  assert.strictEqual(await page.locator('[data-page="Version"] .tabs .where').textContent(),
                     "page 1 of 4");
});

test("the down key pages to the tuner page, which redraws with live readings", async () => {
  for (const [name, tab] of [["ColorTemperature", "Colour temp."], ["PQ", "PQ"]]) {
    await page.click('#remote button[data-key="down"]');
    await waitFor(async () => JSON.stringify(await visible()) === JSON.stringify([name]), 5000);
    assert.strictEqual(
      await page.locator(`[data-page="${name}"] .tabs .current`).textContent(), tab);
  }
  await page.click('#remote button[data-key="down"]');
  // The tuner page waits 3 s for the demodulator before its rows come.
  await waitFor(async () => JSON.stringify(await visible()) === '["Tuner"]', 10000);
  await row("Tuner", "Tuner-Modulation-System").locator("td.value", { hasText: "DVB-T2" })
    .waitFor({ timeout: 10000 });
  assert.strictEqual(await page.locator('[data-page="Tuner"] .tabs .where').textContent(),
                     "page 4 of 4");
  const draws = async () => Number(await page.locator('[data-page="Tuner"]')
    .getAttribute("data-draws"));
  await waitFor(async () => (await draws()) >= 1, 10000);
  assert.ok((await sim.control("set demod-snr 19.5\nset demod-lock 0")).ok);
  const before = await draws();
  await waitFor(async () => (await draws()) > before, 10000);
  await row("Tuner", "Tuner-SNR").locator("td.value", { hasText: "19.5" }).waitFor();
  assert.match(await page.locator('[data-page="Tuner"] .refresh').textContent(), /drawn \d+ times/);
  assert.strictEqual(await row("Tuner", "Tuner-Lock-Status").locator("td.value").textContent(),
                     "NOLOCK");
});

test("the exit key closes the pages and the tuner page stops redrawing", async () => {
  await page.click('#remote button[data-key="exit"]');
  await waitFor(async () => (await visible()).length === 0, 10000);
  const draws = await page.locator('[data-page="Tuner"]').getAttribute("data-draws");
  await page.waitForTimeout(1500);
  assert.strictEqual(await page.locator('[data-page="Tuner"]').getAttribute("data-draws"), draws);
  assert.deepStrictEqual(await visible(), []);
});
