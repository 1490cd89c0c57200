"use strict";
(function () {
  const query = new URLSearchParams(location.search);
  const $ = (id) => document.getElementById(id);

  // ---- Page vocabulary -------------------------------------------------------------
  // The four information pages the operator steps through, in their order.
  const INFO_TABS = [["Version", "Version"], ["ColorTemperature", "Colour temp."], ["PQ", "PQ"],
                     ["Tuner", "Tuner"]];
  const INFO_PAGES = ["Version", "ColorTemperature", "PQ", "Tuner", "TunerDVBS", "TunerATSC"];
  const TITLES = {
    Version: "Version self-check", ColorTemperature: "Colour temperature", PQ: "Picture quality",
    Tuner: "Tuner", TunerDVBS: "Tuner (satellite)", TunerATSC: "Tuner (ATSC)",
    DMode: "Service data editor", volume: "Volume", Messages: "Messages",
  };
  const LABELS = {
    "Version-TVModel": "TV model", "Version-TVModelID": "Model ID",
    "Version-ZYTAppVersion": "Application version", "Version-BootCodeVersion": "Boot code",
    "Version-AppSWVersion": "Software version", "Version-EDID-VGA": "EDID VGA",
    "Version-EDID-HDMI1": "EDID HDMI1", "Version-EDID-HDMI2": "EDID HDMI2",
    "Version-EDID-HDMI3": "EDID HDMI3", "Version-CI+-Algorithm": "CI+ algorithm",
    "Product-Key-Valid": "Product key", "Test-Key-Valid": "Test key", "URI": "CI+ URI licence",
    "Version-CIPlusSerialNumber": "CI+ serial number", "Version-CIPlusHostID": "CI+ host ID",
    "Version-MainFormat": "Main format", "Version-NetflixESN": "Netflix ESN",
    "Version-WDVDeviceID": "Widevine device ID", "Version-Serial-No": "Serial number",
    "Version-MACAddress": "MAC address", "Version-WLAN-MAC-Address": "WLAN MAC address",
    "Version-BlueTooth": "Bluetooth",
  };

  const pages = new Map();  // name -> {el, rows: Map(cmd -> tr), body, kind}
  let current = null;

  function labelFor(cmd, page) {
    if (LABELS[cmd]) return LABELS[cmd];
    let text = cmd;
    for (const prefix of [page + "-", cmd.split("-")[0] + "-"]) {
      if (text.startsWith(prefix) && text.length > prefix.length) { text = text.slice(prefix.length); break; }
    }
    return text.replace(/-/g, " ");
  }

  function el(tag, cls, text) {
    const node = document.createElement(tag);
    if (cls) node.className = cls;
    if (text !== undefined) node.textContent = text;
    return node;
  }

  // Each page kind builds its own panel; every unknown page name gets the generic one.
  const LAYOUTS = {
    info(page, name) {
      page.el.classList.add("info");
      const tabs = el("div", "tabs");
      const family = name.startsWith("Tuner") ? "Tuner" : name;
      for (const [key, text] of INFO_TABS) {
        tabs.appendChild(el("span", key === family ? "current" : "", text));
      }
      page.el.appendChild(tabs);
      page.body = page.el.appendChild(el("table", "rows"));
    },
    DMode(page) {
      page.option = page.el.appendChild(el("div", "dmode-option", ""));
      const grid = page.el.appendChild(el("div", "dmode"));
      page.fields = {};
      for (const [key, text] of [["Addr", "Address"], ["Data", "Value"], ["Bin", "Bits"]]) {
        const box = grid.appendChild(el("div"));
        box.appendChild(el("b", "", text));
        page.fields[key] = box.appendChild(el("span", "big", "--"));
      }
      page.body = page.el.appendChild(el("table", "rows"));
    },
    volume(page) {
      page.number = page.el.appendChild(el("div", "volume-number", "--"));
      const bar = page.el.appendChild(el("div", "volume-bar"));
      page.bar = bar.appendChild(el("div"));
      page.body = page.el.appendChild(el("table", "rows"));
    },
    generic(page) {
      page.body = page.el.appendChild(el("table", "rows"));
    },
  };

  function getPage(name) {
    if (pages.has(name)) return pages.get(name);
    const page = { name, rows: new Map(), el: el("section", "page hidden") };
    page.el.dataset.page = name;
    page.el.appendChild(el("h2", "", TITLES[name] || name));
    const kind = INFO_PAGES.includes(name) ? "info" : (LAYOUTS[name] ? name : "generic");
    page.kind = kind;
    LAYOUTS[kind](page, name);
    pages.set(name, page);
    $("pages").appendChild(page.el);
    return page;
  }

  function showOnly(name) {
    const page = getPage(name);
    for (const p of pages.values()) p.el.classList.toggle("hidden", p !== page);
    current = name;
  }

  function setPageVisible(name, visible) {
    if (!pages.has(name) && !visible) return;
    getPage(name).el.classList.toggle("hidden", !visible);
    if (visible) current = name;
    else if (current === name) current = null;
  }

  // Rows go to the page on screen when they belong to its family ("Tuner-...-DVBS" on
  // TunerDVBS, "Color-..." on ColorTemperature), else to the page their prefix names.
  function pageForRow(cmd) {
    const seg = cmd.split("-")[0];
    if (current && current.startsWith(seg)) return current;
    if (pages.has(seg)) return seg;
    return current || "Messages";
  }

  function row(page, cmd) {
    if (page.rows.has(cmd)) return page.rows.get(cmd);
    const tr = el("tr");
    tr.dataset.cmd = cmd;
    tr.appendChild(el("td", "label", labelFor(cmd, page.name)));
    tr.appendChild(el("td", "value", ""));
    page.body.appendChild(tr);
    page.rows.set(cmd, tr);
    return tr;
  }

  function setRow(cmd, data) {
    const page = getPage(pageForRow(cmd));
    const text = String(data);
    // A family's layout may take its own rows; it returns false to leave one to the table.
    if (page.setRow && page.setRow(cmd, data) !== false) return;
    if (page.kind === "DMode") {
      const key = cmd.slice("DMode-".length);
      if (key === "Option") { page.option.textContent = text; return; }
      if (key === "Value-Color") {
        page.fields.Data.classList.toggle("readonly", Number(data) === 0);
        return;
      }
      if (page.fields[key]) { page.fields[key].textContent = text; return; }
    }
    const tr = row(page, cmd);
    tr.cells[1].textContent = text;
    if (text === "NG" || text === "OK") {
      tr.classList.toggle("ng", text === "NG");
      tr.classList.toggle("ok", text === "OK");
    }
  }

  // "<row>-NG" / "<row>-OK" with a number: colours the row, which may come next.
  function markRow(cmd, verdict) {
    const tr = row(getPage(pageForRow(cmd)), cmd);
    tr.classList.toggle("ng", verdict === "NG");
    tr.classList.toggle("ok", verdict === "OK");
  }

  function showMModeKey(text) {
    const box = $("mmode-key");
    box.textContent = text;
    box.classList.remove("hidden");
  }

  function volumePage() { return getPage("volume"); }

  // Panels that are not pages, and the cmds that drive them.
  const OVERLAYS = {
    "SerialNum": (visible) => $("serial").classList.toggle("hidden", !visible),
    "M-Mode-Key_Finish": (visible) => $("mmode-key").classList.toggle("hidden", !visible),
  };
  const SPECIAL = {
    "HideAllUIExcept": (data) => showOnly(String(data)),
    "M-Mode-Key": (data) => showMModeKey(String(data)),
    "SerialNum-Ready": (data) => {
      const box = $("serial");
      box.textContent = String(data);
      box.classList.toggle("ok", String(data).startsWith("OK"));
      box.classList.remove("hidden");
    },
    "set-volume": (data) => { volumePage().number.textContent = String(data); },
    "set-volumeBar": (data) => {
      const v = Math.max(0, Math.min(100, Number(data) || 0));
      volumePage().bar.style.width = v + "%";
    },
  };

  function handle(cmd, data) {
    if (typeof cmd !== "string") return;
    if (SPECIAL[cmd]) return SPECIAL[cmd](data);
    const numeric = typeof data === "number";
    if (cmd.endsWith("-Show")) {
      const name = cmd.slice(0, -"-Show".length);
      const visible = Number(data) !== 0;
      if (OVERLAYS[name]) return OVERLAYS[name](visible);
      return setPageVisible(name, visible);
    }
    const marker = /^(.*)-(NG|OK)$/.exec(cmd);
    if (marker && numeric) return markRow(marker[1], marker[2]);
    if (numeric && (pages.has(cmd) || INFO_PAGES.includes(cmd) || LAYOUTS[cmd])) {
      return setPageVisible(cmd, data !== 0);
    }
    setRow(cmd, data);
  }

  function feed(text) {
    const box = $("feed");
    box.textContent = (text + "\n" + box.textContent).slice(0, 4000);
  }

  // ---- The factory UI socket -------------------------------------------------------
  function socketUrl() {
    if (query.get("ws")) return "ws://" + query.get("ws") + "/";
    const host = location.protocol === "file:" || !location.host ? "127.0.0.1:7233" : location.host;
    return "ws://" + host + "/";
  }

  function setConnected(on) {
    const badge = $("conn");
    badge.textContent = on ? "connected" : "disconnected";
    badge.className = "badge " + (on ? "connected" : "disconnected");
  }

  // A page opened after the set drew a factory page asks factory-sim for the current
  // screen (the notifications since the last "HideAllUIExcept") and draws it; what the
  // socket brings meanwhile waits and follows, less what the screen already held.
  // On a set there is no endpoint and the page starts from what comes next.
  const key = (cmd, data) => JSON.stringify([cmd, data]);
  async function join(ws, held) {
    let screen = [];
    try {
      const answer = await controlFetch("/", { method: "POST", body: "screen",
                                               headers: { "Content-Type": "text/plain" } });
      if (answer.ok) screen = JSON.parse(await answer.text());
    } catch (e) {
      screen = [];
    }
    if (ws.readyState !== WebSocket.OPEN) return;
    // The held messages were sent after this socket opened; the first of them may be
    // the screen's last ones.
    const tail = screen.map((n) => key(n.cmd, n.data));
    let overlap = Math.min(tail.length, held.length);
    while (overlap > 0 && !held.slice(0, overlap).every(
             (m, i) => key(m.cmd, m.data) === tail[tail.length - overlap + i])) {
      --overlap;
    }
    for (const n of screen) handle(n.cmd, n.data);
    for (const m of held.slice(overlap)) handle(m.cmd, m.data);
    ws.held = null;
  }

  function connect() {
    let ws;
    try {
      ws = new WebSocket(socketUrl(), "factorymode-0");
    } catch (e) {
      setTimeout(connect, 1000);
      return;
    }
    ws.onopen = () => {
      setConnected(true);
      ws.send(JSON.stringify({ cmd: "connect" }));
      ws.held = [];
      join(ws, ws.held);
    };
    ws.onmessage = (event) => {
      const text = String(event.data);
      feed(text);
      let msg = null;
      try { msg = JSON.parse(text); } catch (e) { return; }  // the bare "connect" echo
      if (!msg || typeof msg !== "object" || msg.cmd === "established") return;
      if (ws.held) ws.held.push(msg); else handle(msg.cmd, msg.data);
    };
    ws.onclose = () => {
      setConnected(false);
      setTimeout(connect, 1000);
    };
  }

  // ---- factory-sim's control endpoint (absent on a set) ----------------------------
  // factory-sim names its endpoint in the page it serves (meta "factory-control");
  // ?control=PORT or a full URL overrides it, e.g. for a page opened from a file.
  function controlUrl() {
    const given = query.get("control");
    if (given && /^\d+$/.test(given)) return "http://127.0.0.1:" + given + "/";
    if (given) return given;
    const meta = document.querySelector('meta[name="factory-control"]');
    return meta && meta.content ? meta.content : null;
  }

  // Every request carries the endpoint's own header: it refuses any without one, so
  // that no other web page can drive the set.
  function controlFetch(path, options) {
    const base = controlUrl();
    if (!base) return Promise.reject(new Error("no control endpoint"));
    const headers = Object.assign({ "X-Factory-Control": "1" }, (options || {}).headers);
    return fetch(new URL(path, base), Object.assign({}, options, { headers }));
  }

  async function control(line) {
    const out = $("ctl-out");
    try {
      const answer = await controlFetch("/", { method: "POST", body: line,
                                               headers: { "Content-Type": "text/plain" } });
      const text = await answer.text();
      $("ctl-state").textContent = "control online";
      $("ctl-state").className = "badge online";
      out.textContent = "> " + line + "\n" + text + (answer.ok ? "" : "(refused)\n");
      return answer.ok ? text : null;
    } catch (e) {
      $("ctl-state").textContent = "control offline";
      $("ctl-state").className = "badge";
      out.textContent = "> " + line + "\ncontrol endpoint unreachable\n";
      return null;
    }
  }

  async function loadEvents() {
    const text = await control("events");
    if (text === null) return;
    const list = $("event-list");
    list.textContent = "";
    for (const line of text.split("\n")) {
      const [id, name, ...mark] = line.split(" ");
      if (!name) continue;
      const option = el("option", "", id + "  " + name + (mark.length ? " " + mark.join(" ") : ""));
      option.value = id;
      list.appendChild(option);
    }
  }

  for (const button of document.querySelectorAll("button[data-key]")) {
    button.addEventListener("click", () => control("key " + button.dataset.key));
  }
  $("send-event").addEventListener("click", () => {
    const params = ["p1", "p2", "p3"].map((id) => $(id).value.trim()).filter((v) => v !== "");
    control(["event", $("event-list").value].concat(params).join(" "));
  });
  $("command").addEventListener("keydown", (event) => {
    if (event.key === "Enter" && $("command").value.trim() !== "") {
      control($("command").value.trim());
      $("command").value = "";
    }
  });

  // For scripted checks of the page.
  window.factoryUi = {
    visiblePages: () => [...pages.values()].filter((p) => !p.el.classList.contains("hidden"))
                                           .map((p) => p.name),
    handle,
  };

  // Page families add their layouts, handlers, titles and labels from their own
  // script blocks (above this one), before the page connects.
  const ui = { el, getPage, showOnly, setPageVisible, setRow, row, handle, LAYOUTS, SPECIAL,
               OVERLAYS, TITLES, LABELS, pages, control, controlFetch };
  for (const extend of window.FactoryUIFamilies || []) extend(ui);

  connect();
  loadEvents();
})();
