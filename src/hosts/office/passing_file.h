#pragma once

#include <string>
#include <utility>

namespace quintara::office {

/// A file on its way between LibreOffice and us, gone at the end.
class PassingFile {
 public:
  explicit PassingFile(std::string path) : path_(std::move(path)) {}
  PassingFile(const PassingFile&) = delete;
  PassingFile& operator=(const PassingFile&) = delete;
  ~PassingFile();

  const std::string& Path() const noexcept { return path_; }

  void Write(const std::string& bytes) const;
  std::string Read() const;

 private:
  std::string path_;
};

}  // namespace quintara::office
