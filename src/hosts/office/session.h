#pragma once

#include <concepts>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "hosts/gate/operation_name.h"
#include "hosts/office/open_workbook.h"
#include "hosts/office/spreadsheet_host.h"

namespace quintara::office {

/// One running application: its LibreOffice and its workbooks.
class Session {
 public:
  explicit Session(const SpreadsheetSurroundings& surroundings);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  using Workbook = std::shared_ptr<OpenWorkbook>;

  const std::vector<Workbook>& Workbooks() const noexcept { return open_; }
  /// Nothing when none is open.
  Workbook Active() const;
  Workbook Add();
  Workbook Open(const std::string& path);
  void Save(OpenWorkbook& workbook, const std::string& path);
  void Close(const Workbook& workbook);
  /// Closes what is open without saving, and ends.
  void Quit() noexcept;

  void RequireRunning() const;
  const Bridge& TheBridge() const noexcept { return bridge_; }

  std::shared_ptr<Gate> gate;
  bool visible = false;
  int sheetsInNewWorkbook = 3;

 private:
  Workbook Enter(Workbook workbook);
  /// The open one of this file, or nothing.
  Workbook OpenFrom(const std::string& path) const;
  std::string NewFile(const std::string& extension);

  std::shared_ptr<FileContents> files_;
  Bridge bridge_;
  std::vector<Workbook> open_;
  int activations_ = 0;
  int passing_ = 0;
};

/// The base of the application's objects: each operation first passes the gate, then requires that the
/// application still runs.
template <OperationLiteral Kind, class Contract>
class SessionObject : public Contract {
 public:
  explicit SessionObject(std::shared_ptr<Session> session) : session_(std::move(session)) {}

  const Session& TheSession() const noexcept { return *session_; }

 protected:
  virtual void RequireAlive() const { session_->RequireRunning(); }

  template <OperationLiteral Operation>
  void Pass() const {
    session_->gate->Pass(kGateName<Kind, Operation>);
    RequireAlive();
  }
  template <OperationLiteral Operation, std::invocable Detail>
  void Pass(Detail&& detail) const {
    session_->gate->Pass(kGateName<Kind, Operation>, std::forward<Detail>(detail));
    RequireAlive();
  }

  std::shared_ptr<Session> session_;
};

/// The base of the objects of one workbook, which fail once it is closed.
template <OperationLiteral Kind, class Contract>
class WorkbookPart : public SessionObject<Kind, Contract> {
 public:
  WorkbookPart(std::shared_ptr<Session> session, std::shared_ptr<OpenWorkbook> workbook)
      : SessionObject<Kind, Contract>(std::move(session)), workbook_(std::move(workbook)) {}

 protected:
  void RequireAlive() const override {
    SessionObject<Kind, Contract>::RequireAlive();
    if (!workbook_->IsOpen()) throw Failure(failure::kInvalidCall, "The workbook " + workbook_->Path() + " is closed");
  }

  std::shared_ptr<OpenWorkbook> workbook_;
};

}  // namespace quintara::office
