#pragma once

#include "access/contracts/zorva.h"
#include "automation/dispatch/kinds.h"

namespace quintara::automation {

template <>
struct Kind<zorva::Collection> : UsualKind {
  static constexpr std::string_view kName = "Collection";
  static constexpr bool kSharesIds = false;
  static constexpr bool kIsOpen = true;
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Count", &zorva::Collection::Count>>;
};

template <>
struct Kind<zorva::Application> : UsualKind {
  static constexpr std::string_view kName = "Application";
  static constexpr std::string_view kTelltale = "DisplayFileAlerts";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Documents", &zorva::Application::Documents>,
                                Call<"ActiveDocument", &zorva::Application::ActiveDocument>,
                                Call<"ScriptService", &zorva::Application::ScriptService>,
                                Call<"DisplayFileAlerts", &zorva::Application::DisplayFileAlerts>,
                                Put<"DisplayFileAlerts", &zorva::Application::SetDisplayFileAlerts>,
                                Put<"RefreshDisplay", &zorva::Application::SetRefreshDisplay>,
                                Call<"ActiveWindow", &zorva::Application::ActiveWindow>>;
};

template <>
struct Kind<zorva::Window> : UsualKind {
  static constexpr std::string_view kName = "Window";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"ActiveViewer", &zorva::Window::ActiveViewer>>;
};

template <>
struct Kind<zorva::Viewer> : UsualKind {
  static constexpr std::string_view kName = "Viewer";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"RefreshView", &zorva::Viewer::RefreshView>>;
};

template <>
struct Kind<zorva::Documents> : UsualKind {
  static constexpr std::string_view kName = "Documents";
  using Base = zorva::Collection;
  using Operations = std::tuple<Call<"Add", &zorva::Documents::Add>, Call<"Open", &zorva::Documents::Open>,
                                Call<"Read", &zorva::Documents::Read>>;
};

template <>
struct Kind<zorva::Document> : UsualKind {
  static constexpr std::string_view kName = "Document";
  static constexpr std::string_view kTelltale = "FullName";
  static constexpr bool kSharesIds = false;
  static constexpr bool kIsOpen = true;
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Selection", &zorva::Document::Selection>, Call<"Close", &zorva::Document::Close>,
                                Call<"FullName", &zorva::Document::FullName>>;
};

template <>
struct Kind<zorva::ProductDocument> : UsualKind {
  static constexpr std::string_view kName = "ProductDocument";
  static constexpr std::string_view kTelltale = "Product";
  using Base = zorva::Document;
  using Operations = std::tuple<Call<"Product", &zorva::ProductDocument::Product>>;
};

template <>
struct Kind<zorva::Product> : UsualKind {
  static constexpr std::string_view kName = "Product";
  static constexpr std::string_view kTelltale = "PartNumber";
  using Base = AnyObject;
  using Operations =
      std::tuple<Call<"Products", &zorva::Product::Products>, Call<"PartNumber", &zorva::Product::PartNumber>,
                 Put<"PartNumber", &zorva::Product::SetPartNumber>, Call<"Position", &zorva::Product::Position>,
                 Call<"Reference", &zorva::Product::Reference>, Call<"Parameters", &zorva::Product::Parameters>,
                 Call<"UserProperties", &zorva::Product::UserProperties>,
                 Call<"ApplyUpdate", &zorva::Product::ApplyUpdate>, Call<"SetWorkMode", &zorva::Product::SetWorkMode>>;
};

template <>
struct Kind<zorva::Products> : UsualKind {
  static constexpr std::string_view kName = "Products";
  static constexpr std::string_view kTelltale = "AddComponentsFromFiles";
  using Base = zorva::Collection;
  using Operations = std::tuple<Call<"Item", &zorva::Products::Item>, Call<"Remove", &zorva::Products::Remove>,
                                Call<"ReplaceWithFile", &zorva::Products::ReplaceWithFile>,
                                Call<"AddComponentsFromFiles", &zorva::Products::AddComponentsFromFiles>>;
};

template <>
struct Kind<zorva::Position> : UsualKind {
  static constexpr std::string_view kName = "Position";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"GetComponents", &zorva::Position::GetComponents>,
                                Call<"SetComponents", &zorva::Position::SetComponents>>;
};

template <>
struct Kind<zorva::Parameters> : UsualKind {
  static constexpr std::string_view kName = "Parameters";
  using Base = zorva::Collection;
  using Operations =
      std::tuple<Call<"Item", &zorva::Parameters::Item>, Call<"CreateString", &zorva::Parameters::CreateString>>;
};

template <>
struct Kind<zorva::Parameter> : UsualKind {
  static constexpr std::string_view kName = "Parameter";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"ValueAsString", &zorva::Parameter::ValueAsString>,
                                Call<"ValuateFromString", &zorva::Parameter::ValuateFromString>>;
};

template <>
struct Kind<zorva::Selection> : UsualKind {
  static constexpr std::string_view kName = "Selection";
  using Base = zorva::Collection;
  using Operations = std::tuple<Call<"Item", &zorva::Selection::Item>, Call<"Add", &zorva::Selection::Add>,
                                Call<"Clear", &zorva::Selection::Clear>, Call<"Copy", &zorva::Selection::Copy>,
                                Call<"Paste", &zorva::Selection::Paste>>;
};

template <>
struct Kind<zorva::SelectedElement> : UsualKind {
  static constexpr std::string_view kName = "SelectedElement";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Value", &zorva::SelectedElement::Value>>;
};

template <>
struct Kind<zorva::ScriptService> : UsualKind {
  static constexpr std::string_view kName = "ScriptService";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"ExecuteScript", &zorva::ScriptService::ExecuteScript>>;
};

}  // namespace quintara::automation
