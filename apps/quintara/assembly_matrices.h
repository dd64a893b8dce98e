#pragma once

#include <map>
#include <string>
#include <vector>

#include "quintara/command_context.h"
#include "quintara/vault_import.h"

namespace quintara {

/// Writes the matrices of the assemblies that an import brings in, each just before its check-in, as the matrix
/// command does. Matrix files that this makes in the work directory go again unless `Keep` was called.
class AssemblyMatrices {
 public:
  /// It needs a session. `ofRootOnly`: those of the assemblies below it are left out.
  AssemblyMatrices(CommandContext& context, bool ofRootOnly) : context_(context), ofRootOnly_(ofRootOnly) {}
  ~AssemblyMatrices();
  AssemblyMatrices(const AssemblyMatrices&) = delete;
  AssemblyMatrices& operator=(const AssemblyMatrices&) = delete;

  void Write(const StoredAssembly& assembly);
  /// Complains about each assembly that got none, works in progress apart.
  void Keep();

  /// What became of the matrix of a definition: "created", "updated"; empty where there was none to write.
  std::string TextOf(std::size_t definition) const;
  bool WroteAny() const { return !texts_.empty(); }

 private:
  void NoteFile(const std::string& partNumber);

  CommandContext& context_;
  bool ofRootOnly_;
  std::map<std::size_t, std::string> texts_;
  std::vector<std::string> without_;   ///< part numbers
  std::vector<std::string> newFiles_;  ///< paths
};

}  // namespace quintara
