#include "hosts/cad/document.h"

#include <utility>

#include "base/text.h"
#include "hosts/cad/session.h"

namespace quintara::cad {
namespace {

template <class Contract>
class DocumentOf : public SessionObject<"Document", Contract>,
                   public DocumentObject,
                   public std::enable_shared_from_this<DocumentOf<Contract>> {
 public:
  explicit DocumentOf(Definition& definition) : DocumentObject(definition) {}

  std::string Name() override {
    this->template Pass<"Name">();
    return FileName();
  }
  Ref<AnyObject> GetItem(const std::string& name) override {
    this->template Pass<"GetItem">([&] { return name; });
    return Ref<AnyObject>(ItemNamed(name));
  }
  Ref<zorva::Selection> Selection() override {
    this->template Pass<"Selection">();
    return Ref<zorva::Selection>(TheSelection());
  }
  void Close() override {
    this->template Pass<"Close">();
    life_->TheSession()->Close(TheDefinition());
  }
  std::string FullName() override {
    this->template Pass<"FullName">();
    return TheDefinition().path;
  }

  Ref<zorva::Document> AsContract() override { return Ref<zorva::Document>(this->shared_from_this()); }

 protected:
  const Life& TheLife() const override { return *life_; }
  Ref<AnyObject> Owner() override { return life_->TheSession()->DocumentsOfApplication(); }
  std::shared_ptr<AnyObject> Self() override { return this->shared_from_this(); }

 private:
  std::shared_ptr<Occurrence> ItemNamed(const std::string& name);
};

bool IsLoaded(const Occurrence& product) {
  return product.Form() != ComponentForm::kUnloaded;
}

// The newest child wins: callers look for what they have just added. A part number counts in any
// form, though it can be read in one only: the file behind it is there.
template <class Contract>
std::shared_ptr<Occurrence> DocumentOf<Contract>::ItemNamed(const std::string& name) {
  const auto& root = Root();
  const auto& children = TheDefinition().Children();
  for (auto i = children.size(); i-- > 0;) {
    const auto& child = *children[i];
    if (child.name == name) return root->ChildAt(i);
    if (child.definition->partNumber == name && IsLoaded(*root->ChildAt(i))) return root->ChildAt(i);
  }
  if (TheDefinition().partNumber == name && IsLoaded(*root)) return root;
  throw Failure(failure::kInvalidCall, "The document \"" + FileName() + "\" has no item \"" + name + "\"");
}

class PartDocument final : public DocumentOf<zorva::Document> {
 public:
  using DocumentOf::DocumentOf;
};

class AssemblyDocument final : public DocumentOf<zorva::ProductDocument> {
 public:
  using DocumentOf::DocumentOf;

  Ref<zorva::Product> Product() override {
    TheLife().gate->Pass("ProductDocument.Product");
    RequireAlive();
    return Ref<zorva::Product>(Root());
  }
};

template <class Kind>
std::shared_ptr<DocumentObject> MakeDocument(Definition& definition, std::weak_ptr<AnyObject>& document) {
  auto made = std::make_shared<Kind>(definition);
  document = std::static_pointer_cast<AnyObject>(made);
  return made;
}

}  // namespace

std::shared_ptr<DocumentObject> DocumentObject::Make(Definition& definition, std::shared_ptr<Gate> gate,
                                                     std::weak_ptr<Session> session) {
  std::weak_ptr<AnyObject> document;
  auto made = definition.TheKind() == Definition::Kind::kAssembly ? MakeDocument<AssemblyDocument>(definition, document)
                                                                  : MakeDocument<PartDocument>(definition, document);
  made->life_->gate = std::move(gate);
  made->life_->session = std::move(session);
  made->life_->document = std::move(document);
  made->life_->name = made->FileName();
  return made;
}

std::shared_ptr<DocumentObject> DocumentObject::Of(const Ref<zorva::Document>& document, const Session& session) {
  if (!document) throw Failure(failure::kObjectNotSet, "A document is needed, nothing was given");
  auto object = std::dynamic_pointer_cast<DocumentObject>(document.Shared());
  if (!object || !object->life_->IsOf(session)) {
    throw Failure(failure::kTypeMismatch, "Type mismatch: the document belongs to another host");
  }
  object->life_->RequireOpen();
  return object;
}

const std::shared_ptr<Occurrence>& DocumentObject::Root() {
  if (!root_) root_ = std::make_shared<Occurrence>(life_, *definition_);
  return root_;
}

const std::shared_ptr<SelectionObject>& DocumentObject::TheSelection() {
  if (!selection_) selection_ = std::make_shared<SelectionObject>(life_);
  return selection_;
}

std::string DocumentObject::FileName() const {
  if (!definition_->path.empty()) return FromPath(ToPath(definition_->path).filename());
  const bool isAssembly = definition_->TheKind() == Definition::Kind::kAssembly;
  return definition_->partNumber + (isAssembly ? kProductExtension : "");
}

void DocumentObject::Detach() {
  life_->name = FileName();
  life_->open = false;
  if (selection_) selection_->Forget();
  root_ = nullptr;
}

}  // namespace quintara::cad
