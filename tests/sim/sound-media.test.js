// The sound, 3D and media pages driven from factory-sim: the example script, the
// fields that choose each outcome, and the fields the set only reports.
"use strict";
const { test } = require("node:test");
const assert = require("node:assert");
const { spawn } = require("node:child_process");
const fs = require("node:fs");
const os = require("node:os");
const path = require("node:path");

const BINARY = process.env.FACTORY_SIM;
const EXAMPLES = process.env.FACTORY_SIM_EXAMPLES || path.join(__dirname, "..", "..", "examples");

async function run(args, files = {}) {
  const work = fs.mkdtempSync(path.join(os.tmpdir(), "sound-media-"));
  for (const [name, text] of Object.entries(files)) fs.writeFileSync(path.join(work, name), text);
  // Port 0 is refused for the UI server; a high random one keeps parallel runs apart.
  const port = String(20000 + Math.floor(Math.random() * 30000));
  const child = spawn(BINARY, ["--control-port", "0", "--port", port, ...args], { cwd: work });
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

test("the example tunes band 6 and its twin, a shutter length, the console and the USB drive", async () => {
  const r = await run(["--script", path.join(EXAMPLES, "sound-3d-media.fsim")]);
  assert.strictEqual(r.status, 0, r.stderr);
  const values = r.stdout.split("\n").filter((l) => / = /.test(l) && !l.startsWith("<-"));
  for (const line of ["factory[3508] = 101", "factory[3514] = 101",
                      "peq[6] = gain=101 f0=0 f0div100=0 q=0", "l-open = 11840",
                      "media-player = clip.ts paused playlist=clip.ts",
                      "media-player = - stopped playlist=-"]) {
    assert.ok(values.includes(line), line + " in\n" + values.join("\n"));
  }
  const sources = values.filter((l) => l.startsWith("input-source"));
  assert.deepStrictEqual(sources, ["input-source = 34", "input-source = 28"]);
});

test("a set without a drive or with a failing player never plays; reports cannot be set", async () => {
  const script = [
    "set usb-present 0",
    "event MediaPlayer",
    "get media-player",
    "key exit",
    "set usb-present 1",
    "set file[/mnt/usb/sda1/a.ts] x",
    "set media-play-fails 1",
    "event MediaPlayer",
    "get media-player",
    "journal MMPlay",
    "set media-player x",
    "",
  ].join("\n");
  const r = await run(["--script", "m.fsim"], { "m.fsim": script });
  assert.notStrictEqual(r.status, 0);
  const players = r.stdout.split("\n").filter((l) => l.startsWith("media-player = "));
  assert.deepStrictEqual(players, ["media-player = - stopped playlist=-",
                                   "media-player = - stopped playlist=-"]);
  assert.strictEqual((r.stdout.match(/MMPlay ->fail /g) || []).length, 2);
  assert.match(r.stderr, /m\.fsim:11: media-player is what the set reports; it cannot be set/);
});
