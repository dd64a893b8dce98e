#pragma once

#include <string>

#include "access/contracts/veldora.h"
#include "access/session/matrix_type.h"
#include "base/ref.h"

/// The document that holds a matrix in the vault, as the generating command makes and changes it.
/// Failures go to the caller.
namespace quintara {

/// What a generated matrix is called.
struct MatrixFile {
  MatrixFile(const std::string& partNumber, MatrixType type);

  std::string title;     ///< of the document: the part number and " Matrix"
  std::string name;      ///< of the file: the title with its extension
  std::string path;      ///< in the work directory
  const char* fileType;  ///< the vault's name of the form
};

/// The session's own policy and two of its options, as they were when this was made.
class KeptOptions {
 public:
  explicit KeptOptions(const Ref<veldora::VdSession>& session);

  /// Sets them for the change of a matrix document's state, and back.
  void Change() const;
  void PutBack() const;

 private:
  Ref<veldora::VdBehavior> own_;
  int optionC_;
  int optionA_;
};

/// The states in which an object can be changed.
bool IsChangeable(int stateOfObject);

/// Deletes the local file of a matrix and gives its newest document in a form that can be changed: where
/// it is checked in, checked out; where it is released, as a new release. A refusal is shown, and the
/// vault asked all the same. Nothing if the document can't be changed in the end. The options are put
/// back in any case.
Ref<veldora::VdObject> PrepareMatrix(const Ref<veldora::VdObject>& matrix, const std::string& path,
                                     const KeptOptions& options);

/// Gives a document that can be changed the new file.
void UpdateMatrix(const Ref<veldora::VdObject>& document, const MatrixFile& file,
                  const Ref<veldora::VdBehavior>& behavior);

/// Adds a document with the file and links it to the product.
Ref<veldora::VdObject> AddMatrix(const Ref<veldora::VdObject>& product, const MatrixFile& file,
                                 const Ref<veldora::VdBehavior>& behavior);

}  // namespace quintara
