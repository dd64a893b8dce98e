#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "access/contracts/integration.h"
#include "access/contracts/veldora.h"
#include "access/contracts/zorva.h"
#include "hosts/gate/gate.h"

namespace quintara {

/// The integration engine between the embedded vault and the embedded CAD host, connected from the
/// start. The three operations of a refresh are one transaction each.
class EmbeddedEngine final : public veldora::HIXEngine, public std::enable_shared_from_this<EmbeddedEngine> {
 public:
  /// What the engine stands between; all of it must outlive the engine.
  struct Surroundings {
    std::shared_ptr<Gate> gate;
    Ref<veldora::VdSession> session;
    Ref<zorva::Application> zorva;
    IntegrationVault* vault = nullptr;
    IntegrationCad* cad = nullptr;
  };

  explicit EmbeddedEngine(Surroundings surroundings);

  bool IsConnected() override;
  void Connect(const std::string& login, const std::string& password) override;
  void Disconnect() override;
  Ref<veldora::HIXDocument> DocumentInfo(const std::string& fullName) override;
  std::int16_t DocumentClassId(const Ref<veldora::HIXDocument>& handle) override;
  std::int32_t DocumentObjectId(const Ref<veldora::HIXDocument>& handle) override;
  Ref<veldora::HIXDocument> DocumentHandle(std::int16_t classId, std::int32_t objectId) override;
  Ref<veldora::HIXDocument> DocumentHandleOf(const Ref<zorva::Document>& document) override;
  /// Takes newer revisions, check-outs, new releases and replaced files only as far as the
  /// configuration in force lets it; afterwards the handle is that of the revision it made changeable.
  void CheckOutDocument(const Ref<veldora::HIXDocument>& handle) override;
  /// These two are about all that the check-out of this document took; about the document's own object
  /// where it wasn't checked out here.
  void CommitStep1(const Ref<veldora::HIXDocument>& handle) override;
  void CommitStep2(const Ref<veldora::HIXDocument>& handle) override;

  Ref<veldora::HIXEngine> AsHIXEngine() override;

 private:
  Ref<veldora::VdObject> ObjectOf(const IntegrationVault::Identity& identity) const;
  void RequireConnected() const;
  std::vector<Ref<veldora::VdObject>> TakenWith(const IntegrationVault::Identity& identity) const;

  Surroundings around_;
  bool connected_ = true;
  /// What the check-out of a root took, components first, by the root's class id and object id.
  std::map<std::pair<std::int16_t, std::int32_t>, std::vector<Ref<veldora::VdObject>>> taken_;
};

}  // namespace quintara
