#include "hosts/vault/embedded_vault.h"
#include "nls/embedded_texts.h"
#include "quintara/command_context.h"
#include "quintara/vault_verbs.h"
#include "quintara/wrong_use.h"

namespace quintara {
namespace {

constexpr auto kServer = "postgresql://";

std::string FolderFor(const CommandContext& context, const VaultInitOptions& options) {
  if (!options.folder.empty()) return options.folder;
  const auto& named = context.NamedVault();
  return named.empty() ? "quintara.vault" : named;
}

const char* TextOf(VaultFinding::Kind kind) {
  switch (kind) {
    case VaultFinding::Kind::kDamagedFile: return "damaged file";
    case VaultFinding::Kind::kMissingFile: return "missing file";
    case VaultFinding::Kind::kStrayFile: return "stray file";
    case VaultFinding::Kind::kObject: return "object";
    case VaultFinding::Kind::kLink: return "link";
    case VaultFinding::Kind::kVersion: return "revisions";
  }
  return "";
}

// Neither the address of a server nor its user's password is told: both stand in the folder's file.
void PrintMade(CommandContext& context, const VaultPlan& plan, bool joined, const VaultFolder& made) {
  context.Print((joined ? "made '" : "made the vault '") + made.folder +
                (joined ? "', joined to the vault of the database" : "'"));
  const auto file = made.connection.substr(made.connection.find(':') + 1);
  context.Print("  database  " + (plan.connection.empty() ? "SQLite, '" + file + "'" : std::string("PostgreSQL")));
  context.Print("  files     '" + made.store + "'");
  if (joined) return;
  context.Print("  user      '" + plan.login + "', with all rights" +
                (plan.password.empty() ? ", without a password" : ""));
}

}  // namespace

void RunVaultInit(CommandContext& context, const VaultInitOptions& options) {
  if (!options.database.empty() && !options.database.starts_with(kServer)) {
    throw WrongUse("the database '" + options.database + "' is no address that begins with " + kServer);
  }
  VaultPlan plan;
  plan.folder = FolderFor(context, options);
  if (IsVault(plan.folder)) throw WrongUse("there is a vault in '" + plan.folder + "' already");
  plan.connection = options.database;
  plan.store = options.store;
  plan.login = context.User();
  plan.password = context.Variable("QUINTARA_PASSWORD");
  if (plan.password.empty()) plan.password = context.AskNewPassword(plan.login).value_or("");
  for (const auto& [path, bytes] : EmbeddedTexts()) plan.texts[std::string(path)] = bytes;
  const bool joined = InitVault(plan, context.Files());
  PrintMade(context, plan, joined, ReadVaultFolder(plan.folder, context.Files()));
}

void RunVaultCheck(CommandContext& context, const VaultCheckOptions& /*options*/) {
  auto& vault = context.RequireVault();
  const auto findings = vault.Check();
  const auto& folder = vault.Folder().folder;
  if (findings.empty()) {
    context.Print("nothing is wrong in '" + folder + "'");
    return;
  }
  TextTable table({{"wrong"}, {"what"}});
  for (const auto& finding : findings) table.AddRow({TextOf(finding.kind), finding.text});
  context.Print(table);
  const auto count = std::to_string(findings.size()) + (findings.size() == 1 ? " thing is" : " things are");
  context.Complain(count + " wrong in '" + folder + "'");
}

}  // namespace quintara
