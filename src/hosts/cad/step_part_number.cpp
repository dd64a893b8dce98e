#include <cstddef>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "base/step_tokens.h"
#include "hosts/cad/file_kind.h"
#include "hosts/cad/step_text.h"

namespace quintara::cad {
namespace {

struct Product {
  StepId id;
  std::string_view identifier;
  std::string_view name;
};

/// What a STEP file tells of its products: which of them is held by another, and which has a shape.
class Products {
 public:
  void Note(const StepStatement& statement);
  bool IsEmpty() const { return products_.empty(); }
  /// The product that no other holds; of several one that holds others, else one that has a shape.
  const Product* Root() const;

 private:
  using Links = std::unordered_map<StepId, StepId>;
  using Parameters = std::vector<StepParameter>;

  static std::optional<StepId> ReferenceAt(const Parameters& parameters, std::size_t index);
  static void Link(Links& links, StepId from, const std::optional<StepId>& to) {
    if (to) links.try_emplace(from, *to);
  }
  std::optional<StepId> ProductOf(StepId definition) const;
  std::unordered_set<StepId> ProductsOf(const std::vector<StepId>& definitions) const;

  std::vector<Product> products_;
  Links formations_;             // of a definition
  Links formationProducts_;      // of a formation
  std::vector<StepId> holders_;  // definitions
  std::vector<StepId> held_;
  std::vector<StepId> shaped_;
};

std::optional<StepId> Products::ReferenceAt(const Parameters& parameters, std::size_t index) {
  return index < parameters.size() ? parameters[index].reference : std::nullopt;
}

void Products::Note(const StepStatement& statement) {
  constexpr std::string_view kFormation = "PRODUCT_DEFINITION_FORMATION";
  const auto& id = statement.id;
  const auto& keyword = statement.keyword;
  const bool isOfInterest = keyword.starts_with("PRODUCT") || keyword == "NEXT_ASSEMBLY_USAGE_OCCURRENCE";
  if (!id || !isOfInterest) return;
  const auto parameters = ParametersOf(statement);
  const auto textAt = [&](std::size_t index) {
    return index < parameters.size() ? parameters[index].text.value_or(std::string_view()) : std::string_view();
  };
  if (keyword == "PRODUCT") {
    products_.push_back({*id, textAt(0), textAt(1)});
  } else if (keyword == kFormation || keyword == "PRODUCT_DEFINITION_FORMATION_WITH_SPECIFIED_SOURCE") {
    Link(formationProducts_, *id, ReferenceAt(parameters, 2));
  } else if (keyword == "PRODUCT_DEFINITION" || keyword == "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS") {
    Link(formations_, *id, ReferenceAt(parameters, 2));
  } else if (keyword == "PRODUCT_DEFINITION_SHAPE") {
    if (const auto shaped = ReferenceAt(parameters, 2)) shaped_.push_back(*shaped);
  } else if (keyword == "NEXT_ASSEMBLY_USAGE_OCCURRENCE") {
    if (const auto holder = ReferenceAt(parameters, 3)) holders_.push_back(*holder);
    if (const auto held = ReferenceAt(parameters, 4)) held_.push_back(*held);
  }
}

std::optional<StepId> Products::ProductOf(StepId definition) const {
  const auto formation = formations_.find(definition);
  if (formation == formations_.end()) return {};
  const auto product = formationProducts_.find(formation->second);
  if (product == formationProducts_.end()) return {};
  return product->second;
}

std::unordered_set<StepId> Products::ProductsOf(const std::vector<StepId>& definitions) const {
  std::unordered_set<StepId> products;
  for (const auto definition : definitions) {
    if (const auto product = ProductOf(definition)) products.insert(*product);
  }
  return products;
}

const Product* Products::Root() const {
  const auto held = ProductsOf(held_);
  const auto holders = ProductsOf(holders_);
  const auto shaped = ProductsOf(shaped_);
  const Product* root = nullptr;
  int best = -1;
  for (const auto& product : products_) {
    if (held.contains(product.id)) continue;
    const int rank = holders.contains(product.id) ? 2 : shaped.contains(product.id) ? 1 : 0;
    if (rank > best) {
      best = rank;
      root = &product;
    }
  }
  return root;
}

bool IsBlank(const std::string& text) {
  return text.find_first_not_of(' ') == text.npos;
}

}  // namespace

std::string StepPartNumber(const std::string& bytes, const std::string& path) {
  StepStatements statements(WithoutByteOrderMark(bytes));
  StepStatement statement;
  if (!statements.Next(statement) || statement.keyword != kStepBegin) ThrowUnreadable(path, "it is no STEP file");
  Products products;
  bool isComplete = false;
  while (!isComplete && statements.Next(statement)) {
    isComplete = statement.keyword == kStepEnd;
    products.Note(statement);
  }
  if (!isComplete) ThrowUnreadable(path, "it ends too early");
  if (products.IsEmpty()) ThrowUnreadable(path, "it holds no product");
  const auto* const root = products.Root();
  if (root == nullptr) ThrowUnreadable(path, "each of its products is held by another");
  auto partNumber = DecodeStepText(root->name);
  if (IsBlank(partNumber)) partNumber = DecodeStepText(root->identifier);
  if (IsBlank(partNumber)) ThrowUnreadable(path, "its product has neither a name nor an id");
  return partNumber;
}

}  // namespace quintara::cad
