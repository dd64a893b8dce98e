#include <memory>

#include "quintara/command_reader.h"

namespace quintara {

void CommandReader::AddSwitch(const char* name, const char* description, const char* footer,
                              void (*run)(CommandContext&, const SwitchOptions&)) {
  const auto options = std::make_shared<SwitchOptions>();
  auto* verb = AddVerb(name, description, footer, run, options);
  AddProduct(verb, options->product, "The work in progress");
  verb->add_option("--select", options->patterns, "Select the components that match; all patterns together")
      ->required()
      ->allow_extra_args(false)
      ->type_name("PATTERN");
  AddDryRun(verb, options->dryRun);
}

void CommandReader::AddReplaceByLatest() {
  const auto options = std::make_shared<ReplaceByLatestOptions>();
  auto* verb = AddVerb("replace-by-latest", "Replace light components by their newest revisions",
                       help::kReplaceByLatest, RunReplaceByLatest, options);
  AddProduct(verb, options->product, "The work in progress");
  verb->add_option("--tick", options->ticks, "Tick the components that match; else a terminal is asked")
      ->allow_extra_args(false)
      ->type_name("PATTERN");
  AddDryRun(verb, options->dryRun);
}

void CommandReader::AddInsert() {
  const auto options = std::make_shared<InsertOptions>();
  auto* verb = AddVerb("insert", "Add an object of the vault to a work in progress", help::kInsert, RunInsert, options);
  AddProduct(verb, options->product, "The work in progress");
  verb->add_option("OBJECT", options->object, "The object of the vault")->required()->type_name("");
  auto* light = verb->add_flag("--light")->description("As a light representation, which is the default");
  verb->add_flag("--document", options->document, "In full")->excludes(light);
  AddDryRun(verb, options->dryRun);
}

void CommandReader::AddCheckInsert() {
  const auto options = std::make_shared<CheckInsertOptions>();
  auto* verb = AddVerb("check-insert", "Look whether an object stands in a work in progress already",
                       help::kCheckInsert, RunCheckInsert, options);
  AddProduct(verb, options->product, "The work in progress");
  verb->add_option("OBJECT", options->object, "The object of the vault")->required()->type_name("");
}

void CommandReader::AddRefresh() {
  const auto options = std::make_shared<RefreshOptions>();
  auto* verb = AddVerb("refresh", "Bring a product and all that it holds up to the newest revisions", help::kRefresh,
                       RunRefresh, options);
  AddProduct(verb, options->product, "The product, an object of the vault");
}

}  // namespace quintara
