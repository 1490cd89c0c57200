// Shared pieces of the browser tests: headless Debian Chromium, free ports, a
// running factory-sim, and a stand-in factory UI server speaking the page's protocol.
"use strict";
const { chromium } = require("playwright-core");
const { before, after } = require("node:test");
const { spawn } = require("node:child_process");
const crypto = require("node:crypto");
const fs = require("node:fs");
const http = require("node:http");
const os = require("node:os");
const path = require("node:path");

const CHROMIUM = process.env.CHROMIUM || "/usr/bin/chromium";

async function launchBrowser() {
  const profile = fs.mkdtempSync(path.join(os.tmpdir(), "factory-ui-profile-"));
  // An empty profile of our own: nothing of a user's browser leaks into a run.
  const context = await chromium.launchPersistentContext(profile, {
    executablePath: CHROMIUM,
    headless: true,
    viewport: { width: 1280, height: 720 },
    args: ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
           "--disable-background-networking", "--disable-component-update", "--disable-sync"],
  });
  return {
    newPage: () => context.newPage(),
    async close() {
      await context.close();
      fs.rmSync(profile, { recursive: true, force: true });
    },
  };
}

// One way to a free port and to the factory-sim binary for every suite.
const { BINARY, freePort } = require("../sim/sim-run");
// The assembled page, which the build puts beside factory-sim.
const UI_PAGE = process.env.FACTORY_UI || path.join(path.dirname(BINARY || "."), "factory-ui.html");

// A factory UI server as the page sees it: HTTP serves the page, WebSocket frames
// carry {"cmd","data"} notifications. Tests push notifications and read what the
// page sent.
class FakeFactoryServer {
  constructor() {
    this.sockets = new Set();
    this.received = [];
    this.protocols = [];
    this.server = http.createServer((req, res) => {
      res.writeHead(200, { "Content-Type": "text/html" });
      res.end(fs.readFileSync(UI_PAGE));
    });
    this.server.on("upgrade", (req, socket) => this.upgrade(req, socket));
  }

  async listen() {
    await new Promise((resolve) => this.server.listen(0, "127.0.0.1", resolve));
    this.port = this.server.address().port;
    return this.port;
  }

