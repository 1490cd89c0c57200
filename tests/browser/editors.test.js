// The PEQ, 3D timing and Audio ADV editors in the reference page with factory-sim
// behind it: driven with the page's own remote, checked on the page and in the set.
"use strict";
const { test, before } = require("node:test");
const assert = require("node:assert");
const { useFactoryUi, waitFor } = require("./harness");

const ui = useFactoryUi({ ready: "control" });
let page;
let sim;
before(async () => ({ page, sim } = await ui.ready));

// One remote key at a time: the next click waits for the set's answer to this one.
async function press(...keys) {
  for (const key of keys) {
    await page.evaluate(() => { document.getElementById("ctl-out").textContent = ""; });
    await page.click(`#remote button[data-key="${key}"]`);
    await page.locator("#ctl-out", { hasText: `key ${key} (` }).waitFor();
  }
}

async function open(lines) {
  const answer = await sim.control(lines);
  assert.ok(answer.ok, answer.text);
}

const item = (cmd) => page.locator(`[data-cmd="${cmd}"]`);
const valueOf = (cmd) => item(cmd).locator("span").last().textContent();
// The page's frames arrive after the set has answered: wait until the highlight is
// on exactly this item.
async function highlighted(name, cmd) {
  const now = () => page.locator(`section[data-page="${name}"] .hl`).evaluateAll(
    (nodes) => nodes.map((n) => n.dataset.cmd).join(","));
  await waitFor(async () => (await now()) === cmd, 5000).catch(() => {});
  assert.strictEqual(await now(), cmd);
}
async function onlyVisible(name) {
  await waitFor(async () => {
    const pages = await page.evaluate(() => window.factoryUi.visiblePages());
    return pages.length === 1 && pages[0] === name;
  }, 5000);
}

test("PEQ: the gain of band 1 goes to the store and the page follows the highlight", async () => {
  await open("set audyssey 0\nevent PEQ");
  await onlyVisible("PEQ");
  await highlighted("PEQ", "PEQ-Band");
  await press("right");
  await item("PEQ-Band").locator("span", { hasText: "1 (TV stand)" }).waitFor();
  await press("up", "right");
  await highlighted("PEQ", "PEQ-GainX10");
  await item("PEQ-GainX10").locator("span", { hasText: "-119" }).waitFor();
  await press("exit");
  await waitFor(async () => (await page.evaluate(() => window.factoryUi.visiblePages())).length === 0,
                5000);
});

test("3D timing: the title, the mode row and a coloured key's step", async () => {
  await open("set l-open 0x2D40\nevent ThreeDTimingAdjust");
  await onlyVisible("3DTimingAdjust");
  await page.locator('section[data-page="3DTimingAdjust"] h2',
                     { hasText: "3D timing Adjust - 120Hz" }).waitFor();
  await highlighted("3DTimingAdjust", "3DTiming-DefaultMode");
  await press("right");
  await highlighted("3DTimingAdjust", "3DTiming-Mode0");
  await press("left", "down", "blue");
  await highlighted("3DTimingAdjust", "3DTiming-LOpen");
  await item("3DTiming-LOpen").locator("span", { hasText: "2E40" }).waitFor();
  assert.strictEqual(await valueOf("3DTiming-Shift"), "0040");
  await press("exit");
});

test("Audio ADV: typed fields, OK and the read-back result", async () => {
  await open("set audy-clevel[23] 42\nevent AudioAudysseyADV");
  await onlyVisible("AudioADV");
  await press("5", "5", "down", "1", "2", "down", "3", "4", "down");
  await highlighted("AudioADV", "AudioADV-OK");
  await item("AudioADV-Param2").locator("span", { hasText: /^12$/ }).waitFor();
  await press("ok");
  await press("up", "up", "up", "5", "4", "down", "down", "down", "ok");
  await page.locator(".adv-result", { hasText: "audy_clevel:" }).waitFor();
  await page.locator(".adv-result-value", { hasText: /^0$/ }).waitFor();  // level 12: none set
  // A third digit keeps the last two: 12 becomes 23.
  await press("down", "down", "3", "down", "down", "ok");
  await item("AudioADV-Param2").locator("span", { hasText: /^23$/ }).waitFor();
  await page.locator(".adv-result-value", { hasText: /^42$/ }).waitFor();
  await press("exit");
});
