#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "access/contracts/hix_engine.h"

namespace quintara::test {

/// An integration engine that tells a test of each operation that changes something, then hands it on to another one.
class EngineInFront : public veldora::HIXEngine, public std::enable_shared_from_this<EngineInFront> {
 public:
  EngineInFront(Ref<veldora::HIXEngine> engine, std::function<void(const std::string& operation)> before)
      : engine_(std::move(engine)), before_(std::move(before)) {}

  bool IsConnected() override { return engine_->IsConnected(); }
  void Connect(const std::string& login, const std::string& password) override {
    before_("Connect");
    engine_->Connect(login, password);
  }
  void Disconnect() override {
    before_("Disconnect");
    engine_->Disconnect();
  }
  Ref<veldora::HIXDocument> DocumentInfo(const std::string& fullName) override {
    return engine_->DocumentInfo(fullName);
  }
  std::int16_t DocumentClassId(const Ref<veldora::HIXDocument>& handle) override {
    return engine_->DocumentClassId(handle);
  }
  std::int32_t DocumentObjectId(const Ref<veldora::HIXDocument>& handle) override {
    return engine_->DocumentObjectId(handle);
  }
  Ref<veldora::HIXDocument> DocumentHandle(std::int16_t classId, std::int32_t objectId) override {
    return engine_->DocumentHandle(classId, objectId);
  }
  Ref<veldora::HIXDocument> DocumentHandleOf(const Ref<zorva::Document>& document) override {
    return engine_->DocumentHandleOf(document);
  }
  void CheckOutDocument(const Ref<veldora::HIXDocument>& handle) override {
    before_("CheckOutDocument");
    engine_->CheckOutDocument(handle);
  }
  void CommitStep1(const Ref<veldora::HIXDocument>& handle) override {
    before_("CommitStep1");
    engine_->CommitStep1(handle);
  }
  void CommitStep2(const Ref<veldora::HIXDocument>& handle) override {
    before_("CommitStep2");
    engine_->CommitStep2(handle);
  }
  Ref<veldora::HIXEngine> AsHIXEngine() override { return Ref<veldora::HIXEngine>(shared_from_this()); }

 private:
  Ref<veldora::HIXEngine> engine_;
  std::function<void(const std::string& operation)> before_;
};

}  // namespace quintara::test
