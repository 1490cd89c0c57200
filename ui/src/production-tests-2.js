"use strict";
(window.FactoryUIFamilies = window.FactoryUIFamilies || []).push((ui) => {
  // Pages of the aging, pattern, tuning, configuration, CI, preset and clone tests.
  const TITLES = {
    SwitchVideo1: "Input switch", PictureDynamic: "Dynamic picture",
    "Local Dimming Pattern": "Local dimming pattern", "9-Point Pattern": "Nine-point pattern",
    AutoBrightnessSensorValue: "Light sensor", BackLightCheck: "Backlight check",
    AudioBalanceCheck: "Audio balance check", VBSTuning: "DVB-S tuning",
    Channel37: "Tuning CH37", Channel45: "Tuning CH45", Channel63: "Tuning CH63",
    Channel67: "Tuning CH67", DVBCTuning: "DVB-C tuning", DVBCDirectTuning: "DVB-C direct tuning",
    FactoryTuning: "Factory tuning", FactorySetup: "Factory set-up", CHPreset: "CH preset",
    CITest: "CI slot test", CloneCopy: "Clone copy",
  };
  // "<row>-Show" 0 closes the page of that row, whose name differs from the row's.
  const CLOSERS = {
    "Switch-Video1-Show": ["SwitchVideo1"], "9-Point-Pattern-Show": ["9-Point Pattern"],
    "DVBS-Tuning-Show": ["VBSTuning"], "Channel-37-Show": ["Channel37"],
    "Channel-45-Show": ["Channel45"], "Channel-63-Show": ["Channel63"],
    "Channel-67-Show": ["Channel67"], "DVB-C-Tuning-Show": ["DVBCTuning"],
    "DVB-C-Direct-Tuning-Show": ["DVBCDirectTuning"],
    "Factory-Tuning-Show": ["FactoryTuning", "FactorySetup"],
    "Factory-Setup-Show": ["FactorySetup"], "CITest-Show": ["CITest"],
    "Clone-Copy-Show": ["CloneCopy"],
  };
  const CLONE = { 0: ["Copying ...", ""], 1: ["Clone copy : OK", "ok"], 2: ["Clone copy : NG", "ng"] };

  // One line of large text: the page's latest value.
  function resultLayout(page) {
    page.result = page.el.appendChild(ui.el("div", "big-result", ""));
    page.body = page.el.appendChild(ui.el("table", "rows"));
    page.setRow = (cmd, data) => {
      const text = String(data);
      page.result.textContent = text;
      page.result.classList.toggle("ok", /-OK$/.test(cmd) || /(^|\W)OK$/.test(text));
      page.result.classList.toggle("ng", /-NG$/.test(cmd) || /(^|\W)NG$/.test(text));
      return true;
    };
  }
  for (const [name, title] of Object.entries(TITLES)) {
    ui.TITLES[name] = title;
    ui.LAYOUTS[name] = resultLayout;
  }
  for (const [cmd, names] of Object.entries(CLOSERS)) {
    ui.SPECIAL[cmd] = (data) => {
      for (const name of names) ui.setPageVisible(name, Number(data) !== 0);
    };
  }
  ui.SPECIAL["Clone-Copy"] = (data) => {
    const [text, verdict] = CLONE[data] || [String(data), ""];
    const page = ui.getPage("CloneCopy");
    page.result.textContent = text;
    page.result.className = "big-result " + verdict;
  };
  ui.SPECIAL["picture-dynamic"] = (data) => {
    if (Number(data) === 0) return ui.setPageVisible("PictureDynamic", false);
    ui.getPage("PictureDynamic").result.textContent = "Dynamic picture mode";
  };

  // The panel's raster colour, from factory-sim's control endpoint (absent on a set).
  const SWATCH = { red: "#e00000", green: "#00b000", blue: "#0030ff", black: "#000000",
                   white: "#ffffff" };
  const swatch = document.body.appendChild(ui.el("div", "hidden"));
  swatch.id = "panel-swatch";
  const colour = swatch.appendChild(ui.el("span", "colour"));
  const label = swatch.appendChild(ui.el("span", "", ""));
  async function poll() {
    try {
      const answer = await ui.controlFetch("/", { method: "POST", body: "get panel",
                                                  headers: { "Content-Type": "text/plain" } });
      const match = /panel = (\w+)/.exec(await answer.text());
      if (!answer.ok || !match) throw new Error("no panel");
      colour.style.background = SWATCH[match[1]] || "transparent";
      label.textContent = "panel: " + match[1];
      swatch.dataset.raster = match[1];
      swatch.classList.remove("hidden");
    } catch (e) {
      swatch.classList.add("hidden");
    }
  }
  poll();
  setInterval(poll, 500);
});
