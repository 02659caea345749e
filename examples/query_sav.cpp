// The README's example: the dictionary of a .sav file stored in a value space, and one XPath
// question put to it.   example_query_sav FILE.sav VARIABLE
#include <cstdio>
#include <string>

#include <transspace/savfile/reader.h>
#include <transspace/savfile/readerror.h>
#include <transspace/transspace.h>
#include <transspace/zorb/datasource.h>

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: %s FILE.sav VARIABLE\n", argv[0]);
    return 2;
  }
  TransSpace space;  // brings Xerces and Xalan up, and down again
  try {
    savfile::ReadResult file = savfile::readFile(argv[1]);
    space.add("survey", TransValue(*file.dataSource));  // the dictionary document of the data source
  } catch (savfile::ReadError const& e) {
    std::fprintf(stderr, "%s\n", e.what());
    return 2;
  }
  std::string const path = "variable[@name='" + std::string(argv[2]) + "']/@label";
  TransStatus status;
  TransString* label = space.find("SURVEY").asString("/dictionary", path.c_str(), status);  // keys ignore case
  std::printf("%s\n", label->asMBCS());
  TransSpace::releaseString(label);  // what the library hands out, the caller gives back
  return status.failure() ? 1 : 0;
}
