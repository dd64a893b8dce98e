#include "services/Cls_AdminSettings.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "access/session/the_platform.h"
#include "access/utils/messages.h"
#include "base/counter16.h"

namespace quintara {
namespace {

using veldora::VdRecList;
using veldora::VdRecord;

constexpr auto kAlias = "F";

// The flags of `ObjectFromRecord`.
constexpr int kForReading = -1;
constexpr int kForWriting = 0;

// One of the names to find out: a generation is told by the attribute tested for it.
struct ColumnRule {
  std::string Cls_AdminSettings::*name;
  const char* testedFirst;
  const char* testedSecond;
  const char* suffix;
};

// The user's column is told by the id's in the oldest generation.
constexpr std::array kColumnRules = {
    ColumnRule{&Cls_AdminSettings::IdAttribute, "TDM_ID", "TDMX_ID", "ID"},
    ColumnRule{&Cls_AdminSettings::UserIdAttribute, "TDM_ID", "TDMX_USER_ID", "USER_ID"},
    ColumnRule{&Cls_AdminSettings::SectionAttribute, "TDM_SECTION", "TDMX_SECTION", "SECTION"},
    ColumnRule{&Cls_AdminSettings::SubjectAttribute, "TDM_SUBJECT", "TDMX_SUBJECT", "SUBJECT"},
    ColumnRule{&Cls_AdminSettings::ValuePrefix, "TDM_VALUE_1", "TDMX_VALUE_1", "VALUE_"},
    ColumnRule{&Cls_AdminSettings::ValueLongAttribute, "TDM_VALUE_LONG", "TDMX_VALUE_LONG", "VALUE_LONG"},
};

constexpr std::array<std::string_view, 10> kLeftOut = {"OBJECT_ID",      "CLASS_ID",          "STATE",
                                                       "CN_ID",          "CREATION_DATE",     "USER_OBJECT_ID",
                                                       "USER_ID_MOD",    "MODIFICATION_DATE", "TDM_SUPPORTED_CLB",
                                                       "TDM_DESCRIPTION"};

const std::vector<std::string>& Identity() {
  static const std::vector<std::string> kNames = {"OBJECT_ID", "CLASS_ID"};
  return kNames;
}

// The whole numbers from 0 below `count`, the last of which must fit 16 bits.
Counting Below(int count) {
  return {0, count - 1};
}

void FillRow(const Ref<VdRecList>& table, int row, const Ref<VdRecord>& record) {
  table->AddRow();
  for (const int column : Below(table->ColumnCount())) {
    table->SetCell(column, row, record->Value(table->ColumnName(column)));
  }
}

}  // namespace

bool Cls_AdminSettings::InitSettings(const Ref<veldora::VdSession>& VdSession) {
  return Reported("Cls_AdminSettings.InitSettings", box::kCritical, false, [&] {
    if (Initialized) return true;
    const auto ofUsers = VdSession->MetaInfo()->ClassByTable("TDMX_USER_SETTING");
    if (!ofUsers) return false;
    ReadColumnNames(ofUsers->Attributes());
    if (VdSession->MetaInfo()->ClassByTable("TDMX_ADMIN_SETTING")) Initialized = true;
    return Initialized;
  });
}

void Cls_AdminSettings::ReadColumnNames(const Ref<veldora::VdAttributes>& attributes) {
  for (const auto& rule : kColumnRules) {
    const auto* prefix = "CN_";
    if (attributes->Find(rule.testedFirst)) {
      prefix = "TDM_";
    } else if (attributes->Find(rule.testedSecond)) {
      prefix = "TDMX_";
    }
    this->*rule.name = std::string(prefix) + rule.suffix;
  }
}

Cls_AdminSettings::Search Cls_AdminSettings::SearchFor(const Ref<veldora::VdSession>& session,
                                                       const Wanted& wanted) const {
  const auto query = session->ObjectStore()->NewQuery();
  const auto ofClass = session->MetaInfo()->ClassByName(wanted.admin ? "Admin Setting" : "User Setting");
  const auto definition = query->Definition();
  definition->From()->Add(ofClass->ClassId(), kAlias);
  const auto where = definition->Where();
  where->Add("", SectionAttribute, "=", wanted.section, 0, kAlias);
  if (wanted.subject) where->Add("", SubjectAttribute, "=", *wanted.subject, 0, kAlias);
  if (wanted.userId >= 1 && !wanted.admin) where->Add("", UserIdAttribute, "=", wanted.userId, 0, kAlias);
  for (const auto& attribute : wanted.selected) definition->Select()->Add(attribute, kAlias, false);
  const auto behavior = session->ObjectStore()->DefaultBehavior()->Clone();
  behavior->SetOptionA(0);
  behavior->SetOptionE(0);
  query->RunWithBehavior(behavior);
  return {ofClass, behavior, query};
}

Ref<VdRecList> Cls_AdminSettings::GetSettingValues(const Ref<veldora::VdSession>& VdSession,
                                                   const std::string& SectionName, const std::string& Subject,
                                                   bool Admin, std::int32_t UserId) {
  if (!Initialized) InitSettings(VdSession);
  const auto query = SearchFor(VdSession, {SectionName, Subject, Admin, UserId, Identity()}).query;
  if (query->RecordCount() != 1) return nullptr;
  const auto object = VdSession->ObjectStore()->ObjectFromRecord(query->Result()->GetRecord(0), kForReading);
  object->Retrieve();
  const auto record = object->Record();
  const auto values = TableLike(record, false);
  FillRow(values, 0, record);
  return values;
}

Ref<VdRecList> Cls_AdminSettings::GetSettingSection(const Ref<veldora::VdSession>& VdSession,
                                                    const std::string& SectionName, bool Admin, std::int32_t UserId) {
  if (!Initialized) InitSettings(VdSession);
  const auto query = SearchFor(VdSession, {SectionName, {}, Admin, UserId, Identity()}).query;
  const int count = query->RecordCount();
  if (count < 1) return nullptr;
  const auto rows = query->Result();
  const auto store = VdSession->ObjectStore();
  const auto objects = store->NewObjects();
  for (const int row : Below(count)) {
    const auto object = store->ObjectFromRecord(rows->GetRecord(row), kForReading)->Clone();
    object->Retrieve();
    objects->Add(object);
  }
  const auto values = TableLike(objects->Item(count - 1)->Record(), true);
  for (const int row : Below(count)) FillRow(values, row, objects->Item(row)->Record());
  return values;
}

Ref<VdRecList> Cls_AdminSettings::TableLike(const Ref<VdRecord>& record, bool withSubject) const {
  // Only the running client makes tables.
  const auto table = ThePlatform().Attach("Veldora.VdApplication")->AsVdApplication()->NewRecList();
  const auto columns = record->Header();
  for (const int i : Below(columns->Count())) {
    const auto column = columns->Item(i);
    const auto name = column->Name();
    if (!IsLeftOut(name, withSubject)) table->AddField(name, column->TypeCode(), column->Size());
  }
  return table;
}

bool Cls_AdminSettings::IsLeftOut(const std::string& column, bool withSubject) const {
  if (column == IdAttribute || column == SectionAttribute) return true;
  if (column == SubjectAttribute) return !withSubject;
  return std::ranges::find(kLeftOut, column) != kLeftOut.end();
}

bool Cls_AdminSettings::SetSettingValues(const Ref<veldora::VdSession>& VdSession, const std::string& SectionName,
                                         const std::string& Subject, bool Admin, std::int32_t UserId,
                                         const Ref<VdRecList>& Values) {
  const Wanted wanted{SectionName, Subject, Admin, UserId, {SubjectAttribute}};
  const auto search = SearchFor(VdSession, wanted);
  const int count = search.query->RecordCount();
  if (count > 1) {
    Show(Process().texts.QD_ADMINSETTINGS_ONLY_ONE_SETTING_WITH_SAME_SECTION, box::kCritical);
    return false;
  }
  if (count == 0) return AddSetting(VdSession->ObjectStore(), search, wanted, Values);
  UpdateSetting(VdSession->ObjectStore(), search, Values);
  return true;
}

bool Cls_AdminSettings::AddSetting(const Ref<veldora::VdObjectStore>& store, const Search& search, const Wanted& wanted,
                                   const Ref<VdRecList>& values) const {
  const auto object = store->NewObject(search.ofClass->ClassId());
  object->InitData();
  const auto mask = store->Masks()->MaskOf(search.ofClass->Attributes()->ItemByName(IdAttribute));
  if (!mask) {
    Show(Process().texts.QD_ADMINSETTINGS_DOESNT_HAVE_SEQUENCE, box::kCritical, search.ofClass->ClassName(),
         IdAttribute);
    return false;
  }
  const auto record = object->Record();
  record->ValuateFromString(IdAttribute, mask->NextValue());
  record->ValuateFromString(SubjectAttribute, *wanted.subject);
  record->ValuateFromString(SectionAttribute, wanted.section);
  if (wanted.userId > 0) record->ValuateFromString(UserIdAttribute, std::to_string(wanted.userId));
  CopyValues(values, record);
  object->AddToVault(search.behavior);
  return true;
}

void Cls_AdminSettings::UpdateSetting(const Ref<veldora::VdObjectStore>& store, const Search& search,
                                      const Ref<VdRecList>& values) const {
  const auto object = store->ObjectFromRecord(search.query->Result()->GetRecord(0), kForWriting)->Clone();
  object->Retrieve();
  CopyValues(values, object->Record());
  object->Update(search.behavior);
}

void Cls_AdminSettings::CopyValues(const Ref<VdRecList>& values, const Ref<VdRecord>& record) const {
  const auto header = values->Header();
  const auto copy = [&](const std::string& name) {
    if (header->Contains(name)) record->ValuateFromString(name, values->ValueAt(name, 0));
  };
  for (const int n : Counting(1, values->ColumnCount())) copy(ValuePrefix + std::to_string(n));
  copy(ValueLongAttribute);
}

}  // namespace quintara
