#!/usr/bin/env bash
# Checks a set build of the library: every symbol it leaves undefined is declared in
# platform/include (the set's middleware provides it at load time) or comes from
# libc, libstdc++, libgcc, libwebsockets, json-c or DirectFB. Nothing from the sim.
#   scripts/check-set-symbols.sh [LIBRARY]   default: build-set/ (built if missing)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
lib="${1:-}"
if [ -z "$lib" ]; then
  cmake -S "$root" -B "$root/build-set" -G Ninja -DVQ27_PLATFORM=set >/dev/null
  cmake --build "$root/build-set" -j2 >/dev/null
  lib="$root/build-set/factorymanager/libvq27_factory.so"
fi
nm_tool="${NM:-nm}"
readelf_tool="${READELF:-readelf}"

# The libraries a set provides besides the middleware, by the names the linker records.
allowed_needed='^(libc|libm|libpthread|libdl|librt|libstdc\+\+|libgcc_s|ld-linux[-a-z0-9_.]*|libwebsockets|libjson-c|libdirectfb[-0-9.]*|libdirect[-0-9.]*|libfusion[-0-9.]*)\.so'
fail=0
while read -r needed; do
  if ! [[ "$needed" =~ $allowed_needed ]]; then
    echo "needs a library a set does not provide: $needed"
    fail=1
  fi
done < <("$readelf_tool" -d "$lib" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p')

# Which library each undefined symbol comes from: the versioned ones say it (GLIBC_,
# GLIBCXX_, CXXABI_, GCC_); the others must be a platform declaration or belong to
# libwebsockets, json-c or DirectFB, whose names have their own prefixes.
platform_names=$(mktemp)
trap 'rm -f "$platform_names"' EXIT
# Every identifier the platform headers declare (classes, functions, globals).
cat "$root"/platform/include/*.h | grep -oE '[A-Za-z_][A-Za-z0-9_]*' | sort -u >"$platform_names"

while read -r mangled; do
  name="${mangled%%@*}"
  version="${mangled#*@}"
  [ "$version" != "$mangled" ] && case "$version" in
    GLIBC_* | GLIBCXX_* | CXXABI_* | GCC_*) continue ;;
  esac
  case "$name" in
    lws_* | _lws_* | json_* | DirectFB* | Direct* | direct_* | fusion_* | dfb_*) continue ;;
    # Weak references the C runtime and the toolchain may leave (never required).
    __gmon_start__ | _ITM_* | __cxa_finalize | _Jv_RegisterClasses) continue ;;
  esac
  demangled=$(echo "$name" | c++filt)
  # A C++ symbol: its outermost scope (class or namespace) or its function name must be
  # declared by the platform; a C symbol: its own name.
  scope=$(echo "$demangled" | sed -E 's/^(typeinfo|vtable|typeinfo name|VTT|construction vtable) for //; s/\(.*//; s/<.*//; s/\[abi:[^]]*\]//g' |
          awk -F'::' '{print $1}')
  if grep -qxF "$scope" "$platform_names"; then
    continue
  fi
  echo "undefined and not the platform's: $demangled"
  fail=1
done < <("$nm_tool" -D --undefined-only "$lib" | awk '{print $NF}')

if [ "$fail" -ne 0 ]; then
  echo "FAIL: $lib leaves symbols to a set that no set provides" >&2
  exit 1
fi
echo "ok: every undefined symbol of $lib is the platform's or a system library's"
