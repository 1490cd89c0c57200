// What factory-sim's trace and console say about a run: every tick of a long virtual
// run, none of factory-sim's own settling, and things in the order the library made them.
"use strict";
const { test } = require("node:test");
const assert = require("node:assert");
const fs = require("node:fs");
const path = require("node:path");
const { EXAMPLES, runFactorySim } = require("./sim-run");

async function traced(script, { args = [], files = {} } = {}) {
  const r = await runFactorySim(["--script", "s.fsim", "--trace", "t.jsonl", ...args], {
    files: { "s.fsim": script, ...files }, keep: true, prefix: "trace-",
  });
  const text = fs.readFileSync(path.join(r.work, "t.jsonl"), "utf8");
  fs.rmSync(r.work, { recursive: true, force: true });
  r.trace = text.split("\n").filter(Boolean).map((l) => JSON.parse(l));
  return r;
}

test("eight hours of burn-in keep every tick in the trace, and none of the settling", async () => {
  const r = await traced(fs.readFileSync(path.join(EXAMPLES, "burn-in.fsim"), "utf8"));
  assert.strictEqual(r.status, 0, r.stderr);
  // The rasters themselves are the golden trace's to check.
  const logs = r.trace.filter((e) => e.kind === "log").map((e) => e.text);
  assert.deepStrictEqual(logs.filter((t) => t.includes('"settle"')), []);
  // The page's own "connect", answering the greeting, is the set's behaviour and stays.
  assert.strictEqual(logs.filter((t) => t.endsWith('callback receive: {"cmd":"connect"}, rx len: 17')).length, 1);
  assert.strictEqual(logs.filter((t) => t.endsWith("] cmd: connect")).length, 1);
  assert.ok(r.trace.length < 30000, `${r.trace.length} lines`);
  // The console collapses the identical ticks of the long wait, and only those.
  assert.match(r.stdout, /\npanel = red\ntimer 16 OnTimer_OnAgingMode2\nt = 1000 ms\npanel = green\n/);
  assert.match(r.stdout, /\ntimer 16 OnTimer_OnAgingMode2 × 28799\nt = 28800000 ms\n/);
});

test("a real-time run prints every tick on its own line", async () => {
  const r = await runFactorySim(["--real-time", "--script", "s.fsim"], {
    files: { "s.fsim": "event OnAgingMode2\nwait 2300\n" }, prefix: "trace-",
  });
  assert.strictEqual(r.status, 0, r.stderr);
  assert.strictEqual(r.stdout.match(/^timer 16 OnTimer_OnAgingMode2$/gm).length, 2);
  assert.doesNotMatch(r.stdout, /×/);
});

// The host listener is called inside the library's work: what the library sent or
// printed before the call is traced before its code.
test("a listener code is traced after the notifications and console lines made before it", async () => {
  const getHostUi = { kind: "console", text: "~~ Get ZYT UI [FactoryManager::InfoZYTAppMgrForVersion]" };
  const cases = [
    ["event StarIRBlasterTest\n", 73732,
     [{ kind: "console", text: "~~ 2 [FactoryManager::OnEvent_StarIRBlasterTest] g_pFactoryListener is NOT NULL " }]],
    ["event 24 0 61\n", 73730,
     [{ kind: "notify", channel: 0, cmd: "OverCurrent-USB-Show", data: 0 }, getHostUi]],
  ];
  for (const [script, code, before] of cases) {
    const r = await traced(script);
    assert.strictEqual(r.status, 0, r.stderr);
    const at = r.trace.findIndex((e) => e.kind === "listener" && e.code === code);
    assert.ok(at > 0, script);
    const previous = r.trace.slice(0, at).filter((e) => e.kind === "notify" || e.kind === "console")
      .slice(-before.length).map(({ t, ...e }) => e);
    assert.deepStrictEqual(previous, before, script);
  }
});

test("texts with quotes, backslashes, slashes and control characters come back whole from the trace", async () => {
  // Short enough for the set's version buffer.
  const text = '"q" \\p\\ </x>\t\u0001\u001f é';
  const r = await traced(`set sw-version ${text}\nevent FactoryVersion\n`);
  assert.strictEqual(r.status, 0, r.stderr);
  const sent = r.trace.filter((e) => e.kind === "notify" && e.cmd === "Version-ZYTAppVersion");
  assert.deepStrictEqual(sent.map(({ t, ...e }) => e),
                         [{ kind: "notify", channel: 0, cmd: "Version-ZYTAppVersion", data: text }]);
  // The library's own log of the frame holds the text JSON-escaped once more.
  const frame = JSON.stringify({ cmd: "Version-ZYTAppVersion", data: text });
  const logged = r.trace.filter((e) => e.kind === "log" && e.text.startsWith("broadcast: ") &&
                                       e.text.includes("Version-ZYTAppVersion"));
  assert.strictEqual(logged.length, 1);
  assert.deepStrictEqual(JSON.parse(logged[0].text.replace(/^broadcast: (.*), tx len: \d+$/, "$1")),
                         JSON.parse(frame));
  // Every line is one JSON object whose numbers are numbers.
  const call = r.trace.find((e) => e.kind === "call" && e.fn === "WebAppMgr_LoadPage");
  assert.deepStrictEqual(call.args, ["file:///applications/factory/factory-ui.html", 0]);
});
