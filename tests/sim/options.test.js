// factory-sim's command line: what the existing option tests leave open, the
// version, repeated and conflicting options, and values that are no values.
"use strict";
const { test } = require("node:test");
const assert = require("node:assert");
const { spawnSync } = require("node:child_process");
const { freePort, runFactorySim, simCommand } = require("./sim-run");

test("--version names the build and runs nothing", () => {
  const r = spawnSync(...simCommand(["--version"]), { encoding: "utf8" });
  assert.strictEqual(r.status, 0, r.stderr);
  assert.match(r.stdout, /^factory-sim \d+\.\d+\.\d+\n$/);
});

test("bad command lines end with status 2, the reason and the usage, before anything runs", () => {
  const cases = [
    [["--real-time", "--virtual-time"], /--real-time excludes --virtual-time/],
    [["--port="], /option --port needs a value/],
    [["--trace", ""], /option --trace needs a value/],
    [["--expect-timeout", "3600001"], /option --expect-timeout: not a time in ms \(at most an hour\): 3600001/],
    [["--port", "65536"], /option --port: not a port number: 65536/],
    [["script.fsim"], /unknown option: script\.fsim/],
  ];
  for (const [args, reason] of cases) {
    const r = spawnSync(...simCommand(["--no-control", ...args]), { encoding: "utf8", input: "" });
    assert.strictEqual(r.status, 2, args.join(" "));
    assert.match(r.stderr, reason, args.join(" "));
    assert.match(r.stderr, /\nusage: factory-sim \[options\]\n/, args.join(" "));
    assert.strictEqual(r.stdout, "", args.join(" "));
  }
});

test("of a repeated option the last one counts", async () => {
  const port = await freePort();
  const r = await runFactorySim(["--port", "1", `--port=${port}`, "--script", "s.fsim"],
                                { files: { "s.fsim": "get sw-version\n" }, prefix: "options-" });
  assert.strictEqual(r.status, 0, r.stderr);
  assert.match(r.stdout, new RegExp(`factory UI at http://127\\.0\\.0\\.1:${port}/\n`));
});
