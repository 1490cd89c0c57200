#!/usr/bin/env bash
# Installs what the build and factory-sim need (Debian packages, with apt-get).
#   scripts/install-deps.sh          build and factory-sim only; no network once installed
#   scripts/install-deps.sh --tests  also what the tests need: node, npm, Chromium and
#                                    the browser-test packages (npm ci)
#   scripts/install-deps.sh --fuzz   also clang 14 and its libFuzzer runtime (scripts/fuzz.sh)
#   scripts/install-deps.sh --target armhf|arm64
#                                    the cross compiler, the target's libraries (multiarch)
#                                    and qemu-user, for a cross build and its tests
# Safe to run again.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
tests=0
fuzz=0
target=""
case "${1:-}" in
  "") ;;
  --tests) tests=1 ;;
  --fuzz) fuzz=1 ;;
  --target) target="${2:-}"; tests=1 ;;
  *) echo "usage: $0 [--tests | --fuzz | --target armhf|arm64]" >&2; exit 2 ;;
esac
case "$target" in
  "") ;;
  armhf) triplet=arm-linux-gnueabihf ;;
  arm64) triplet=aarch64-linux-gnu ;;
  *) echo "$0: unknown target '$target' (armhf or arm64)" >&2; exit 2 ;;
esac
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
# One apt at a time on a shared machine.
apt_get() { $sudo flock /tmp/apt.lock apt-get "$@"; }

packages=(cmake ninja-build g++ pkg-config libgtest-dev libgmock-dev libbenchmark-dev
  libwebsockets-dev libjson-c-dev libdirectfb-dev libdirectfb-extra fonts-dejavu-core libpng-dev
  libcli11-dev)
# tzdata: the time-zone tables are checked against the system's zone database.
[ "$tests" -eq 1 ] && packages+=(chromium nodejs npm tzdata)
[ "$fuzz" -eq 1 ] && packages+=(clang-14 libclang-rt-14-dev)
# Debian 12's libwebsockets-dev is not co-installable across architectures (its
# lws_config.h differs): the target gets the runtime and the dev package's
# dependencies here, the headers are unpacked into .cross/ below.
if [ -n "$target" ]; then
  packages+=("crossbuild-essential-$target" qemu-user)
  for p in libwebsockets17 libssl-dev libev-dev libuv1-dev zlib1g-dev libcap-dev libjson-c-dev \
           libdirectfb-dev libgtest-dev libgmock-dev libpng-dev; do
    packages+=("$p:$target")
  done
fi

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

if [ -n "$target" ] && ! dpkg --print-foreign-architectures | grep -qx "$target"; then
  $sudo dpkg --add-architecture "$target"
fi
if [ "${#wanted[@]}" -gt 0 ]; then
  echo "installing: ${wanted[*]}"
  # An index that fails to download (a mirror in sync) is reported, not fatal; the
  # install below says what it then cannot find.
  apt_get update -qq || true
  # -t bookworm: a target library must have the very version of its host twin
  # (multiarch), and a point release has both where a security update may not yet.
  release=()
  [ -n "$target" ] && release=(-t "$(. /etc/os-release && echo "$VERSION_CODENAME")")
  DEBIAN_FRONTEND=noninteractive apt_get install -y -qq --no-install-recommends --allow-downgrades \
    "${release[@]}" "${wanted[@]}"
fi

# The target's libwebsockets headers and pkg-config file, beside the host's.
if [ -n "$target" ]; then
  cross="$root/.cross/$target"
  if [ ! -f "$cross/usr/include/lws_config.h" ]; then
    tmp=$(mktemp -d) && chmod 755 "$tmp"
    (cd "$tmp" && apt-get download -qq "libwebsockets-dev:$target")
    rm -rf "$cross" && mkdir -p "$cross"
    dpkg-deb -x "$tmp"/libwebsockets-dev_*.deb "$cross"
    rm -rf "$tmp"
    lib="$cross/usr/lib/$triplet"
    ln -sfn "/usr/lib/$triplet/libwebsockets.so.17" "$lib/libwebsockets.so"
    sed -i "s|^prefix=.*|prefix=\"$cross/usr\"|" "$lib/pkgconfig/libwebsockets.pc"
  fi
fi

# The browser tests' packages, only for the tests; npm says what went wrong if it fails.
if [ "$tests" -eq 1 ] && [ ! -d "$root/tests/browser/node_modules/playwright-core" ]; then
  (cd "$root/tests/browser" && npm ci --no-audit --no-fund)
fi
