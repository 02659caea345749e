// The system files the test builder makes for what no open writer writes (old layouts, big-endian
// files, variable sets, date records, forged and corrupt records) and the builder-made fuzz seeds.
// savfile_make_fixtures writes them into the repository; BuilderFixtures.* checks that the committed
// copies are what the builder makes today.
#pragma once

#include <string>
#include <vector>

namespace savfiletest {

struct BuilderFile {
  std::string path;  // relative to the repository's root
  std::string bytes;
};

// tests/data/sav/builder-made/: read by the corpus and PSPP cross-check tests.
std::vector<BuilderFile> builderFixtures();
// fuzz/corpus/savfile/builder-*: the fixtures that are small, plus seeds of their own.
std::vector<BuilderFile> builderFuzzSeeds();

}  // namespace savfiletest
