#!/usr/bin/env bash
# The library's footprint per architecture: the stripped library's size, the resident
# memory it adds to a host process (after construction, after the UI page connected,
# after NOTIFICATIONS notifications) and the wake-ups of its threads while the server
# idles IDLE seconds. ARM runs under qemu-user: its memory figures include what qemu
# maps for the code the library runs (deltas are taken, qemu's own base is left out).
#   bench/footprint.sh [ARCH...] [-n NOTIFICATIONS] [-i IDLE_SECONDS]
#   ARCH: amd64 (build/), armhf (build-armhf/), arm64 (build-arm64/); default all three
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
arches=()
count=100000
idle=60
while [ $# -gt 0 ]; do
  case "$1" in
    -n) count="$2"; shift 2 ;;
    -i) idle="$2"; shift 2 ;;
    amd64 | armhf | arm64) arches+=("$1"); shift ;;
    *) echo "usage: $0 [amd64|armhf|arm64]... [-n NOTIFICATIONS] [-i IDLE_SECONDS]" >&2; exit 2 ;;
  esac
done
[ "${#arches[@]}" -eq 0 ] && arches=(amd64 armhf arm64)

printf '| arch | stripped library | RSS after construction | after page connected | after %s notifications | threads started with it | their wake-ups, idle |\n' "$count"
printf '|---|---|---|---|---|---|---|\n'
for arch in "${arches[@]}"; do
  case "$arch" in
    amd64) build="$root/build"; config=(); strip=strip; run=() ;;
    armhf) build="$root/build-armhf"; strip=arm-linux-gnueabihf-strip
           config=(-DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchain-armhf.cmake")
           # Under qemu, DirectFB reads its module folders through the preloaded
           # library the armhf tests use (README, "On a set").
           run=(qemu-arm -L / -E "LD_PRELOAD=$build/emulator/libvq27_qemu_readdir32.so") ;;
    arm64) build="$root/build-arm64"; strip=aarch64-linux-gnu-strip
           config=(-DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchain-arm64.cmake")
           run=(qemu-aarch64 -L /) ;;
  esac
  [ "$arch" != amd64 ] && "$root/scripts/install-deps.sh" --target "$arch" >/dev/null
  cmake -S "$root" -B "$build" -G Ninja "${config[@]}" -DVQ27_BUILD_BENCH=ON >/dev/null
  targets=(vq27_factory vq27_footprint)
  [ "$arch" = armhf ] && targets+=(vq27_qemu_readdir32)
  cmake --build "$build" -j2 --target "${targets[@]}" >/dev/null
  lib=$(readlink -f "$build/factorymanager/libvq27_factory.so")
  stripped=$(mktemp)
  "$strip" --strip-unneeded -o "$stripped" "$lib"
  size=$(stat -c %s "$stripped")
  rm -f "$stripped"
  out=$(cd "$build" && TMPDIR=$(mktemp -d) "${run[@]}" "$build/bench/vq27_footprint" "$count" "$idle")
  field() { echo "$out" | awk -v k="$1" '$1 == k {$1 = ""; sub(/^ /, ""); print}'; }
  printf '| %s | %d KB | %s KiB | %s KiB | %s KiB | %s | %s |\n' "$arch" $((size / 1024)) \
    "$(field rss_constructed_kib)" "$(field rss_connected_kib)" "$(field rss_notified_kib)" \
    "$(field library_threads)" "$(field idle_wakeups)"
done
