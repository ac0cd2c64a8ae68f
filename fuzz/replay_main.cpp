// fuzz/replay_main.cpp
//
// Runs a fuzz target without a fuzzing engine: every file in the folders (or the files) named on
// the command line goes once through LLVMFuzzerTestOneInput. A target aborts on a mismatch, so
// reaching the end means the whole corpus passed; a missing or empty corpus fails.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "fuzz/driver.h"

int main(int argc, char** argv) {
  namespace fs = std::filesystem;
  std::vector<fs::path> files;
  for (int i = 1; i < argc; ++i) {
    if (fs::is_directory(argv[i])) {
      for (const auto& entry : fs::directory_iterator(argv[i])) files.push_back(entry.path());
    } else if (fs::is_regular_file(argv[i])) {
      files.emplace_back(argv[i]);
    } else {
      std::fprintf(stderr, "%s: no such corpus\n", argv[i]);
      return 1;
    }
  }
  for (const auto& file : files) {
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
  }
  std::printf("%zu passed, 0 failed\n", files.size());
  return files.empty() ? 1 : 0;
}
