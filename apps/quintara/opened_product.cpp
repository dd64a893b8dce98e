#include "quintara/opened_product.h"

#include "base/attempt.h"

namespace quintara {
namespace {

// Instance names don't hold what parts them.
FormChoice FormsFor(Loaded loaded) {
  return [loaded](const std::string& instancePath) {
    if (loaded == Loaded::kAll || instancePath.empty()) return ComponentForm::kDesign;
    const bool isChild = instancePath.find('\\') == std::string::npos;
    return isChild && loaded == Loaded::kChildren ? ComponentForm::kDesign : ComponentForm::kUnloaded;
  };
}

}  // namespace

OpenedProduct::OpenedProduct(CadHost& host, const std::string& path, Loaded loaded)
    : document_(loaded == Loaded::kAll ? host.Application()->Documents()->Open(path)
                                       : host.Open(path, FormsFor(loaded))) {}

OpenedProduct::~OpenedProduct() {
  ErrorState ignored;
  Attempt(ignored, [&] { document_->Close(); });
}

}  // namespace quintara
