// factory-sim as a line station's runner: the run's record against its schema, the
// JUnit report, regression against a golden trace, free ports for stations side by
// side, and the control endpoint's refusal of bodies it cannot read.
"use strict";
const { test } = require("node:test");
const assert = require("node:assert");
const { spawn } = require("node:child_process");
const net = require("node:net");
const fs = require("node:fs");
const os = require("node:os");
const path = require("node:path");
const { EXAMPLES, runFactorySim, simCommand } = require("./sim-run");

const SCHEMA = JSON.parse(fs.readFileSync(
  path.join(__dirname, "..", "..", "tools", "factory-sim", "record.schema.json"), "utf8"));

// The subset of JSON Schema the record's schema uses; returns the first violation.
function validate(value, schema, where = "$") {
  if (schema.$ref) {
    const name = schema.$ref.replace("#/$defs/", "");
    return validate(value, SCHEMA.$defs[name], where);
  }
  const typeOf = (v) => (v === null ? "null" : Array.isArray(v) ? "array"
    : Number.isInteger(v) ? "integer" : typeof v);
  if ("const" in schema && value !== schema.const) return `${where}: not ${schema.const}`;
  if (schema.enum && !schema.enum.includes(value)) return `${where}: ${value} not in ${schema.enum}`;
  if (schema.type) {
    const types = [].concat(schema.type);
    const t = typeOf(value);
    if (!types.includes(t) && !(t === "integer" && types.includes("number"))) {
      return `${where}: ${t}, not ${types}`;
    }
  }
  if (typeof value === "string") {
    if (schema.minLength && value.length < schema.minLength) return `${where}: too short`;
    if (schema.pattern && !new RegExp(schema.pattern).test(value)) return `${where}: ${value} !~ ${schema.pattern}`;
  }
  if (typeof value === "number" && "minimum" in schema && value < schema.minimum) return `${where}: < minimum`;
  if (Array.isArray(value) && schema.items) {
    for (let i = 0; i < value.length; ++i) {
      const error = validate(value[i], schema.items, `${where}[${i}]`);
      if (error) return error;
    }
  }
  if (typeOf(value) === "object") {
    for (const key of schema.required || []) if (!(key in value)) return `${where}: no ${key}`;
    for (const [key, v] of Object.entries(value)) {
      if (schema.properties && key in schema.properties) {
        const error = validate(v, schema.properties[key], `${where}.${key}`);
        if (error) return error;
      } else if (schema.additionalProperties === false) {
        return `${where}: unexpected ${key}`;
      }
    }
  }
  return null;
}

