// The information and tuner pages from factory-sim: the satellite layout driven
// from `set`, the console copy of a page and the fields' refusals.
"use strict";
const { test } = require("node:test");
const assert = require("node:assert");

const { runFactorySim } = require("./sim-run");

async function run(script) {
  return runFactorySim(["--script", "s.fsim"], { files: { "s.fsim": script }, prefix: "info-pages-" });
}

test("a satellite route shows the satellite layout with the front end that was set", async () => {
  const r = await run([
    "set dtv-route-system 0x40", "set sat-modulation 1", "set transponder 10850000/27500/V",
    "set lnb-switch 1", "set sat-roll-off 2",
    "event FactoryVersion", "key up", "expect Tuner-LNB-Polarity-DVBS V(13V)",
    "get dtv-route-system", "",
  ].join("\n"));
  assert.strictEqual(r.status, 0, r.stderr);
  for (const row of ["Tuner-Modulation-System-DVBS = \"DVB-S\"", "Tuner-Frequency-DVBS = \"10850\"",
                     "Tuner-Roll-Off-DVBS = \"20\"", "Tuner-LNB-Power-DVBS = \"ON\""]) {
    assert.ok(r.stdout.includes(row), row);
  }
  assert.match(r.stdout, /dtv-route-system = 64/);
});

test("the self-check page's HDMI EDID NG rows and the failed URI read are driven from the console", async () => {
  const r = await run(["set hdmi-edid[2] 0", "set uri-read 0", "event FactoryVersion",
                       "expect Version-EDID-HDMI2-NG 0", "expect Version-EDID-HDMI2 NG",
                       "expect URI NONE", ""].join("\n"));
  assert.strictEqual(r.status, 0, r.stderr);
  const bad = await run("set hdmi-edid[5] 0\n");
  assert.notStrictEqual(bad.status, 0);
  assert.match(bad.stderr, /not an HDMI port \(1-4\)/);
});

test("300 ms after a page is drawn the console shows it as a 168-column table", async () => {
  const r = await run(["set color-temp[warm] 1 2 3 4 5 6", "event FactoryVersion", "wait 400",
                       "key down", "wait 400", ""].join("\n"));
  assert.strictEqual(r.status, 0, r.stderr);
  const rule = "-".repeat(168);
  assert.ok(r.stdout.split("\n").filter((l) => l === rule).length >= 4, "two tables, two rules each");
  assert.match(r.stdout, /\nR Gain {22}1 {27}128 /);
  assert.match(r.stdout, /\nB Offset {20}6 /);
});

test("the pages' fields refuse values they cannot hold, with the reason", async () => {
  const cases = [
    ["wifi-dongle-ready", "soon", /or never/],
    ["color-temp[hot]", "1 2 3 4 5 6", /not a colour temperature/],
    ["color-temp[cool]", "1 2 3 4 5", /six bytes/],
    ["tint", "200", /not a number from -128 to 127/],
    ["demod-snr", "loud", /not a number/],
    ["dtv-route", "4", /not a number from 0 to 3/],
  ];
  for (const [field, value, reason] of cases) {
    const r = await run(`set ${field} ${value}\n`);
    assert.notStrictEqual(r.status, 0, field);
    assert.match(r.stderr, reason, field);
  }
  const r = await run("set wifi-dongle-ready never\nget wifi-dongle-ready\nget color-temp[medium]\n");
  assert.strictEqual(r.status, 0, r.stderr);
  assert.match(r.stdout, /wifi-dongle-ready = never/);
  assert.match(r.stdout, /color-temp\[medium\] = 128 128 128 128 128 128/);
});
