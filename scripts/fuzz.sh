#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (AddressSanitizer and UndefinedBehaviorSanitizer) and runs
# each for as long as asked, one worker at a time, on a working corpus that starts from the seeds
# (fuzz/corpus/) and the kept findings (fuzz/regressions/) and grows across runs.
#   scripts/fuzz.sh [SECONDS] [TARGET...]   seconds per target (default 60); targets default to
#                                           savfile dictionary xmlquery options
# Prints each target's executions and coverage; exits 1 when a target found something. A finding
# is written to build-fuzz/artifacts/TARGET/; once fixed, copy it into fuzz/regressions/TARGET/,
# where the test suite replays it.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-60}"
shift || true
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then targets=(savfile dictionary xmlquery options); fi

CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DTRANSSPACE_FUZZ=ON -DTRANSSPACE_TESTS=OFF \
  -DCMAKE_BUILD_TYPE=RelWithDebInfo > /dev/null
cmake --build build-fuzz --target "${targets[@]/%/_fuzzer}"

seeds_of() { if [ "$1" = dictionary ]; then echo savfile; else echo "$1"; fi; }
max_len_of() {
  case "$1" in
    options) echo 512 ;;
    xmlquery) echo 16384 ;;
    *) echo 65536 ;;
  esac
}

status=0
for target in "${targets[@]}"; do
  corpus=build-fuzz/corpus/$target
  artifacts=build-fuzz/artifacts/$target
  mkdir -p "$corpus" "$artifacts"
  cp -n fuzz/corpus/"$(seeds_of "$target")"/* "$corpus"/
  if [ -d fuzz/regressions/"$target" ]; then cp -n fuzz/regressions/"$target"/* "$corpus"/; fi
  options=(-max_total_time="$seconds" -timeout=30 -max_len="$(max_len_of "$target")" -print_final_stats=1
           -artifact_prefix="$artifacts"/)
  if [ -f fuzz/dictionaries/"$target".dict ]; then options+=(-dict=fuzz/dictionaries/"$target".dict); fi
  log=build-fuzz/$target.log
  if build-fuzz/fuzz/"${target}"_fuzzer "${options[@]}" "$corpus" > "$log" 2>&1; then result=ok; else result=FINDING; status=1; fi
  runs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$' || echo '?')
  coverage=$(grep -E '^#[0-9]+' "$log" | tail -n 1 | grep -o 'cov: [0-9]* ft: [0-9]*' || echo 'cov: ?')
  echo "$target: $result, $runs executions in ${seconds}s, $coverage, corpus $(ls "$corpus" | wc -l) inputs (log: $log)"
done
exit $status
