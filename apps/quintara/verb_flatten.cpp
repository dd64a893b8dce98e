#include "base/failure.h"
#include "base/text.h"
#include "quintara/documents.h"
#include "quintara/product_tree.h"
#include "quintara/vault_access.h"
#include "quintara/verbs.h"
#include "quintara/wrong_use.h"

namespace quintara {
namespace {

struct Taken {
  std::string partNumber;
  std::string file;
  bool isLight;
};

std::string UsableName(const std::string& name) {
  if (IsFileName(name)) return name;
  throw WrongUse("'" + name + "' can't be used in a file name; choose another with --name");
}

bool IsFile(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_regular_file(ToPath(path), error);
}

// Beside the document, under its name without the extension or with it.
std::string LightFileOf(const ProductNode& node) {
  if (HasExtension(node.file, ".lwt")) return node.file;
  const auto plain = FromPath(ToPath(node.file).replace_extension(".lwt"));
  for (const auto& path : {plain, node.file + ".lwt"}) {
    if (IsFile(path)) return path;
  }
  throw Failure(failure::kFileNotFound, "'" + node.partNumber + "' has no light file '" + plain + "'");
}

Taken TakenOf(const ProductNode& node, Choice choice) {
  if (!node.isWhole) throw Failure(failure::kInternal, "the component '" + node.name + "' is not loaded");
  if (node.file.empty()) throw Failure(failure::kFileNotFound, "'" + node.partNumber + "' has no file");
  if (choice == Choice::kLight) return {node.partNumber, LightFileOf(node), true};
  if (HasExtension(node.file, ".lwt")) {
    throw Failure(failure::kFileNotFound,
                  "'" + node.partNumber + "' is there only as a light file, '" + node.file + "'");
  }
  return {node.partNumber, node.file, false};
}

std::vector<Taken> Take(const std::vector<ProductNode>& nodes, const std::vector<ChoiceRule>& given) {
  if (nodes.size() == 1) throw WrongUse("'" + nodes.front().partNumber + "' has no components");
  const std::vector<ChoiceRule> allParts{{Choice::kDocument, "part:*"}};
  const auto choices = Choose(nodes, given.empty() ? allParts : given);
  std::vector<Taken> taken;
  for (const auto node : TakenNodes(nodes, choices)) taken.push_back(TakenOf(nodes[node], choices[node]));
  return taken;
}

void Insert(const Ref<zorva::Application>& application, const Ref<zorva::Products>& products, const Taken& component) {
  application->Documents()->Read(component.file);
  products->AddComponentsFromFiles({component.file}, "All");
  if (!component.isLight) return;
  products->Item(products->Count())->UserProperties()->CreateString("TYPE", "LWT");
}

Ref<zorva::ProductDocument> MakeFlat(const Ref<zorva::Application>& application, const std::string& partNumber,
                                     const std::vector<Taken>& components) {
  auto document = application->Documents()->Add("ZVAProduct")->AsProductDocument();
  const auto root = document->Product();
  root->SetPartNumber(partNumber);
  root->UserProperties()->CreateString("WIP", "TRUE");
  root->UserProperties()->CreateString("From", "Quintara");
  const bool alerts = application->DisplayFileAlerts();
  application->SetDisplayFileAlerts(false);
  for (const auto& component : components) Insert(application, root->Products(), component);
  application->SetDisplayFileAlerts(alerts);
  return document;
}

void PrintTaken(CommandContext& context, const std::vector<Taken>& components) {
  TextTable table({{"component"}, {"form"}, {"file"}});
  for (const auto& component : components) {
    table.AddRow({component.partNumber, component.isLight ? "light" : "document", FileName(component.file)});
  }
  context.Print(table);
}

}  // namespace

void RunFlatten(CommandContext& context, const FlattenOptions& options) {
  const auto source = OpenProduct(context, options.product)->Product();
  const auto partNumber = kWipPrefix + UsableName(options.name.empty() ? source->PartNumber() : options.name);
  const auto components = Take(NodesOf(source), options.rules);
  const auto target = TargetPath(context.WorkPathToWrite(partNumber + ".ZVAProduct"), options.replace);
  const auto flat = MakeFlat(context.Host().Application(), partNumber, components);
  PrintTaken(context, components);
  if (!options.dryRun) context.Host().Save(flat, target);
  const auto count = std::to_string(components.size()) + (components.size() == 1 ? " component" : " components");
  context.Print(options.dryRun ? "nothing saved, as asked: '" + partNumber + "' with " + count
                               : "made '" + partNumber + "' with " + count + ", '" + target + "'");
}

}  // namespace quintara
