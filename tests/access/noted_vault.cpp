#include "access/noted_vault.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace quintara::test {
namespace {

using veldora::VdObject;

template <class Kind>
std::string NameOf(const Ref<Kind>& object) {
  return object ? object->Name() : "nothing";
}

std::string TextOf(bool value) {
  return value ? "True" : "False";
}

// A text in quotes, so that it isn't taken for a number.
std::string TextOf(const Variant& value) {
  return value.IsText() ? "\"" + value.ToText() + "\"" : value.ToText();
}

class NotedOperation : public veldora::VdOperation {
 public:
  NotedOperation(std::string name, std::int32_t id) : name_(std::move(name)), id_(id) {}
  std::string Name() override { return name_; }
  std::int32_t OperationId() override { return id_; }

 private:
  std::string name_;
  std::int32_t id_;
};

class NotedMetaInfo : public testing::NiceMock<MockMetaInfo> {
 public:
  NotedMetaInfo(SharedNotes notes, std::shared_ptr<VaultContent> content)
      : notes_(std::move(notes)), content_(std::move(content)) {}

  Ref<veldora::VdClass> ClassByName(const std::string& name) override {
    notes_->Note("ClassByName(" + name + ")");
    return Known(content_->classes, name);
  }
  Ref<veldora::VdOperation> OperationByName(const std::string& name) override {
    notes_->Note("OperationByName(" + name + ")");
    const auto id = Known(content_->operations, name);
    return id == 0 ? Ref<veldora::VdOperation>() : MakeRef<NotedOperation>(name, id);
  }

 private:
  template <class Value>
  static Value Known(const std::map<std::string, Value>& known, const std::string& name) {
    const auto found = known.find(name);
    if (found == known.end()) throw Failure(failure::kInvalidCall, "no " + name);
    return found->second;
  }

  SharedNotes notes_;
  std::shared_ptr<VaultContent> content_;
};

class NotedBehavior : public veldora::VdBehavior {
 public:
  NotedBehavior(SharedNotes notes, std::string name) : notes_(std::move(notes)), name_(std::move(name)) {}

  std::string Name() override { return name_; }
  Ref<veldora::VdBehavior> Clone() override {
    notes_->Note(name_ + ".Clone");
    return MakeRef<NotedBehavior>(notes_, "a copy");
  }
  int OptionA() override { return 7; }
  int OptionC() override { return 7; }
  void SetOptionA(int value) override { Note("OptionA", std::to_string(value)); }
  void SetOptionB(int value) override { Note("OptionB", std::to_string(value)); }
  void SetOptionC(int value) override { Note("OptionC", std::to_string(value)); }
  void SetOptionD(bool value) override { Note("OptionD", TextOf(value)); }
  void SetOptionE(int value) override { Note("OptionE", std::to_string(value)); }

 private:
  void Note(const std::string& option, const std::string& value) { notes_->Note(name_ + "." + option + " = " + value); }

  SharedNotes notes_;
  std::string name_;
};

class NotedFrom : public veldora::VdQueryFrom {
 public:
  explicit NotedFrom(SharedNotes notes) : notes_(std::move(notes)) {}
  void Add(std::int16_t classId, const std::string& alias) override {
    notes_->Note("From.Add(" + std::to_string(classId) + ", " + alias + ")");
  }

 private:
  SharedNotes notes_;
};

class NotedSelect : public veldora::VdQuerySelect {
 public:
  explicit NotedSelect(SharedNotes notes) : notes_(std::move(notes)) {}
  void Add(const std::string& attribute, const std::string& alias, bool flag) override {
    notes_->Note("Select.Add(" + attribute + ", " + alias + ", " + TextOf(flag) + ")");
  }

 private:
  SharedNotes notes_;
};

class NotedWhere : public veldora::VdQueryWhere {
 public:
  NotedWhere(SharedNotes notes, std::shared_ptr<Variant> lastValue)
      : notes_(std::move(notes)), lastValue_(std::move(lastValue)) {}
  void Add(const std::string& connective, const std::string& attribute, const std::string& comparison,
           const Variant& value, int flag, const std::string& alias) override {
    notes_->Note("Where.Add(" + connective + ", " + attribute + ", " + comparison + ", " + TextOf(value) + ", " +
                 std::to_string(flag) + ", " + alias + ")");
    *lastValue_ = value;
  }

