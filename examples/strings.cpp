// A small tour of the core text types: build strings in either encoding, trim them, order them
// without regard to case, and read a list as arrays.
#include <transspace/transstring.h>
#include <transspace/transstringlist.h>

#include <cstdio>

int main() {
  TransStatus status;
  TransString name("  Straße  ");
  name.trim(status);
  std::printf("trimmed: [%s] warning=%d\n", name.asMBCS(status), status.warning());

  TransString shouted("STRASSE");
  bool same = !(name < shouted) && !(shouted < name);
  std::printf("Straße and STRASSE are %s keys\n", same ? "the same" : "different");

  // UTF-16 goes in and comes out as NUL-terminated unsigned short units.
  TransStringList list;
  list.push_back(name.asUTF16());
  list.push_back(shouted.asUTF16());
  char const* const* texts = list.asMBCSArray(status);
  for (unsigned long i = 0; i < list.size(); ++i) std::printf("list[%lu] = %s\n", i, texts[i]);
  return 0;
}
