#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "hosts/cad/cad_host.h"
#include "hosts/cad/definition.h"
#include "hosts/cad/session_object.h"

namespace quintara::cad {

class Occurrence;

/// The children of an occurrence. A part of it, as its position is.
class ChildrenObject final : public SessionObject<"Products", zorva::Products> {
 public:
  explicit ChildrenObject(Occurrence& owner) : owner_(owner) {}

  int Count() override;
  Ref<zorva::Product> Item(int index) override;
  void Remove(int index) override;
  Ref<zorva::Product> ReplaceWithFile(const Ref<zorva::Product>& component, const std::string& fullPath,
                                      bool allInstances) override;
  void AddComponentsFromFiles(const std::vector<std::string>& fullPaths, const std::string& typeFilter) override;

  /// The product whose children these are.
  std::shared_ptr<Occurrence> TheOwner() const;

 protected:
  const Life& TheLife() const override;
  Ref<AnyObject> Owner() override;
  void RequireAlive() const override;
  std::shared_ptr<AnyObject> Self() override;

 private:
  friend class Occurrence;

  Definition& RequireChildren() const;
  std::size_t RequireIndex(int index) const;

  Occurrence& owner_;
};

class PositionObject final : public SessionObject<"Position", zorva::Position> {
 public:
  explicit PositionObject(Occurrence& owner) : owner_(owner) {}

  void GetComponents(std::span<double> components) override;
  void SetComponents(std::span<const double> components) override;

 protected:
  const Life& TheLife() const override;
  Ref<AnyObject> Owner() override;
  void RequireAlive() const override;

 private:
  Occurrence& owner_;
};

/// One node of a document's tree: the root, which is the reference itself, or an instance as it is
/// reached by one path. The form in which it is loaded is its own; all else belongs to the
/// definition and the instance.
class Occurrence final : public SessionObject<"Product", zorva::Product>,
                         public std::enable_shared_from_this<Occurrence> {
 public:
  Occurrence(std::shared_ptr<Life> life, Definition& root);
  Occurrence(Occurrence& parent, Instance& instance);
  ~Occurrence() override;

  std::string Name() override;
  void SetName(const std::string& name) override;
  Ref<zorva::Products> Products() override;
  std::string PartNumber() override;
  void SetPartNumber(const std::string& partNumber) override;
  Ref<zorva::Position> Position() override;
  Ref<Product> Reference() override;
  Ref<zorva::Parameters> Parameters() override;
  Ref<zorva::Parameters> UserProperties() override;
  void ApplyUpdate() override;
  void SetWorkMode(int mode) override;

  // For the host itself; none of these passes the gate.
  void RequireAlive() const override;
  const Life& TheLife() const override { return *life_; }
  bool IsRoot() const noexcept { return instance_ == nullptr; }
  bool IsChildOf(const Occurrence& other) const noexcept { return parent_ == &other; }
  Definition& TheDefinition() const noexcept { return *definition_; }
  Instance* TheInstance() const noexcept { return instance_; }
  ComponentForm Form() const noexcept;
  void SetForm(ComponentForm form) noexcept { form_ = form; }
  std::string Label() const;
  const std::string& NameText() const noexcept;
  PositionMatrix& Place() const noexcept;
  PropertyList& OwnProperties() const noexcept;
  /// Fails when the component isn't loaded.
  void RequireLoaded() const;
  std::shared_ptr<Occurrence> ChildAt(std::size_t index);

 protected:
  Ref<AnyObject> Owner() override;
  std::shared_ptr<AnyObject> Self() override { return shared_from_this(); }

 private:
  friend class Definition;

  void JoinList(Definition& definition);
  void LeaveList() noexcept;
  void Forget(const Instance& child);
  void Kill();
  void GiveUpChildren(std::vector<std::shared_ptr<Occurrence>>& pending);
  void RequireDesign() const;

  std::shared_ptr<Life> life_;
  Occurrence* parent_ = nullptr;
  Instance* instance_ = nullptr;
  Definition* definition_ = nullptr;
  ComponentForm form_ = ComponentForm::kDesign;
  bool dead_ = false;
  // Made as they are asked for.
  std::unordered_map<const Instance*, std::shared_ptr<Occurrence>> children_;
  // The occurrences of a definition are chained, so that each learns of a child that goes.
  Definition* listed_ = nullptr;
  Occurrence* next_ = nullptr;
  Occurrence* previous_ = nullptr;
  ChildrenObject products_;
  PositionObject position_;
};

/// The object of `session` behind `product`; fails for nothing, a foreign and a removed one.
std::shared_ptr<Occurrence> OccurrenceOf(const Ref<zorva::Product>& product, const Session& session);

}  // namespace quintara::cad
