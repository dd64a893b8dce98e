#pragma once

#include <memory>
#include <string>

#include "hosts/cad/occurrence.h"
#include "hosts/cad/properties.h"
#include "hosts/cad/session_object.h"

namespace quintara::cad {

/// The properties of a product: its own, and with `kAll` those of its reference behind them.
class ParametersObject final : public SessionObject<"Parameters", zorva::Parameters> {
 public:
  enum class Scope { kOwn, kAll };

  ParametersObject(std::shared_ptr<Occurrence> owner, Scope scope) : owner_(std::move(owner)), scope_(scope) {}

  int Count() override;
  Ref<zorva::Parameter> Item(const std::string& name) override;
  Ref<zorva::Parameter> CreateString(const std::string& name, const std::string& value) override;

 protected:
  const Life& TheLife() const override { return owner_->TheLife(); }
  Ref<AnyObject> Owner() override { return Ref<AnyObject>(owner_); }
  void RequireAlive() const override { owner_->RequireAlive(); }

 private:
  const PropertyList* Inherited() const;

  std::shared_ptr<Occurrence> owner_;
  Scope scope_;
};

class ParameterObject final : public SessionObject<"Parameter", zorva::Parameter> {
 public:
  ParameterObject(std::shared_ptr<Occurrence> owner, std::shared_ptr<Property> property)
      : owner_(std::move(owner)), property_(std::move(property)) {}

  std::string Name() override;
  std::string ValueAsString() override;
  void ValuateFromString(const std::string& value) override;

 protected:
  const Life& TheLife() const override { return owner_->TheLife(); }
  Ref<AnyObject> Owner() override { return Ref<AnyObject>(owner_); }
  void RequireAlive() const override { owner_->RequireAlive(); }

 private:
  std::shared_ptr<Occurrence> owner_;
  std::shared_ptr<Property> property_;
};

}  // namespace quintara::cad
