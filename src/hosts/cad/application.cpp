#include "hosts/cad/application.h"

#include "hosts/cad/session.h"

namespace quintara::cad {

std::shared_ptr<Session> Life::TheSession() const {
  auto live = session.lock();
  if (!live) ThrowClosed();
  return live;
}

void Life::ThrowClosed() const {
  if (session.expired()) throw Failure(failure::kInvalidCall, "The session of the CAD host has ended");
  throw Failure(failure::kInvalidCall, "The document \"" + name + "\" is closed");
}

Ref<zorva::Application> ApplicationOf(const Life& life) {
  return life.TheSession()->TheApplication();
}

ApplicationObject::ApplicationObject(std::shared_ptr<Life> life)
    : SessionWide(std::move(life)), documents_(MakeRef<DocumentsObject>(life_)) {}

std::string ApplicationObject::Name() {
  Pass<"Name">();
  return "ZORVA";
}

Ref<AnyObject> ApplicationObject::GetItem(const std::string& name) {
  Pass<"GetItem">([&] { return name; });
  const auto session = life_->TheSession();
  const auto item = session->items.find(name);
  if (item == session->items.end()) throw Failure(failure::kInvalidCall, "The session has no item \"" + name + "\"");
  return item->second;
}

Ref<zorva::Documents> ApplicationObject::Documents() {
  Pass<"Documents">();
  return documents_;
}

Ref<AnyObject> ApplicationObject::ActiveDocument() {
  Pass<"ActiveDocument">();
  return life_->TheSession()->ActiveDocument().AsContract();
}

Ref<zorva::ScriptService> ApplicationObject::ScriptService() {
  Pass<"ScriptService">();
  return MakeRef<ScriptServiceObject>(life_);
}

bool ApplicationObject::DisplayFileAlerts() {
  Pass<"DisplayFileAlerts">();
  return life_->TheSession()->alerts;
}

void ApplicationObject::SetDisplayFileAlerts(bool alerts) {
  Pass<"DisplayFileAlerts=">([&] { return alerts ? "True" : "False"; });
  life_->TheSession()->alerts = alerts;
}

void ApplicationObject::SetRefreshDisplay(bool refresh) {
  Pass<"RefreshDisplay=">([&] { return refresh ? "True" : "False"; });
  if (refresh) ++life_->TheSession()->redraws;
}

Ref<zorva::Window> ApplicationObject::ActiveWindow() {
  Pass<"ActiveWindow">();
  life_->TheSession()->ActiveDocument();
  return MakeRef<WindowObject>(life_);
}

Ref<zorva::Viewer> WindowObject::ActiveViewer() {
  Pass<"ActiveViewer">();
  return MakeRef<ViewerObject>(life_);
}

void ViewerObject::RefreshView() {
  Pass<"RefreshView">();
  ++life_->TheSession()->redraws;
}

namespace {

Ref<zorva::Document> AsContract(const std::shared_ptr<DocumentObject>& document) {
  return document ? document->AsContract() : nullptr;
}

}  // namespace

int DocumentsObject::Count() {
  Pass<"Count">();
  return life_->TheSession()->DocumentCount();
}

Ref<zorva::Document> DocumentsObject::Add(const std::string& typeName) {
  Pass<"Add">([&] { return typeName; });
  if (typeName != "ZVAProduct")
    throw Failure(failure::kInvalidCall, "There are no documents of the type \"" + typeName + "\"");
  return AsContract(life_->TheSession()->Add());
}

Ref<zorva::Document> DocumentsObject::Open(const std::string& fullPath) {
  Pass<"Open">([&] { return fullPath; });
  return AsContract(life_->TheSession()->Open(fullPath, {}));
}

Ref<zorva::Document> DocumentsObject::Read(const std::string& fullPath) {
  Pass<"Read">([&] { return fullPath; });
  return AsContract(life_->TheSession()->Read(fullPath));
}

}  // namespace quintara::cad
