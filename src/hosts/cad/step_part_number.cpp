#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <system_error>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "hosts/cad/file_kind.h"
#include "hosts/cad/step_text.h"
#include "hosts/cad/step_tokens.h"

namespace quintara::cad {
namespace {

using Id = std::uint64_t;

struct Product {
  Id id;
  std::string_view identifier;
  std::string_view name;
};

std::optional<Id> Number(std::string_view digits) {
  Id id = 0;
  const auto end = digits.data() + digits.size();
  const auto read = std::from_chars(digits.data(), end, id);
  if (digits.empty() || read.ec != std::errc{} || read.ptr != end) return {};
  return id;
}

/// What a STEP file tells of its products: which of them is held by another, and which has a shape.
class Products {
 public:
  void Note(const StepStatement& statement);
  bool IsEmpty() const { return products_.empty(); }
  /// The product that no other holds; of several one that holds others, else one that has a shape.
  const Product* Root() const;

 private:
  using Links = std::unordered_map<Id, Id>;
  using Parameters = std::vector<StepParameter>;

  static std::optional<Id> ReferenceAt(const Parameters& parameters, std::size_t index);
  static void Link(Links& links, Id from, const std::optional<Id>& to) {
    if (to) links.try_emplace(from, *to);
  }
  std::optional<Id> ProductOf(Id definition) const;
  std::unordered_set<Id> ProductsOf(const std::vector<Id>& definitions) const;

  std::vector<Product> products_;
  Links formations_;         // of a definition
  Links formationProducts_;  // of a formation
  std::vector<Id> holders_;  // definitions
  std::vector<Id> held_;
  std::vector<Id> shaped_;
};

std::optional<Id> Products::ReferenceAt(const Parameters& parameters, std::size_t index) {
  if (index >= parameters.size() || parameters[index].kind != StepParameter::Kind::kReference) return {};
  return Number(parameters[index].text);
}

void Products::Note(const StepStatement& statement) {
  constexpr std::string_view kFormation = "PRODUCT_DEFINITION_FORMATION";
  const auto id = Number(statement.id);
  const auto& keyword = statement.keyword;
  const bool isOfInterest = keyword.starts_with("PRODUCT") || keyword == "NEXT_ASSEMBLY_USAGE_OCCURRENCE";
  if (!id || !isOfInterest) return;
  const auto parameters = ParametersOf(statement);
  const auto textAt = [&](std::size_t index) {
    const bool isText = index < parameters.size() && parameters[index].kind == StepParameter::Kind::kText;
    return isText ? parameters[index].text : std::string_view();
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

std::optional<Id> Products::ProductOf(Id definition) const {
  const auto formation = formations_.find(definition);
  if (formation == formations_.end()) return {};
  const auto product = formationProducts_.find(formation->second);
  if (product == formationProducts_.end()) return {};
  return product->second;
}

std::unordered_set<Id> Products::ProductsOf(const std::vector<Id>& definitions) const {
  std::unordered_set<Id> products;
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
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  StepStatements statements(
      std::string_view(bytes).substr(bytes.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0));
  StepStatement statement;
  if (!statements.Next(statement) || statement.keyword != "ISO-10303-21") ThrowUnreadable(path, "it is no STEP file");
  Products products;
  bool isComplete = false;
  while (!isComplete && statements.Next(statement)) {
    isComplete = statement.keyword == "END-ISO-10303-21";
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
