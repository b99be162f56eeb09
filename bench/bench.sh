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

# best_of RUNS COMMAND...: seconds of processor time of the fastest run, and the largest memory in KB
best_of() {
  local runs=$1 best="" memory=0 user system seconds kilobytes
  shift
  for _ in $(seq "$runs"); do
    /usr/bin/time -o "$work/time" -f '%U %S %M' $one_core "$@" >/dev/null
    read -r user system kilobytes <"$work/time"
    seconds=$(awk "BEGIN{print $user + $system}")
    if [ -z "$best" ] || awk "BEGIN{exit !($seconds < $best)}"; then best=$seconds; fi
    [ "$kilobytes" -gt "$memory" ] && memory=$kilobytes
  done
  echo "$best $memory"
}

megabytes=$(du -cb "$many"/*.txt | awk 'END{printf "%.1f", $1 / 1e6}')
read -r ours100 memory < <(best_of 7 "$bin/vesk4-batch" daily "$many" --all)
read -r ours10 _ < <(best_of 7 "$bin/vesk4-batch" daily "$few" --all)
read -r awk100 _ < <(best_of 2 mawk -f bench/daily.awk "$many"/*.txt)
read -r pandas10 _ < <(best_of 1 /usr/bin/python3 bench/daily_pandas.py "$few")
pandas100=$(awk "BEGIN{print $pandas10 * 10}")

echo "== daily --all, 100 files x 35,040 readings, $megabytes MB, one core"
awk -v o="$ours100" -v o10="$ours10" -v a="$awk100" -v p="$pandas100" -v mb="$megabytes" -v kb="$memory" 'BEGIN {
  printf "%-28s %8.2f s %9.1f MB/s\n", "vesk4-batch", o, mb / o
  printf "%-28s %8.2f s %9.1f MB/s   %.1f times as long (goal: 10)\n", "mawk", a, mb / a, a / o
  printf "%-28s %8.2f s %9.1f MB/s   %.1f times as long (goal: 40)\n", "pandas (10 files x 10)", p, mb / p, p / o
  printf "time a file, 100 files over 10: %.2f (goal: at most 1.2)\n", (o / 100) / (o10 / 10)
  printf "memory: %.1f MB\n", kb / 1024
}'

for benchmark in "$bin"/*_bench; do
  [ -x "$benchmark" ] || continue
  echo "== $(basename "$benchmark")"
  QT_QPA_PLATFORM=offscreen $one_core "$benchmark" --benchmark_min_time=0.3
done
