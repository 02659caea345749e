#!/usr/bin/env bash
# Times `transspace dict` against other tools that read the dictionary of a system file, side by
# side on the same generated files (10,000 and 100,000 numeric variables shaped like a survey; see
# bench/savfile/bench_savfile.cpp), and reports the median wall time of several runs, the ratio of
# our time to each tool's, and the peak memory (maximum resident set) of each.
#   bench/compare.sh [BUILD_DIR] [RUNS]
# BUILD_DIR must hold the tool and bench_savfile (configure with -DTRANSSPACE_BENCH=ON); RUNS is 5
# unless given. PSPP (`pspp`) and ReadStat (`extract_metadata`, Debian package readstat) are timed
# when they are installed; a missing one is reported and its column left out. The machine should be
# quiet: the load average is printed before and after.
set -euo pipefail

build=${1:-build-bench}
runs=${2:-5}
tool=$build/tools/transspace/transspace
generator=$build/bench/savfile/bench_savfile
for f in "$tool" "$generator"; do
  [ -x "$f" ] || { echo "compare.sh: $f not found (build with -DTRANSSPACE_BENCH=ON)" >&2; exit 2; }
done
[ -x /usr/bin/time ] || { echo "compare.sh: /usr/bin/time is needed (Debian package time)" >&2; exit 2; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

have_pspp=0; command -v pspp > /dev/null && have_pspp=1
have_readstat=0; command -v extract_metadata > /dev/null && have_readstat=1
[ $have_pspp = 1 ] || echo "PSPP (pspp) is not installed: its column is left out"
[ $have_readstat = 1 ] || echo "ReadStat's extract_metadata is not installed: its column is left out"

# One run: prints "seconds kilobytes" of the command (its output goes to files in $work).
measure() {
  /usr/bin/time -f '%e %M' -o "$work/time" "$@" > "$work/out" 2> "$work/err" || {
    echo "compare.sh: failed: $*" >&2; cat "$work/err" >&2; exit 1; }
  cat "$work/time"
}

# A / B with the given number of decimals.
ratio() { awk -v a="$1" -v b="$2" -v d="$3" 'BEGIN { printf "%.*f", d, a / b }'; }

# The median time and the largest peak memory of $runs runs: "seconds megabytes".
median_of_runs() {
  for _ in $(seq "$runs"); do measure "$@"; done |
    sort -n | awk '{ t[NR] = $1; if ($2 > m) m = $2 } END { printf "%.3f %.0f\n", t[int((NR + 1) / 2)], m / 1024 }'
}

echo "load average before: $(cut -d' ' -f1-3 /proc/loadavg)"
printf '%-8s %-34s %9s %9s %12s\n' size command median peak-MB "ours/theirs"
for n in 10000 100000; do
  file=$work/generated-$n.sav
  "$generator" --write "$n" "$file"
  printf "GET FILE='%s'.\nDISPLAY DICTIONARY.\n" "$file" > "$work/display.sps"

  read -r ours ours_mb < <(median_of_runs "$tool" dict "$file")
  printf '%-8s %-34s %9s %9s %12s\n' "$n" "transspace dict" "$ours" "$ours_mb" "-"
  read -r pretty pretty_mb < <(median_of_runs "$tool" dict --pretty "$file")
  printf '%-8s %-34s %9s %9s %12s\n' "$n" "transspace dict --pretty" "$pretty" "$pretty_mb" "-"
  if [ $have_pspp = 1 ]; then
    read -r t mb < <(median_of_runs pspp -O format=txt -o "$work/display.txt" "$work/display.sps")
    printf '%-8s %-34s %9s %9s %12s\n' "$n" "pspp DISPLAY DICTIONARY" "$t" "$mb" "$(ratio "$ours" "$t" 3)"
  fi
  if [ $have_readstat = 1 ]; then
    read -r t mb < <(median_of_runs extract_metadata "$file" "$work/metadata.json")
    printf '%-8s %-34s %9s %9s %12s\n' "$n" "readstat extract_metadata" "$t" "$mb" "$(ratio "$ours" "$t" 3)"
  fi
  eval "ours_$n=$ours"
done
echo "time(100k) / time(10k) of transspace dict: $(ratio "$ours_100000" "$ours_10000" 1)"
echo "load average after: $(cut -d' ' -f1-3 /proc/loadavg)"
