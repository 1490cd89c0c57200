// The sound, 3D and media pages driven from factory-sim: the example script, the
// fields that choose each outcome, and the fields the set only reports.
"use strict";
const { test } = require("node:test");
const assert = require("node:assert");
const fs = require("node:fs");
const path = require("node:path");

const { EXAMPLES, runFactorySim } = require("./sim-run");

async function run(args, files = {}) {
  return runFactorySim(args, { files, prefix: "sound-media-" });
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
