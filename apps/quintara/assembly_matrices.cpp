#include "quintara/assembly_matrices.h"

#include <filesystem>
#include <system_error>

#include "access/session/process.h"
#include "base/file_names.h"
#include "base/text.h"
#include "matrix/Cls_GetMatrix.h"
#include "quintara/documents.h"
#include "quintara/interruption.h"
#include "quintara/opened_product.h"
#include "quintara/stored_matrix.h"

namespace quintara {

AssemblyMatrices::~AssemblyMatrices() {
  std::error_code ignored;
  for (const auto& path : newFiles_) std::filesystem::remove(ToPath(path), ignored);
}

void AssemblyMatrices::Write(const StoredAssembly& assembly) {
  if (ofRootOnly_ && !assembly.isRoot) return;
  ThrowIfInterrupted();
  const auto partNumber = assembly.object->Record()->ValueAsString(Process().gAttrPartNumber);
  NoteFile(partNumber);
  const auto before = FindStoredMatrix(assembly.object);
  const OpenedProduct product(context_.Host(), assembly.file);
  Cls_GetMatrix().Run("CheckIn", assembly.object, true);
  const auto after = FindStoredMatrix(assembly.object);
  texts_[assembly.definition] = ChangeText(before, after);
  const bool isWip = partNumber.find(kWipPrefix) != std::string::npos;
  if (!after && !isWip) without_.push_back(partNumber);
}

void AssemblyMatrices::NoteFile(const std::string& partNumber) {
  auto path = PathIn(context_.WorkPath(), partNumber + " Matrix.xml");
  std::error_code error;
  const auto there = std::filesystem::symlink_status(ToPath(path), error);
  if (!std::filesystem::exists(there)) newFiles_.push_back(std::move(path));
}

void AssemblyMatrices::Keep() {
  newFiles_.clear();
  for (const auto& partNumber : without_) context_.Complain("no matrix was written for '" + partNumber + "'");
}

std::string AssemblyMatrices::TextOf(std::size_t definition) const {
  const auto found = texts_.find(definition);
  return found == texts_.end() ? std::string() : found->second;
}

}  // namespace quintara
