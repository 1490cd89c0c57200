// factory-sim as a line station uses it: scripts, refused commands and options, the
// trace contract, and a set that stays inside its root.
"use strict";
const { test } = require("node:test");
const assert = require("node:assert");
const { spawn, spawnSync } = require("node:child_process");
const net = require("node:net");
const fs = require("node:fs");
const os = require("node:os");
const path = require("node:path");

const { BINARY, freePort, runFactorySim, simCommand } = require("./sim-run");

function tempDir(name) {
  return fs.mkdtempSync(path.join(os.tmpdir(), name + "-"));
}

// Runs factory-sim to the end in a folder of its own, kept for the test to look into.
const run = (args, options = {}) =>
  runFactorySim(args, { keep: true, prefix: "factory-sim-run-", ...options });

// factory-sim left running on its console until stop(); resolves once its banner is out.
async function start(args, { port = null } = {}) {
  const work = tempDir("factory-sim-live");
  port = port || await freePort();
  const child = spawn(...simCommand(["--control-port", "0", "--port", String(port), ...args]),
                      { cwd: work, env: { ...process.env, TMPDIR: work } });
  const live = { child, port, work, stdout: "", stderr: "" };
  child.stdout.on("data", (d) => { live.stdout += d; });
  child.stderr.on("data", (d) => { live.stderr += d; });
  live.closed = new Promise((resolve) => child.on("close", resolve));
  await waitFor(() => /type 'help'/.test(live.stdout) || child.exitCode !== null);
  const control = live.stdout.match(/control endpoint at (http:\S+)/);
  live.controlUrl = control ? control[1] : null;
  live.stop = async () => { child.stdin.end("quit\n"); return live.closed; };
  return live;
}

async function waitFor(condition, ms = 10000) {
  const limit = Date.now() + ms;
  while (!condition()) {
    if (Date.now() > limit) throw new Error("timed out");
    await new Promise((r) => setTimeout(r, 20));
  }
}

