// Reads a system file's dictionary through an installed transspace and answers two questions about
// it: the number of variables and their names. Includes the headers as every user of an installed
// copy does.   consumer FILE.sav
#include <transspace/savfile/reader.h>
#include <transspace/transspace.h>
#include <transspace/zorb/datasource.h>

#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FILE.sav\n", argv[0]);
    return 2;
  }
  TransSpace space;
  try {
    savfile::ReadResult file = savfile::readFile(argv[1]);
    std::printf("%d columns read\n", file.dataSource->ColumnCount());
    space.add("file", TransValue(*file.dataSource));
  } catch (savfile::ReadError const& e) {
    std::fprintf(stderr, "%s\n", e.what());
    return 2;
  }
  TransValue const& dictionary = space.find("file");
  TransStatus status;
  double const count = dictionary.asDouble("/dictionary", "count(variable)", status);
  std::printf("variables: %g\n", count);
  TransStringList* names = dictionary.asStringList("/dictionary", "variable/@name", status);
  for (unsigned long i = 0; i < names->size(); ++i) std::printf("  %s\n", names->asMBCS(i));
  TransSpace::releaseStringList(names);
  return status.failure() ? 1 : 0;
}
