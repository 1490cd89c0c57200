// A script's progress in the reference page: while factory-sim runs a line-station
// script in real time, the page shows the phase, the line, a wait's elapsed and
// remaining time and the steps passed and failed so far; nothing without a script.
"use strict";
const { test, after } = require("node:test");
const assert = require("node:assert");
const fs = require("node:fs");
const os = require("node:os");
const path = require("node:path");
const { launchBrowser, startFactorySim, waitFor } = require("./harness");

let chrome;
const cleanup = [];
after(async () => {
  if (chrome) await chrome.close();
  for (const undo of cleanup) await undo();
});

const text = (page, id) => page.locator("#" + id).textContent();

test("a running script's phase, line, wait and step counts show beside the page", async () => {
  chrome = await launchBrowser();
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), "progress-"));
  cleanup.push(() => fs.rmSync(folder, { recursive: true, force: true }));
  const script = path.join(folder, "aging.fsim");
  fs.writeFileSync(script, ["phase warm-up", "set m-mode 1", "wait 200", "phase aging",
                            "# eight seconds of aging", "wait 80000"].join("\n") + "\n");
  // The script waits 80 s of the set's time; the test reads the page during the wait.
  const sim = await startFactorySim(["--script", script]);
  cleanup.push(() => sim.child.kill("SIGTERM"));
  const page = await chrome.newPage();
  await page.goto("http://127.0.0.1:" + sim.port + "/");
  const box = page.locator("#script-progress");
  await box.waitFor({ state: "visible", timeout: 10000 });
  await waitFor(async () => (await text(page, "progress-phase")) === "aging", 10000);
  assert.strictEqual(await text(page, "progress-script"), script);
  assert.strictEqual(await text(page, "progress-line"), "line 6: wait 80000");
  assert.strictEqual(await text(page, "progress-passed"), "2");
  assert.strictEqual(await text(page, "progress-failed"), "0");
  // Elapsed grows and remaining shrinks, adding up to the wait, in h:mm:ss past a minute.
  const times = async () => {
    const elapsed = await text(page, "progress-elapsed");
    const remaining = await text(page, "progress-remaining");
    return [elapsed, remaining];
  };
  const seconds = (t) => (t.includes(":") ? t.split(/[: ]/).slice(0, 3).reduce((a, v) => a * 60 + Number(v), 0)
    : Number.parseFloat(t));
  await waitFor(async () => /elapsed$/.test((await times())[0]), 5000);
  const first = await times();
  assert.match(first[0], /^\d+\.\d s elapsed$/);
  assert.match(first[1], /^0:01:\d\d left$/);
  await new Promise((r) => setTimeout(r, 1500));
  const second = await times();
  assert.ok(seconds(second[0]) > seconds(first[0]), second[0] + " after " + first[0]);
  assert.ok(seconds(second[1]) < seconds(first[1]), second[1] + " after " + first[1]);
  assert.ok(Math.abs(seconds(second[0]) + seconds(second[1]) - 80) <= 1.1, second.join(" / "));
  const bar = await page.locator("#progress-bar > div").evaluate((d) => parseFloat(d.style.width));
  assert.ok(bar > 0 && bar < 20, String(bar));
});

test("without a script the page shows no progress", async () => {
  chrome = chrome || await launchBrowser();
  const sim = await startFactorySim();
  cleanup.push(() => sim.stop());
  const page = await chrome.newPage();
  await page.goto("http://127.0.0.1:" + sim.port + "/");
  await page.locator("#conn", { hasText: /^connected$/ }).waitFor();
  const answer = await sim.control("get m-mode");
  assert.ok(answer.ok);
  await new Promise((r) => setTimeout(r, 1200));
  assert.strictEqual(await page.locator("#script-progress").isVisible(), false);
});
