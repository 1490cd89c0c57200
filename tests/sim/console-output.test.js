// The console as a new user meets it: what help says about event parameters, and
// quotes read alike by set and expect.
"use strict";
const { test } = require("node:test");
const assert = require("node:assert");
const { runFactorySim } = require("./sim-run");

const script = (text) => runFactorySim(["--script", "s.fsim"], { files: { "s.fsim": text }, prefix: "console-" });

test("help event explains every value of p2 for the search direction and the preset phase", async () => {
  const r = await script("help event 243\nhelp event DLTVSignalSetting\n");
  assert.strictEqual(r.status, 0, r.stderr);
  assert.match(r.stdout, /event 243 OnATVTuningSearch, handler OnEvent_OnATVTuningSearch\n +p2 \(low byte\): the search direction: 0 up, 1 down .*anything else no search\n/);
  assert.match(r.stdout, /event 192 DLTVSignalSetting, handler OnEvent_DLTVSignalSetting\n +p2 \(low byte\): the channel-preset phase: 0 shows "CH Preset Writing" .* 1 the station reports OK \("CH Preset OK"; .*anything else nothing\n/);
});

test("set takes quotes off as expect does", async () => {
  const cases = [
    // [set value, what get shows, the expect that must pass]
    ['""', "sw-version = ", 'expect Version-ZYTAppVersion ""'],
    ['"VQ 27"', "sw-version = VQ 27", 'expect Version-ZYTAppVersion "VQ 27"'],
    ["VQ 27", "sw-version = VQ 27", "expect Version-ZYTAppVersion VQ 27"],
  ];
  for (const [value, shown, expect] of cases) {
    const r = await script(`set sw-version ${value}\nget sw-version\nevent FactoryVersion\n${expect}\n`);
    assert.strictEqual(r.status, 0, `${value}: ${r.stderr}`);
    assert.ok(r.stdout.includes(`\n${shown}\n`), value);
  }
});
