#!/bin/sh
# Regenerates the PSPP reports that tests/savfile/pspp_crosscheck_test.cpp compares the reader with.
# Run from this folder with GNU PSPP installed (the files here were made with PSPP 1.6.2):
#   sh make-expected.sh
# For each file it writes <folder>__<name>.sps (kept beside the output) and <folder>__<name>.csv.
set -e
cd "$(dirname "$0")"
for f in \
  holehan/sleep.sav \
  medella/BigEndian.sav medella/Longstring.sav medella/MaxString.sav \
  other-writer/tiamo_data_phpwriter.sav \
  pspp-written/almus_comprehensive_pspp2.sav pspp-written/llz.zsav pspp-written/medella_MissingValues.sav \
  pspp/v13.sav pspp/v14.sav \
  pyreadstat/missing_char.sav pyreadstat/sample.sav pyreadstat/sample.zsav pyreadstat/simple_alltypes.sav \
  pyreadstat/tegulu.sav pyreadstat/test_width.sav \
  readspss/electric.sav readstat-written/iris.sav \
  savreaderwriter/Employee_data.sav savreaderwriter/greetings.sav savreaderwriter/spssio_test.sav \
  savreaderwriter/zlib_compressed.zsav
do
  base=$(echo "$f" | sed 's#/#__#; s#\.z\{0,1\}sav$##')
  ext=$(echo "$f" | sed 's#.*\.##')
  base="${base}.${ext}"
  # Files without an encoding record: tell PSPP what the reader assumes (windows-1252), as PSPP
  # would otherwise take them as UTF-8.
  encoding=""
  case "$f" in
    holehan/sleep.sav|medella/BigEndian.sav|pspp/v13.sav|pspp/v14.sav|readspss/electric.sav|savreaderwriter/Employee_data.sav)
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
  pspp -o "$base.csv" "$base.sps" > /dev/null 2>&1 || echo "pspp reported a problem with $f" >&2
done