  upgrade(req, socket) {
    const accept = crypto.createHash("sha1")
      .update(req.headers["sec-websocket-key"] + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11")
      .digest("base64");
    const protocol = req.headers["sec-websocket-protocol"] || "";
    this.protocols.push(protocol);
    socket.write("HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n" +
                 "Sec-WebSocket-Accept: " + accept + "\r\n" +
                 (protocol ? "Sec-WebSocket-Protocol: " + protocol.split(",")[0].trim() + "\r\n" : "") +
                 "\r\n");
    this.sockets.add(socket);
    let buffer = Buffer.alloc(0);
    socket.on("data", (chunk) => {
      buffer = Buffer.concat([buffer, chunk]);
      for (;;) {
        const frame = decodeFrame(buffer);
        if (!frame) break;
        buffer = buffer.subarray(frame.size);
        if (frame.opcode === 1) this.received.push(frame.payload.toString());
        if (frame.opcode === 8) socket.end();
      }
    });
    socket.on("close", () => this.sockets.delete(socket));
    socket.on("error", () => this.sockets.delete(socket));
    this.sendText(socket, '{"cmd":"established"}');
  }

  sendText(socket, text) {
    const payload = Buffer.from(text);
    const header = payload.length < 126 ? Buffer.from([0x81, payload.length])
      : Buffer.from([0x81, 126, payload.length >> 8, payload.length & 0xff]);
    socket.write(Buffer.concat([header, payload]));
  }

  notify(cmd, data) {
    for (const socket of this.sockets) this.sendText(socket, JSON.stringify({ cmd, data }));
  }

  dropAll() {
    for (const socket of this.sockets) socket.destroy();
  }

  close() {
    this.dropAll();
    const closed = new Promise((resolve) => this.server.close(resolve));
    this.server.closeAllConnections();
    return closed;
  }
}

function decodeFrame(buf) {
  if (buf.length < 2) return null;
  const opcode = buf[0] & 0x0f;
  const masked = (buf[1] & 0x80) !== 0;
  let length = buf[1] & 0x7f;
  let offset = 2;
  if (length === 126) {
    if (buf.length < 4) return null;
    length = buf.readUInt16BE(2);
    offset = 4;
  } else if (length === 127) {
    if (buf.length < 10) return null;
    length = Number(buf.readBigUInt64BE(2));
    offset = 10;
  }
  const maskLength = masked ? 4 : 0;
  if (buf.length < offset + maskLength + length) return null;
  const payload = Buffer.from(buf.subarray(offset + maskLength, offset + maskLength + length));
  if (masked) {
    const mask = buf.subarray(offset, offset + 4);
    for (let i = 0; i < payload.length; i++) payload[i] ^= mask[i % 4];
  }
  return { opcode, payload, size: offset + maskLength + length };
}

// factory-sim in real time on free ports; resolves once its banner is out.
async function startFactorySim(extraArgs = []) {
  const binary = BINARY;
  if (!binary) throw new Error("FACTORY_SIM is not set");
  const port = await freePort();
  const controlPort = await freePort();
  // An empty folder of our own: factory-sim takes it as the set's root.
  const root = fs.mkdtempSync(path.join(os.tmpdir(), "factory-sim-root-"));
  const child = spawn(binary, ["--real-time", "--root", root, "--port", String(port),
                               "--control-port", String(controlPort), ...extraArgs],
                      { stdio: ["pipe", "pipe", "pipe"] });
  let stdout = "";
  let stderr = "";
  child.stdout.on("data", (d) => { stdout += d; });
  child.stderr.on("data", (d) => { stderr += d; });
  await waitFor(() => /type 'help'/.test(stdout) || child.exitCode !== null, 10000);
  if (child.exitCode !== null) throw new Error("factory-sim exited: " + stderr);
  return {
    port, controlPort, root, child,
    output: () => stdout,
    errors: () => stderr,
    // As a line-station tool on this host would: no Origin, the endpoint's header.
    async control(line) {
      const answer = await fetch("http://127.0.0.1:" + controlPort + "/",
                                 { method: "POST", body: line, headers: { "X-Factory-Control": "1" } });
      return { ok: answer.ok, text: await answer.text() };
    },
    async stop() {
      child.stdin.end("quit\n");
      await waitFor(() => child.exitCode !== null, 10000).catch(() => child.kill("SIGKILL"));
      fs.rmSync(root, { recursive: true, force: true });
    },
  };
}

async function waitFor(condition, ms) {
  const limit = Date.now() + ms;
  while (!(await condition())) {
    if (Date.now() > limit) throw new Error("timed out");
    await new Promise((r) => setTimeout(r, 50));
  }
}

// The preamble of a browser test file: Chromium, factory-sim and one page on it for the
// whole file, taken down after it. control: the page is told the control endpoint's
// port (otherwise the library's own server hands out a page that knows it); ready:
// "connected" waits for the page's connection, "control" for the control endpoint.
// Root hooks may run side by side: a file's own hook awaits ui.ready.
function useFactoryUi({ control = true, ready = "connected" } = {}) {
  const ui = {};
  let settle;
  ui.ready = new Promise((resolve, reject) => { settle = { resolve, reject }; });
  ui.ready.catch(() => {});
  before(async () => {
    try {
      await openFactoryUi(ui, control, ready);
      settle.resolve(ui);
    } catch (e) {
      settle.reject(e);
      throw e;
    }
  });
  after(async () => {
    if (ui.chrome) await ui.chrome.close();
    if (ui.sim) await ui.sim.stop();
  });
  return ui;
}

async function openFactoryUi(ui, control, ready) {
  ui.chrome = await launchBrowser();
  ui.sim = await startFactorySim();
  ui.page = await ui.chrome.newPage();
  await ui.page.goto("http://127.0.0.1:" + ui.sim.port +
                     (control ? "/?control=" + ui.sim.controlPort : "/"));
  await (ready === "control" ? ui.page.locator("#ctl-state", { hasText: "control online" })
      : ui.page.locator("#conn", { hasText: /^connected$/ })).waitFor();
}

module.exports = { useFactoryUi, launchBrowser, freePort, FakeFactoryServer, startFactorySim, waitFor, UI_PAGE };
