// Feeds every file of a corpus to the fuzz target that it is linked with. The target aborts where a promise is broken.
//
//   <name>_replay FOLDER    prints how many files were read; fails for a folder that holds none
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> filesIn(const char* folder) {
  std::vector<std::filesystem::path> files;
  std::error_code problem;
  for (const auto& entry : std::filesystem::directory_iterator(folder, problem))
    if (entry.is_regular_file()) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

bool feed(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  if (!file) return false;
  // Told before, so that the last line names the file that broke it.
  std::printf("%s\n", path.filename().c_str());
  std::fflush(stdout);
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  return true;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", arguments[0]);
    return 2;
  }
  const auto files = filesIn(arguments[1]);
  for (const auto& path : files) {
    if (feed(path)) continue;
    std::fprintf(stderr, "%s cannot be read\n", path.c_str());
    return 1;
  }
  std::printf("%zu files\n", files.size());
  return files.empty() ? 1 : 0;
}
