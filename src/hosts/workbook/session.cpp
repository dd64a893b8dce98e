#include "hosts/workbook/session.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "base/attempt.h"
#include "base/text.h"

namespace quintara::workbook {
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

}  // namespace

Session::Session(std::shared_ptr<Gate> theGate, std::shared_ptr<FileContents> files, std::unique_ptr<Engine> engine)
    : gate(std::move(theGate)), files_(std::move(files)), engine_(std::move(engine)) {}

Session::~Session() {
  Quit();
}

void Session::RequireRunning() const {
  engine_->RequireAlive();
}

Session::Workbook Session::Active() const {
  const auto active = std::ranges::max_element(open_, {}, [](const Workbook& each) { return each->activation; });
  return active == open_.end() ? nullptr : *active;
}

Session::Workbook Session::Enter(Workbook workbook) {
  workbook->activation = ++activations_;
  return open_.emplace_back(std::move(workbook));
}

Session::Workbook Session::Add() {
  return Enter(std::make_shared<OpenWorkbook>(engine_->Add(sheetsInNewWorkbook), ""));
}

Session::Workbook Session::OpenFrom(const std::string& path) const {
  const auto normal = Normal(path);
  const auto isIt = [&](const Workbook& each) { return !normal.empty() && Normal(each->Path()) == normal; };
  const auto found = std::ranges::find_if(open_, isIt);
  return found == open_.end() ? nullptr : *found;
}

Session::Workbook Session::Open(const std::string& path) {
  if (const auto known = OpenFrom(path)) {
    known->activation = ++activations_;
    return known;
  }
  return OrRefused(
      [&] { return Enter(std::make_shared<OpenWorkbook>(engine_->Load(files_->Read(path), path), path)); });
}

void Session::Save(OpenWorkbook& workbook, const std::string& path) {
  if (path.empty()) throw Failure(failure::kRefused, "The workbook has no file yet");
  const auto holder = OpenFrom(path);
  if (holder && holder.get() != &workbook) {
    throw Failure(failure::kRefused, path + " is the file of another open workbook");
  }
  OrRefused([&] { files_->WriteWhole(path, workbook.Bytes()); });
  workbook.SetPath(path);
}

void Session::Close(const Workbook& workbook) {
  std::erase(open_, workbook);
  workbook->Close();
}

// Some don't end by themselves with a changed workbook open.
void Session::Quit() noexcept {
  for (const auto& workbook : std::exchange(open_, {})) {
    ErrorState ignored;
    Attempt(ignored, [&] { workbook->Close(); });
  }
  engine_->End();
}

}  // namespace quintara::workbook
