#pragma once

#include <memory>
#include <string>

#include "hosts/cad/definition.h"
#include "hosts/cad/occurrence.h"
#include "hosts/cad/selection.h"
#include "hosts/cad/session_object.h"

namespace quintara::cad {

/// The document of one definition, whatever its kind. The definition owns it, so that a reference
/// can always name its document; opening and closing is the session's affair.
class DocumentObject {
 public:
  /// A document of the kind that suits `definition`.
  static std::shared_ptr<DocumentObject> Make(Definition& definition, std::shared_ptr<Gate> gate,
                                              std::weak_ptr<Session> session);
  virtual ~DocumentObject() = default;
  DocumentObject(const DocumentObject&) = delete;
  DocumentObject& operator=(const DocumentObject&) = delete;

  virtual Ref<zorva::Document> AsContract() = 0;
  /// The object of `session` behind `document`; fails for nothing, a foreign and a closed one.
  static std::shared_ptr<DocumentObject> Of(const Ref<zorva::Document>& document, const Session& session);

  Definition& TheDefinition() const noexcept { return *definition_; }
  const std::shared_ptr<Occurrence>& Root();
  /// The file's name; of a document never saved the name that it would get.
  std::string FileName() const;
  /// Ends the document: whatever is held of it fails from then on.
  void Detach();

 protected:
  explicit DocumentObject(Definition& definition) : definition_(&definition) {}

  const std::shared_ptr<SelectionObject>& TheSelection();

  std::shared_ptr<Life> life_ = std::make_shared<Life>();

 private:
  Definition* definition_;
  std::shared_ptr<Occurrence> root_;
  std::shared_ptr<SelectionObject> selection_;
};

/// The name of a part number's document.
inline constexpr const char* kProductExtension = ".ZVAProduct";

}  // namespace quintara::cad
