// savfile_make_fixtures REPO_ROOT: writes the builder-made fixtures (tests/data/sav/builder-made/)
// and fuzz seeds (fuzz/corpus/savfile/builder-*) into the repository, after a change to the builder.
#include <filesystem>
#include <fstream>
#include <iostream>

#include "builderfixtures.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: " << argv[0] << " REPO_ROOT\n";
    return 2;
  }
  std::filesystem::path const root = argv[1];
  auto files = savfiletest::builderFixtures();
  for (auto& seed : savfiletest::builderFuzzSeeds()) files.push_back(std::move(seed));
  for (auto const& file : files) {
    std::filesystem::path const path = root / file.path;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary);
    out << file.bytes;
    if (!out) {
      std::cerr << "cannot write " << path << "\n";
      return 1;
    }
    std::cout << file.path << " (" << file.bytes.size() << " bytes)\n";
  }
  return 0;
}
