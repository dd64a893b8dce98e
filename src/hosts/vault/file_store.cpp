#include "hosts/vault/file_store.h"

#include <filesystem>
#include <random>
#include <set>
#include <system_error>
#include <utility>

#include "base/attempt.h"
#include "base/failure.h"
#include "base/text.h"
#include "hosts/vault/sha256.h"

namespace quintara::vault {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kDigestLength = 64;
constexpr char kSeparator = static_cast<char>(fs::path::preferred_separator);

// Told apart by chance, since other machines may put files into the same folder.
std::string UniqueMark() {
  std::random_device chance;
  return "." + std::to_string(chance()) + std::to_string(chance()) + "-";
}

void Remove(const std::string& path) noexcept {
  std::error_code ignored;
  fs::remove(ToPath(path), ignored);
}

void MakeFolder(const fs::path& path) {
  std::error_code error;
  fs::create_directories(path, error);
  if (error)
    throw Failure(failure::kPathAccess, "The folder \"" + FromPath(path) + "\" can't be made: " + error.message());
}

bool IsDigest(const std::string& name) {
  return name.size() == kDigestLength && name.find_first_not_of("0123456789abcdef") == name.npos;
}

std::vector<fs::path> FilesBelow(const fs::path& folder) {
  std::vector<fs::path> found;
  std::error_code error;
  for (auto at = fs::recursive_directory_iterator(folder, error); !error && at != fs::end(at); at.increment(error)) {
    if (!at->is_directory()) found.push_back(at->path());
  }
  return found;
}

}  // namespace

FileStore::FileStore(std::string folder, FileContents& files)
    : folder_(std::move(folder)),
      objects_(FromPath(ToPath(folder_) / "objects")),
      incoming_(FromPath(ToPath(folder_) / "incoming")),
      files_(files),
      mark_(UniqueMark()) {}

void FileStore::Make() {
  MakeFolder(ToPath(objects_));
  MakeFolder(ToPath(incoming_));
}

std::string FileStore::FolderOf(const std::string& sha256) const {
  return objects_ + kSeparator + sha256.substr(0, 2);
}

std::string FileStore::PlaceOf(const std::string& sha256) const {
  return FolderOf(sha256) + kSeparator + sha256;
}

bool FileStore::Holds(const Content& content) {
  ErrorState ignored;
  std::string held;
  // Not `Found`: looking through "incoming" for each new file would take longer with each of them.
  const auto place = PlaceOf(content.sha256);
  std::error_code error;
  if (!fs::exists(ToPath(place), error)) return false;
  return Attempt(ignored, [&] { held = files_.Read(place); }) && Sha256Text(held) == content.sha256;
}

FileStore::Content FileStore::Put(const std::string& bytes) {
  Content content{Sha256Text(bytes), static_cast<std::int64_t>(bytes.size())};
  // What is there already is read, so that a damaged file is made good by storing it again.
  if (pending_.contains(content.sha256) || Holds(content)) return content;
  const auto path = incoming_ + kSeparator + content.sha256 + mark_ + std::to_string(++taken_);
  files_.WriteUnsynced(path, bytes);
  pending_[content.sha256] = path;
  return content;
}

void FileStore::Sync() {
  std::vector<std::string> paths;
  for (const auto& [sha256, path] : pending_) paths.push_back(path);
  files_.SyncAll(paths);
}

// A reader may come between the commit and the move into place.
std::string FileStore::Found(const std::string& sha256) const {
  std::error_code ignored;
  const auto place = PlaceOf(sha256);
  if (const auto own = pending_.find(sha256); own != pending_.end()) return own->second;
  if (fs::exists(ToPath(place), ignored)) return place;
  for (const auto& file : FilesBelow(ToPath(incoming_))) {
    if (FromPath(file.filename()).starts_with(sha256)) return FromPath(file);
  }
  return place;
}

std::string FileStore::Read(const Content& content) {
  auto path = Found(content.sha256);
  std::string bytes;
  try {
    bytes = files_.Read(path);
  } catch (const Failure& failure) {
    // Whoever committed it may just have moved it into place.
    const auto place = PlaceOf(content.sha256);
    if (failure.Number() != failure::kFileNotFound || path == place) throw;
    path = place;
    bytes = files_.Read(path);
  }
  if (Sha256Text(bytes) == content.sha256 && std::cmp_equal(bytes.size(), content.size)) return bytes;
  throw Failure(failure::kInvalidFormat, "The file \"" + path + "\" of the vault's store is damaged");
}

void FileStore::MoveIn(const std::vector<std::pair<std::string, std::string>>& digestsAndPaths) noexcept {
  ErrorState ignored;
  std::set<std::string> folders;
  std::vector<FileContents::NewName> names;
  for (const auto& [sha256, path] : digestsAndPaths) {
    names.push_back({path, PlaceOf(sha256)});
    folders.insert(FolderOf(sha256));
  }
  for (const auto& folder : folders) Attempt(ignored, [&] { MakeFolder(ToPath(folder)); });
  Attempt(ignored, [&] { files_.RenameAll(names); });
}

void FileStore::Publish(const IsReferred& isReferred) noexcept {
  ErrorState ignored;
  std::vector<std::pair<std::string, std::string>> wanted;
  for (const auto& [sha256, path] : std::exchange(pending_, {})) {
    bool referred = true;
    Attempt(ignored, [&] { referred = isReferred(sha256); });
    if (referred) {
      wanted.emplace_back(sha256, path);
    } else {
      Remove(path);
    }
  }
  // What can't be moved now stays readable where it is, and the next transaction moves it.
  MoveIn(wanted);
}

void FileStore::Discard() noexcept {
  for (const auto& [sha256, path] : std::exchange(pending_, {})) Remove(path);
}

void FileStore::Recover(const IsReferred& isReferred) {
  std::vector<std::pair<std::string, std::string>> complete;
  for (const auto& file : FilesBelow(ToPath(incoming_))) {
    const auto name = FromPath(file.filename());
    const auto sha256 = name.substr(0, name.find('.'));
    const auto path = FromPath(file);
    try {
      // A half-written file may bear a digest that an older transaction committed.
      if (IsDigest(sha256) && isReferred(sha256) && Sha256Text(files_.Read(path)) == sha256) {
        complete.emplace_back(sha256, path);
      } else {
        Remove(path);
      }
    } catch (const Failure& failure) {
      // Whoever committed it before this transaction began is still moving into place what it stored.
      if (failure.Number() != failure::kFileNotFound) throw;
    }
  }
  MoveIn(complete);
}

std::vector<std::string> FileStore::Holdings() const {
  std::vector<std::string> digests;
  for (const auto& file : FilesBelow(ToPath(objects_))) {
    if (const auto name = FromPath(file.filename()); IsDigest(name)) digests.push_back(name);
  }
  return digests;
}

std::vector<std::string> FileStore::Strangers() const {
  std::vector<std::string> paths;
  for (const auto& file : FilesBelow(ToPath(folder_))) {
    const auto name = FromPath(file.filename());
    const bool incoming = file.parent_path() == ToPath(incoming_);
    if (incoming || !IsDigest(name) || FromPath(file) != PlaceOf(name)) paths.push_back(FromPath(file));
  }
  return paths;
}

}  // namespace quintara::vault
