// The service-data editor from factory-sim's console: the service command and the
// service fields, and what they refuse.
"use strict";
const { test } = require("node:test");
const assert = require("node:assert");
const { runFactorySim } = require("./sim-run");

const runLines = (lines) => runFactorySim(["--script", "s.fsim"], {
  files: { "s.fsim": lines.join("\n") + "\n" }, prefix: "service-mode-" });

test("each service command prepares its own fields only", async () => {
  const r = await runLines([
    "set factory[0x800] 7",
    "set service-mode-select 195",
    "service step-down 0x800",
    "expect DMode-Data 06H",
    "get service-step",
    "get service-mode-select",
    "service s-mode",
    "expect S-D S",
    "get service-step",
    "service read-bdrv",
    "expect S-Mode 0",
    "get service-wb",
    "service show 0xB17",
    "expect DMode-Value-Color 0",
  ]);
  assert.strictEqual(r.status, 0, r.stdout + r.stderr);
  assert.match(r.stdout, /service-step = 29\nservice-mode-select = 0\n/);
  assert.match(r.stdout, /seen S-D = S\nservice-step = 0\n/);
  assert.match(r.stdout, /service-wb = read-bdrv\n/);
});

test("ranges and white-balance commands are read back as set", async () => {
  const r = await runLines([
    "get service-range[0x900]",
    "set service-range[0x900] 0x10 0x20",
    "get service-range[0x900]",
    "set service-wb 0x33",
    "get service-wb",
    "set service-wb 7",
    "get service-wb",
  ]);
  assert.strictEqual(r.status, 0, r.stdout + r.stderr);
  assert.match(r.stdout, /service-range\[0x900\] = 0 255\n/);
  assert.match(r.stdout, /service-range\[0x900\] = 16 32\n/);
  assert.match(r.stdout, /service-wb = rdrv\n/);
  assert.match(r.stdout, /service-wb = 7\n/);
});

test("bad service input is refused with its reason and line", async () => {
  const cases = [
    ["service step-sideways", /unknown service command: step-sideways \(commands: step-up, /],
    ["service step-up 0x10000", /not a service address \(0-0xFFFF\): 0x10000/],
    ["service", /usage: service <command> \[address\]/],
    ["set service-range[0x900] 9 3", /not a range "min max" of bytes with min <= max: 9 3/],
    ["set service-range[0x900] 1 256", /not a range/],
    ["set service-range[0x900] 1", /not a range/],
    ["set service-range[zz] 1 2", /not a service address/],
    ["set service-wb purple", /not a white-balance command/],
    ["set service-nav-lock 2", /not 0\/1/],
    ["set service-addr 0x10000", /not a number from 0 to 65535/],
  ];
  for (const [line, reason] of cases) {
    const r = await runLines(["wait 1", line]);
    assert.notStrictEqual(r.status, 0, line);
    assert.match(r.stdout + r.stderr, reason, line);
    assert.match(r.stdout + r.stderr, /s\.fsim:2:/, line);
  }
});
