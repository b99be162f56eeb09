#!/usr/bin/env bash
# scripts/lint.sh PRESET [JOBS]: format, clang-tidy over every source of a finished build, and rules of the house.
set -euo pipefail
cd "$(dirname "$0")/.."
folder=build/$1
[ "$1" = ci ] && folder=build/release
jobs=${2:-$(nproc)}
failed=0

say() { echo "lint: $*"; }

git ls-files -z -- '*.cpp' '*.h' | xargs -0 clang-format --dry-run -Werror || { say "not formatted (clang-format -i)"; failed=1; }

for script in $(git ls-files -- '*.sh' .ci/run); do
  bash -n "$script" || failed=1
done

# Every include lies within what its library links; nothing names a folder of somebody's machine.
python3 scripts/layers.py || { say "includes across the layers"; failed=1; }
paths=$(git grep -nIE '(^|[^A-Za-z0-9_.$}])/(root|work|Users)/[A-Za-z]' -- ':!scripts/lint.sh' || true)
[ -z "$paths" ] || { say "paths of one machine:"; echo "$paths"; failed=1; }

python3 scripts/tidy.py "$folder" "$jobs" || failed=1

[ "$failed" = 0 ] && say "clean"
exit "$failed"
