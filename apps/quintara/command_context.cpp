#include "quintara/command_context.h"

#include <ostream>
#include <system_error>
#include <utility>

#include "access/session/the_platform.h"
#include "base/text.h"
#include "geometry/occ_geometry.h"
#include "hosts/native/native_files.h"
#include "quintara/interruption.h"
#include "quintara/wrong_use.h"
#include "views/console/screen_text.h"

namespace quintara {
namespace {

namespace fs = std::filesystem;

MessageBoxes::Answers AnswersFor(const CommonOptions& options, const Terminal& terminal) {
  if (options.yes) return MessageBoxes::Answers::kYes;
  if (options.no || !terminal.input || !terminal.errors) return MessageBoxes::Answers::kNo;
  return MessageBoxes::Answers::kAsk;
}

std::string AbsoluteFolder(const std::string& folder) {
  std::error_code error;
  const auto path = folder.empty() ? fs::current_path(error) : fs::absolute(ToPath(folder), error);
  if (error) throw WrongUse("the work directory can't be found: " + error.message());
  if (!fs::is_directory(path, error)) throw WrongUse("the work directory '" + folder + "' is no folder");
  return FromPath(path.lexically_normal());
}

}  // namespace

CommandContext::CommandContext(const ProgramSurroundings& surroundings, const CommonOptions& options)
    : surroundings_(surroundings),
      boxes_(surroundings.in, surroundings.errors, AnswersFor(options, surroundings.terminal)),
      workFolder_(AbsoluteFolder(options.workFolder)) {
  if (surroundings_.terminal.errors) bar_.emplace(surroundings_.errors, surroundings_.terminal.columns);
  const auto showBox = [this](const std::string& text, int style, const std::string& title) {
    ClearBar();
    return boxes_.Show(text, style, title);
  };
  platform_ = std::make_shared<NativePlatform>(surroundings_.gate, showBox);
  const auto ask = [this](const std::string& warning) {
    return platform_->ShowBox(warning + "\nLoad it all the same?", box::kYesNo + box::kQuestion, "Quintara") ==
           answer::kYes;
  };
  host_ = std::make_unique<CadHost>(
      CadHost::Surroundings{surroundings_.gate, std::make_shared<NativeContents>(surroundings_.gate), ask});
  geometry_ = MakeOccGeometry();
  platform_->Register("ZORVA.Application", host_->Application());
  platform_->OnSleep([this] { host_->NoteSleep(); });
  platformBefore_ = InstallPlatform(platform_);
}

CommandContext::~CommandContext() {
  InstallPlatform(std::move(platformBefore_));
}

std::string CommandContext::WorkPath(const std::string& fileName) const {
  return fileName.empty() ? workFolder_ : FromPath(ToPath(workFolder_) / ToPath(fileName));
}

void CommandContext::Print(const std::string& line) {
  ClearBar();
  surroundings_.out << OneLine(line) << '\n';
}

void CommandContext::Print(const TextTable& table) {
  ClearBar();
  table.Print(surroundings_.out);
}

void CommandContext::Complain(const std::string& line) {
  ClearBar();
  complained_ = true;
  surroundings_.errors << "quintara: " << OneLine(line) << '\n';
}

Progress CommandContext::ProgressBarOn() {
  return [this](double fraction, const std::string& what) {
    ThrowIfInterrupted();
    if (bar_) bar_->Show(fraction, what);
  };
}

bool CommandContext::AllWentWell() const {
  return !complained_ && !boxes_.FailureShown();
}

void CommandContext::ClearBar() {
  if (bar_) bar_->Clear();
}

}  // namespace quintara
