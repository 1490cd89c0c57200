// factory-sim drives the channel tools: the satellite and banner pages through the
// set's fields.
"use strict";
const { test } = require("node:test");
const assert = require("node:assert");
const { runFactorySim } = require("./sim-run");

const runLines = (lines) => runFactorySim(["--script", "line.fsim"], {
  files: { "line.fsim": lines.join("\n") + "\n" }, prefix: "channel-tools-" });

test("satellite toggles and the banner follow the set's fields", async () => {
  const r = await runLines([
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
  ]);
  assert.strictEqual(r.status, 0, r.stdout + r.stderr);
  assert.match(r.stdout, /tone-22k = 0/);
  assert.match(r.stdout, /lnb-power = 0\nlnb-switch = 0\nsatellite-lnb = 2\/0,2\/0,2\/0/);
  assert.match(r.stdout, /ProgramInfo-SatelliteName = "Thor 0.8W \/ Intelsat 1.0W"/);
});
