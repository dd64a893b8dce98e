#pragma once

#include <Message_ProgressRange.hxx>
#include <Standard_Failure.hxx>
#include <TCollection_ExtendedString.hxx>
#include <TDF_Label.hxx>
#include <TDocStd_Document.hxx>
#include <gp_Trsf.hxx>
#include <string>
#include <vector>

#include "access/contracts/geometry.h"
#include "base/failure.h"

namespace quintara {

/// UTF-8 to the text of the kernel, and back.
TCollection_ExtendedString ToKernelText(const std::string& utf8);
std::string FromKernelText(const TCollection_ExtendedString& text);

/// The name on a label; empty when it has none.
std::string NameOf(const TDF_Label& label);
void SetName(const TDF_Label& label, const std::string& name);

PositionMatrix ToPosition(const gp_Trsf& transformation);
/// The nearest movement without scaling; `position` is neither singular nor mirrored. The origin
/// stays exact.
gp_Trsf ToMovement(const PositionMatrix& position);

/// A document of the kernel, closed at the end.
class Document {
 public:
  /// A new, empty one.
  Document();
  /// One saved by `Save`. `name` stands for it in failures.
  Document(const std::string& path, const std::string& name);
  ~Document();
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  void Save(const std::string& path) const;
  const Handle(TDocStd_Document) & Get() const { return document_; }
  /// The shapes on the top level that no other one holds.
  std::vector<TDF_Label> FreeShapes() const;
  /// All on the top level, in the order in which they were added.
  std::vector<TDF_Label> Shapes() const;

 private:
  Handle(TDocStd_Document) document_;
};

/// Passes what the kernel tells of its work to `progress`, as the part of it from `from` to `to`.
class KernelProgress {
 public:
  KernelProgress(const Progress& progress, double from, double to, const std::string& what);

  Message_ProgressRange Range();

 private:
  Handle(Message_ProgressIndicator) indicator_;
};

/// Runs `body`; a failure of the kernel becomes one of ours, "<file>: <trouble> (<reason>)".
template <class Body>
auto Translated(const std::string& file, const std::string& trouble, Body&& body) {
  try {
    return body();
  } catch (const Standard_Failure& error) {
    const std::string reason = error.GetMessageString();
    const auto* kind = error.DynamicType()->Name();
    throw Failure(failure::kInvalidFormat, file + ": " + trouble + " (" + (reason.empty() ? kind : reason) + ")");
  }
}

}  // namespace quintara
