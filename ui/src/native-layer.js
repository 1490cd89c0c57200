"use strict";
(window.FactoryUIFamilies = window.FactoryUIFamilies || []).push((ui) => {
  const layer = ui.el("img", "hidden");
  layer.id = "native-layer";
  layer.alt = "";
  document.querySelector("main").appendChild(layer);
  let version = "0";
  let url = null;
  async function poll() {
    try {
      const answer = await ui.controlFetch("/native.png?since=" + version, { method: "GET" });
      if (answer.status === 200) {
        // An empty answer: the set hid its layer.
        const blob = await answer.blob();
        if (url) URL.revokeObjectURL(url);
        url = blob.size > 0 ? URL.createObjectURL(blob) : null;
        if (url) layer.src = url;
        layer.classList.toggle("hidden", !url);
        version = answer.headers.get("X-Native-Version") || version;
      }
    } catch (e) {
      // No endpoint (a set, or factory-sim without one): the set shows the layer itself.
    }
    setTimeout(poll, 250);
  }
  poll();
});
