#include <memory>

#include "quintara/command_reader.h"

namespace quintara {

void CommandReader::AddVault() {
  auto* vault = AddVerbWithout(program_, "vault", "Make a vault, check one, or try a session", help::kVault);
  vault->require_subcommand(0, 1);
  const auto init = std::make_shared<VaultInitOptions>();
  auto* verb = AddVerbTo(*vault, "init", "Make a vault", help::kVaultInit, RunVaultInit, init);
  verb->add_option("FOLDER", init->folder, "The folder; else the one that --vault names, else quintara.vault")
      ->type_name("");
  verb->add_option("--database", init->database, "A PostgreSQL database, postgresql://...; else a file in the folder")
      ->type_name("ADDRESS");
  verb->add_option("--store", init->store, "Where the files go; else into the folder")->type_name("FOLDER");
  AddVerbTo(*vault, "check", "Recompute what must hold in the vault", help::kVaultCheck, RunVaultCheck,
            std::make_shared<VaultCheckOptions>());
  AddVerbTo(*vault, "session", "Start a session as each command does", help::kVaultSession, RunVaultSession,
            std::make_shared<VaultSessionOptions>());
}

void CommandReader::AddLs() {
  const auto options = std::make_shared<LsOptions>();
  auto* verb = AddVerb("ls", "List the products and parts of the vault", help::kLs, RunLs, options);
  verb->add_option("PATTERN", options->patterns, "Only those that match one of these")->type_name("");
  verb->add_flag("--all", options->all, "All revisions, not the newest only");
  verb->add_option("--class", options->className, "Only those of this class")->type_name("NAME");
}

void CommandReader::AddShow() {
  const auto options = std::make_shared<ShowOptions>();
  auto* verb = AddVerb("show", "Print all that the vault holds of an object", help::kShow, RunShow, options);
  verb->add_option("OBJECT", options->objects, "Objects of the vault")->required()->type_name("");
}

void CommandReader::AddObjects(CLI::App* verb, std::vector<std::string>& objects) {
  verb->add_option("OBJECT", objects, "Objects of the vault, or files that are copies of them")
      ->required()
      ->type_name("");
}

void CommandReader::AddCheckIn(const char* name, const char* description, const char* footer,
                               void (*run)(CommandContext&, const CheckInOptions&)) {
  const auto options = std::make_shared<CheckInOptions>();
  auto* verb = AddVerb(name, description, footer, run, options);
  AddObjects(verb, options->objects);
  verb->add_option_function<std::string>(
          "--load",
          [options](const std::string& loaded) {
            options->loaded = loaded == "root"       ? Loaded::kRoot
                              : loaded == "children" ? Loaded::kChildren
                                                     : Loaded::kAll;
          },
          "How much of a product: all, which is the default, its children alone, or only its root")
      ->check(CLI::IsMember({"all", "children", "root"}))
      ->type_name("all|children|root");
  AddDryRun(verb, options->dryRun);
}

void CommandReader::AddLifeCycle(const char* name, const char* description, const char* footer,
                                 void (*run)(CommandContext&, const LifeCycleOptions&)) {
  const auto options = std::make_shared<LifeCycleOptions>();
  auto* verb = AddVerb(name, description, footer, run, options);
  AddObjects(verb, options->objects);
  AddDryRun(verb, options->dryRun);
}

void CommandReader::AddChildren() {
  const auto options = std::make_shared<ChildrenOptions>();
  auto* verb =
      AddVerb("children", "List all that the structure of an object holds", help::kChildren, RunChildren, options);
  verb->add_option("OBJECT", options->object, "The object of the vault")->required()->type_name("");
}

void CommandReader::AddLinks() {
  const auto options = std::make_shared<LinksOptions>();
  auto* verb = AddVerb("links", "List what an object is linked to", help::kLinks, RunLinks, options);
  verb->add_option("OBJECT", options->object, "The object of the vault")->required()->type_name("");
  verb->add_option("LINKED_CLASS", options->linkedClass, "The class of what is sought; else that of documents")
      ->type_name("");
  verb->add_option("LINK_CLASS", options->linkClass, "The class of the link; else that to documents")->type_name("");
}

void CommandReader::AddUnlink() {
  const auto options = std::make_shared<UnlinkOptions>();
  auto* verb = AddVerb("unlink", "Remove the link between two objects", help::kUnlink, RunUnlink, options);
  verb->add_option("FROM", options->from, "The object that the link leads from")->required()->type_name("");
  verb->add_option("TO", options->to, "The one that it leads to")->required()->type_name("");
  verb->add_option("LINK_CLASS", options->linkClass, "The class of the link; else that to documents")->type_name("");
  AddDryRun(verb, options->dryRun);
}

void CommandReader::AddSettings() {
  const auto options = std::make_shared<SettingsOptions>();
  auto* verb = AddVerb("settings", "List the settings, or set one", help::kSettings, RunSettings, options);
  verb->add_option("SECTION", options->section, "Such as QD; else all")->type_name("");
  verb->add_option("SUBJECT", options->subject, "Such as TREE_VIEW; else all of the section")->type_name("");
  verb->add_option("VALUE", options->values, "What the setting is to be; else it is only listed")->type_name("");
  verb->add_flag("--user-setting", options->ofUser, "The user's own setting, not the site's");
}

void CommandReader::AddUser() {
  auto* user = AddVerb("user", "List the users of the vault, add one, or change rights", help::kUser, RunUserList,
                       std::make_shared<UserListOptions>());
  user->require_subcommand(0, 1);
  const auto added = std::make_shared<UserAddOptions>();
  auto* add = AddVerbTo(*user, "add", "Add a user", help::kUserAdd, RunUserAdd, added);
  AddLogin(add, added->login);
  add->add_option_function<std::string>(
         "--rights", [added](const std::string& rights) { added->allRights = rights == "all"; },
         "What the user may do: all, or none, which is the default")
      ->check(CLI::IsMember({"all", "none"}))
      ->type_name("all|none");
  AddRight(*user, "grant", "Give a user a right", help::kUserGrant, RunUserGrant);
  AddRight(*user, "revoke", "Take a right from a user", help::kUserRevoke, RunUserRevoke);
}

void CommandReader::AddLogin(CLI::App* verb, std::string& login) {
  verb->add_option("LOGIN", login, "The user")->required()->type_name("");
}

void CommandReader::AddRight(CLI::App& user, const char* name, const char* description, const char* footer,
                             void (*run)(CommandContext&, const UserRightOptions&)) {
  const auto options = std::make_shared<UserRightOptions>();
  auto* verb = AddVerbTo(user, name, description, footer, run, options);
  AddLogin(verb, options->login);
  verb->add_option("OPERATION", options->operation, "Such as CHECKIN, or all")->required()->type_name("");
  verb->add_option("CLASS", options->className, "The class of objects; else all")->type_name("");
}

}  // namespace quintara
