#!/usr/bin/env bash
# Installs every Debian 12 package that the build, the tests, the benchmarks and the fuzzers need,
# and generates the C-library locales that the tests switch to. Idempotent; runs as root or via sudo.
#   --with-pspp   also installs GNU PSPP, which remakes the .sav fixtures and the expected facts
#                 in tests/data (the tests themselves do not run it)
#   --with-compare  also installs what bench/compare.sh times beside `transspace dict`: PSPP and
#                 ReadStat's extract_metadata (package readstat), and GNU time
set -euo pipefail

if [ "$(id -u)" -ne 0 ]; then
  exec sudo --preserve-env=CI "$0" "$@"
fi

packages=(
  build-essential cmake ninja-build pkg-config
  libxerces-c-dev libxalan-c-dev libicu-dev zlib1g-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  locales file
  libxml2-utils man-db
  clang libclang-rt-14-dev
  python3-dev pybind11-dev python3-pybind11 python3-pytest
  python3-venv python3-setuptools python3-wheel python3-pip
)

if [ "${1:-}" = "--with-pspp" ]; then packages+=(pspp); fi
if [ "${1:-}" = "--with-compare" ]; then packages+=(pspp readstat time); fi

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if [ "${#missing[@]}" -gt 0 ]; then
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

# Locales the tests use: a decimal comma (de_DE) and the dotted capital I (tr_TR).
wanted=(de_DE.UTF-8 tr_TR.UTF-8 en_US.UTF-8)
regenerate=0
for l in "${wanted[@]}"; do
  norm=$(echo "$l" | sed 's/UTF-8/utf8/')
  if ! locale -a 2>/dev/null | grep -qx "$norm"; then
    if ! grep -q "^${l} UTF-8" /etc/locale.gen 2>/dev/null; then
      echo "${l} UTF-8" >> /etc/locale.gen
    fi
    regenerate=1
  fi
done
if [ "$regenerate" -eq 1 ]; then
  locale-gen
fi
