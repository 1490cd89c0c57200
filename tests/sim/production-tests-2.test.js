// factory-sim with the tuning, CI and clone pages: the scan monitor, CI and clone
// outcomes driven from the console's fields.
"use strict";
const { test } = require("node:test");
const assert = require("node:assert");

const { runFactorySim } = require("./sim-run");

// Runs a script to the end in a folder of its own; a file name is taken as it is.
async function runScript(file, text) {
  return runFactorySim(["--script", file], {
    files: text === undefined ? {} : { [file]: text }, prefix: "production-tests-2-",
  });
}

test("a cable run ends with the scan-result counts and closes its panel", async () => {
  const r = await runScript("scan.fsim", [
    "set scan-ms 5000",
    "set scan-result 0 0 0",
    "event DirectTune 0 118",
    "expect DVB-C-Direct-Tuning \"DVB-C Tuning\"",
    "wait 4999",
    "journal FinishManualTuneChange2ChannelManager",
    "wait 1",
    "expect Channel-37-Show 0",
    "journal FinishManualTuneChange2ChannelManager",
    "",
  ].join("\n"));
  assert.strictEqual(r.status, 0, r.stderr);
  assert.match(r.stdout, /~~ 2 \[ScanRecepient\] dtv= 0, radio= 0, data= 0/);
  assert.match(r.stdout, /DVB-C Channel Number is NULL/);
  assert.strictEqual(r.stdout.match(/call MSrv_Factory_Cmd::FinishManualTuneChange2ChannelManager/g).length, 1,
                     "the scan ends at 5000 ms, not before");
});

test("the CI result and the clone code come from the console", async () => {
  const r = await runScript("ci.fsim", [
    "set ci-test fail",
    "event CITestStatus",
    "wait 1000",
    "expect CITest-NG \"CI FACTORY TEST : NG\"",
    "key exit",
    "event CloneCopy 0 0",
    "expect Clone-Copy 0",
    "key panel-power",
    "event CloneCopy 0 2",
    "expect Clone-Copy 2",
    "key panel-power",
    "",
  ].join("\n"));
  assert.strictEqual(r.status, 0, r.stderr);
  assert.match(r.stdout, /key panel-power \(0xF550\): consumed[\s\S]*key panel-power \(0xF550\): not consumed/);
});

test("the panel is read-only and bad values are refused with a reason", async () => {
  const cases = [
    ["set panel red\n", /panel is read-only/],
    ["set ci-test maybe\n", /ci-test is pass or fail: maybe/],
    ["set scan-result 1 2\n", /scan-result is "tv radio data"/],
    ["set dtv-programs 1:4\n", /not a program \(number:type, type 1-3\): 1:4/],
  ];
  for (const [script, reason] of cases) {
    const r = await runScript("bad.fsim", script);
    assert.notStrictEqual(r.status, 0, script);
    assert.match(r.stderr, reason);
  }
});

test("a set switched off during burn-in resumes it when the host starts", async () => {
  const r = await runFactorySim(["--set", "aging.set", "--script", "s.fsim"], {
    files: { "aging.set": "aging-mode = 4\n", "s.fsim": "wait 5000\nget raster-count\n" },
    prefix: "production-tests-2-",
  });
  assert.strictEqual(r.status, 0, r.stderr);
  assert.match(r.stdout, /timer 16 OnTimer_OnAgingMode2/);
  assert.match(r.stdout, /raster-count = 6/);
});
