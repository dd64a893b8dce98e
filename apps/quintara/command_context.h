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
#include "views/console/message_boxes.h"
#include "views/console/progress_bar.h"
#include "views/console/terminal.h"
#include "views/console/text_table.h"

namespace quintara {

/// What the program stands in: its streams, what they are connected to, and the gate that all its
/// hosts pass.
struct ProgramSurroundings {
  std::istream& in;
  std::ostream& out;
  std::ostream& errors;
  Terminal terminal;
  std::shared_ptr<Gate> gate = std::make_shared<Gate>();
};

/// The options that every verb has.
struct CommonOptions {
  std::string workFolder;  ///< empty: the current one
  bool yes = false;
  bool no = false;
};

/// What a verb works with: the embedded hosts on the work directory, the geometry and the console,
/// put together for one run of the program. Installs the platform for as long as it lives.
class CommandContext {
 public:
  /// Wrong use when the work directory isn't a folder.
  CommandContext(const ProgramSurroundings& surroundings, const CommonOptions& options);
  ~CommandContext();
  CommandContext(const CommandContext&) = delete;
  CommandContext& operator=(const CommandContext&) = delete;

  CadHost& Host() { return *host_; }
  Geometry& TheGeometry() { return *geometry_; }
  Platform& ThePlatform() { return *platform_; }
  FileContents& Files() { return platform_->Contents(); }

  /// The absolute path of the work directory, or of a file in it.
  std::string WorkPath(const std::string& fileName = {}) const;

  /// True when trees can be drawn with more than ASCII.
  bool HasUtf8Screen() const { return surroundings_.terminal.utf8; }

  /// A line of the result, on standard output.
  void Print(const std::string& line);
  void Print(const TextTable& table);
  /// Something that went wrong though the verb goes on: a line on standard error, and exit code 1.
  void Complain(const std::string& line);

  /// Where long work tells how far it is: a bar, on a terminal. Fails when the program was
  /// interrupted, and so ends the work.
  Progress ProgressBarOn();

  /// True when nothing but success, questions and choices was shown.
  bool AllWentWell() const;

 private:
  void ClearBar();

  ProgramSurroundings surroundings_;
  MessageBoxes boxes_;
  std::optional<ProgressBar> bar_;
  std::string workFolder_;
  std::shared_ptr<NativePlatform> platform_;
  std::shared_ptr<Platform> platformBefore_;
  std::unique_ptr<CadHost> host_;
  std::unique_ptr<Geometry> geometry_;
  bool complained_ = false;
};

}  // namespace quintara
