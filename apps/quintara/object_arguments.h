#pragma once

#include <string>
#include <vector>

#include "access/contracts/veldora.h"
#include "quintara/command_context.h"

namespace quintara {

// These need a session, whose settings name the attributes.

/// The object of the vault that `argument` names: the one that a file which is there was copied from or stored as,
/// else as `FindObject` finds it. Wrong use for a file that the vault doesn't know.
Ref<veldora::VdObject> ObjectArgument(CommandContext& context, const std::string& argument);
/// All of them, before anything is done with one.
std::vector<Ref<veldora::VdObject>> ObjectArguments(CommandContext& context, const std::vector<std::string>& arguments);

/// The object as the only one that is selected in the vault.
Ref<veldora::VdRecList> SelectionOf(const Ref<veldora::VdObject>& object);

/// "'NUT' (revision B)": the part number, else the description, else the identity.
std::string Called(const Ref<veldora::VdObject>& object);

/// A row for each object, with what a user knows it by.
TextTable TableOf(const Ref<veldora::VdObjects>& objects);
/// The attributes that such a row shows, for `GetAllChildren` to read in one step.
std::string AttributesOfTable();

}  // namespace quintara
