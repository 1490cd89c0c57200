"use strict";
// The four information pages: every row a page can send is laid out in the page's
// order when the page is first shown, rows with a "-NG" marker are coloured, the tabs
// say which page is open, and the tuner pages show that (and when) they redraw.
(window.FactoryUIFamilies = window.FactoryUIFamilies || []).push((ui) => {
  const TABS = [["Version", "Version"], ["ColorTemperature", "Colour temp."], ["PQ", "PQ"],
                ["Tuner", "Tuner"]];
  const colour = [];
  for (const temp of ["Warm", "Medium", "Cool"]) {
    for (const field of ["RGain", "GGain", "BGain", "ROffset", "GOffset", "BOffset"]) {
      colour.push(`Color-${temp}-${field}`);
    }
  }
  const tuner = ["Modulation-System", "Frequency", "Frequency-Offset", "Bandwidth", "Lock-Status",
                 "SNR", "Signal-Power", "Signal-Quality-Index", "Signal-Strength-Index",
                 "Bit-Error-Rate", "Uncorrected-Error"];
  const ROWS = {
    Version: ["Version-TVModel", "Version-TVModelID", "Version-ZYTAppVersion",
              "Version-BootCodeVersion", "Version-AppSWVersion", "Version-DPDD-Version",
              "Version-NeuSoft-Version", "Version-CESI-Version", "Version-IPRC-Version",
              "Version-DIAL-Version", "Version-IR-Blaster-DB", "Version-PQ-Version",
              "Version-PQ2-Version", "Version-PQ3-Version", "Version-PQ4-Version",
              "Version-FRC-Version", "Version-ASF-Version", "Version-ADAjustPAL",
              "Version-ADAjustNTSC", "Version-ADAjustCOMP", "Version-ADAjustRGB",
              "Version-ADAjustCVBS", "Version-EDID-VGA", "Version-EDID-HDMI1",
              "Version-CI+-Algorithm", "Version-EDID-HDMI2", "Product-Key-Valid",
              "Version-EDID-HDMI3", "Test-Key-Valid", "URI", "Version-CIPlusSerialNumber",
              "Version-CIPlusHostID", "Version-MainFormat", "Version-NetflixESN",
              "Version-WDVDeviceID", "Version-HDCP20", "Version-HDCP", "Version-DTCP-IP",
              "Version-Vudu", "Version-PVR", "Version-Serial-No", "Version-MACAddress",
              "Version-WLAN-MAC-Address", "Version-BlueTooth"],
    ColorTemperature: colour,
    PQ: ["PQ-Version", "PQ-Contrast", "PQ-Backlight", "PQ-DynaLight", "PQ-Brightness", "PQ-Color",
         "PQ-Tint", "PQ-Sharpness", "PQ-Dynamic-Contrast", "PQ-Cinema-Mode", "PQ-Cable-Clear",
         "PQ-MPEG-NR", "PQ-Picture-Size", "PQ-Auto-Aspect-Ratio"],
    Tuner: tuner.map((r) => "Tuner-" + r).concat([
      "Tuner-Modulation", "Tuner-Mode", "Tuner-Hierarchy-Alpha", "Tuner-Code-Rate",
      "Tuner-Code-Rate-LP", "Tuner-Guard-Interval", "Tuner-MISO-SISO", "Tuner-Number-of-PLPs",
      "Tuner-Current-PLP-ID", "Tuner-L1-Modulation", "Tuner-L1-Code-Rate",
      "Tuner-CPLP-Modulation", "Tuner-CPLP-Code-Rate", "Tuner-FEC-Type", "Tuner-PILOT",
      "Tuner-Mode-FFT", "Tuner-FEF", "Tuner-PAPR", "Tuner-Guard-Interval-T2",
      "Tuner-Modulation-DVBC", "Tuner-SymbolRate-DVBC"]),
    TunerDVBS: ["Modulation-System", "Frequency", "2nd-IF-Frequency", "Frequency-Offset",
                "Bandwidth", "Lock-Status", "SNR", "Signal-Power", "Signal-Quality-Index",
                "Signal-Strength-Index", "Bit-Error-Rate", "Uncorrected-Error", "Modulation",
                "Code-Rate", "Symbol-Rate", "Roll-Off", "LNB-Power", "LNB-System", "LNB-Number",
                "LNB-Band", "LNB-Polarity", "LNB-Ant-Error"].map((r) => `Tuner-${r}-DVBS`),
    TunerATSC: ["Modulation-System"].concat(tuner.slice(2, 8), tuner.slice(9))
      .map((r) => `Tuner-${r}-ATSC`),
  };
  Object.assign(ui.TITLES, { ReceiverInfo: "Receiver information" });
  Object.assign(ui.LABELS, {
    "Version-ADAjustPAL": "A/D adjust PAL", "Version-ADAjustNTSC": "A/D adjust NTSC",
    "Version-ADAjustCOMP": "A/D adjust COMP", "Version-ADAjustRGB": "A/D adjust RGB/PC",
    "Version-ADAjustCVBS": "A/D adjust CVBS", "Version-HDCP20": "HDCP 2.0 receiver ID",
    "Version-HDCP": "HDCP 2.0", "Version-DTCP-IP": "DTCP-IP", "Version-PVR": "PVR",
    "Version-Vudu": "Vudu", "Version-DPDD-Version": "DPDD version",
    "Version-NeuSoft-Version": "NeuSoft version", "Version-CESI-Version": "CESI version",
    "Version-IPRC-Version": "IPRC version", "Version-DIAL-Version": "DIAL version",
    "Version-IR-Blaster-DB": "IR blaster DB", "Version-PQ-Version": "PQ version",
    "Version-PQ2-Version": "PQ2 version", "Version-PQ3-Version": "PQ3 version",
    "Version-PQ4-Version": "PQ4 version", "Version-FRC-Version": "FRC version",
    "Version-ASF-Version": "ASF version", "PQ-Cable-Clear": "Cable Clear / DNR",
    "Tuner-SNR": "SNR [dB]", "Tuner-Signal-Power": "Signal power [dBm]",
    "Tuner-Frequency": "Frequency [MHz]", "Tuner-SNR-DVBS": "SNR [dB]",
    "Tuner-Frequency-DVBS": "Frequency [MHz]", "Tuner-Signal-Power-DVBS": "Signal power [dBm]",
  });

  const familyOf = (name) => (name.startsWith("Tuner") ? "Tuner" : name);

  ui.LAYOUTS.info = (page, name) => {
    page.el.classList.add("info");
    const family = familyOf(name);
    const tabs = page.el.appendChild(ui.el("div", "tabs"));
    for (const [key, text] of TABS) {
      tabs.appendChild(ui.el("span", key === family ? "current" : "", text)).dataset.tab = key;
    }
    const index = TABS.findIndex(([key]) => key === family);
    tabs.appendChild(ui.el("span", "where", index < 0 ? "" : `page ${index + 1} of 4`));
    if (family === "Tuner") {
      page.draws = 0;
      page.refresh = page.el.appendChild(ui.el("div", "refresh", "waiting for the tuner"));
    }
    page.body = page.el.appendChild(ui.el("table", "rows"));
    for (const cmd of ROWS[name] || []) ui.row(page, cmd).classList.add("empty");
    page.setRow = (cmd, data) => {
      const tr = ui.row(page, cmd);
      tr.classList.remove("empty");
      // The VGA row has no OK marker: its text says whether the EEPROM is good.
      if (cmd === "Version-EDID-VGA") {
        tr.cells[1].textContent = String(data);
        tr.classList.toggle("ng", String(data) === "VGA EEPROM NG");
        return true;
      }
      return false;
    };
  };

  // A new drawing of a one-shot page starts from empty rows, so that a row the page no
  // longer sends (a port that became good) does not keep its old verdict. The tuner
  // pages keep their values while the demodulator settles.
  const hideAll = ui.SPECIAL.HideAllUIExcept;
  ui.SPECIAL.HideAllUIExcept = (data) => {
    const name = String(data);
    if (["Version", "ColorTemperature", "PQ"].includes(name) && ui.pages.has(name)) {
      for (const tr of ui.pages.get(name).rows.values()) {
        tr.cells[1].textContent = "";
        tr.classList.remove("ok", "ng");
        tr.classList.add("empty");
      }
    }
    hideAll(data);
  };

  for (const name of ["Tuner", "TunerDVBS", "TunerATSC"]) {
    ui.SPECIAL[name] = (data) => {
      if (Number(data) !== 0) {
        const page = ui.getPage(name);
        page.draws += 1;
        page.el.dataset.draws = String(page.draws);
        page.refresh.textContent = `drawn ${page.draws} time${page.draws === 1 ? "" : "s"}, ` +
          `last at ${new Date().toLocaleTimeString()}; redraws every second while open`;
        page.refresh.classList.add("live");
      }
      ui.setPageVisible(name, Number(data) !== 0);
    };
  }
});
