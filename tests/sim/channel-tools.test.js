// factory-sim drives the channel tools: the ATV search example script, and the
// satellite and banner pages through the set's fields.
"use strict";
const { test } = require("node:test");
const assert = require("node:assert");
const fs = require("node:fs");
const os = require("node:os");
const path = require("node:path");

const { EXAMPLES, runFactorySim } = require("./sim-run");

async function runScript(file) {
  return runFactorySim(["--script", file], { prefix: "channel-tools-" });
}

function scriptFile(lines) {
  const dir = fs.mkdtempSync(path.join(os.tmpdir(), "channel-tools-script-"));
  const file = path.join(dir, "line.fsim");
  fs.writeFileSync(file, lines.join("\n") + "\n");
  return file;
}

test("the ATV search example searches up, stores and exits in virtual time", async () => {
  const started = Date.now();
  const r = await runScript(path.join(EXAMPLES, "atv-search.fsim"));
  assert.strictEqual(r.status, 0, r.stdout + r.stderr);
  assert.ok(Date.now() - started < 20000, "the sweep runs on the set's clock");
  assert.match(r.stdout, /script .*atv-search\.fsim passed/);
  // Locked on S-6, stored under program 6 with its plan name; back on program 1.
  assert.match(r.stdout, /atv-frequency = 140250\natv-search-type = 2/);
  assert.match(r.stdout, /atv-programs = .*,6:\d+:S-06 /);
  assert.match(r.stdout, /atv-program = 1\n/);
});

test("satellite toggles and the banner follow the set's fields", async () => {
  const r = await runScript(scriptFile([
    "set dish-22k-fails 1",
    "event SatInfo 0 218",
    "expect 22kHz-Tone \"22kHz tone : ON Fail\"",
    "get tone-22k",
    "event SatInfo 0 169",
    "expect LNB-power-show \"LNB Power: OFF\"",
    "get lnb-power",
    "get lnb-switch",
    "get satellite-lnb",
    "wait 2000",
    "expect LNB-power-hide 0",
    "set dtv-route 2",
    "set current-satellite 2",
    "set rtc 1000000",
    "set eit-start 999970",
    "set eit-duration 60",
    "event DirectCH",
    "expect ProgramInfo-TimeInfo \"1 min left\"",
    "wait 5000",
    "expect ProgramInfo-Show 0",
  ]));
  assert.strictEqual(r.status, 0, r.stdout + r.stderr);
  assert.match(r.stdout, /tone-22k = 0/);
  assert.match(r.stdout, /lnb-power = 0\nlnb-switch = 0\nsatellite-lnb = 2\/0,2\/0,2\/0/);
  assert.match(r.stdout, /ProgramInfo-SatelliteName = "Thor 0.8W \/ Intelsat 1.0W"/);
});
