#!/usr/bin/env bash
# bench/graph_vs_gnuplot.sh: a year of four stations with 35,040 readings each as a PNG of 1600x900, against gnuplot
# (pngcairo) drawing the same points from text files made beforehand. Whole processes, processor time of the fastest
# run, so that other work on the machine disturbs little. Goal: gnuplot takes at least 6 times as long.
set -euo pipefail
cd "$(dirname "$0")/.."
bin=${VESK_BENCH_BIN:-build/bench/bin}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export LC_ALL=C

"$bin/make_sample_data" --bulk 4 "$work/data" >/dev/null
"$bin/vesk4-batch" files "$work/data" | awk -F'\t' 'NR > 1 { split($7, year, " "); print $2, year[1] }' >"$work/stations"
arguments=()
plots=""
while read -r station year; do
  arguments+=(--station "$station")
  wateryear=$year
  "$bin/vesk4-batch" readings "$work/data" --station "$station" --water-year "$year" |
    awk -F, 'NR > 1 { print $1, $2, $3 }' >"$work/$station.txt"
  plots+="${plots:+, }'$work/$station.txt' using 1:3 with lines title '$station'"
done <"$work/stations"
cat >"$work/plot.gp" <<GNUPLOT
set terminal pngcairo size 1600,900
set output '$work/gnuplot.png'
set xdata time
set timefmt '%d/%m/%Y %H:%M'
set format x '%d/%m/%Y'
set xtics rotate
set grid
plot $plots
GNUPLOT
wc -l "$work"/*.txt | tail -1

best_of() { # SAMPLES COMMAND...: seconds of one run; a sample is ten runs, as the clock ticks in hundredths
  local samples=$1 best="" user system seconds
  shift
  for _ in $(seq "$samples"); do
    /usr/bin/time -o "$work/time" -f '%U %S' bash -c 'for _ in 1 2 3 4 5 6 7 8 9 10; do "$@"; done' - "$@" \
      >/dev/null 2>&1
    read -r user system <"$work/time"
    seconds=$(awk "BEGIN{print ($user + $system) / 10}")
    if [ -z "$best" ] || awk "BEGIN{exit !($seconds < $best)}"; then best=$seconds; fi
  done
  echo "$best"
}

ours=$(best_of 5 "$bin/vesk4-batch" graph "$work/data" "${arguments[@]}" --water-year "$wateryear" \
  --size 1600x900 --out "$work/ours.png")
theirs=$(best_of 2 gnuplot "$work/plot.gp")
[ -s "$work/ours.png" ] && [ -s "$work/gnuplot.png" ]
awk -v o="$ours" -v g="$theirs" 'BEGIN {
  printf "vesk4-batch graph %6.3f s\ngnuplot pngcairo  %6.3f s   %.1f times as long (goal: 6)\n", o, g, g / o
}'
