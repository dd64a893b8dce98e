#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "hosts/cad/definition.h"
#include "hosts/cad/file_kind.h"
#include "hosts/cad/product_file.h"

namespace quintara::cad {

class Session;

/// Loads files and all that they hold, in one go: each distinct file is read once, and nothing of
/// the session is changed before `Enter`.
class FileLoader {
 public:
  explicit FileLoader(Session& session) : session_(session) {}

  /// Reads all files and makes references of the new ones, which the session doesn't know yet.
  std::vector<std::shared_ptr<Definition>> Load(const std::vector<std::string>& paths);
  bool HasNew() const noexcept { return !fresh_.empty(); }
  /// Asks about files with warnings; fails when one of them is given up.
  void Ask();
  /// Makes the new references known to the session.
  void Enter();
  /// Gives references what the new files hold of their properties; the last step, as it can't be
  /// taken back.
  void MergeProperties();

 private:
  struct File {
    std::string path;
    ContentDigest content;
    FileKind kind = FileKind::kStep;
    bool isMissing = false;
    ProductFile product;                     // of a new .ZVAProduct
    std::vector<std::size_t> components;     // of a new .ZVAProduct, as in `product`
    std::shared_ptr<Definition> definition;  // a known one from the start, else when all is read
    std::vector<bool> isUnnamed;             // its components, before they were mended
    std::vector<std::string> warnings;
  };

  std::size_t Place(const std::string& path);
  void Read(File& file, bool mayBeMissing);
  void PlaceComponents(std::size_t index);
  void RefuseCycles() const;
  void MakeDefinitions();
  void Link(File& file);

  Session& session_;
  std::deque<File> files_;
  std::unordered_map<std::string, std::size_t> places_;  // by the keys of their paths
  std::vector<std::size_t> fresh_;                       // files that make new references
};

}  // namespace quintara::cad