// A small XML reader: elements with attributes and text, enough to read JUnit as a CI does.
function parseXml(text) {
  const body = text.replace(/^<\?xml[^>]*\?>\s*/, "");
  const root = { children: [] };
  const stack = [root];
  const decode = (s) => s.replace(/&lt;/g, "<").replace(/&gt;/g, ">").replace(/&quot;/g, '"')
    .replace(/&apos;/g, "'").replace(/&amp;/g, "&");
  const re = /<(\/?)([\w-]+)((?:\s+[\w-]+="[^"]*")*)\s*(\/?)>|([^<]+)/g;
  let m;
  let consumed = 0;
  while ((m = re.exec(body)) !== null) {
    assert.strictEqual(m.index, consumed, "unreadable XML at " + body.slice(consumed, consumed + 40));
    consumed = re.lastIndex;
    if (m[5] !== undefined) {
      stack[stack.length - 1].text = (stack[stack.length - 1].text || "") + decode(m[5]);
      continue;
    }
    if (m[1]) {
      const open = stack.pop();
      assert.strictEqual(open.name, m[2], "mismatched </" + m[2] + ">");
      continue;
    }
    const attrs = {};
    for (const a of m[3].matchAll(/([\w-]+)="([^"]*)"/g)) attrs[a[1]] = decode(a[2]);
    const element = { name: m[2], attrs, children: [] };
    stack[stack.length - 1].children.push(element);
    if (!m[4]) stack.push(element);
  }
  assert.strictEqual(consumed, body.length, "trailing text");
  assert.strictEqual(stack.length, 1, "unclosed element " + stack[stack.length - 1].name);
  assert.strictEqual(root.children.filter((c) => c.name).length, 1, "one root element");
  return root.children[0];
}

const readJson = (r, name) => JSON.parse(fs.readFileSync(path.join(r.work, name), "utf8"));

const STATION_SCRIPT = [
  "set serial VQ26XYZ0001",          // 1
  "phase speaker",                   // 2
  "event SelectSpeakerTypeToSNC",    // 3
  'expect Set-Speaker-SNC "Set SKP to CMSNC : Writing"',
  "wait 2000",                       // 5
  "phase store",                     // 6
  'expect Set-Speaker-SNC "Set SPK to CMSNC : Done"',
  "phase never reached",             // 8
  "wait 10",                         // 9
].join("\n") + "\n";

test("every example writes a record that its schema accepts, with the set's identity", async () => {
  const scripts = fs.readdirSync(EXAMPLES).filter((f) => f.endsWith(".fsim")).sort();
  assert.ok(scripts.length >= 7, scripts.join(" "));
  for (const script of scripts) {
    const r = await runFactorySim(["--script", path.join(EXAMPLES, script), "--record", "rec.json",
                                   "--station", "line-3", "--junit", "j.xml"], { keep: true });
    try {
      assert.strictEqual(r.status, 0, script + "\n" + r.stderr);
      const record = readJson(r, "rec.json");
      assert.strictEqual(validate(record, SCHEMA), null, script);
      assert.strictEqual(record.outcome, "PASS", script);
      assert.strictEqual(record.station, "line-3");
      assert.match(record.set.mac, /^([0-9a-f]{2}:){5}[0-9a-f]{2}$/, script);
      assert.ok(record.set.model.length > 0 && record.set.serial.length > 0, script);
      assert.match(record.start, /^\d{4}-/);
      const suite = parseXml(fs.readFileSync(path.join(r.work, "j.xml"), "utf8")).children[0];
      const cases = suite.children.map((c) => c.attrs.name);
      assert.deepStrictEqual(cases, record.phases.length ? ["(before the first phase)", ...record.phases.map((p) => p.name)]
        : [script], script);
      assert.deepStrictEqual([suite.attrs.failures, suite.attrs.errors], ["0", "0"], script);
    } finally {
      fs.rmSync(r.work, { recursive: true, force: true });
    }
  }
});

test("a failing expect: the record names the step, phases, attachments; JUnit reports it", async () => {
  const r = await runFactorySim(["--script", "s.fsim", "--record", "rec.json", "--junit", "j.xml"],
                                { files: { "s.fsim": STATION_SCRIPT }, keep: true });
  try {
    assert.strictEqual(r.status, 1, r.stderr);
    const record = readJson(r, "rec.json");
    assert.strictEqual(validate(record, SCHEMA), null);
    assert.strictEqual(record.outcome, "FAIL");
    assert.strictEqual(record.error, null);
    assert.strictEqual(record.set.serial, "VQ26XYZ0001");  // read after the run, as written
    assert.strictEqual(record.virtualMs, 2000);
    assert.deepStrictEqual(record.phases, [
      { name: "speaker", line: 2, outcome: "PASS", startMs: 0, durationMs: 2000 },
      { name: "store", line: 6, outcome: "FAIL", startMs: 2000, durationMs: 0 },
      { name: "never reached", line: 8, outcome: "SKIPPED", startMs: 0, durationMs: 0 },
    ]);
    assert.deepStrictEqual(record.steps.map((s) => [s.line, s.phase, s.outcome, s.startMs, s.durationMs]),
                           [[1, null, "PASS", 0, 0], [3, "speaker", "PASS", 0, 0], [4, "speaker", "PASS", 0, 0],
                            [5, "speaker", "PASS", 0, 2000], [7, "store", "FAIL", 2000, 0]]);
    // Each notification belongs to the step during which the page received it.
    const notes = (s) => s.notifications.map((n) => [n.t, n.kind, n.cmd, n.data]);
    assert.deepStrictEqual(notes(record.steps[1]), [[0, "notify", "HideAllUIExcept", "SpeakerSNC"],
      [0, "notify", "Set-Speaker-SNC", "Set SKP to CMSNC : Writing"]]);
    assert.deepStrictEqual(notes(record.steps[3]), [[2000, "notify", "Set-Speaker-SNC", "Set SPK to CMSNC : Finished"]]);
    assert.deepStrictEqual(record.steps[3].calls.map((c) => [c.fn, c.args]),
                           [["MEvtHandle::KillTimer", [20]], ["MEvtHandle::SetTimer", [2000, 20, 1]]]);
    const failed = record.steps[4];
    assert.strictEqual(failed.expected, "Set-Speaker-SNC = Set SPK to CMSNC : Done");
    assert.strictEqual(failed.received, "Set-Speaker-SNC=Set SPK to CMSNC : Finished");
    assert.deepStrictEqual(failed.attachments.map((a) => [a.name, path.basename(a.path), a.type]),
                           [["last-notifications", "rec.line7.notifications.jsonl", "application/jsonl"]]);
    const last = fs.readFileSync(failed.attachments[0].path, "utf8").trim().split("\n").map((l) => JSON.parse(l));
    assert.deepStrictEqual(last.at(-1), { t: 2000, kind: "notify", channel: 0, cmd: "Set-Speaker-SNC",
                                          data: "Set SPK to CMSNC : Finished" });

    const xml = parseXml(fs.readFileSync(path.join(r.work, "j.xml"), "utf8"));
    assert.strictEqual(xml.name, "testsuites");
    const suites = xml.children.filter((c) => c.name === "testsuite");
    assert.strictEqual(suites.length, 1);
    const suite = suites[0];
    assert.deepStrictEqual([suite.attrs.name, suite.attrs.tests, suite.attrs.failures, suite.attrs.errors,
                            suite.attrs.skipped], ["s.fsim", "4", "1", "0", "1"]);
    const cases = suite.children.filter((c) => c.name === "testcase");
    assert.deepStrictEqual(cases.map((c) => [c.attrs.name, c.children.map((x) => x.name).join()]),
                           [["(before the first phase)", ""], ["speaker", ""], ["store", "failure"],
                            ["never reached", "skipped"]]);
    assert.strictEqual(cases[1].attrs.time, "2.000");
    const failure = cases[2].children[0];
    assert.strictEqual(failure.attrs.message, "line 7: expected Set-Speaker-SNC = Set SPK to CMSNC : Done; " +
                       "received Set-Speaker-SNC=Set SPK to CMSNC : Finished");
  } finally {
    fs.rmSync(r.work, { recursive: true, force: true });
  }
});

test("a script that cannot run is an ERROR; without phases JUnit has one case for the script", async () => {
  const cases = [
    // script, status, record's error, JUnit element
    ["event 1\nbogus line\nwait 5\n", 1, /^line 2: unknown command: bogus/, "error"],
    ["wait 5\nexpect-none HideAllUIExcept\nevent 215\nexpect-none HideAllUIExcept\n", 1, null, "failure"],
    ["phase\nwait 5\n", 1, /^line 1: usage: phase <name>/, "error"],
    ["wait 5\n", 0, null, ""],
  ];
  for (const [script, status, error, element] of cases) {
    const r = await runFactorySim(["--script", "x.fsim", "--record", "rec.json", "--junit", "j.xml"],
                                  { files: { "x.fsim": script }, keep: true });
    try {
      assert.strictEqual(r.status, status, script + r.stderr);
      const record = readJson(r, "rec.json");
      assert.strictEqual(validate(record, SCHEMA), null, script);
      assert.strictEqual(record.outcome, error ? "ERROR" : element ? "FAIL" : "PASS", script);
      if (error) assert.match(record.error, error, script);
      const suite = parseXml(fs.readFileSync(path.join(r.work, "j.xml"), "utf8")).children[0];
      const testcases = suite.children.filter((c) => c.name === "testcase");
      assert.deepStrictEqual(testcases.map((c) => [c.attrs.name, c.children.map((x) => x.name).join()]),
                             [["x.fsim", element]], script);
    } finally {
      fs.rmSync(r.work, { recursive: true, force: true });
    }
  }
});

test("a record folder gets one new record per run", async () => {
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), "records-"));
  try {
    for (let i = 0; i < 2; ++i) {
      const r = await runFactorySim(["--script", "x.fsim", "--record", folder], { files: { "x.fsim": "wait 1\n" } });
      assert.strictEqual(r.status, 0, r.stderr);
    }
    const records = fs.readdirSync(folder);
    assert.strictEqual(records.length, 2, records.join(" "));
    for (const name of records) {
      assert.match(name, /^x-\d{4}-\d\d-\d\dT[\d-]+Z-\d+\.json$/);
      assert.strictEqual(JSON.parse(fs.readFileSync(path.join(folder, name), "utf8")).outcome, "PASS");
    }
  } finally {
    fs.rmSync(folder, { recursive: true, force: true });
  }
});

