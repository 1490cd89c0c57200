// The simulated front end is one state: what a `set` writes shows through every record
// form the library reads (the tuner page's demodulator and ST_ records, the satellite
// tests' MS_ and mux records), and what one test writes the other pages see.
"use strict";
const { test } = require("node:test");
const assert = require("node:assert");

const { runFactorySim } = require("./sim-run");

async function run(lines) {
  return runFactorySim(["--script", "s.fsim"], {
    files: { "s.fsim": [...lines, ""].join("\n") },
    prefix: "front-end-",
  });
}

// The demo set's route 2 is a satellite route.
const SATELLITE_TUNER_PAGE = ["set dtv-route 2", "event FactoryVersion", "key up"];

test("a transponder set once shows on the tuner page and in the polarisation test alike", async () => {
  const r = await run([
    "set transponder 10850000/27500/V",
    ...SATELLITE_TUNER_PAGE,
    "expect Tuner-Frequency-DVBS 10850",
    "expect Tuner-2nd-IF-Frequency-DVBS 1100",
    "expect Tuner-Symbol-Rate-DVBS 27500",
    "expect Tuner-LNB-Polarity-DVBS V(13V)",
    // To H: the test scans the transponder it read and writes it back horizontal.
    "event FactoryDVBSManualTuningToggle 0 10",
    "get scan-frequency",
    "get scan-param",
    "get transponder",
    "wait 1000",
    "expect Tuner-LNB-Polarity-DVBS H(18V)",
  ]);
  assert.strictEqual(r.status, 0, r.stdout + r.stderr);
  assert.match(r.stdout, /scan-frequency = 10850000\n/);
  assert.match(r.stdout, /scan-param = 27500\/0\/0\/1\/1\n/);
  assert.match(r.stdout, /transponder = 10850000\/27500\/H\n/);
});

test("the LNB test powers the LNB for the polarisation of the transponder that was set", async () => {
  for (const [polarisation, supply] of [["H", 3], ["V", 2]]) {
    const r = await run([
      `set transponder 11494000/22000/${polarisation}`, "set lnb-switch 0", "set dtv-route 2",
      "event SatInfo 0 169", "get lnb-power",
    ]);
    assert.strictEqual(r.status, 0, r.stdout + r.stderr);
    assert.match(r.stdout, new RegExp(`lnb-power = ${supply}\\n`), polarisation);
  }
});

test("the dish's tone and the current satellite's LNB number show on the tuner page", async () => {
  const r = await run([
    "set tone-22k 1", "set current-satellite 1", "set lnb-number 7", ...SATELLITE_TUNER_PAGE,
    // Hotbird's one transponder, now the current one; the page's rows in their order.
    "expect Tuner-Frequency-DVBS 10992",
    "expect Tuner-LNB-Number-DVBS 7",
    "expect Tuner-LNB-Band-DVBS LOW(22kON)",
    "set current-satellite 0",
    "get lnb-number",
  ]);
  assert.strictEqual(r.status, 0, r.stdout + r.stderr);
  assert.match(r.stdout, /lnb-number = 1\n/);
});

test("the fields that copied the front end are gone", async () => {
  for (const field of ["sat-if-frequency", "sat-symbol-rate", "sat-22k", "lnb-polarity",
                       "mux-known", "mux-polarity", "rf-frequency"]) {
    const r = await run([`get ${field}`]);
    assert.notStrictEqual(r.status, 0, field);
  }
});
