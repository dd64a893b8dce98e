#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "access/contracts/file_system.h"

namespace quintara::vault {

/// Bytes by content: a folder in which each content stands once, under its digest.
///
/// New bytes belong to a transaction of the database. They wait in "incoming", on the disk, until that
/// is committed and are then moved into their place. Whatever is cut off leaves only files there, which
/// the next transaction completes or removes.
class FileStore {
 public:
  struct Content {
    std::string sha256;
    std::int64_t size = 0;
  };
  /// Whether the database, as it is committed, refers to a digest.
  using IsReferred = std::function<bool(const std::string& sha256)>;

  FileStore(std::string folder, FileContents& files);

  /// Makes the folders of an empty store, where they are missing.
  void Make();

  /// Takes bytes in; only within a transaction of the database.
  Content Put(const std::string& bytes);
  /// The bytes of a content. Fails, naming the file, when they are missing or aren't what was stored.
  std::string Read(const Content& content);

  /// Brings what was taken in to the disk; to be called before the transaction is committed.
  void Sync();
  /// To be called when the transaction is committed.
  void Publish(const IsReferred& isReferred) noexcept;
  /// To be called before it is undone.
  void Discard() noexcept;
  /// To be called when it isn't known what became of it.
  void Leave() noexcept { pending_.clear(); }
  /// Clears what a transaction that was cut off left behind. Only while no other one runs.
  void Recover(const IsReferred& isReferred);

  /// The digests of all that the store holds.
  std::vector<std::string> Holdings() const;
  /// Files in the store's folders that aren't its own.
  std::vector<std::string> Strangers() const;

 private:
  std::string FolderOf(const std::string& sha256) const;
  std::string PlaceOf(const std::string& sha256) const;
  bool Holds(const Content& content);
  std::string Found(const std::string& sha256) const;
  void MoveIn(const std::vector<std::pair<std::string, std::string>>& digestsAndPaths) noexcept;

  std::string folder_;
  std::string objects_;   ///< folder of the contents
  std::string incoming_;  ///< folder of those that wait
  FileContents& files_;
  std::string mark_;  ///< stands behind the digest in the name of a file in "incoming", with a number
  int taken_ = 0;
  std::map<std::string, std::string> pending_;  ///< digest to the file in "incoming"
};

}  // namespace quintara::vault
