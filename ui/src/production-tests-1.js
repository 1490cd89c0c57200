"use strict";
(window.FactoryUIFamilies = window.FactoryUIFamilies || []).push((ui) => {
  // Command keys of the timed setting pages and shipout, and the page each belongs to:
  // the key with "-Show" 0 closes that page.
  const CLOSES = {
    "Set-Speaker-SNC": "SpeakerSNC", "Set-Speaker-IEC": "SpeakerIEC",
    "Set-Speaker-GW": "SpeakerGW", "Set-Speaker-Estec": "SpeakerEstec",
    "Set-Store-None": "SetStoreNone", "Set-Store-Best-Buy": "SetStoreBestBuy",
    "Set-Store-Costco": "SetStoreCostco", "Set-Store-Walmart": "SetStoreWalmart",
    "Shipout-Setting": "ShipoutSetting", "Full-Power-Mode": "FullPowerMode",
    "Clear-Power-On-Time": "ClearPowerOnTime", "HDMI-ARC-Output": "HDMIArcOutput",
    "Network-Default-MAC": "NetworkDefaultMAC", "WP": "WriteProtect",
    "Default-IP-Address": "DefaultIPAddress", "OverCurrent-USB": "OverCurrentUSBOut",
    "Digital-Audio-Out": "DigitalAudioOut", "Temp-IO-Check": "TempIOCheck",
    "White-Window-ON": "WhiteWindowON", "ADC-Adjustment-OK": "ADCAdjustment",
    "ADC-Adjustment-NG": "ADCAdjustment", "WriteVGA_EDID_EEPRPOM": "VGA_EDID_EEPROM",
    "DLNA-Test-show": "DLNATest", "MACaddressCheck_Finish": "MAC_Chk",
  };
  Object.assign(ui.TITLES, {
    SpeakerSNC: "Speaker type SNC", SpeakerIEC: "Speaker type IEC", SpeakerGW: "Speaker type GW",
    SpeakerEstec: "Speaker type Estec", SetStoreNone: "Store profile", SetStoreBestBuy: "Store profile",
    SetStoreCostco: "Store profile", SetStoreWalmart: "Store profile",
    ShipoutSetting: "Shipout setting", FullPowerMode: "Full power mode",
    ClearPowerOnTime: "Power-on time", HDMIArcOutput: "HDMI ARC output",
    NetworkDefaultMAC: "Default MAC/IP", WriteProtect: "Write protect",
    DefaultIPAddress: "Default IP address", OverCurrentUSBOut: "USB over-current",
    DigitalAudioOut: "Digital audio out", TempIOCheck: "Temperature I/O check",
    WhiteWindowON: "White window code", ADCAdjustment: "ADC adjustment",
    VGA_EDID_EEPROM: "VGA EDID", WLANTest: "Wireless LAN test", WOWonWLANTest: "Wake on WLAN",
    DLNATest: "Wired LAN test", MAC_Chk: "Wireless MAC address", WLANAPScan: "WLAN access points",
  });

  // A page with one large verdict line (OK in green, NG in red) above its rows.
  function verdictPage(page) {
    page.verdict = page.el.appendChild(ui.el("div", "verdict", ""));
    page.body = page.el.appendChild(ui.el("table", "rows"));
  }
  function setVerdict(page, text, kind) {
    page.verdict.textContent = text;
    page.verdict.className = "verdict" + (kind ? " " + kind : "");
    page.state = kind || text;
  }
  function close(name, data) {
    if (typeof data === "number" && data === 0) ui.setPageVisible(name, false);
  }
  for (const [key, name] of Object.entries(CLOSES)) {
    ui.SPECIAL[key.endsWith("-show") ? key : key + "-Show"] = (data) => close(name, data);
  }

  ui.LAYOUTS.ADCAdjustment = (page) => {
    verdictPage(page);
    page.setRow = (cmd, data) => {
      if (cmd !== "ADC-Adjustment") return false;
      const v = Number(data);
      if (v === 0) setVerdict(page, "ADC adjusting");
      else if (v === 1) setVerdict(page, "ADC OK", "ok");
      else if (v === 2) setVerdict(page, "ADC NG", "ng");
    };
  };
  ui.LAYOUTS.VGA_EDID_EEPROM = (page) => {
    verdictPage(page);
    setVerdict(page, "VGA EDID writing");
    page.setRow = (cmd, data) => {
      if (cmd !== "WriteVGA_EDID_EEPRPOM") return false;
      const v = Number(data);
      if (v === 0) setVerdict(page, "VGA EDID writing");
      else if (v === 1) setVerdict(page, "VGA EDID OK", "ok");
      else setVerdict(page, "VGA EDID NG", "ng");
    };
  };

  // The wireless page shows one state at a time.
  ui.LAYOUTS.WLANTest = (page) => {
    verdictPage(page);
    page.setRow = (cmd, data) => {
      const text = String(data);
      if (cmd === "WLANTest-OK-RSSI") setVerdict(page, "WLAN OK", "ok");
      else if (cmd === "WLANTest-NG-RSSI") setVerdict(page, "WLAN NG", "ng");
      else if (cmd === "WLANTest-TEST-RSSI") setVerdict(page, "WLAN testing");
      else if (cmd === "WLAN-PREPARING-RSSI") setVerdict(page, "WLAN preparing");
      else return false;
      if (cmd.endsWith("-RSSI") && text !== "") ui.row(page, "RSSI").cells[1].textContent = text;
    };
  };
  // The testing and preparing panels give way to the next state; closing the OK or
  // NG panel while it is the one shown closes the page.
  ui.SPECIAL["WLANTest-Show"] = () => {};
  ui.SPECIAL["WLANPrepare-Show"] = () => {};
  for (const [panel, state] of [["WLANTest-OK", "ok"], ["WLANTest-NG", "ng"]]) {
    ui.SPECIAL[panel + "-Show"] = (data) => {
      const page = ui.pages.get("WLANTest");
      if (page && data === 0 && page.state === state) ui.setPageVisible("WLANTest", false);
    };
  }
  ui.SPECIAL["WLANTest-NG-Error"] = (data) => {
    const page = ui.getPage("WLANTest");
    ui.row(page, "Error").cells[1].textContent = String(data);
  };

  ui.LAYOUTS.WOWonWLANTest = verdictPage;
  const wowPanel = { "WOWTest-Testing": "", "WOWTest-OK": "ok", "WOWTest-NG": "ng" };
  for (const [panel, kind] of Object.entries(wowPanel)) {
    ui.SPECIAL[panel + "-Show"] = (data) => {
      const page = ui.getPage("WOWonWLANTest");
      if (typeof data === "string") return setVerdict(page, data, kind);
      if (data !== 0) return;
      if (kind === "") {
        if (page.state !== "ok" && page.state !== "ng") setVerdict(page, "");
      } else if (page.state === kind) {
        ui.setPageVisible("WOWonWLANTest", false);
      }
    };
  }

  // Shipout: the region's writing text, then its result.
  for (const name of ["USAShipout", "CanadaShipout", "MexicoShipout", "UKShipout", "FranceShipout",
                      "ContinentalShipout", "RussiaShipout", "NordicShipout", "AustrariaShipout"]) {
    ui.TITLES[name] = "Shipout";
    ui.LAYOUTS[name] = (page) => {
      verdictPage(page);
      page.setRow = (cmd, data) => {
        if (!cmd.endsWith("-Shipout")) return false;
        const text = String(data);
        setVerdict(page, text, /Finished|OK$/.test(text) ? "ok" : "");
      };
    };
  }

  ui.LAYOUTS.WLANAPScan = (page) => {
    verdictPage(page);
    page.list = page.el.appendChild(ui.el("table", "ap-list"));
    page.setRow = (cmd, data) => {
      const text = String(data);
      if (cmd === "WLAN-AP-Scan") {
        if (text === "Scanning") page.list.textContent = "";
        setVerdict(page, text);
      } else if (cmd === "WLAN-AP-Row") {
        const [ssid, signal] = text.split("\t");
        const tr = page.list.appendChild(ui.el("tr"));
        tr.appendChild(ui.el("td", "ssid", ssid));
        tr.appendChild(ui.el("td", "signal", signal || ""));
      } else {
        return false;
      }
    };
  };
});
