#!/usr/bin/env bash
# Builds the libFuzzer harnesses (fuzz/) with clang 14 in build-fuzz/ and runs each
# for SECONDS (default 60) on its seed corpus, one after the other.
#   scripts/fuzz.sh [SECONDS] [HARNESS...]
# New inputs go to build-fuzz/corpus/<harness>/ (the seeds in fuzz/corpus stay as they
# are); a crash is saved as build-fuzz/crash-<harness>-* and ends the script with 1.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
seconds=${1:-60}
shift || true
"$root/scripts/install-deps.sh" --fuzz
build="$root/build-fuzz"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_C_COMPILER=clang-14 -DCMAKE_CXX_COMPILER=clang++-14 \
  -DVQ27_FUZZ=ON -DVQ27_SANITIZE=address,undefined -DVQ27_BUILD_TESTS=OFF -DVQ27_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" --target fuzzers
harnesses=("$@")
[ "${#harnesses[@]}" -eq 0 ] && harnesses=(ws_receive console_line set_file key_data at_record
                                           peq_record media_record)
status=0
for h in "${harnesses[@]}"; do
  mkdir -p "$build/corpus/$h"
  echo "== fuzz_$h: $seconds s"
  # -max_len: the server's 4 KiB bound and a little over; -close_fd_mask: the
  # library's console lines stay out; -rss_limit_mb: a leak shows; -timeout: one
  # input that runs over 10 s ends the run and is saved (a set in virtual time can
  # be driven into hours of timer ticks by one line).
  if ! (cd "$build" && ASAN_OPTIONS=detect_leaks=1 "$build/fuzz/fuzz_$h" \
          -max_total_time="$seconds" -timeout=10 -close_fd_mask=1 -max_len=8192 -rss_limit_mb=2048 \
          -print_final_stats=1 -artifact_prefix="$build/found-$h-" "$build/corpus/$h" "$root/fuzz/corpus/$h" \
          2>&1 | grep -E '^(#[0-9]+.*DONE|stat::number_of_executed_units|==[0-9]+==ERROR|SUMMARY|Done)' ); then
    :
  fi
  # A crash, a leak or running out of memory fails the run; a slow input is reported.
  if ls "$build/found-$h-"{crash,leak,oom}-* >/dev/null 2>&1; then
    echo "fuzz_$h: crash, leak or out-of-memory input saved in $build" >&2
    status=1
  elif ls "$build/found-$h-"timeout-* >/dev/null 2>&1; then
    echo "fuzz_$h: an input ran over 10 s (saved in $build as found-$h-timeout-*)" >&2
  fi
done
exit $status
