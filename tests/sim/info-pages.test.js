// The information and tuner pages from factory-sim: the line-station example, the
// satellite layout driven from `set`, the console copy of a page and the fields'
// refusals.
"use strict";
const { test } = require("node:test");
const assert = require("node:assert");
const { spawn } = require("node:child_process");
const net = require("node:net");
const fs = require("node:fs");
const os = require("node:os");
const path = require("node:path");

const BINARY = process.env.FACTORY_SIM;
const EXAMPLES = process.env.FACTORY_SIM_EXAMPLES;

function freePort() {
  return new Promise((resolve) => {
    const server = net.createServer().listen(0, "127.0.0.1", () => {
      const { port } = server.address();
      server.close(() => resolve(port));
    });
  });
}

async function run(script) {
  const work = fs.mkdtempSync(path.join(os.tmpdir(), "info-pages-"));
  const file = path.join(work, "s.fsim");
  fs.writeFileSync(file, script);
  const port = await freePort();
  const child = spawn(BINARY, ["--control-port", "0", "--port", String(port), "--script", file],
                      { cwd: work });
  let stdout = "";
  let stderr = "";
  child.stdout.on("data", (d) => { stdout += d; });
  child.stderr.on("data", (d) => { stderr += d; });
  const timer = setTimeout(() => child.kill("SIGKILL"), 60000);
  const status = await new Promise((resolve) => child.on("close", resolve));
  clearTimeout(timer);
  fs.rmSync(work, { recursive: true, force: true });
  return { status, stdout, stderr };
}

test("the line-station example pages from the self-check page to a refreshing tuner page", async () => {
  const r = await run(fs.readFileSync(path.join(EXAMPLES, "info-pages.fsim"), "utf8"));
  assert.strictEqual(r.status, 0, r.stderr);
  assert.match(r.stdout, /seen Tuner-SNR = 19\.5/);
});

test("a satellite route shows the satellite layout with the front end that was set", async () => {
  const r = await run([
    "set dtv-route-system 0x40", "set sat-modulation 1", "set lnb-polarity 1", "set lnb-switch 1",
    "set sat-if-frequency 1100", "set sat-roll-off 2",
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
