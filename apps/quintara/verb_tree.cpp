#include <algorithm>
#include <utility>

#include "base/text.h"
#include "quintara/documents.h"
#include "quintara/product_tree.h"
#include "quintara/tree_lines.h"
#include "quintara/vault_objects.h"
#include "quintara/vault_tree.h"
#include "quintara/verbs.h"

namespace quintara {
namespace {

struct Row {
  int depth;
  std::string partNumber;
  std::string name;
  std::string form;
  std::string file;
};

std::string FormOf(const ProductNode& node) {
  if (!node.isWhole) return "not loaded";
  return node.isLight ? "light" : "document";
}

// The files of a product stand in one folder as a rule; only others are told with theirs.
std::string FileColumn(const std::string& file, const std::string& folder) {
  return FromPath(ToPath(file).parent_path()) == folder ? FileName(file) : file;
}

std::vector<Row> RowsOfProduct(CommandContext& context, const std::string& path) {
  const auto folder = FromPath(ToPath(path).parent_path());
  std::vector<Row> rows;
  for (const auto& node : NodesOf(OpenProduct(context, path)->Product())) {
    rows.push_back({node.depth, node.partNumber, node.name, FormOf(node), FileColumn(node.file, folder)});
  }
  return rows;
}

std::vector<Row> RowsOfStep(CommandContext& context, const std::string& path) {
  struct Waiting {
    const AssemblyStructure::Instance* instance;
    std::size_t definition;
    int depth;
  };
  const auto assembly = context.TheGeometry().ReadAssembly(path, context.ProgressBarOn());
  const auto& structure = assembly->Structure();
  std::vector<Row> rows;
  std::vector<Waiting> stack{{nullptr, structure.root, 0}};
  while (!stack.empty()) {
    const auto next = stack.back();
    stack.pop_back();
    const auto& definition = structure.definitions.at(next.definition);
    const auto name = next.instance != nullptr ? next.instance->name : definition.partNumber;
    rows.push_back(
        {next.depth, definition.partNumber, name, definition.isAssembly ? "assembly" : "part", FileName(path)});
    for (auto child = definition.children.rbegin(); child != definition.children.rend(); ++child) {
      stack.push_back({&*child, child->definition, next.depth + 1});
    }
  }
  return rows;
}

std::vector<Row> RowsOf(CommandContext& context, const std::string& path) {
  const bool isStep = HasExtension(path, ".stp") || HasExtension(path, ".step");
  return isStep ? RowsOfStep(context, path) : RowsOfProduct(context, path);
}

void KeepToDepth(std::vector<Row>& rows, int depth) {
  for (std::size_t i = 0; i + 1 < rows.size(); ++i) {
    if (rows[i].depth == depth && rows[i + 1].depth > depth) rows[i].partNumber += " ...";
  }
  std::erase_if(rows, [&](const Row& row) { return row.depth > depth; });
}

void PrintDocument(CommandContext& context, const std::string& path, const std::optional<int>& depth) {
  auto rows = RowsOf(context, path);
  if (depth) KeepToDepth(rows, *depth);
  std::vector<int> depths;
  for (const auto& row : rows) depths.push_back(row.depth);
  const auto prefixes = TreePrefixes(depths, context.HasUtf8Screen());
  TextTable table({{"part number"}, {"instance"}, {"form"}, {"file"}});
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const auto& row = rows[i];
    table.AddRow({prefixes[i] + (row.partNumber.empty() ? "?" : row.partNumber), row.name, row.form, row.file});
  }
  context.Print(table);
}

void PrintStructure(CommandContext& context, const Ref<veldora::VdObject>& root, const std::optional<int>& depth) {
  const auto lines = StructureLines(context.RequireVault(), root, depth.value_or(-1));
  std::vector<int> depths;
  for (const auto& line : lines) depths.push_back(line.depth);
  const auto prefixes = TreePrefixes(depths, context.HasUtf8Screen());
  TextTable table({{"part number"}, {"quantity", true}, {"revision"}, {"state"}, {"file"}});
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const auto& object = lines[i].object;
    table.AddRow({prefixes[i] + object.partNumber + (lines[i].isCut ? " ..." : ""),
                  lines[i].depth == 0 ? "" : std::to_string(lines[i].quantity), object.revision, StateText(object),
                  object.fileName});
  }
  context.Print(table);
}

/// A document of the CAD host, or an object of the vault.
struct Subject {
  std::string path;
  Ref<veldora::VdObject> object;
};

// What only the work directory has, such as a work in progress, is found there by its part number.
Subject Find(CommandContext& context, const std::string& argument) {
  if (auto file = ExistingFile(context, argument); !file.empty()) return {file, nullptr};
  auto* vault = context.Vault();
  if (vault == nullptr) return {FindDocument(context, argument, Wanted::kProduct), nullptr};
  if (ObjectsNamed(*vault, argument).empty()) {
    if (auto file = DocumentOfPartNumber(context, argument, Wanted::kProduct); !file.empty()) return {file, nullptr};
  }
  return {{}, FindObject(*vault, argument)};
}

}  // namespace

void RunTree(CommandContext& context, const TreeOptions& options) {
  std::vector<Subject> subjects;
  for (const auto& product : options.products) subjects.push_back(Find(context, product));
  for (const auto& subject : subjects) {
    if (subject.object) {
      PrintStructure(context, subject.object, options.depth);
    } else {
      PrintDocument(context, subject.path, options.depth);
    }
  }
}

}  // namespace quintara
