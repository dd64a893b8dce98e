#include "windows/dom_writer.h"

#include <array>
#include <memory>

#include "automation/dispatch/late_object.h"
#include "automation/dispatch/text16.h"
#include "base/numbers.h"
#include "windows/figures.h"

namespace quintara::bench {
namespace {

using automation::ComPtr;
using automation::LateObject;
using automation::Use;
using automation::Value;

constexpr std::array<const char*, 12> kNumberNames = {"XX", "XY", "XZ", "YX", "YY", "YZ",
                                                      "ZX", "ZY", "ZZ", "XO", "YO", "ZO"};

// The document and its nodes; the ids of their names are asked for once.
class Dom {
 public:
  Dom() : document_(NewDocument(), connection_, "Document", true) {
    Append(document_,
           Made("createProcessingInstruction", std::string("xml"), std::string("version='1.0' encoding='UTF-8'")));
  }

  LateObject Element(const std::string& tag) { return Made("createElement", tag); }
  static void Set(LateObject& element, const std::string& name, const std::string& value) {
    Ask(element, "setAttribute", Value(name), Value(value));
  }
  static void Append(LateObject& parent, const LateObject& child) {
    Ask(parent, "appendChild", Value(ComPtr<IDispatch>(child.Object())));
  }
  void AppendRoot(const LateObject& root) { Append(document_, root); }
  void Save(const std::string& path) { Ask(document_, "save", Value(path)); }

 private:
  static ComPtr<IDispatch> NewDocument() {
    CLSID id{};
    ComPtr<IDispatch> document;
    Demand(SUCCEEDED(CLSIDFromProgID(L"MSXML2.DOMDocument", &id)) &&
               SUCCEEDED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&document))),
           "the system has no document object model");
    return document;
  }
  template <class... Values>
  static Value Ask(LateObject& object, std::string_view member, Values&&... values) {
    std::array<Value, sizeof...(Values)> arguments{std::forward<Values>(values)...};
    return object.Invoke(member, Use::kCall, arguments);
  }
  template <class... Texts>
  LateObject Made(std::string_view member, const Texts&... texts) {
    const auto node = Ask(document_, member, Value(texts)...);
    return LateObject(automation::ObjectIn(node.Raw()), connection_, "Node", true);
  }

  std::shared_ptr<automation::Connection> connection_ = std::make_shared<automation::Connection>();
  LateObject document_;
};

// The part number is read twice, as the logic does it: to test that it can be read, and to have it.
LateObject WriteProduct(Dom& dom, const Ref<zorva::Product>& product, const std::string& above) {
  product->PartNumber();
  const auto partNumber = product->PartNumber();
  const auto name = product->Name();
  const auto children = product->Products();
  const int count = children->Count();
  const auto fullName = above.empty() ? name : above + "\\" + name;
  PositionMatrix position{};
  product->Position()->GetComponents(position);
  auto element = dom.Element(count >= 1 ? "PRODUCT" : "PART");
  Dom::Set(element, "PART_NUMBER", partNumber);
  Dom::Set(element, "INSTANCE_NAME", name);
  Dom::Set(element, "FULL_INSTANCE_NAME", fullName);
  for (std::size_t i = 0; i < position.size(); ++i) Dom::Set(element, kNumberNames[i], ToText(position[i]));
  for (int i = 1; i <= count; ++i) Dom::Append(element, WriteProduct(dom, children->Item(i), fullName));
  return element;
}

}  // namespace

void WriteWithTheDom(const Ref<zorva::Product>& root, const std::string& path) {
  Dom dom;
  dom.AppendRoot(WriteProduct(dom, root, {}));
  dom.Save(path);
}

}  // namespace quintara::bench
