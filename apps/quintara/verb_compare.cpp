#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "base/failure.h"
#include "quintara/documents.h"
#include "quintara/position_comparison.h"
#include "quintara/product_tree.h"
#include "quintara/verbs.h"

namespace quintara {
namespace {

std::string Rounded(double value) {
  std::array<char, 32> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, 3).ptr;
  return {text.data(), end};
}

std::ptrdiff_t Count(const PositionComparison& comparison, Verdict verdict) {
  return std::ranges::count(comparison.instances, verdict, &ComparedInstance::verdict);
}

const char* TextOf(Verdict verdict) {
  switch (verdict) {
    case Verdict::kInPlace: return "in place";
    case Verdict::kOutOfPlace: return "OUT OF PLACE";
    case Verdict::kMissing: return "MISSING";
    case Verdict::kSurplus: return "SURPLUS";
    case Verdict::kOtherPart: return "OTHER PART";
  }
  return "";
}

std::string FormOf(const ComparedInstance& instance) {
  if (!instance.isLight) return "";
  return *instance.isLight ? "light" : "document";
}

std::vector<FlatComponent> ComponentsOf(const Ref<zorva::Product>& root) {
  std::vector<FlatComponent> components;
  for (const auto& node : NodesOf(root)) {
    if (node.depth != 1) continue;
    FlatComponent component{node.name, node.partNumber, node.isLight, kIdentityPosition};
    node.product->Position()->GetComponents(component.position);
    components.push_back(std::move(component));
  }
  return components;
}

void PrintTable(CommandContext& context, const PositionComparison& comparison) {
  TextTable table({{"instance"}, {"form"}, {"deviation (mm)", true}, {"result"}});
  for (const auto& instance : comparison.instances) {
    table.AddRow({instance.name, FormOf(instance), instance.deviation ? Rounded(*instance.deviation) : "",
                  TextOf(instance.verdict)});
  }
  context.Print(table);
}

// "17 of 18 in place, 1 missing": surplus components stand for no instance and aren't counted with them.
std::string Summary(const PositionComparison& comparison) {
  constexpr std::array kBad{std::pair(Verdict::kOutOfPlace, " out of place"), std::pair(Verdict::kMissing, " missing"),
                            std::pair(Verdict::kOtherPart, " of another part"),
                            std::pair(Verdict::kSurplus, " surplus")};
  const auto total = std::ssize(comparison.instances) - Count(comparison, Verdict::kSurplus);
  auto text = std::to_string(Count(comparison, Verdict::kInPlace)) + " of " + std::to_string(total) + " in place";
  for (const auto& [verdict, words] : kBad) {
    if (const auto count = Count(comparison, verdict)) text += ", " + std::to_string(count) + words;
  }
  return text;
}

std::string Measured(const PositionComparison& comparison, double size) {
  double greatest = 0;
  for (const auto& instance : comparison.instances) greatest = std::max(greatest, instance.deviation.value_or(0));
  return "greatest deviation " + Rounded(greatest) + " mm, bound " + Rounded(comparison.bound) +
         " mm (1e-9 of the size, " + Rounded(size) + " mm)";
}

}  // namespace

void RunCompare(CommandContext& context, const CompareOptions& options) {
  const auto original = FindFile(context, options.original, "STEP file");
  const auto document = OpenWip(context, options.product);
  const auto components = ComponentsOf(document->Product());
  if (components.empty()) throw Failure(failure::kInternal, "'" + document->FullName() + "' has no components");
  const auto assembly = context.TheGeometry().ReadAssembly(original, context.ProgressBarOn());
  const double size = assembly->Structure().size;
  const auto comparison = ComparePositions(assembly->Occurrences(), size, components);
  PrintTable(context, comparison);
  context.Print(Summary(comparison) + "; " + Measured(comparison, size));
  if (Count(comparison, Verdict::kInPlace) != std::ssize(comparison.instances)) {
    throw Failure(failure::kInternal, "'" + document->FullName() + "' does not agree with '" + original + "'");
  }
}

}  // namespace quintara
