// factory-sim as a line station uses it: scripts, refused commands and options, the
// trace contract, and a set that stays inside its root.
"use strict";
const { test } = require("node:test");
const assert = require("node:assert");
const { spawnSync } = require("node:child_process");
const fs = require("node:fs");
const os = require("node:os");
const path = require("node:path");

const BINARY = process.env.FACTORY_SIM;

function tempDir(name) {
  return fs.mkdtempSync(path.join(os.tmpdir(), name + "-"));
}

// Runs factory-sim to the end in a folder of its own; TMPDIR points into it too.
function run(args, { input = "", files = {} } = {}) {
  const work = tempDir("factory-sim-run");
  const tmp = path.join(work, "tmp");
  fs.mkdirSync(tmp);
  for (const [name, text] of Object.entries(files)) fs.writeFileSync(path.join(work, name), text);
  const result = spawnSync(BINARY, ["--control-port", "0", ...args], {
    cwd: work, input, encoding: "utf8", timeout: 60000,
    env: { ...process.env, TMPDIR: tmp },
  });
  return { ...result, work, tmp };
}

function hasNotes() {
  // A build whose set has no web-application manager cannot see notifications.
  const r = run(["--script", "s.fsim"], { files: { "s.fsim": "expect established\n" } });
  return !/no web-application manager/.test(r.stderr);
}

test("a script of events, keys, AT requests, set/get and waits runs to the end in virtual time", () => {
  const script = [
    "# a line-station run",
    "event FactoryVersion",
    "event OnEvent_FactoryMModeStart 0 1 0",
    "event 0xEB",
    "key exit",
    "key 0xF557",
    "at version",
    "at teletext-on",
    "set file[/ciplus/demo.bin] ab\\x01",
    "get file[/ciplus/demo.bin]",
    "wait 480000",
    "",
  ].join("\n");
  const started = Date.now();
  const r = run(["--script", "line.fsim"], { files: { "line.fsim": script } });
  assert.strictEqual(r.status, 0, r.stderr);
  assert.ok(Date.now() - started < 20000, "an eight-minute wait costs no real time");
  assert.match(r.stdout, /event 188 FactoryVersion delivered/);
  assert.match(r.stdout, /event 235 DefaultIPAddress delivered/);
  assert.match(r.stdout, /key 0xF557 \(0xF557\): (consumed|not consumed)/);
  assert.match(r.stdout, /file\[\/ciplus\/demo.bin\] = ab\\x01/);
  assert.match(r.stdout, /t = 480000 ms/);
  assert.match(r.stdout, /script line.fsim passed/);
});

test("a failing line stops the script with its file and line number", () => {
  const cases = [
    ["event FactoryVersion\nwait 10\n\nexpect NoSuchCmd\nwait 10\n", 4, /expect|notification/],
    ["wait 10\nevent NoSuchEvent\n", 2, /unknown event: NoSuchEvent/],
    ["key nosuchkey\n", 1, /unknown key/],
    ["set no-such-field 1\n", 1, /unknown field: no-such-field/],
    ["set key-manager maybe\n", 1, /not 0\/1/],
    ["get file[/nope]\n", 1, /no such file/],
    ["event 188 1 two\n", 1, /parameter 2 is not a number/],
    ["wait soon\n", 1, /usage: wait/],
  ];
  for (const [script, line, reason] of cases) {
    const r = run(["--script", "bad.fsim"], { files: { "bad.fsim": script } });
    assert.notStrictEqual(r.status, 0, script);
    assert.match(r.stderr, new RegExp("bad\\.fsim:" + line + ": "), script);
    assert.match(r.stderr, reason, script);
  }
});

test("expect sees what the page was sent, once, since the previous expect", { skip: !hasNotes() }, () => {
  const script = "event FactoryVersion\nexpect HideAllUIExcept Version\nexpect HideAllUIExcept\n";
  const r = run(["--script", "e.fsim"], { files: { "e.fsim": script } });
  assert.notStrictEqual(r.status, 0);
  assert.match(r.stderr, /e\.fsim:3: /, "the second expect has nothing new to see");
});

