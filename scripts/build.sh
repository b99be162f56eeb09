#!/usr/bin/env bash
# scripts/build.sh PRESET [JOBS [TARGET...]]: configures, then builds (everything when no target is named).
set -euo pipefail
cd "$(dirname "$0")/.."
preset=$1
jobs=${2:-$(nproc)}
shift $(($# < 2 ? $# : 2))
folder=build/$preset
[ "$preset" = ci ] && folder=build/release
if ! log=$(cmake --preset "$preset" 2>&1); then
  echo "$log" >&2
  exit 1
fi
if [ $# -gt 0 ]; then
  cmake --build "$folder" -j "$jobs" --target "$@"
else
  cmake --build "$folder" -j "$jobs"
fi
