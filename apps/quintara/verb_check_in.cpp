#include "access/session/process.h"
#include "access/utils/Cls_Utils.h"
#include "access/utils/behaviors.h"
#include "base/file_names.h"
#include "matrix/Cls_GetMatrix.h"
#include "quintara/command_context.h"
#include "quintara/interruption.h"
#include "quintara/life_cycle_preview.h"
#include "quintara/light_renewal.h"
#include "quintara/object_arguments.h"
#include "quintara/opened_product.h"
#include "quintara/session_start.h"
#include "quintara/stored_matrix.h"
#include "quintara/vault_verbs.h"

namespace quintara {
namespace {

using veldora::VdObject;

struct Passage {
  const char* ofMatrix;        ///< the operation as the matrix command names it
  const char* name;            ///< as the life cycle does
  const char* vaultOperation;  ///< as the vault does
  const char* done;
};
constexpr Passage kCheckIn{"CheckIn", "CHECKIN", "CHECKIN", "checked in"};
constexpr Passage kRelease{"Release", "RELEASE", "APPROVE", "released"};

bool IsProduct(const Ref<VdObject>& object) {
  return Utils().IsCorrectClassID(Process().gSession, Process().gClassProducts, object->ClassId());
}

bool IsTheRoot(const Ref<VdObject>& object) {
  return Utils().IsTheRoot(Process().gSession, object, StructureBehavior(Process().gSession));
}

std::string FileOf(CommandContext& context, const Ref<VdObject>& object) {
  const auto name = object->Record()->ValueAsString(Process().CAD_REF_FILE_NAME);
  return name.empty() ? name : PathIn(context.WorkPath(), name);
}

// Only what the operation may store has a use for one: a working copy, not a copy of what can't be changed.
void RenewLight(CommandContext& context, const Ref<VdObject>& object, const Passage& passage) {
  const auto path = FileOf(context, object);
  const IntegrationVault::Identity self{object->ClassId(), object->ObjectId()};
  if (path.empty() || context.RequireVault().Integration().NotedObject(path) != self) return;
  const auto state = object->Record()->ValueAsInteger(Process().STATE);
  if (state == veldora::state::kCheckedIn || !CanPerform(object, passage.vaultOperation)) return;
  RenewLightOf(path, context.Host(), context.TheGeometry(), context.ProgressBarOn());
}

std::string TextOfMatrix(const Ref<VdObject>& object, const std::optional<StoredMatrix>& before) {
  const auto after = FindStoredMatrix(object);
  if (after == before && !IsTheRoot(object)) return "no matrix to write: another product holds " + Called(object);
  return after ? "matrix " + Called(*after) + ": " + ChangeText(before, after) : "no matrix was written";
}

// The vault's own operation, which leaves working copies as they are: what they hold is to be stored.
void BringProduct(const Ref<VdObject>& object) {
  const auto& process = Process();
  const auto operation = process.gSession->MetaInfo()->OperationByName("CopyFile");
  process.gSessionUtil->RunOperation(object, operation, true, nullptr, nullptr);
}

void WriteMatrix(CommandContext& context, const Ref<VdObject>& object, const Passage& passage, Loaded loaded) {
  const OpenedProduct product(context.Host(), FileOf(context, object), loaded);
  const auto before = FindStoredMatrix(object);
  Cls_GetMatrix().Run(passage.ofMatrix, object);
  context.Print(TextOfMatrix(object, before));
}

void Pass(CommandContext& context, const Ref<VdObject>& object, const Passage& passage, Loaded loaded) {
  const bool isProduct = IsProduct(object);
  ThrowIfInterrupted();
  if (isProduct) BringProduct(object);
  RenewLight(context, object, passage);
  ThrowIfInterrupted();
  if (isProduct) WriteMatrix(context, object, passage, loaded);
  ThrowIfInterrupted();
  if (!Utils().LifeCycleOperation(Process().gSession, object, passage.name)) return;
  context.Print(passage.done + (" " + Called(object)));
}

std::string PreviewOfMatrix(const Ref<VdObject>& object) {
  if (!IsProduct(object)) return {};
  if (!IsTheRoot(object)) return ", without a matrix, since another product holds it";
  const auto matrix = FindStoredMatrix(object);
  return matrix ? ", and on Yes its matrix updated: " + Called(*matrix) : ", and on Yes a matrix made for it";
}

void PassAll(CommandContext& context, const CheckInOptions& options, const Passage& passage) {
  StartSession(context);
  for (const auto& object : ObjectArguments(context, options.objects)) {
    if (options.dryRun) {
      PrintPreview(context, object, passage.vaultOperation, std::string("be ") + passage.done, PreviewOfMatrix(object));
    } else {
      Pass(context, object, passage, options.loaded);
    }
  }
}

}  // namespace

void RunCheckIn(CommandContext& context, const CheckInOptions& options) {
  PassAll(context, options, kCheckIn);
}

void RunRelease(CommandContext& context, const CheckInOptions& options) {
  PassAll(context, options, kRelease);
}

}  // namespace quintara
