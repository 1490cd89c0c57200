// The sound, 3D and media pages driven from factory-sim: the fields that choose
// each outcome, and the fields the set only reports.
"use strict";
const { test } = require("node:test");
const assert = require("node:assert");

const { runFactorySim } = require("./sim-run");

async function run(args, files = {}) {
  return runFactorySim(args, { files, prefix: "sound-media-" });
}

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
