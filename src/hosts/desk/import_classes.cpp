#include "hosts/desk/import_classes.h"

#include "base/failure.h"
#include "base/text.h"

namespace quintara {
namespace {

SettingsColumns ColumnsOf(const Ref<veldora::VdClass>& settings) {
  const auto attributes = settings->Attributes();
  for (const auto* prefix : {"TDM_", "TDMX_"}) {
    auto columns = SettingsColumns::OfGeneration(prefix);
    if (attributes->Find(columns.subject)) return columns;
  }
  return SettingsColumns::OfGeneration("CN_");
}

}  // namespace

std::string FirstClassOfSiteSetting(EmbeddedVault& vault, const std::string& section, const std::string& subject) {
  const auto session = vault.Application()->Engine()->Sessions(0);
  const auto settings = session->MetaInfo()->ClassByName("Admin Setting");
  const auto columns = ColumnsOf(settings);
  const auto value = columns.valuePrefix + "1";
  const auto query = session->ObjectStore()->NewQuery();
  const auto definition = query->Definition();
  definition->From()->Add(settings->ClassId(), "F");
  definition->Where()->Add("", columns.section, "=", Variant(section), 0, "F");
  definition->Where()->Add("", columns.subject, "=", Variant(subject), 0, "F");
  definition->Select()->Add(value, "F", false);
  query->RunClassQuery();
  const auto rows = query->Result();
  if (rows->RecordCount() == 0) return {};
  auto name = Split(rows->GetRecord(0)->ValueAsString(value), ',').front();
  if (!name.empty() && !session->MetaInfo()->Classes()->Find(name)) {
    throw Failure(failure::kInvalidCall,
                  "the setting " + section + " " + subject + " names '" + name + "', which is no class of the vault");
  }
  return name;
}

}  // namespace quintara
