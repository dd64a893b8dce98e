#include "access/session/process.h"
#include "access/session/the_platform.h"
#include "access/utils/messages.h"
#include "base/attempt.h"
#include "base/counter16.h"
#include "commands/Cls_InsertLWT.h"
#include "services/Cls_Init.h"
#include "services/frmProgressBar.h"
#include "wip/MainPanel.h"
#include "wip/node_tags.h"
#include "wip/tree_walk.h"

namespace quintara {
namespace {

constexpr int kNamedStages = 3;
constexpr int kPollInterval = 6000;  // milliseconds

bool Holds(const std::string& tag, const char* state) {
  return tag.find(state) != std::string::npos;
}

// Nothing stays nothing; a document of another kind can't be taken.
Ref<zorva::ProductDocument> AsWip(const Ref<AnyObject>& document) {
  if (!document) return nullptr;
  auto product = document->AsProductDocument();
  if (!product) throw Failure(failure::kTypeMismatch);
  return product;
}

}  // namespace

void MainPanel::cmdCreateWIP_Click() {
  ProgressDialog = std::make_shared<frmProgressBar>();
  ErrorState failure;
  bool finished = false;
  Attempt(failure, [&] { finished = CreateWIP(); });
  if (!finished) AbandonCreation(failure.description);
}

// What was made so far stays in the CAD host.
void MainPanel::AbandonCreation(const std::string& description) {
  ProgressDialog->Unload();
  Process().gSkipPositioning = false;
  Show(Process().texts.COMMON_UNEXPECTED_ERROR, box::kCriticalModal, "MainPanel.cmdCreateWIP_Click", description);
  Unload();
}

// False when it has to be abandoned without a failure.
bool MainPanel::CreateWIP() {
  if (!StartCommand()) return true;
  auto& globals = Process();
  TheView().SetEnabled("cmdCreateWIP", false);
  const Counter16 steps = nodes_.Count() + kNamedStages;
  ProgressDialog->Initiate(static_cast<std::int16_t>(int{steps}));
  const auto object = RootAgain();
  if (!object) {
    TellOfMissingObject();
    return true;
  }
  object->Retrieve();
  object->Refresh();
  ProgressDialog->IncrementBar("Retrieving Position Matrix...");
  const auto matrix = FindMatrix(object);
  ProgressDialog->IncrementBar("Compiling WIP Name...");
  globals.gWIPPartNumber = CompileName(matrix);
  if (HasTwin(globals.gWIPPartNumber)) {
    TellOfTwin();
    return true;
  }
  ProgressDialog->IncrementBar("Creating WIP Root...");
  if (!WaitForDocument()) {
    globals.gWIPCancelled = true;
    Close();
    return true;
  }
  const auto document = AsWip(globals.gZorva->ActiveDocument());
  if (!document) {
    Show(globals.texts.QD_FRMMAINPANEL_ERROR_INIT, box::kCriticalModal);
    return false;
  }
  MarkRoot(document->Product(), globals.gWIPPartNumber, matrix);
  InsertComponents();
  Close();
  return true;
}

// The panel goes, and the progress stays where it is.
void MainPanel::TellOfMissingObject() {
  Show(Process().texts.QD_FRMMAINPANEL_CANT_RETRIEVE_OBJECT, box::kCriticalModal);
  Hide();
  Unload();
}

// The panel stays, with all that the user chose, for another name.
void MainPanel::TellOfTwin() {
  ThePlatform().ShowBox("A WIP product with the same name already exists in ZORVA.", box::kCritical, "Quintara");
  ProgressDialog->Unload();
  TheView().SetEnabled("cmdCreateWIP", true);
}

void MainPanel::InsertComponents() {
  auto& globals = Process();
  if (nodes_.Tag(1) != node_tag::kProductNone) globals.gSkipPositioning = true;
  ProcessNode(1);
  globals.gAllInstancesRequested = false;
  if (TheView().IsChecked("GetAllInstances(0)")) globals.gAllInstancesRequested = true;
  globals.gWIPCancelled = false;
}

void MainPanel::Close() {
  ProgressDialog->Unload();
  Hide();
  Unload();
}

Ref<veldora::VdObject> MainPanel::RootAgain() {
  const auto& globals = Process();
  return OrElse(Ref<veldora::VdObject>(), [&] {
    return globals.gSession->ObjectStore()->ObjectById(globals.gCurrentClassId, globals.gCurrentObjectId);
  });
}

MainPanel::Matrix MainPanel::FindMatrix(const Ref<veldora::VdObject>& root) {
  auto& globals = Process();
  for (const auto type : {MatrixType::XML, MatrixType::Excel}) {
    if (const auto documents = Utils().GetLinkedDocs(globals.gSession, root, type)) return MatrixAmong(documents, type);
  }
  Show(globals.texts.QD_FRMMAINPANEL_NO_MATRIX_FOUND, box::kInformationModal);
  return {};
}

// A list that is there settles the type, empty or not.
MainPanel::Matrix MainPanel::MatrixAmong(const Ref<veldora::VdObjects>& documents, MatrixType type) {
  Matrix matrix{.type = type};
  if (const auto document = OneOf(documents)) {
    matrix.rootName = Utils().GetTheRootName(document);
    matrix.id = {document->ClassId(), document->ObjectId()};
  }
  return matrix;
}

Ref<veldora::VdObject> MainPanel::OneOf(const Ref<veldora::VdObjects>& documents) {
  auto& globals = Process();
  const int count = documents->Count();
  if (count == 1) return documents->Item(0);
  if (count == 0) {
    Show(globals.texts.QD_FRMMAINPANEL_NO_MATRIX_FOUND, box::kInformationModal);
    return nullptr;
  }
  Show(globals.texts.QD_FRMMAINPANEL_SEVERAL_MATRIX_FOUND, box::kInformationModal);
  auto picked = Utils().ChooseMatrix(globals.gSession, documents);
  picked->Retrieve();
  return picked;
}

std::string MainPanel::CompileName(const Matrix& matrix) {
  const auto text = TheView().Text("txtWIPName");
  return "WIP~~" + (text.empty() ? matrix.rootName : text);
}

// Without a document a new one is asked for, which the CAD host may give later, or not at all.
bool MainPanel::HasTwin(const std::string& name) {
  const auto& application = Process().gZorva;
  const auto document = Utils().HasActiveDocument(application) ? AsWip(application->ActiveDocument())
                                                               : AsWip(application->Documents()->Add("ZVAProduct"));
  if (!document) return false;
  const auto product = document->Product();
  return product && product->PartNumber() == name;
}

// The user names the new document in the CAD host, however long that takes. False when they won't.
bool MainPanel::WaitForDocument() {
  const auto& application = Process().gZorva;
  if (Utils().HasActiveDocument(application)) return true;
  const int button = ThePlatform().ShowBox("Please enter a part number in ZORVA", box::kOkCancel, "QNTR");
  if (button == answer::kCancel) return false;
  while (!Utils().HasActiveDocument(application)) ThePlatform().Sleep(kPollInterval);
  return true;
}

// What a work in progress remembers; the pair is written also where no matrix was found.
void MainPanel::MarkRoot(const Ref<zorva::Product>& root, const std::string& name, const Matrix& matrix) {
  const bool isXml = matrix.type == MatrixType::XML;
  auto& utils = Utils();
  root->SetPartNumber(name);
  utils.WriteStringProperty(root, "WIP", "TRUE");
  utils.WriteStringProperty(root, "From", "Quintara");
  utils.WriteStringProperty(root, isXml ? "DocXMLCID" : "DocExcelCID", std::to_string(matrix.id.classId));
  utils.WriteStringProperty(root, isXml ? "DocXMLOID" : "DocExcelOID", std::to_string(matrix.id.objectId));
}

// A node that is loaded itself stands for all that is below it.
void MainPanel::ProcessNode(int node) {
  for (int at = node; at != 0;) {
    ProcessComponent(at);
    at = Holds(nodes_.Tag(at), "none") ? NextBelow(nodes_, node, at) : NextBeside(nodes_, node, at);
  }
}

void MainPanel::ProcessComponent(int node) {
  const auto id = IdentityOf(node);
  const auto& tag = nodes_.Tag(node);
  const auto& texts = Process().texts;
  if (Holds(tag, "none")) {
    ProgressDialog->IncrementBar(Filled(texts.QD_FRMMAINPANEL_PROCESSING_SKIP_COMPONENT, nodes_.Text(node)));
  } else if (Holds(tag, "lwt")) {
    Insert(id, "LWT", Filled(texts.QD_FRMMAINPANEL_PROCESSING_INSERT_LWT, nodes_.Text(node)));
  } else if (Holds(tag, "doc")) {
    Insert(id, "PRODUCT", Filled(texts.QD_FRMMAINPANEL_PROCESSING_INSERT_DOCUMENT, nodes_.Text(node)));
  }
}

void MainPanel::Insert(const Identity& id, const std::string& mode, const std::string& progress) {
  const auto object = Process().gSession->ObjectStore()->ObjectById(id.classId, id.objectId);
  object->Retrieve();
  ProgressDialog->IncrementBar(progress);
  Cls_InsertLWT().Run(object, mode);
}

}  // namespace quintara
