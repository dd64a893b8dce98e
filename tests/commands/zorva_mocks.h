#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "access/vault_mocks.h"

namespace quintara::test {

/// A CAD host in front of another one, which does all that a test doesn't set.
class OddZorva : public MockZorva {
 public:
  explicit OddZorva(Ref<zorva::Application> zorva) : zorva_(std::move(zorva)) {
    ON_CALL(*this, Documents).WillByDefault([this] { return zorva_->Documents(); });
    ON_CALL(*this, ActiveDocument).WillByDefault([this] { return zorva_->ActiveDocument(); });
    ON_CALL(*this, DisplayFileAlerts).WillByDefault([this] { return zorva_->DisplayFileAlerts(); });
    ON_CALL(*this, SetDisplayFileAlerts).WillByDefault([this](bool alerts) { zorva_->SetDisplayFileAlerts(alerts); });
  }
  Ref<AnyObject> GetItem(const std::string& name) override { return zorva_->GetItem(name); }

 private:
  Ref<zorva::Application> zorva_;
};

class MockDocument : public zorva::ProductDocument, public std::enable_shared_from_this<MockDocument> {
 public:
  Ref<zorva::ProductDocument> AsProductDocument() override { return Ref<zorva::ProductDocument>(shared_from_this()); }
  MOCK_METHOD(Ref<zorva::Selection>, Selection, (), (override));
  MOCK_METHOD(void, Close, (), (override));
  MOCK_METHOD(std::string, FullName, (), (override));
  MOCK_METHOD(Ref<zorva::Product>, Product, (), (override));
};

class MockProducts : public zorva::Products {
 public:
  MOCK_METHOD(Ref<zorva::Application>, Application, (), (override));
  MOCK_METHOD(int, Count, (), (override));
  MOCK_METHOD(Ref<zorva::Product>, Item, (int), (override));
  MOCK_METHOD(void, Remove, (int), (override));
  MOCK_METHOD(Ref<zorva::Product>, ReplaceWithFile, (const Ref<zorva::Product>&, const std::string&, bool), (override));
  MOCK_METHOD(void, AddComponentsFromFiles, (const std::vector<std::string>&, const std::string&), (override));
};

}  // namespace quintara::test
