#!/usr/bin/env bash
# Installs what the build needs, builds everything and runs the whole test suite.
#   scripts/test.sh             Release build in build/ (assertions stay on), all tests
#   scripts/test.sh --sanitize  the same with AddressSanitizer + UndefinedBehaviorSanitizer in
#                               build-asan/ (the death tests skip themselves there)
set -euo pipefail
cd "$(dirname "$0")/.."

build_dir=build
options=(-DCMAKE_BUILD_TYPE=Release)
if [ "${1:-}" = "--sanitize" ]; then
  build_dir=build-asan
  options=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DTRANSSPACE_SANITIZE=ON)
  export ASAN_OPTIONS=detect_leaks=1:abort_on_error=0
  export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
  if [ -f tests/lsan.supp ]; then export LSAN_OPTIONS="suppressions=$PWD/tests/lsan.supp:print_suppressions=0"; fi
fi

bash scripts/install-deps.sh
cmake -S . -B "$build_dir" -G Ninja "${options[@]}"
cmake --build "$build_dir" -j "$(nproc)"
ctest --test-dir "$build_dir" --output-on-failure -j "$(nproc)"
