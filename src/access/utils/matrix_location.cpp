#include <cstdint>
#include <string>
#include <vector>

#include "access/contracts/platform.h"
#include "access/contracts/veldora.h"
#include "access/session/process.h"
#include "access/session/the_platform.h"
#include "access/utils/Cls_Utils.h"
#include "access/utils/behaviors.h"
#include "access/utils/files.h"
#include "access/utils/messages.h"
#include "base/counter16.h"

namespace quintara {
namespace {

using veldora::VdObject;
using veldora::VdObjects;
using veldora::VdSession;

constexpr auto kMatrixWord = " Matrix";
constexpr int kModalQuestion = box::kYesNo + box::kQuestion + box::kSystemModal;

std::int16_t FileTypeOf(Cls_Utils& utils, const Ref<VdSession>& session, MatrixType type) {
  switch (type) {
    case MatrixType::Excel: return utils.IndiceFileType(session, "Microsoft Excel");
    case MatrixType::XML: return utils.IndiceFileType(session, "xml");
  }
  return 0;
}

// Empty for a type that isn't known.
std::string FileNameOf(const Ref<VdObject>& document, MatrixType type) {
  const auto description = document->Record()->ValueAsString(Process().gAttrDescription);
  switch (type) {
    case MatrixType::Excel: return description + ".xls";
    case MatrixType::XML: return description + ".xml";
  }
  return {};
}

// Seeks the documents of one class and file type that a product is linked to.
struct MatrixSearch {
  std::int16_t documentClass;
  std::int16_t fileType;
  std::string description;  ///< "*" stands for any text
};

Ref<veldora::VdQuery> QueryFor(const MatrixSearch& search, const Ref<VdSession>& session,
                               const Ref<VdObject>& product) {
  const auto& globals = Process();
  const auto query = session->ObjectStore()->NewQuery();
  const auto definition = query->Definition();
  const auto from = definition->From();
  from->Add(product->ClassId(), "F");
  from->Add(session->MetaInfo()->ClassByName(globals.gClassDocLink)->ClassId(), "L");
  from->Add(search.documentClass, "S");
  const auto select = definition->Select();
  select->Add(globals.gAttrDescription, "S", false);
  select->Add(globals.FILE_TYPE, "S", false);
  select->Add(globals.gAttrId, "F", false);
  select->Add(globals.OBJECT_ID, "F", false);
  const auto where = definition->Where();
  where->Add("", globals.gAttrId, "=", product->Record()->Value(globals.gAttrId), 0, "F");
  where->Add("", globals.OBJECT_ID, "=", product->ObjectId(), 0, "F");
  where->Add("", globals.gAttrDescription, "=", search.description, 0, "S");
  where->Add("", globals.FILE_TYPE, "=", search.fileType, 0, "S");
  return query;
}

Ref<VdObjects> DocumentsOf(const Ref<veldora::VdQuery>& query) {
  return query->ObjectStore()->ObjectsFromRecList(query->Result(), 0)->ObjectsOf("S");
}

Ref<VdObject> FirstOf(const Ref<VdObjects>& documents, const Ref<VdSession>& session, std::int16_t documentClass) {
  const auto row = documents->Records()->GetRecord(0);
  return session->ObjectStore()->ObjectById(documentClass, row->ValueAsInteger("S." + Process().OBJECT_ID));
}

// The matrices whose description names exactly this product.
struct OwnMatrices {
  std::int16_t documentClass;
  int count;
  Ref<VdObjects> documents;
};

OwnMatrices FindOwnMatrices(Cls_Utils& utils, const Ref<zorva::Product>& product, const Ref<VdObject>& object,
                            MatrixType type) {
  const auto& globals = Process();
  const auto& session = globals.gSession;
  MatrixSearch search{utils.IndiceClasse(session, globals.gClassDocuments), FileTypeOf(utils, session, type), {}};
  search.description = utils.GetThePartNumber(product) + kMatrixWord;
  const auto query = QueryFor(search, session, object);
  query->RunLinkQuery();
  const int count = query->RecordCount();
  return {search.documentClass, count, DocumentsOf(query)};
}

// An object whose parents are being walked.
struct Level {
  Ref<VdObject> object = nullptr;
  bool isOpen = false;
  Ref<VdObjects> parents = nullptr;
  int last = -1;
  int next = 0;
  bool hasProductAbove = false;
};

void Open(Level& level, const Ref<VdSession>& session, std::int16_t productClass,
          const Ref<veldora::VdBehavior>& behavior) {
  const auto& globals = Process();
  level.isOpen = true;
  const auto definition = session->ObjectStore()->NewQuery()->Definition();
  definition->From()->Add(productClass, "S");
  const auto select = definition->Select();
  for (const auto& attribute :
       {globals.gAttrDescription, globals.gAttrPartNumber, globals.FILE_NAME, globals.gAttrId, globals.OBJECT_ID}) {
    select->Add(attribute, "S", false);
  }
  level.parents = level.object->Parents(definition, behavior);
  if (level.parents) level.last = Counter16(level.parents->Count() - 1);
}

bool IsSameObject(const Ref<VdObject>& left, const Ref<VdObject>& right) {
  return left->ClassId() == right->ClassId() && left->ObjectId() == right->ObjectId();
}

void AddOnce(const Ref<VdObject>& document, const Ref<VdObjects>& documents) {
  const int count = documents->Count();
  for (const int i : Counting(0, count - 1)) {
    if (IsSameObject(documents->Item(i), document)) return;
  }
  documents->Add(document);
}

}  // namespace

Ref<VdObject> Cls_Utils::GetDocumentMatrixFromObject(const Ref<VdSession>& Session, const Ref<VdObject>& ZORVAProduct,
                                                     const Ref<veldora::VdBehavior>& Behavior,
                                                     MatrixType TypeOfMatrix) {
  // The label names another class than this one; users know it so.
  return Reported("Cls_Init.GetDocumentMatrixFromObject", box::kCritical, Ref<VdObject>(), [&]() -> Ref<VdObject> {
    const auto documentClass = IndiceClasse(Session, Process().gClassDocuments);
    const auto fileType = FileTypeOf(*this, Session, TypeOfMatrix);
    const auto query = QueryFor({documentClass, fileType, "*Matrix"}, Session, ZORVAProduct);
    query->RunWithBehavior(Behavior);
    const int count = query->RecordCount();
    const auto documents = DocumentsOf(query);
    if (count < 1) return nullptr;
    const auto linked = FirstOf(documents, Session, documentClass);
    linked->Retrieve();
    const auto last = LastVersion(linked);
    last->Retrieve();
    return last;
  });
}

Ref<VdObject> Cls_Utils::GetDocumentFromID(const Ref<VdSession>& Session, std::int16_t ClassID, std::int32_t ObjectID) {
  return OrElse(Ref<VdObject>(), [&]() -> Ref<VdObject> {
    const auto document = Session->ObjectStore()->ObjectById(ClassID, ObjectID);
    if (!document) return nullptr;
    document->Retrieve();
    const auto last = LastVersion(document);
    if (last) last->Retrieve();
    return last;
  });
}

std::int16_t Cls_Utils::CopyMatrixFromDocument(const Ref<VdSession>& Session, const Ref<VdObject>& DocExcel,
                                               MatrixType TypeOfMatrix) {
  return OrElse(std::int16_t{0}, [&] {
    const auto& folder = Process().gWorkDirectory;
    const auto util = Session->GetService("VdUtil.VdSessionUtil")->AsVdSessionUtil();
    const auto files = ThePlatform().FileSystem();
    DocExcel->Retrieve();
    const auto name = FileNameOf(DocExcel, TypeOfMatrix);
    if (!files->FolderExists(folder)) files->CreateFolder(folder);
    ClearedPath(*files, folder, name);
    util->CopyDocumentFile(DocExcel, name, folder, 0);
    return std::int16_t{1};
  });
}

Ref<VdObjects> Cls_Utils::GetLinkedDocs(const Ref<VdSession>& Session, const Ref<VdObject>& ZVAProduct,
                                        MatrixType TypeOfMatrix) {
  return OrElse(Ref<VdObjects>(), [&]() -> Ref<VdObjects> {
    const auto behavior = StructureBehavior(Session);
    const auto productClass = Session->MetaInfo()->ClassByName(Process().gFirstClassProducts)->ClassId();
    const auto documents = CollectRootMatrices(Session, ZVAProduct, productClass, behavior,
                                               Session->ObjectStore()->NewObjects(), TypeOfMatrix);
    return documents->Count() >= 1 ? documents : nullptr;
  });
}

// Depth first, on a stack of its own: a structure may be deeper than the thread's. A failure ends the
// level it comes up at and loses the list, while the levels below still finish their walk.
Ref<VdObjects> Cls_Utils::CollectRootMatrices(const Ref<VdSession>& Session, const Ref<VdObject>& Object,
                                              std::int16_t ProductClassId, const Ref<veldora::VdBehavior>& Behavior,
                                              Ref<VdObjects> Documents, MatrixType TypeOfMatrix) {
  std::vector<Level> levels{{Object}};
  while (!levels.empty()) {
    ErrorState failure;
    bool isDone = false;
    const bool wentWell = Attempt(failure, [&] {
      auto& level = levels.back();
      if (!level.isOpen) Open(level, Session, ProductClassId, Behavior);
      while (level.next <= level.last) {
        const auto parent = level.parents->Item(level.next++);
        if (parent->ClassId() != ProductClassId) continue;
        level.hasProductAbove = true;
        levels.push_back({parent});
        return;
      }
      isDone = true;
      if (level.hasProductAbove) return;
      const auto document = GetDocumentMatrixFromObject(Session, level.object, Behavior, TypeOfMatrix);
      if (document) AddOnce(document, Documents);
    });
    if (!wentWell) Documents = nullptr;
    if (!wentWell || isDone) levels.pop_back();
  }
  return Documents;
}

Ref<VdObject> Cls_Utils::ChooseMatrix(const Ref<VdSession>& Session, const Ref<VdObjects>& DocExcel) {
  return OrElse(Ref<VdObject>(), [&]() -> Ref<VdObject> {
    const auto dialog = Session->GetService("VdGUISrv.VdCommonGUI")->AsVdCommonGUI()->Dialogs()->New(1);
    dialog->Input()->SetObjects(Session->ObjectStore()->ObjectsFromRecList(DocExcel->Records(), 0));
    const auto window = dialog->Window();
    window->SetWindowOptionB(0);
    window->Show();
    if (window->Result() == 1) {
      const auto chosen = dialog->Output()->Objects()->Item(0)->Clone();
      chosen->Retrieve();
      return chosen;
    }
    // Read for the other answers that a dialog may give; all of them mean that nothing was chosen.
    window->Result();
    window->Result();
    return nullptr;
  });
}

bool Cls_Utils::IsMatrixAlreadyExist(const Ref<zorva::Product>& oZORVARoot, const Ref<VdObject>& oVDRoot,
                                     bool& bMatrixExists, bool& bMatrixToUpdate, Ref<VdObject>& oMatrix,
                                     MatrixType TypeOfMatrix, bool ForceYes) {
  auto& texts = Process().texts;
  const auto isAgreedTo = [&](auto& question) {
    return ForceYes || Show(question, kModalQuestion, GetThePartNumber(oZORVARoot)) == Variant(answer::kYes);
  };
  const auto found = FindOwnMatrices(*this, oZORVARoot, oVDRoot, TypeOfMatrix);
  bMatrixExists = found.count >= 1;
  if (!bMatrixExists) {
    bMatrixToUpdate = false;
    bMatrixToUpdate = isAgreedTo(texts.QD_UTILS_QUESTION_RECORD_POSITIONS);
    return false;
  }
  bMatrixToUpdate = isAgreedTo(texts.QD_UTILS_QUESTION_UPDATE_MATRIX);
  oMatrix = FirstOf(found.documents, Process().gSession, found.documentClass)->Clone();
  oMatrix->Retrieve();
  return false;
}

bool Cls_Utils::IsMatrixAlreadyExistAsInformation(const Ref<zorva::Product>& oZORVARoot, const Ref<VdObject>& oVDRoot,
                                                  MatrixType TypeOfMatrix) {
  return FindOwnMatrices(*this, oZORVARoot, oVDRoot, TypeOfMatrix).count > 0;
}

}  // namespace quintara
