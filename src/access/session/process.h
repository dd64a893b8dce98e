#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "access/contracts/any_object.h"
#include "access/contracts/dialog.h"
#include "access/session/matrix_type.h"
#include "access/session/texts.h"
#include "base/counter16.h"
#include "base/ref.h"

namespace quintara {

class Cls_AdminSettings;
class Cls_Init;
class Cls_Utils;

/// A dialog that is loaded: whoever owns its rules, and its window.
struct LoadedDialog {
  std::shared_ptr<dialog::Events> owner;
  std::shared_ptr<dialog::View> view;
};

/// A light component that is offered for replacement by its latest revision.
struct ReplaceCandidate {
  std::string Key;  ///< its full name, the key of its node as well
  Ref<zorva::Product> Product;
  bool Replace = false;  ///< whether the user has ticked it
};

/// What the commands of a process share. Commands run one at a time, on one thread.
struct ProcessGlobals {
  // The sessions and services that the last start attached to.
  Ref<veldora::VdSession> gSession;
  Ref<zorva::Application> gZorva;
  Ref<veldora::HIXEngine> gHIX;
  Ref<veldora::VdSessionUtil> gSessionUtil;
  Ref<FileSystemObject> gFileSystem;
  std::string gWorkDirectory;
  std::string gLanguage;
  MatrixType gMatrixType = MatrixType::Excel;

  // Created at the first use by whoever needs them.
  std::shared_ptr<Cls_Init> gClsInit;
  std::shared_ptr<Cls_Utils> gClsUtils;
  std::shared_ptr<Cls_AdminSettings> gClsAdminSettings;

  // Kept here a dialog lives until it is unloaded, whoever else holds it. The latest one is last.
  std::vector<LoadedDialog> gLoadedDialogs;

  // What a user chose in the vault, and what has become of the work in progress made of it.
  std::int32_t gCurrentObjectId = 0;
  std::int16_t gCurrentClassId = 0;
  bool gWIPCancelled = false;  ///< no finished one, so nothing is positioned
  std::string gWIPPartNumber;

  // Nodes of the review tree, 0 for none: where the last search ended and where the next one starts.
  int FoundNode = 0;
  int PreviousFoundNode = 0;

  // What the making of a work in progress leaves for its positioning.
  bool gAllInstancesRequested = false;  ///< a component for each instance of a part, not one for all
  bool gSkipPositioning = false;        ///< the whole product came in as one component: nothing to place

  // What the replacement by latest revisions offered last, numbered from 0. Entry 0 is always the root.
  std::vector<ReplaceCandidate> ReplaceCandidates;
  Counter16 ReplaceCandidateCount;

  // Settings of the section "COMMON".
  std::string gAttrPartNumber;
  std::string gAttrId;
  std::string gAttrDescription;
  std::string gClassDocuments;
  std::string gClassDocLink;
  std::string gFontName;
  std::int16_t gFontSize = -1;
  std::int16_t gFontCharset = -1;
  std::int16_t gFontBold = -1;
  std::int16_t gFontItalic = -1;

  // Settings of the section "QD". A list of classes has commas between the names.
  std::string gClassProducts;
  std::string gFirstClassProducts;
  std::string gClassParts;
  std::string gFirstClassParts;
  std::string gTreeViewSeparator;
  std::string gTreeView;
  std::vector<std::string> gTreeViewAttributes;

  // Names of attributes, each in the global of that name, from the first start on.
  std::string OBJECT_ID;
  std::string CLASS_ID;
  std::string REVISION;
  std::string STATE;
  std::string CAD_REF_FILE_NAME;
  std::string FILE_NAME;
  std::string FILE_TYPE;
  std::string VAULT_OBJECT_ID;
  std::string DIRECTORY;
  std::string OPERATION_ID;
  std::string TDM_FILE_ID;

  Texts texts;
};

/// The globals of this process. They live until it ends, without being destroyed: objects that end
/// with the process may still write to them.
ProcessGlobals& Process();

/// Unloads what dialogs are left, and puts all globals back to the state of a fresh process.
void ResetProcess();

}  // namespace quintara
