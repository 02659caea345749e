// The fixtures under tests/data/sav/: every .sav and .zsav of its folders, as "folder/name".
#pragma once

#include <set>
#include <string>
#include <vector>

namespace savfiletest {

// Sorted; `dataDir` ends in '/'; the names in `except` are left out.
std::vector<std::string> corpusFiles(std::string const& dataDir, std::set<std::string> const& except = {});

}  // namespace savfiletest
