#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "access/contracts/veldora.h"
#include "base/failure.h"
#include "services/substitutes.h"

namespace quintara::test {

/// What a test wants of the service of life-cycle operations, and what was asked of it.
struct Watch {
  std::optional<bool> canPerform;  ///< the answer, instead of the vault's
  bool refuses = false;            ///< check-out and new release fail
  bool givesNothing = false;       ///< both run, and give no object
  std::vector<std::string> asked;  ///< "CanPerform 0", "CheckOut without record or scripts"
};

/// Hands everything on to another service but what the watch is about.
class WatchedUtil : public veldora::VdSessionUtil, public std::enable_shared_from_this<WatchedUtil> {
 public:
  WatchedUtil(Ref<veldora::VdSessionUtil> util, Watch& watch) : util_(std::move(util)), watch_(watch) {}

  bool CanPerform(const Ref<veldora::VdObject>& object, const Ref<veldora::VdOperation>& operation, int flag) override {
    watch_.asked.push_back("CanPerform " + std::to_string(flag));
    return watch_.canPerform ? *watch_.canPerform : util_->CanPerform(object, operation, flag);
  }
  Ref<veldora::VdObject> CheckOut(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record,
                                  bool invokeScripts) override {
    return Watched("CheckOut", record, invokeScripts, [&] { return util_->CheckOut(object, record, invokeScripts); });
  }
  Ref<veldora::VdObject> NewRelease(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record,
                                    bool invokeScripts) override {
    return Watched("NewRelease", record, invokeScripts,
                   [&] { return util_->NewRelease(object, record, invokeScripts); });
  }
  int CheckIn(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record, bool scripts) override {
    return util_->CheckIn(object, record, scripts);
  }
  int Release(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record, bool scripts) override {
    return util_->Release(object, record, scripts);
  }
  int Obsolete(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record, bool scripts) override {
    return util_->Obsolete(object, record, scripts);
  }
  void RunOperation(const Ref<veldora::VdObject>& object, const Ref<veldora::VdOperation>& operation, bool flag,
                    const Ref<veldora::VdRecList>& rows, const Ref<veldora::VdRecList>& parameters) override {
    util_->RunOperation(object, operation, flag, rows, parameters);
  }
  int CopyVaultFile(std::int32_t vaultObjectId, const std::string& vaultDirectory, const std::string& fileName,
                    const std::string& targetDirectory, const std::string& targetName) override {
    return util_->CopyVaultFile(vaultObjectId, vaultDirectory, fileName, targetDirectory, targetName);
  }
  void CopyDocumentFile(const Ref<veldora::VdObject>& document, const std::string& targetName,
                        const std::string& targetDirectory, int flag) override {
    util_->CopyDocumentFile(document, targetName, targetDirectory, flag);
  }
  Ref<veldora::VdSessionUtil> AsVdSessionUtil() override { return Ref<veldora::VdSessionUtil>(shared_from_this()); }

 private:
  template <class Body>
  Ref<veldora::VdObject> Watched(const std::string& name, const Ref<veldora::VdRecord>& record, bool invokeScripts,
                                 Body&& body) {
    watch_.asked.push_back(name + (record || invokeScripts ? " with record or scripts" : " without record or scripts"));
    if (watch_.refuses) throw Failure(failure::kPermissionDenied);
    const auto given = body();
    return watch_.givesNothing ? nullptr : given;
  }

  Ref<veldora::VdSessionUtil> util_;
  Watch& watch_;
};

/// A session whose service of life-cycle operations is watched.
class WatchedSession : public HandingOn {
 public:
  WatchedSession(Ref<veldora::VdSession> session, Watch& watch) : HandingOn(std::move(session)), watch_(watch) {}

  Ref<AnyObject> GetService(const std::string& programName) override {
    const auto service = HandingOn::GetService(programName);
    const auto util = service ? service->AsVdSessionUtil() : nullptr;
    return util ? Ref<AnyObject>(MakeRef<WatchedUtil>(util, watch_)) : service;
  }

 private:
  Watch& watch_;
};

}  // namespace quintara::test
