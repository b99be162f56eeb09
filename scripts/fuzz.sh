#!/usr/bin/env bash
# scripts/fuzz.sh [SECONDS]: runs each fuzz target that long, starting from sample data; stops at the first fault.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
bin=build/fuzz/bin
seeds=build/fuzz/seeds
"$bin/make_sample_data" "$seeds/raw" >/dev/null
mkdir -p "$seeds/start"
for file in "$seeds"/raw/*.txt; do head -c 3000 "$file" >"$seeds/start/$(basename "$file")"; done
printf '[Genel]\r\nDataDirectory=/data/\r\n[Options]\r\n21=TURKCE\r\n' >"$seeds/start/settings"
printf '01/10/2023\t01:00\t123\t\r\n01/10/2023\t02:00\t124.5\t7\r\n' >"$seeds/start/changes"
for target in "$bin"/*_fuzz; do
  name=$(basename "$target")
  echo "== $name, $seconds s"
  mkdir -p "build/fuzz/corpus/$name"
  "$target" -max_total_time="$seconds" -max_len=8192 -timeout=10 -rss_limit_mb=2048 -print_final_stats=0 -verbosity=0 \
    -artifact_prefix="build/fuzz/$name-" "build/fuzz/corpus/$name" "$seeds/start"
done
echo "fuzz: nothing found"