 private:
  SharedNotes notes_;
  std::shared_ptr<Variant> lastValue_;
};

class NotedDefinition : public veldora::VdQueryDefinition {
 public:
  NotedDefinition(SharedNotes notes, std::string name) : notes_(std::move(notes)), name_(std::move(name)) {}

  std::string Name() override { return name_; }
  Ref<veldora::VdQueryFrom> From() override { return MakeRef<NotedFrom>(notes_); }
  Ref<veldora::VdQuerySelect> Select() override { return MakeRef<NotedSelect>(notes_); }
  Ref<veldora::VdQueryWhere> Where() override { return MakeRef<NotedWhere>(notes_, lastValue); }

  /// The value of the condition that was added last.
  std::shared_ptr<Variant> lastValue = std::make_shared<Variant>();

 private:
  SharedNotes notes_;
  std::string name_;
};

class NotedAliasResults : public veldora::VdAliasResults {
 public:
  NotedAliasResults(SharedNotes notes, std::shared_ptr<VaultContent> content)
      : notes_(std::move(notes)), content_(std::move(content)) {}

  std::string Name() override { return "the results"; }
  Ref<veldora::VdObjects> ObjectsOf(const std::string& alias) override;

 private:
  SharedNotes notes_;
  std::shared_ptr<VaultContent> content_;
};

// The objects of an alias; their rows bear the ids that the vault's content tells.
class NotedSought : public NotedList {
 public:
  NotedSought(SharedNotes notes, std::shared_ptr<VaultContent> content)
      : NotedList(notes, "the sought"), notes_(std::move(notes)), content_(std::move(content)) {}

  Ref<veldora::VdRecList> Records() override {
    std::vector<Values> rows;
    for (const auto id : content_->sought) rows.push_back({{"S.OBJECT_ID", id}});
    return MakeRef<NotedTable>(notes_, rows);
  }

 private:
  SharedNotes notes_;
  std::shared_ptr<VaultContent> content_;
};

Ref<veldora::VdObjects> NotedAliasResults::ObjectsOf(const std::string& alias) {
  notes_->Note("ObjectsOf(" + alias + ")");
  return MakeRef<NotedSought>(notes_, content_);
}

}  // namespace

class NotedStore : public testing::NiceMock<MockObjectStore>, public std::enable_shared_from_this<NotedStore> {
 public:
  NotedStore(SharedNotes notes, std::shared_ptr<VaultContent> content)
      : notes_(std::move(notes)), content_(std::move(content)) {}

  Ref<VdObject> ObjectById(std::int16_t classId, std::int32_t objectId) override {
    notes_->Note("ObjectById(" + std::to_string(classId) + ", " + std::to_string(objectId) + ")");
    const auto found = content_->objects.find({classId, objectId});
    return found == content_->objects.end() ? nullptr : found->second;
  }
  Ref<VdObject> LinkObject(std::int16_t linkClass, std::int16_t firstClass, std::int32_t first,
                           std::int16_t secondClass, std::int32_t second) override {
    notes_->Note("LinkObject(" + std::to_string(linkClass) + ", " + std::to_string(firstClass) + ":" +
                 std::to_string(first) + ", " + std::to_string(secondClass) + ":" + std::to_string(second) + ")");
    return content_->link;
  }
  Ref<veldora::VdObjects> NewObjects() override {
    notes_->Note("NewObjects");
    return MakeRef<NotedList>(notes_, "list " + std::to_string(++lists_));
  }
  Ref<veldora::VdQuery> NewQuery() override;
  Ref<veldora::VdQueryDefinition> NewQueryDefinition() override {
    notes_->Note("NewQueryDefinition");
    return MakeRef<NotedDefinition>(notes_, "the definition");
  }
  Ref<veldora::VdAliasResults> ObjectsFromRecList(const Ref<veldora::VdRecList>& rows, int flag) override {
    notes_->Note("ObjectsFromRecList(" + NameOf(rows) + ", " + std::to_string(flag) + ")");
    return MakeRef<NotedAliasResults>(notes_, content_);
  }
  Ref<veldora::VdBehavior> DefaultBehavior() override { return MakeRef<NotedBehavior>(notes_, "the default"); }
  Ref<veldora::VdMasks> Masks() override;

