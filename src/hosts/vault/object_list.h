#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "access/contracts/veldora_objects.h"
#include "hosts/vault/records.h"
#include "hosts/vault/served.h"

namespace quintara::vault {

class ObjectListObject final : public Served<"VdObjects", veldora::VdObjects>,
                               public std::enable_shared_from_this<ObjectListObject> {
 public:
  /// `alias` stands in front of the columns of `Records`; empty for a list that is no query's.
  ObjectListObject(std::shared_ptr<Core> core, const std::vector<Ref<veldora::VdObject>>& objects, std::string alias);

  int Count() override;
  Ref<veldora::VdObject> Item(int index) override;
  Ref<veldora::VdRecList> Records() override;
  void Add(const Ref<veldora::VdObject>& object) override;
  void Remove(int index) override;
  void SetAttributeNames(const std::string& names) override;
  void RetrieveAll() override;

  Ref<veldora::VdObjects> AsVdObjects() override;

  std::vector<Ref<veldora::VdObject>> Objects() const { return {objects_.begin(), objects_.end()}; }

 private:
  // A work list is taken from at its front.
  std::deque<Ref<veldora::VdObject>> objects_;
  std::string alias_;
  std::vector<std::string> attributes_;
};

/// The objects of a table's rows, split by alias.
class AliasResultsObject final : public Served<"VdAliasResults", veldora::VdAliasResults>,
                                 public std::enable_shared_from_this<AliasResultsObject> {
 public:
  AliasResultsObject(std::shared_ptr<Core> core, std::shared_ptr<Table> table);

  Ref<veldora::VdObjects> ObjectsOf(const std::string& alias) override;

  Ref<veldora::VdAliasResults> AsVdAliasResults() override;

  /// Those of the alias that the rows stand for.
  std::vector<Ref<veldora::VdObject>> Sought() const { return OfAlias(table_->sought); }

 private:
  std::vector<Ref<veldora::VdObject>> OfAlias(const std::string& alias) const;

  std::shared_ptr<Table> table_;
};

}  // namespace quintara::vault
