// factory-sim drives the channel tools: the ATV search example script, and the
// satellite and banner pages through the set's fields.
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

async function runScript(file) {
  const work = fs.mkdtempSync(path.join(os.tmpdir(), "channel-tools-"));
  const port = await freePort();
  const child = spawn(BINARY, ["--control-port", "0", "--port", String(port), "--script", file], {
    cwd: work, env: { ...process.env, TMPDIR: work },
  });
  let stdout = "";
  let stderr = "";
  child.stdout.on("data", (d) => { stdout += d; });
  child.stderr.on("data", (d) => { stderr += d; });
  child.stdin.end();
  const timer = setTimeout(() => child.kill("SIGKILL"), 60000);
  const status = await new Promise((resolve) => child.on("close", resolve));
  clearTimeout(timer);
  fs.rmSync(work, { recursive: true, force: true });
  return { status, stdout, stderr };
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
