#pragma once

#include <memory>
#include <string>

#include "base/failure.h"
#include "base/ref.h"

namespace quintara {

namespace zorva {
class Application;
class Document;
class ProductDocument;
class Product;
class Products;
}  // namespace zorva

class FileSystemObject;

/// The common base of all objects of the host systems. Where the kind of an object is open, a
/// contract gives an `AnyObject`, and the conversions below tell what it is: an operation each,
/// which gives nothing when the object is of another kind. An object that has no such member
/// raises failure 438.
class AnyObject {
 public:
  AnyObject() = default;
  AnyObject(const AnyObject&) = delete;
  AnyObject& operator=(const AnyObject&) = delete;
  virtual ~AnyObject() = default;

  /// The instance name of a product, the file's name of a document, a part's name otherwise.
  virtual std::string Name() { ThrowNoSuchMember("Name"); }
  /// Renames the object. The empty text fails.
  virtual void SetName(const std::string& /*name*/) { ThrowNoSuchMember("Name"); }
  /// The owner one level up: of a reference product its document, of an instance the product
  /// above it.
  virtual Ref<AnyObject> Parent() { ThrowNoSuchMember("Parent"); }
  /// A sub-object by its name; fails for a name that isn't known.
  virtual Ref<AnyObject> GetItem(const std::string& /*name*/) { ThrowNoSuchMember("GetItem"); }
  /// The session that the object belongs to.
  virtual Ref<zorva::Application> Application() { ThrowNoSuchMember("Application"); }

  virtual Ref<zorva::Application> AsApplication() { return nullptr; }
  virtual Ref<zorva::Document> AsDocument() { return nullptr; }
  virtual Ref<zorva::ProductDocument> AsProductDocument() { return nullptr; }
  virtual Ref<zorva::Product> AsProduct() { return nullptr; }
  virtual Ref<zorva::Products> AsProducts() { return nullptr; }
  virtual Ref<FileSystemObject> AsFileSystemObject() { return nullptr; }

 protected:
  [[noreturn]] static void ThrowNoSuchMember(const char* member) {
    throw Failure(failure::kNoSuchMember, "Object doesn't support this property or method: '" + std::string(member) + "'");
  }
};

}  // namespace quintara
