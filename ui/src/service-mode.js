"use strict";
// The service-data editor: item name, address, value in hex and binary, whether the
// item may be changed, and which service mode (S or D) the remote put it in.
(window.FactoryUIFamilies = window.FactoryUIFamilies || []).push((ui) => {
  const { el, LAYOUTS } = ui;
  LAYOUTS.DMode = (page) => {
    page.el.classList.add("service");
    const head = page.el.appendChild(el("div", "service-head"));
    const sd = head.appendChild(el("span", "badge service-sd", "D"));
    const name = head.appendChild(el("div", "dmode-option service-name", ""));
    const grid = page.el.appendChild(el("div", "dmode"));
    const boxes = {};
    for (const [key, text, cls] of [["Addr", "Address", "service-addr"],
                                    ["Data", "Value", "service-hex value"],
                                    ["Bin", "Bits", "service-bin value"]]) {
      const box = grid.appendChild(el("div"));
      box.appendChild(el("b", "", text));
      boxes[key] = box.appendChild(el("span", "big " + cls, "--"));
    }
    const state = page.el.appendChild(el("div", "service-state"));
    const access = state.appendChild(el("span", "service-access", "editable"));
    const command = state.appendChild(el("span", "service-command", ""));
    page.body = page.el.appendChild(el("table", "rows"));
    page.setRow = (cmd, data) => {
      const text = String(data);
      if (cmd === "DMode-Option") {
        name.textContent = text;
      } else if (cmd === "DMode-Value-Color") {
        const editable = Number(data) !== 0;
        // The value is dimmed for old memory data, which the value keys leave alone.
        boxes.Data.classList.toggle("readonly", !editable);
        access.classList.toggle("locked", !editable);
        access.textContent = editable ? "editable" : "read-only";
      } else if (cmd.startsWith("DMode-") && boxes[cmd.slice(6)]) {
        boxes[cmd.slice(6)].textContent = text;
      } else if (cmd === "S-D") {
        sd.textContent = text;
        sd.classList.toggle("s-mode", text === "S");
      } else if (cmd === "S-Mode") {
        command.textContent = Number(data) !== 0 ? "mode selector" : "white balance";
      } else {
        return false;
      }
      return true;
    };
  };
});
