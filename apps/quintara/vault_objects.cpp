#include "quintara/vault_objects.h"

#include <charconv>
#include <cstdint>
#include <optional>
#include <sstream>

#include "quintara/wrong_use.h"
#include "views/console/text_table.h"

namespace quintara {
namespace {

using Identity = IntegrationVault::Identity;
using Listed = EmbeddedVault::Listed;

template <class Number>
std::optional<Number> NumberOf(const std::string& text) {
  Number number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::optional<std::int16_t> ClassIdOf(EmbeddedVault& vault, const std::string& name) {
  if (const auto id = NumberOf<std::int16_t>(name)) return id;
  const auto found = SessionOf(vault)->MetaInfo()->Classes()->Find(name);
  if (!found) return std::nullopt;
  return found->ClassId();
}

// A class and an id, whether there is such an object or not.
std::optional<Identity> IdentityNamed(EmbeddedVault& vault, const std::string& argument) {
  const auto colon = argument.rfind(':');
  if (colon == std::string::npos) return std::nullopt;
  const auto objectId = NumberOf<std::int32_t>(argument.substr(colon + 1));
  const auto classId = objectId ? ClassIdOf(vault, argument.substr(0, colon)) : std::nullopt;
  if (!classId) return std::nullopt;
  return Identity{*classId, *objectId};
}

std::vector<Listed> ListedNamed(EmbeddedVault& vault, const std::string& argument) {
  auto found = vault.FindNewest(argument);
  const auto at = argument.rfind('@');
  if (!found.empty() || at == std::string::npos) return found;
  return vault.FindRevision(argument.substr(0, at), argument.substr(at + 1));
}

[[noreturn]] void ThrowSeveral(const std::string& argument, const std::vector<Listed>& found) {
  TextTable table({{"object"}, {"part number"}, {"revision"}, {"state"}, {"class"}});
  for (const auto& one : found) {
    table.AddRow({IdentityText(one.identity), one.partNumber, one.revision, StateText(one), one.className});
  }
  std::ostringstream text;
  text << "several objects of the vault are called '" << argument << "'; name one by class and id:\n";
  table.Print(text);
  auto lines = text.str();
  lines.pop_back();
  throw WrongUse(lines);
}

}  // namespace

std::vector<Identity> ObjectsNamed(EmbeddedVault& vault, const std::string& argument) {
  std::vector<Identity> identities;
  for (const auto& one : ListedNamed(vault, argument)) identities.push_back(one.identity);
  if (!identities.empty()) return identities;
  const auto identity = IdentityNamed(vault, argument);
  if (identity && ObjectOf(vault, *identity)) identities.push_back(*identity);
  return identities;
}

Ref<veldora::VdObject> FindObject(EmbeddedVault& vault, const std::string& argument) {
  const auto identities = ObjectsNamed(vault, argument);
  if (identities.empty()) {
    throw WrongUse("the vault has no object '" + argument +
                   "'; one is named by part number, PART@REVISION or CLASS:ID, and 'quintara ls' lists them");
  }
  if (identities.size() > 1) ThrowSeveral(argument, ListedNamed(vault, argument));
  return ObjectOf(vault, identities.front());
}

Ref<veldora::VdObject> ObjectOf(EmbeddedVault& vault, const Identity& identity) {
  return SessionOf(vault)->ObjectStore()->ObjectById(identity.classId, identity.objectId);
}

Ref<veldora::VdSession> SessionOf(EmbeddedVault& vault) {
  return vault.Application()->Engine()->Sessions(0);
}

TextTable AttributesOf(const Ref<veldora::VdObject>& object) {
  TextTable table({{"attribute"}, {"value"}});
  const auto record = object->Record();
  const auto header = record->Header();
  for (int i = 0, count = header->Count(); i < count; ++i) {
    const auto name = header->Item(i)->Name();
    table.AddRow({name, record->ValueAsString(name)});
  }
  return table;
}

std::string StateText(const Listed& object) {
  const auto text = StateName(object.state);
  const bool isHeld = object.state == veldora::state::kCheckedOut && !object.owner.empty();
  return isHeld ? text + " (" + object.owner + ")" : text;
}

std::string TimeText(const std::string& timeStamp) {
  constexpr std::size_t kUpToMinutes = 16;
  auto text = timeStamp.substr(0, kUpToMinutes);
  if (const auto t = text.find('T'); t != std::string::npos) text[t] = ' ';
  return text;
}

std::string IdentityText(const Identity& identity) {
  return std::to_string(identity.classId) + ":" + std::to_string(identity.objectId);
}

}  // namespace quintara
