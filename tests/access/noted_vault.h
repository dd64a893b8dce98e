#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "access/access_fixture.h"
#include "access/utils/Cls_Utils.h"
#include "access/vault_mocks.h"
#include "base/failure.h"

/// A vault whose objects note each operation that is asked of them, with all its arguments, in the order in
/// which they come. What only reads an answer off (an id, a count, an item, a value) leaves no note.
namespace quintara::test {

struct VaultNotes {
  std::vector<std::string> calls;
  /// The beginning of the note whose operation fails, after it was noted.
  std::string failing;
  /// Called with each note, before its failure.
  std::function<void(const std::string& call)> onCall;

  void Note(const std::string& call);
};

using SharedNotes = std::shared_ptr<VaultNotes>;
using Values = std::map<std::string, Variant>;

/// A record of these values; any other attribute fails.
class NotedRecord : public veldora::VdRecord {
 public:
  NotedRecord(SharedNotes notes, std::string name, std::shared_ptr<Values> values)
      : notes_(std::move(notes)), name_(std::move(name)), values_(std::move(values)) {}

  Variant Value(const std::string& attribute) override;
  std::int32_t ValueAsInteger(const std::string& attribute) override { return Value(attribute).ToInteger32(); }
  std::string ValueAsString(const std::string& attribute) override { return Value(attribute).ToText(); }
  void ValuateFromString(const std::string& attribute, const std::string& text) override;
  Ref<veldora::VdColumns> Header() override { return nullptr; }

 private:
  SharedNotes notes_;
  std::string name_;
  std::shared_ptr<Values> values_;
};

/// A table of rows of values.
class NotedTable : public testing::NiceMock<MockRecList> {
 public:
  explicit NotedTable(SharedNotes notes, std::vector<Values> rows = {})
      : rows_(std::move(rows)), notes_(std::move(notes)) {}

  std::string Name() override { return "the table"; }
  int RecordCount() override { return static_cast<int>(rows_.size()); }
  Ref<veldora::VdRecord> GetRecord(int row) override;
  Variant Value(const std::string& attribute) override { return GetRecord(0)->Value(attribute); }
  std::int32_t ValueAsInteger(const std::string& attribute) override { return GetRecord(0)->ValueAsInteger(attribute); }
  std::string ValueAsString(const std::string& attribute) override { return GetRecord(0)->ValueAsString(attribute); }
  void AddField(const std::string& name, int typeCode, int size) override;
  int AddRow() override;
  void SetValue(const std::string& field, int row, const Variant& value) override;

 private:
  std::vector<Values> rows_;
  SharedNotes notes_;
};

class NotedAttribute : public veldora::VdAttribute {
 public:
  explicit NotedAttribute(std::string name) : name_(std::move(name)) {}
  std::string Name() override { return name_; }

 private:
  std::string name_;
};

class NotedAttributes : public testing::NiceMock<MockAttributes> {
 public:
  explicit NotedAttributes(std::vector<std::string> names) : names_(std::move(names)) {}
  int Count() override { return static_cast<int>(names_.size()); }
  Ref<veldora::VdAttribute> Item(const Variant& index) override;

 private:
  std::vector<std::string> names_;
};

class NotedClass : public testing::NiceMock<MockClass> {
 public:
  explicit NotedClass(std::int16_t id) : id_(id) {}
  std::int16_t ClassId() override { return id_; }
  std::int16_t QueryClassId() override { return static_cast<std::int16_t>(id_ + 100); }
  Ref<veldora::VdAttributes> Attributes() override { return MakeRef<NotedAttributes>(attributes); }
  Ref<veldora::VdAttributes> KeyAttributes() override { return MakeRef<NotedAttributes>(keyAttributes); }

  std::vector<std::string> attributes, keyAttributes;

 private:
  std::int16_t id_;
};

/// A list of objects; past its end there is nothing to take.
class NotedList : public veldora::VdObjects {
 public:
  NotedList(SharedNotes notes, std::string name, std::vector<Ref<veldora::VdObject>> content = {})
      : objects(std::move(content)), notes_(std::move(notes)), name_(std::move(name)) {}

  std::string Name() override { return name_; }
  int Count() override { return static_cast<int>(objects.size()); }
  Ref<veldora::VdObject> Item(int index) override;
  Ref<veldora::VdRecList> Records() override;
  void Add(const Ref<veldora::VdObject>& object) override;
  void Remove(int index) override;
  void SetAttributeNames(const std::string& names) override;
  void RetrieveAll() override;

  std::vector<Ref<veldora::VdObject>> objects;

 private:
  SharedNotes notes_;
  std::string name_;
};

/// An object of the class of its ids. `clone` and the version of a kind are the object itself until they are set;
/// `parents` and `children` are what it holds and is held by.
class NotedObject : public testing::NiceMock<MockObject>, public std::enable_shared_from_this<NotedObject> {
 public:
  NotedObject(SharedNotes notes, std::string name, Ref<NotedClass> itsClass, std::int32_t objectId)
      : info(std::move(itsClass)), notes_(std::move(notes)), name_(std::move(name)), objectId_(objectId) {}

