#include <array>

#include "automation/dispatch/late_bound.h"

namespace quintara::automation {
namespace {

template <class Contract>
class CollectionOf : public LateBound<Contract> {
 public:
  using LateBound<Contract>::LateBound;

  int Count() override { return this->template Ask<&zorva::Collection::Count>(); }
};

class ApplicationAdapter final : public LateBound<zorva::Application> {
 public:
  using LateBound::LateBound;

  Ref<zorva::Documents> Documents() override { return Ask<&zorva::Application::Documents>(); }
  Ref<AnyObject> ActiveDocument() override { return Ask<&zorva::Application::ActiveDocument>(); }
  Ref<zorva::ScriptService> ScriptService() override { return Ask<&zorva::Application::ScriptService>(); }
  bool DisplayFileAlerts() override { return Ask<&zorva::Application::DisplayFileAlerts>(); }
  void SetDisplayFileAlerts(bool alerts) override { Ask<&zorva::Application::SetDisplayFileAlerts>(alerts); }
  void SetRefreshDisplay(bool refresh) override { Ask<&zorva::Application::SetRefreshDisplay>(refresh); }
  Ref<zorva::Window> ActiveWindow() override { return Ask<&zorva::Application::ActiveWindow>(); }
};

class WindowAdapter final : public LateBound<zorva::Window> {
 public:
  using LateBound::LateBound;

  Ref<zorva::Viewer> ActiveViewer() override { return Ask<&zorva::Window::ActiveViewer>(); }
};

class ViewerAdapter final : public LateBound<zorva::Viewer> {
 public:
  using LateBound::LateBound;

  void RefreshView() override { Ask<&zorva::Viewer::RefreshView>(); }
};

class DocumentsAdapter final : public CollectionOf<zorva::Documents> {
 public:
  using CollectionOf::CollectionOf;

  Ref<zorva::Document> Add(const std::string& typeName) override { return Ask<&zorva::Documents::Add>(typeName); }
  Ref<zorva::Document> Open(const std::string& fullPath) override { return Ask<&zorva::Documents::Open>(fullPath); }
  Ref<zorva::Document> Read(const std::string& fullPath) override { return Ask<&zorva::Documents::Read>(fullPath); }
};

template <class Contract>
class DocumentOf : public LateBound<Contract> {
 public:
  using LateBound<Contract>::LateBound;

  Ref<zorva::Selection> Selection() override { return this->template Ask<&zorva::Document::Selection>(); }
  void Close() override { this->template Ask<&zorva::Document::Close>(); }
  std::string FullName() override { return this->template Ask<&zorva::Document::FullName>(); }
};

class DocumentAdapter final : public DocumentOf<zorva::Document> {
 public:
  using DocumentOf::DocumentOf;
};

class ProductDocumentAdapter final : public DocumentOf<zorva::ProductDocument> {
 public:
  using DocumentOf::DocumentOf;

  Ref<zorva::Product> Product() override { return Ask<&zorva::ProductDocument::Product>(); }
};

class ProductAdapter final : public LateBound<zorva::Product> {
 public:
  using LateBound::LateBound;

  Ref<zorva::Products> Products() override { return Ask<&zorva::Product::Products>(); }
  std::string PartNumber() override { return Ask<&zorva::Product::PartNumber>(); }
  void SetPartNumber(const std::string& partNumber) override { Ask<&zorva::Product::SetPartNumber>(partNumber); }
  Ref<zorva::Position> Position() override { return Ask<&zorva::Product::Position>(); }
  Ref<zorva::Product> Reference() override { return Ask<&zorva::Product::Reference>(); }
  Ref<zorva::Parameters> Parameters() override { return Ask<&zorva::Product::Parameters>(); }
  Ref<zorva::Parameters> UserProperties() override { return Ask<&zorva::Product::UserProperties>(); }
  void ApplyUpdate() override { Ask<&zorva::Product::ApplyUpdate>(); }
  void SetWorkMode(int mode) override { Ask<&zorva::Product::SetWorkMode>(mode); }
};

class ProductsAdapter final : public CollectionOf<zorva::Products> {
 public:
  using CollectionOf::CollectionOf;