function traceOf(r, name) {
  return fs.readFileSync(path.join(r.work, name), "utf8").trim().split("\n").map((l) => JSON.parse(l));
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

// ---- Exact virtual time --------------------------------------------------------------

const VOLUME = "set m-mode 1\nevent FactoryVolumeAdj\nwait 5000\n";

test("a notification is traced at the set's time and place where the library sent it, every run", async () => {
  let first = null;
  for (let i = 0; i < 20; i++) {
    const r = await run(["--script", "v.fsim", "--trace", "v.jsonl"], { files: { "v.fsim": VOLUME } });
    assert.strictEqual(r.status, 0, r.stderr);
    const trace = traceOf(r, "v.jsonl");
    const volume = trace.filter((e) => e.kind === "notify" && e.cmd === "volume");
    assert.deepStrictEqual(volume.map((e) => [e.t, e.data]), [[0, 1], [3000, 0]]);
    // Calls and notifications keep one order: the page's second volume comes after
    // the timer's KillTimer, and after nothing of the clock's later time.
    const killAt3000 = trace.findIndex((e) => e.kind === "call" && e.fn === "MEvtHandle::KillTimer" && e.t === 3000);
    assert.ok(killAt3000 >= 0 && killAt3000 < trace.indexOf(volume[1]), "KillTimer, then volume 0");
    // The event thread's work, minus the server thread's own lines (its handshake key
    // is random), is the same in every run.
    const steps = trace.filter((e) => e.kind === "notify" || e.kind === "call")
      .map((e) => JSON.stringify(e));
    if (first === null) first = steps; else assert.deepStrictEqual(steps, first, "run " + i);
    assert.match(r.stdout, /<- volume = 1\n[\s\S]*timer 66 OnTimer_FactoryVolumeAdj\n<- volume = 0\n/);
  }
});

test("expect walks one event's output in order; expect-none sees only what is left", async () => {
  const ok = [
    "set m-mode 1", "set factory-volume 35", "event FactoryVolumeAdj",
    "expect HideAllUIExcept volume", "expect set-volume 35", "expect set-volumeBar 35",
    "expect volume 1", "expect-none volume", "wait 3000", "expect volume 0", "",
  ].join("\n");
  const good = await run(["--script", "o.fsim"], { files: { "o.fsim": ok } });
  assert.strictEqual(good.status, 0, good.stderr);
  // Data is compared as sent, and a match consumes what came before it.
  const cases = [
    ["expect set-volume 36", /o\.fsim:4: expected set-volume = 36, sent since the previous match: HideAllUIExcept=volume, set-volume=35, set-volumeBar=35, volume=1/],
    ["expect volume 1\nexpect set-volume", /o\.fsim:5: expected set-volume, sent since the previous match: nothing/],
    ["expect-none set-volumeBar", /o\.fsim:4: expected no set-volumeBar, but set-volumeBar = 35 was sent/],
  ];
  for (const [lines, reason] of cases) {
    const script = "set m-mode 1\nset factory-volume 35\nevent FactoryVolumeAdj\n" + lines + "\n";
    const r = await run(["--script", "o.fsim"], { files: { "o.fsim": script } });
    assert.strictEqual(r.status, 1, lines);
    assert.match(r.stderr, reason, lines);
  }
});

test("in real time expect waits, boundedly, for its notification", async () => {
  const script = "set m-mode 1\nevent FactoryVolumeAdj\nexpect volume 0\nexpect NeverSent\n";
  const started = Date.now();
  const r = await run(["--real-time", "--expect-timeout", "4000", "--script", "w.fsim"],
                      { files: { "w.fsim": script } });
  const took = Date.now() - started;
  assert.strictEqual(r.status, 1, r.stderr);
  assert.match(r.stdout, /seen volume = 0/, "the timer's volume 0 came three seconds later");
  assert.match(r.stderr, /w\.fsim:4: expected NeverSent/);
  assert.ok(took >= 6500 && took < 20000, "3 s for the timer, then 4 s in vain: " + took);
});

test("quit drains the page: what the set sent before it is printed and traced", async () => {
  const r = await run(["--real-time", "--trace", "q.jsonl"],
                      { input: "set m-mode 1\nevent 203 0 0 40\nquit\n" });
  assert.strictEqual(r.status, 0, r.stderr);
  assert.match(r.stdout, /<- volume = 1\n/);
  assert.ok(traceOf(r, "q.jsonl").some((e) => e.kind === "notify" && e.cmd === "volume" && e.data === 1));
});

// ---- One set per port, honest failures -------------------------------------------------

test("a second set on a busy port exits 2 before running anything", async () => {
  const first = await start(["--real-time"]);
  try {
    const second = await run(["--script", "s.fsim"], { port: first.port, files: { "s.fsim": "event FactoryVersion\n" } });
    assert.strictEqual(second.status, 2);
    assert.match(second.stderr, new RegExp("factory UI port " + first.port + " on 127\\.0\\.0\\.1: Address already in use"));
    assert.doesNotMatch(second.stdout, /factory UI at|passed|<-/);
    const third = await run(["--control-port", first.controlUrl.match(/:(\d+)\//)[1]], {});
    assert.strictEqual(third.status, 2);
    assert.match(third.stderr, /control port \d+ on 127\.0\.0\.1: Address already in use/);
  } finally {
    assert.strictEqual(await first.stop(), 0);
  }
});

// The listening sockets of a port, from the kernel's tables, as hex addresses.
function listeners(port) {
  const hexPort = port.toString(16).toUpperCase().padStart(4, "0");
  const found = [];
  for (const table of ["/proc/net/tcp", "/proc/net/tcp6"]) {
    for (const line of fs.readFileSync(table, "utf8").split("\n").slice(1)) {
      const f = line.trim().split(/\s+/);
      if (f.length > 3 && f[3] === "0A" && f[1].endsWith(":" + hexPort)) found.push(f[1].split(":")[0]);
    }
  }
  return found;
}

test("the factory UI server listens on loopback only by default, as --listen says", async () => {
  const live = await start(["--real-time"]);
  try {
    // 127.0.0.1, or its IPv4-mapped IPv6 form.
    assert.deepStrictEqual(listeners(live.port).map((a) => a.slice(-8)), ["0100007F"]);
    assert.ok(listeners(live.port).every((a) => a === "0100007F" || a === "0000000000000000FFFF00000100007F"));
  } finally {
    await live.stop();
  }
  for (const [address, reason] of [["localhost", /not an IP address/], ["10.255.255.254", /no interface has the address/]]) {
    const r = await run(["--listen", address]);
    assert.strictEqual(r.status, 2, address);
    assert.match(r.stderr, reason, address);
  }
});

test("paths that cannot be what they are named for are refused with status 2", async () => {
  const cases = [
    [["--script", "folder"], /--script folder: not a regular file/],
    [["--set", "folder"], /--set folder: not a regular file/],
    [["--trace", "folder"], /--trace folder: a folder/],
    [["--script", "s.fsim", "--trace", "./s.fsim"], /--trace \.\/s\.fsim: the script itself/],
    [["--root", "/"], /--root \/: a folder with files in it/],
    [["--root", "populated"], /--root populated: a folder with files in it/],
    [["--root", "s.fsim"], /not a folder/],
  ];
  for (const [args, reason] of cases) {
    const r = await run(args, {
      files: { "s.fsim": "wait 1\n" },
      prepare: (work) => { fs.mkdirSync(path.join(work, "folder")); fs.mkdirSync(path.join(work, "populated")); fs.writeFileSync(path.join(work, "populated", "notes.txt"), "mine"); },
    });
    assert.strictEqual(r.status, 2, args.join(" "));
    assert.match(r.stderr, reason, args.join(" "));
    assert.strictEqual(fs.readFileSync(path.join(r.work, "s.fsim"), "utf8"), "wait 1\n");
  }
  // An empty folder is taken and marked; the marked folder is taken again.
  const r = await run(["--root", "root", "--script", "s.fsim"], { files: { "s.fsim": "wait 1\n" }, prepare: (w) => fs.mkdirSync(path.join(w, "root")) });
  assert.strictEqual(r.status, 0, r.stderr);
  assert.ok(fs.existsSync(path.join(r.work, "root", ".factory-sim-root")));
  const again = spawnSync(...simCommand(["--root", path.join(r.work, "root"), "--port", String(await freePort()),
                                            "--control-port", "0", "--script", path.join(r.work, "s.fsim")]));
  assert.strictEqual(again.status, 0, String(again.stderr));
});

test("a set file with any error, or a field given twice, changes nothing at all", async () => {
  for (const [set, reason] of [
    ["file[/OAD/first.txt] = x\nmodel-id = 7\nserial = 123456789012345\n", /bad\.set:3: .*at most 14 characters/],
    ["file[/OAD/first.txt] = x\nmodel-id = 7\nmodel-id = 8\n", /bad\.set:3: model-id is already set on line 2/],
  ]) {
    const r = await run(["--set", "bad.set", "--root", "root"], { files: { "bad.set": set } });
    assert.strictEqual(r.status, 2);
    assert.match(r.stderr, reason);
    assert.ok(!fs.existsSync(path.join(r.work, "root", "OAD", "first.txt")), "the first line was undone");
  }
});

test("a write that fails fails the script", async () => {
  for (const [line, reason] of [
    ["set file[/OAD] x", /s\.fsim:1: cannot write \/OAD: Is a directory/],
    ["set file[/ciplus/ci_plus.bin/x] x", /s\.fsim:1: cannot write \/ciplus\/ci_plus\.bin\/x: Not a directory/],
    ["set file[/OAD/fifo] x", /s\.fsim:1: cannot write \/OAD\/fifo: No such device or address/],
  ]) {
    const r = await run(["--script", "s.fsim", "--root", "root"], {
      files: { "s.fsim": line + "\n" },
      prepare: (w) => {
        fs.mkdirSync(path.join(w, "root", "OAD"), { recursive: true });
        fs.writeFileSync(path.join(w, "root", ".factory-sim-root"), "");
        spawnSync("mkfifo", [path.join(w, "root", "OAD", "fifo")]);
      },
    });
    assert.strictEqual(r.status, 1, line);
    assert.match(r.stderr, reason, line);
  }
});

// ---- The root is the set's file system ---------------------------------------------------

test("links resolve inside the root and a FIFO key file reads as missing without blocking", async () => {
  const outside = tempDir("factory-sim-outside");
  fs.writeFileSync(path.join(outside, "record.txt"), "untouched");
  const r = await run(["--script", "s.fsim", "--root", "root"], {
    files: { "s.fsim": "at version\nevent FactoryVersion\nget file[/ciplus/key.bin]\n" },
    prepare: (w) => {
      const root = path.join(w, "root");
      fs.mkdirSync(path.join(root, "OAD"), { recursive: true });
      fs.mkdirSync(path.join(root, "ciplus"), { recursive: true });
      fs.mkdirSync(path.join(root, "elsewhere"));
      fs.writeFileSync(path.join(root, ".factory-sim-root"), "");
      fs.symlinkSync(path.join(outside, "record.txt"), path.join(root, "OAD", "ATCmdVersionCheck.txt"));
      fs.writeFileSync(path.join(root, "elsewhere", "key.bin"), "inside");
      fs.symlinkSync("/elsewhere/key.bin", path.join(root, "ciplus", "key.bin"));
      spawnSync("mkfifo", [path.join(root, "ciplus", "widevine.bin")]);
    },
  });
  assert.strictEqual(r.status, 0, r.stderr);
  assert.strictEqual(fs.readFileSync(path.join(outside, "record.txt"), "utf8"), "untouched");
  assert.match(r.stdout, /file\[\/ciplus\/key\.bin\] = inside/, "an absolute link is a TV path");
  assert.ok(!fs.existsSync(path.join(r.work, "root", ".outside-root")));
});

// ---- The control endpoint ------------------------------------------------------------------

test("only the factory UI's page, with the endpoint's header, drives the set", async () => {
  const live = await start(["--real-time"]);
  const own = "http://127.0.0.1:" + live.port;
  const post = (headers, body = "set model-id 99") =>
    fetch(live.controlUrl, { method: "POST", body, headers });
  try {
    for (const headers of [{}, { Origin: "http://evil.example" },
                           { Origin: "http://evil.example", "X-Factory-Control": "1" },
                           { Origin: "null", "X-Factory-Control": "1" },
                           { "Content-Type": "text/plain" }]) {
      const answer = await post(headers);
      assert.strictEqual(answer.status, 403, JSON.stringify(headers));
      assert.strictEqual(answer.headers.get("access-control-allow-origin"), null);
    }
    const preflight = (origin) => fetch(live.controlUrl, { method: "OPTIONS", headers: {
      Origin: origin, "Access-Control-Request-Method": "POST", "Access-Control-Request-Headers": "x-factory-control" } });
    assert.strictEqual((await preflight("http://evil.example")).headers.get("access-control-allow-origin"), null);
    assert.strictEqual((await preflight(own)).headers.get("access-control-allow-origin"), own);
    const mine = await post({ Origin: own, "X-Factory-Control": "1" }, "get model-id");
    assert.strictEqual(mine.status, 200);
    assert.strictEqual(await mine.text(), "model-id = 49\n", "nothing refused changed the set");
    assert.strictEqual(mine.headers.get("access-control-allow-origin"), own);
    const wait = await post({ "X-Factory-Control": "1" }, "wait 60000");
    assert.strictEqual(wait.status, 400, "a wait sent there is bounded");
  } finally {
    await live.stop();
  }
});

test("a slow client holds neither the endpoint nor the set", async () => {
  const live = await start(["--real-time"]);
  try {
    const { port } = new URL(live.controlUrl);
    const slow = net.connect(Number(port), "127.0.0.1");
    await new Promise((r) => slow.on("connect", r));
    slow.resume();
    slow.write("POST / HTTP/1.1\r\nContent-Length: 100\r\n");  // and never more
    const started = Date.now();
    const answer = await fetch(live.controlUrl, { method: "POST", body: "get serial", headers: { "X-Factory-Control": "1" } });
    assert.strictEqual(await answer.text(), "serial = VQ2611A0004812\n");
    assert.ok(Date.now() - started < 2500, "answered beside the slow client, before its 3 s deadline");
    const closed = await new Promise((resolve) => { slow.on("close", () => resolve(true)); setTimeout(() => resolve(false), 6000); });
    assert.ok(closed, "the slow request was ended by its deadline");
  } finally {
    await live.stop();
  }
});

test("SIGTERM and SIGINT shut the set down cleanly", async () => {
  for (const signal of ["SIGTERM", "SIGINT"]) {
    const live = await start(["--real-time", "--trace", "t.jsonl"]);
    const root = live.stdout.match(/set root (\S+)/)[1];
    live.child.stdin.write("set m-mode 1\nevent FactoryVolumeAdj\n");
    await waitFor(() => /volume = 1/.test(live.stdout));
    live.child.kill(signal);
    assert.strictEqual(await live.closed, 0, signal);
    assert.match(live.stdout, /stopped by a signal/);
    assert.ok(!fs.existsSync(root), "the temporary root is removed");
    const trace = fs.readFileSync(path.join(live.work, "t.jsonl"), "utf8");
    assert.ok(trace.includes('"cmd":"volume","data":1'), signal);
    assert.ok(trace.includes("MEvtHandle::KillTimer"), "the library was destroyed and traced to the end");
  }
});

test("events lists every handled event; help event says what the parameters mean", async () => {
  const input = "events\nhelp event FactoryVolumeAdj\nhelp event 0x16B\nhelp event FactoryMModeStart\nhelp event 999\nquit\n";
  const r = await run(["--virtual-time"], { input });
  assert.strictEqual(r.status, 0, r.stderr);
  const events = r.stdout.split("\n").filter((l) => /^\d+ \w+$/.test(l));
  assert.ok(events.length > 60, events.length);
  assert.ok(events.includes("203 FactoryVolumeAdj") && events.includes("191 FactoryMModeStart"));
  for (const text of [
    "event 203 FactoryVolumeAdj, handler OnEvent_FactoryVolumeAdj\n      p3: the volume stored outside M-mode",
    "event 363 TeletextOnOffForUARTCmd, handler OnEvent_TeletextOnOffForUARTCmd\n      p2: non-zero switches teletext on, 0 off",
    "event 191 FactoryMModeStart, handler OnEvent_FactoryMModeStart\n      reads no parameter",
    "event 999 has no handler",
  ]) assert.ok(r.stdout.includes(text), text);
});

test("events whose p2 is a record get one built by the console; numbers there are refused", async () => {
  const input = "event 43 0 80\nevent 45 1\nevent 45 tv=2 bogus=1\nevent 43 percent=256\n" +
                "help event 45\nevent 43\nevent 45 status=3\nevent 45 radio=0x10\nquit\n";
  const r = await run(["--virtual-time"], { input });
  assert.strictEqual(r.status, 0, r.stderr);
  for (const error of [
    "error: not a field of the record: 0 (event 43 carries a record in p2; help event 43)",
    "error: not a field of the record: 1 (event 45",
    "error: not a field of the record: bogus=1 (event 45",
    "error: percent is 0-255: percent=256 (event 43",
  ]) assert.ok(r.stderr.includes(error), error);
  assert.match(r.stdout, /event 45 ScanRecepient, handler OnScanRecepient\n {6}p2: a scan-status record/);
  assert.match(r.stdout, /event 43 AtvScanInfo delivered/);
  // Refused lines post nothing: only the last two records reach the handler.
  assert.deepStrictEqual(r.stdout.match(/enScanStatus = 0x\w+/g),
                         ["enScanStatus = 0x3", "enScanStatus = 0xA"]);
  assert.strictEqual(r.stdout.split("[ScanRecepient] Scan stop").length, 2);
});
