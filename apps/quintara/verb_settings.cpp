#include <algorithm>
#include <cctype>
#include <iterator>
#include <string_view>
#include <tuple>

#include "quintara/command_context.h"
#include "quintara/setting_table.h"
#include "quintara/vault_rights.h"
#include "quintara/vault_verbs.h"
#include "quintara/wrong_use.h"

namespace quintara {
namespace {

// As it would be typed behind the section and the subject.
std::string Typed(const std::string& value) {
  const auto isPlain = [](unsigned char c) {
    return c > 0x7F || std::isalnum(c) != 0 ||
           std::string_view("_-.,:/@%+=").find(static_cast<char>(c)) != std::string_view::npos;
  };
  if (!value.empty() && std::ranges::all_of(value, isPlain)) return value;
  std::string quoted = "'";
  for (const char c : value) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

std::string Typed(const std::vector<std::string>& values) {
  std::string text;
  for (const auto& value : values) text += (text.empty() ? "" : " ") + Typed(value);
  return text;
}

void AddRows(SettingTable settings, const SettingsOptions& options, TextTable& table) {
  struct Row {
    std::string section;
    std::string subject;
    std::string values;
  };
  std::vector<Row> rows;
  for (const auto& row : settings.Find(options.section, options.subject)) {
    rows.push_back({row.section, row.subject, Typed(row.values)});
  }
  std::ranges::stable_sort(rows, {}, [](const Row& row) { return std::tie(row.section, row.subject); });
  for (auto& row : rows) table.AddRow({settings.IsOfUser() ? "user" : "admin", row.section, row.subject, row.values});
}

void List(CommandContext& context, const SettingsOptions& options) {
  auto& vault = context.RequireVault();
  TextTable table({{"of"}, {"section"}, {"subject"}, {"values"}});
  if (!options.ofUser) AddRows({vault, false}, options, table);
  AddRows({vault, true}, options, table);
  if (!table.Empty()) return context.Print(table);
  if (options.section.empty()) return context.Print("the user '" + context.User() + "' has no settings");
  throw WrongUse("the vault has no setting '" + options.section +
                 (options.subject.empty() ? "" : "' '" + options.subject) + "'");
}

// The vault takes "*" for any text, so that such a name would find the settings of others.
void RequireNames(const SettingsOptions& options) {
  for (const auto& name : {options.section, options.subject}) {
    if (name.find('*') != std::string::npos) throw WrongUse("'" + name + "' can't name settings: it has a '*' in it");
    if (name.empty() && !options.values.empty()) throw WrongUse("what is set needs a section and a subject");
  }
}

}  // namespace

void RunSettings(CommandContext& context, const SettingsOptions& options) {
  RequireNames(options);
  if (options.values.empty()) return List(context, options);
  auto& vault = context.RequireVault();
  SettingTable table(vault, options.ofUser);
  if (std::ssize(options.values) > table.ValueCount()) {
    throw WrongUse("a setting has up to " + std::to_string(table.ValueCount()) + " values");
  }
  if (!options.ofUser) RequireManager(context);
  table.Set(options.section, options.subject, options.values);
  context.Print("set " + options.section + " " + options.subject + " to " + Typed(options.values) +
                (options.ofUser ? " for '" + context.User() + "'" : ""));
}

}  // namespace quintara
