#!/usr/bin/env bash
# The Debian packages of the host build: packs them (cpack in build/), checks them
# with lintian (errors fail), installs them into this machine with apt-get, builds a
# consumer with find_package(vq27_factory) and with pkg-config, runs it and the
# installed factory-sim, then removes the packages again.
#   tests/package/run.sh [BUILD]   default build/ (configured and built if needed)
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
build="${1:-$root/build}"
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
apt_get() { $sudo flock /tmp/apt.lock env DEBIAN_FRONTEND=noninteractive apt-get "$@"; }
command -v lintian >/dev/null || apt_get install -y -qq --no-install-recommends lintian

# Debian paths (multiarch libdir) need the /usr prefix.
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_INSTALL_PREFIX=/usr >/dev/null
cmake --build "$build" -j2 >/dev/null
out="$build/packages"
rm -rf "$out" && mkdir -p "$out"
(cd "$build" && cpack -G DEB -B "$out" >/dev/null)
debs=("$out"/*.deb)
echo "packages: ${debs[*]##*/}"
[ "${#debs[@]}" -eq 3 ] || { echo "FAIL: expected 3 packages" >&2; exit 1; }

# lintian: errors fail; what a proprietary, non-Debian package always draws is left out.
lintian --fail-on error --suppress-tags no-manual-page,initial-upload-closes-no-bugs \
  "${debs[@]}"

names=(libvq27-factory1 libvq27-factory-dev vq27-factory-sim)
cleanup() { apt_get purge -y -qq "${names[@]}" >/dev/null 2>&1 || true; rm -rf "$work"; }
work=$(mktemp -d)
trap cleanup EXIT
apt_get install -y -qq --no-install-recommends "${debs[@]}" >/dev/null

# The library's file name carries its SONAME.
multiarch=$(dpkg-architecture -qDEB_HOST_MULTIARCH)
test -f "/usr/lib/$multiarch/libvq27_factory.so.1.0.0"
test "$(readlink "/usr/lib/$multiarch/libvq27_factory.so.1")" = libvq27_factory.so.1.0.0

cmake -S "$root/tests/package/consumer" -B "$work/cmake" -G Ninja >/dev/null
cmake --build "$work/cmake" >/dev/null
test "$("$work/cmake/consumer")" = "factory mode 1"

# pkg-config: the .pc files of the -dev and factory-sim packages.
# shellcheck disable=SC2046
g++ -std=c++17 -o "$work/consumer-pc" "$root/tests/package/consumer/consumer.cpp" \
  $(pkg-config --cflags --libs vq27_factory vq27_platform_sim)
test "$("$work/consumer-pc")" = "factory mode 1"

# The installed factory-sim runs a script to its end and puts its page on the set.
port=$(python3 -c 'import socket; s=socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])')
printf 'wait 1\n' >"$work/s.fsim"
(cd "$work" && TMPDIR="$work" factory-sim --root root --port "$port" --control-port 0 --script s.fsim >/dev/null)
test -s "$work/root/applications/factory/factory-ui.html"
echo "ok: packages install, lintian is clean of errors, the consumer builds both ways"
