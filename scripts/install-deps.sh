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
           libdirectfb-dev libdirectfb-extra libgtest-dev libgmock-dev libpng-dev; do
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
# A target library that is Multi-Arch: same must have the very version of its host
# twin, and the index may not offer the host's version for the target: a host
# older than its index, or a foreign architecture's security index that failed to
# download (a mirror in sync). apt is told (a preferences file) to take the host's
# version for a twin where the target has it, and otherwise the target's newest
# version for both twins (the host's copy is changed only if the install needs
# that twin; then it may go down to the release's version). New packages come
# from the release first, as only its index is sure for both architectures. What
# still cannot be planned stops here with apt's reason.
# Sets apt_opts and pin_work (to remove).
pin_to_host() {
  local host_arch prefs plan work
  host_arch=$(dpkg --print-architecture)
  work=$(mktemp -d)
  pin_work=$work
  prefs="$work/preferences.d"
  mkdir "$prefs"
  apt_opts=(-o "Dir::Etc::PreferencesParts=$prefs" -t "$(. /etc/os-release && echo "$VERSION_CODENAME")")
  dpkg-query -W -f='${Architecture} ${Package} ${Version} ${Multi-Arch} ${db:Status-Abbrev}\n' |
    awk -v a="$host_arch" '$1 == a && $4 == "same" && $5 == "ii" { print $2, $3 }' >"$work/host"
  # The versions the index offers each twin, newest first ("name:arch | version | from").
  apt-cache madison $(awk -v t="$target" '{ print $1 ":" t }' "$work/host") 2>/dev/null |
    awk -v t="$target" -v h="$host_arch" -F' *[|] *' '
      FNR == NR { split($0, f, " "); host[f[1]] = f[2]; next }
      { name = $1; sub(/^ */, "", name); sub(/:.*/, "", name)
        if (!(name in newest)) newest[name] = $2
        offered[name, $2] = 1 }
      END {
        for (p in host) {
          if ((p, host[p]) in offered) {
            printf "Package: %s:%s\nPin: version %s\nPin-Priority: 1001\n\n", p, t, host[p]
          } else if (p in newest) {
            printf "Package: %s:%s %s:%s\nPin: version %s\nPin-Priority: 1001\n\n", p, h, p, t, newest[p]
          }
        }
      }' "$work/host" - >"$prefs/twins.pref"
  if ! plan=$(apt-get "${apt_opts[@]}" install -s -qq --no-install-recommends --allow-downgrades "$@" 2>&1); then
    echo "$0: the $target packages cannot be installed at the versions of their host twins" \
      "(Multi-Arch: same). apt says:" >&2
    echo "$plan" >&2
    return 1
  fi
  # Say which host packages change version with their twins.
  echo "$plan" | awk -v h=":$(dpkg --print-architecture)" '$1 == "Inst" && $3 ~ /^\[/ && $2 !~ /:/ { print "  host package changes with its twin: " $2, $3, $4 }'
  return 0
}

if [ "${#wanted[@]}" -gt 0 ]; then
  echo "installing: ${wanted[*]}"
  # An index that fails to download (a mirror in sync) is reported, not fatal; the
  # install below says what it then cannot find.
  apt_get update -qq || true
  apt_opts=()
  [ -n "$target" ] && pin_to_host "${wanted[@]}"
  DEBIAN_FRONTEND=noninteractive apt_get "${apt_opts[@]}" install -y -qq --no-install-recommends \
    --allow-downgrades "${wanted[@]}"
  if [ -n "${pin_work:-}" ]; then rm -rf "$pin_work"; fi
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
