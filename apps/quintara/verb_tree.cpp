#include <algorithm>
#include <utility>

#include "base/text.h"
#include "quintara/documents.h"
#include "quintara/product_tree.h"
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

struct TreeLines {
  const char* branch;
  const char* lastBranch;
  const char* trunk;
  const char* nothing;
};
constexpr TreeLines kUtf8Lines{"├── ", "└── ", "│   ", "    "};
constexpr TreeLines kAsciiLines{"|-- ", "`-- ", "|   ", "    "};

// What stands before each row: from the last row up it is known which levels go on below.
std::vector<std::string> Prefixes(const std::vector<Row>& rows, const TreeLines& lines) {
  std::vector<std::string> prefixes(rows.size());
  std::vector<char> goesOn;
  for (std::size_t i = rows.size(); i-- > 0;) {
    const auto depth = static_cast<std::size_t>(rows[i].depth);
    goesOn.resize(depth + 1);
    for (std::size_t level = 1; level < depth; ++level) prefixes[i] += goesOn[level] ? lines.trunk : lines.nothing;
    if (depth > 0) prefixes[i] += goesOn[depth] ? lines.branch : lines.lastBranch;
    goesOn[depth] = 1;
  }
  return prefixes;
}

void KeepToDepth(std::vector<Row>& rows, int depth) {
  for (std::size_t i = 0; i + 1 < rows.size(); ++i) {
    if (rows[i].depth == depth && rows[i + 1].depth > depth) rows[i].partNumber += " ...";
  }
  std::erase_if(rows, [&](const Row& row) { return row.depth > depth; });
}

}  // namespace

void RunTree(CommandContext& context, const TreeOptions& options) {
  std::vector<std::string> paths;
  for (const auto& product : options.products) paths.push_back(FindDocument(context, product, Wanted::kProduct));
  for (const auto& path : paths) {
    auto rows = RowsOf(context, path);
    if (options.depth) KeepToDepth(rows, *options.depth);
    const auto prefixes = Prefixes(rows, context.HasUtf8Screen() ? kUtf8Lines : kAsciiLines);
    TextTable table({{"part number"}, {"instance"}, {"form"}, {"file"}});
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const auto& row = rows[i];
      table.AddRow({prefixes[i] + (row.partNumber.empty() ? "?" : row.partNumber), row.name, row.form, row.file});
    }
    context.Print(table);
  }
}

}  // namespace quintara
