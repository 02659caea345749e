#!/usr/bin/env bash
# Query throughput of the Python module against the C++ road on one generated system file of
# 10,000 variables (override with the first argument). Builds in build-bench/ (Release, benchmarks
# and the Python module on; TRANSSPACE_BENCH_BUILD chooses another build directory).
set -euo pipefail
cd "$(dirname "$0")/../.."
variables=${1:-10000}
build=${TRANSSPACE_BENCH_BUILD:-build-bench}
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DTRANSSPACE_BENCH=ON -DTRANSSPACE_PYTHON=ON >/dev/null
cmake --build "$build" --target bench_savfile bench_query_road _transspace
python=$(sed -n 's/^Python3_EXECUTABLE:[A-Z]*=//p' "$build/CMakeCache.txt")
file=$(mktemp --suffix=.sav)
trap 'rm -f "$file"' EXIT
"$build/bench/savfile/bench_savfile" --write "$variables" "$file"

cpp=$("$build/bench/python/bench_query_road" --file="$file" --variables="$variables" --benchmark_format=json \
  | "$python" -c 'import json,sys; print(round(json.load(sys.stdin)["benchmarks"][0]["queries_per_s"]))')
py=$(PYTHONPATH="$build/python" "$python" bench/python/bench_query.py "$file" "$variables" | awk '{print $2}')
echo "variables:               $variables"
echo "C++ road queries/CPU s:  $cpp"
echo "Python queries/CPU s:    $py"
"$python" -c "print(f'Python / C++:            {$py / $cpp:.0%}')"
