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

namespace excel {
class Application;
class Worksheet;
}  // namespace excel

namespace veldora {
class HIXEngine;
class VdAliasResults;
class VdApplication;
class VdClientContext;
class VdClientContextService;
class VdCommonGUI;
class VdGUIServices;
class VdObject;
class VdObjects;
class VdRecList;
class VdSession;
class VdSessionUtil;
class VdTranslator;
}  // namespace veldora

class FileSystemObject;

/// The common base of all objects of the host systems. Where the kind of an object is open, a
/// contract gives an `AnyObject`, and the conversions below tell what it is: an operation each,
/// which gives nothing when the object is of another kind. An object that hasn't one of the members
/// from `Name` to `Application` raises failure 438.
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
  /// A sub-object by its name; fails for a name that isn't known. Of the CAD host's session the
  /// result may be nothing: an item that is known, but not there. Of a document, its direct child
  /// added last that has this name, or this part number and is loaded in any form; else its root,
  /// if that is loaded and has this part number.
  virtual Ref<AnyObject> GetItem(const std::string& /*name*/) { ThrowNoSuchMember("GetItem"); }
  /// The session that the object belongs to.
  virtual Ref<zorva::Application> Application() { ThrowNoSuchMember("Application"); }

  virtual Ref<zorva::Application> AsApplication() { return nullptr; }
  virtual Ref<zorva::Document> AsDocument() { return nullptr; }
  virtual Ref<zorva::ProductDocument> AsProductDocument() { return nullptr; }
  virtual Ref<zorva::Product> AsProduct() { return nullptr; }
  virtual Ref<zorva::Products> AsProducts() { return nullptr; }
  virtual Ref<FileSystemObject> AsFileSystemObject() { return nullptr; }
  virtual Ref<excel::Application> AsSpreadsheetApplication() { return nullptr; }
  virtual Ref<excel::Worksheet> AsWorksheet() { return nullptr; }
  virtual Ref<veldora::HIXEngine> AsHIXEngine() { return nullptr; }
  virtual Ref<veldora::VdAliasResults> AsVdAliasResults() { return nullptr; }
  virtual Ref<veldora::VdApplication> AsVdApplication() { return nullptr; }
  virtual Ref<veldora::VdClientContext> AsVdClientContext() { return nullptr; }
  virtual Ref<veldora::VdClientContextService> AsVdClientContextService() { return nullptr; }
  virtual Ref<veldora::VdCommonGUI> AsVdCommonGUI() { return nullptr; }
  virtual Ref<veldora::VdGUIServices> AsVdGUIServices() { return nullptr; }
  virtual Ref<veldora::VdObject> AsVdObject() { return nullptr; }
  virtual Ref<veldora::VdObjects> AsVdObjects() { return nullptr; }
  virtual Ref<veldora::VdRecList> AsVdRecList() { return nullptr; }
  virtual Ref<veldora::VdSession> AsVdSession() { return nullptr; }
  virtual Ref<veldora::VdSessionUtil> AsVdSessionUtil() { return nullptr; }
  virtual Ref<veldora::VdTranslator> AsVdTranslator() { return nullptr; }

 protected:
  [[noreturn]] static void ThrowNoSuchMember(const char* member) {
    throw Failure(failure::kNoSuchMember,
                  "Object doesn't support this property or method: '" + std::string(member) + "'");
  }
};

}  // namespace quintara
