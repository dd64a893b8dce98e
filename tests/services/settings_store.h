#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "services/Cls_AdminSettings.h"
#include "services/running_hosts.h"

namespace quintara::test {

using Cells = std::vector<std::pair<std::string, std::string>>;

inline constexpr bool kAdmin = true;
inline constexpr bool kUser = false;
inline constexpr std::int32_t kAllUsers = -1;

/// The settings of a vault, with texts for the messages about them.
class SettingsStore : public testing::Test, public RunningHosts {
 protected:
  explicit SettingsStore(const SettingsColumns& columns = SettingsColumns::OfGeneration("TDMX_"))
      : RunningHosts(columns) {
    RunVault();
    Process().texts.COMMON_UNEXPECTED_ERROR.text = "Failure in REP1: REP2";
    Process().texts.QD_ADMINSETTINGS_DOESNT_HAVE_SEQUENCE.text = "REP2 of REP1 has no sequence";
    Process().texts.QD_ADMINSETTINGS_ONLY_ONE_SETTING_WITH_SAME_SECTION.text = "Only one";
  }
  // A table of one row.
  Ref<veldora::VdRecList> TableOf(const Cells& cells) const {
    const auto table = vault->Application()->NewRecList();
    for (const auto& [name, value] : cells) table->AddField(name, veldora::column_type::kText, 255);
    table->AddRow();
    for (const auto& [name, value] : cells) table->SetValue(name, 0, value);
    return table;
  }
  static std::vector<std::string> ColumnsOf(const Ref<veldora::VdRecList>& table) {
    std::vector<std::string> names;
    for (int i = 0; i < table->ColumnCount(); ++i) names.push_back(table->ColumnName(i));
    return names;
  }
  static std::vector<std::string> ColumnOf(const Ref<veldora::VdRecList>& table, const std::string& name) {
    std::vector<std::string> values;
    for (int row = 0; row < table->RecordCount(); ++row) values.push_back(table->ValueAt(name, row));
    return values;
  }
  bool Set(const std::string& subject, bool admin, std::int32_t userId, const Cells& cells) {
    return settings.SetSettingValues(Session(), "S", subject, admin, userId, TableOf(cells));
  }
  Ref<veldora::VdRecList> Get(const std::string& subject, bool admin, std::int32_t userId = kAllUsers) {
    return settings.GetSettingValues(Session(), "S", subject, admin, userId);
  }
  Ref<veldora::VdRecList> Section(bool admin, std::int32_t userId = kAllUsers) {
    return settings.GetSettingSection(Session(), "S", admin, userId);
  }
  // A row that was not made through the store.
  void AddRow(const std::string& className, const std::string& subject) {
    const auto row = Store()->NewObject(ClassId(className));
    row->InitData();
    row->Record()->ValuateFromString(settings.SectionAttribute, "S");
    row->Record()->ValuateFromString(settings.SubjectAttribute, subject);
    row->AddToVault(Behavior());
  }
  std::vector<std::string> FieldsOfStore() const {
    return {settings.IdAttribute,      settings.UserIdAttribute, settings.SectionAttribute,
            settings.SubjectAttribute, settings.ValuePrefix,     settings.ValueLongAttribute};
  }
  template <class Body>
  std::vector<std::string> CallsIn(Body&& body) {
    gate->StartRecording();
    body();
    gate->Reset();
    return gate->Record();
  }

  Cls_AdminSettings settings;
};

}  // namespace quintara::test
