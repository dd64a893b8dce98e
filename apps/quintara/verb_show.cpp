#include "quintara/command_context.h"
#include "quintara/vault_objects.h"
#include "quintara/vault_verbs.h"

namespace quintara {
namespace {

using veldora::VdObject;

std::string Named(const EmbeddedVault::Listed& object) {
  return object.partNumber.empty() ? object.description : object.partNumber;
}

void PrintHeading(CommandContext& context, const Ref<VdObject>& object,
                  const std::vector<EmbeddedVault::Listed>& revisions) {
  const IntegrationVault::Identity self{object->ClassId(), object->ObjectId()};
  auto text = object->ClassInfo()->ClassName() + " " + IdentityText(self);
  for (const auto& one : revisions) {
    if (one.identity == self) text = Named(one) + " - " + one.revision + ", " + StateText(one) + ", " + text;
  }
  context.Print(text);
}

void PrintBelow(CommandContext& context, const std::string& title, const TextTable& table) {
  if (table.Empty()) return;
  context.Print("");
  context.Print(title);
  context.Print(table);
}

void PrintStructure(CommandContext& context, const std::string& title, bool isBelow,
                    const std::vector<EmbeddedVault::Linked>& links) {
  TextTable table({{"part number"}, {"quantity", true}, {"revision"}, {"state"}, {"class"}, {"object"}});
  for (const auto& link : links) {
    if (!link.isStructure || link.goesOut != isBelow) continue;
    const auto& object = link.object;
    table.AddRow({object.partNumber, std::to_string(link.quantity), object.revision, StateText(object),
                  object.className, IdentityText(object.identity)});
  }
  PrintBelow(context, title, table);
}

void PrintOtherLinks(CommandContext& context, const std::vector<EmbeddedVault::Linked>& links) {
  TextTable table({{"link"}, {""}, {"name"}, {"revision"}, {"state"}, {"file"}, {"object"}});
  for (const auto& link : links) {
    if (link.isStructure) continue;
    const auto& object = link.object;
    table.AddRow({link.linkClass, link.goesOut ? "to" : "from", Named(object), object.revision, StateText(object),
                  object.fileName, IdentityText(object.identity)});
  }
  PrintBelow(context, "documents and other links", table);
}

void PrintRevisions(CommandContext& context, const std::vector<EmbeddedVault::Listed>& revisions) {
  TextTable table({{"revision"}, {"state"}, {"file"}, {"changed (UTC)"}, {"by"}, {"object"}});
  for (const auto& one : revisions) {
    table.AddRow({one.revision, StateText(one), one.fileName, TimeText(one.changedAt), one.changedBy,
                  IdentityText(one.identity)});
  }
  PrintBelow(context, "revisions", table);
}

}  // namespace

void RunShow(CommandContext& context, const ShowOptions& options) {
  auto& vault = context.RequireVault();
  std::vector<Ref<VdObject>> objects;
  for (const auto& argument : options.objects) objects.push_back(FindObject(vault, argument));
  bool isFirst = true;
  for (const auto& object : objects) {
    if (!isFirst) context.Print("");
    isFirst = false;
    const auto revisions = vault.Revisions(object);
    PrintHeading(context, object, revisions);
    context.Print(AttributesOf(object));
    const auto links = vault.Links(object);
    PrintStructure(context, "components", true, links);
    PrintStructure(context, "used in", false, links);
    PrintOtherLinks(context, links);
    PrintRevisions(context, revisions);
  }
}

}  // namespace quintara
