// Replays files through a fuzzer where libFuzzer is not at hand: `PROGRAM FILE_OR_FOLDER...`.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> FilesIn(const fs::path& path) {
  if (!fs::is_directory(path)) return {path};
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(path)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  if (files.empty()) throw std::runtime_error(path.string() + ": the folder holds no file");
  return files;
}

void Replay(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw std::runtime_error(file.string() + ": cannot be read");
  std::cout << file.string() << std::endl;  // flushed, so that the last line of a crash names its input
  const std::vector<char> bytes(std::istreambuf_iterator<char>(stream), {});
  const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
  LLVMFuzzerTestOneInput(input.data(), input.size());
}

int ReplayAll(int count, char** paths) {
  std::size_t replayed = 0;
  for (int i = 0; i < count; ++i) {
    for (const auto& file : FilesIn(paths[i])) {
      Replay(file);
      ++replayed;
    }
  }
  std::cout << replayed << " inputs replayed\n";
  return replayed > 0 ? 0 : 2;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return ReplayAll(argc - 1, argv + 1);
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 2;
  }
}
