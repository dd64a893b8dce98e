#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/failure.h"

namespace quintara::cad {

/// One user property: a named text. Names are compared exactly.
struct Property {
  std::string name;
  std::string value;
};

/// The user properties of one instance or reference, in the order of their making.
class PropertyList {
 public:
  PropertyList() = default;
  /// A copy has properties of its own.
  PropertyList(const PropertyList& other) {
    for (const auto& property : other.properties_) AppendNew(*property);
  }
  PropertyList& operator=(PropertyList other) noexcept {
    properties_.swap(other.properties_);
    byName_.swap(other.byName_);
    return *this;
  }
  PropertyList(PropertyList&&) noexcept = default;
  ~PropertyList() = default;

  /// Nothing for an unknown name.
  std::shared_ptr<Property> Find(std::string_view name) const {
    const auto found = byName_.find(name);
    return found == byName_.end() ? nullptr : found->second;
  }

  /// Fails for an empty name and for one that is there already.
  std::shared_ptr<Property> Create(const std::string& name, const std::string& value) {
    if (name.empty()) throw Failure(failure::kInvalidCall, "A property needs a name");
    if (Find(name)) throw Failure(failure::kInvalidCall, "There is already a property \"" + name + "\"");
    AppendNew({name, value});
    return properties_.back();
  }

  /// For a name that is known to be neither empty nor there already.
  void AppendNew(Property property) {
    const auto& made = properties_.emplace_back(std::make_shared<Property>(std::move(property)));
    byName_.emplace(made->name, made);
  }

  /// Adds those of `other` whose names aren't there yet.
  void AddMissing(const PropertyList& other) {
    for (const auto& property : other.properties_) {
      if (!byName_.contains(property->name)) AppendNew(*property);
    }
  }

  const std::vector<std::shared_ptr<Property>>& All() const noexcept { return properties_; }

 private:
  std::vector<std::shared_ptr<Property>> properties_;
  // By the text in the property itself, which stays where it is.
  std::unordered_map<std::string_view, std::shared_ptr<Property>> byName_;
};

}  // namespace quintara::cad
