#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "commands/Cls_ReplaceByLatestLWT.h"
#include "matrix/matrix_fixture.h"
#include "services/running_hosts.h"
#include "services/tree_model.h"
#include "support/scripted_view.h"

namespace quintara::test {

/// Running hosts with an empty work in progress active, its components added one by one from the vault, and a user at
/// the dialog of newer revisions.
class ReplacementBench : public RunningHosts {
 public:
  ReplacementBench();

  /// Opens another one and makes it active, with these components, which come from no file.
  void GivenWip(const std::vector<Node>& unsaved = {});
  void GivenNoDocument();

  /// A checked-in object with a file and, unless told otherwise, a light one.
  Ref<veldora::VdObject> Add(const std::string& partNumber, const std::string& className = "ZORVA Part",
                             bool hasLight = true);
  /// Its next revision, which the text renames, with another light file.
  Ref<veldora::VdObject> NewRevision(const Ref<veldora::VdObject>& object, const std::string& revision = {});
  /// Of a part.
  void SetRevision(const Ref<veldora::VdObject>& object, const std::string& revision);

  /// A component of the work in progress with the stamps on its reference, or without any.
  Ref<zorva::Product> AddLight(const Ref<veldora::VdObject>& object);
  Ref<zorva::Product> AddDocumentOf(const Ref<veldora::VdObject>& object);
  static void Stamp(const Ref<zorva::Product>& component, const Ref<veldora::VdObject>& object);

  /// Runs the command; the user does this in the dialog, and then presses OK, if it is shown still.
  void RunWith(const UserScript& user = {});
  /// The same, with nobody to show the dialog to.
  void RunAlone() { Cls_ReplaceByLatestLWT().Run(); }
  /// What was shown since the last call of this.
  std::vector<Box> NewBoxes();

  /// The nodes of the dialog that is shown, a line each: two blanks for each level, the key, the text, the tag and, if
  /// it is another one, the picture.
  static std::vector<std::string> LinesOf(const ScriptedView& dialog);
  static const TreeModel& NodesOf(const ScriptedView& dialog);

  Ref<zorva::Product> Child(int index) { return root->Products()->Item(index); }
  std::vector<std::string> Names();
  static std::string Property(const Ref<zorva::Product>& component, const std::string& name);
  /// The object that a component's stamps lead to, as "class:object", and where it was loaded from.
  static std::string StampsOf(const Ref<zorva::Product>& component);
  static std::string IdOf(const Ref<veldora::VdObject>& object);
  static std::string FileOf(const Ref<zorva::Product>& component);
  /// "Key" or, where it is to be replaced, "Key!".
  static std::vector<std::string> Candidates();

  ScriptedDialogs desk{platform};
  Ref<zorva::Product> root;

 private:
  Ref<zorva::Product> AddFile(const std::string& path);

  std::ptrdiff_t boxesSeen_ = 0;
};

/// The box of a failure while the dialog is loaded.
Box LoadingFailed(const std::string& description);

}  // namespace quintara::test
