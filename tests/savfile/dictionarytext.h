// A plain-text rendering of a data source's dictionary, one fact a line, so tests can compare
// what the reader produced with facts that PSPP reported for the same file.
#pragma once

#include <string>

class ZORB_DataSource;

namespace savfiletest {

std::string formatName(int type, int width, int decimals);
std::string missingText(ZORB_DataSource const& ds, int index);
std::string dictionaryText(ZORB_DataSource const& ds);

}  // namespace savfiletest
