#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
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
  std::string PlaceOf(const std::string& sha256) const;
  std::string IncomingFolder() const;
  bool Holds(const Content& content);
  std::string Found(const std::string& sha256) const;
  bool MoveIn(const std::string& sha256, const std::string& from) noexcept;

  std::string folder_;
  FileContents& files_;
  std::map<std::string, std::string> pending_;  ///< digest to the file in "incoming"
};

}  // namespace quintara::vault
