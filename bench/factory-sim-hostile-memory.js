// factory-sim's memory under hostile WebSocket input: the resident set size while a
// client sends FRAMES fuzzed frames to the factory UI port (random bytes, long JSON
// lines, fragments, messages over the 4 KiB bound that cost the connection), 500 per
// connection, each batch ended by "connect" and its echo. The README's figures come
// from this.
//   node bench/factory-sim-hostile-memory.js [FRAMES]
// FACTORY_SIM names the binary (default build/tools/factory-sim/factory-sim).
"use strict";
const crypto = require("node:crypto");
const net = require("node:net");

const { rssKiB, startFactorySim, printFigures } = require("./factory-sim-process");

const FRAMES = Number(process.argv[2] || 1000000);
const PER_CONNECTION = 500;
const ECHO = Buffer.concat([Buffer.from([0x81, 7]), Buffer.from("connect")]);

// A masked client frame (RFC 6455).
function frame(opcode, payload, fin = true) {
  const mask = crypto.randomBytes(4);
  const n = payload.length;
  const head = n < 126 ? Buffer.from([(fin ? 0x80 : 0) | opcode, 0x80 | n])
    : Buffer.from([(fin ? 0x80 : 0) | opcode, 0x80 | 126, n >> 8, n & 0xff]);
  const body = Buffer.from(payload);
  for (let i = 0; i < n; i++) body[i] ^= mask[i % 4];
  return Buffer.concat([head, mask, body]);
}

const randomInt = (n) => crypto.randomInt(n);
const jsonLine = (n) => JSON.stringify({ cmd: "x".repeat(n), data: randomInt(1e9) });

// One hostile frame (or two, for a fragmented message); true when it ends the connection.
function hostile() {
  switch (randomInt(6)) {
    case 0: return [frame(1, crypto.randomBytes(randomInt(4000))), false];
    case 1: return [frame(1, jsonLine(randomInt(4000))), false];
    case 2: return [frame(2, crypto.randomBytes(randomInt(2000))), false];
    case 3: {
      const text = Buffer.from(jsonLine(randomInt(3000)));
      const cut = randomInt(text.length);
      return [Buffer.concat([frame(1, text.subarray(0, cut), false), frame(0, text.subarray(cut))]), false];
    }
    case 4: return [frame(1, "{\"cmd\":\"" + "y".repeat(randomInt(200)) + "\"}"), false];
    default:
      // Rarely, a message over the bound: the server closes the connection.
      return randomInt(50) === 0 ? [frame(1, "z".repeat(5000)), true] : [frame(1, "[1,2,3]"), false];
  }
}

// Connects, sends up to PER_CONNECTION hostile frames and "connect", and resolves with
// the number sent once the echo (or the close) comes.
function batch(port, limit) {
  return new Promise((resolve, reject) => {
    const socket = net.connect(port, "127.0.0.1");
    const key = crypto.randomBytes(16).toString("base64");
    let seen = Buffer.alloc(0);
    let sent = 0;
    let upgraded = false;
    let closing = false;
    const done = () => { socket.destroy(); resolve(sent); };
    socket.on("connect", () => socket.write(
      "GET / HTTP/1.1\r\nHost: 127.0.0.1\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n" +
      `Sec-WebSocket-Key: ${key}\r\nSec-WebSocket-Version: 13\r\n` +
      "Sec-WebSocket-Protocol: factorymode-0\r\n\r\n"));
    socket.on("data", (d) => {
      seen = Buffer.concat([seen, d]).subarray(-64);
      if (!upgraded && seen.includes("established")) {
        upgraded = true;
        const out = [];
        while (sent < limit && !closing) {
          const [bytes, ends] = hostile();
          out.push(bytes);
          sent++;
          closing = ends;
        }
        if (!closing) out.push(frame(1, "{\"cmd\":\"connect\"}"));
        socket.write(Buffer.concat(out));
      } else if (upgraded && seen.includes(ECHO)) {
        done();
      }
    });
    socket.on("close", done);
    socket.on("error", (e) => (closing ? done() : reject(e)));
  });
}

async function main() {
  const { child, port, quit } = await startFactorySim("factory-sim-hostile-", "ignore", "ignore");
  await new Promise((resolve) => setTimeout(resolve, 1000));
  const figures = [["start", rssKiB(child.pid)]];
  const step = Math.max(1, Math.floor(FRAMES / 10));
  let connections = 0;
  for (let sent = 0, next = step; sent < FRAMES;) {
    sent += await batch(port, Math.min(PER_CONNECTION, FRAMES - sent));
    connections++;
    if (sent >= next) {
      figures.push([`${sent} frames`, rssKiB(child.pid)]);
      next += step;
    }
  }
  const status = await quit();
  printFigures(figures);
  console.log(`${connections} connections; factory-sim exited with status ${status}`);
}

main().catch((e) => { console.error(e); process.exit(1); });
