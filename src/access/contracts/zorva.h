#pragma once

#include <span>
#include <string>
#include <vector>

#include "access/contracts/any_object.h"
#include "access/contracts/position_matrix.h"
#include "base/ref.h"

/// What the logic needs of the CAD host: one abstract class for each kind of object, with the
/// operations under the host's own names. Every operation may raise a Failure. Texts are UTF-8.
namespace quintara::zorva {

class Documents;
class Parameter;
class Parameters;
class Position;
class ScriptService;
class Selection;
class SelectedElement;
class Viewer;
class Window;

/// A collection; its items are numbered from 1.
class Collection : public AnyObject {
 public:
  virtual int Count() = 0;
};

/// The running session of the CAD host. `GetItem` gives the items that were registered with it.
class Application : public AnyObject {
 public:
  /// The open documents; never nothing on a live session.
  virtual Ref<zorva::Documents> Documents() = 0;
  /// The active document, of any kind. Fails, or gives nothing, when none is open.
  virtual Ref<AnyObject> ActiveDocument() = 0;
  /// The runner of macro projects, or nothing.
  virtual Ref<zorva::ScriptService> ScriptService() = 0;
  /// False stops the host's questions and warnings while files are loaded in bulk.
  virtual bool DisplayFileAlerts() = 0;
  virtual void SetDisplayFileAlerts(bool alerts) = 0;
  /// Writing True brings the screen up to date.
  virtual void SetRefreshDisplay(bool refresh) = 0;
  /// The window of the active document.
  virtual Ref<Window> ActiveWindow() = 0;
};

class Window : public AnyObject {
 public:
  virtual Ref<Viewer> ActiveViewer() = 0;
};

class Viewer : public AnyObject {
 public:
  /// Draws the view again.
  virtual void RefreshView() = 0;
};

class Documents : public Collection {
 public:
  /// A new, empty document of the kind `typeName` ("ZVAProduct"), made active. Some hosts ask
  /// their user first: they give nothing, and the document appears later.
  virtual Ref<Document> Add(const std::string& typeName) = 0;
  /// Opens a file for the user and makes it active, also when it is open already. Fails for a path
  /// that can't be read.
  virtual Ref<Document> Open(const std::string& fullPath) = 0;
  /// Loads a file only to get at its content; what is active stays so.
  virtual Ref<Document> Read(const std::string& fullPath) = 0;
};

/// One open file.
class Document : public AnyObject {
 public:
  virtual Ref<zorva::Selection> Selection() = 0;
  /// Closes the document; changes that weren't saved are lost. What is held of it fails from then on.
  virtual void Close() = 0;
  /// Folder and file name; empty for a document never saved.
  virtual std::string FullName() = 0;
};

/// A document that holds an assembly.
class ProductDocument : public Document {
 public:
  /// Its root.
  virtual Ref<zorva::Product> Product() = 0;
};

/// A node of an assembly: an instance under its parent, or the reference that instances share.
class Product : public AnyObject {
 public:
  /// The children; empty for a leaf.
  virtual Ref<zorva::Products> Products() = 0;
  /// Fails on a component that isn't loaded in design form.
  virtual std::string PartNumber() = 0;
  virtual void SetPartNumber(const std::string& partNumber) = 0;
  virtual Ref<zorva::Position> Position() = 0;
  /// The shared definition of an instance; of a reference, itself.
  virtual Ref<Product> Reference() = 0;
  /// All parameters, those of the instance before those of its reference.
  virtual Ref<zorva::Parameters> Parameters() = 0;
  /// The user properties; what is created here is found in `Parameters` afterwards.
  virtual Ref<zorva::Parameters> UserProperties() = 0;
  /// Computes a newly replaced product again.
  virtual void ApplyUpdate() = 0;
  /// 0 or 2 brings the component into the form in which its part number can be read, 1 sets it
  /// back. Any other mode fails.
  virtual void SetWorkMode(int mode) = 0;
};

/// The children of a product, in their order.
class Products : public Collection {
 public:
  /// The child at `index`, from 1. Fails past the end.
  virtual Ref<Product> Item(int index) = 0;
  /// Takes the child at `index`, from 1, away. Fails past the end. What was held of the child fails
  /// from then on.
  virtual void Remove(int index) = 0;
  /// Replaces one child by the content of a file and gives the new component. Index, position and
  /// instance name stay. `allInstances` is always False. Fails for what is no direct child and
  /// for a path that can't be read; nothing is changed then. What was held of the old component
  /// fails from then on.
  virtual Ref<Product> ReplaceWithFile(const Ref<Product>& component, const std::string& fullPath,
                                       bool allInstances) = 0;
  /// Appends one child for each file, at the identity. `typeFilter` is always "All". Fails, and
  /// changes nothing, when one of the paths can't be read.
  virtual void AddComponentsFromFiles(const std::vector<std::string>& fullPaths, const std::string& typeFilter) = 0;
};

/// Where an instance stands in its parent.
class Position : public AnyObject {
 public:
  /// Fills `components`, which must have twelve elements, in the order of `PositionMatrix`.
  virtual void GetComponents(std::span<double> components) = 0;
  /// Places the instance; `components` must be twelve finite numbers.
  virtual void SetComponents(std::span<const double> components) = 0;
};

class Parameters : public Collection {
 public:
  /// Fails for an unknown name.
  virtual Ref<Parameter> Item(const std::string& name) = 0;
  /// Adds a string parameter. Fails for the empty name and for one that is there already.
  virtual Ref<Parameter> CreateString(const std::string& name, const std::string& value) = 0;
};

class Parameter : public AnyObject {
 public:
  virtual std::string ValueAsString() = 0;
  virtual void ValuateFromString(const std::string& value) = 0;
};

/// What is selected in a document, and the road to the host's clipboard.
class Selection : public Collection {
 public:
  /// The entry at `index`, from 1. Fails past the end.
  virtual Ref<SelectedElement> Item(int index) = 0;
  /// A product, or the children collection of one.
  virtual void Add(const Ref<AnyObject>& object) = 0;
  virtual void Clear() = 0;
  /// Copies the selected objects to the clipboard.
  virtual void Copy() = 0;
  /// Pastes the clipboard into the selected object, at the end of its children.
  virtual void Paste() = 0;
};

class SelectedElement : public AnyObject {
 public:
  /// The selected object.
  virtual Ref<AnyObject> Value() = 0;
};

class ScriptService : public AnyObject {
 public:
  /// Runs one procedure of a macro project file; `libraryType` is always 2. Fails for a file, a
  /// type or a name that isn't known.
  virtual void ExecuteScript(const std::string& libraryPath, int libraryType, const std::string& moduleName,
                             const std::string& procedureName, const std::vector<std::string>& arguments) = 0;
};

}  // namespace quintara::zorva
