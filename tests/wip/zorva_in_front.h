#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "access/contracts/zorva.h"

namespace quintara::test {

/// A session of the CAD host that hands everything on to another one, but for what a test answers itself.
class ZorvaInFront : public zorva::Application, public std::enable_shared_from_this<ZorvaInFront> {
 public:
  explicit ZorvaInFront(Ref<zorva::Application> application) : application_(std::move(application)) {}

  std::function<Ref<AnyObject>()> activeDocument;
  std::function<Ref<zorva::Documents>()> documents;

  Ref<zorva::Documents> Documents() override { return documents ? documents() : application_->Documents(); }
  Ref<AnyObject> ActiveDocument() override {
    return activeDocument ? activeDocument() : application_->ActiveDocument();
  }
  Ref<zorva::ScriptService> ScriptService() override { return application_->ScriptService(); }
  bool DisplayFileAlerts() override { return application_->DisplayFileAlerts(); }
  void SetDisplayFileAlerts(bool alerts) override { application_->SetDisplayFileAlerts(alerts); }
  void SetRefreshDisplay(bool refresh) override { application_->SetRefreshDisplay(refresh); }
  Ref<zorva::Window> ActiveWindow() override { return application_->ActiveWindow(); }
  Ref<AnyObject> GetItem(const std::string& name) override { return application_->GetItem(name); }
  Ref<zorva::Application> AsApplication() override { return Ref<zorva::Application>(shared_from_this()); }

 private:
  Ref<zorva::Application> application_;
};

/// Documents of which `Add` gives what a test likes.
class DocumentsInFront : public zorva::Documents {
 public:
  DocumentsInFront(Ref<zorva::Documents> documents, std::function<Ref<zorva::Document>()> add)
      : documents_(std::move(documents)), add_(std::move(add)) {}

  int Count() override { return documents_->Count(); }
  Ref<zorva::Document> Add(const std::string& /*typeName*/) override { return add_(); }
  Ref<zorva::Document> Open(const std::string& fullPath) override { return documents_->Open(fullPath); }
  Ref<zorva::Document> Read(const std::string& fullPath) override { return documents_->Read(fullPath); }

 private:
  Ref<zorva::Documents> documents_;
  std::function<Ref<zorva::Document>()> add_;
};

}  // namespace quintara::test
