#!/usr/bin/env bash
# scripts/test.sh PRESET [JOBS]: runs every test of a build; each brings its own home, locale and time zone.
set -euo pipefail
cd "$(dirname "$0")/.."
folder=build/$1
[ "$1" = ci ] && folder=build/release
unset DISPLAY WAYLAND_DISPLAY
runtime=$(mktemp -d) # private, as the desktop's own would be
trap 'rm -rf "$runtime"' EXIT
export XDG_RUNTIME_DIR=$runtime
export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}
[ -f scripts/lsan.supp ] && export LSAN_OPTIONS=${LSAN_OPTIONS:-suppressions=$PWD/scripts/lsan.supp:print_suppressions=0}
ctest --test-dir "$folder" -j "${2:-$(nproc)}" --output-on-failure --no-tests=error
