#pragma once

#include <string>
#include <vector>

namespace quintara {

class CommandContext;

// The verbs that change single components of a work in progress, and the refresh of a product, in the manner of those
// in verbs.h.

struct SwitchOptions {
  std::string product;
  std::vector<std::string> patterns;  ///< what is selected; at least one
  bool dryRun = false;
};
/// Replaces the selected components of a work in progress by their light representations.
void RunSwitchToLwt(CommandContext& context, const SwitchOptions& options);
/// Replaces the selected light components of a work in progress by their documents.
void RunSwitchToProduct(CommandContext& context, const SwitchOptions& options);

struct ReplaceByLatestOptions {
  std::string product;
  std::vector<std::string> ticks;  ///< patterns; none: someone is asked at the terminal
  bool dryRun = false;
};
/// Replaces light components of a work in progress by those of their newest revisions.
void RunReplaceByLatest(CommandContext& context, const ReplaceByLatestOptions& options);

struct InsertOptions {
  std::string product;
  std::string object;
  bool document = false;  ///< in full, not as a light representation
  bool dryRun = false;
};
/// Adds an object of the vault to a work in progress.
void RunInsert(CommandContext& context, const InsertOptions& options);

struct CheckInsertOptions {
  std::string product;
  std::string object;
};
/// Looks whether an object of the vault stands in a work in progress already.
void RunCheckInsert(CommandContext& context, const CheckInsertOptions& options);

struct RefreshOptions {
  std::string product;
};
/// Brings a product of the vault with all that it holds up to the newest revisions.
void RunRefresh(CommandContext& context, const RefreshOptions& options);

}  // namespace quintara