test("a changed golden trace fails the run with the first difference and a summary", async () => {
  const golden = fs.readFileSync(path.join(EXAMPLES, "golden", "volume.jsonl"), "utf8").trim().split("\n");
  const edit = (index, from, to) => golden.map((l, i) => (i === index ? l.replace(from, to) : l));
  const cases = [
    // golden lines, first diverging event, summary, detail
    [golden, 0, null, null],
    [edit(4, '"data":"volume"', '"data":"Volume"'), 5,
     "notifications 0 missing, 0 extra, 1 changed; calls 0 missing, 0 extra, 0 changed",
     'changed notification HideAllUIExcept (1st): golden "Volume" at 0 ms, this run "volume" at 0 ms'],
    [edit(15, '"data":0', '"data":"0"'), 16, "notifications 0 missing, 0 extra, 1 changed",
     'changed notification volume (2nd): golden "0" at 3000 ms, this run 0 at 3000 ms'],
    [golden.filter((_, i) => i !== 10), 11, "notifications 0 missing, 1 extra, 0 changed",
     "extra notification set-volumeBar (1st): 35 at 0 ms"],
    [[...golden, '{"t":3000,"kind":"listener","code":73730}'], 17, "listener codes 1 differ", null],
    [[...golden, '{"t":3000,"kind":"notify","channel":0,"cmd":"volume","data":2}'], 17,
     "notifications 1 missing, 0 extra, 0 changed", "missing notification volume (3rd): 2 at 3000 ms"],
    [edit(13, "[3000, 66, 1]", "[2000, 66, 1]"), 14, "calls 0 missing, 0 extra, 1 changed",
     "changed call MEvtHandle::SetTimer (1st): golden [2000,66,1] at 0 ms, this run [3000,66,1] at 0 ms"],
    // The same events in another order: only the first difference shows it.
    [golden.map((l, i) => golden[i === 9 ? 10 : i === 10 ? 9 : i]), 10,
     "notifications 0 missing, 0 extra, 0 changed; calls 0 missing, 0 extra, 0 changed", null],
  ];
  for (const [lines, at, summary, detail] of cases) {
    const r = await runFactorySim(["--script", path.join(EXAMPLES, "volume.fsim"), "--compare", "g.jsonl"],
                                  { files: { "g.jsonl": lines.join("\n") + "\n" } });
    const label = summary || "same";
    if (at === 0) {
      assert.strictEqual(r.status, 0, r.stderr);
      assert.match(r.stdout, /the trace matches g\.jsonl/);
      continue;
    }
    assert.strictEqual(r.status, 1, label);
    assert.ok(r.stderr.includes(`differs from the golden one at event ${at} (golden ${lines.length} events, ` +
                                `this run ${golden.length})`), label + "\n" + r.stderr);
    // The diverging event is marked on both sides, with its neighbours around it.
    const marked = r.stderr.split("\n").filter((l) => l.startsWith("  > "));
    assert.deepStrictEqual(marked.map((l) => l.split("  ")[1].slice(2)), [String(at), String(at)], label);
    assert.ok(marked[1].includes(golden[at - 1]) || at > golden.length, label);
    assert.ok(r.stderr.includes(`    ${at - 1}  `), label);
    if (at < golden.length) assert.ok(r.stderr.includes(`    ${at + 1}  `), label);
    assert.ok(r.stderr.includes(summary), label + "\n" + r.stderr);
    if (detail) assert.ok(r.stderr.includes("  " + detail + "\n"), label + "\n" + r.stderr);
  }
});