 private:
  SharedNotes notes_;
  std::shared_ptr<VaultContent> content_;
  int lists_ = 0;
};

namespace {

class NotedQuery : public veldora::VdQuery {
 public:
  NotedQuery(SharedNotes notes, std::shared_ptr<VaultContent> content, Ref<veldora::VdObjectStore> store)
      : notes_(std::move(notes)), content_(std::move(content)), store_(std::move(store)) {}

  Ref<veldora::VdQueryDefinition> Definition() override { return definition_; }
  void RunLinkQuery() override {
    notes_->Note("RunLinkQuery");
    RunLinks();
  }
  void RunClassQuery() override {
    notes_->Note("RunClassQuery");
    const auto found = content_->fileTypes.find(definition_->lastValue->ToText());
    rows_ = found == content_->fileTypes.end() ? std::vector<Values>()
                                               : std::vector<Values>{{{"OBJECT_ID", found->second}}};
    count_ = static_cast<int>(rows_.size());
  }
  void RunWithBehavior(const Ref<veldora::VdBehavior>& behavior) override {
    notes_->Note("RunWithBehavior(" + NameOf(behavior) + ")");
    RunLinks();
  }
  int RecordCount() override { return count_; }
  Ref<veldora::VdRecList> Result() override { return MakeRef<NotedTable>(notes_, rows_); }
  Ref<veldora::VdObjectStore> ObjectStore() override { return store_; }

 private:
  void RunLinks() {
    rows_.clear();
    for (const auto id : content_->sought) rows_.push_back({{"S.OBJECT_ID", id}});
    count_ = content_->rowCount;
  }

  SharedNotes notes_;
  std::shared_ptr<VaultContent> content_;
  Ref<veldora::VdObjectStore> store_;
  Ref<NotedDefinition> definition_ = MakeRef<NotedDefinition>(notes_, "the query's definition");
  std::vector<Values> rows_;
  int count_ = 0;
};

class NotedMask : public veldora::VdMask {
 public:
  NotedMask(SharedNotes notes, std::string attribute, std::string next)
      : notes_(std::move(notes)), attribute_(std::move(attribute)), next_(std::move(next)) {}

  std::string NextValue() override {
    notes_->Note("NextValue(" + attribute_ + ")");
    return next_;
  }
  std::string FirstRevision() override {
    notes_->Note("FirstRevision(" + attribute_ + ")");
    return "A";
  }

 private:
  SharedNotes notes_;
  std::string attribute_, next_;
};

class NotedMasks : public veldora::VdMasks {
 public:
  NotedMasks(SharedNotes notes, std::shared_ptr<VaultContent> content)
      : notes_(std::move(notes)), content_(std::move(content)) {}

  Ref<veldora::VdMask> MaskOf(const Ref<veldora::VdAttribute>& attribute) override {
    notes_->Note("MaskOf(" + NameOf(attribute) + ")");
    const auto found = content_->masks.find(attribute->Name());
    if (found == content_->masks.end()) return nullptr;
    return MakeRef<NotedMask>(notes_, found->first, found->second);
  }

 private:
  SharedNotes notes_;
  std::shared_ptr<VaultContent> content_;
};

// The vault's dialog from which the user picks one of several objects.
class NotedGui : public veldora::VdCommonGUI, public std::enable_shared_from_this<NotedGui> {
 public:
  NotedGui(SharedNotes notes, std::shared_ptr<VaultContent> content)
      : notes_(std::move(notes)), content_(std::move(content)) {}

  Ref<veldora::VdDialogs> Dialogs() override { return MakeRef<TheDialogs>(*this); }
  Ref<veldora::VdCommonGUI> AsVdCommonGUI() override { return Ref<veldora::VdCommonGUI>(shared_from_this()); }

