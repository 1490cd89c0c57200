#!/usr/bin/env node
// How fast factory-sim runs the eight-hour burn-in in virtual time, trace on.
//
//   node bench/factory-sim-burn-in.js [FACTORY_SIM] [RUNS]
//
// Runs examples/burn-in.fsim RUNS times (default 5) with --trace, and the same script
// with its waits taken out as many times; the difference of the medians is what the
// 28,800 s of aging cost, and the factor is virtual time over that, by the wall clock
// and by the processor time factory-sim used. The trace of each
// full run is checked to hold every tick's raster call, so that a fast run is not a
// run that lost its record.
"use strict";
const { spawnSync } = require("node:child_process");
const fs = require("node:fs");
const os = require("node:os");
const path = require("node:path");
const net = require("node:net");

const ROOT = path.join(__dirname, "..");
const BINARY = process.argv[2] ? path.resolve(process.argv[2]) : path.join(ROOT, "build", "tools", "factory-sim", "factory-sim");
const RUNS = Number(process.argv[3] || 5);
const SCRIPT = path.join(ROOT, "examples", "burn-in.fsim");
const AGING_MS = 28800 * 1000;

function freePort() {
  return new Promise((resolve) => {
    const server = net.createServer().listen(0, "127.0.0.1", () => {
      const { port } = server.address();
      server.close(() => resolve(port));
    });
  });
}

// The child's processor time (user + system), when /usr/bin/time is there to say it:
// on a busy machine the wall clock mostly measures the other processes.
const TIME = fs.existsSync("/usr/bin/time") ? "/usr/bin/time" : null;

// A free port can be taken by another program before factory-sim binds it: try again.
async function run(script, work) {
  const trace = path.join(work, "trace.jsonl");
  const times = path.join(work, "times");
  for (let attempt = 0; ; ++attempt) {
    const port = await freePort();
    const args = ["--no-control", "--port", String(port), "--script", script, "--trace", trace];
    const [command, commandArgs] = TIME ? [TIME, ["-o", times, "-f", "%U %S", BINARY, ...args]]
                                        : [BINARY, args];
    const started = process.hrtime.bigint();
    const r = spawnSync(command, commandArgs, { cwd: work, stdio: ["ignore", "ignore", "pipe"],
                                                env: { ...process.env, TMPDIR: work } });
    const ms = Number(process.hrtime.bigint() - started) / 1e6;
    if (r.status === 0) {
      const cpu = TIME ? fs.readFileSync(times, "utf8").trim().split(/\s+/).slice(-2)
        .reduce((a, b) => a + Number(b) * 1000, 0) : NaN;
      return { ms, cpu, trace };
    }
    if (r.status !== 2 || attempt === 3) {
      throw new Error(`factory-sim exited ${r.status} ${r.signal || ""} ${r.error || ""}: ${r.stderr}`);
    }
  }
}

const median = (xs) => [...xs].sort((a, b) => a - b)[Math.floor(xs.length / 2)];

async function main() {
  const work = fs.mkdtempSync(path.join(os.tmpdir(), "burn-in-bench-"));
  try {
    const noWaits = path.join(work, "no-waits.fsim");
    fs.writeFileSync(noWaits, fs.readFileSync(SCRIPT, "utf8").replace(/^wait .*$/gm, ""));
    const full = [];
    const base = [];
    for (let i = 0; i < RUNS; ++i) {
      const r = await run(SCRIPT, work);
      full.push(r);
      const lines = fs.readFileSync(r.trace, "utf8").split("\n").filter(Boolean);
      const rasters = lines.filter((l) => /"kind":"call","fn":"MSrv_Factory_Cmd::\w+Raster"/.test(l));
      if (rasters.length < 28800) throw new Error(`trace holds ${rasters.length} raster calls`);
      if (i === 0) {
        console.log(`trace: ${lines.length} lines, ${fs.statSync(r.trace).size} bytes, ` +
                    `${rasters.length} raster calls`);
      }
      base.push(await run(noWaits, work));
    }
    const report = (what, key) => {
      const whole = median(full.map((r) => r[key]));
      const aging = whole - median(base.map((r) => r[key]));
      console.log(`${what}: whole run ${whole.toFixed(0)} ms, 8 h of aging ${aging.toFixed(0)} ms, ` +
                  `${Math.round(AGING_MS / aging).toLocaleString("en")} x real time ` +
                  `(whole run ${Math.round(AGING_MS / whole).toLocaleString("en")} x; median of ${RUNS})`);
    };
    report("wall clock", "ms");
    if (TIME) report("processor time", "cpu");
  } finally {
    fs.rmSync(work, { recursive: true, force: true });
  }
}

main().catch((e) => { console.error(e.message); process.exit(1); });