test("--golden-write writes what --compare accepts, without log lines", async () => {
  const r = await runFactorySim(["--script", path.join(EXAMPLES, "volume.fsim"), "--golden-write", "g.jsonl",
                                 "--trace", "t.jsonl"], { keep: true });
  try {
    assert.strictEqual(r.status, 0, r.stderr);
    const golden = fs.readFileSync(path.join(r.work, "g.jsonl"), "utf8");
    assert.strictEqual(golden, fs.readFileSync(path.join(EXAMPLES, "golden", "volume.jsonl"), "utf8"));
    const trace = fs.readFileSync(path.join(r.work, "t.jsonl"), "utf8").trim().split("\n");
    const kept = trace.filter((l) => JSON.parse(l).kind !== "log");
    assert.ok(kept.length < trace.length);
    assert.deepStrictEqual([...kept].sort(), golden.trim().split("\n").sort());
  } finally {
    fs.rmSync(r.work, { recursive: true, force: true });
  }
});

// factory-sim on its console until stop(); resolves with the ports it printed.
async function startStation(args) {
  const work = fs.mkdtempSync(path.join(os.tmpdir(), "station-"));
  const child = spawn(...simCommand(args), { cwd: work, env: { ...process.env, TMPDIR: work } });
  const live = { child, stdout: "", stderr: "" };
  child.stdout.on("data", (d) => { live.stdout += d; });
  child.stderr.on("data", (d) => { live.stderr += d; });
  const closed = new Promise((resolve) => child.on("close", resolve));
  const limit = Date.now() + 15000;
  while (!/type 'help'/.test(live.stdout) && child.exitCode === null && Date.now() < limit) {
    await new Promise((r) => setTimeout(r, 20));
  }
  const ports = live.stdout.match(/^factory-sim: ports ui=(\d+) control=(\d+|none)$/m);
  assert.ok(ports, live.stdout + live.stderr);
  live.ui = Number(ports[1]);
  live.control = ports[2] === "none" ? null : Number(ports[2]);
  live.stop = async () => {
    child.stdin.end("quit\n");
    const status = await closed;
    fs.rmSync(work, { recursive: true, force: true });
    return status;
  };
  return live;
}

