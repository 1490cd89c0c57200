#!/usr/bin/env bash
# Installs what the build and factory-sim need (Debian packages, with apt-get).
#   scripts/install-deps.sh          build and factory-sim only; no network once installed
#   scripts/install-deps.sh --tests  also what the tests need: node, npm, Chromium and
#                                    the browser-test packages (npm ci)
#   scripts/install-deps.sh --fuzz   also clang 14 and its libFuzzer runtime (scripts/fuzz.sh)
# Safe to run again.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
tests=0
fuzz=0
case "${1:-}" in
  "") ;;
  --tests) tests=1 ;;
  --fuzz) fuzz=1 ;;
  *) echo "usage: $0 [--tests | --fuzz]" >&2; exit 2 ;;
esac

packages=(cmake ninja-build g++ pkg-config libgtest-dev libgmock-dev libbenchmark-dev
  libwebsockets-dev libjson-c-dev libdirectfb-dev libdirectfb-extra fonts-dejavu-core libpng-dev
  libcli11-dev)
# tzdata: the time-zone tables are checked against the system's zone database.
[ "$tests" -eq 1 ] && packages+=(chromium nodejs npm tzdata)
[ "$fuzz" -eq 1 ] && packages+=(clang-14 libclang-rt-14-dev)

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
  # One apt-get at a time on a machine that builds several trees at once.
  lock=(flock /tmp/apt.lock)
  command -v flock >/dev/null || lock=()
  $sudo "${lock[@]}" apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo "${lock[@]}" apt-get install -y -qq --no-install-recommends "${wanted[@]}"
fi

# The browser tests' packages, only for the tests; npm says what went wrong if it fails.
if [ "$tests" -eq 1 ] && [ ! -d "$root/tests/browser/node_modules/playwright-core" ]; then
  (cd "$root/tests/browser" && npm ci --no-audit --no-fund)
fi
