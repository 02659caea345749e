#!/usr/bin/env bash
# xmllint accepts the dictionary that `transspace dict` writes for every system file in the
# repository, and rejects one with its sections out of order and one with an unknown measurement
# level.   xmllint_test.sh TRANSSPACE_COMMAND SOURCE_DIR
set -euo pipefail
tool=$1
source_dir=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$tool" schema > "$work/dictionary-1.0.xsd"
validate() { xmllint --noout --nonet --schema "$work/dictionary-1.0.xsd" "$1" 2>&1; }

valid=0
while IFS= read -r -d '' file; do
  if ! "$tool" dict "$file" > "$work/dictionary.xml" 2> /dev/null; then
    echo "skipped (no dictionary): ${file#"$source_dir"/}"
    continue
  fi
  if ! validate "$work/dictionary.xml" > "$work/errors"; then
    echo "INVALID: ${file#"$source_dir"/}"; cat "$work/errors"; exit 1
  fi
  valid=$((valid + 1))
done < <(find "$source_dir" -path "$source_dir/build*" -prune -o -path "$source_dir/.*" -prune -o \
           \( -name '*.sav' -o -name '*.zsav' \) -type f -print0)
echo "$valid dictionaries valid"
[ "$valid" -ge 20 ] || { echo "too few system files found"; exit 1; }

"$tool" dict "$source_dir/examples/data/demo.sav" > "$work/demo.xml"
sed -E 's|(<dictionary[^>]*>)(.*)(<weightVariable[^>]*/>)|\1\3\2|' "$work/demo.xml" > "$work/order.xml"
sed -E 's|measurementLevel="scale"|measurementLevel="interval"|' "$work/demo.xml" > "$work/level.xml"
for broken in order level; do
  cmp -s "$work/demo.xml" "$work/$broken.xml" && { echo "the $broken case changed nothing"; exit 1; }
  if validate "$work/$broken.xml" > "$work/errors"; then
    echo "xmllint accepted the $broken case"; exit 1
  fi
  echo "rejected as expected ($broken): $(grep -m1 -v 'fails to validate' "$work/errors")"
done
