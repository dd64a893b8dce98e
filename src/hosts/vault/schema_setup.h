#pragma once

#include "hosts/vault/database.h"
#include "hosts/vault/embedded_vault.h"

namespace quintara::vault {

/// Fills the tables of a new vault: classes with their tables, operations, masks, the first user, the
/// file types and the settings that are read at start. In a transaction.
void SetUpSchema(Database& database, const VaultPlan& plan);

/// The tables of the classes of assemblies, parts and documents.
inline constexpr auto kProductTable = "ZORVA_PRODUCT";
inline constexpr auto kPartTable = "ZORVA_PART";
inline constexpr auto kDocumentTable = "DOCUMENT";
inline constexpr auto kPartNumberAttribute = "NM_CN_PART_NUMBER";

}  // namespace quintara::vault
