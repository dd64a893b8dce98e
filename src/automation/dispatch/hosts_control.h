#pragma once

#include <cstdint>
#include <string>

#include "access/contracts/any_object.h"
#include "access/contracts/veldora.h"
#include "access/contracts/zorva.h"

namespace quintara::automation {

/// "QuintaraHosts.Control", the running object by which a script or a test prepares the embedded hosts of a process
/// and looks at what was asked of them. Creating one gives the running one, and starts nothing. Every failure tells its
/// reason; nothing was changed then.
///
/// Calls of it are no operations of the hosts: they pass no gate and no record.
class HostsControl : public AnyObject {
 public:
  // The hosts.
  /// What "Veldora.VdApplication" and "ZORVA.Application" are, for scripts that can't attach to running objects.
  virtual Ref<veldora::VdApplication> Vault() = 0;
  virtual Ref<zorva::Application> Cad() = 0;
  /// Puts a CAD host without documents in the place of the one that is served, whose objects fail from then on.
  virtual void StartCad() = 0;
  /// Serves the vault of `folder` in place of the one that is served, with this work directory; empty for the user's
  /// own. A folder that is no vault yet is made one, whose first user this is. The objects of the vault before go on
  /// serving those who hold them.
  virtual void OpenVault(const std::string& folder, const std::string& workFolder, const std::string& login,
                         const std::string& password) = 0;
  virtual std::string VaultFolder() = 0;
  virtual std::string WorkDirectory() = 0;
  virtual std::int32_t ProcessId() = 0;
  /// How many calls other programs have made of the hosts' objects so far.
  virtual std::int32_t Calls() = 0;
  /// Ends the process, after this call.
  virtual void Quit() = 0;

  // The vault.
  /// Brings in what `quintara import` split before: the path of a product or part file, beside which all files of the
  /// tree lie, or of a folder with the files of one tree. Gives a line for each object, "added", "revised" or
  /// "unchanged", its part number and its revision, parted by tabs. Fails for a STEP assembly.
  virtual std::string Import(const std::string& path) = 0;
  /// The newest revision of a part number, or the revision B of "NUT@B". Fails for none and for several.
  virtual Ref<veldora::VdObject> FindObject(const std::string& name) = 0;
  /// The named objects as the vault gives its selection to a command: names as in `FindObject`, parted by "|"; none
  /// for the empty text.
  virtual Ref<veldora::VdRecList> SelectedRecords(const std::string& names) = 0;
  /// Answers the vault's dialogs from now on by picking the object at an index, from 0; -1 dismisses them, -2 asks the
  /// user. One that has no such object is dismissed.
  virtual void AnswerDialogs(std::int32_t index) = 0;

  // The CAD host.
  /// Loads a component in design form (0), without it (1), or not at all (2).
  virtual void SetForm(const Ref<zorva::Product>& component, std::int32_t form) = 0;
  /// Saves the active document under a path, or with the empty one where it was saved before, for a new one in the
  /// work directory under its part number. Gives the path.
  virtual std::string Save(const std::string& path) = 0;
  /// From now on `Documents.Add` gives nothing, and the new document appears during the n-th sleep, from 1. Each call
  /// of `NoteSleep` is one, and so are 50 milliseconds.
  virtual void AddDuringSleep(std::int32_t n) = 0;
  virtual void NoteSleep() = 0;
  /// How often the view was drawn again.
  virtual std::int32_t Redraws() = 0;
  /// Answers the questions of the CAD host with yes (1) or no (0) from now on; -2 asks the user.
  virtual void AnswerBoxes(std::int32_t answer) = 0;

  /// A line for each dialog and box that came up since the last call of this.
  virtual std::string ReadShown() = 0;

  // The gate that all operations pass.
  /// Makes the n-th operation from now on fail, once; n from 1.
  virtual void ArmGate(std::int32_t n) = 0;
  /// Makes each operation of a name, "VdObject.Retrieve", fail from its n-th on.
  virtual void ArmOperation(const std::string& name, std::int32_t n) = 0;
  /// Nothing fails or is recorded any more; the record stays readable.
  virtual void DisarmGate() = 0;
  /// Starts an empty record.
  virtual void ClearRecord() = 0;
  /// The operations since then, a line each: "Product.PartNumber", "Documents.Read(PATH)".
  virtual std::string ReadRecord() = 0;
  /// The process ends, without an answer, in the n-th call from now on that other programs make of a member:
  /// "Product.PartNumber", "PartNumber", or the empty text for any. Calls of this object don't count. 0 takes it back.
  virtual void EndInMidCall(const std::string& member, std::int32_t n) = 0;
};

}  // namespace quintara::automation
