// Runs one fuzz target on stored inputs: fuzz_replay_NAME FOLDER... A folder may be missing or
// empty, but not all of them. The last file named is the one that failed.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <vector>

#include "target.h"

int main(int argc, char** argv) {
  namespace fs = std::filesystem;
  std::set<fs::path> files;
  for (int i = 1; i < argc; ++i) {
    if (!fs::is_directory(argv[i])) continue;
    for (const auto& entry : fs::directory_iterator(argv[i])) files.insert(entry.path());
  }
  for (const fs::path& path : files) {
    std::printf("%s\n", path.c_str());
    std::fflush(stdout);
    std::ifstream file(path, std::ios::binary);
    // A copy that is exactly as long as the file, so that the sanitizers see a step over its end.
    const std::vector<char> content{std::istreambuf_iterator<char>(file), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
  }
  std::printf("%zu inputs\n", files.size());
  return files.empty() ? 1 : 0;
}