test("the console refuses a bad command, says why and carries on", () => {
  const input = "bogus\nset file[relative] x\nevent\nset file[/OAD/a.txt] kept\nget file[/OAD/a.txt]\nquit\n";
  const r = run(["--virtual-time"], { input });
  assert.strictEqual(r.status, 0, r.stderr);
  assert.match(r.stderr, /error: unknown command: bogus/);
  assert.match(r.stderr, /error: a TV path starts with \//);
  assert.match(r.stderr, /error: usage: event/);
  assert.match(r.stdout, /file\[\/OAD\/a.txt\] = kept/);
});

test("bad options and unreadable files end with a clear message and status 2", () => {
  const cases = [
    [["--bogus"], /unknown option: --bogus/],
    [["--port"], /--port needs a value/],
    [["--port", "70000"], /not a port number/],
    [["--control-port=x"], /not a port number/],
    [["--set", "missing.set"], /cannot read the set file missing.set/],
    [["--script", "missing.fsim"], /cannot read the script/],
    [["--set", "bad.set"], /bad.set:3: unknown field: model/],
  ];
  for (const [args, message] of cases) {
    const r = run(args, { files: { "bad.set": "# set\nkey-manager = 1\nmodel = x\n" } });
    assert.strictEqual(r.status, 2, args.join(" "));
    assert.match(r.stderr, message, args.join(" "));
  }
});

test("the trace is JSON Lines with the documented fields of each kind", () => {
  const script = "event FactoryVersion\nkey exit\nwait 2500\nevent 0xEB\n";
  const r = run(["--script", "t.fsim", "--trace", "trace.jsonl"], { files: { "t.fsim": script } });
  assert.strictEqual(r.status, 0, r.stderr);
  const lines = fs.readFileSync(path.join(r.work, "trace.jsonl"), "utf8").trim().split("\n");
  const fields = {
    notify: { channel: "number", cmd: "string" },
    call: { fn: "string", args: "array" },
    listener: { code: "number" },
    log: { mask: "number", text: "string" },
    console: { text: "string" },
  };
  const kinds = new Set();
  let last = 0;
  for (const line of lines) {
    const entry = JSON.parse(line);
    assert.strictEqual(typeof entry.t, "number", line);
    assert.ok(entry.t >= last, "the set's clock never runs back: " + line);
    last = entry.t;
    assert.ok(fields[entry.kind], "known kind: " + line);
    kinds.add(entry.kind);
    for (const [name, type] of Object.entries(fields[entry.kind])) {
      const actual = Array.isArray(entry[name]) ? "array" : typeof entry[name];
      assert.strictEqual(actual, type, name + " in " + line);
    }
    if (entry.kind === "notify") {
      assert.ok(["number", "string"].includes(typeof entry.data), line);
    }
  }
  assert.ok(kinds.has("call") && kinds.has("log"), [...kinds].join(","));
  const calls = lines.map((l) => JSON.parse(l)).filter((e) => e.kind === "call").map((e) => e.fn);
  assert.ok(calls.includes("KeyManager::setOnKeyEventListener"), "the host's start is traced");
  assert.ok(lines.some((l) => JSON.parse(l).t >= 2500), "later lines carry the later time");
});

test("nothing is written outside the set's root", () => {
  const script = [
    "set file[/ciplus/../../../escape.txt] x",
    "set file[/Customer/factory/a.txt] y",
    "event FactoryMModeStart",
    "event ExitFactoryMode",
    "wait 10000",
  ].join("\n");
  // A given root: only it and the files we named change.
  const given = run(["--script", "s.fsim", "--root", "root"], { files: { "s.fsim": script } });
  assert.strictEqual(given.status, 0, given.stderr);
  assert.deepStrictEqual(fs.readdirSync(given.work).sort(), ["root", "s.fsim", "tmp"]);
  assert.deepStrictEqual(fs.readdirSync(given.tmp), []);
  assert.ok(fs.existsSync(path.join(given.work, "root", "escape.txt")), "'..' stays in the root");
  assert.ok(fs.existsSync(path.join(given.work, "root", "test.html")), "the page is served from the root");
  // A temporary root is gone after the run.
  const temporary = run(["--script", "s.fsim"], { files: { "s.fsim": script } });
  assert.strictEqual(temporary.status, 0, temporary.stderr);
  assert.deepStrictEqual(fs.readdirSync(temporary.tmp), []);
  assert.deepStrictEqual(fs.readdirSync(temporary.work).sort(), ["s.fsim", "tmp"]);
});
