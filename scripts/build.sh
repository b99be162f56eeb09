#!/usr/bin/env bash
# scripts/build.sh PRESET [JOBS]: configures when needed, then builds.
set -euo pipefail
cd "$(dirname "$0")/.."
preset=$1
jobs=${2:-$(nproc)}
folder=build/$preset
[ "$preset" = ci ] && folder=build/release
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! cmake --preset "$preset" >"$log" 2>&1; then
  cat "$log" >&2
  exit 1
fi
cmake --build "$folder" -j "$jobs"
