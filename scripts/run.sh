#!/usr/bin/env bash
# scripts/run.sh [JOBS]: builds the programs, makes sample data and a program folder under build/sample, and opens
# the program on them. Without a display the command line does the main job and prints what it wrote.
# The run has a home of its own below build/sample: nothing outside the build folder is touched.
set -euo pipefail
cd "$(dirname "$0")/.."
export CCACHE_DIR=${CCACHE_DIR:-$PWD/build/ccache}
scripts/build.sh release "${1:-$(nproc)}" vesk4 vesk4-batch make_sample_data

bin=$PWD/build/release/bin
sample=$PWD/build/sample
data=$sample/home/Sefnor
program=$sample/program
register=$data/ArvelDat/Istasyon.mdb
display=${DISPLAY:-}${WAYLAND_DISPLAY:-}

# With a display an operator's corrections on the sample stay; the command line starts afresh every time.
[ -n "$display" ] || rm -rf "$sample"
if [ ! -d "$sample" ]; then
  mkdir -p "$data/Arsiv" "$data/ArvelDat" "$program"
  cp resources/Sablon*.xls resources/IstSbl.mdb "$program/"
  cp resources/IstSbl.mdb "$register"
  touch "$program/ilk.sil" # first run: the program writes its default settings
  "$bin/make_sample_data" --register "$register" --ratings "$data/Anahtar" "$data" >"$sample/files.txt"
  if [ -n "$display" ]; then # the command line shows this step by itself
    "$bin/vesk4-batch" gaugings import "$data/Anahtar/gaugings-12002.csv" --register "$register" --station 12002 >/dev/null
    "$bin/vesk4-batch" station --register "$register" --station 12002 --catchment 812.5 \
      --curve "$data/Anahtar/E12002.dat" >/dev/null
  fi
  echo "Sample data: $data ($(wc -l <"$sample/files.txt") raw logger files)"
  echo "Program folder: $program"
fi

export XAUTHORITY=${XAUTHORITY:-${HOME:-/nonexistent}/.Xauthority}
export HOME=$sample/home
unset XDG_CONFIG_HOME XDG_DATA_HOME XDG_CACHE_HOME XDG_STATE_HOME

if [ -n "$display" ]; then
  exec "$bin/vesk4" --program-folder "$program"
fi

mkdir -p -m 700 "$sample/runtime"
export XDG_RUNTIME_DIR=$sample/runtime
batch() {
  echo "\$ vesk4-batch $*"
  "$bin/vesk4-batch" "$@"
}
choice=(--station 12002 --water-year 2024)
batch tidy "$data"
batch gaugings import "$data/Anahtar/gaugings-12002.csv" --register "$register" --station 12002
batch station --register "$register" --station 12002 --catchment 812.5 --curve "$data/Anahtar/E12002.dat"
batch rating fit "$data/Anahtar/gaugings-12002.csv" --segments 2 --out "$sample/E12002.dat" --report "$sample/rating-12002.pdf"
batch table "$data" "${choice[@]}" --hourly --register "$register" --templates "$program"
batch daily "$data" "${choice[@]}" --register "$register" --out "$sample/daily-12002-2024.csv"
batch graph "$data" "${choice[@]}" --register "$register" --out "$sample/graph-12002-2024.png"
batch graph "$data" "${choice[@]}" --register "$register" --quantity discharge --out "$sample/discharge-12002-2024.png"
echo "Table, daily values and graphs of station 12002, water year 2024:"
ls -1 "$data"/Tablo-*.xls "$sample"/daily-*.csv "$sample"/graph-*.png "$sample"/discharge-*.png "$sample"/rating-*.pdf