const post = (port, body) => fetch(`http://127.0.0.1:${port}/`, {
  method: "POST", body, headers: { "X-Factory-Control": "1" } });

test("--port 0: two stations side by side on free ports, each serving its own page", async () => {
  const stations = [await startStation(["--port", "0", "--control-port", "0"]),
                    await startStation(["--port", "0", "--control-port", "0"])];
  try {
    const ports = stations.flatMap((s) => [s.ui, s.control]);
    assert.strictEqual(new Set(ports).size, 4, ports.join(" "));
    for (const [i, s] of stations.entries()) {
      assert.ok(ports.every((p) => p > 0 && p < 65536));
      assert.match(s.stdout, new RegExp(`factory UI at http://127\\.0\\.0\\.1:${s.ui}/`));
      const page = await (await fetch(`http://127.0.0.1:${s.ui}/`)).text();
      assert.ok(page.includes(`content="http://127.0.0.1:${s.control}/"`), "page " + i);
      const answer = await post(s.control, `set serial STATION${i}\nget serial`);
      assert.strictEqual(answer.status, 200);
      assert.match(await answer.text(), new RegExp(`serial = STATION${i}`));
    }
    const none = await startStation(["--port", "0", "--no-control"]);
    assert.strictEqual(none.control, null);
    assert.strictEqual(await none.stop(), 0);
  } finally {
    for (const s of stations) assert.strictEqual(await s.stop(), 0);
  }
});

