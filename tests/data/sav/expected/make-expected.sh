#!/bin/sh
# Regenerates the PSPP reports that tests/savfile/pspp_crosscheck_test.cpp compares the reader with.
# Run from this folder with GNU PSPP installed (the files here were made with PSPP 1.6.2):
#   sh make-expected.sh
# For each fixture it writes <folder>__<name>.sps (kept beside the output) and <folder>__<name>.csv.
# builder-made/corrupt-extension-headers.sav is left out: it is damaged on purpose.
set -e
cd "$(dirname "$0")"
for f in ../*/*.sav ../*/*.zsav; do
  f=${f#../}
  case "$f" in builder-made/corrupt-extension-headers.sav) continue ;; esac
  base="$(echo "$f" | sed 's#/#__#')"
  # Files without an encoding record whose character code does not name one either: tell PSPP what
  # the reader assumes (windows-1252), as PSPP would otherwise take them as UTF-8.
  encoding=""
  case "$f" in
    builder-made/big-endian.sav|builder-made/only-subtypes-3-4.sav|builder-made/variable-sets-crlf.sav|\
    builder-made/variable-sets-short-names.sav|builder-made/release13-very-long-strings.sav|\
    builder-made/release14-very-long-strings.sav)
      encoding=" ENCODING='windows-1252'" ;;
  esac
  cat > "$base.sps" <<SPS
SET TVARS=NAMES.
GET FILE='../$f'$encoding.
DISPLAY DICTIONARY.
SHOW N.
SHOW WEIGHT.
DISPLAY ATTRIBUTES.
MRSETS /DISPLAY NAME=ALL.
SPS
  LC_ALL=C.UTF-8 pspp -o "$base.csv" "$base.sps" > /dev/null 2>&1 || echo "pspp reported a problem with $f" >&2
done
