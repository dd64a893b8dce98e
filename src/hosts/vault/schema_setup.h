#pragma once

#include "hosts/vault/database.h"
#include "hosts/vault/embedded_vault.h"
#include "hosts/vault/schema.h"

namespace quintara::vault {

/// Fills the tables of a new vault: classes with their tables, operations, masks, the first user, the
/// file types and the settings that are read at start. In a transaction.
void SetUpSchema(Database& database, const VaultPlan& plan);

/// The tables of the classes of assemblies, parts and documents.
inline constexpr auto kProductTable = "ZORVA_PRODUCT";
inline constexpr auto kPartTable = "ZORVA_PART";
inline constexpr auto kDocumentTable = "DOCUMENT";
inline constexpr auto kPartNumberAttribute = "NM_CN_PART_NUMBER";

/// True for a class whose objects are products or parts, and no documents.
inline bool IsComponentClass(const ClassInfo& info) {
  return info.IsVersioned() && info.table != kDocumentTable;
}

}  // namespace quintara::vault
