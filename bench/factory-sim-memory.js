// factory-sim's memory over a long run: the resident set size after N notifications
// (M-mode panel keys, one notification each, in virtual time) and after many page
// connections opened and closed. The figures in the README come from this.
//   node bench/factory-sim-memory.js [NOTIFICATIONS] [CYCLES]
// FACTORY_SIM names the binary (default build/tools/factory-sim/factory-sim).
"use strict";
const crypto = require("node:crypto");
const net = require("node:net");

const { rssKiB, startFactorySim, printFigures } = require("./factory-sim-process");

const NOTIFICATIONS = Number(process.argv[2] || 1000000);
const CYCLES = Number(process.argv[3] || 10000);

// One page connection: handshake on "factorymode-0", the greeting, then close.
function connectAndClose(port) {
  return new Promise((resolve, reject) => {
    const socket = net.connect(port, "127.0.0.1");
    const key = crypto.randomBytes(16).toString("base64");
    let seen = "";
    socket.on("connect", () => socket.write(
      "GET / HTTP/1.1\r\nHost: 127.0.0.1\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n" +
      `Sec-WebSocket-Key: ${key}\r\nSec-WebSocket-Version: 13\r\n` +
      "Sec-WebSocket-Protocol: factorymode-0\r\n\r\n"));
    socket.on("data", (d) => {
      seen += d.toString("latin1");
      if (seen.includes("established")) {
        socket.destroy();
        resolve();
      }
    });
    socket.on("error", reject);
  });
}

async function main() {
  const { child, port, quit } = await startFactorySim("factory-sim-memory-", "pipe");
  let keys = 0;
  let pending = "";
  const waiters = [];
  child.stdout.on("data", (d) => {
    pending += d;
    const lines = pending.split("\n");
    pending = lines.pop();
    for (const line of lines) if (line.startsWith("<- M-Mode-Key")) keys++;
    while (waiters.length && waiters[0].count <= keys) waiters.shift().resolve();
  });
  const until = (count) => new Promise((resolve) => waiters.push({ count, resolve }));
  child.stdin.write("set m-mode 1\nevent FactoryMModeStart\nkey panel-up\n");
  await until(1);
  const figures = [["start", rssKiB(child.pid)]];
  const step = Math.max(1, Math.floor(NOTIFICATIONS / 4));
  const batch = 1000;
  for (let sent = 1; sent < NOTIFICATIONS;) {
    const n = Math.min(batch, NOTIFICATIONS - sent);
    child.stdin.write("key panel-up\n".repeat(n));
    sent += n;
    await until(sent);
    if (sent % step < batch) figures.push([`${sent} notifications`, rssKiB(child.pid)]);
  }
  for (let i = 1; i <= CYCLES; i++) {
    await connectAndClose(port);
    if (i % Math.max(1, Math.floor(CYCLES / 2)) === 0) figures.push([`+${i} connect/close`, rssKiB(child.pid)]);
  }
  await quit();
  printFigures(figures);
}

main().catch((e) => { console.error(e); process.exit(1); });
