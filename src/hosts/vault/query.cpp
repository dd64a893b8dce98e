#include "hosts/vault/query.h"

#include <utility>

#include "base/failure.h"
#include "hosts/vault/object_store.h"
#include "hosts/vault/rec_list.h"

namespace quintara::vault {
namespace {

class FromObject final : public Served<"VdQueryFrom", veldora::VdQueryFrom> {
 public:
  FromObject(std::shared_ptr<Core> core, std::shared_ptr<QueryPlan> plan)
      : Served(std::move(core)), plan_(std::move(plan)) {}

  void Add(std::int16_t classId, const std::string& alias) override {
    Pass<"Add">([&] { return std::to_string(classId) + ", " + alias; });
    plan_->from.push_back({classId, alias});
  }

 private:
  std::shared_ptr<QueryPlan> plan_;
};

class SelectObject final : public Served<"VdQuerySelect", veldora::VdQuerySelect> {
 public:
  SelectObject(std::shared_ptr<Core> core, std::shared_ptr<QueryPlan> plan)
      : Served(std::move(core)), plan_(std::move(plan)) {}

  void Add(const std::string& attribute, const std::string& alias, bool /*flag*/) override {
    Pass<"Add">([&] { return attribute + ", " + alias; });
    plan_->select.push_back({attribute, alias});
  }

 private:
  std::shared_ptr<QueryPlan> plan_;
};

class WhereObject final : public Served<"VdQueryWhere", veldora::VdQueryWhere> {
 public:
  WhereObject(std::shared_ptr<Core> core, std::shared_ptr<QueryPlan> plan)
      : Served(std::move(core)), plan_(std::move(plan)) {}

  void Add(const std::string& connective, const std::string& attribute, const std::string& comparison,
           const Variant& value, int /*flag*/, const std::string& alias) override {
    Pass<"Add">([&] { return attribute + ", " + value.ToText() + ", " + alias; });
    if (!connective.empty() || comparison != "=") {
      throw Failure(failure::kInvalidCall, "A query's conditions all hold together, and each asks for equality");
    }
    plan_->where.push_back({attribute, value, alias});
  }

 private:
  std::shared_ptr<QueryPlan> plan_;
};

}  // namespace

QueryDefinitionObject::QueryDefinitionObject(std::shared_ptr<Core> core) : Served(std::move(core)) {}

Ref<veldora::VdQueryFrom> QueryDefinitionObject::From() {
  Pass<"From">();
  return MakeRef<FromObject>(core_, plan_);
}

Ref<veldora::VdQuerySelect> QueryDefinitionObject::Select() {
  Pass<"Select">();
  return MakeRef<SelectObject>(core_, plan_);
}

Ref<veldora::VdQueryWhere> QueryDefinitionObject::Where() {
  Pass<"Where">();
  return MakeRef<WhereObject>(core_, plan_);
}

const QueryPlan& PlanOf(const Ref<veldora::VdQueryDefinition>& definition) {
  static const QueryPlan kEmpty;
  if (!definition) return kEmpty;
  const auto own = std::dynamic_pointer_cast<QueryDefinitionObject>(definition.Shared());
  if (!own) throw Failure(failure::kTypeMismatch, "Type mismatch: the query definition belongs to another host");
  return own->Plan();
}

QueryObject::QueryObject(std::shared_ptr<Core> core)
    : Served(std::move(core)), definition_(MakeRef<QueryDefinitionObject>(core_)) {}

Ref<veldora::VdQueryDefinition> QueryObject::Definition() {
  Pass<"Definition">();
  return definition_;
}

void QueryObject::RunLinkQuery() {
  Pass<"RunLinkQuery">();
  if (definition_->Plan().from.size() == 1)
    throw Failure(failure::kInvalidCall, "A link query joins F and S through L");
  result_ = RunQuery(core_, definition_->Plan());
}

void QueryObject::RunClassQuery() {
  Pass<"RunClassQuery">();
  if (definition_->Plan().from.size() != 1) throw Failure(failure::kInvalidCall, "A class query is of one class");
  result_ = RunQuery(core_, definition_->Plan());
}

void QueryObject::RunWithBehavior(const Ref<veldora::VdBehavior>& behavior) {
  Pass<"RunWithBehavior">();
  if (!behavior) throw Failure(failure::kObjectNotSet);
  result_ = RunQuery(core_, definition_->Plan());
}

const std::shared_ptr<Table>& QueryObject::LastResult() const {
  if (!result_) throw Failure(failure::kInvalidCall, "The query hasn't been run yet");
  return result_;
}

int QueryObject::RecordCount() {
  Pass<"RecordCount">();
  return static_cast<int>(LastResult()->rows.size());
}

Ref<veldora::VdRecList> QueryObject::Result() {
  Pass<"Result">();
  return MakeRef<RecListObject>(core_, LastResult());
}

Ref<veldora::VdObjectStore> QueryObject::ObjectStore() {
  Pass<"ObjectStore">();
  return MakeRef<ObjectStoreObject>(core_);
}

}  // namespace quintara::vault
