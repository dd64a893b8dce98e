#include "hosts/cad/session.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "base/text.h"
#include "hosts/cad/application.h"
#include "hosts/cad/file_loader.h"
#include "hosts/cad/form_walk.h"

namespace quintara::cad {

namespace fs = std::filesystem;

// Behind a link to a folder ".." is not the folder that the text tells.
std::string NormalPath(const std::string& path) {
  std::error_code error;
  auto absolute = fs::absolute(ToPath(path), error);
  if (error) absolute = ToPath(path);
  if (std::ranges::find(absolute, fs::path("..")) != absolute.end()) {
    const auto real = fs::weakly_canonical(absolute, error);
    if (!error) absolute = real;
  }
  return FromPath(absolute.lexically_normal());
}

// Windows knows a file under any capitals.
std::string KeyOf(const std::string& path) {
#ifdef _WIN32
  return Capitals(path);
#else
  return path;
#endif
}

bool IsSameFile(const std::string& path, const std::string& other) {
  if (path.empty() || other.empty()) return false;
  std::error_code ignored;
  return KeyOf(path) == KeyOf(other) || fs::equivalent(ToPath(path), ToPath(other), ignored);
}

Session::Session(CadHost::Surroundings surroundings) : surroundings_(std::move(surroundings)) {
  if (!surroundings_.files) throw Failure(failure::kObjectNotSet, "The CAD host needs files to work on");
  if (!surroundings_.gate) surroundings_.gate = std::make_shared<Gate>();
}

std::shared_ptr<Session> Session::Start(CadHost::Surroundings surroundings) {
  std::shared_ptr<Session> session(new Session(std::move(surroundings)));
  auto life = std::make_shared<Life>();
  life->gate = session->surroundings_.gate;
  life->session = session;
  session->application_ = std::make_shared<ApplicationObject>(std::move(life));
  return session;
}

Session::~Session() = default;

Ref<zorva::Application> Session::TheApplication() const {
  return Ref<zorva::Application>(application_);
}

Ref<AnyObject> Session::DocumentsOfApplication() const {
  return application_->TheDocuments();
}

DocumentObject& Session::ActiveDocument() {
  if (activated_.empty()) throw Failure(failure::kObjectNotSet, "No document is active");
  return *DocumentOf(*activated_.back());
}

std::shared_ptr<DocumentObject> Session::Add() {
  if (addDelay_ > 0) {
    pendingAdds_.push_back(addDelay_);
    return nullptr;
  }
  auto number = "Product" + std::to_string(++productNumber_);
  return OpenNew(std::make_shared<Definition>(Definition::Kind::kAssembly, std::move(number)));
}

std::shared_ptr<DocumentObject> Session::OpenNew(const std::shared_ptr<Definition>& definition) {
  ++links_;
  NoteOpen(*definition, true);
  return DocumentOf(*definition);
}

std::shared_ptr<DocumentObject> Session::Read(const std::string& path) {
  const auto definition = Load({path}).front();
  NoteOpen(*definition, false);
  return DocumentOf(*definition);
}

std::shared_ptr<DocumentObject> Session::Open(const std::string& path, const FormChoice& form) {
  const auto definition = Load({path}).front();
  auto document = DocumentOf(*definition);
  if (form) ChooseForms(*document->Root(), form);
  NoteOpen(*definition, true);
  return document;
}

void Session::NoteOpen(Definition& definition, bool activate) {
  auto shared = definition.shared_from_this();
  if (std::ranges::find(open_, shared) == open_.end()) open_.push_back(std::move(shared));
  if (!activate) return;
  std::erase(activated_, &definition);
  activated_.push_back(&definition);
}

void Session::Close(Definition& definition) {
  const auto kept = definition.shared_from_this();
  std::erase(activated_, &definition);
  std::erase(open_, kept);
  if (kept->document) std::exchange(kept->document, nullptr)->Detach();
}

const std::shared_ptr<DocumentObject>& Session::DocumentOf(Definition& definition) {
  if (!definition.document) {
    definition.document = DocumentObject::Make(definition, surroundings_.gate, weak_from_this());
  }
  return definition.document;
}

void Session::AddDuringSleep(int n) {
  if (n < 1) throw Failure(failure::kInvalidCall, "Sleeps are counted from 1, not " + std::to_string(n));
  addDelay_ = n;
}

void Session::NoteSleep() {
  for (int& left : pendingAdds_) --left;
  const auto due = std::erase_if(pendingAdds_, [](int left) { return left <= 0; });
  const int delay = std::exchange(addDelay_, 0);
  for (std::size_t i = 0; i < due; ++i) Add();
  addDelay_ = delay;
}

namespace {

void RequireAssembly(const Definition& parent) {
  if (parent.TheKind() == Definition::Kind::kAssembly) return;
  throw Failure(failure::kInvalidCall, "\"" + parent.partNumber + "\" is a part, it can't hold components");
}

bool HasMissing(const Definition& holder) {
  return std::ranges::any_of(
      holder.Children(), [](const auto* child) { return child->definition->TheKind() == Definition::Kind::kMissing; });
}

}  // namespace

Session::Definitions Session::Load(const std::vector<std::string>& paths) {
  return Load(paths, nullptr);
}

Session::Definitions Session::LoadInto(const Definition& parent, const std::vector<std::string>& paths) {
  RequireAssembly(parent);
  return Load(paths, &parent);
}

Session::Definitions Session::Load(const std::vector<std::string>& paths, const Definition* parent) {
  FileLoader loader(*this);
  auto loaded = loader.Load(paths);
  if (loader.HasNew()) ++links_;
  if (parent != nullptr) {
    for (const auto& definition : loaded) RequireNoCycle(*definition, *parent);
  }
  loader.Ask();
  loader.Enter();
  const auto arrivals = ArrivalsBelow(loaded);
  loader.MergeProperties();
  for (const auto& [child, found] : arrivals) {
    const bool goesRound = found->Holds(*child->owner) || (parent != nullptr && found->Holds(*parent));
    if (!goesRound) Definition::Adopt(*child, found);
  }
  if (!arrivals.empty()) ++links_;
  return loaded;
}

std::vector<Session::Arrival> Session::ArrivalsBelow(const Definitions& loaded) {
  std::erase_if(incomplete_, [](const auto& each) {
    const auto holder = each.lock();
    return !holder || !HasMissing(*holder);
  });
  std::vector<Arrival> arrivals;
  const auto holders = incomplete_;
  for (const auto& each : holders) {
    const auto holder = each.lock();
    if (!std::ranges::any_of(loaded, [&](const auto& one) { return one->Holds(*holder); })) continue;
    for (auto* const child : holder->Children()) {
      if (child->definition->TheKind() != Definition::Kind::kMissing) continue;
      if (auto found = LoadIfPresent(child->definition->path)) arrivals.emplace_back(child, std::move(found));
    }
  }
  return arrivals;
}

std::shared_ptr<Definition> Session::LoadIfPresent(const std::string& path) {
  std::error_code ignored;
  if (!fs::exists(ToPath(path), ignored)) return nullptr;
  FileLoader loader(*this);
  auto found = loader.Load({path}).front();
  if (loader.HasNew()) ++links_;
  loader.Ask();
  loader.Enter();
  loader.MergeProperties();
  return found;
}

std::shared_ptr<Definition> Session::Find(const std::string& path, const ContentDigest& content) {
  const auto known = references_.find(KeyOf(path));
  if (known == references_.end()) return nullptr;
  std::erase_if(known->second, [](const auto& each) { return each.expired(); });
  for (const auto& each : known->second) {
    auto definition = each.lock();
    if (!definition || definition->content != content) continue;
    definition->found = ++contentsSeen_;
    return definition;
  }
  return nullptr;
}

void Session::Enter(const std::shared_ptr<Definition>& definition) {
  references_[KeyOf(definition->path)].push_back(definition);
  definition->found = ++contentsSeen_;
  ++links_;
}

void Session::RequireFreePath(const std::string& path) const {
  for (const auto& definition : open_) {
    if (!IsSameFile(definition->path, path)) continue;
    throw Failure(failure::kInvalidCall, "\"" + path + "\" is the file of another open document");
  }
}

void Session::Move(Definition& definition, const std::string& path, const ContentDigest& content) {
  const auto before = references_.find(KeyOf(definition.path));
  if (before != references_.end()) {
    std::erase_if(before->second, [&](const auto& each) { return each.lock().get() == &definition; });
  }
  definition.path = path;
  definition.content = content;
  Enter(definition.shared_from_this());
}

// Pasting one component many times asks the same again and again. A link below `parent` that was
// found harmless can't make its child hold `parent`, so such an answer stays true.
void Session::RequireNoCycle(const Definition& child, const Definition& parent) {
  const bool known = lastCheck_.child == &child && lastCheck_.parent == &parent && lastCheck_.links == links_;
  if (!known && child.Holds(parent)) {
    throw Failure(failure::kInvalidCall,
                  "\"" + child.partNumber + "\" can't be put into \"" + parent.partNumber + "\": it would hold itself");
  }
  lastCheck_ = {&child, &parent, known ? links_ : ++links_};
}

void Session::AskAbout(const std::string& path, const std::vector<std::string>& warnings) {
  if (!alerts || !surroundings_.ask) return;
  auto text = "\"" + path + "\":";
  for (const auto& warning : warnings) text += "\n" + warning;
  if (!surroundings_.ask(text)) throw Failure(failure::kInvalidCall, "The loading of \"" + path + "\" was given up");
}

void Session::SetForm(Occurrence& component, ComponentForm form) {
  auto& definition = component.TheDefinition();
  if (form != ComponentForm::kUnloaded && definition.TheKind() == Definition::Kind::kMissing) {
    auto& child = *component.TheInstance();
    Definition::Adopt(child, LoadInto(*child.owner, {definition.path}).front());
  }
  component.SetForm(form);
}

void Session::Copy(const std::vector<std::shared_ptr<Occurrence>>& sources) {
  std::vector<Clip> clips;
  for (const auto& source : sources) {
    Clip clip{{}, source->Form()};
    clip.source.definition = source->TheDefinition().shared_from_this();
    clip.source.position = source->Place();
    if (!source->IsRoot()) clip.source.properties = source->OwnProperties();
    clips.push_back(std::move(clip));
  }
  clipboard_ = std::move(clips);
}

void Session::Paste(Occurrence& target) {
  target.RequireLoaded();
  if (clipboard_.empty()) throw Failure(failure::kInvalidCall, "The clipboard is empty");
  auto& parent = target.TheDefinition();
  RequireAssembly(parent);
  for (const auto& clip : clipboard_) RequireNoCycle(*clip.source.definition, parent);
  for (const auto& clip : clipboard_) {
    auto instance = std::make_unique<Instance>(clip.source);
    instance->name = parent.FreeName(instance->definition->BaseName());
    parent.Append(std::move(instance));
    if (clip.form != ComponentForm::kDesign) target.ChildAt(parent.Children().size() - 1)->SetForm(clip.form);
  }
}

}  // namespace quintara::cad
