#!/usr/bin/env bash
# The main job on the bundled example: installs what the build needs, builds the project, then
# exports the dictionary of examples/data/demo.sav (made with PSPP from demo.sps beside it) and
# answers a few XPath queries about it.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release > /dev/null
cmake --build build -j "$(nproc)" --target transspace_cli

tool=build/tools/transspace/transspace
file=examples/data/demo.sav
run() { echo "\$ transspace $*"; "$tool" "$@"; echo; }

run dict --pretty "$file"
run query "$file" /dictionary 'variable/@name'
run query "$file" "/dictionary/variable[@name='income']" '@label' --string
run query "$file" /dictionary 'count(variable)' --double
run query "$file" /dictionary 'weightVariable/@name' --string
run query "$file" "/dictionary/multipleResponseSet[@name='\$news']" 'multipleResponseSetVariable/@name'
