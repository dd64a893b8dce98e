#pragma once

#include <functional>
#include <memory>
#include <string>

#include "base/xml.h"

namespace quintara {

/// The XML document of a matrix, on the files of the platform. Virtual so that a test can put
/// faults in the place of what never fails by itself.
class MatrixDocument {
 public:
  MatrixDocument() = default;
  MatrixDocument(const MatrixDocument&) = delete;
  MatrixDocument& operator=(const MatrixDocument&) = delete;
  virtual ~MatrixDocument() = default;

  /// Reads a file. False when it can't be read or isn't well-formed; `ParseError` tells why.
  virtual bool Load(const std::string& path);
  virtual XmlParseError ParseError() const { return error_; }

  /// Writes the whole document beside `path` first; only then is a file of that name tested for,
  /// deleted and replaced. A failure before the deletion leaves the old file as it was; one after
  /// it leaves the new file complete beside, and names it.
  virtual void Save(const std::string& path);

  /// The document node.
  XmlNode Node() const noexcept { return document_.Node(); }

 protected:
  /// Takes the content from memory.
  bool LoadBytes(const std::string& bytes);

 private:
  XmlDocument document_;
  XmlParseError error_;
};

using MatrixDocumentMaker = std::function<std::unique_ptr<MatrixDocument>()>;

}  // namespace quintara
