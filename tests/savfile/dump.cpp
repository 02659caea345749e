// savfile_dump FILE...: prints the dictionary text of each file and the reader's warnings, or the
// error. A tool for looking at files; the tests use the same rendering.
#include <iostream>

#include "dictionarytext.h"
#include <transspace/savfile/reader.h>
#include <transspace/zorb/datasource.h>

int main(int argc, char** argv) {
  int status = 0;
  for (int i = 1; i < argc; ++i) {
    try {
      savfile::ReadResult r = savfile::readFile(argv[i]);
      std::cout << "== " << argv[i] << " (" << r.info.encoding << ")\n" << savfiletest::dictionaryText(*r.dataSource);
      for (auto const& w : r.warnings) std::cout << "warning: " << w.text << "\n";
    } catch (savfile::ReadError const& e) {
      std::cout << "== " << argv[i] << "\nerror: " << e.what() << "\n";
      status = 1;
    }
  }
  return status;
}
