#pragma once

#include <string>

#include "access/contracts/zorva.h"
#include "hosts/cad/cad_host.h"

namespace quintara {

/// How much of a product is loaded: all of it; the root and what it holds itself, the rest staying unloaded; or the
/// root alone.
enum class Loaded { kAll, kChildren, kRoot };

/// The file of a product as the active document of the CAD host, closed at the end.
class OpenedProduct {
 public:
  OpenedProduct(CadHost& host, const std::string& path, Loaded loaded = Loaded::kAll);
  ~OpenedProduct();
  OpenedProduct(const OpenedProduct&) = delete;
  OpenedProduct& operator=(const OpenedProduct&) = delete;

 private:
  Ref<zorva::Document> document_;
};

}  // namespace quintara
