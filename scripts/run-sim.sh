#!/usr/bin/env bash
# Builds everything and starts factory-sim on the demo set; arguments go to factory-sim.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh"
cmake -S "$root" -B "$root/build" -G Ninja >/dev/null
cmake --build "$root/build" -j2
exec "$root/build/tools/factory-sim/factory-sim" "$@"
