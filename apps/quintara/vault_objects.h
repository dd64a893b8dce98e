#pragma once

#include <string>
#include <vector>

#include "access/contracts/veldora.h"
#include "hosts/vault/embedded_vault.h"
#include "views/console/text_table.h"

namespace quintara {

/// What `argument` may name in the vault: an object by its class and id ("2:14", "ZORVA Part:14"), the newest
/// revision of each product and part of a part number, or a part number, "@" and a revision ("NUT@B").
std::vector<IntegrationVault::Identity> ObjectsNamed(EmbeddedVault& vault, const std::string& argument);

/// The one object that `argument` names. Wrong use, telling what was looked for, when there is none, and,
/// listing them, when there are several.
Ref<veldora::VdObject> FindObject(EmbeddedVault& vault, const std::string& argument);

/// The object of an identity, or nothing.
Ref<veldora::VdObject> ObjectOf(EmbeddedVault& vault, const IntegrationVault::Identity& identity);

/// The session of the vault.
Ref<veldora::VdSession> SessionOf(EmbeddedVault& vault);

/// Every attribute of an object with its value.
TextTable AttributesOf(const Ref<veldora::VdObject>& object);
/// The state in words; with who has it, where it is checked out.
std::string StateText(const EmbeddedVault::Listed& object);
/// "2024-05-31 13:45", in UTC as the vault keeps it.
std::string TimeText(const std::string& timeStamp);
/// "2:14".
std::string IdentityText(const IntegrationVault::Identity& identity);

}  // namespace quintara
