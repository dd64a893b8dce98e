#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "access/contracts/veldora.h"
#include "access/contracts/zorva.h"
#include "access/session/matrix_type.h"
#include "base/ref.h"
#include "services/form.h"
#include "services/tree_model.h"

namespace quintara {

class frmProgressBar;

/// The panel in which a user reviews the structure of a product, marks with the right button what is left out, loaded
/// as a light representation or as a document, and has a work in progress made of it. The structure is read while the
/// panel is loaded; failures then, and in its events, come out of `ShowModal`. What was made stands in the active
/// document of the CAD host; `gWIPCancelled` tells whether it is finished.
class MainPanel : public Form {
 public:
  MainPanel();

  /// The product, to be given once, before the panel is shown.
  void SetData(const Ref<veldora::VdObject>& object);

  void OnClick(const std::string& control) override;
  void OnMouseDown(const std::string& control, int button, int shift, int x, int y) override;
  void OnMouseUp(const std::string& control, int button) override;
  void OnResize() override;
  void OnTick(const std::string& timer) override;

 protected:
  dialog::Layout MakeLayout() const override;
  void OnLoad() override;

 private:
  friend class MainPanelInternals;  // the tests' way to the private operations

  /// The ids of the vault object that a node stands for.
  struct Identity {
    std::int16_t classId;
    std::int32_t objectId;
  };
  /// The children of an object while they are added below its node.
  struct Level;
  /// The matrix document of a product; zeros and the empty name where there is none.
  struct Matrix {
    MatrixType type = MatrixType::Excel;
    std::string rootName = {};
    Identity id = {};
  };

  // The panel.
  void ApplyCaptions();
  void cmdCancel_Click();
  void cmdFind_Click();

  // Its size; main_panel_layout.cpp.
  void ArrangeControls();
  bool HoldsMinimum();
  void Timer1_Timer();
  void StorePlace();
  void StoreGeometry();

  // The review tree; review_tree.cpp, node_states.cpp and object_information.cpp.
  void AddRoot();
  void BuildTree(const Ref<veldora::VdObject>& object, int node);
  int AddChild(const Ref<veldora::VdObject>& child, int parent);
  static std::string GetNodeKey(const Ref<veldora::VdObject>& object);
  void SplitNodeKey(int node, std::string& objectId, std::string& classId) const;
  Identity IdentityOf(int node) const;
  static std::string GetNodeText(const Ref<veldora::VdObject>& object);
  void SetState(int node, const std::string& tag);
  void Tree1_MouseDown(int button, int x, int y);
  void CycleNodeState(int node);
  void PropagateNodeState(int node, std::string& tag);
  void ExpandAll(bool expanded);
  void cmdShow_Click();
  static void ShowObjectInformation(const Ref<veldora::VdSession>& session, const Ref<veldora::VdObject>& object);

  // The creation; wip_creation.cpp.
  void cmdCreateWIP_Click();
  bool CreateWIP();
  void AbandonCreation(const std::string& description);
  void TellOfMissingObject();
  void TellOfTwin();
  void Close();
  static Ref<veldora::VdObject> RootAgain();
  static Matrix FindMatrix(const Ref<veldora::VdObject>& root);
  static Matrix MatrixAmong(const Ref<veldora::VdObjects>& documents, MatrixType type);
  static Ref<veldora::VdObject> OneOf(const Ref<veldora::VdObjects>& documents);
  std::string CompileName(const Matrix& matrix);
  static bool HasTwin(const std::string& name);
  static bool WaitForDocument();
  static void MarkRoot(const Ref<zorva::Product>& root, const std::string& name, const Matrix& matrix);
  void InsertComponents();
  void ProcessNode(int node);
  void ProcessComponent(int node);
  void Insert(const Identity& id, const std::string& mode, const std::string& progress);

  Ref<veldora::VdObject> RootObject;
  std::shared_ptr<frmProgressBar> ProgressDialog;  ///< of the creation that runs
  // Where the panel was and how large, when that was last looked at.
  std::int16_t SavedTop = 0;
  std::int16_t SavedLeft = 0;
  std::int16_t SavedWidth = 0;
  std::int16_t SavedHeight = 0;
  TreeModel nodes_;
};

}  // namespace quintara
