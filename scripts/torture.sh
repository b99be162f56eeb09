#!/usr/bin/env bash
# scripts/torture.sh [PRESET [ARGUMENT...]]: the long form of the torture run, or what the arguments say
# ("--only sequences --seed 7 --rounds 1"; "--help" tells them).
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-release}
shift $(($# < 1 ? $# : 1))
folder=build/$preset
[ "$preset" = ci ] && folder=build/release
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
export HOME=$home XDG_CONFIG_HOME=$home/.config
"$folder/bin/torture" "$@"
