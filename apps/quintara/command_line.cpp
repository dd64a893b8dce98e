#include "quintara/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <utility>

#include "base/text.h"
#include "quintara/help_texts.h"
#include "quintara/vault_verbs.h"
#include "quintara/verbs.h"
#include "quintara/wrong_use.h"

namespace quintara {
namespace {

// How help texts look: no ranges and exclusions, and the examples last.
class HelpFormatter : public CLI::Formatter {
 public:
  HelpFormatter() {
    label("Positionals", "Arguments");
    column_width(30);
  }

 private:
  std::string make_usage(const CLI::App* app, std::string name) const override {
    return app->get_parent() == nullptr ? "Usage: " + name + " VERB [ARGUMENTS]\n"
                                        : CLI::Formatter::make_usage(app, name);
  }
  std::string make_option_opts(const CLI::Option* option) const override {
    const auto type = option->get_type_name();
    const auto plainType = type.substr(0, type.find(':'));
    const bool mustBeTold = option->get_required() && option->nonpositional();
    return (plainType.empty() ? "" : " " + plainType) + (mustBeTold ? " (required)" : "");
  }
  std::string make_footer(const CLI::App* app) const override { return app->get_footer(); }
};

// The command being read: the program's parser, which holds those of the verbs, and what the
// chosen verb is to do. The options of a verb live as long as its function does.
class Reader {
 public:
  Reader()
      : program_(
            "Works on STEP assemblies too large to load whole: splits them, keeps where everything\n"
            "stands, and builds flat work-in-progress products from that.",
            "quintara") {
    program_.formatter(std::make_shared<HelpFormatter>());
    program_.set_version_flag("--version", "quintara " QUINTARA_VERSION)->description("Print the version and exit");
    program_.set_help_flag("-h,--help", "Print this help and exit");
    program_.footer(help::kProgram);
    program_.require_subcommand(0, 1);
    AddCommonOptions();
    AddVault();
    AddImport();
    AddLs();
    AddTree();
    AddShow();
    AddMatrix();
    AddFlatten();
    AddPosition();
    AddScatter();
    AddCompare();
    AddExport();
    AddRender();
    AddSettings();
    AddUser();
  }

  Command Read(std::vector<std::string> arguments) {
    if (arguments.empty()) throw WrongUse("what is to be done?\n\n" + program_.help());
    std::reverse(arguments.begin(), arguments.end());
    try {
      program_.parse(std::move(arguments));
    } catch (const CLI::CallForHelp&) {
      return {{}, {}, program_.help()};
    } catch (const CLI::CallForVersion& version) {
      return {{}, {}, std::string(version.what()) + "\n"};
    } catch (const CLI::ExtrasError&) {
      throw WrongUse("'" + program_.remaining(true).front() + "' is " + Misplaced() + Advice());
    } catch (const CLI::ParseError& error) {
      throw WrongUse(error.what() + Advice());
    }
    if (!verb_) throw WrongUse("a verb is missing" + Advice());
    return {common_, std::move(verb_), {}};
  }

 private:
  // The innermost one: "vault init" rather than "vault".
  const CLI::App* ChosenVerb() const {
    const CLI::App* verb = nullptr;
    for (auto chosen = program_.get_subcommands(); !chosen.empty(); chosen = verb->get_subcommands()) {
      verb = chosen.back();
    }
    return verb;
  }
  static std::string NameOf(const CLI::App* verb) {
    const auto* parent = verb->get_parent();
    return parent->get_parent() == nullptr ? verb->get_name() : NameOf(parent) + " " + verb->get_name();
  }
  std::string Misplaced() const {
    return ChosenVerb() == nullptr ? "no verb" : "nothing that '" + NameOf(ChosenVerb()) + "' expects";
  }
  std::string Advice() const {
    const auto* verb = ChosenVerb();
    return "\n'quintara " + (verb == nullptr ? std::string() : NameOf(verb) + " ") + "--help' tells more";
  }

