#!/usr/bin/env bash
# Installs everything the build, the tests and factory-sim need: Debian packages
# with apt-get, the browser-test packages with npm. Safe to run again.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)

packages=(cmake ninja-build g++ pkg-config git libgtest-dev libgmock-dev libbenchmark-dev
  libwebsockets-dev libjson-c-dev libdirectfb-dev libdirectfb-extra fonts-dejavu-core
  chromium nodejs npm tzdata)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
# A machine that already has Node.js from elsewhere needs no Debian nodejs/npm.
if command -v node >/dev/null && command -v npm >/dev/null; then
  missing=("${missing[@]/nodejs/}")
  missing=("${missing[@]/npm/}")
fi
wanted=()
for p in "${missing[@]}"; do [ -n "$p" ] && wanted+=("$p"); done

if [ "${#wanted[@]}" -gt 0 ]; then
  sudo=""
  [ "$(id -u)" -ne 0 ] && sudo="sudo"
  echo "installing: ${wanted[*]}"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${wanted[@]}" >/dev/null
fi

if [ -f "$root/tests/browser/package.json" ]; then
  (cd "$root/tests/browser" && { [ -f package-lock.json ] && npm ci --no-audit --no-fund --silent ||
    npm install --no-audit --no-fund --silent; })
fi
