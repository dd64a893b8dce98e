#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "hosts/cad/session_object.h"

namespace quintara::cad {

/// The base of the objects that belong to the session as a whole.
template <OperationLiteral Kind, class Contract>
class SessionWide : public SessionObject<Kind, Contract> {
 public:
  explicit SessionWide(std::shared_ptr<Life> life) : life_(std::move(life)) {}

 protected:
  const Life& TheLife() const override { return *life_; }
  Ref<AnyObject> Owner() override { return ApplicationOf(*life_); }

  std::shared_ptr<Life> life_;
};

class DocumentsObject final : public SessionWide<"Documents", zorva::Documents> {
 public:
  using SessionWide::SessionWide;

  int Count() override;
  Ref<zorva::Document> Add(const std::string& typeName) override;
  Ref<zorva::Document> Open(const std::string& fullPath) override;
  Ref<zorva::Document> Read(const std::string& fullPath) override;
};

class ApplicationObject final : public SessionWide<"Application", zorva::Application>,
                                public std::enable_shared_from_this<ApplicationObject> {
 public:
  explicit ApplicationObject(std::shared_ptr<Life> life);

  std::string Name() override;
  Ref<AnyObject> GetItem(const std::string& name) override;
  Ref<zorva::Documents> Documents() override;
  Ref<AnyObject> ActiveDocument() override;
  Ref<zorva::ScriptService> ScriptService() override;
  bool DisplayFileAlerts() override;
  void SetDisplayFileAlerts(bool alerts) override;
  void SetRefreshDisplay(bool refresh) override;
  Ref<zorva::Window> ActiveWindow() override;

  /// Without passing the gate.
  const Ref<zorva::Documents>& TheDocuments() const noexcept { return documents_; }

 protected:
  std::shared_ptr<AnyObject> Self() override { return shared_from_this(); }

 private:
  Ref<zorva::Documents> documents_;
};

class ViewerObject final : public SessionWide<"Viewer", zorva::Viewer> {
 public:
  using SessionWide::SessionWide;

  void RefreshView() override;
};

class WindowObject final : public SessionWide<"Window", zorva::Window> {
 public:
  using SessionWide::SessionWide;

  Ref<zorva::Viewer> ActiveViewer() override;
};

/// Runs macro projects: text files that list the procedures they offer, one "MODULE.PROCEDURE" a
/// line; blank lines and what follows a "#" count for nothing. What a procedure does is built in.
class ScriptServiceObject final : public SessionWide<"ScriptService", zorva::ScriptService> {
 public:
  using SessionWide::SessionWide;

  void ExecuteScript(const std::string& libraryPath, int libraryType, const std::string& moduleName,
                     const std::string& procedureName, const std::vector<std::string>& arguments) override;
};

}  // namespace quintara::cad