// One raw HTTP exchange: the status line of the answer.
function rawRequest(port, text, { endWrite = false } = {}) {
  return new Promise((resolve, reject) => {
    const socket = net.connect(port, "127.0.0.1", () => {
      socket.write(text);
      if (endWrite) socket.end();
    });
    let answer = "";
    socket.on("data", (d) => { answer += d; });
    socket.on("error", reject);
    socket.on("close", () => resolve(answer.split("\r\n")[0]));
    socket.setTimeout(10000, () => socket.destroy(new Error("no answer")));
  });
}

test("the control endpoint runs only a body of a stated length: 411 or 400, never 200", async () => {
  const s = await startStation(["--port", "0", "--control-port", "0"]);
  try {
    const head = "POST / HTTP/1.1\r\nHost: 127.0.0.1\r\nX-Factory-Control: 1\r\n";
    const line = "set serial CHANGED1";
    const chunked = line.length.toString(16) + "\r\n" + line + "\r\n0\r\n\r\n";
    const cases = [
      [head + "Transfer-Encoding: chunked\r\n\r\n" + chunked, "HTTP/1.1 411 Length Required"],
      [head + "Transfer-Encoding: chunked\r\nContent-Length: " + chunked.length + "\r\n\r\n" + chunked,
       "HTTP/1.1 411 Length Required"],
      [head + "\r\n" + line, "HTTP/1.1 411 Length Required", true],
      ...["abc", "-19", "19x", "19, 19", "", "1e3", "99999999999999999999"].map((length) =>
        [head + "Content-Length: " + length + "\r\n\r\n" + line, "HTTP/1.1 400 Bad Request"]),
    ];
    for (const [request, status, endWrite] of cases) {
      assert.strictEqual(await rawRequest(s.control, request, { endWrite }), status, request);
    }
    // None of them ran; a GET needs no length, and a stated one still works.
    const before = await (await post(s.control, "get serial")).text();
    assert.doesNotMatch(before, /CHANGED1/);
    assert.strictEqual(await rawRequest(s.control, "GET /native.png HTTP/1.1\r\nX-Factory-Control: 1\r\n\r\n"),
                       "HTTP/1.1 204 No Content");
    assert.strictEqual(await rawRequest(s.control, head + "Content-Length: " + line.length + "\r\n\r\n" + line),
                       "HTTP/1.1 200 OK");
    assert.match(await (await post(s.control, "get serial")).text(), /serial = CHANGED1/);
  } finally {
    await s.stop();
  }
});

test("a failing step with the native layer shown attaches its picture; a failed run writes no golden", async () => {
  const script = "set m-mode 1\nevent FactoryMModeStart\nexpect no-such-page\n";
  const r = await runFactorySim(["--script", "m.fsim", "--record", "m.json", "--golden-write", "g.jsonl"],
                                { files: { "m.fsim": script }, keep: true });
  try {
    assert.strictEqual(r.status, 1, r.stderr);
    const record = readJson(r, "m.json");
    // Host listener codes and console lines belong to the step that caused them.
    assert.deepStrictEqual(record.steps.map((st) => [st.line, st.listener.map((l) => [l.kind, l.code]),
                                                     st.console.map((c) => [c.kind, c.text])]), [
      [1, [], []],
      [2, [["listener", 73731]], [["console", "~~ Kill ZYT UI [FactoryManager::InfoZYTAppMgrForVersion]"]]],
      [3, [], []]]);
    const attachments = record.steps.at(-1).attachments;
    assert.deepStrictEqual(attachments.map((a) => [a.name, a.path, a.type]), [
      ["native-layer", path.join(r.work, "m.line3.native.png"), "image/png"],
      ["last-notifications", path.join(r.work, "m.line3.notifications.jsonl"), "application/jsonl"]]);
    const png = fs.readFileSync(attachments[0].path);
    assert.deepStrictEqual([...png.subarray(0, 8)], [0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a]);
    assert.ok(png.length > 100);
    assert.strictEqual(fs.existsSync(path.join(r.work, "g.jsonl")), false);
    assert.match(r.stderr, /the golden trace g\.jsonl is not written: the run failed/);
  } finally {
    fs.rmSync(r.work, { recursive: true, force: true });
  }
});