 private:
  class TheInput : public veldora::VdDialogInput {
   public:
    explicit TheInput(SharedNotes notes) : notes_(std::move(notes)) {}
    void SetObjects(const Ref<AnyObject>& objects) override { notes_->Note("Input.Objects = " + NameOf(objects)); }

   private:
    SharedNotes notes_;
  };
  class TheOutput : public veldora::VdDialogOutput {
   public:
    explicit TheOutput(NotedGui& gui) : gui_(gui) {}
    Ref<veldora::VdObjects> Objects() override {
      return MakeRef<NotedList>(gui_.notes_, "the picked", gui_.content_->dialog.picked);
    }

   private:
    NotedGui& gui_;
  };
  class TheWindow : public veldora::VdDialogWindow {
   public:
    explicit TheWindow(NotedGui& gui) : gui_(gui) {}
    void SetTitle(const std::string& title) override { gui_.notes_->Note("Title = " + title); }
    void SetWindowOptionA(int value) override { gui_.notes_->Note("WindowOptionA = " + std::to_string(value)); }
    void SetWindowOptionB(int value) override { gui_.notes_->Note("WindowOptionB = " + std::to_string(value)); }
    void Show() override { gui_.notes_->Note("Show"); }
    int Result() override {
      gui_.notes_->Note("Result");
      auto& results = gui_.content_->dialog.results;
      if (results.size() < 2) return results.empty() ? 0 : results.front();
      const int result = results.front();
      results.erase(results.begin());
      return result;
    }

   private:
    NotedGui& gui_;
  };
  class TheDialog : public veldora::VdDialog {
   public:
    explicit TheDialog(NotedGui& gui) : gui_(gui) {}
    Ref<veldora::VdDialogInput> Input() override { return MakeRef<TheInput>(gui_.notes_); }
    Ref<veldora::VdDialogOutput> Output() override { return MakeRef<TheOutput>(gui_); }
    Ref<veldora::VdDialogWindow> Window() override { return MakeRef<TheWindow>(gui_); }

   private:
    NotedGui& gui_;
  };
  class TheDialogs : public veldora::VdDialogs {
   public:
    explicit TheDialogs(NotedGui& gui) : gui_(gui) {}
    Ref<veldora::VdDialog> New(int kind) override {
      gui_.notes_->Note("Dialogs.New(" + std::to_string(kind) + ")");
      return MakeRef<TheDialog>(gui_);
    }

   private:
    NotedGui& gui_;
  };

  SharedNotes notes_;
  std::shared_ptr<VaultContent> content_;
};

class NotedSession : public testing::NiceMock<MockSession> {
 public:
  NotedSession(SharedNotes notes, std::shared_ptr<VaultContent> content)
      : notes_(notes),
        content_(content),
        metaInfo_(MakeRef<NotedMetaInfo>(notes, content)),
        store_(MakeRef<NotedStore>(notes, content)),
        gui_(MakeRef<NotedGui>(notes, content)) {}

  Ref<veldora::VdMetaInfo> MetaInfo() override { return metaInfo_; }
  Ref<veldora::VdObjectStore> ObjectStore() override { return store_; }
  Ref<AnyObject> GetService(const std::string& programName) override {
    notes_->Note("GetService(" + programName + ")");
    if (MatchesPattern("VdUtil.VdSessionUtil", programName)) return content_->util;
    if (MatchesPattern("VdGUISrv.VdCommonGUI", programName)) return gui_;
    return nullptr;
  }

 private:
  SharedNotes notes_;
  std::shared_ptr<VaultContent> content_;
  Ref<veldora::VdMetaInfo> metaInfo_;
  Ref<veldora::VdObjectStore> store_;
  Ref<NotedGui> gui_;
};

}  // namespace

void VaultNotes::Note(const std::string& call) {
  calls.push_back(call);
  if (onCall) onCall(call);
  if (!failing.empty() && call.starts_with(failing)) throw Failure(failure::kDeviceError, "cable");
}

Variant NotedRecord::Value(const std::string& attribute) {
  const auto found = values_->find(attribute);
  if (found == values_->end()) throw Failure(failure::kInvalidCall, name_ + " has no " + attribute);
  return found->second;
}

