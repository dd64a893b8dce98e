#include "hosts/vault/schema_setup.h"

#include <map>
#include <utility>

#include "base/failure.h"
#include "hosts/vault/core.h"
#include "hosts/vault/life_cycle.h"
#include "hosts/vault/schema.h"
#include "hosts/vault/sequences.h"
#include "hosts/vault/users.h"

namespace quintara::vault {
namespace {

constexpr int kSettingValues = 10;
constexpr int kLongSize = 4000;
constexpr int kIdentityWidth = 8;

constexpr auto kFileTypeClass = "FILE_TYPE";
constexpr auto kFileTypeName = "TDM_NAME";
constexpr auto kDocumentClass = "Document";
constexpr auto kDocumentLink = "Document Link";
constexpr auto kStructureLink = "Structure Link";
constexpr auto kAdminSetting = "Admin Setting";

struct NewClass {
  std::string name;
  std::string table;
  ClassKind kind;
  std::vector<AttributeInfo> attributes;
  std::vector<std::string> indexed;
};

std::vector<AttributeInfo> BasicAttributes() {
  return {{attribute::kObjectId, true, 4}, {attribute::kClassId, true, 4}, {attribute::kState, true, 2}};
}

void AddWhoAndWhen(std::vector<AttributeInfo>& attributes) {
  attributes.push_back({attribute::kCreated, false, 20});
  attributes.push_back({attribute::kCreatedBy, true, 4});
  attributes.push_back({attribute::kModified, false, 20});
  attributes.push_back({attribute::kModifiedBy, true, 4});
}

NewClass VersionedClass(const std::string& name, const std::string& table) {
  auto attributes = BasicAttributes();
  attributes.push_back({attribute::kIdentity, false, kIdentityWidth});
  attributes.push_back({kPartNumberAttribute, false, 255, true});
  attributes.push_back({attribute::kRevision, false, 8, true});
  for (const auto* text :
       {attribute::kDescription, attribute::kFileName, attribute::kDirectory, attribute::kCadFileName}) {
    attributes.push_back({text, false, 255});
  }
  for (const auto* number : {attribute::kFileType, attribute::kVaultObjectId, attribute::kFileId}) {
    attributes.push_back({number, true, 4});
  }
  AddWhoAndWhen(attributes);
  return {name,
          table,
          ClassKind::kVersioned,
          attributes,
          {kPartNumberAttribute, attribute::kIdentity, attribute::kDescription}};
}

NewClass SettingClass(const std::string& name, const std::string& table, const SettingsColumns& columns, bool ofUsers) {
  auto attributes = BasicAttributes();
  attributes.push_back({columns.id, false, kIdentityWidth, true});
  if (ofUsers) attributes.push_back({columns.userId, true, 4});
  attributes.push_back({columns.section, false, 255});
  attributes.push_back({columns.subject, false, 255});
  for (int i = 1; i <= kSettingValues; ++i) attributes.push_back({columns.valuePrefix + std::to_string(i), false, 255});
  attributes.push_back({columns.valueLong, false, kLongSize});
  AddWhoAndWhen(attributes);
  return {name, table, ClassKind::kPlain, attributes, {columns.section}};
}

NewClass LinkClass(const std::string& name, ClassKind kind) {
  return {name,
          "vd_link",
          kind,
          {{attribute::kObjectId, true, 4}, {attribute::kClassId, true, 4}, {attribute::kQuantity, true, 4}},
          {}};
}

NewClass FileTypeClass() {
  auto attributes = BasicAttributes();
  attributes.push_back({kFileTypeName, false, 64, true});
  return {kFileTypeClass, kFileTypeClass, ClassKind::kPlain, attributes, {kFileTypeName}};
}

std::vector<NewClass> ClassesOf(const VaultPlan& plan) {
  std::vector<NewClass> classes = {FileTypeClass(),
                                   VersionedClass(plan.productClass, kProductTable),
                                   VersionedClass(plan.partClass, kPartTable),
                                   VersionedClass(kDocumentClass, kDocumentTable),
                                   SettingClass(kAdminSetting, "TDMX_ADMIN_SETTING", plan.settings, false),
                                   SettingClass("User Setting", "TDMX_USER_SETTING", plan.settings, true),
                                   LinkClass(kStructureLink, ClassKind::kStructureLink),
                                   LinkClass(kDocumentLink, ClassKind::kLink)};
  for (const auto& name : plan.furtherClasses) {
    classes.push_back(VersionedClass(name, "FURTHER_CLASS_" + std::to_string(classes.size() + 1)));
  }
  return classes;
}

void MakeTable(Database& database, const NewClass& made) {
  std::string columns;
  for (const auto& one : made.attributes) {
    const bool key = one.name == attribute::kObjectId;
    columns += (columns.empty() ? "" : ", ") + Quoted(one.name) + (one.isInteger ? " INTEGER" : " TEXT");
    if (key) columns += " PRIMARY KEY REFERENCES vd_object";
  }
  database.ExecuteOnce("CREATE TABLE " + Quoted(made.table) + " (" + columns + ")");
  for (const auto& name : made.indexed) {
    database.ExecuteOnce("CREATE INDEX " + Quoted(made.table + "_" + name) + " ON " + Quoted(made.table) + " (" +
                         Quoted(name) + ")");
  }
}

void AddMasks(Database& database, std::int64_t classId, const NewClass& made, const VaultPlan& plan) {
  const std::string insert =
      "INSERT INTO vd_mask (class_id, attribute, sequence_name, width, first_revision) VALUES (?, ?, ?, ?, ?)";
  const std::int64_t width = kIdentityWidth;
  if (made.kind == ClassKind::kVersioned) {
    database.Execute(insert, {classId, attribute::kIdentity, sequence::kIdentity, width, SqlValue()});
    database.Execute(insert, {classId, attribute::kRevision, SqlValue(), std::int64_t{0}, "A"});
  } else if (made.kind == ClassKind::kPlain && made.name != kFileTypeClass) {
    database.Execute(insert, {classId, plan.settings.id, sequence::kSetting, width, SqlValue()});
  }
}

void AddClass(Database& database, std::int64_t classId, const NewClass& made, const VaultPlan& plan) {
  database.Execute("INSERT INTO vd_class (class_id, name, table_name, kind) VALUES (?, ?, ?, ?)",
                   {classId, made.name, made.table, static_cast<std::int64_t>(made.kind)});
  std::int64_t place = 0;
  for (const auto& one : made.attributes) {
    database.Execute(
        "INSERT INTO vd_attribute (class_id, place, name, is_integer, size, is_key) VALUES (?, ?, ?, ?, ?, ?)",
        {classId, place++, one.name, std::int64_t{one.isInteger}, std::int64_t{one.size}, std::int64_t{one.isKey}});
  }
  if (made.kind == ClassKind::kPlain || made.kind == ClassKind::kVersioned) MakeTable(database, made);
  AddMasks(database, classId, made, plan);
}

void AddRow(Database& database, const ClassInfo& info, const std::map<std::string, std::string>& texts) {
  const std::int64_t id = NextNumber(database, sequence::kObject);
  database.Execute("INSERT INTO vd_object (object_id, class_id, version) VALUES (?, ?, 1)",
                   {id, std::int64_t{info.id}});
  std::vector<SqlValue> values;
  std::string marks;
  for (const auto& one : info.attributes) {
    const auto text = texts.find(one.name);
    values.push_back(text == texts.end() ? SqlValue() : TextOrNull(text->second));
    if (one.name == attribute::kObjectId) values.back() = id;
    if (one.name == attribute::kClassId) values.back() = std::int64_t{info.id};
    if (one.name == attribute::kState) values.back() = std::int64_t{0};
    marks += marks.empty() ? "?" : ", ?";
  }
  database.Execute("INSERT INTO " + Quoted(info.table) + " (" + ColumnList(info) + ") VALUES (" + marks + ")", values);
}

void AddSettings(Database& database, const ClassInfo& info, const VaultPlan& plan) {
  const auto add = [&](const std::string& section, const std::string& subject, const std::string& value) {
    AddRow(database, info,
           {{plan.settings.id, Padded(NextNumber(database, sequence::kSetting), kIdentityWidth)},
            {plan.settings.section, section},
            {plan.settings.subject, subject},
            {plan.settings.valuePrefix + "1", value}});
  };
  add("COMMON", "PART_NUMBER", kPartNumberAttribute);
  add("COMMON", "CN_ID", attribute::kIdentity);
  add("COMMON", "CN_DESCRIPTION", attribute::kDescription);
  add("COMMON", "TABLE_DOCUMENTS", kDocumentClass);
  add("COMMON", "DOC_DOC_LINK", kDocumentLink);
  add("QD", "CLASS_PRODUCTS", plan.productClass);
  add("QD", "CLASS_PARTS", plan.partClass);
  add("QD", "TREE_VIEW", std::string(kPartNumberAttribute) + "," + attribute::kRevision);
  add("QD", "TREE_VIEW_SEPARATOR", " - ");
}

void AddOperations(Database& database) {
  std::int64_t id = 0;
  for (const auto* name : {operation::kCheckIn, operation::kRelease, operation::kObsolete, operation::kCheckOut,
                           operation::kNewRelease, operation::kCopyFile, operation::kView}) {
    database.Execute("INSERT INTO vd_operation (operation_id, name) VALUES (?, ?)", {++id, name});
  }
}

}  // namespace

void SetUpSchema(Database& database, const VaultPlan& plan) {
  for (const auto* name : {sequence::kObject, sequence::kLink, sequence::kDeposit, sequence::kUser, sequence::kIdentity,
                           sequence::kSetting}) {
    database.Execute("INSERT INTO vd_sequence (name, next_value) VALUES (?, 1)", {name});
  }
  std::int64_t classId = 0;
  for (const auto& made : ClassesOf(plan)) AddClass(database, ++classId, made, plan);
  AddOperations(database);
  Grant(database, AddUser(database, plan.login, plan.password), 0, 0);
  const Schema schema(database);
  // First of all objects, so that their ids fit a 16-bit number.
  for (const auto* type : {"ZVAProduct", "ZVAPart", "xml", "Microsoft Excel"}) {
    AddRow(database, schema.ClassByName(kFileTypeClass), {{kFileTypeName, type}});
  }
  AddSettings(database, schema.ClassByName(kAdminSetting), plan);
}

}  // namespace quintara::vault
