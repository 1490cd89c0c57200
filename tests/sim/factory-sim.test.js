// factory-sim as a line station uses it: scripts, refused commands and options, the
// trace contract, and a set that stays inside its root.
"use strict";
const { test } = require("node:test");
const assert = require("node:assert");
const { spawn } = require("node:child_process");
const net = require("node:net");
const fs = require("node:fs");
const os = require("node:os");
const path = require("node:path");

const BINARY = process.env.FACTORY_SIM;

function tempDir(name) {
  return fs.mkdtempSync(path.join(os.tmpdir(), name + "-"));
}

function freePort() {
  return new Promise((resolve) => {
    const server = net.createServer().listen(0, "127.0.0.1", () => {
      const { port } = server.address();
      server.close(() => resolve(port));
    });
  });
}

// Runs factory-sim to the end in a folder of its own (TMPDIR points into it too),
// its factory UI server on a free port.
async function run(args, { input = "", files = {} } = {}) {
  const work = tempDir("factory-sim-run");
  const tmp = path.join(work, "tmp");
  fs.mkdirSync(tmp);
  for (const [name, text] of Object.entries(files)) fs.writeFileSync(path.join(work, name), text);
  const port = await freePort();
  const child = spawn(BINARY, ["--control-port", "0", "--port", String(port), ...args], {
    cwd: work, env: { ...process.env, TMPDIR: tmp },
  });
  let stdout = "";
  let stderr = "";
  child.stdout.on("data", (d) => { stdout += d; });
  child.stderr.on("data", (d) => { stderr += d; });
  child.stdin.end(input);
  const timer = setTimeout(() => child.kill("SIGKILL"), 60000);
  const status = await new Promise((resolve) => child.on("close", resolve));
  clearTimeout(timer);
  return { status, stdout, stderr, work, tmp };
}

test("a script of events, keys, AT requests, set/get and waits runs to the end in virtual time", async () => {
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
  const r = await run(["--script", "line.fsim"], { files: { "line.fsim": script } });
  assert.strictEqual(r.status, 0, r.stderr);
  assert.ok(Date.now() - started < 20000, "an eight-minute wait costs no real time");
  assert.match(r.stdout, /event 188 FactoryVersion delivered/);
  assert.match(r.stdout, /event 235 DefaultIPAddress delivered/);
  assert.match(r.stdout, /key 0xF557 \(0xF557\): (consumed|not consumed)/);
  assert.match(r.stdout, /file\[\/ciplus\/demo.bin\] = ab\\x01/);
  assert.match(r.stdout, /t = 480000 ms/);
  assert.match(r.stdout, /script line.fsim passed/);
});

test("a failing line stops the script with its file and line number", async () => {
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
    const r = await run(["--script", "bad.fsim"], { files: { "bad.fsim": script } });
    assert.notStrictEqual(r.status, 0, script);
    assert.match(r.stderr, new RegExp("bad\\.fsim:" + line + ": "), script);
    assert.match(r.stderr, reason, script);
  }
});

test("expect consumes notifications in order: each matches after the previous match", async () => {
  const script = [
    "set m-mode 1",
    "event FactoryMModeStart",
    "key panel-up",
    "key panel-function",
    "expect M-Mode-Key \"FUNCTION KEY\"",
    "expect-none M-Mode-Key \"UP KEY\"",
    "key panel-down",
    "expect M-Mode-Key",
    "expect M-Mode-Key",
    "",
  ].join("\n");
  const r = await run(["--script", "e.fsim", "--trace", "e.jsonl"], { files: { "e.fsim": script } });
  assert.strictEqual(r.status, 1);
  assert.match(r.stdout, /seen M-Mode-Key = FUNCTION KEY\nno M-Mode-Key = UP KEY\n/,
               "what came before a match is consumed with it");
  assert.match(r.stdout, /seen M-Mode-Key = DOWN KEY/);
  assert.match(r.stderr, /e\.fsim:9: expected M-Mode-Key, sent since the previous match: nothing/,
               "the last expect has nothing new to see");
  const notes = fs.readFileSync(path.join(r.work, "e.jsonl"), "utf8").trim().split("\n")
    .map((l) => JSON.parse(l)).filter((e) => e.kind === "notify").map((e) => e.data);
  assert.deepStrictEqual(notes, ["UP KEY", "FUNCTION KEY", "DOWN KEY"]);
});

test("a --set file describes the set that the console then reads back", async () => {
  const set = [
    "# line 3",
    "model-id = 0x2A",
    "  serial =  VQ2611A0009999  ",
    "wlan-mac = 70:5A:B6:00:00:01",
    "factory[0x1E9E] = 0x01",
    "sw-version = VQ27 00 1200",
    "file[/ciplus/empty.bin] =",
  ].join("\n");
  const script = ["model-id", "serial", "wlan-mac", "factory[7838]", "sw-version", "file[/ciplus/empty.bin]"]
    .map((f) => "get " + f).join("\n");
  const r = await run(["--set", "line3.set", "--script", "s.fsim"],
                      { files: { "line3.set": set, "s.fsim": script } });
  assert.strictEqual(r.status, 0, r.stderr);
  for (const line of ["model-id = 42", "serial = VQ2611A0009999", "wlan-mac = 70:5a:b6:00:00:01",
                      "factory[7838] = 1", "sw-version = VQ27 00 1200", "file[/ciplus/empty.bin] = \n"]) {
    assert.ok(r.stdout.includes(line), line);
  }
});

