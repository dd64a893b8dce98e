#include "matrix/matrix_document.h"

#include "access/session/the_platform.h"
#include "access/utils/files.h"
#include "base/attempt.h"
#include "base/failure.h"

namespace quintara {
namespace {

void RemoveLeftover(FileSystemObject& files, const std::string& path) {
  ErrorState ignored;
  Attempt(ignored, [&] { files.DeleteFile(path, true); });
}

}  // namespace

bool MatrixDocument::Load(const std::string& path) {
  std::string bytes;
  ErrorState failure;
  if (!Attempt(failure, [&] { bytes = ThePlatform().Contents().Read(path); })) {
    error_ = {failure.number, failure.description};
    return false;
  }
  return LoadBytes(bytes);
}

bool MatrixDocument::LoadBytes(const std::string& bytes) {
  const bool parsed = document_.Parse(bytes);
  error_ = document_.ParseError();
  return parsed;
}

void MatrixDocument::Save(const std::string& path) {
  const std::string beside = path + ".new";
  auto& contents = ThePlatform().Contents();
  const auto files = ThePlatform().FileSystem();
  contents.Write(beside, document_.Text());
  ErrorState failure;
  if (!Attempt(failure, [&] { DeleteIfThere(*files, path); })) {
    RemoveLeftover(*files, beside);
    throw Failure(failure.number, failure.description);
  }
  if (!Attempt(failure, [&] { contents.Rename(beside, path); })) {
    throw Failure(failure.number, failure.description + " (the new file is kept as \"" + beside + "\")");
  }
}

}  // namespace quintara
