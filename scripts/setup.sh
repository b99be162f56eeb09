#!/usr/bin/env bash
# scripts/setup.sh [build|lint|fuzz|bench]...   (build: to build, to run and to test)
# Installs what is missing from Debian's packages, nothing else, and asks nothing. One look at the package
# database when nothing is missing. Each package's reason stands in the README.
set -euo pipefail

build="build-essential cmake ninja-build ccache qt6-base-dev qt6-svg-dev libqt6sql6-sqlite qt6-translations-l10n
       libnlopt-cxx-dev libeigen3-dev libgsl-dev libreoffice-calc libreoffice-dev libgsf-bin fonts-liberation
       libgtest-dev libgmock-dev locales-all poppler-utils python3-xlrd"
lint="$build clang-format clang-tidy python3 git"
fuzz="$build clang libclang-rt-14-dev"
bench="$build libbenchmark-dev mawk gnuplot-nox python3-pandas time"

packages=""
for purpose in "${@:-build}"; do
  case $purpose in
    build | lint | fuzz | bench) packages+=" ${!purpose}" ;;
    *) echo "setup.sh: unknown purpose '$purpose' (build, lint, fuzz, bench)" >&2; exit 2 ;;
  esac
done
packages=$(tr -s ' \n' '\n\n' <<<"$packages" | sed '/^$/d' | sort -u)

if ! command -v dpkg-query >/dev/null; then
  echo "setup.sh: this machine has no Debian packages; please install by hand what these hold:" $packages >&2
  exit 1
fi
installed=$(dpkg-query -W -f='${db:Status-Status} ${Package}\n' $packages 2>/dev/null | sed -n 's/^installed //p' | sort -u) || true
missing=$(comm -23 <(echo "$packages") <(echo "$installed"))
[ -n "$missing" ] || exit 0

as_root=""
if [ "$(id -u)" != 0 ]; then
  if ! command -v sudo >/dev/null; then
    echo "setup.sh: not root and no sudo; please have these packages installed:" $missing >&2
    exit 1
  fi
  as_root="sudo"
fi
echo "Installing:" $missing
apt() { $as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=600 -o Acquire::Retries=3 "$@"; }
apt update </dev/null
apt install --no-install-recommends $missing </dev/null
