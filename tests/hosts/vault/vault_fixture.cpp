#include "hosts/vault/vault_fixture.h"

#include <algorithm>
#include <filesystem>

#include "hosts/vault/database.h"

namespace quintara::test {
namespace {

std::string Row(const vault::SqlRow& row) {
  std::string text;
  for (const auto& value : row) text += "|" + vault::TextOf(value);
  return text + "\n";
}

}  // namespace

std::string OnPostgres::NewConnection() {
  static int number = 0;
  const auto schema = "test_" + std::to_string(++number);
  vault::Database database("postgresql://");
  database.ExecuteOnce("CREATE SCHEMA " + schema);
  return "postgresql://options='-c search_path=" + schema + "'";
}

VaultBase::VaultBase(std::string connection) : connection_(std::move(connection)) {
  std::filesystem::create_directory(folder.Path("work"));
  std::filesystem::create_directory(folder.Path("source"));
}

VaultPlan VaultBase::Plan() const {
  VaultPlan plan;
  plan.folder = folder.Path("quintara.vault");
  plan.connection = connection_;
  plan.password = "secret";
  return plan;
}

EmbeddedVault::Options VaultBase::Options() const {
  EmbeddedVault::Options options;
  options.gate = gate;
  options.files = files;
  options.password = "secret";
  options.workDirectory = folder.Path("work");
  auto* self = const_cast<VaultBase*>(this);
  options.answerDialog = [self](const VaultDialog& dialog) {
    self->dialogs.push_back(dialog);
    return self->dialogAnswer;
  };
  return options;
}

std::unique_ptr<EmbeddedVault> VaultBase::OpenAnother(const EmbeddedVault::Options& options) const {
  return std::make_unique<EmbeddedVault>(folder.Path("quintara.vault"), options);
}

void VaultBase::Open(const EmbeddedVault::Options& options) {
  vault.reset();
  vault = OpenAnother(options);
}

Ref<VdObject> VaultBase::AddPart(const std::string& partNumber) const {
  return vault->AddObject("ZORVA Part", {{"NM_CN_PART_NUMBER", partNumber}}, {});
}

Ref<VdObject> VaultBase::AddPart(const std::string& partNumber, const std::string& bytes,
                                 const std::string& light) const {
  folder.Write("source/" + partNumber + ".stp", bytes);
  if (!light.empty()) folder.Write("source/" + partNumber + ".stp.lwt", light);
  return vault->AddObject("ZORVA Part", {{"NM_CN_PART_NUMBER", partNumber}},
                          folder.Path("source/" + partNumber + ".stp"));
}

Ref<VdObject> VaultBase::AddProduct(const std::string& partNumber, const std::vector<Ref<VdObject>>& children) const {
  folder.Write("source/" + partNumber + ".ZVAProduct", "product " + partNumber);
  const auto product = vault->AddObject("ZORVA Product", {{"NM_CN_PART_NUMBER", partNumber}},
                                        folder.Path("source/" + partNumber + ".ZVAProduct"));
  for (const auto& child : children) Link(product, child, "Structure Link");
  return product;
}

Ref<VdObject> VaultBase::AddDocument(const std::string& description) const {
  return vault->AddObject("Document", {{"CN_DESCRIPTION", description}}, {});
}

void VaultBase::Link(const Ref<VdObject>& from, const Ref<VdObject>& to, const std::string& linkClass) const {
  from->AddLink(ClassId(linkClass), to, nullptr, Behavior());
}

std::vector<std::string> VaultBase::PartNumbers(const Ref<veldora::VdObjects>& objects) const {
  std::vector<std::string> numbers;
  for (int i = 0; i < objects->Count(); ++i)
    numbers.push_back(objects->Item(i)->Record()->ValueAsString("NM_CN_PART_NUMBER"));
  return numbers;
}

std::string DumpOf(const std::string& connection) {
  vault::Database database(connection);
  const auto list = database.IsPostgres()
                        ? "SELECT tablename FROM pg_tables WHERE schemaname = current_schema() ORDER BY 1"
                        : "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY 1";
  std::string text;
  for (const auto& table : database.Query("t", list)) {
    const auto name = vault::TextOf(table[0]);
    const auto columns =
        database.Query("t",
                       database.IsPostgres()
                           ? "SELECT column_name FROM information_schema.columns WHERE table_schema = current_schema() "
                             "AND table_name = ? ORDER BY ordinal_position"
                           : "SELECT name FROM pragma_table_info(?) ORDER BY cid",
                       {name});
    std::string selected;
    for (const auto& column : columns) {
      selected += (selected.empty() ? "CAST(\"" : ", CAST(\"") + vault::TextOf(column[0]) + "\" AS TEXT)";
    }
    text += name + "\n";
    const std::string types(columns.size(), 't');
    std::vector<std::string> rows;
    for (const auto& row : database.Query(types, "SELECT " + selected + " FROM \"" + name + "\""))
      rows.push_back(Row(row));
    std::ranges::sort(rows);
    for (const auto& row : rows) text += row;
  }
  return text;
}

}  // namespace quintara::test
