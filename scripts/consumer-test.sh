#!/usr/bin/env bash
# Uses the project as others will: installs a build into a temporary prefix, builds the separate
# project examples/consumer/ against it with find_package and with pkg-config and runs both on the
# demo file, runs the installed command, then makes the Debian packages and checks their files and
# Depends. Reuses the build in build/ when there is one (CI runs scripts/test.sh first).
#   scripts/consumer-test.sh [BUILD_DIR]
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
build=${1:-build}
demo=$root/examples/data/demo.sav
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix

step() { echo; echo "== $*"; }
fail() { echo "consumer-test: $*" >&2; exit 1; }

if [ ! -f "$build/CMakeCache.txt" ]; then
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DTRANSSPACE_TESTS=OFF > /dev/null
fi
cmake --build "$build" --target transspace_cli > /dev/null

step "install into a temporary prefix"
cmake --install "$build" --prefix "$prefix" > /dev/null
(cd "$prefix" && find . -type f -o -type l | sort)

step "consumer built with find_package(transspace)"
cmake -S examples/consumer -B "$work/with-cmake" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" > /dev/null
cmake --build "$work/with-cmake" > /dev/null
"$work/with-cmake/consumer" "$demo" | tee "$work/cmake.out"

step "consumer built with pkg-config"
export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
packages=(transspace transspace-dictionary transspace-savfile)
echo "pkg-config --cflags --libs ${packages[*]}: $(pkg-config --cflags --libs "${packages[@]}")"
# shellcheck disable=SC2046  # the flags are words
g++ -std=c++17 -o "$work/consumer" examples/consumer/consumer.cpp $(pkg-config --cflags --libs "${packages[@]}")
LD_LIBRARY_PATH=$prefix/lib "$work/consumer" "$demo" > "$work/pkg-config.out"
cmp "$work/cmake.out" "$work/pkg-config.out" || fail "the two builds of the consumer answer differently"
echo "same answer as the find_package build"

step "nothing private reachable from an installed copy"
# Every installed header is a public header of one of the components.
(cd "$prefix/include" && find . -type f | sort) > "$work/installed-headers"
(cd backend && find ./*/include -type f | sed 's|^\./[^/]*/include/|./|' | sort) > "$work/public-headers"
diff "$work/public-headers" "$work/installed-headers" || fail "the installed headers are not the public ones"
echo "$(wc -l < "$work/installed-headers") headers, all public"
# The libraries export what their contracts name, nothing else.
bash tests/exports/exports_test.sh "$prefix/lib/libtransspace.so" "$prefix/lib/libtransspace_dictionary.so"
# A hidden class of the library cannot be linked against, even by a program that declares it.
cat > "$work/hidden.cpp" <<'CPP'
class TransHostText { public: TransHostText(); };
int main() { TransHostText text; return 0; }
CPP
if g++ -std=c++17 -o "$work/hidden" "$work/hidden.cpp" -L"$prefix/lib" -ltransspace 2> "$work/hidden.err"; then
  fail "a program links against the hidden TransHostText"
fi
grep -q "undefined reference to .TransHostText::TransHostText()" "$work/hidden.err" ||
  fail "linking against a hidden class failed for another reason: $(cat "$work/hidden.err")"
echo "a hidden class is not reachable"

step "the installed command"
"$prefix/bin/transspace" --version
"$prefix/bin/transspace" dict "$demo" > "$work/demo.xml"
xmllint --noout --nonet --schema "$prefix/share/transspace/dictionary-1.0.xsd" "$work/demo.xml"
MANWIDTH=80 man -l "$prefix/share/man/man1/transspace.1" 2> /dev/null | head -n 4

step "Debian packages"
(cd "$build" && cpack -G DEB -B "$work/deb" > /dev/null)
for deb in "$work"/deb/*.deb; do
  echo "$(basename "$deb"): Depends: $(dpkg-deb -f "$deb" Depends)"
done
runtime=$(ls "$work"/deb/transspace_*.deb)
dev=$(ls "$work"/deb/transspace-dev_*.deb)
expect_files() {  # expect_files DEB PATH...: every PATH is in the package
  local listing
  listing=$(dpkg-deb -c "$1" | awk '{print $6}')
  shift
  for path in "$@"; do grep -qx "\./$path" <<< "$listing" || fail "$path is not in the package"; done
}
expect_files "$runtime" usr/bin/transspace usr/lib/libtransspace.so.0 usr/lib/libtransspace_host.so.0 \
  usr/lib/libtransspace_savfile.so.0 usr/lib/libtransspace_dictionary.so.0 usr/share/transspace/dictionary-1.0.xsd usr/share/man/man1/transspace.1
expect_files "$dev" usr/include/transspace/transspace.h usr/include/transspace/zorb/datasource.h \
  usr/include/transspace/savfile/reader.h usr/lib/libtransspace.so usr/lib/cmake/transspace/transspaceConfig.cmake \
  usr/lib/pkgconfig/transspace.pc usr/lib/pkgconfig/transspace-host.pc usr/lib/pkgconfig/transspace-savfile.pc \
  usr/include/transspace/transdictionarywriter.h usr/lib/pkgconfig/transspace-dictionary.pc
depends=$(dpkg-deb -f "$runtime" Depends)
for package in libxerces-c3.2 libxalan-c112 libicu72 libstdc++6 libc6; do
  grep -q "$package" <<< "$depends" || fail "the runtime package does not depend on $package"
done
grep -q 'transspace (= ' <<< "$(dpkg-deb -f "$dev" Depends)" || fail "the -dev package does not depend on the runtime"
dpkg-deb -x "$runtime" "$work/unpacked"
"$work/unpacked/usr/bin/transspace" query "$demo" /dictionary 'count(variable)' --double
echo
echo "consumer-test: all good"
