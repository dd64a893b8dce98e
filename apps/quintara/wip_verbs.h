#pragma once

#include <string>
#include <vector>

#include "quintara/component_choice.h"

namespace quintara {

class CommandContext;

// The verbs that make and place a work in progress of a product of the vault, in the manner of those in verbs.h.

struct WipOptions {
  std::string product;
  std::vector<ChoiceRule> rules;  ///< none: someone is asked at the terminal
  bool everyNode = false;         ///< a pattern marks all its nodes, not each object once
  bool allInstances = false;
  std::string name;       ///< behind "WIP~~"; empty: the name of the matrix's product
  std::string active;     ///< the document that is open then; empty for none
  std::string asCreated;  ///< a file for what it is before it is placed; empty for none
  bool replace = false;
  bool dryRun = false;
};
/// Reviews a product, makes its work in progress, places it, and compares it with what was asked for.
void RunWip(CommandContext& context, const WipOptions& options);

struct RetrieveOptions {
  std::string product;
  bool dryRun = false;
};
/// Puts the components of a work in progress back to where its matrix has them.
void RunRetrieve(CommandContext& context, const RetrieveOptions& options);

}  // namespace quintara