test("bad field values are refused with the reason and leave the field as it was", async () => {
  const cases = [
    ["mac", "00:11:22:33:44", /not a MAC address/],
    ["mac", "00:11:22:33:44:55:66", /not a MAC address/],
    ["mac", "00:11:22:33:44:zz", /not a MAC address/],
    ["serial", "VQ2611A00099991", /at most 14 characters/],
    ["factory[65536]", "1", /not an item number/],
    ["factory[3567]", "256", /not a byte/],
    ["input-source", "-1", /not a number/],
    ["m-mode", "2", /not 0\/1/],
    ["model-id[1]", "1", /takes no \[\.\.\.\]/],
    ["factory", "1", /needs \[item\]/],
  ];
  const input = cases.map(([field, value]) => `set ${field} ${value}\n`).join("") +
                "get mac\nget serial\nget factory[3567]\nget m-mode\nquit\n";
  const r = await run(["--virtual-time"], { input });
  assert.strictEqual(r.status, 0, r.stderr);
  const errors = r.stderr.split("\n").filter((l) => l.startsWith("error: "));
  assert.strictEqual(errors.length, cases.length, errors.join("\n"));
  cases.forEach(([field, value, reason], i) => assert.match(errors[i], reason, field + " " + value));
  // The demo set's values are untouched.
  for (const line of ["mac = 00:1e:b8:4c:2a:f1", "serial = VQ2611A0004812", "m-mode = 0"]) {
    assert.ok(r.stdout.includes(line), line);
  }
});

test("the console refuses a bad command, says why and carries on", async () => {
  const input = "bogus\nset file[relative] x\nevent\nset file[/OAD/a.txt] kept\nget file[/OAD/a.txt]\nquit\n";
  const r = await run(["--virtual-time"], { input });
  assert.strictEqual(r.status, 0, r.stderr);
  assert.match(r.stderr, /error: unknown command: bogus/);
  assert.match(r.stderr, /error: a TV path starts with \//);
  assert.match(r.stderr, /error: usage: event/);
  assert.match(r.stdout, /file\[\/OAD\/a.txt\] = kept/);
});

test("bad options and unreadable files end with a clear message and status 2", async () => {
  const cases = [
    [["--bogus"], /unknown option: --bogus/],
    [["--port"], /--port needs a value/],
    [["--port", "70000"], /not a port number/],
    [["--control-port=x"], /not a port number/],
    [["--set", "missing.set"], /--set missing.set: no such file/],
    [["--script", "missing.fsim"], /--script missing.fsim: no such file/],
    [["--set", "bad.set"], /bad.set:3: unknown field: model/],
  ];
  for (const [args, message] of cases) {
    const r = await run(args, { files: { "bad.set": "# set\nkey-manager = 1\nmodel = x\n" } });
    assert.strictEqual(r.status, 2, args.join(" "));
    assert.match(r.stderr, message, args.join(" "));
  }
});

test("the trace is JSON Lines with the documented fields of each kind", async () => {
  const script = "set m-mode 1\nevent FactoryMModeStart\nkey panel-up\nwait 2500\nevent 0xEB\n";
  const r = await run(["--script", "t.fsim", "--trace", "trace.jsonl"], { files: { "t.fsim": script } });
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
  for (const kind of Object.keys(fields)) assert.ok(kinds.has(kind), kind + " in " + [...kinds]);
  const calls = lines.map((l) => JSON.parse(l)).filter((e) => e.kind === "call").map((e) => e.fn);
  assert.ok(calls.includes("KeyManager::setOnKeyEventListener"), "the host's start is traced");
  assert.ok(lines.some((l) => JSON.parse(l).t >= 2500), "later lines carry the later time");
});

test("nothing is written outside the set's root", async () => {
  const script = [
    "set file[/ciplus/../../../escape.txt] x",
    "set file[/Customer/factory/a.txt] y",
    "event FactoryMModeStart",
    "event ExitFactoryMode",
    "wait 10000",
  ].join("\n");
  // A given root: only it and the files we named change.
  const given = await run(["--script", "s.fsim", "--root", "root"], { files: { "s.fsim": script } });
  assert.strictEqual(given.status, 0, given.stderr);
  assert.deepStrictEqual(fs.readdirSync(given.work).sort(), ["root", "s.fsim", "tmp"]);
  assert.deepStrictEqual(fs.readdirSync(given.tmp), []);
  assert.ok(fs.existsSync(path.join(given.work, "root", "escape.txt")), "'..' stays in the root");
  assert.ok(fs.existsSync(path.join(given.work, "root", "test.html")), "the page is served from the root");
  // A temporary root is gone after the run.
  const temporary = await run(["--script", "s.fsim"], { files: { "s.fsim": script } });
  assert.strictEqual(temporary.status, 0, temporary.stderr);
  assert.deepStrictEqual(fs.readdirSync(temporary.tmp), []);
  assert.deepStrictEqual(fs.readdirSync(temporary.work).sort(), ["s.fsim", "tmp"]);
});
