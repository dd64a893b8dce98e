#include "quintara/product_tree.h"

#include <utility>

#include "access/utils/Cls_Utils.h"
#include "base/attempt.h"
#include "base/text.h"

namespace quintara {
namespace {

std::string FileOf(const Ref<zorva::Product>& product) {
  return OrElse(std::string(), [&] { return product->Reference()->Parent()->AsDocument()->FullName(); });
}

ProductNode NodeOf(const Ref<zorva::Product>& product, std::size_t parent, int depth) {
  ProductNode node{product, parent, depth, Cls_Utils().GetThePartNumber(product), {}, FileOf(product)};
  node.name = OrElse(std::string(), [&] { return product->Name(); });
  node.isLight = StringProperty(product, "TYPE") == "LWT" || HasExtension(node.file, ".lwt");
  return node;
}

std::vector<Ref<zorva::Product>> ChildrenOf(const Ref<zorva::Product>& product) {
  std::vector<Ref<zorva::Product>> children;
  const auto products = product->Products();
  for (int i = 1, count = products->Count(); i <= count; ++i) children.push_back(products->Item(i));
  return children;
}

}  // namespace

std::vector<ProductNode> NodesOf(const Ref<zorva::Product>& root) {
  struct Waiting {
    Ref<zorva::Product> product;
    std::size_t parent;
    int depth;
  };
  std::vector<ProductNode> nodes;
  std::vector<Waiting> stack{{root, 0, 0}};
  while (!stack.empty()) {
    const auto next = std::move(stack.back());
    stack.pop_back();
    nodes.push_back(NodeOf(next.product, next.parent, next.depth));
    std::vector<Ref<zorva::Product>> children;
    ErrorState unread;
    const bool isRead = Attempt(unread, [&] { children = ChildrenOf(next.product); });
    nodes.back().isWhole = isRead && !nodes.back().partNumber.empty() && !nodes.back().name.empty();
    nodes.back().hasChildren = !children.empty();
    const auto self = nodes.size() - 1;
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
      stack.push_back({std::move(*child), self, next.depth + 1});
    }
  }
  return nodes;
}

std::string StringProperty(const Ref<zorva::Product>& product, const std::string& name) {
  return OrElse(std::string(), [&] { return product->Parameters()->Item(name)->ValueAsString(); });
}

bool HasExtension(const std::string& path, const std::string& extension) {
  return OrElse(false, [&] { return Capitals(FromPath(ToPath(path).extension())) == Capitals(extension); });
}

}  // namespace quintara
