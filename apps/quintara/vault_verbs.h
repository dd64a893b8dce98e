#pragma once

#include <optional>
#include <string>
#include <vector>

#include "quintara/opened_product.h"

namespace quintara {

class CommandContext;

// The verbs that work on the vault, in the manner of those in verbs.h.

struct VaultInitOptions {
  std::string folder;    ///< empty: the one that --vault names, else "quintara.vault"
  std::string database;  ///< empty: a file in the folder
  std::string store;     ///< empty: the folder's own
};
/// Makes a vault.
void RunVaultInit(CommandContext& context, const VaultInitOptions& options);

struct VaultCheckOptions {};
/// Recomputes what must hold in the vault.
void RunVaultCheck(CommandContext& context, const VaultCheckOptions& options);

struct VaultSessionOptions {};
/// Starts a session as each command does, and prints what it read.
void RunVaultSession(CommandContext& context, const VaultSessionOptions& options);

struct LsOptions {
  std::vector<std::string> patterns;
  std::string className;
  bool all = false;  ///< all revisions
};
/// Lists products and parts.
void RunLs(CommandContext& context, const LsOptions& options);

struct ShowOptions {
  std::vector<std::string> objects;
};
/// Prints all that the vault holds of objects.
void RunShow(CommandContext& context, const ShowOptions& options);

struct CheckInOptions {
  std::vector<std::string> objects;
  Loaded loaded = Loaded::kAll;
  bool dryRun = false;
};
/// Takes objects through check-in or release, products after the command that writes their matrices.
void RunCheckIn(CommandContext& context, const CheckInOptions& options);
void RunRelease(CommandContext& context, const CheckInOptions& options);

struct LifeCycleOptions {
  std::vector<std::string> objects;
  bool dryRun = false;
};
/// Takes objects through the other operations of the life cycle; the first two bring their files.
void RunCheckOut(CommandContext& context, const LifeCycleOptions& options);
void RunNewRelease(CommandContext& context, const LifeCycleOptions& options);
void RunObsolete(CommandContext& context, const LifeCycleOptions& options);

struct ChildrenOptions {
  std::string object;
};
/// Lists all that a structure holds.
void RunChildren(CommandContext& context, const ChildrenOptions& options);

struct LinksOptions {
  std::string object;
  std::string linkedClass;  ///< empty: the class of documents
  std::string linkClass;    ///< empty: the document link
};
/// Lists what an object is linked to.
void RunLinks(CommandContext& context, const LinksOptions& options);

struct UnlinkOptions {
  std::string from;
  std::string to;
  std::string linkClass;  ///< empty: the document link
  bool dryRun = false;
};
/// Removes a link.
void RunUnlink(CommandContext& context, const UnlinkOptions& options);

struct SettingsOptions {
  std::string section;  ///< empty: all
  std::string subject;  ///< empty: all
  std::vector<std::string> values;
  bool ofUser = false;  ///< the user's own, not the site's
};
/// Lists settings, or sets one when there are values.
void RunSettings(CommandContext& context, const SettingsOptions& options);

struct UserListOptions {};
/// Lists the users and their rights.
void RunUserList(CommandContext& context, const UserListOptions& options);

struct UserAddOptions {
  std::string login;
  bool allRights = false;
};
/// Adds a user.
void RunUserAdd(CommandContext& context, const UserAddOptions& options);

struct UserRightOptions {
  std::string login;
  std::string operation;  ///< or "all"
  std::string className;  ///< empty for all classes
};
/// Gives a right, or takes it.
void RunUserGrant(CommandContext& context, const UserRightOptions& options);
void RunUserRevoke(CommandContext& context, const UserRightOptions& options);

}  // namespace quintara