test("the station options are refused with status 2 when they cannot work", async () => {
  const cases = [
    [["--record", "r.json"], /--record needs --script/],
    [["--junit", "j.xml"], /--junit needs --script/],
    [["--script", "s.fsim", "--golden-write", "s.fsim"], /--golden-write s\.fsim: one of the run's own inputs/],
    [["--script", "s.fsim", "--compare", "g.jsonl", "--golden-write", "./g.jsonl"],
     /--golden-write \.\/g\.jsonl: one of the run's own inputs/],
    [["--script", "s.fsim", "--record", "s.fsim"], /--record s\.fsim: one of the run's own inputs/],
    [["--script", "s.fsim", "--junit", "."], /--junit \.: a folder/],
    [["--script", "s.fsim", "--compare", "missing.jsonl"], /--compare missing\.jsonl: no such file/],
  ];
  for (const [args, message] of cases) {
    const r = await runFactorySim(args, { files: { "s.fsim": "wait 1\n", "g.jsonl": "" }, keep: true });
    try {
      assert.strictEqual(r.status, 2, args.join(" ") + r.stderr);
      assert.match(r.stderr, message, args.join(" "));
      assert.strictEqual(fs.readFileSync(path.join(r.work, "s.fsim"), "utf8"), "wait 1\n");
    } finally {
      fs.rmSync(r.work, { recursive: true, force: true });
    }
  }
});

test("a station stopped by SIGTERM records the cut step as an ERROR", async () => {
  const work = fs.mkdtempSync(path.join(os.tmpdir(), "station-stop-"));
  try {
    fs.writeFileSync(path.join(work, "l.fsim"), "phase long\nwait 1\nwait 60000\nwait 5\n");
    const child = spawn(...simCommand(["--real-time", "--port", "0", "--control-port", "0", "--script", "l.fsim",
                                 "--record", "l.json", "--junit", "l.xml"]), { cwd: work, env: { ...process.env, TMPDIR: work } });
    let stdout = "";
    child.stdout.on("data", (d) => { stdout += d; });
    const closed = new Promise((resolve) => child.on("close", resolve));
    const limit = Date.now() + 10000;
    while (!/t = 1 ms/.test(stdout) && Date.now() < limit) await new Promise((r) => setTimeout(r, 20));
    await new Promise((r) => setTimeout(r, 300));
    child.kill("SIGTERM");
    assert.strictEqual(await closed, 1);
    const record = JSON.parse(fs.readFileSync(path.join(work, "l.json"), "utf8"));
    assert.strictEqual(validate(record, SCHEMA), null);
    assert.deepStrictEqual([record.outcome, record.error], ["ERROR", "line 3: stopped by a signal"]);
    assert.deepStrictEqual(record.steps.map((s) => [s.line, s.outcome]), [[2, "PASS"], [3, "ERROR"]]);
    assert.strictEqual(record.phases[0].outcome, "ERROR");
    const suite = parseXml(fs.readFileSync(path.join(work, "l.xml"), "utf8")).children[0];
    assert.deepStrictEqual([suite.attrs.errors, suite.children[0].children[0].name,
                            suite.children[0].children[0].attrs.message],
                           ["1", "error", "line 3: stopped by a signal"]);
  } finally {
    fs.rmSync(work, { recursive: true, force: true });
  }
});