void NotedRecord::ValuateFromString(const std::string& attribute, const std::string& text) {
  notes_->Note(name_ + "." + attribute + " = " + text);
  (*values_)[attribute] = text;
}

Ref<veldora::VdRecord> NotedTable::GetRecord(int row) {
  if (row < 0 || row >= RecordCount()) throw Failure(failure::kSubscriptOutOfRange);
  return MakeRef<NotedRecord>(notes_, "row " + std::to_string(row),
                              std::make_shared<Values>(rows_[static_cast<std::size_t>(row)]));
}

void NotedTable::AddField(const std::string& name, int typeCode, int size) {
  notes_->Note("AddField(" + name + ", " + std::to_string(typeCode) + ", " + std::to_string(size) + ")");
}

int NotedTable::AddRow() {
  notes_->Note("AddRow");
  rows_.emplace_back();
  return RecordCount() - 1;
}

void NotedTable::SetValue(const std::string& field, int row, const Variant& value) {
  notes_->Note("SetValue(" + field + ", " + std::to_string(row) + ", " + TextOf(value) + ")");
}

Ref<veldora::VdAttribute> NotedAttributes::Item(const Variant& index) {
  const auto at = static_cast<std::size_t>(index.ToInteger32());
  if (at >= names_.size()) throw Failure(failure::kSubscriptOutOfRange);
  return MakeRef<NotedAttribute>(names_[at]);
}

Ref<VdObject> NotedList::Item(int index) {
  if (index < 0 || index >= Count()) throw Failure(failure::kSubscriptOutOfRange);
  return objects[static_cast<std::size_t>(index)];
}

Ref<veldora::VdRecList> NotedList::Records() {
  notes_->Note(name_ + ".Records");
  return MakeRef<NotedTable>(notes_, std::vector<Values>(objects.size()));
}

void NotedList::Add(const Ref<VdObject>& object) {
  notes_->Note(name_ + ".Add(" + NameOf(object) + ")");
  objects.push_back(object);
}

void NotedList::Remove(int index) {
  notes_->Note(name_ + ".Remove(" + std::to_string(index) + ")");
  objects.erase(objects.begin() + index);
}

void NotedList::SetAttributeNames(const std::string& names) {
  notes_->Note(name_ + ".SetAttributeNames(" + names + ")");
}

void NotedList::RetrieveAll() {
  notes_->Note(name_ + ".RetrieveAll");
}

Ref<VdObject> NotedObject::Clone() {
  Note("Clone");
  return clone ? clone : Itself();
}

Ref<VdObject> NotedObject::GetVersion(int kind) {
  Note("GetVersion(" + std::to_string(kind) + ")");
  return version ? version : Itself();
}

Ref<veldora::VdObjects> NotedObject::Parents(const Ref<veldora::VdQueryDefinition>& definition,
                                             const Ref<veldora::VdBehavior>& behavior) {
  Note("Parents(" + NameOf(definition) + ", " + NameOf(behavior) + ")");
  return MakeRef<NotedList>(notes_, "the parents", parents);
}

Ref<veldora::VdObjects> NotedObject::Children(const Ref<veldora::VdQueryDefinition>& definition) {
  Note("Children(" + NameOf(definition) + ")");
  return MakeRef<NotedList>(notes_, "the children", children);
}

Ref<veldora::VdObjects> NotedObject::ChildrenWithBehavior(const Ref<veldora::VdQueryDefinition>& definition,
                                                          const Ref<veldora::VdBehavior>& behavior) {
  Note("ChildrenWithBehavior(" + NameOf(definition) + ", " + NameOf(behavior) + ")");
  return MakeRef<NotedList>(notes_, "the children", children);
}

void NotedObject::CopyFileTo(const std::string& name, const std::string& directory) {
  Note("CopyFileTo(" + name + ", " + directory + ")");
}

void NotedUtil::NoteMove(const std::string& call, const Ref<VdObject>& object, const Ref<veldora::VdRecord>& record,
                         bool invokeScripts) {
  notes_->Note(call + "(" + NameOf(object) + ", " + NameOf(record) + ", " + TextOf(invokeScripts) + ")");
}

