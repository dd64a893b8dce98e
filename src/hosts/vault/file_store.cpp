#include "hosts/vault/file_store.h"

#include <filesystem>
#include <random>
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

std::string UniqueSuffix() {
  std::random_device chance;
  return "." + std::to_string(chance()) + std::to_string(chance());
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

FileStore::FileStore(std::string folder, FileContents& files) : folder_(std::move(folder)), files_(files) {}

void FileStore::Make() {
  MakeFolder(ToPath(folder_) / "objects");
  MakeFolder(ToPath(folder_) / "incoming");
}

std::string FileStore::PlaceOf(const std::string& sha256) const {
  return FromPath(ToPath(folder_) / "objects" / sha256.substr(0, 2) / sha256);
}

std::string FileStore::IncomingFolder() const {
  return FromPath(ToPath(folder_) / "incoming");
}

bool FileStore::Holds(const Content& content) {
  ErrorState ignored;
  std::string held;
  return Attempt(ignored, [&] { held = Read(content); });
}

FileStore::Content FileStore::Put(const std::string& bytes) {
  Content content{Sha256Text(bytes), static_cast<std::int64_t>(bytes.size())};
  // What is there already is read, so that a damaged file is made good by storing it again.
  if (pending_.contains(content.sha256) || Holds(content)) return content;
  const auto path = FromPath(ToPath(IncomingFolder()) / ToPath(content.sha256 + UniqueSuffix()));
  pending_[content.sha256] = path;
  files_.Write(path, bytes);
  return content;
}

// A reader may come between the commit and the move into place.
std::string FileStore::Found(const std::string& sha256) const {
  std::error_code ignored;
  const auto place = PlaceOf(sha256);
  if (const auto own = pending_.find(sha256); own != pending_.end()) return own->second;
  if (fs::exists(ToPath(place), ignored)) return place;
  for (const auto& file : FilesBelow(ToPath(IncomingFolder()))) {
    if (FromPath(file.filename()).starts_with(sha256)) return FromPath(file);
  }
  return place;
}

std::string FileStore::Read(const Content& content) {
  const auto path = Found(content.sha256);
  auto bytes = files_.Read(path);
  if (Sha256Text(bytes) == content.sha256 && std::cmp_equal(bytes.size(), content.size)) return bytes;
  throw Failure(failure::kInvalidFormat, "The file \"" + path + "\" of the vault's store is damaged");
}

bool FileStore::MoveIn(const std::string& sha256, const std::string& from) noexcept {
  ErrorState ignored;
  return Attempt(ignored, [&] {
    const auto place = PlaceOf(sha256);
    MakeFolder(ToPath(place).parent_path());
    files_.Rename(from, place);
  });
}

void FileStore::Publish(const IsReferred& isReferred) noexcept {
  ErrorState ignored;
  for (const auto& [sha256, path] : std::exchange(pending_, {})) {
    bool referred = true;
    Attempt(ignored, [&] { referred = isReferred(sha256); });
    // What can't be moved now stays readable where it is, and the next transaction moves it.
    if (referred) {
      MoveIn(sha256, path);
    } else {
      Remove(path);
    }
  }
}

void FileStore::Discard() noexcept {
  for (const auto& [sha256, path] : std::exchange(pending_, {})) Remove(path);
}

void FileStore::Recover(const IsReferred& isReferred) {
  for (const auto& file : FilesBelow(ToPath(IncomingFolder()))) {
    const auto name = FromPath(file.filename());
    const auto sha256 = name.substr(0, name.find('.'));
    const auto path = FromPath(file);
    // A half-written file may bear a digest that an older transaction committed.
    const bool complete = IsDigest(sha256) && isReferred(sha256) && Sha256Text(files_.Read(path)) == sha256;
    if (!complete) {
      Remove(path);
    } else {
      MoveIn(sha256, path);
    }
  }
}

std::vector<std::string> FileStore::Holdings() const {
  std::vector<std::string> digests;
  for (const auto& file : FilesBelow(ToPath(folder_) / "objects")) {
    if (const auto name = FromPath(file.filename()); IsDigest(name)) digests.push_back(name);
  }
  return digests;
}

std::vector<std::string> FileStore::Strangers() const {
  std::vector<std::string> paths;
  for (const auto& file : FilesBelow(ToPath(folder_))) {
    const auto name = FromPath(file.filename());
    const bool incoming = file.parent_path() == ToPath(IncomingFolder());
    if (incoming || !IsDigest(name) || FromPath(file) != PlaceOf(name)) paths.push_back(FromPath(file));
  }
  return paths;
}

}  // namespace quintara::vault
