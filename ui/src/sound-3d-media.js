"use strict";
(function () {
  // The editors' arrows and coloured keys, beside the remote's own buttons (added
  // before the main script wires every data-key button to the control endpoint).
  const remote = document.getElementById("remote");
  for (const [key, text] of [["left", "Left"], ["right", "Right"], ["red", "Red"],
                             ["green", "Green"], ["yellow", "Yellow"], ["blue", "Blue"]]) {
    const button = document.createElement("button");
    button.dataset.key = key;
    button.textContent = text;
    if (key !== "left" && key !== "right") button.className = key;
    remote.appendChild(button);
  }

  (window.FactoryUIFamilies = window.FactoryUIFamilies || []).push((ui) => {
    const { el, LAYOUTS, TITLES } = ui;
    TITLES.PEQ = "PEQ";
    TITLES["3DTimingAdjust"] = "3D timing Adjust";
    TITLES.AudioADV = "Audio ADV";

    // One box per cmd; a value box shows the cmd's data, "<cmd>-highlight" frames it.
    function addItem(page, parent, cls, cmd, label, withValue) {
      const item = parent.appendChild(el("div", cls));
      item.dataset.cmd = cmd;
      if (label !== null) item.appendChild(el(withValue ? "b" : "span", "", label));
      if (withValue) item.value = item.appendChild(el("span", "", "--"));
      page.items[cmd] = item;
      return item;
    }
    function valueItems(page, list) {
      const box = page.el.appendChild(el("div", "editor"));
      for (const [cmd, label] of list) addItem(page, box, "item", cmd, label, true);
    }
    // The editor's own cmds; anything else goes to the page's table.
    function editorRows(page, extra) {
      return (cmd, data) => {
        if (extra && extra(cmd, data)) return true;
        const hl = /^(.*)-highlight$/.exec(cmd);
        if (hl && page.items[hl[1]]) {
          page.items[hl[1]].classList.toggle("hl", Number(data) === 1);
          return true;
        }
        const item = page.items[cmd];
        if (item && item.value) {
          item.value.textContent = String(data);
          return true;
        }
        return false;
      };
    }
    function start(page) {
      page.items = {};
    }
    function finish(page, extra) {
      page.body = page.el.appendChild(el("table", "rows"));
      page.setRow = editorRows(page, extra);
    }

    LAYOUTS.PEQ = (page) => {
      start(page);
      valueItems(page, [["PEQ-Band", "Band"], ["PEQ-Filter-Mode", "Filter mode"],
                        ["PEQ-f0", "f0 (Hz)"], ["PEQ-f0Div100", "f0 / 100"],
                        ["PEQ-QX10", "Q \u00d7 10"], ["PEQ-GainX10", "Gain \u00d7 10 (dB)"]]);
      finish(page);
    };

    LAYOUTS["3DTimingAdjust"] = (page) => {
      start(page);
      const title = page.el.querySelector("h2");
      const modes = page.el.appendChild(el("div", "modes"));
      addItem(page, modes, "", "3DTiming-DefaultMode", "Default", false);
      for (let i = 0; i < 4; i++) addItem(page, modes, "", "3DTiming-Mode" + i, "Mode " + i, false);
      valueItems(page, [["3DTiming-LOpen", "L open"], ["3DTiming-LClose", "L close"],
                        ["3DTiming-ROpen", "R open"], ["3DTiming-RClose", "R close"],
                        ["3DTiming-Duty", "Duty"], ["3DTiming-Shift", "Shift"]]);
      finish(page, (cmd, data) => {
        if (cmd !== "3DTiming-TitleFrequency") return false;
        title.textContent = String(data);
        return true;
      });
    };

    LAYOUTS.AudioADV = (page) => {
      start(page);
      valueItems(page, [["AudioADV-Param1", "Command"], ["AudioADV-Param2", "Parameter 1"],
                        ["AudioADV-Param3", "Parameter 2"]]);
      addItem(page, page.el, "adv-ok", "AudioADV-OK", "OK", false);
      const result = page.el.appendChild(el("div", "adv-result"));
      const resultTitle = result.appendChild(el("span", "adv-result-title", ""));
      result.appendChild(document.createTextNode(" "));
      const resultValue = result.appendChild(el("span", "adv-result-value", ""));
      finish(page, (cmd, data) => {
        if (cmd === "AudioADV-Result-Title") resultTitle.textContent = String(data);
        else if (cmd === "AudioADV-Result-Value") resultValue.textContent = String(data);
        else return false;
        return true;
      });
    };
  });
})();
