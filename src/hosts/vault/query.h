#pragma once

#include <memory>
#include <string>

#include "access/contracts/veldora_objects.h"
#include "hosts/vault/query_plan.h"
#include "hosts/vault/served.h"

namespace quintara::vault {

class QueryDefinitionObject final : public Served<"VdQueryDefinition", veldora::VdQueryDefinition> {
 public:
  explicit QueryDefinitionObject(std::shared_ptr<Core> core);

  Ref<veldora::VdQueryFrom> From() override;
  Ref<veldora::VdQuerySelect> Select() override;
  Ref<veldora::VdQueryWhere> Where() override;

  const QueryPlan& Plan() const { return *plan_; }

 private:
  std::shared_ptr<QueryPlan> plan_ = std::make_shared<QueryPlan>();
};

/// The plan of a definition; an empty one for nothing. Fails for a definition of another host.
const QueryPlan& PlanOf(const Ref<veldora::VdQueryDefinition>& definition);

class QueryObject final : public Served<"VdQuery", veldora::VdQuery> {
 public:
  explicit QueryObject(std::shared_ptr<Core> core);

  Ref<veldora::VdQueryDefinition> Definition() override;
  void RunLinkQuery() override;
  void RunClassQuery() override;
  void RunWithBehavior(const Ref<veldora::VdBehavior>& behavior) override;
  int RecordCount() override;
  Ref<veldora::VdRecList> Result() override;
  Ref<veldora::VdObjectStore> ObjectStore() override;

 private:
  const std::shared_ptr<Table>& LastResult() const;

  Ref<QueryDefinitionObject> definition_;
  std::shared_ptr<Table> result_;
};

}  // namespace quintara::vault
