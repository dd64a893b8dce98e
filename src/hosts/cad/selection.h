#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "hosts/cad/session_object.h"

namespace quintara::cad {

class Occurrence;

/// What is selected in one document.
class SelectionObject final : public SessionObject<"Selection", zorva::Selection>,
                              public std::enable_shared_from_this<SelectionObject> {
 public:
  explicit SelectionObject(std::shared_ptr<Life> life) : life_(std::move(life)) {}

  int Count() override;
  Ref<zorva::SelectedElement> Item(int index) override;
  void Add(const Ref<AnyObject>& object) override;
  void Clear() override;
  void Copy() override;
  void Paste() override;

  /// Lets go of everything, without passing the gate.
  void Forget() noexcept { entries_.clear(); }

 protected:
  const Life& TheLife() const override { return *life_; }
  Ref<AnyObject> Owner() override { return Ref<AnyObject>(life_->document.lock()); }

 private:
  std::shared_ptr<Life> life_;
  std::vector<Ref<AnyObject>> entries_;
};

class SelectedElementObject final : public SessionObject<"SelectedElement", zorva::SelectedElement> {
 public:
  SelectedElementObject(std::shared_ptr<Life> life, std::shared_ptr<SelectionObject> selection, Ref<AnyObject> value)
      : life_(std::move(life)), selection_(std::move(selection)), value_(std::move(value)) {}

  Ref<AnyObject> Value() override;

 protected:
  const Life& TheLife() const override { return *life_; }
  Ref<AnyObject> Owner() override { return Ref<AnyObject>(selection_); }

 private:
  std::shared_ptr<Life> life_;
  std::shared_ptr<SelectionObject> selection_;
  Ref<AnyObject> value_;
};

}  // namespace quintara::cad