Ref<VdObject> NotedUtil::CheckOut(const Ref<VdObject>& object, const Ref<veldora::VdRecord>& record,
                                  bool invokeScripts) {
  NoteMove("CheckOut", object, record, invokeScripts);
  return object;
}

int NotedUtil::CheckIn(const Ref<VdObject>& object, const Ref<veldora::VdRecord>& record, bool invokeScripts) {
  NoteMove("CheckIn", object, record, invokeScripts);
  return 0;
}

int NotedUtil::Release(const Ref<VdObject>& object, const Ref<veldora::VdRecord>& record, bool invokeScripts) {
  NoteMove("Release", object, record, invokeScripts);
  return 0;
}

Ref<VdObject> NotedUtil::NewRelease(const Ref<VdObject>& object, const Ref<veldora::VdRecord>& record,
                                    bool invokeScripts) {
  NoteMove("NewRelease", object, record, invokeScripts);
  return object;
}

int NotedUtil::Obsolete(const Ref<VdObject>& object, const Ref<veldora::VdRecord>& record, bool invokeScripts) {
  NoteMove("Obsolete", object, record, invokeScripts);
  return 0;
}

void NotedUtil::RunOperation(const Ref<VdObject>& object, const Ref<veldora::VdOperation>& operation, bool flag,
                             const Ref<veldora::VdRecList>& rows, const Ref<veldora::VdRecList>& parameters) {
  notes_->Note("RunOperation(" + NameOf(object) + ", " + NameOf(operation) + ", " + TextOf(flag) + ", " + NameOf(rows) +
               ", " + NameOf(parameters) + ")");
}

int NotedUtil::CopyVaultFile(std::int32_t vaultObjectId, const std::string& vaultDirectory, const std::string& fileName,
                             const std::string& targetDirectory, const std::string& targetName) {
  notes_->Note("CopyVaultFile(" + std::to_string(vaultObjectId) + ", " + vaultDirectory + ", " + fileName + ", " +
               targetDirectory + ", " + targetName + ")");
  return 0;
}

void NotedUtil::CopyDocumentFile(const Ref<VdObject>& document, const std::string& targetName,
                                 const std::string& targetDirectory, int flag) {
  notes_->Note("CopyDocumentFile(" + NameOf(document) + ", " + targetName + ", " + targetDirectory + ", " +
               std::to_string(flag) + ")");
}

Ref<veldora::VdQuery> NotedStore::NewQuery() {
  notes_->Note("NewQuery");
  return MakeRef<NotedQuery>(notes_, content_, Ref<veldora::VdObjectStore>(shared_from_this()));
}

Ref<veldora::VdMasks> NotedStore::Masks() {
  return MakeRef<NotedMasks>(notes_, content_);
}

NotedVault::NotedVault() {
  for (const auto& [name, id] : std::map<std::string, std::int16_t>{
           {"ZORVA Product", 10}, {"Document", 20}, {"Document Link", 30}, {"FILE_TYPE", 40}}) {
    content->classes[name] = MakeRef<NotedClass>(id);
  }
  content->operations = {{"CHECKIN", 1},  {"APPROVE", 2},    {"FREEZE", 3},
                         {"CHECKOUT", 4}, {"NEWRELEASE", 5}, {"CopyFile", 77}};
  content->util = MakeRef<NotedUtil>(notes);
  session = MakeRef<NotedSession>(notes, content);
  auto& globals = Process();
  globals.gSession = session;
  globals.gSessionUtil = content->util;
}

Ref<NotedObject> NotedVault::NewObject(const std::string& name, std::int32_t objectId, std::int16_t classId) {
  const auto info =
      std::ranges::find_if(content->classes, [&](const auto& entry) { return entry.second->ClassId() == classId; });
  const auto object = MakeRef<NotedObject>(notes, name, info->second, objectId);
  content->objects[{classId, objectId}] = object;
  return object;
}

std::vector<std::string> NotedVault::CallsOf(const std::string& beginning) const {
  std::vector<std::string> found;
  std::ranges::copy_if(Calls(), std::back_inserter(found),
                       [&](const std::string& call) { return call.starts_with(beginning); });
  return found;
}

}  // namespace quintara::test
