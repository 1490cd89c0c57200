// Runs factory-sim to its end in a folder of its own, for the page families' tests:
// a UI port the system picks, no control endpoint, the set's temporary files under
// that folder.
"use strict";
const { spawn } = require("node:child_process");
const net = require("node:net");
const fs = require("node:fs");
const os = require("node:os");
const path = require("node:path");

const BINARY = process.env.FACTORY_SIM;
// A cross build's factory-sim runs through the emulator CTest names (qemu-user and its
// options, space separated); the tests themselves stay on the host's node.
const EMULATOR = (process.env.FACTORY_SIM_EMULATOR || "").split(" ").filter(Boolean);
const EXAMPLES = process.env.FACTORY_SIM_EXAMPLES || path.join(__dirname, "..", "..", "examples");

// [file, argv] that start factory-sim with args, through the emulator if there is one.
function simCommand(args) {
  return EMULATOR.length ? [EMULATOR[0], [...EMULATOR.slice(1), BINARY, ...args]] : [BINARY, args];
}

function freePort() {
  return new Promise((resolve) => {
    const server = net.createServer().listen(0, "127.0.0.1", () => {
      const { port } = server.address();
      server.close(() => resolve(port));
    });
  });
}

// files: name -> text, written into the run's folder (the working directory), so that
// args may name them; prepare(work) may add more; input goes to the console; port: the
// UI port (by default 0, the system's choice: a port found free and handed over could
// be taken by another process before factory-sim binds it); keep: leave the folder
// for the caller (returned as work, with tmp the set's TMPDIR inside it).
async function runFactorySim(args, { files = {}, keep = false, prefix = "factory-sim-", input = "",
                                     port = null, prepare = null } = {}) {
  const work = fs.mkdtempSync(path.join(os.tmpdir(), prefix));
  const tmp = path.join(work, "tmp");
  fs.mkdirSync(tmp);
  for (const [name, text] of Object.entries(files)) fs.writeFileSync(path.join(work, name), text);
  if (prepare) prepare(work);
  port = port || 0;
  const child = spawn(...simCommand(["--control-port", "0", "--port", String(port), ...args]), {
    cwd: work, env: { ...process.env, TMPDIR: tmp },
  });
  let stdout = "";
  let stderr = "";
  child.stdout.on("data", (d) => { stdout += d; });
  child.stderr.on("data", (d) => { stderr += d; });
  child.stdin.on("error", () => {});  // factory-sim may refuse to start before reading it
  child.stdin.end(input);
  const timer = setTimeout(() => child.kill("SIGKILL"), 60000);
  const status = await new Promise((resolve) => child.on("close", resolve));
  clearTimeout(timer);
  if (!keep) fs.rmSync(work, { recursive: true, force: true });
  return { status, stdout, stderr, work, tmp };
}

module.exports = { BINARY, EXAMPLES, freePort, runFactorySim, simCommand };
