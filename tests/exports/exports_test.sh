#!/usr/bin/env bash
# What the shared libraries put in their dynamic symbol tables. libtransspace exports the classes its
# contract names (the handles, their implementation classes, TransUtil, TransXMLChArray, the
# dictionary builder) and the one Xalan function it replaces; everything else of its code, and the
# standard library's templates instantiated for it, stays hidden. libtransspace_dictionary exports
# the classes of its public headers.
#   exports_test.sh libtransspace.so libtransspace_dictionary.so
set -u
status=0

# check LIBRARY PATTERN: every defined dynamic symbol, demangled, must match the extended regex.
check() {
  local library=$1 allowed=$2 symbols unexpected
  symbols=$(nm -D --defined-only -C "$library" | cut -d' ' -f3-)
  if [ -z "$symbols" ]; then
    echo "FAIL: $library exports nothing"; status=1; return
  fi
  unexpected=$(grep -vE "$allowed" <<<"$symbols")
  if [ -n "$unexpected" ]; then
    echo "FAIL: $library exports what its contract does not name:"
    head -n 20 <<<"$unexpected"
    status=1
  else
    echo "ok: $library ($(wc -l <<<"$symbols") symbols)"
  fi
}

# expect LIBRARY TEXT: some exported symbol contains TEXT.
expect() {
  if ! nm -D --defined-only -C "$1" | grep -qF "$2"; then
    echo "FAIL: $1 does not export $2"; status=1
  fi
}

classes='Trans(Status|StatusImpl|String|StringImpl|StringList|StringListImpl|Value|ValueImpl|NullImpl|TextImpl|'
classes+='IntegerImpl|DoubleImpl|DOMImpl|Space|Image|Util|XMLChArray|DictionaryImpl)'
check "$1" "^((typeinfo name for |typeinfo for |vtable for )?${classes}(::|\$| )|xalanc_[0-9_]+::NumberToDOMString\\()"
for name in 'TransSpace::add(TransString const&, TransValue&&)' 'TransValue::isXPath' 'TransXMLChArray::' \
            'TransDictionaryImpl::addDictionary' 'xalanc_'; do
  expect "$1" "$name"
done

check "$2" '^((typeinfo name for |typeinfo for |vtable for )?Trans(XMLInput|XMLInputError|DictionaryWriter)(::|$| ))'
expect "$2" 'TransXMLInput::parseDocument'
expect "$2" 'TransDictionaryWriter::write'
exit $status
