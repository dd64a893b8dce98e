#include "hosts/office/session.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include "base/attempt.h"
#include "base/text.h"
#include "hosts/office/workbook_bytes.h"

namespace quintara::office {
namespace {

// To a client of the application, what fails with a file is a refusal of the application.
template <class Body>
auto OrRefused(Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (const Failure& failure) {
    if (failure.Number() == failure::kServerGone) throw;
    throw Failure(failure::kRefused, failure.Description());
  }
}

// One spelling for each file; none is that of a workbook without a file.
std::string Normal(const std::string& path) {
  if (path.empty()) return {};
  std::error_code error;
  const auto normal = std::filesystem::weakly_canonical(ToPath(path), error);
  return error ? path : FromPath(normal);
}

// A file on its way between LibreOffice and us.
class PassingFile {
 public:
  explicit PassingFile(std::string path) : path_(std::move(path)) {}
  PassingFile(const PassingFile&) = delete;
  PassingFile& operator=(const PassingFile&) = delete;
  ~PassingFile() {
    std::error_code ignored;
    std::filesystem::remove(ToPath(path_), ignored);
  }

  const std::string& Path() const noexcept { return path_; }

  void Write(const std::string& bytes) const {
    std::ofstream file(ToPath(path_), std::ios::binary);
    if (!(file << bytes).flush()) throw Failure(failure::kDiskFull, path_ + " can't be written");
  }
  std::string Read() const {
    std::ifstream file(ToPath(path_), std::ios::binary);
    if (!file) throw Failure(failure::kRefused, path_ + " can't be read");
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::string path_;
};

}  // namespace

Session::Session(const SpreadsheetSurroundings& surroundings)
    : gate(surroundings.gate),
      files_(surroundings.files),
      bridge_(surroundings.program.empty() ? QUINTARA_OFFICE_PROGRAM "/soffice.bin" : surroundings.program,
              surroundings.limits) {}

Session::~Session() {
  Quit();
}

void Session::RequireRunning() const {
  bridge_.RequireAlive();
}

Session::Workbook Session::Active() const {
  const auto active = std::ranges::max_element(open_, {}, [](const Workbook& each) { return each->activation; });
  return active == open_.end() ? nullptr : *active;
}

Session::Workbook Session::Enter(Workbook workbook) {
  workbook->activation = ++activations_;
  return open_.emplace_back(std::move(workbook));
}

std::string Session::NewFile(const std::string& extension) {
  return bridge_.Folder() + "/passing" + std::to_string(++passing_) + extension;
}

Session::Workbook Session::Add() {
  return Enter(std::make_shared<OpenWorkbook>(bridge_.Add(sheetsInNewWorkbook), ""));
}

Session::Workbook Session::OpenFrom(const std::string& path) const {
  const auto normal = Normal(path);
  const auto isIt = [&](const Workbook& each) { return !normal.empty() && Normal(each->Path()) == normal; };
  const auto found = std::ranges::find_if(open_, isIt);
  return found == open_.end() ? nullptr : *found;
}

// LibreOffice gets a copy, so that it leaves no lock beside the file, holds none, and meets no odd path.
Session::Workbook Session::Open(const std::string& path) {
  if (const auto known = OpenFrom(path)) {
    known->activation = ++activations_;
    return known;
  }
  return OrRefused([&] {
    const auto bytes = files_->Read(path);
    RequireWorkbook(bytes, path);
    const PassingFile copy(NewFile(bytes.starts_with("PK") ? ".xlsx" : ".xls"));
    copy.Write(bytes);
    return Enter(std::make_shared<OpenWorkbook>(bridge_.Load(copy.Path(), path), path));
  });
}

void Session::Save(OpenWorkbook& workbook, const std::string& path) {
  if (path.empty()) throw Failure(failure::kRefused, "The workbook has no file yet");
  const auto holder = OpenFrom(path);
  if (holder && holder.get() != &workbook) {
    throw Failure(failure::kRefused, path + " is the file of another open workbook");
  }
  OrRefused([&] {
    const PassingFile copy(NewFile(".xls"));
    workbook.Store(copy.Path());
    files_->WriteWhole(path, copy.Read());
  });
  workbook.SetPath(path);
}

void Session::Close(const Workbook& workbook) {
  std::erase(open_, workbook);
  workbook->Close();
}

// LibreOffice wouldn't end by itself with a changed workbook open.
void Session::Quit() noexcept {
  for (const auto& workbook : std::exchange(open_, {})) {
    ErrorState ignored;
    Attempt(ignored, [&] { workbook->Close(); });
  }
  bridge_.End();
}

}  // namespace quintara::office
