#include "quintara/object_arguments.h"

#include "access/session/process.h"
#include "base/attempt.h"
#include "quintara/documents.h"
#include "quintara/vault_objects.h"
#include "quintara/wrong_use.h"

namespace quintara {
namespace {

using veldora::VdObject;

// Not every class has every attribute.
std::string TextOf(const Ref<VdObject>& object, const std::string& attribute) {
  return OrElse(std::string(), [&] { return object->Record()->ValueAsString(attribute); });
}

std::string IdentityOf(const Ref<VdObject>& object) {
  return IdentityText({object->ClassId(), object->ObjectId()});
}

std::string NameOf(const Ref<VdObject>& object) {
  for (const auto* attribute : {&Process().gAttrPartNumber, &Process().gAttrDescription}) {
    if (auto text = TextOf(object, *attribute); !text.empty()) return text;
  }
  return IdentityOf(object);
}

std::string StateOf(const Ref<VdObject>& object) {
  return OrElse(std::string(), [&] { return StateName(object->Record()->ValueAsInteger(Process().STATE)); });
}

}  // namespace

Ref<VdObject> ObjectArgument(CommandContext& context, const std::string& argument) {
  auto& vault = context.RequireVault();
  const auto file = ExistingFile(context, argument);
  if (file.empty()) return FindObject(vault, argument);
  const auto identity = vault.Integration().NotedObject(file);
  if (!identity) throw WrongUse("the vault doesn't know the file '" + file + "'");
  return ObjectOf(vault, *identity);
}

std::vector<Ref<VdObject>> ObjectArguments(CommandContext& context, const std::vector<std::string>& arguments) {
  std::vector<Ref<VdObject>> objects;
  for (const auto& argument : arguments) objects.push_back(ObjectArgument(context, argument));
  return objects;
}

Ref<veldora::VdRecList> SelectionOf(const Ref<VdObject>& object) {
  const auto objects = Process().gSession->ObjectStore()->NewObjects();
  objects->Add(object);
  return objects->Records();
}

std::string Called(const Ref<VdObject>& object) {
  const auto revision = TextOf(object, Process().REVISION);
  return "'" + NameOf(object) + "'" + (revision.empty() ? "" : " (revision " + revision + ")");
}

TextTable TableOf(const Ref<veldora::VdObjects>& objects) {
  TextTable table({{"name"}, {"revision"}, {"state"}, {"class"}, {"file"}, {"object"}});
  for (int i = 0, count = objects->Count(); i < count; ++i) {
    const auto object = objects->Item(i);
    table.AddRow({NameOf(object), TextOf(object, Process().REVISION), StateOf(object), object->ClassInfo()->ClassName(),
                  TextOf(object, Process().FILE_NAME), IdentityOf(object)});
  }
  return table;
}

std::string AttributesOfTable() {
  const auto& process = Process();
  return process.gAttrPartNumber + "," + process.gAttrDescription + "," + process.REVISION + "," + process.STATE + "," +
         process.FILE_NAME;
}

}  // namespace quintara
