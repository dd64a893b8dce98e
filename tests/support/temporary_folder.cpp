#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

#include "base/text.h"
#include "support/test_platform.h"

namespace quintara::test {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
  std::random_device chance;
  fs::path path;
  do {
    path = fs::temp_directory_path() / ("quintara-test-" + std::to_string(chance()));
  } while (!fs::create_directory(path));
  path_ = FromPath(path);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(ToPath(path_), ignored);
}

std::string TemporaryFolder::Path(const std::string& name) const {
  return name.empty() ? path_ : FromPath(ToPath(path_) / ToPath(name));
}

void TemporaryFolder::Write(const std::string& name, const std::string& bytes) const {
  std::ofstream file(ToPath(Path(name)), std::ios::binary);
  file << bytes;
  file.close();
  if (!file) throw std::runtime_error("can't write " + Path(name));
}

std::string TemporaryFolder::Read(const std::string& name) const {
  std::ifstream file(ToPath(Path(name)), std::ios::binary);
  if (!file) throw std::runtime_error("can't read " + Path(name));
  return {std::istreambuf_iterator<char>(file), {}};
}

bool TemporaryFolder::Has(const std::string& name) const {
  return fs::exists(ToPath(Path(name)));
}

std::vector<std::string> TemporaryFolder::Names() const {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(ToPath(path_))) names.push_back(FromPath(entry.path().filename()));
  std::ranges::sort(names);
  return names;
}

}  // namespace quintara::test
