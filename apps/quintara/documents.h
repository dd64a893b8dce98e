#pragma once

#include <string>

#include "access/contracts/zorva.h"
#include "base/ref.h"
#include "quintara/command_context.h"

namespace quintara {

/// What an argument that isn't the name of a file may be the part number of.
enum class Wanted {
  kProduct,  ///< a product, else the work in progress "WIP~~ARGUMENT"
  kWip,      ///< the work in progress "WIP~~ARGUMENT", else "ARGUMENT" itself
};

/// The start of the part number of each work in progress.
inline constexpr auto kWipPrefix = "WIP~~";

/// The absolute path of the file of that name, as given or in the work directory; empty for no such file.
std::string ExistingFile(const CommandContext& context, const std::string& argument);

/// The product document in the work directory of that part number; empty for none. Wrong use for several.
std::string DocumentOfPartNumber(CommandContext& context, const std::string& argument, Wanted wanted);

/// The absolute path of the file that `argument` names: a file as given or in the work directory,
/// else the product document in the work directory of that part number. Wrong use when there is
/// none, or several.
std::string FindDocument(CommandContext& context, const std::string& argument, Wanted wanted);

/// The same for a file that is no product document: it can't be named by a part number. `what`
/// tells of the file in the message.
std::string FindFile(CommandContext& context, const std::string& argument, const std::string& what);

/// Opens a product document and makes it active. Wrong use when the file holds something else.
Ref<zorva::ProductDocument> OpenProduct(CommandContext& context, const std::string& argument);

/// The same for a work in progress. Wrong use when the product doesn't bear the marks of one.
Ref<zorva::ProductDocument> OpenWip(CommandContext& context, const std::string& argument);

/// Saves a product document under the name that it has, unless nothing is to be saved; tells so.
void SaveChanges(CommandContext& context, const Ref<zorva::ProductDocument>& document, bool dryRun);

/// `path` as an absolute one, ready to be written. Fails when its folder isn't there, when it is a
/// folder itself, or when something of that name is there and `replace` is False.
std::string TargetPath(const std::string& path, bool replace);

/// The name of a file without its folder.
std::string FileName(const std::string& path);

}  // namespace quintara
