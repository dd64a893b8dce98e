#include <map>
#include <optional>
#include <utility>

#include "access/session/process.h"
#include "access/utils/messages.h"
#include "base/attempt.h"
#include "base/failure.h"
#include "quintara/documents.h"
#include "quintara/object_arguments.h"
#include "quintara/pattern.h"
#include "quintara/product_tree.h"
#include "quintara/review_desk.h"
#include "quintara/session_start.h"
#include "quintara/vault_objects.h"
#include "quintara/wip_comparison.h"
#include "quintara/wip_verbs.h"
#include "quintara/wrong_use.h"
#include "wip/Cls_Application.h"

namespace quintara {
namespace {

using veldora::VdObject;
using Identity = IntegrationVault::Identity;

void CheckOptions(const CommandContext& context, const WipOptions& options) {
  if (options.rules.empty() && !context.IsAttended()) {
    throw WrongUse(
        "without a terminal nobody can be asked for the components; name them with --light, --document and --none");
  }
  if (!options.name.empty() && !IsFileName(options.name)) {
    throw WrongUse("'" + options.name + "' can't be used in a file name; choose another with --name");
  }
  for (const auto& rule : options.rules) Pattern(rule.pattern);
}

std::string FileNameOf(const std::string& partNumber) {
  return partNumber + ".ZVAProduct";
}

// The name that the panel will compile; nothing where someone picks the matrix that it comes from.
std::optional<std::string> ExpectedName(const Ref<VdObject>& object, const std::string& typed) {
  if (!typed.empty()) return typed;
  return OrElse(std::optional<std::string>(), [&]() -> std::optional<std::string> {
    const auto& session = Process().gSession;
    auto documents = Utils().GetLinkedDocs(session, object, MatrixType::XML);
    if (!documents) documents = Utils().GetLinkedDocs(session, object, MatrixType::Excel);
    if (!documents || documents->Count() == 0) return "";
    if (documents->Count() > 1) return std::nullopt;
    return Utils().GetTheRootName(documents->Item(0));
  });
}

std::string AsCreatedPath(const WipOptions& options) {
  if (HasExtension(options.asCreated, ".ZVAProduct")) return TargetPath(options.asCreated, options.replace);
  throw WrongUse("'" + options.asCreated + "' can't hold a product: its name must end in .ZVAProduct");
}

// What keeps a work in progress of a name from being saved, for which all the work would be lost; empty for nothing.
std::string ObjectionTo(CommandContext& context, const Ref<VdObject>& object, const std::string& typed, bool replace) {
  if (!typed.empty() && !IsFileName(typed)) return "'" + typed + "' can't be used in a file name";
  const auto name = ExpectedName(object, typed);
  ErrorState inTheWay;
  Attempt(inTheWay, [&] {
    if (name) TargetPath(context.WorkPathToWrite(FileNameOf(kWipPrefix + *name)), replace);
  });
  return inTheWay.description;
}

// Someone at the terminal can type another name in the panel.
void RefuseFilesInTheWay(CommandContext& context, const Ref<VdObject>& object, const WipOptions& options) {
  if (!options.asCreated.empty()) AsCreatedPath(options);
  if (options.rules.empty()) return;
  const auto objection = ObjectionTo(context, object, options.name, options.replace);
  if (!objection.empty()) throw Failure(failure::kPathAccess, objection);
}

PartNumberOfObject PartNumbersBelow(EmbeddedVault& vault, const Ref<VdObject>& root) {
  std::map<std::pair<int, int>, std::string> known;
  for (const auto& held : vault.WholeStructure(root)) {
    known[{held.object.identity.classId, held.object.identity.objectId}] = held.object.partNumber;
  }
  return [known = std::move(known), &vault](const Identity& identity) {
    const auto found = known.find({identity.classId, identity.objectId});
    if (found != known.end()) return found->second;
    return ObjectOf(vault, identity)->Record()->ValueAsString(Process().gAttrPartNumber);
  };
}

std::string Counted(int count, const char* what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

void TellReports(CommandContext& context, const std::vector<RuleReport>& reports) {
  for (const auto& report : reports) {
    const auto pattern = "the pattern '" + report.pattern + "' ";
    if (report.locked > 0) {
      context.Note(pattern + "also matches " + Counted(report.locked, "node") +
                   " that the choice above keeps as it is");
    }
    if (report.left > 0) {
      context.Note(pattern + "leaves " + Counted(report.left, "further node") +
                   " of what it marks; --every-node marks them too");
    }
  }
}

// The product that the commands have made of the active document.
Ref<zorva::ProductDocument> MadeWip(CommandContext& context, const std::string& partNumberBefore) {
  return OrElse(Ref<zorva::ProductDocument>(), [&]() -> Ref<zorva::ProductDocument> {
    auto document = context.Host().Application()->ActiveDocument()->AsProductDocument();
    const auto root = document->Product();
    const auto partNumber = root->PartNumber();
    const bool isMade = partNumber.starts_with(kWipPrefix) && partNumber != partNumberBefore;
    return isMade ? document : nullptr;
  });
}

void SaveAndCheck(CommandContext& context, const Ref<zorva::ProductDocument>& document, const ReviewDesk& desk,
                  const Ref<VdObject>& object, bool replace) {
  const auto root = document->Product();
  const auto partNumber = root->PartNumber();
  const auto target = TargetPath(context.WorkPathToWrite(FileNameOf(partNumber)), replace);
  context.Host().Save(document, target);
  context.Print("made '" + partNumber + "' with " + Counted(root->Products()->Count(), "component") + ", '" + target +
                "'");
  CompareWithAsked(context, root, *desk.Asked(), desk.AllInstances(), object);
}

void PrintAsked(CommandContext& context, const std::vector<AskedComponent>& asked) {
  TextTable table({{"component"}, {"form"}});
  for (const auto& component : asked) table.AddRow({component.partNumber, component.isLight ? "light" : "document"});
  context.Print(table);
  context.Print("nothing made, as asked: " + Counted(static_cast<int>(asked.size()), "component"));
}

}  // namespace

void RunWip(CommandContext& context, const WipOptions& options) {
  CheckOptions(context, options);
  StartSession(context);
  const auto object = ObjectArgument(context, options.product);
  RefuseFilesInTheWay(context, object, options);
  std::string partNumberBefore;
  if (!options.active.empty()) partNumberBefore = OpenProduct(context, options.active)->Product()->PartNumber();
  ReviewDesk::Wishes wishes{{options.rules, options.everyNode}, options.name, options.allInstances, options.dryRun};
  wishes.objectionTo = [&](const std::string& name) { return ObjectionTo(context, object, name, options.replace); };
  wishes.whenCreated = [&] {
    const auto made = options.asCreated.empty() ? nullptr : MadeWip(context, partNumberBefore);
    if (made) context.Host().Save(made, AsCreatedPath(options));
  };
  const ReviewDesk desk(std::move(wishes), context.Dialogs(), PartNumbersBelow(context.RequireVault(), object));

  Cls_Application().Run(SelectionOf(object));

  if (desk.Unmatched()) {
    throw WrongUse("the pattern '" + *desk.Unmatched() + "' matches no component of " + Called(object));
  }
  TellReports(context, desk.Reports());
  if (!desk.Asked()) return context.Complain("nothing was made of " + Called(object));
  if (options.dryRun) return PrintAsked(context, *desk.Asked());
  const auto made = MadeWip(context, partNumberBefore);
  if (!made) return context.Complain("no work in progress was made of " + Called(object));
  SaveAndCheck(context, made, desk, object, options.replace);
}

}  // namespace quintara
