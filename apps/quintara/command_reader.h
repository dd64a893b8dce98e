#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "quintara/command_line.h"
#include "quintara/component_help_texts.h"
#include "quintara/component_verbs.h"
#include "quintara/help_texts.h"
#include "quintara/vault_verbs.h"
#include "quintara/verbs.h"
#include "quintara/wip_verbs.h"

namespace quintara {

/// The command being read: the program's parser, which holds those of the verbs, and what the
/// chosen verb is to do. The options of a verb live as long as its function does.
class CommandReader {
 public:
  CommandReader();

  Command Read(std::vector<std::string> arguments);

 private:
  const CLI::App* ChosenVerb() const;
  static std::string NameOf(const CLI::App* verb);
  std::string Misplaced() const;
  std::string Advice() const;

  void AddCommonOptions();

  template <class Options>
  CLI::App* AddVerb(const char* name, const char* description, const char* footer,
                    void (*run)(CommandContext&, const Options&), const std::shared_ptr<Options>& options) {
    return AddVerbTo(program_, name, description, footer, run, options);
  }
  template <class Options>
  CLI::App* AddVerbTo(CLI::App& parent, const char* name, const char* description, const char* footer,
                      void (*run)(CommandContext&, const Options&), const std::shared_ptr<Options>& options) {
    auto* verb = AddVerbWithout(parent, name, description, footer);
    // A verb is called after those below it, which it must not push out.
    verb->callback([this, verb, run, options] {
      if (!verb->get_subcommands().empty()) return;
      verb_ = [run, options](CommandContext& context) { run(context, *options); };
    });
    return verb;
  }
  static CLI::App* AddVerbWithout(CLI::App& parent, const char* name, const char* description, const char* footer);
  static void AddReplace(CLI::App* verb, bool& replace) {
    verb->add_flag("--replace", replace, "Replace files that are there already");
  }
  static void AddDryRun(CLI::App* verb, bool& dryRun) {
    verb->add_flag("--dry-run", dryRun, "Only tell what would be done; save nothing");
  }
  static void AddProduct(CLI::App* verb, std::string& product, const char* description) {
    verb->add_option("PRODUCT", product, description)->required()->type_name("");
  }

  void AddImport();
  void AddVault();
  void AddLs();
  void AddShow();
  static void AddObjects(CLI::App* verb, std::vector<std::string>& objects);
  void AddCheckIn(const char* name, const char* description, const char* footer,
                  void (*run)(CommandContext&, const CheckInOptions&));
  void AddLifeCycle(const char* name, const char* description, const char* footer,
                    void (*run)(CommandContext&, const LifeCycleOptions&));
  void AddChildren();
  void AddLinks();
  void AddUnlink();
  void AddSettings();
  void AddUser();
  static void AddLogin(CLI::App* verb, std::string& login);
  void AddRight(CLI::App& user, const char* name, const char* description, const char* footer,
                void (*run)(CommandContext&, const UserRightOptions&));

  void AddTree();
  void AddMatrix();
  void AddFlatten();
  void AddWip();
  void AddRetrieve();
  void AddSwitch(const char* name, const char* description, const char* footer,
                 void (*run)(CommandContext&, const SwitchOptions&));
  void AddReplaceByLatest();
  void AddInsert();
  void AddCheckInsert();
  void AddRefresh();

  template <class Options>
  static void AddRules(CLI::App* verb, const std::shared_ptr<Options>& options) {
    AddRule(verb, "--light", "Take matching components as light representations", Choice::kLight, options);
    AddRule(verb, "--document", "Take matching components in full", Choice::kDocument, options);
    AddRule(verb, "--none", "Leave matching components out, with all below them", Choice::kNone, options);
  }

  // Each appearance is taken down as it is read, so that rules of all kinds keep their order.
  template <class Options>
  static void AddRule(CLI::App* verb, const char* name, const char* description, Choice choice,
                      const std::shared_ptr<Options>& options) {
    const auto take = [choice, options](const std::string& pattern) { options->rules.push_back({choice, pattern}); };
    verb->add_option_function<std::string>(name, take, description)->trigger_on_parse()->type_name("PATTERN");
  }

  void AddPosition();
  void AddScatter();
  void AddCompare();
  void AddExport();
  void AddRender();

  CLI::App program_;
  CommonOptions common_;
  std::function<void(CommandContext&)> verb_;
};

}  // namespace quintara
