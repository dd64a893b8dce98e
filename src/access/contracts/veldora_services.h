#pragma once

#include <cstdint>
#include <string>

#include "access/contracts/veldora_session.h"

/// The services that hang on a vault session, and the objects of configuration and texts that are
/// made by their program names.
namespace quintara::veldora {

/// Life-cycle operations and copies of files. A status is 0 when the operation went well.
class VdSessionUtil : public AnyObject {
 public:
  /// Whether the user may run the operation on this object now; `flag` is always 0.
  virtual bool CanPerform(const Ref<VdObject>& object, const Ref<VdOperation>& operation, int flag) = 0;
  /// `record` may be nothing. Gives the object to go on with.
  virtual Ref<VdObject> CheckOut(const Ref<VdObject>& object, const Ref<VdRecord>& record, bool invokeScripts) = 0;
  virtual int CheckIn(const Ref<VdObject>& object, const Ref<VdRecord>& record, bool invokeScripts) = 0;
  virtual int Release(const Ref<VdObject>& object, const Ref<VdRecord>& record, bool invokeScripts) = 0;
  /// Makes the next revision and gives it.
  virtual Ref<VdObject> NewRelease(const Ref<VdObject>& object, const Ref<VdRecord>& record, bool invokeScripts) = 0;
  virtual int Obsolete(const Ref<VdObject>& object, const Ref<VdRecord>& record, bool invokeScripts) = 0;
  /// Runs a named operation, its parameters in the last table; both tables may be nothing.
  virtual void RunOperation(const Ref<VdObject>& object, const Ref<VdOperation>& operation, bool flag,
                            const Ref<VdRecList>& rows, const Ref<VdRecList>& parameters) = 0;
  /// Copies one file out of the vault's store. A file that isn't there gives a status, no failure.
  virtual int CopyVaultFile(std::int32_t vaultObjectId, const std::string& vaultDirectory, const std::string& fileName,
                            const std::string& targetDirectory, const std::string& targetName) = 0;
  /// Copies a document's file; `flag` is always 0.
  virtual void CopyDocumentFile(const Ref<VdObject>& document, const std::string& targetName,
                                const std::string& targetDirectory, int flag) = 0;
};

class VdClientPaths : public AnyObject {
 public:
  virtual std::string CurrentKey() = 0;
  virtual std::string WorkDirectoryOf(const std::string& key) = 0;
};

class VdServiceContext : public AnyObject {
 public:
  virtual Ref<VdClientPaths> Paths() = 0;
};

class VdClientContextService : public AnyObject {
 public:
  virtual Ref<VdServiceContext> Context() = 0;
};

class VdDialogInput : public AnyObject {
 public:
  /// What the dialog shows: `VdObjects`, or the `VdAliasResults` of rows.
  virtual void SetObjects(const Ref<AnyObject>& objects) = 0;
};

class VdDialogOutput : public AnyObject {
 public:
  /// What the user picked; empty when nothing was.
  virtual Ref<VdObjects> Objects() = 0;
};

class VdDialogWindow : public AnyObject {
 public:
  virtual void SetTitle(const std::string& title) = 0;
  virtual void SetWindowOptionA(int value) = 0;
  virtual void SetWindowOptionB(int value) = 0;
  /// Shows the window and waits until the user is done with it.
  virtual void Show() = 0;
  /// 1 when the user confirmed.
  virtual int Result() = 0;
};

/// One of the vault's object dialogs.
class VdDialog : public AnyObject {
 public:
  virtual Ref<VdDialogInput> Input() = 0;
  virtual Ref<VdDialogOutput> Output() = 0;
  virtual Ref<VdDialogWindow> Window() = 0;
};

class VdDialogs : public AnyObject {
 public:
  /// Kind 1 lists objects and lets the user pick one.
  virtual Ref<VdDialog> New(int kind) = 0;
};

class VdCommonGUI : public AnyObject {
 public:
  virtual Ref<VdDialogs> Dialogs() = 0;
};

class VdGUIServices : public AnyObject {
 public:
  /// Kind 8 shows one object.
  virtual Ref<VdDialog> New(int kind) = 0;
};

/// Answers configuration values by URI and key.
class VdConfigProvider : public AnyObject {
 public:
  virtual Variant Value(const std::string& uri, const std::string& key) = 0;
};

/// Made by the program name "Veldora.VdClientContext".
class VdClientContext : public AnyObject {
 public:
  virtual Ref<VdConfigProvider> Open(const std::string& clientName, const std::string& databaseType,
                                     const std::string& applicationName, const std::string& uri,
                                     const std::string& reserved) = 0;
};

/// The source of texts, made by the program name "Veldora.VdTranslator".
class VdTranslator : public AnyObject {
 public:
  virtual void SetLanguage(const std::string& language) = 0;
  /// The text of a key. Fails for an unknown key, and for a file that is missing or broken. An empty
  /// key with an empty appendix only loads the file and gives the empty text.
  virtual std::string Translate(const std::string& nameSpace, const std::string& key, const std::string& appendix,
                                const std::string& version) = 0;
};

}  // namespace quintara::veldora
