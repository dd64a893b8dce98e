#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/variant.h"
#include "hosts/vault/core.h"

namespace quintara::vault {

/// The attribute values of one object, known as far as they were read. What isn't known is read at
/// its first use. An object that was never stored has the id 0.
class ObjectData {
 public:
  ObjectData(std::shared_ptr<Core> core, const ClassInfo& info, std::int32_t id);

  const ClassInfo& Info() const noexcept { return *info_; }
  std::int32_t Id() const noexcept { return id_; }
  Core& TheCore() const noexcept { return *core_; }
  const std::shared_ptr<Core>& SharedCore() const noexcept { return core_; }

  const SqlValue& Value(std::size_t place);
  Variant VariantOf(const std::string& attribute);
  std::string Text(const std::string& attribute);
  std::int64_t Integer(const std::string& attribute);

  /// Sets a value that the next storing writes. Fails for an attribute that the vault keeps itself.
  void SetText(const std::string& attribute, const std::string& text);
  /// Takes a value in as it stands in the database.
  void Know(std::size_t place, SqlValue value);
  /// Forgets what was set and reads all, or these, attributes.
  void Read();
  void Read(const std::vector<std::size_t>& places);
  /// The values of a new object.
  void Init();

  bool IsChanged(std::size_t place) const { return changed_[place]; }
  bool IsKnown(std::size_t place) const { return known_[place]; }
  /// Takes over identity and values of an object that was just stored.
  void Become(ObjectData stored) { *this = std::move(stored); }
  void SetId(std::int32_t id) { id_ = id; }
  void ForgetChanges() { changed_.assign(changed_.size(), false); }

 private:
  std::vector<std::size_t> AllPlaces() const;
  void RequireSettable(const std::string& attribute) const;

  std::shared_ptr<Core> core_;
  const ClassInfo* info_;
  std::int32_t id_;
  std::vector<SqlValue> values_;
  std::vector<bool> known_;
  std::vector<bool> changed_;
};

/// A value as the contract gives it: NULL as the empty text or 0.
Variant AsVariant(const AttributeInfo& attribute, const SqlValue& value);
/// The value that a text stands for; failure 13 for an integer attribute and a text that is none.
SqlValue ValueOf(const AttributeInfo& attribute, const std::string& text);

/// Reads these attributes of many objects of one class in one step, but for what was set and not stored.
void ReadTogether(Core& core, const std::vector<ObjectData*>& objects, const std::vector<std::size_t>& places);

/// "ZORVA Part 12", for failures.
std::string Described(const ClassInfo& info, std::int32_t id);

}  // namespace quintara::vault