  void AddCommonOptions() {
    program_.add_option("--vault", common_.vault, "The vault; else quintara.vault here or above")->type_name("FOLDER");
    program_.add_option("--user", common_.user, "The user of the vault; else admin")->type_name("LOGIN");
    program_.add_option("--work", common_.workFolder, "The work directory; else the user's in the vault")
        ->type_name("FOLDER");
    program_.add_option("--lang", common_.language, "EN, FR or DE; else the language of the locale")->type_name("CODE");
    program_
        .add_option_function<std::string>(
            "--started-first", [this](const std::string& name) { common_.zorvaStartedFirst = name == "zorva"; },
            "Which of the two clients runs longer; else veldora")
        ->check(CLI::IsMember({"zorva", "veldora"}))
        ->type_name("zorva|veldora");
    auto* yes = program_.add_flag("--yes", common_.yes, "Answer every question with Yes or OK");
    program_.add_flag("--no", common_.no, "Answer every question with No or Cancel, as without a terminal")
        ->excludes(yes);
  }

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
  static CLI::App* AddVerbWithout(CLI::App& parent, const char* name, const char* description, const char* footer) {
    auto* verb = parent.add_subcommand(name, description);
    verb->group("Verbs");
    verb->fallthrough();
    verb->footer(std::string(footer) + help::kCommonOptions);
    return verb;
  }

  static void AddReplace(CLI::App* verb, bool& replace) {
    verb->add_flag("--replace", replace, "Replace files that are there already");
  }
  static void AddDryRun(CLI::App* verb, bool& dryRun) {
    verb->add_flag("--dry-run", dryRun, "Only tell what would be done; save nothing");
  }
  static void AddProduct(CLI::App* verb, std::string& product, const char* description) {
    verb->add_option("PRODUCT", product, description)->required()->type_name("");
  }

  void AddImport() {
    const auto options = std::make_shared<ImportOptions>();
    auto* verb = AddVerb("import", "Bring a STEP assembly into the vault, or into the work directory", help::kImport,
                         RunImport, options);
    verb->add_option("FILE", options->file, "The STEP file")->required()->type_name("");
    AddReplace(verb, options->replace);
    AddDryRun(verb, options->dryRun);
  }

