#!/usr/bin/env bash
# The style the tree follows: every C++ file as clang-format formats it with .clang-format, and no
# line of what we wrote longer than 120 columns. Run by the test suite (test `style`); prints the
# files that differ and exits 1, or 0 when all is in order.
#   scripts/check-style.sh [CLANG_FORMAT]
set -uo pipefail
cd "$(dirname "$0")/.."
format=${1:-clang-format}
status=0

mapfile -t sources < <(git ls-files '*.cpp' '*.h' '*.hpp' '*.cpp.in')
if ! "$format" --dry-run --Werror "${sources[@]}" 2> /tmp/check-style.$$; then
  echo "Not formatted as .clang-format says (fix with: $format -i FILE):"
  grep -oE '^[^:]+:[0-9]+' /tmp/check-style.$$ | cut -d: -f1 | sort -u | sed 's/^/  /'
  status=1
fi
rm -f /tmp/check-style.$$

# Text we wrote (not test data, fuzz inputs, binary fixtures or the license).
mapfile -t texts < <(git ls-files | grep -vE '^(tests/data|fuzz/corpus|fuzz/regressions|examples/data)/|\.(sav|zsav|png)$|^LICENSE$')
long=$(python3 - "${texts[@]}" <<'PY'
import sys
for name in sys.argv[1:]:
    with open(name, encoding="utf-8", errors="replace") as text:
        for number, line in enumerate(text, 1):
            if len(line.rstrip("\n")) > 120:
                print(f"{name}:{number}: {len(line.rstrip())} columns")
PY
)
if [ -n "$long" ]; then
  echo "Lines longer than 120 columns:"
  sed 's/^/  /' <<<"$long"
  status=1
fi
exit $status
