#pragma once

#include <cstdint>
#include <string>

#include "access/contracts/any_object.h"
#include "base/variant.h"

/// The vault's schema: its classes of objects with their attributes, and its operations.
namespace quintara::veldora {

class VdAttribute : public AnyObject {
 public:
  std::string Name() override = 0;
};

class VdAttributes : public AnyObject {
 public:
  virtual int Count() = 0;
  /// The attribute at an index from 0. Fails past the end.
  virtual Ref<VdAttribute> Item(const Variant& index) = 0;
  /// Fails for a name that isn't known.
  virtual Ref<VdAttribute> ItemByName(const std::string& name) = 0;
  /// The attribute of that name, or nothing.
  virtual Ref<VdAttribute> Find(const std::string& name) = 0;
};

/// A class of objects.
class VdClass : public AnyObject {
 public:
  virtual std::int16_t ClassId() = 0;
  /// The id under which a traversal selects the attributes of objects of this class.
  virtual std::int16_t QueryClassId() = 0;
  virtual std::string ClassName() = 0;
  virtual Ref<VdAttributes> Attributes() = 0;
  /// Those that identify an object to a user.
  virtual Ref<VdAttributes> KeyAttributes() = 0;
};

class VdClasses : public AnyObject {
 public:
  /// The class of that name, or nothing.
  virtual Ref<VdClass> Find(const std::string& name) = 0;
};

class VdOperation : public AnyObject {
 public:
  virtual std::int32_t OperationId() = 0;
};

class VdOperations : public AnyObject {
 public:
  /// Fails for a name that isn't known.
  virtual Ref<VdOperation> Find(const std::string& name) = 0;
};

class VdMetaInfo : public AnyObject {
 public:
  /// Fails for a name that isn't known.
  virtual Ref<VdClass> ClassByName(const std::string& name) = 0;
  /// Fails for an id that isn't known.
  virtual Ref<VdClass> ClassById(std::int16_t classId) = 0;
  /// The class whose objects stand in a table of the database, such as "TDMX_USER_SETTING", or
  /// nothing.
  virtual Ref<VdClass> ClassByTable(const std::string& table) = 0;
  virtual Ref<VdClasses> Classes() = 0;
  /// "CHECKIN", "APPROVE", "FREEZE", "CHECKOUT", "NEWRELEASE", "CopyFile"; fails for a name that
  /// isn't known.
  virtual Ref<VdOperation> OperationByName(const std::string& name) = 0;
  /// `kind` is always 0.
  virtual Ref<VdOperations> Operations(int kind) = 0;
};

}  // namespace quintara::veldora
