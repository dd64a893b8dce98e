#pragma once

#include <iosfwd>
#include <memory>
#include <optional>
#include <string>

#include "access/contracts/geometry.h"
#include "access/contracts/platform.h"
#include "hosts/cad/cad_host.h"
#include "hosts/gate/gate.h"
#include "hosts/native/native_platform.h"
#include "hosts/vault/embedded_vault.h"
#include "quintara/user_choice.h"
#include "quintara/vault_access.h"
#include "views/console/console_dialogs.h"
#include "views/console/message_boxes.h"
#include "views/console/progress_bar.h"
#include "views/console/terminal.h"
#include "views/console/text_table.h"

namespace quintara {

/// What the program stands in: its streams, what they are connected to, the gate that all its hosts
/// pass, and its environment.
struct ProgramSurroundings {
  std::istream& in;
  std::ostream& out;
  std::ostream& errors;
  Terminal terminal;
  std::shared_ptr<Gate> gate = std::make_shared<Gate>();
  Environment environment = {};  ///< without it no variable is set
};

/// What a verb works with: the embedded hosts on the work directory, the vault where there is one,
/// the geometry and the console, put together for one run of the program. Installs the platform for
/// as long as it lives.
class CommandContext {
 public:
  /// Wrong use when the work directory that was named isn't a folder.
  CommandContext(const ProgramSurroundings& surroundings, const CommonOptions& options);
  ~CommandContext();
  CommandContext(const CommandContext&) = delete;
  CommandContext& operator=(const CommandContext&) = delete;

  CadHost& Host() { return *host_; }
  Geometry& TheGeometry() { return *geometry_; }
  Platform& ThePlatform() { return *platform_; }
  FileContents& Files() { return platform_->Contents(); }

  /// The absolute path of the work directory, or of a file in it. The work directory is the one that was
  /// named, else, with a vault, the user's folder in that, else the current one.
  std::string WorkPath(const std::string& fileName = {}) const;
  /// The same for a file that is to be written: a user's folder that isn't there yet is made.
  std::string WorkPathToWrite(const std::string& fileName) const;

  /// The vault, opened at the first call, from when on it runs beside the CAD host; null where there is none.
  /// Wrong use for one that can't be meant, and for a user or password that it doesn't know.
  EmbeddedVault* Vault();
  /// The same, but wrong use where there is none.
  EmbeddedVault& RequireVault();
  /// The folder that was named as that of the vault, empty for none, and its user; the vault isn't looked at.
  const std::string& NamedVault() const { return choice_.namedVault; }
  const std::string& User() const { return vault_->User(); }

  /// The value of an environment variable; empty when it isn't set.
  std::string Variable(const std::string& name) const;
  /// A password that `login` is to get, typed twice; nothing where nobody can be asked. Wrong use when the two
  /// differ, and at the end of the input.
  std::optional<std::string> AskNewPassword(const std::string& login);
  /// The next line of standard input, unless that is a terminal; nothing at its end.
  std::optional<std::string> PipedLine();

  /// True when someone is there to answer questions.
  bool IsAttended() const { return canAsk_; }
  /// What makes the views of dialogs.
  ConsoleDialogs& Dialogs() { return dialogs_; }

  /// True when trees can be drawn with more than ASCII.
  bool HasUtf8Screen() const { return surroundings_.terminal.utf8; }

  /// A line of the result, on standard output.
  void Print(const std::string& line);
  void Print(const TextTable& table);
  /// What is worth knowing though nothing went wrong: a line on standard error.
  void Note(const std::string& line);
  /// Something that went wrong though the verb goes on: a line on standard error, and exit code 1.
  void Complain(const std::string& line);

  /// Where long work tells how far it is: a bar, on a terminal. Fails when the program was
  /// interrupted, and so ends the work.
  Progress ProgressBarOn();

  /// True when nothing but success, questions and choices was shown.
  bool AllWentWell() const;

 private:
  void ClearBar();
  ConsoleDialogs::Surroundings DialogSurroundings();
  int ShowBox(const std::string& text, int style, const std::string& title);

  std::string FindWorkFolder() const;
  std::optional<std::string> AskPassword(const std::string& question);
  std::optional<std::size_t> AnswerDialog(const VaultDialog& dialog);

  ProgramSurroundings surroundings_;
  bool canAsk_;
  MessageBoxes boxes_;
  std::optional<ProgressBar> bar_;
  ConsoleDialogs dialogs_;
  UserChoice choice_;
  mutable std::string workFolder_;  ///< empty until it is needed first
  std::shared_ptr<NativePlatform> platform_;
  std::shared_ptr<Platform> platformBefore_;
  std::unique_ptr<CadHost> host_;
  std::unique_ptr<Geometry> geometry_;
  std::unique_ptr<VaultAccess> vault_;
  bool complained_ = false;
};

}  // namespace quintara
