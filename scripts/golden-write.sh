#!/usr/bin/env bash
# Rewrites the golden trace of every example (examples/golden/NAME.jsonl) from a run
# of the current build. Run it when a change of behaviour is meant, and commit the
# difference with the change.
#   scripts/golden-write.sh [BUILD_DIR]     (default: build)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build}
sim=$build/tools/factory-sim/factory-sim
[ -x "$sim" ] || { echo "no factory-sim at $sim: build first" >&2; exit 2; }
mkdir -p "$root/examples/golden"
for script in "$root"/examples/*.fsim; do
  name=$(basename "$script" .fsim)
  "$sim" --port 0 --control-port 0 --script "$script" \
    --golden-write "$root/examples/golden/$name.jsonl" >/dev/null
  echo "examples/golden/$name.jsonl: $(wc -l <"$root/examples/golden/$name.jsonl") events"
done
