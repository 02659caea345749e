// Runs a fuzz target's entry point once on each file named on the command line (a directory
// stands for the files in it, in name order), so that the seeds and the regression inputs run as
// plain tests in every build, sanitized or not, without libFuzzer.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int* argc, char*** argv);

namespace {

std::vector<std::filesystem::path> inputsOf(std::filesystem::path const& named) {
  std::vector<std::filesystem::path> inputs;
  if (std::filesystem::is_directory(named)) {
    for (auto const& entry : std::filesystem::directory_iterator(named)) {
      if (entry.is_regular_file()) inputs.push_back(entry.path());
    }
    std::sort(inputs.begin(), inputs.end());
  } else {
    inputs.push_back(named);
  }
  return inputs;
}

}  // namespace

int main(int argc, char** argv) {
  if (LLVMFuzzerInitialize != nullptr) LLVMFuzzerInitialize(&argc, &argv);
  std::size_t count = 0;
  for (int i = 1; i < argc; ++i) {
    for (std::filesystem::path const& input : inputsOf(argv[i])) {
      std::ifstream in(input, std::ios::binary);
      if (!in) {
        std::cerr << "cannot read " << input << '\n';
        return 1;
      }
      std::vector<char> const bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
      std::cout << input.filename().string() << std::endl;  // names the input a crash happened on
      LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const*>(bytes.data()), bytes.size());
      ++count;
    }
  }
  std::cout << count << " inputs replayed\n";
  return count == 0 ? 1 : 0;
}
