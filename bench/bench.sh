#!/usr/bin/env bash
# bench/bench.sh: daily values of 100 one-year files against one mawk script and pandas, on one core. The results are
# compared before anything is timed. Times are processor time, so that other work on the machine disturbs little. Then the benchmarks of the libraries.
set -euo pipefail
cd "$(dirname "$0")/.."
bin=${VESK_BENCH_BIN:-build/bench/bin}
work=build/bench/data
many=$work/100
few=$work/10
export LC_ALL=C
one_core="taskset -c 0"
command -v taskset >/dev/null || one_core=""

[ -d "$many" ] || "$bin/make_sample_data" --bulk 100 "$many" >/dev/null
[ -d "$few" ] || "$bin/make_sample_data" --bulk 10 "$few" >/dev/null
cat "$many"/*.txt >/dev/null # the files are in memory for everybody

ours() { "$bin/vesk4-batch" daily "$1" --all; }
mawk_script() { mawk -f bench/daily.awk "$1"/*.txt; }
pandas_script() { /usr/bin/python3 bench/daily_pandas.py "$1"; }

echo "== the same results first (10 files)"
ours "$few" | tail -n +2 >"$work/ours.csv"
mawk_script "$few" >"$work/mawk.csv"
pandas_script "$few" >"$work/pandas.csv"
cmp "$work/ours.csv" "$work/mawk.csv"
cmp "$work/ours.csv" "$work/pandas.csv"
echo "equal: $(wc -l <"$work/ours.csv") station-days"

# best_of RUNS COMMAND...: seconds of processor time of the fastest run
best_of() {
  local runs=$1 TIMEFORMAT='%3U %3S'
  shift
  for _ in $(seq "$runs"); do
    { time $one_core "$@" >/dev/null 2>&1; } 2>&1
  done | awk '{ seconds = $1 + $2; if (NR == 1 || seconds < best) best = seconds } END { print best }'
}

megabytes=$(du -cb "$many"/*.txt | awk 'END{printf "%.1f", $1 / 1e6}')
ours100=$(best_of 9 "$bin/vesk4-batch" daily "$many" --all --jobs 1)
ours10=$(best_of 9 "$bin/vesk4-batch" daily "$few" --all --jobs 1)
start=$(best_of 9 "$bin/vesk4-batch" --version)
awk100=$(best_of 3 mawk -f bench/daily.awk "$many"/*.txt)
pandas10=$(best_of 1 /usr/bin/python3 bench/daily_pandas.py "$few")
memory=$(/usr/bin/time -f %M "$bin/vesk4-batch" daily "$many" --all --jobs 1 2>&1 >/dev/null)
pandas100=$(awk "BEGIN{print $pandas10 * 10}")

echo "== daily --all, 100 files x 35,040 readings, $megabytes MB, one core"
awk -v o="$ours100" -v o10="$ours10" -v s="$start" -v a="$awk100" -v p="$pandas100" -v mb="$megabytes" -v kb="$memory" 'BEGIN {
  printf "%-28s %8.3f s %9.1f MB/s   of which %.3f s to start\n", "vesk4-batch", o, mb / o, s
  printf "%-28s %8.2f s %9.1f MB/s   %.1f times as long (goal: 14)\n", "mawk", a, mb / a, a / o
  printf "%-28s %8.2f s %9.1f MB/s   %.1f times as long (goal: 40)\n", "pandas (10 files x 10)", p, mb / p, p / o
  printf "time a file, 100 files over 10: %.2f (goal: at most 1.2)\n", (o / 100) / (o10 / 10)
  printf "memory: %.1f MB\n", kb / 1024
}'

echo "== graph of four stations against gnuplot"
VESK_BENCH_BIN=$bin bench/graph_vs_gnuplot.sh

echo "== start to a usable main window"
bench/start_up.py "$bin"

for benchmark in "$bin"/*_bench; do
  [ -x "$benchmark" ] || continue
  echo "== $(basename "$benchmark")"
  QT_QPA_PLATFORM=offscreen "$benchmark" --benchmark_min_time=0.3
done
