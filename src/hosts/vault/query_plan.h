#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/variant.h"
#include "hosts/vault/records.h"

namespace quintara::vault {

/// What a query definition holds.
struct QueryPlan {
  struct Source {
    std::int16_t classId;
    std::string alias;
  };
  struct Selection {
    std::string attribute;
    std::string alias;
  };
  struct Condition {
    std::string attribute;
    Variant value;
    std::string alias;
  };

  std::vector<Source> from;
  std::vector<Selection> select;
  std::vector<Condition> where;

  /// The class under an alias; 0 without that alias.
  std::int16_t ClassOf(const std::string& alias) const;
};

/// Fails for a selection of a traversal that its class, or the definition, hasn't.
void RequireSelectable(const Schema& schema, const QueryPlan& plan);

/// The rows of a query: of one class, or of "F" joined to "S" through the link class "L". They come in
/// the order of the sought objects' ids. Fails for any other combination of aliases, and for an
/// attribute that a class hasn't.
std::shared_ptr<Table> RunQuery(const std::shared_ptr<Core>& core, const QueryPlan& plan);

/// How the database would find the rows of that very statement: its own words, a line for each step.
std::vector<std::string> ExplainQuery(Core& core, const QueryPlan& plan);

}  // namespace quintara::vault
