// factory-sim as a line station runs the production tests: the example station
// sequence in virtual time, the wipe of the set's files at shipout, and the set's
// fields of these tests.
"use strict";
const { test } = require("node:test");
const assert = require("node:assert");
const fs = require("node:fs");
const path = require("node:path");

const { EXAMPLES, runFactorySim } = require("./sim-run");

// Runs factory-sim to the end on a root of our own, in a folder of its own.
async function run(args, files = {}) {
  const r = await runFactorySim(["--root", "root", ...args],
                                { files, keep: true, prefix: "factory-sim-production-" });
  return { ...r, root: path.join(r.work, "root") };
}

test("the station sequence example passes in virtual time and ships the set out", async () => {
  const started = Date.now();
  const r = await run(["--script", path.join(EXAMPLES, "station-sequence.fsim")]);
  assert.strictEqual(r.status, 0, r.stdout + r.stderr);
  assert.ok(Date.now() - started < 20000, "half a minute of delays costs no real time");
  assert.match(r.stdout, /script .*station-sequence.fsim passed/);
  assert.match(r.stdout, /speaker-type = 0/);
  assert.match(r.stdout, /factory\[87\] = 1/);
  assert.match(r.stdout, /shipout-region = 1/);
  assert.match(r.stdout, /listener 0x12006/);
  for (const gone of ["Customer/dpdc/iprc/HomeControl", "Customer/factory/shipout.code",
    "Customer/stagecraft-data/cookies", "Customer/stagecraft-data/shared-objects",
    "OAD/line-download.bin"]) {
    assert.ok(!fs.existsSync(path.join(r.root, gone)), gone + " is wiped");
  }
  assert.strictEqual(fs.readFileSync(path.join(r.root, "Customer/profiles.config"), "utf8"),
    "# shipping profiles\n");
  fs.rmSync(r.work, { recursive: true, force: true });
});

test("a failing station step stops the script at its expect line", async () => {
  const script = [
    "set wlan-full-test fail",
    "set wlan-error 1",
    "event FactoryWLANTest 0 2",
    'expect WLANTest-NG-Error "Communication error"',
    "event FactoryWLANTest 0 2",
    'expect WLANTest-OK-RSSI "-42, -47"',
    "",
  ].join("\n");
  const r = await run(["--script", "wlan.fsim"], { "wlan.fsim": script });
  assert.notStrictEqual(r.status, 0);
  assert.match(r.stdout + r.stderr, /seen WLANTest-NG-Error = Communication error/);
  assert.match(r.stdout + r.stderr, /wlan.fsim:6/);
  fs.rmSync(r.work, { recursive: true, force: true });
});

test("the production fields read back what was set and refuse what the set cannot hold", async () => {
  const good = [
    "set rssi -30, -35", "get rssi",
    "set wow-status 2 2 1", "get wow-status",
    "set timing 640 480 600", "get timing",
    "set access-points LINE 5 86%; Office 7", "get access-points",
    "set vga-edid fail", "get vga-edid",
    "get full-power", "get on-timer", "get spdif-mode", "get uart-result",
    "event ClearPowerOnTime", "get on-timer",
    "",
  ].join("\n");
  const r = await run(["--script", "fields.fsim"], { "fields.fsim": good });
  assert.strictEqual(r.status, 0, r.stdout + r.stderr);
  assert.match(r.stdout, /rssi = -30, -35/);
  assert.match(r.stdout, /wow-status = 2 2 1/);
  assert.match(r.stdout, /timing = 640 480 600/);
  assert.match(r.stdout, /access-points = LINE 5 86%; Office 7%/);
  assert.match(r.stdout, /vga-edid = fail/);
  assert.match(r.stdout, /full-power = none/);
  assert.match(r.stdout, /on-timer = 2026-12-01 07:30:00 period 1/);
  assert.match(r.stdout, /on-timer = off/);
  fs.rmSync(r.work, { recursive: true, force: true });

  for (const [line, reason] of [
    ["set rssi -30", /two signal values/],
    ["set timing 640 480", /width height vfreq/],
    ["set wow-status 2 x", /statuses/],
    ["set access-points LINE", /SSID signal/],
    ["set vga-edid maybe", /pass or fail/],
    ["set speaker-type 1", /read-only/],
    ["set factory-cmd-param 256", /not a number/],
  ]) {
    const bad = await run(["--script", "bad.fsim"], { "bad.fsim": line + "\n" });
    assert.notStrictEqual(bad.status, 0, line);
    assert.match(bad.stdout + bad.stderr, reason, line);
    fs.rmSync(bad.work, { recursive: true, force: true });
  }
});
