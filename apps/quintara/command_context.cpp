#include "quintara/command_context.h"

#include <istream>
#include <ostream>
#include <system_error>
#include <utility>

#include "access/session/process.h"
#include "access/session/the_platform.h"
#include "base/text.h"
#include "geometry/occ_geometry.h"
#include "hosts/native/native_files.h"
#include "quintara/interruption.h"
#include "quintara/spreadsheet_access.h"
#include "quintara/vault_dialog.h"
#include "quintara/wrong_use.h"
#include "views/console/ncurses_screen.h"
#include "views/console/questions.h"
#include "views/console/screen_text.h"

namespace quintara {
namespace {

namespace fs = std::filesystem;

MessageBoxes::Answers AnswersFor(const CommonOptions& options, bool canAsk) {
  if (options.yes) return MessageBoxes::Answers::kYes;
  return canAsk ? MessageBoxes::Answers::kAsk : MessageBoxes::Answers::kNo;
}

// Tells of success, or that a choice comes next. A text that was shown is what its global holds, since showing it fills
// that in place.
bool IsSuccess(const std::string& text) {
  const auto& texts = Process().texts;
  return !text.empty() &&
         (text == texts.QD_APPLICATION_WIP_CREATION_SUCCESSFUL.text || text == texts.QD_GETMATRIX_SUCCESSFUL.text ||
          text == texts.QD_GLOBALREFRESH_SUCCESSFUL.text || text == texts.QD_FRMMAINPANEL_SEVERAL_MATRIX_FOUND.text);
}

// What a database server complains of comes in several lines.
std::string Joined(const std::string& text) {
  std::string joined;
  for (const char c : text) {
    const bool isBreak = c == '\n' || c == '\r' || c == '\t';
    if (!isBreak) joined += c;
    if (isBreak && !joined.empty() && joined.back() != ' ') joined += ' ';
  }
  if (!joined.empty() && joined.back() == ' ') joined.pop_back();
  return joined;
}

// Someone must be there to type and to see the question.
bool CanAsk(const CommonOptions& options, const Terminal& terminal) {
  return !options.no && terminal.input && terminal.errors;
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
      canAsk_(CanAsk(options, surroundings.terminal)),
      boxes_(surroundings.in, surroundings.errors, AnswersFor(options, canAsk_), IsSuccess),
      dialogs_(DialogSurroundings()),
      choice_(ChooseUser(options, surroundings.environment)) {
  if (!choice_.workFolder.empty()) workFolder_ = AbsoluteFolder(choice_.workFolder);
  if (surroundings_.terminal.errors) bar_.emplace(surroundings_.errors, surroundings_.terminal.columns);
  platform_ = std::make_shared<NativePlatform>(
      surroundings_.gate,
      [this](const std::string& text, int style, const std::string& title) { return ShowBox(text, style, title); });
  platform_->SetViewMaker(
      [this](const dialog::Layout& layout, dialog::Events& events) { return dialogs_.Make(layout, events); });
  const auto ask = [this](const std::string& warning) {
    return platform_->ShowBox(warning + "\nLoad it all the same?", box::kYesNo + box::kQuestion, "Quintara") ==
           answer::kYes;
  };
  host_ = std::make_unique<CadHost>(
      CadHost::Surroundings{surroundings_.gate, std::make_shared<NativeContents>(surroundings_.gate), ask});
  geometry_ = MakeOccGeometry();
  platform_->Register("ZORVA.Application", host_->Application());
  platform_->OnSleep([this] { host_->NoteSleep(); });
  RegisterSpreadsheet(*platform_, surroundings_.gate);
  vault_ = std::make_unique<VaultAccess>(
      VaultAccess::Surroundings{surroundings_.gate, surroundings_.environment, platform_.get(), host_.get(),
                                geometry_.get(), ProgressBarOn(),
                                [this](const std::string& question) { return AskPassword(question); },
                                [this](const VaultDialog& dialog) { return AnswerDialog(dialog); }},
      choice_);
  platformBefore_ = InstallPlatform(platform_);
}

// What the commands share must not outlive the hosts that it refers to.
CommandContext::~CommandContext() {
  ResetProcess();
  InstallPlatform(std::move(platformBefore_));
}

ConsoleDialogs::Surroundings CommandContext::DialogSurroundings() {
  const auto show = [this](std::optional<double> fraction, const std::string& what) {
    ThrowIfInterrupted();
    dialogs_.TheScreen().Suspend();
    if (bar_ && fraction) bar_->Show(*fraction, what);
    if (bar_ && !fraction) bar_->ShowText(what);
  };
  return {canAsk_, {OpenTerminal, surroundings_.terminal.utf8, ThrowIfInterrupted}, {show, [this] { ClearBar(); }}};
}

// A dialog on the full screen covers what is printed.
int CommandContext::ShowBox(const std::string& text, int style, const std::string& title) {
  ClearBar();
  const int answer = boxes_.Show(text, style, title);
  dialogs_.TheScreen().Tell(text);
  return answer;
}

std::string CommandContext::FindWorkFolder() const {
  return vault_->IsThere() ? vault_->WorkFolder() : AbsoluteFolder({});
}

std::string CommandContext::WorkPath(const std::string& fileName) const {
  if (workFolder_.empty()) workFolder_ = FindWorkFolder();
  return fileName.empty() ? workFolder_ : FromPath(ToPath(workFolder_) / ToPath(fileName));
}

std::string CommandContext::WorkPathToWrite(const std::string& fileName) const {
  MakeWorkFolder(WorkPath());
  return WorkPath(fileName);
}

EmbeddedVault* CommandContext::Vault() {
  return vault_->IsThere() ? &RequireVault() : nullptr;
}

EmbeddedVault& CommandContext::RequireVault() {
  return vault_->Open(vault_->IsThere() ? WorkPath() : std::string());
}

std::optional<std::string> CommandContext::AskPassword(const std::string& question) {
  if (!canAsk_) return std::nullopt;
  ClearBar();
  return AskSecret(surroundings_.in, surroundings_.errors, question);
}

std::string CommandContext::Variable(const std::string& name) const {
  return surroundings_.environment ? surroundings_.environment(name) : std::string();
}

std::optional<std::string> CommandContext::AskNewPassword(const std::string& login) {
  if (!canAsk_) return std::nullopt;
  auto password = AskPassword("New password of '" + login + "', or nothing for none: ");
  const auto again = password ? AskPassword("The same again: ") : std::nullopt;
  if (!again) throw WrongUse("no password was typed");
  if (*again != *password) throw WrongUse("the two passwords differ");
  return password;
}

std::optional<std::string> CommandContext::PipedLine() {
  std::string line;
  if (surroundings_.terminal.input || !std::getline(surroundings_.in, line)) return std::nullopt;
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return line;
}

std::optional<std::size_t> CommandContext::AnswerDialog(const VaultDialog& dialog) {
  if (!canAsk_) return std::nullopt;
  ClearBar();
  auto answer = AnswerVaultDialog(dialog, surroundings_.in, surroundings_.errors);
  if (answer && dialog.kind == kLookAtDialog && dialogs_.TheScreen().IsShown()) {
    AwaitEnter(surroundings_.in, surroundings_.errors);
  }
  return answer;
}

void CommandContext::Print(const std::string& line) {
  ClearBar();
  surroundings_.out << OneLine(line) << '\n';
}

void CommandContext::Print(const TextTable& table) {
  ClearBar();
  table.Print(surroundings_.out);
}

void CommandContext::Note(const std::string& line) {
  ClearBar();
  surroundings_.errors << "quintara: " << OneLine(line) << '\n';
}

void CommandContext::Complain(const std::string& line) {
  ClearBar();
  complained_ = true;
  surroundings_.errors << "quintara: " << OneLine(Joined(line)) << '\n';
}

Progress CommandContext::ProgressBarOn() {
  return [this](double fraction, const std::string& what) {
    ThrowIfInterrupted();
    dialogs_.TheScreen().Suspend();
    if (bar_) bar_->Show(fraction, what);
  };
}

bool CommandContext::AllWentWell() const {
  return !complained_ && !boxes_.FailureShown();
}

void CommandContext::ClearBar() {
  dialogs_.TheScreen().Suspend();
  if (bar_) bar_->Clear();
}

}  // namespace quintara
