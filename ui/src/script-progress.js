"use strict";
(window.FactoryUIFamilies = window.FactoryUIFamilies || []).push((ui) => {
  const box = ui.el("section", "hidden");
  box.id = "script-progress";
  box.innerHTML = '<h3>Script</h3><div id="progress-script" class="dim"></div>' +
    '<div class="row"><span>Phase</span><span id="progress-phase"></span></div>' +
    '<div id="progress-line"></div>' +
    '<div id="progress-wait" class="hidden"><div id="progress-bar"><div></div></div>' +
    '<div class="row"><span id="progress-elapsed"></span><span id="progress-remaining"></span></div></div>' +
    '<div class="row"><span>Steps passed <b id="progress-passed">0</b></span>' +
    '<span>failed <b id="progress-failed">0</b></span></div>';
  document.querySelector("aside").prepend(box);
  const $ = (id) => document.getElementById(id);
  // The set's time: seconds below a minute, else h:mm:ss (a burn-in runs for hours).
  function duration(ms) {
    if (ms < 60000) return (ms / 1000).toFixed(1) + " s";
    const s = Math.floor(ms / 1000);
    const two = (n) => String(n).padStart(2, "0");
    return Math.floor(s / 3600) + ":" + two(Math.floor(s / 60) % 60) + ":" + two(s % 60);
  }
  async function poll() {
    let p = null;
    try {
      const answer = await ui.controlFetch("/progress", { method: "GET" });
      if (answer.ok) p = await answer.json();
    } catch (e) {
      // No endpoint: nothing runs a script here.
    }
    box.classList.toggle("hidden", !(p && p.running));
    if (p && p.running) {
      $("progress-script").textContent = p.script || "";
      $("progress-phase").textContent = p.phase || "-";
      $("progress-line").textContent = p.line ? "line " + p.line + ": " + p.text : "";
      $("progress-passed").textContent = String(p.passed);
      $("progress-failed").textContent = String(p.failed);
      $("progress-failed").classList.toggle("bad", p.failed > 0);
      $("progress-wait").classList.toggle("hidden", !p.wait);
      if (p.wait) {
        $("progress-elapsed").textContent = duration(p.wait.elapsedMs) + " elapsed";
        $("progress-remaining").textContent = duration(p.wait.remainingMs) + " left";
        const done = p.wait.totalMs > 0 ? p.wait.elapsedMs / p.wait.totalMs : 1;
        document.querySelector("#progress-bar > div").style.width = (100 * done).toFixed(1) + "%";
      }
    }
    setTimeout(poll, 500);
  }
  poll();
});