  std::string Name() override { return name_; }
  std::int32_t ObjectId() override { return objectId_; }
  std::int16_t ClassId() override { return info->ClassId(); }
  Ref<veldora::VdClass> ClassInfo() override { return info; }
  Ref<veldora::VdRecord> Record() override { return MakeRef<NotedRecord>(notes_, name_, values); }
  void InitData() override { Note("InitData"); }
  void Retrieve() override { Note("Retrieve"); }
  Ref<veldora::VdObject> Clone() override;
  Ref<veldora::VdObject> GetVersion(int kind) override;
  Ref<veldora::VdObjects> Parents(const Ref<veldora::VdQueryDefinition>& definition,
                                  const Ref<veldora::VdBehavior>& behavior) override;
  Ref<veldora::VdObjects> Children(const Ref<veldora::VdQueryDefinition>& definition) override;
  Ref<veldora::VdObjects> ChildrenWithBehavior(const Ref<veldora::VdQueryDefinition>& definition,
                                               const Ref<veldora::VdBehavior>& behavior) override;
  void RemoveLink(const Ref<veldora::VdBehavior>& behavior) override { Note("RemoveLink(" + behavior->Name() + ")"); }
  void CopyFileTo(const std::string& name, const std::string& directory) override;

  Ref<NotedClass> info;
  std::shared_ptr<Values> values = std::make_shared<Values>();
  Ref<veldora::VdObject> clone, version;
  std::vector<Ref<veldora::VdObject>> parents, children;

 private:
  void Note(const std::string& call) { notes_->Note(name_ + "." + call); }
  Ref<veldora::VdObject> Itself() { return Ref<veldora::VdObject>(shared_from_this()); }

  SharedNotes notes_;
  std::string name_;
  std::int32_t objectId_;
};

/// The service that performs life-cycle operations; `result` is the object that it gives.
class NotedUtil : public testing::NiceMock<MockSessionUtil> {
 public:
  explicit NotedUtil(SharedNotes notes) : notes_(std::move(notes)) {}

  Ref<veldora::VdObject> CheckOut(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record,
                                  bool invokeScripts) override;
  int CheckIn(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record, bool invokeScripts) override;
  int Release(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record, bool invokeScripts) override;
  Ref<veldora::VdObject> NewRelease(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record,
                                    bool invokeScripts) override;
  int Obsolete(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record, bool invokeScripts) override;
  void RunOperation(const Ref<veldora::VdObject>& object, const Ref<veldora::VdOperation>& operation, bool flag,
                    const Ref<veldora::VdRecList>& rows, const Ref<veldora::VdRecList>& parameters) override;
  int CopyVaultFile(std::int32_t vaultObjectId, const std::string& vaultDirectory, const std::string& fileName,
                    const std::string& targetDirectory, const std::string& targetName) override;
  void CopyDocumentFile(const Ref<veldora::VdObject>& document, const std::string& targetName,
                        const std::string& targetDirectory, int flag) override;

 private:
  void NoteMove(const std::string& call, const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record,
                bool invokeScripts);

  SharedNotes notes_;
};

/// How the user leaves the vault's dialog: what its result reads, the last one of these again and again, and what
/// was picked.
struct DialogPlay {
  std::vector<int> results;
  std::vector<Ref<veldora::VdObject>> picked;
};

/// What there is in a noted vault.
struct VaultContent {
  std::map<std::string, Ref<NotedClass>> classes;
  std::map<std::pair<std::int16_t, std::int32_t>, Ref<veldora::VdObject>> objects;
  std::map<std::string, std::int32_t> fileTypes = {{"xml", 501}, {"Microsoft Excel", 502}};
  /// Their ids; 0 for a name that gives nothing. Any other name fails.
  std::map<std::string, std::int32_t> operations;
  /// The next value of each attribute that is numbered.
  std::map<std::string, std::string> masks;
  /// What a query of links finds: how many rows it tells of, and the ids of the sought objects.
  int rowCount = 0;
  std::vector<std::int32_t> sought;
  Ref<veldora::VdObject> link;
  Ref<veldora::VdSessionUtil> util;
  DialogPlay dialog;
};

/// A vault with the classes "ZORVA Product" (10), "Document" (20), "Document Link" (30) and "FILE_TYPE" (40), the file
/// types "xml" (501) and "Microsoft Excel" (502), and a client that runs.
class NotedVault : public testing::Test, protected AccessBench {
 protected:
  NotedVault();

  Ref<NotedObject> NewObject(const std::string& name, std::int32_t objectId, std::int16_t classId = 10);
  void GivenRows(int count, std::vector<std::int32_t> sought) {
    content->rowCount = count;
    content->sought = std::move(sought);
  }
  void GivenRows(std::vector<std::int32_t> sought) { GivenRows(static_cast<int>(sought.size()), sought); }

  const std::vector<std::string>& Calls() const { return notes->calls; }
  /// The calls whose notes begin so.
  std::vector<std::string> CallsOf(const std::string& beginning) const;
  void GivenFailureOf(const std::string& beginning) { notes->failing = beginning; }

  SharedNotes notes = std::make_shared<VaultNotes>();
  std::shared_ptr<VaultContent> content = std::make_shared<VaultContent>();
  Ref<veldora::VdSession> session;
  Cls_Utils utils;
};

}  // namespace quintara::test
