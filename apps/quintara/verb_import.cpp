#include "quintara/documents.h"
#include "quintara/step_import.h"
#include "quintara/verbs.h"

namespace quintara {
namespace {

void PrintChanges(CommandContext& context, const std::vector<AssemblyStructure::NameChange>& changes) {
  if (changes.empty()) return;
  TextTable table({{"changed"}, {"in the file"}, {"now"}, {"because"}});
  for (const auto& change : changes) table.AddRow({change.kind, change.from, change.to, change.reason});
  context.Print("names that were changed:");
  context.Print(table);
}

void PrintDefinitions(CommandContext& context, const AssemblyStructure& structure) {
  TextTable table({{"part number"}, {"kind"}, {"children", true}, {"file"}, {"light file"}});
  for (const auto& definition : structure.definitions) {
    const auto& name = definition.partNumber;
    table.AddRow({name, definition.isAssembly ? "assembly" : "part",
                  definition.isAssembly ? std::to_string(definition.children.size()) : "",
                  name + (definition.isAssembly ? ".ZVAProduct" : ".stp"), name + ".lwt"});
  }
  context.Print(table);
}

}  // namespace

void RunImport(CommandContext& context, const ImportOptions& options) {
  const auto file = FindFile(context, options.file, "STEP file");
  const StepImportRequest request{file, context.WorkPath(), options.replace, options.dryRun};
  const auto report = ImportStep(request, context.TheGeometry(), context.ThePlatform(), context.ProgressBarOn());
  const auto& root = report.structure.definitions.at(report.structure.root);
  PrintChanges(context, report.structure.changes);
  PrintDefinitions(context, report.structure);
  if (!root.isAssembly) context.Print("'" + options.file + "' holds no assembly: it is one part");
  const auto count = std::to_string(report.files.size()) + " files";
  context.Print(options.dryRun ? "nothing written, as asked: " + count + " for '" + root.partNumber + "'"
                               : "imported '" + root.partNumber + "': " + count + " in '" + context.WorkPath() + "'");
}

}  // namespace quintara
