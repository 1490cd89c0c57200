// The channel tool pages in the reference UI with factory-sim behind them: the ATV
// search sweeps, locks and stores; the satellite and banner pages show their texts.
"use strict";
const { test, before } = require("node:test");
const assert = require("node:assert");
const { useFactoryUi, waitFor } = require("./harness");

const ui = useFactoryUi();
let page;
let sim;
before(async () => ({ page, sim } = await ui.ready));

const visible = () => page.evaluate(() => window.factoryUi.visiblePages());

test("searching up from the first station shows the sweep, locks and stores with OK", async () => {
  // Every channel number the page shows, as it changes.
  await page.evaluate(() => {
    window.seenChannels = [];
    const observer = new MutationObserver(() => {
      const node = document.querySelector('[data-page="ATVTuningUpSearch"] .atv-channel');
      if (node && window.seenChannels[window.seenChannels.length - 1] !== node.textContent) {
        window.seenChannels.push(node.textContent);
      }
    });
    observer.observe(document.getElementById("pages"),
                     { subtree: true, childList: true, characterData: true });
  });
  assert.ok((await sim.control("event OnATVTuningSearch 0 0")).ok);
  const search = page.locator('[data-page="ATVTuningUpSearch"]');
  await search.waitFor();
  assert.deepStrictEqual(await visible(), ["ATVTuningUpSearch"]);
  assert.strictEqual(await search.locator(".atv-direction").textContent(), "Up \u25b2");
  // The sweep locks on 140 250 kHz: S-6.
  await waitFor(async () => /= 2\b/.test((await sim.control("get atv-search-type")).text), 15000);
  assert.strictEqual(await search.locator(".atv-class").textContent(), "S");
  assert.strictEqual(await search.locator(".atv-channel").textContent(), "6");
  const seen = (await page.evaluate(() => window.seenChannels)).filter((c) => c !== "--");
  assert.deepStrictEqual(seen.slice(0, 3), ["3", "4", "51"]);
  assert.strictEqual(seen[seen.length - 1], "6");

  const label = search.locator(".atv-save");
  assert.ok(await label.isHidden());
  await page.click('#remote button[data-key="ok"]');
  await label.waitFor({ state: "visible" });
  const shown = Date.now();
  assert.strictEqual(await label.textContent(), "Save OK");
  await label.waitFor({ state: "hidden", timeout: 5000 });
  const gone = Date.now() - shown;
  assert.ok(gone >= 350 && gone < 2000, "the label went after " + gone + " ms");

  await page.click('#remote button[data-key="exit"]');
  await waitFor(async () => (await visible()).length === 0, 5000);
});

test("a satellite toggle shows its text and hides it two seconds later", async () => {
  assert.ok((await sim.control("event SatInfo 0 213")).ok);
  const row = page.locator('[data-page="DiSEqCSwitching"] tr[data-cmd="DiSEqC-Switching"] td.value');
  await row.waitFor();
  assert.match(await row.textContent(), /^Dish Position : Position [AB]$/);
  assert.deepStrictEqual(await visible(), ["DiSEqCSwitching"]);
  await waitFor(async () => (await visible()).length === 0, 5000);
});

test("a direct channel change shows the banner for five seconds", async () => {
  assert.ok((await sim.control("set dtv-route 2\nset current-satellite 2\nevent DirectCH")).ok);
  const banner = page.locator('[data-page="ProgramInfo"]');
  await banner.locator(".banner-number", { hasText: "1" }).waitFor();
  assert.strictEqual((await banner.locator(".banner-name").textContent()).trim(), "Das Erste HD");
  assert.strictEqual(await banner.locator(".banner-satellite td.value").textContent(),
                     "Thor 0.8W / Intelsat 1.0W");
  assert.strictEqual(await banner.locator(".banner-genre td.value").textContent(), "Movie");
  assert.strictEqual(await banner.locator(".banner-time td.value").textContent(), "20:15-21:45");
  assert.match(await banner.locator(".banner-left td.value").textContent(), /^\d+ min left$/);
  assert.ok(await banner.locator(".banner-audio").isHidden());
  await waitFor(async () => (await visible()).length === 0, 8000);
});
