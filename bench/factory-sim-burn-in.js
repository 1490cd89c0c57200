#!/usr/bin/env node
// How fast factory-sim runs the eight-hour burn-in in virtual time, trace on.
//
//   node bench/factory-sim-burn-in.js [FACTORY_SIM] [RUNS]
//
// Runs examples/burn-in.fsim RUNS times (default 5) with --trace, and the same script
// with its waits taken out as many times; the difference of the medians is what the
// 28,800 s of aging cost, and the factor is virtual time over that. The trace of each
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

// A free port can be taken by another program before factory-sim binds it: try again.
async function run(script, work) {
  const trace = path.join(work, "trace.jsonl");
  for (let attempt = 0; ; ++attempt) {
    const port = await freePort();
    const started = process.hrtime.bigint();
    const r = spawnSync(BINARY, ["--no-control", "--port", String(port), "--script", script,
                                 "--trace", trace],
                        { cwd: work, stdio: ["ignore", "ignore", "pipe"],
                          env: { ...process.env, TMPDIR: work } });
    const ms = Number(process.hrtime.bigint() - started) / 1e6;
    if (r.status === 0) return { ms, trace };
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
      full.push(r.ms);
      const lines = fs.readFileSync(r.trace, "utf8").split("\n").filter(Boolean);
      const rasters = lines.filter((l) => /"kind":"call","fn":"MSrv_Factory_Cmd::\w+Raster"/.test(l));
      if (rasters.length < 28800) throw new Error(`trace holds ${rasters.length} raster calls`);
      if (i === 0) {
        console.log(`trace: ${lines.length} lines, ${fs.statSync(r.trace).size} bytes, ` +
                    `${rasters.length} raster calls`);
      }
      base.push((await run(noWaits, work)).ms);
    }
    const aging = median(full) - median(base);
    console.log(`whole run ${median(full).toFixed(0)} ms, without the waits ` +
                `${median(base).toFixed(0)} ms (median of ${RUNS})`);
    console.log(`8 h of aging: ${aging.toFixed(0)} ms, ` +
                `${Math.round(AGING_MS / aging).toLocaleString("en")} x real time ` +
                `(whole run: ${Math.round(AGING_MS / median(full)).toLocaleString("en")} x)`);
  } finally {
    fs.rmSync(work, { recursive: true, force: true });
  }
}

main().catch((e) => { console.error(e.message); process.exit(1); });
