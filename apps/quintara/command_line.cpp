#include "quintara/command_line.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "base/text.h"
#include "quintara/command_reader.h"
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

}  // namespace

CommandReader::CommandReader()
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
  AddCheckIn("checkin", "Check products in, their matrices first, or other objects", help::kCheckIn, RunCheckIn);
  AddCheckIn("release", "Release products, their matrices first, or other objects", help::kRelease, RunRelease);
  AddLifeCycle("checkout", "Check objects out and bring their files", help::kCheckOut, RunCheckOut);
  AddLifeCycle("new-release", "Make the next revisions of released objects", help::kNewRelease, RunNewRelease);
  AddLifeCycle("obsolete", "Make released objects obsolete", help::kObsolete, RunObsolete);
  AddChildren();
  AddLinks();
  AddUnlink();
  AddMatrix();
  AddWip();
  AddRetrieve();
  AddSwitch("switch-to-lwt", "Replace components by their light representations", help::kSwitchToLwt, RunSwitchToLwt);
  AddSwitch("switch-to-product", "Replace light components by their documents", help::kSwitchToProduct,
            RunSwitchToProduct);
  AddReplaceByLatest();
  AddInsert();
  AddCheckInsert();
  AddRefresh();
  AddFlatten();
  AddPosition();
  AddScatter();
  AddCompare();
  AddExport();
  AddRender();
  AddSettings();
  AddUser();
}

