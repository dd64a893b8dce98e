#include "quintara/setting_table.h"

#include <set>

#include "access/session/process.h"
#include "base/failure.h"
#include "base/text.h"
#include "quintara/vault_objects.h"

namespace quintara {
namespace {

// No session was started, so that what the settings report has no text yet.
void ProvideText() {
  auto& report = Process().texts.COMMON_UNEXPECTED_ERROR.text;
  if (report.empty()) report = "REP1: REP2";
}

}  // namespace

SettingTable::SettingTable(EmbeddedVault& vault, bool ofUser)
    : application_(vault.Application()),
      session_(SessionOf(vault)),
      ofUser_(ofUser),
      userId_(ofUser ? session_->UserMetaInfo()->UserId() : -1),
      class_(session_->MetaInfo()->ClassByName(ofUser ? "User Setting" : "Admin Setting")) {
  ProvideText();
  if (!settings_.InitSettings(session_)) {
    throw Failure(failure::kInvalidCall, "the vault's tables of settings can't be read");
  }
  const auto attributes = class_->Attributes();
  while (attributes->Find(settings_.ValuePrefix + std::to_string(shortValues_ + 1))) ++shortValues_;
}

std::string SettingTable::ValueColumn(int number) const {
  return number > shortValues_ ? settings_.ValueLongAttribute : settings_.ValuePrefix + std::to_string(number);
}

// The settings themselves are only ever asked for by their section.
std::vector<std::string> SettingTable::Sections() const {
  const auto query = session_->ObjectStore()->NewQuery();
  const auto definition = query->Definition();
  definition->From()->Add(class_->ClassId(), "F");
  if (ofUser_) definition->Where()->Add("", settings_.UserIdAttribute, "=", Variant(userId_), 0, "F");
  definition->Select()->Add(settings_.SectionAttribute, "F", false);
  query->RunClassQuery();
  const auto rows = query->Result();
  std::set<std::string> sections;
  for (int i = 0, count = rows->RecordCount(); i < count; ++i) {
    sections.insert(rows->GetRecord(i)->ValueAsString(settings_.SectionAttribute));
  }
  return {sections.begin(), sections.end()};
}

std::vector<SettingTable::Row> SettingTable::Find(const std::string& section, const std::string& subject) {
  std::vector<Row> found;
  for (const auto& name : section.empty() ? Sections() : std::vector<std::string>{section}) {
    const auto rows = settings_.GetSettingSection(session_, name, !ofUser_, userId_);
    for (int i = 0, count = rows ? rows->RecordCount() : 0; i < count; ++i) {
      auto ofRow = rows->ValueAt(settings_.SubjectAttribute, i);
      if (subject.empty() || subject == ofRow) found.push_back({name, std::move(ofRow), ValuesIn(rows, i)});
    }
  }
  return found;
}

std::vector<std::string> SettingTable::ValuesIn(const Ref<veldora::VdRecList>& rows, int row) const {
  std::vector<std::string> values;
  for (int i = 1; i <= ValueCount(); ++i) values.push_back(rows->ValueAt(ValueColumn(i), row));
  while (!values.empty() && values.back().empty()) values.pop_back();
  return values;
}

void SettingTable::Set(const std::string& section, const std::string& subject, const std::vector<std::string>& values) {
  if (const auto count = Find(section, subject).size(); count > 1) {
    throw Failure(failure::kInvalidCall, "the vault has the setting '" + section + "' '" + subject + "' " +
                                             std::to_string(count) + " times; it can't tell which is meant");
  }
  constexpr int kTextSize = 4000;
  const auto row = application_->NewRecList();
  for (int i = 1; i <= ValueCount(); ++i) row->AddField(ValueColumn(i), veldora::column_type::kText, kTextSize);
  row->AddRow();
  for (std::size_t i = 0; i < values.size(); ++i) row->SetCell(static_cast<int>(i), 0, Variant(values[i]));
  if (!settings_.SetSettingValues(session_, section, subject, !ofUser_, userId_, row)) {
    throw Failure(failure::kInvalidCall, "the setting '" + section + "' '" + subject + "' can't be set");
  }
}

std::string FirstClassOfSetting(EmbeddedVault& vault, const std::string& section, const std::string& subject) {
  const auto rows = SettingTable(vault, false).Find(section, subject);
  if (rows.empty() || rows.front().values.empty()) return {};
  auto name = Split(rows.front().values.front(), ',').front();
  if (!name.empty() && !SessionOf(vault)->MetaInfo()->Classes()->Find(name)) {
    throw Failure(failure::kInvalidCall,
                  "the setting " + section + " " + subject + " names '" + name + "', which is no class of the vault");
  }
  return name;
}

}  // namespace quintara
