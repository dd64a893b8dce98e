#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "quintara/review_nodes.h"
#include "quintara/review_rules.h"
#include "views/console/console_dialogs.h"

namespace quintara {

/// Where the panel is answered in which a product is reviewed: by rules, or, without any, by someone at the terminal.
/// It must outlive the panel.
class ReviewDesk {
 public:
  struct Wishes {
    ReviewRules rules = {};
    std::string name = {};  ///< what is typed as the name
    bool allInstances = false;
    bool dryRun = false;  ///< the panel is closed where the work in progress would be created
    /// What keeps it from being created under that name; empty for nothing. The panel stays open then.
    std::function<std::string(const std::string& name)> objectionTo = {};
    /// Called when it has been created, and nothing is placed yet.
    std::function<void()> whenCreated = {};
  };

  /// Answers the panels of `dialogs` from now on.
  ReviewDesk(Wishes wishes, ConsoleDialogs& dialogs, PartNumberOfObject partNumberOf);
  ~ReviewDesk();
  ReviewDesk(const ReviewDesk&) = delete;
  ReviewDesk& operator=(const ReviewDesk&) = delete;

  /// The pattern for which there was no node; then nothing was marked, and the panel was closed.
  const std::optional<std::string>& Unmatched() const { return unmatched_; }
  const std::vector<RuleReport>& Reports() const { return reports_; }
  /// What was marked when the creation was asked for; nothing where it never was.
  const std::optional<std::vector<AskedComponent>>& Asked() const { return asked_; }
  /// Whether all instances were asked for then.
  bool AllInstances() const { return allInstances_; }

 private:
  class Panel;   // a view that nobody sees
  class Events;  // stands between a view and the panel's own events

  std::shared_ptr<dialog::View> NewView(const dialog::Layout& layout, dialog::Events& events);

  Wishes wishes_;
  ConsoleDialogs& dialogs_;
  PartNumberOfObject partNumberOf_;
  std::vector<std::unique_ptr<Events>> events_;
  std::optional<std::string> unmatched_;
  std::vector<RuleReport> reports_;
  std::optional<std::vector<AskedComponent>> asked_;
  bool allInstances_ = false;
};

}  // namespace quintara
