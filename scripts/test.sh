#!/usr/bin/env bash
# Builds everything and runs all tests.
#   scripts/test.sh                                  normal build in build/
#   scripts/test.sh --sanitize address,undefined     the same with ASan and UBSan in build-address-undefined/
#   scripts/test.sh --sanitize thread --tests REGEX  ThreadSanitizer, only the matching tests
#   scripts/test.sh --target armhf|arm64             cross build in build-armhf/ (build-arm64/),
#                                                    the suite under qemu-user, without the
#                                                    benchmarks; the browser tests stay with
#                                                    the host build (README, "On a set")
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
sanitize=""
tests=""
target=""
while [ $# -gt 0 ]; do
  case "$1" in
    --sanitize) sanitize="$2"; shift 2 ;;
    --tests) tests="$2"; shift 2 ;;
    --target) target="$2"; shift 2 ;;
    *) echo "usage: $0 [--sanitize LIST] [--tests REGEX] [--target armhf|arm64]" >&2; exit 2 ;;
  esac
done

build="$root/build"
config=(-DVQ27_SANITIZE="$sanitize")
if [ -n "$target" ]; then
  [ -n "$sanitize" ] && { echo "$0: --target builds without sanitizers" >&2; exit 2; }
  "$root/scripts/install-deps.sh" --target "$target"
  build="$root/build-$target"
  config=(-DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchain-$target.cmake" -DVQ27_BUILD_BENCH=OFF)
else
  "$root/scripts/install-deps.sh" --tests
fi

[ -n "$sanitize" ] && build="$root/build-${sanitize//,/-}"
cmake -S "$root" -B "$build" -G Ninja "${config[@]}" >/dev/null
cmake --build "$build" -j2

export ASAN_OPTIONS="${ASAN_OPTIONS:-abort_on_error=0:detect_leaks=1}"
[ -f "$root/tests/lsan.supp" ] && export LSAN_OPTIONS="suppressions=$root/tests/lsan.supp:print_suppressions=0"
[ -f "$root/tests/tsan.supp" ] && export TSAN_OPTIONS="suppressions=$root/tests/tsan.supp:halt_on_error=1"
args=(--test-dir "$build" --output-on-failure -j2)
[ -n "$tests" ] && args+=(-R "$tests")
status=0
ctest "${args[@]}" || status=$?

# Tests against code, in physical lines of the tracked files (images and the golden
# traces, which are recorded data, left out).
lines() {
  git -C "$root" ls-files -- "$@" | grep -viE '\.(png|jpe?g|gif|bmp)$|^examples/golden/' |
    (cd "$root" && xargs -d '\n' cat) | wc -l
}
tests_lines=$(lines tests)
code_lines=$(lines factorymanager platform tools ui bench scripts cmake CMakeLists.txt .ci examples)
awk -v t="$tests_lines" -v c="$code_lines" \
  'BEGIN { printf "tests/code: %d / %d lines = %.2f\n", t, c, t / c }'
exit $status
