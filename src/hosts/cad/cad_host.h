#pragma once

#include <functional>
#include <memory>
#include <string>

#include "access/contracts/file_system.h"
#include "access/contracts/geometry.h"
#include "access/contracts/zorva.h"
#include "base/ref.h"
#include "hosts/gate/gate.h"

namespace quintara {

namespace cad {
class Session;
}  // namespace cad

/// How a component is loaded: in design form; without it (its part number can't be read); or not
/// loaded at all (only its name and position are there).
enum class ComponentForm { kDesign, kWithoutDesign, kUnloaded };

/// The form in which a node is to be loaded. Given the path of instance names from the root,
/// parted by backslashes, without the root's own; the root itself is asked for by the empty text.
/// It is asked for every node of the tree, instances of one assembly each on their own, and what is
/// below a node that stays unloaded as well.
using FormChoice = std::function<ComponentForm(const std::string& instancePath)>;

/// The embedded CAD host: product documents as files of the work directory, behind the contract
/// of the CAD host. Every operation of the contract passes `gate`. One thread.
class CadHost {
 public:
  /// What the host needs of its surroundings.
  struct Surroundings {
    std::shared_ptr<Gate> gate;
    std::shared_ptr<FileContents> files;
    /// Asked about a file with a warning while `DisplayFileAlerts` is True; False gives up the
    /// loading, which then fails. Without it the answer is always True.
    std::function<bool(const std::string& warning)> ask;
  };

  explicit CadHost(Surroundings surroundings);
  ~CadHost();
  CadHost(const CadHost&) = delete;
  CadHost& operator=(const CadHost&) = delete;

  Ref<zorva::Application> Application();

  /// Makes `object` what `Application.GetItem(name)` gives; nothing is an item too.
  void RegisterItem(const std::string& name, const Ref<AnyObject>& object);

  /// A new active document that holds the tree of `structure`, never saved, without any file
  /// behind its parts. For generated trees.
  Ref<zorva::ProductDocument> Build(const AssemblyStructure& structure);
  /// `Documents.Open` with each node in the form that `form` gives for it.
  Ref<zorva::Document> Open(const std::string& path, const FormChoice& form);
  /// Brings one component into a form; what it holds below keeps its own. Where its file was missing
  /// until now, the other nodes that stand for the same child are loaded with it.
  void SetForm(const Ref<zorva::Product>& component, ComponentForm form);

  /// Writes a product document as a `.ZVAProduct` file, beside first and then in place of an old
  /// one, and gives it that name from then on. Files in the same folder are named without it.
  /// Fails, naming the file, and leaves it as it is, when it has changed since this document was
  /// opened from it, is the file of another open document or of a component, or is read-only.
  /// Instances of several contents of one file are all saved as instances of its newest one.
  void Save(const Ref<zorva::Document>& document, const std::string& path);

  /// From now on `Documents.Add` gives nothing, and the new document appears during the n-th sleep
  /// (from 1), as in a host that asks its user first.
  void AddDuringSleep(int n);
  /// To be called by the platform at each sleep.
  void NoteSleep();

  /// How often the view was drawn again, through the viewer, `RefreshDisplay` or a script.
  int Redraws() const;

 private:
  std::shared_ptr<cad::Session> session_;
};

/// Writes `structure` as one `.ZVAProduct` file for each assembly, named after its part number, in
/// `folder`. Parts are looked for beside it as `PART NUMBER.stp`. Children are written before what
/// holds them; existing files of these names are replaced, each in one step.
/// Fails before anything is written for a part number that can't be the name of a file.
void WriteProductFiles(const AssemblyStructure& structure, const std::string& folder, FileContents& files);

/// The part number that a file of the CAD host holds in itself: of a `.ZVAProduct`, `.stp`,
/// `.step` or `.lwt` file, by its content. Fails, naming `path`, for what can't be read.
std::string PartNumberOfFile(const std::string& path, FileContents& files);

}  // namespace quintara
