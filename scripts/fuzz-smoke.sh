#!/usr/bin/env bash
# Builds the libFuzzer target of the .sav reader with clang and runs it briefly on a copy of the
# seed corpus: a guard that the fuzzer still builds and that the seeds raise nothing.
#   scripts/fuzz-smoke.sh [SECONDS]     (default 30; a real session: 1800)
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-30}"

CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DTRANSSPACE_FUZZ=ON -DTRANSSPACE_TESTS=OFF > /dev/null
cmake --build build-fuzz --target savfile_fuzzer
rm -rf build-fuzz/corpus && mkdir -p build-fuzz/corpus build-fuzz/artifacts
cp fuzz/corpus/savfile/* build-fuzz/corpus/
build-fuzz/fuzz/savfile_fuzzer -max_total_time="$seconds" -seed=1 -artifact_prefix=build-fuzz/artifacts/ \
  build-fuzz/corpus 2>&1 | tail -n 3
