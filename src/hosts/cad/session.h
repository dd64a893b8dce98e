#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "hosts/cad/cad_host.h"
#include "hosts/cad/definition.h"
#include "hosts/cad/document.h"
#include "hosts/cad/session_object.h"

namespace quintara::cad {

class ApplicationObject;
class DocumentsObject;

/// One running host: its documents, references, clipboard and switches.
class Session : public std::enable_shared_from_this<Session> {
 public:
  static std::shared_ptr<Session> Start(CadHost::Surroundings surroundings);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  Ref<zorva::Application> TheApplication() const;
  Ref<AnyObject> DocumentsOfApplication() const;
  FileContents& Files() const { return *surroundings_.files; }

  // Documents.
  int DocumentCount() const { return static_cast<int>(open_.size()); }
  /// Fails with none open.
  DocumentObject& ActiveDocument();
  /// A new document, or nothing while `AddDuringSleep` holds.
  std::shared_ptr<DocumentObject> Add();
  std::shared_ptr<DocumentObject> Read(const std::string& path);
  std::shared_ptr<DocumentObject> Open(const std::string& path, const FormChoice& form);
  /// Opens a definition without any file, and makes it active.
  std::shared_ptr<DocumentObject> OpenNew(const std::shared_ptr<Definition>& definition);
  void Close(Definition& definition);
  const std::shared_ptr<DocumentObject>& DocumentOf(Definition& definition);
  void AddDuringSleep(int n);
  void NoteSleep();

  // References.
  using Definitions = std::vector<std::shared_ptr<Definition>>;
  /// The references of files, all or none of them. Components of theirs whose files were missing
  /// before and are there now are loaded too.
  Definitions Load(const std::vector<std::string>& paths);
  /// The same for what is to be put into `parent`; fails, before anything is asked or changed, for
  /// what can't stand in it. To be followed by what it permits.
  Definitions LoadInto(const Definition& parent, const std::vector<std::string>& paths);
  std::shared_ptr<Definition> Find(const std::string& path, const ContentDigest& content);
  void Enter(const std::shared_ptr<Definition>& definition);
  /// Makes `definition` that of a file just written.
  void Move(Definition& definition, const std::string& path, const ContentDigest& content);
  /// Fails when a document is open under that path.
  void RequireFreePath(const std::string& path) const;
  /// Remembers that a component of `holder` is missing.
  void NoteIncomplete(const std::shared_ptr<Definition>& holder) { incomplete_.push_back(holder); }
  /// Asks about a file with warnings, unless alerts are off; fails when it is given up.
  void AskAbout(const std::string& path, const std::vector<std::string>& warnings);

  // Components.
  void SetForm(Occurrence& component, ComponentForm form);
  void Copy(const std::vector<std::shared_ptr<Occurrence>>& sources);
  void Paste(Occurrence& target);

  bool alerts = true;
  int redraws = 0;
  std::map<std::string, Ref<AnyObject>> items;

 private:
  struct Clip {
    Instance source;
    ComponentForm form;
  };
  struct Check {
    const Definition* child;
    const Definition* parent;
    std::uint64_t links;
  };

  explicit Session(CadHost::Surroundings surroundings);

  /// A missing component, by its place, and the reference of the file that is there now.
  using Arrival = std::pair<Instance*, std::shared_ptr<Definition>>;

  Definitions Load(const std::vector<std::string>& paths, const Definition* parent);
  std::vector<Arrival> ArrivalsBelow(const Definitions& loaded);
  std::shared_ptr<Definition> LoadIfPresent(const std::string& path);
  void RequireNoCycle(const Definition& child, const Definition& parent);
  void NoteOpen(Definition& definition, bool activate);

  CadHost::Surroundings surroundings_;
  std::shared_ptr<ApplicationObject> application_;
  std::vector<std::shared_ptr<Definition>> open_;
  std::vector<Definition*> activated_;
  std::unordered_map<std::string, std::vector<std::weak_ptr<Definition>>> references_;
  std::vector<std::weak_ptr<Definition>> incomplete_;
  std::vector<Clip> clipboard_;
  Check lastCheck_{};
  std::uint64_t links_ = 0;
  std::uint64_t contentsSeen_ = 0;
  int productNumber_ = 0;
  int addDelay_ = 0;
  std::vector<int> pendingAdds_;
};

/// `path` made absolute and normal: the one spelling under which a file is known.
std::string NormalPath(const std::string& path);
/// What two spellings of a normal path that differ in capitals have in common, where the platform ignores these.
std::string KeyOf(const std::string& path);
/// True when both lead to one file, be it through links. The empty path is no file.
bool IsSameFile(const std::string& path, const std::string& other);

}  // namespace quintara::cad
