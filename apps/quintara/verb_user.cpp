#include "base/failure.h"
#include "quintara/command_context.h"
#include "quintara/vault_rights.h"
#include "quintara/vault_verbs.h"
#include "quintara/wrong_use.h"

namespace quintara {
namespace {

void RequireUser(const std::vector<EmbeddedVault::User>& users, const std::string& login) {
  if (FindUser(users, login) == nullptr) throw WrongUse("the vault has no user '" + login + "'");
}

// Not an argument: what stands on a command line, everybody on the machine can read, and the shell keeps it.
std::string PasswordFor(CommandContext& context, const std::string& login) {
  if (auto told = context.Variable("QUINTARA_NEW_PASSWORD"); !told.empty()) return told;
  if (auto typed = context.AskNewPassword(login)) return *typed;
  if (auto line = context.PipedLine()) return *line;
  throw WrongUse("the password of '" + login +
                 "' is missing; QUINTARA_NEW_PASSWORD or a line of standard input tells it");
}

// The names are looked up by the vault, whose message tells which one it doesn't know.
template <class Change>
void ChangeRight(CommandContext& context, const UserRightOptions& options, Change&& change) {
  RequireUser(RequireManager(context), options.login);
  auto& vault = context.RequireVault();
  try {
    change(vault, options.login, options.operation == "all" ? "" : options.operation, options.className);
  } catch (const Failure& unknown) {
    if (unknown.Number() != failure::kInvalidCall) throw;
    throw WrongUse(unknown.Description());
  }
  context.Print("'" + options.login +
                "' has these rights now: " + TextOf(FindUser(vault.Users(), options.login)->rights));
}

}  // namespace

void RunUserList(CommandContext& context, const UserListOptions& /*options*/) {
  TextTable table({{"user"}, {"rights"}});
  for (const auto& user : context.RequireVault().Users()) table.AddRow({user.login, TextOf(user.rights)});
  context.Print(table);
}

void RunUserAdd(CommandContext& context, const UserAddOptions& options) {
  const auto users = RequireManager(context);
  if (options.login.empty()) throw WrongUse("a user needs a name");
  if (FindUser(users, options.login) != nullptr) throw WrongUse("there is a user '" + options.login + "' already");
  context.RequireVault().AddUser(options.login, PasswordFor(context, options.login), options.allRights);
  context.Print("added '" + options.login + "', " +
                (options.allRights ? "with all rights" : "without rights; 'quintara user grant' gives some"));
}

void RunUserGrant(CommandContext& context, const UserRightOptions& options) {
  ChangeRight(context, options, [](EmbeddedVault& vault, auto&&... names) { vault.Grant(names...); });
}

void RunUserRevoke(CommandContext& context, const UserRightOptions& options) {
  ChangeRight(context, options, [](EmbeddedVault& vault, auto&&... names) { vault.Revoke(names...); });
}

}  // namespace quintara
