#pragma once

#include <cstdint>
#include <string>

#include "access/contracts/any_object.h"

namespace quintara::veldora {

/// The handle of a document that the vault knows.
class HIXDocument : public AnyObject {
 public:
  /// The document as it is open in the CAD host.
  virtual Ref<zorva::Document> Document() = 0;
};

/// The vault's integration engine in the CAD host, its item "HIXEngine".
class HIXEngine : public AnyObject {
 public:
  virtual bool IsConnected() = 0;
  virtual void Connect(const std::string& login, const std::string& password) = 0;
  virtual void Disconnect() = 0;
  /// The handle of a file by its full name; nothing for one that the vault doesn't know.
  virtual Ref<HIXDocument> DocumentInfo(const std::string& fullName) = 0;
  virtual std::int16_t DocumentClassId(const Ref<HIXDocument>& handle) = 0;
  virtual std::int32_t DocumentObjectId(const Ref<HIXDocument>& handle) = 0;
  /// The handle of a vault object.
  virtual Ref<HIXDocument> DocumentHandle(std::int16_t classId, std::int32_t objectId) = 0;
  /// The handle of a document that is open in the CAD host.
  virtual Ref<HIXDocument> DocumentHandleOf(const Ref<zorva::Document>& document) = 0;
  /// Checks the document and what it holds out to the latest revisions and opens it.
  virtual void CheckOutDocument(const Ref<HIXDocument>& handle) = 0;
  /// Stores what has changed.
  virtual void CommitStep1(const Ref<HIXDocument>& handle) = 0;
  /// Checks in what was taken.
  virtual void CommitStep2(const Ref<HIXDocument>& handle) = 0;
};

}  // namespace quintara::veldora
