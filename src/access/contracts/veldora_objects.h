#pragma once

#include <cstdint>
#include <string>

#include "access/contracts/veldora_meta.h"
#include "access/contracts/veldora_records.h"

/// The vault's objects, lists, queries and what makes them. An object is identified by its class id
/// and object id.
namespace quintara::veldora {

class VdObjects;
class VdObjectStore;
class VdQueryDefinition;

/// The values of the attribute "STATE".
namespace state {
inline constexpr int kNew = 0;
inline constexpr int kCheckedIn = 1;
inline constexpr int kCheckedOut = 2;
inline constexpr int kReleased = 3;
inline constexpr int kObsolete = 4;
}  // namespace state

/// Kinds of versions.
namespace version {
inline constexpr int kTraversal = 2;  ///< the object in the form in which a traversal goes on
inline constexpr int kLast = 3;       ///< its last version
}  // namespace version

/// A traversal policy. The meaning of the options is the vault's.
class VdBehavior : public AnyObject {
 public:
  virtual Ref<VdBehavior> Clone() = 0;
  virtual int OptionA() = 0;
  virtual int OptionC() = 0;
  virtual void SetOptionA(int value) = 0;
  virtual void SetOptionB(int value) = 0;
  virtual void SetOptionC(int value) = 0;
  virtual void SetOptionD(bool value) = 0;
  virtual void SetOptionE(int value) = 0;
};

/// One object. One that was never stored has the object id 0.
class VdObject : public AnyObject {
 public:
  virtual std::int32_t ObjectId() = 0;
  virtual std::int16_t ClassId() = 0;
  virtual Ref<VdClass> ClassInfo() = 0;
  /// Its attributes, live: what is set there is the object's.
  virtual Ref<VdRecord> Record() = 0;
  /// Gives a new object the default values of its class; a stored one stays as it is.
  virtual void InitData() = 0;
  /// Reads all attributes from the database again; what was set and not stored is lost.
  virtual void Retrieve() = 0;
  /// The vault's further refresh.
  virtual void Refresh() = 0;
  /// Reads only these attributes again; names separated by ";".
  virtual void RetrieveAttributes(const std::string& names) = 0;
  /// A second object of the same identity and values, independent of the first.
  virtual Ref<VdObject> Clone() = 0;
  /// See `version`; other kinds fail.
  virtual Ref<VdObject> GetVersion(int kind) = 0;
  virtual Ref<VdObject> LinkedVersion(int kind) = 0;
  /// The objects that hold this one as a component.
  virtual Ref<VdObjects> Parents(const Ref<VdQueryDefinition>& definition, const Ref<VdBehavior>& behavior) = 0;
  /// The direct components, in their order; `definition` may be nothing. Nothing, or an empty list,
  /// for a leaf.
  virtual Ref<VdObjects> Children(const Ref<VdQueryDefinition>& definition) = 0;
  virtual Ref<VdObjects> ChildrenWithBehavior(const Ref<VdQueryDefinition>& definition,
                                              const Ref<VdBehavior>& behavior) = 0;
  /// Removes the link that this object is; fails on any other object.
  virtual void RemoveLink(const Ref<VdBehavior>& behavior) = 0;
  /// Copies the object's file under a name into a folder; may leave a light representation beside.
  virtual void CopyFileTo(const std::string& name, const std::string& directory) = 0;
  /// Stores a new object.
  virtual void AddToVault(const Ref<VdBehavior>& behavior) = 0;
  /// Stores changed attributes.
  virtual void Update(const Ref<VdBehavior>& behavior) = 0;
  /// Links this object to another; `record` is always nothing.
  virtual void AddLink(std::int16_t linkClassId, const Ref<VdObject>& other, const Ref<VdRecord>& record,
                       const Ref<VdBehavior>& behavior) = 0;
};

/// An ordered list of objects.
class VdObjects : public AnyObject {
 public:
  virtual int Count() = 0;
  /// The object at `index`, from 0. Fails past the end.
  virtual Ref<VdObject> Item(int index) = 0;
  /// One row for each object.
  virtual Ref<VdRecList> Records() = 0;
  /// Appends; nothing can be appended too.
  virtual void Add(const Ref<VdObject>& object) = 0;
  virtual void Remove(int index) = 0;
  /// Names, separated by commas, the attributes that `RetrieveAll` reads.
  virtual void SetAttributeNames(const std::string& names) = 0;
  /// Reads those attributes of all objects in one step.
  virtual void RetrieveAll() = 0;
};

/// The classes that a query joins, each under an alias: "F" what it starts from, "L" the link class,
/// "S" what is sought.
class VdQueryFrom : public AnyObject {
 public:
  /// Class id 0 is any class, in the definition of a traversal only.
  virtual void Add(std::int16_t classId, const std::string& alias) = 0;
};

class VdQuerySelect : public AnyObject {
 public:
  virtual void Add(const std::string& attribute, const std::string& alias, bool flag) = 0;
};

class VdQueryWhere : public AnyObject {
 public:
  /// One condition; all of them hold together. `connective` is always empty, `comparison` always
  /// "=", `flag` always 0. In a text value "*" stands for any text.
  virtual void Add(const std::string& connective, const std::string& attribute, const std::string& comparison,
                   const Variant& value, int flag, const std::string& alias) = 0;
};

class VdQueryDefinition : public AnyObject {
 public:
  virtual Ref<VdQueryFrom> From() = 0;
  virtual Ref<VdQuerySelect> Select() = 0;
  virtual Ref<VdQueryWhere> Where() = 0;
};

class VdQuery : public AnyObject {
 public:
  virtual Ref<VdQueryDefinition> Definition() = 0;
  virtual void RunLinkQuery() = 0;
  virtual void RunClassQuery() = 0;
  virtual void RunWithBehavior(const Ref<VdBehavior>& behavior) = 0;
  /// Rows of the last run; fails before one.
  virtual int RecordCount() = 0;
  virtual Ref<VdRecList> Result() = 0;
  virtual Ref<VdObjectStore> ObjectStore() = 0;
};

/// A result split by alias.
class VdAliasResults : public AnyObject {
 public:
  /// The objects of one alias, in the order of the rows. Fails for an alias that isn't there.
  virtual Ref<VdObjects> ObjectsOf(const std::string& alias) = 0;
};

class VdMask : public AnyObject {
 public:
  /// The next value of the attribute's sequence; no value is ever given twice.
  virtual std::string NextValue() = 0;
  /// The revision to begin with.
  virtual std::string FirstRevision() = 0;
};

class VdMasks : public AnyObject {
 public:
  /// The mask of an attribute, or nothing.
  virtual Ref<VdMask> MaskOf(const Ref<VdAttribute>& attribute) = 0;
};

class VdObjectStore : public AnyObject {
 public:
  /// Nothing when there is no such object.
  virtual Ref<VdObject> ObjectById(std::int16_t classId, std::int32_t objectId) = 0;
  /// The object that a row stands for.
  virtual Ref<VdObject> ObjectFromRecord(const Ref<VdRecord>& record, int flag) = 0;
  /// The link object between two objects; nothing when they aren't linked.
  virtual Ref<VdObject> LinkObject(std::int16_t linkClassId, std::int16_t firstClassId, std::int32_t firstObjectId,
                                   std::int16_t secondClassId, std::int32_t secondObjectId) = 0;
  /// A new object, not stored yet.
  virtual Ref<VdObject> NewObject(std::int16_t classId) = 0;
  virtual Ref<VdObjects> NewObjects() = 0;
  virtual Ref<VdQuery> NewQuery() = 0;
  /// A definition with no query, for traversals.
  virtual Ref<VdQueryDefinition> NewQueryDefinition() = 0;
  /// Makes objects out of rows; `flag` is always 0.
  virtual Ref<VdAliasResults> ObjectsFromRecList(const Ref<VdRecList>& rows, int flag) = 0;
  /// The session's own policy: what is written on it holds until it is written again.
  virtual Ref<VdBehavior> DefaultBehavior() = 0;
  virtual Ref<VdMasks> Masks() = 0;
};

}  // namespace quintara::veldora
