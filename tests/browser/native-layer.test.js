// The set's native layer in the browser: what the library draws with DirectFB (the
// red "M" of M-mode) appears above the page while the set shows it, and goes when
// the set hides it.
"use strict";
const { test, before } = require("node:test");
const assert = require("node:assert");
const { useFactoryUi, waitFor } = require("./harness");

const ui = useFactoryUi({ control: false });
let page;
let sim;
before(async () => ({ page, sim } = await ui.ready));

// Red pixels of the layer as the browser decoded it; -1 while it is not shown.
function redPixels() {
  return page.evaluate(() => {
    const img = document.getElementById("native-layer");
    if (!img || img.classList.contains("hidden") || !img.complete || img.naturalWidth === 0) return -1;
    const canvas = document.createElement("canvas");
    canvas.width = img.naturalWidth;
    canvas.height = img.naturalHeight;
    const g = canvas.getContext("2d");
    g.drawImage(img, 0, 0);
    const { data } = g.getImageData(0, 0, canvas.width, canvas.height);
    let red = 0;
    for (let i = 0; i < data.length; i += 4) {
      if (data[i] > 200 && data[i + 1] < 60 && data[i + 2] < 60 && data[i + 3] > 200) red++;
    }
    return red;
  });
}

test("the red M appears above the page when M-mode starts and goes when it ends", async () => {
  assert.strictEqual(await redPixels(), -1, "no layer before M-mode");
  assert.ok((await sim.control("set m-mode 1\nevent FactoryMModeStart")).ok);
  await waitFor(async () => (await redPixels()) > 50, 5000);
  const box = await page.locator("#native-layer").boundingBox();
  const main = await page.locator("main").boundingBox();
  assert.deepStrictEqual([box.x, box.y], [main.x, main.y], "the layer covers the page's screen");
  const onTop = await page.evaluate(() => {
    const img = document.getElementById("native-layer");
    return getComputedStyle(img).pointerEvents === "none" && Number(getComputedStyle(img).zIndex) > 0;
  });
  assert.ok(onTop, "above the page, and clicks go through to it");
  assert.ok((await sim.control("event ExitFactoryMode")).ok);
  await waitFor(async () => (await redPixels()) === -1, 5000);
});
