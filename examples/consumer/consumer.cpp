// Reads a system file's dictionary through an installed transspace and answers two questions about
// it: the number of variables and their names; then writes the size of its dictionary's XML text.
// Includes the headers as every user of an installed copy does.   consumer FILE.sav
#include <transspace/savfile/reader.h>
#include <transspace/transdictionarywriter.h>
#include <transspace/transowner.h>
#include <transspace/transspace.h>
#include <transspace/zorb/datasource.h>

#include <cstdio>
#include <sstream>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FILE.sav\n", argv[0]);
    return 2;
  }
  TransSpace space;
  try {
    savfile::ReadResult file = savfile::readFile(argv[1]);
    std::printf("%d columns read\n", file.dataSource->ColumnCount());
    std::ostringstream xml;
    TransDictionaryWriter::write(*file.dataSource, xml, TransDictionaryWriter::Layout::compact);
    std::printf("dictionary XML: %zu bytes\n", xml.str().size());
    space.add("file", TransValue(*file.dataSource));
  } catch (savfile::ReadError const& e) {
    std::fprintf(stderr, "%s\n", e.what());
    return 2;
  }
  TransValue const& dictionary = space.find("file");
  TransStatus status;
  double const count = dictionary.asDouble("/dictionary", "count(variable)", status);
  std::printf("variables: %g\n", count);
  TransStringListOwner const names(dictionary.asStringList("/dictionary", "variable/@name", status));
  for (unsigned long i = 0; i < names->size(); ++i) std::printf("  %s\n", names->asMBCS(i));
  return status.failure() ? 1 : 0;
}
