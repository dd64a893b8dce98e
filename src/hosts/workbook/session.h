#pragma once

#include <concepts>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "access/contracts/file_system.h"
#include "hosts/gate/gate.h"
#include "hosts/gate/operation_name.h"
#include "hosts/workbook/open_workbook.h"

namespace quintara::workbook {

/// One running application: what keeps its workbooks, and those that are open.
class Session {
 public:
  Session(std::shared_ptr<Gate> theGate, std::shared_ptr<FileContents> files, std::unique_ptr<Engine> engine);
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
  const Engine& TheEngine() const noexcept { return *engine_; }

  std::shared_ptr<Gate> gate;
  bool visible = false;
  int sheetsInNewWorkbook = 3;

 private:
  Workbook Enter(Workbook workbook);
  /// The open one of this file, or nothing.
  Workbook OpenFrom(const std::string& path) const;

  std::shared_ptr<FileContents> files_;
  std::unique_ptr<Engine> engine_;
  std::vector<Workbook> open_;
  int activations_ = 0;
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

}  // namespace quintara::workbook