  Ref<zorva::Product> Item(int index) override { return Ask<&zorva::Products::Item>(index); }
  void Remove(int index) override { Ask<&zorva::Products::Remove>(index); }
  Ref<zorva::Product> ReplaceWithFile(const Ref<zorva::Product>& component, const std::string& fullPath,
                                      bool allInstances) override {
    return Ask<&zorva::Products::ReplaceWithFile>(component, fullPath, allInstances);
  }
  void AddComponentsFromFiles(const std::vector<std::string>& fullPaths, const std::string& typeFilter) override {
    Value array(fullPaths);
    AskWithArray<&zorva::Products::AddComponentsFromFiles>(array, typeFilter);
  }
};

class PositionAdapter final : public LateBound<zorva::Position> {
 public:
  using LateBound::LateBound;

  // Hosts fill the array, put another one in its place, or give it as the result.
  void GetComponents(std::span<double> components) override {
    Value array{std::span<const double>(components)};
    const auto given = AskWithArray<&zorva::Position::GetComponents>(array);
    ReadNumbers(given.Raw().vt == VT_EMPTY ? array.Raw() : given.Raw(), components);
  }
  void SetComponents(std::span<const double> components) override {
    Value array(components);
    AskWithArray<&zorva::Position::SetComponents>(array);
  }
};

class ParametersAdapter final : public CollectionOf<zorva::Parameters> {
 public:
  using CollectionOf::CollectionOf;

  Ref<zorva::Parameter> Item(const std::string& name) override { return Ask<&zorva::Parameters::Item>(name); }
  Ref<zorva::Parameter> CreateString(const std::string& name, const std::string& value) override {
    return Ask<&zorva::Parameters::CreateString>(name, value);
  }
};

class ParameterAdapter final : public LateBound<zorva::Parameter> {
 public:
  using LateBound::LateBound;

  std::string ValueAsString() override { return Ask<&zorva::Parameter::ValueAsString>(); }
  void ValuateFromString(const std::string& value) override { Ask<&zorva::Parameter::ValuateFromString>(value); }
};

class SelectionAdapter final : public CollectionOf<zorva::Selection> {
 public:
  using CollectionOf::CollectionOf;

  Ref<zorva::SelectedElement> Item(int index) override { return Ask<&zorva::Selection::Item>(index); }
  void Add(const Ref<AnyObject>& object) override { Ask<&zorva::Selection::Add>(object); }
  void Clear() override { Ask<&zorva::Selection::Clear>(); }
  void Copy() override { Ask<&zorva::Selection::Copy>(); }
  void Paste() override { Ask<&zorva::Selection::Paste>(); }
};

class SelectedElementAdapter final : public LateBound<zorva::SelectedElement> {
 public:
  using LateBound::LateBound;

  Ref<AnyObject> Value() override { return Ask<&zorva::SelectedElement::Value>(); }
};

class ScriptServiceAdapter final : public LateBound<zorva::ScriptService> {
 public:
  using LateBound::LateBound;

  void ExecuteScript(const std::string& libraryPath, int libraryType, const std::string& moduleName,
                     const std::string& procedureName, const std::vector<std::string>& arguments) override {
    Value array(arguments);
    std::array values{Encode(libraryPath), Encode(libraryType), Encode(moduleName), Encode(procedureName),
                      Value::Reference(array)};
    InvokeAs<&zorva::ScriptService::ExecuteScript>(values);
  }
};

}  // namespace

template <>
Ref<zorva::Application> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<ApplicationAdapter>(std::move(object), connection);
}

template <>
Ref<zorva::Window> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<WindowAdapter>(std::move(object), connection);
}

template <>
Ref<zorva::Viewer> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<ViewerAdapter>(std::move(object), connection);
}

template <>
Ref<zorva::Documents> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<DocumentsAdapter>(std::move(object), connection);
}

template <>
Ref<zorva::Document> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<DocumentAdapter>(std::move(object), connection);
}

template <>
Ref<zorva::ProductDocument> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<ProductDocumentAdapter>(std::move(object), connection);
}

template <>
Ref<zorva::Product> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<ProductAdapter>(std::move(object), connection);
}

template <>
Ref<zorva::Products> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<ProductsAdapter>(std::move(object), connection);
}

template <>
Ref<zorva::Position> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<PositionAdapter>(std::move(object), connection);
}

template <>
Ref<zorva::Parameters> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<ParametersAdapter>(std::move(object), connection);
}

template <>
Ref<zorva::Parameter> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<ParameterAdapter>(std::move(object), connection);
}

template <>
Ref<zorva::Selection> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<SelectionAdapter>(std::move(object), connection);
}

template <>
Ref<zorva::SelectedElement> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<SelectedElementAdapter>(std::move(object), connection);
}

template <>
Ref<zorva::ScriptService> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<ScriptServiceAdapter>(std::move(object), connection);
}

}  // namespace quintara::automation
