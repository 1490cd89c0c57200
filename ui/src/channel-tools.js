"use strict";
// Channel tools: the ATV search pages, the satellite test pages and the program banner.
(window.FactoryUIFamilies = window.FactoryUIFamilies || []).push((ui) => {
  const { el, getPage, setPageVisible, LAYOUTS, SPECIAL, OVERLAYS, TITLES, LABELS } = ui;

  // ---- ATV search: one page per direction, the same fields on both ---------------
  const ATV = { Up: "ATVTuningUpSearch", Down: "ATVTuningDownSearch" };
  const field = (grid, key, label, text) => {
    const box = grid.appendChild(el("div"));
    box.appendChild(el("b", "", label));
    return box.appendChild(el("span", "big atv-" + key, text));
  };
  for (const [way, name] of Object.entries(ATV)) {
    TITLES[name] = "ATV search";
    LAYOUTS[name] = (page) => {
      const grid = page.el.appendChild(el("div", "dmode"));
      field(grid, "direction", "Direction", way === "Up" ? "Up \u25b2" : "Down \u25bc");
      page.cls = field(grid, "class", "Class", "--");
      page.channel = field(grid, "channel", "Channel", "--");
      page.save = page.el.appendChild(el("div", "volume-number value ok atv-save hidden", ""));
      page.body = page.el.appendChild(el("table", "rows"));
    };
    const prefix = "ATV-Tunning-" + way + "-Search";
    OVERLAYS[prefix] = (visible) => setPageVisible(name, visible);
    SPECIAL[prefix + "-SignalClass"] = (data) => { getPage(name).cls.textContent = String(data); };
    SPECIAL[prefix + "-CurrentChannel"] = (data) => {
      getPage(name).channel.textContent = String(data);
    };
    // The up page's key ends in "SaveOK", the down page's in "Save".
    SPECIAL[prefix + (way === "Up" ? "-SaveOK" : "-Save")] = (data) => {
      const label = getPage(name).save;
      label.textContent = String(data);
      label.classList.toggle("hidden", String(data) === "");
    };
  }

  // ---- Satellite tests: a text row each, hidden by their timers ------------------
  TITLES.LNBPowerSwitch = "LNB power";
  TITLES["22kHzTone"] = "22 kHz tone";
  TITLES.DiSEqCSwitching = "DiSEqC switch";
  TITLES.PolarizationHV = "Polarisation";
  LABELS["LNB-power-show"] = "LNB supply";
  LABELS["22kHz-Tone"] = "22 kHz tone";
  LABELS["DiSEqC-Switching"] = "DiSEqC";
  LABELS["Polarization-HV-toggle"] = "Polarisation";
  SPECIAL["LNB-power-hide"] = () => setPageVisible("LNBPowerSwitch", false);
  OVERLAYS["22kHz-Tone"] = (visible) => setPageVisible("22kHzTone", visible);
  OVERLAYS["DiSEqC-Switching"] = (visible) => setPageVisible("DiSEqCSwitching", visible);
  OVERLAYS["Polarization-HV-toggle"] = (visible) => setPageVisible("PolarizationHV", visible);

  // ---- Program information banner ------------------------------------------------
  TITLES.ProgramInfo = "Program information";
  const BANNER = {
    "ProgramInfo-DTVChannelNum": "number", "ProgramInfo-ChannelNum": "number",
    "ProgramInfo-DTVChannelName": "name", "ProgramInfo-ChannelName": "name",
    "ProgramInfo-SatelliteName": "satellite", "ProgramInfo-DTV_GENRE": "genre",
    "ProgramInfo-Audio": "audio",
  };
  LAYOUTS.ProgramInfo = (page) => {
    const head = page.el.appendChild(el("div", "dmode-option"));
    page.fields = {
      number: head.appendChild(el("span", "big banner-number", "")),
      name: head.appendChild(el("span", "banner-name", "")),
    };
    page.body = page.el.appendChild(el("table", "rows"));
    for (const [key, label] of [["satellite", "Satellite"], ["genre", "Genre"], ["time", "Time"],
                                ["left", "Remaining"], ["audio", "Sound"]]) {
      const tr = page.body.appendChild(el("tr", "hidden banner-" + key));
      tr.appendChild(el("td", "label", label));
      page.fields[key] = tr.appendChild(el("td", "value", ""));
    }
    page.setRow = (cmd, data) => {
      let key = BANNER[cmd];
      // The time line comes twice: the event's span, then the minutes left.
      if (cmd === "ProgramInfo-TimeInfo") key = /min left/.test(String(data)) ? "left" : "time";
      if (!key) return false;
      page.fields[key].textContent = (key === "name" ? " " : "") + String(data);
      const tr = page.fields[key].closest("tr");
      if (tr) tr.classList.remove("hidden");
      return true;
    };
  };
  // A new banner starts empty.
  const hideAll = SPECIAL.HideAllUIExcept;
  SPECIAL.HideAllUIExcept = (data) => {
    if (String(data) === "ProgramInfo" && ui.pages.has("ProgramInfo")) {
      const page = ui.pages.get("ProgramInfo");
      for (const f of Object.values(page.fields)) f.textContent = "";
      for (const tr of page.body.querySelectorAll("tr")) tr.classList.add("hidden");
    }
    hideAll(data);
  };
});
