#include <algorithm>

#include "hosts/desk/split_files.h"
#include "quintara/assembly_matrices.h"
#include "quintara/documents.h"
#include "quintara/session_start.h"
#include "quintara/step_import.h"
#include "quintara/vault_import.h"
#include "quintara/verbs.h"
#include "quintara/wrong_use.h"

namespace quintara {
namespace {

using Outcome = ImportedObject::Outcome;

void PrintChanges(CommandContext& context, const std::vector<AssemblyStructure::NameChange>& changes) {
  if (changes.empty()) return;
  TextTable table({{"changed"}, {"in the file"}, {"now"}, {"because"}});
  for (const auto& change : changes) table.AddRow({change.kind, change.from, change.to, change.reason});
  context.Print("names that were changed:");
  context.Print(table);
}

std::string KindOf(const AssemblyStructure::Definition& definition) {
  return definition.isAssembly ? "assembly" : "part";
}

std::string ChildCountOf(const AssemblyStructure::Definition& definition) {
  return definition.isAssembly ? std::to_string(definition.children.size()) : "";
}

void PrintIfOnePart(CommandContext& context, const AssemblyStructure& structure, const std::string& file) {
  if (!structure.definitions.at(structure.root).isAssembly)
    context.Print("'" + file + "' holds no assembly: it is one part");
}

void SplitIntoFolder(CommandContext& context, const ImportOptions& options, const std::string& file) {
  const StepImportRequest request{file, context.WorkPath(), options.replace, options.dryRun};
  const auto report = ImportStep(request, context.TheGeometry(), context.ThePlatform(), context.ProgressBarOn());
  PrintChanges(context, report.structure.changes);
  TextTable table({{"part number"}, {"kind"}, {"children", true}, {"file"}, {"light file"}});
  for (const auto& definition : report.structure.definitions) {
    table.AddRow({definition.partNumber, KindOf(definition), ChildCountOf(definition), FileOfDefinition(definition),
                  LightFileOfDefinition(definition)});
  }
  context.Print(table);
  PrintIfOnePart(context, report.structure, options.file);
  const auto root = "'" + report.structure.definitions.at(report.structure.root).partNumber + "'";
  const auto count = std::to_string(report.files.size()) + " files";
  context.Print(options.dryRun ? "nothing written, as asked: " + count + " for " + root
                               : "imported " + root + ": " + count + " in '" + context.WorkPath() + "'");
}

std::string TextOf(const ImportedObject& object) {
  switch (object.outcome) {
    case Outcome::kAdded: return "added";
    case Outcome::kRevised: return "new revision " + object.revision;
    case Outcome::kUnchanged: return "unchanged";
  }
  return {};
}

std::string CountsOf(const std::vector<ImportedObject>& objects) {
  const auto count = [&](Outcome outcome) {
    return std::to_string(std::ranges::count(objects, outcome, &ImportedObject::outcome));
  };
  return count(Outcome::kAdded) + " added, " + count(Outcome::kRevised) + " revised, " + count(Outcome::kUnchanged) +
         " unchanged";
}

void PrintObjects(CommandContext& context, const VaultImportReport& report, const AssemblyMatrices& matrices) {
  std::vector<TextTable::Column> columns{{"part number"}, {"kind"}, {"children", true}, {"in the vault"}};
  if (matrices.WroteAny()) columns.push_back({"matrix"});
  TextTable table(columns);
  for (std::size_t i = 0; i < report.objects.size(); ++i) {
    const auto& definition = report.structure.definitions[i];
    std::vector<std::string> row{definition.partNumber, KindOf(definition), ChildCountOf(definition),
                                 TextOf(report.objects[i])};
    if (matrices.WroteAny()) row.push_back(matrices.TextOf(i));
    table.AddRow(row);
  }
  context.Print(table);
}

void BringIntoVault(CommandContext& context, const ImportOptions& options, const std::string& file,
                    EmbeddedVault& vault) {
  if (options.replace) throw WrongUse("--replace is of no use with a vault, where nothing is ever replaced");
  const auto wanted = options.matrices.value_or(ImportedMatrices::kAll);
  VaultImportRequest request{file, options.dryRun};
  AssemblyMatrices matrices(context, wanted == ImportedMatrices::kRoot);
  if (wanted != ImportedMatrices::kNone && !options.dryRun) {
    StartSession(context);
    request.beforeCheckIn = [&](const StoredAssembly& assembly) { matrices.Write(assembly); };
  }
  const auto report =
      ImportIntoVault(request, vault, context.TheGeometry(), context.ThePlatform(), context.ProgressBarOn());
  matrices.Keep();
  const auto& definitions = report.structure.definitions;
  PrintChanges(context, report.structure.changes);
  PrintObjects(context, report, matrices);
  PrintIfOnePart(context, report.structure, options.file);
  const auto root = "'" + definitions.at(report.structure.root).partNumber + "'";
  const auto counts = CountsOf(report.objects);
  context.Print(options.dryRun ? "nothing changed, as asked; " + root + " would be: " + counts
                               : "imported " + root + " into the vault: " + counts);
}

}  // namespace

void RunImport(CommandContext& context, const ImportOptions& options) {
  const auto file = FindFile(context, options.file, "STEP file");
  if (auto* vault = context.Vault()) {
    BringIntoVault(context, options, file, *vault);
  } else {
    if (options.matrices) throw WrongUse("--matrix is of no use without a vault; 'quintara matrix' writes one");
    SplitIntoFolder(context, options, file);
  }
}

}  // namespace quintara
