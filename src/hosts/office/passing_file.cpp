#include "hosts/office/passing_file.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include "base/failure.h"
#include "base/text.h"

namespace quintara::office {

PassingFile::~PassingFile() {
  std::error_code ignored;
  std::filesystem::remove(ToPath(path_), ignored);
}

void PassingFile::Write(const std::string& bytes) const {
  std::ofstream file(ToPath(path_), std::ios::binary);
  if (!(file << bytes).flush()) throw Failure(failure::kDiskFull, path_ + " can't be written");
}

std::string PassingFile::Read() const {
  std::ifstream file(ToPath(path_), std::ios::binary);
  if (!file) throw Failure(failure::kRefused, path_ + " can't be read");
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace quintara::office