  void AddVault() {
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

  void AddLs() {
    const auto options = std::make_shared<LsOptions>();
    auto* verb = AddVerb("ls", "List the products and parts of the vault", help::kLs, RunLs, options);
    verb->add_option("PATTERN", options->patterns, "Only those that match one of these")->type_name("");
    verb->add_flag("--all", options->all, "All revisions, not the newest only");
    verb->add_option("--class", options->className, "Only those of this class")->type_name("NAME");
  }

  void AddShow() {
    const auto options = std::make_shared<ShowOptions>();
    auto* verb = AddVerb("show", "Print all that the vault holds of an object", help::kShow, RunShow, options);
    verb->add_option("OBJECT", options->objects, "Objects of the vault")->required()->type_name("");
  }

  void AddSettings() {
    const auto options = std::make_shared<SettingsOptions>();
    auto* verb = AddVerb("settings", "List the settings, or set one", help::kSettings, RunSettings, options);
    verb->add_option("SECTION", options->section, "Such as QD; else all")->type_name("");
    verb->add_option("SUBJECT", options->subject, "Such as TREE_VIEW; else all of the section")->type_name("");
    verb->add_option("VALUE", options->values, "What the setting is to be; else it is only listed")->type_name("");
    verb->add_flag("--user-setting", options->ofUser, "The user's own setting, not the site's");
  }

  void AddUser() {
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

  static void AddLogin(CLI::App* verb, std::string& login) {
    verb->add_option("LOGIN", login, "The user")->required()->type_name("");
  }

  void AddRight(CLI::App& user, const char* name, const char* description, const char* footer,
                void (*run)(CommandContext&, const UserRightOptions&)) {
    const auto options = std::make_shared<UserRightOptions>();
    auto* verb = AddVerbTo(user, name, description, footer, run, options);
    AddLogin(verb, options->login);
    verb->add_option("OPERATION", options->operation, "Such as CHECKIN, or all")->required()->type_name("");
    verb->add_option("CLASS", options->className, "The class of objects; else all")->type_name("");
  }

  void AddTree() {
    const auto options = std::make_shared<TreeOptions>();
    auto* verb =
        AddVerb("tree", "Print the structure of a product, vault object or STEP file", help::kTree, RunTree, options);
    verb->add_option("PRODUCT", options->products, "Products, objects of the vault or STEP files")
        ->required()
        ->type_name("");
    verb->add_option("--depth", options->depth, "Only so many levels below the root")
        ->check(CLI::Range(0, 1'000'000))
        ->type_name("N");
  }

  void AddMatrix() {
    const auto options = std::make_shared<MatrixOptions>();
    auto* verb = AddVerb("matrix", "Write the matrix of a product", help::kMatrix, RunMatrix, options);
    AddProduct(verb, options->product, "The product");
    verb->add_option("-o,--output", options->output, "The file; else 'PART NUMBER Matrix.xml' in the work directory")
        ->type_name("FILE");
    AddReplace(verb, options->replace);
    AddDryRun(verb, options->dryRun);
  }

  void AddFlatten() {
    const auto options = std::make_shared<FlattenOptions>();
    auto* verb = AddVerb("flatten", "Make a flat product of chosen components", help::kFlatten, RunFlatten, options);
    AddProduct(verb, options->product, "The product with the true tree");
    verb->add_option("--name", options->name, "The name behind WIP~~; else the product's part number")
        ->type_name("NAME");
    AddRule(verb, "--light", "Take matching components as light representations", Choice::kLight, options);
    AddRule(verb, "--document", "Take matching components in full", Choice::kDocument, options);
    AddRule(verb, "--none", "Leave matching components out, with all below them", Choice::kNone, options);
    AddReplace(verb, options->replace);
    AddDryRun(verb, options->dryRun);
  }

  // Each appearance is taken down as it is read, so that rules of all kinds keep their order.
  static void AddRule(CLI::App* verb, const char* name, const char* description, Choice choice,
                      const std::shared_ptr<FlattenOptions>& options) {
    const auto take = [choice, options](const std::string& pattern) { options->rules.push_back({choice, pattern}); };
    verb->add_option_function<std::string>(name, take, description)->trigger_on_parse()->type_name("PATTERN");
  }

  void AddPosition() {
    const auto options = std::make_shared<PositionOptions>();
    auto* verb = AddVerb("position", "Place the components of a flat product", help::kPosition, RunPosition, options);
    AddProduct(verb, options->product, "The work in progress");
    verb->add_option("--matrix", options->matrix, "The matrix file")->required()->type_name("FILE");
    auto* all = verb->add_flag("--all-instances", options->allInstances, "A component for each instance");
    verb->add_flag("--first-instances", options->firstInstances, "Each part number at its first instance")
        ->excludes(all);
    AddDryRun(verb, options->dryRun);
  }

  void AddScatter() {
    const auto options = std::make_shared<ScatterOptions>();
    auto* verb =
        AddVerb("scatter", "Move the components of a flat product anywhere", help::kScatter, RunScatter, options);
    AddProduct(verb, options->product, "The work in progress");
    verb->add_option("--seed", options->seed, "What the random positions follow from; else 1")->type_name("N");
    verb->add_option("--distance", options->distance, "How far along each axis, in millimetres; else 500")
        ->check(CLI::Range(0.0, 1e9))
        ->type_name("MM");
    AddDryRun(verb, options->dryRun);
  }

  void AddCompare() {
    const auto options = std::make_shared<CompareOptions>();
    auto* verb = AddVerb("compare", "Compare a flat product with the original", help::kCompare, RunCompare, options);
    AddProduct(verb, options->product, "The work in progress");
    verb->add_option("--with", options->original, "The STEP file that it comes from")->required()->type_name("FILE");
  }

  void AddExport() {
    const auto options = std::make_shared<ExportOptions>();
    auto* verb = AddVerb("export", "Write a product as STEP or glTF", help::kExport, RunExport, options);
    AddProduct(verb, options->product, "The product");
    verb->add_option("OUTPUT", options->output, "The file: .stp, .step or .glb")->required()->type_name("");
    AddReplace(verb, options->replace);
    AddDryRun(verb, options->dryRun);
  }

  void AddRender() {
    const auto options = std::make_shared<RenderOptions>();
    auto* verb = AddVerb("render", "Draw products and STEP files side by side", help::kRender, RunRender, options);
    verb->add_option("PRODUCT", options->products, "Products, STEP or light files")->required()->type_name("");
    verb->add_option("-o,--output", options->output, "The picture (.png)")->required()->type_name("FILE");
    verb->add_option("--caption", options->captions, "The text below a picture, one each in their order")
        ->allow_extra_args(false)
        ->type_name("TEXT");
    const auto pixels = CLI::Range(64, 8192);
    verb->add_option("--width", options->width, "Of the whole, in pixels")->check(pixels)->type_name("N");
    verb->add_option("--height", options->height, "Of the whole, in pixels; else 700")->check(pixels)->type_name("N");
    AddReplace(verb, options->replace);
    AddDryRun(verb, options->dryRun);
  }

  CLI::App program_;
  CommonOptions common_;
  std::function<void(CommandContext&)> verb_;
};

}  // namespace

Command ParseCommandLine(const std::vector<std::string>& arguments) {
  for (const auto& argument : arguments) {
    if (!IsUtf8(argument)) throw WrongUse("the argument '" + argument + "' is not UTF-8");
  }
  return Reader().Read(arguments);
}

}  // namespace quintara
