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
/// the session is changed before all of them have been read and found good.
class FileLoader {
 public:
  explicit FileLoader(Session& session) : session_(session) {}

  std::vector<std::shared_ptr<Definition>> Load(const std::vector<std::string>& paths);

 private:
  struct File {
    std::string path;
    ContentDigest content;
    FileKind kind = FileKind::kStep;
    bool isMissing = false;
    ProductFile product;                     // of a new .ZVAProduct
    std::vector<std::size_t> components;     // of a new .ZVAProduct, as in `product`
    std::shared_ptr<Definition> definition;  // a known one from the start, else when all is read
    std::vector<std::string> warnings;
  };

  std::size_t Place(const std::string& path);
  void Read(File& file, bool mayBeMissing);
  void PlaceComponents(std::size_t index);
  void RefuseCycles() const;
  void Ask();
  void MakeDefinitions();
  void Link(File& file);

  Session& session_;
  std::deque<File> files_;
  std::unordered_map<std::string, std::size_t> places_;
  std::vector<std::size_t> fresh_;  // files that make new references
};

}  // namespace quintara::cad
