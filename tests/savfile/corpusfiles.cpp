#include "corpusfiles.h"

#include <algorithm>
#include <filesystem>

namespace savfiletest {

std::vector<std::string> corpusFiles(std::string const& dataDir, std::set<std::string> const& except) {
  namespace fs = std::filesystem;
  std::vector<std::string> files;
  for (auto const& folder : fs::directory_iterator(dataDir)) {
    if (!folder.is_directory() || folder.path().filename() == "expected") continue;
    for (auto const& file : fs::directory_iterator(folder.path())) {
      std::string const extension = file.path().extension().string();
      if (!file.is_regular_file() || (extension != ".sav" && extension != ".zsav")) continue;
      std::string name = folder.path().filename().string() + "/" + file.path().filename().string();
      if (!except.count(name)) files.push_back(name);
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace savfiletest