Command CommandReader::Read(std::vector<std::string> arguments) {
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

// The innermost one: "vault init" rather than "vault".
const CLI::App* CommandReader::ChosenVerb() const {
  const CLI::App* verb = nullptr;
  for (auto chosen = program_.get_subcommands(); !chosen.empty(); chosen = verb->get_subcommands()) {
    verb = chosen.back();
  }
  return verb;
}

std::string CommandReader::NameOf(const CLI::App* verb) {
  const auto* parent = verb->get_parent();
  return parent->get_parent() == nullptr ? verb->get_name() : NameOf(parent) + " " + verb->get_name();
}

std::string CommandReader::Misplaced() const {
  return ChosenVerb() == nullptr ? "no verb" : "nothing that '" + NameOf(ChosenVerb()) + "' expects";
}

std::string CommandReader::Advice() const {
  const auto* verb = ChosenVerb();
  return "\n'quintara " + (verb == nullptr ? std::string() : NameOf(verb) + " ") + "--help' tells more";
}

void CommandReader::AddCommonOptions() {
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

CLI::App* CommandReader::AddVerbWithout(CLI::App& parent, const char* name, const char* description,
                                        const char* footer) {
  auto* verb = parent.add_subcommand(name, description);
  verb->group("Verbs");
  verb->fallthrough();
  verb->footer(std::string(footer) + help::kCommonOptions);
  return verb;
}

void CommandReader::AddImport() {
  const auto options = std::make_shared<ImportOptions>();
  auto* verb = AddVerb("import", "Bring a STEP assembly into the vault, or into the work directory", help::kImport,
                       RunImport, options);
  verb->add_option("FILE", options->file, "The STEP file")->required()->type_name("");
  verb->add_option_function<std::string>(
          "--matrix",
          [options](const std::string& of) {
            options->matrices = of == "none"   ? ImportedMatrices::kNone
                                : of == "root" ? ImportedMatrices::kRoot
                                               : ImportedMatrices::kAll;
          },
          "Of which assemblies matrices are stored in the vault: all, which is the default, the root, or none")
      ->check(CLI::IsMember({"all", "root", "none"}))
      ->type_name("all|root|none");
  AddReplace(verb, options->replace);
  AddDryRun(verb, options->dryRun);
}

void CommandReader::AddTree() {
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

void CommandReader::AddMatrix() {
  const auto options = std::make_shared<MatrixOptions>();
  auto* verb = AddVerb("matrix", "Write the matrix of a product", help::kMatrix, RunMatrix, options);
  AddProduct(verb, options->product, "The product");
  verb->add_option("-o,--output", options->output, "The file; else 'PART NUMBER Matrix.xml' in the work directory")
      ->type_name("FILE");
  AddReplace(verb, options->replace);
  AddDryRun(verb, options->dryRun);
}

void CommandReader::AddFlatten() {
  const auto options = std::make_shared<FlattenOptions>();
  auto* verb = AddVerb("flatten", "Make a flat product of chosen components", help::kFlatten, RunFlatten, options);
  AddProduct(verb, options->product, "The product with the true tree");
  verb->add_option("--name", options->name, "The name behind WIP~~; else the product's part number")->type_name("NAME");
  AddRules(verb, options);
  AddReplace(verb, options->replace);
  AddDryRun(verb, options->dryRun);
}

void CommandReader::AddWip() {
  const auto options = std::make_shared<WipOptions>();
  auto* verb = AddVerb("wip", "Make a work in progress of a product of the vault", help::kWip, RunWip, options);
  AddProduct(verb, options->product, "The product");
  AddRules(verb, options);
  verb->add_flag("--every-node", options->everyNode, "A pattern marks all its nodes, not each object once");
  verb->add_flag("--all-instances", options->allInstances, "A component for each instance");
  verb->add_option("--name", options->name, "The name behind WIP~~; else that of the matrix's product")
      ->type_name("NAME");
  verb->add_option("--active", options->active, "The document that is open then, and becomes the work in progress")
      ->type_name("FILE");
  verb->add_option("--as-created", options->asCreated, "Also save it as it is before it is placed (.ZVAProduct)")
      ->type_name("FILE");
  AddReplace(verb, options->replace);
  AddDryRun(verb, options->dryRun);
}

void CommandReader::AddRetrieve() {
  const auto options = std::make_shared<RetrieveOptions>();
  auto* verb = AddVerb("retrieve", "Put the components of a work in progress back in place", help::kRetrieve,
                       RunRetrieve, options);
  AddProduct(verb, options->product, "The work in progress");
  AddDryRun(verb, options->dryRun);
}

void CommandReader::AddPosition() {
  const auto options = std::make_shared<PositionOptions>();
  auto* verb = AddVerb("position", "Place the components of a flat product", help::kPosition, RunPosition, options);
  AddProduct(verb, options->product, "The work in progress");
  verb->add_option("--matrix", options->matrix, "The matrix file")->required()->type_name("FILE");
  auto* all = verb->add_flag("--all-instances", options->allInstances, "A component for each instance");
  verb->add_flag("--first-instances", options->firstInstances, "Each part number at its first instance")->excludes(all);
  AddDryRun(verb, options->dryRun);
}

void CommandReader::AddScatter() {
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

void CommandReader::AddCompare() {
  const auto options = std::make_shared<CompareOptions>();
  auto* verb = AddVerb("compare", "Compare a flat product with the original", help::kCompare, RunCompare, options);
  AddProduct(verb, options->product, "The work in progress");
  verb->add_option("--with", options->original, "The STEP file that it comes from")->required()->type_name("FILE");
}

void CommandReader::AddExport() {
  const auto options = std::make_shared<ExportOptions>();
  auto* verb = AddVerb("export", "Write a product as STEP or glTF", help::kExport, RunExport, options);
  AddProduct(verb, options->product, "The product");
  verb->add_option("OUTPUT", options->output, "The file: .stp, .step or .glb")->required()->type_name("");
  AddReplace(verb, options->replace);
  AddDryRun(verb, options->dryRun);
}

void CommandReader::AddRender() {
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

Command ParseCommandLine(const std::vector<std::string>& arguments) {
  for (const auto& argument : arguments) {
    if (!IsUtf8(argument)) throw WrongUse("the argument '" + argument + "' is not UTF-8");
  }
  return CommandReader().Read(arguments);
}

}  // namespace quintara
