#include <map>
#include <utility>

#include "access/session/process.h"
#include "access/utils/messages.h"
#include "base/attempt.h"
#include "base/failure.h"
#include "base/variant.h"
#include "quintara/documents.h"
#include "quintara/object_arguments.h"
#include "quintara/pattern.h"
#include "quintara/product_tree.h"
#include "quintara/review_desk.h"
#include "quintara/session_start.h"
#include "quintara/vault_objects.h"
#include "quintara/wip_check.h"
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

// The name that the panel will compile, as far as it can be told before.
std::string ExpectedName(const Ref<VdObject>& object, const std::string& name) {
  if (!name.empty()) return name;
  return OrElse(std::string(), [&] {
    const auto& session = Process().gSession;
    auto documents = Utils().GetLinkedDocs(session, object, MatrixType::XML);
    if (!documents) documents = Utils().GetLinkedDocs(session, object, MatrixType::Excel);
    return documents && documents->Count() == 1 ? Utils().GetTheRootName(documents->Item(0)) : std::string();
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
    if (!name.empty()) TargetPath(context.WorkPathToWrite(FileNameOf(kWipPrefix + name)), replace);
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

Ref<veldora::VdRecList> SelectionOf(const Ref<VdObject>& object) {
  const auto objects = Process().gSession->ObjectStore()->NewObjects();
  objects->Add(object);
  return objects->Records();
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

std::vector<WipComponent> ComponentsOf(const Ref<zorva::Product>& root) {
  std::vector<WipComponent> components;
  const auto products = root->Products();
  for (int i = 1, count = products->Count(); i <= count; ++i) {
    const auto product = products->Item(i);
    WipComponent component{Utils().GetThePartNumber(product), product->Name()};
    product->Position()->GetComponents(component.position);
    components.push_back(std::move(component));
  }
  return components;
}

// Nothing of a matrix in a workbook, and without a matrix.
std::string MatrixOf(CommandContext& context, const Ref<zorva::Product>& root) {
  const auto classId = Variant(StringProperty(root, "DocXMLCID")).ToInteger16();
  const auto objectId = Variant(StringProperty(root, "DocXMLOID")).ToInteger32();
  if (objectId == 0) return {};
  auto& vault = context.RequireVault();
  return vault.FileOf(ObjectOf(vault, {classId, objectId}));
}

void Check(CommandContext& context, const Ref<zorva::Product>& root, const ReviewDesk& desk) {
  std::vector<std::string> partNumbers;
  for (const auto& component : *desk.Asked()) partNumbers.push_back(component.partNumber);
  std::vector<MatrixInstance> instances;
  ErrorState unread;
  Attempt(unread, [&] {
    const auto matrix = MatrixOf(context, root);
    if (!matrix.empty()) instances = InstancesFor(partNumbers, matrix);
  });
  if (unread) context.Complain("the places can't be compared with the matrix: " + unread.description);
  for (const auto& line : Shortcomings(*desk.Asked(), desk.AllInstances(), ComponentsOf(root), instances)) {
    context.Complain(line);
  }
}

void SaveAndCheck(CommandContext& context, const Ref<zorva::ProductDocument>& document, const ReviewDesk& desk,
                  bool replace) {
  const auto root = document->Product();
  const auto partNumber = root->PartNumber();
  const auto target = TargetPath(context.WorkPathToWrite(FileNameOf(partNumber)), replace);
  context.Host().Save(document, target);
  context.Print("made '" + partNumber + "' with " + Counted(root->Products()->Count(), "component") + ", '" + target +
                "'");
  Check(context, root, desk);
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
  SaveAndCheck(context, made, desk, options.replace);
}

}  // namespace quintara
