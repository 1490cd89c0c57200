// What both memory benchmarks share: factory-sim started in virtual time on a free
// port with its own temporary folder and a trace to a sink, its resident set size,
// and the table of figures.
"use strict";
const { spawn } = require("node:child_process");
const fs = require("node:fs");
const net = require("node:net");
const os = require("node:os");
const path = require("node:path");

const BINARY = process.env.FACTORY_SIM ||
  path.join(__dirname, "..", "build", "tools", "factory-sim", "factory-sim");

function freePort() {
  return new Promise((resolve) => {
    const server = net.createServer().listen(0, "127.0.0.1", () => {
      const { port } = server.address();
      server.close(() => resolve(port));
    });
  });
}

const rssKiB = (pid) => Number(/VmRSS:\s+(\d+)/.exec(fs.readFileSync(`/proc/${pid}/status`, "utf8"))[1]);

// Traced as a line station would, to a sink: a long run makes gigabytes of trace.
async function startFactorySim(prefix, stdout, stderr = "inherit") {
  const work = fs.mkdtempSync(path.join(os.tmpdir(), prefix));
  const port = await freePort();
  const child = spawn(BINARY, ["--virtual-time", "--no-control", "--port", String(port),
                               "--trace", "/dev/null"],
                      { stdio: ["pipe", stdout, stderr], env: { ...process.env, TMPDIR: work } });
  const quit = async () => {
    child.stdin.end("quit\n");
    const status = await new Promise((resolve) => child.on("close", resolve));
    fs.rmSync(work, { recursive: true, force: true });
    return status;
  };
  return { child, port, quit };
}

function printFigures(figures) {
  for (const [what, kib] of figures) console.log(`${what.padEnd(28)} ${(kib / 1024).toFixed(1)} MiB`);
}

module.exports = { freePort, rssKiB, startFactorySim, printFigures };
