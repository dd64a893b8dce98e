#pragma once

#include <span>
#include <string>
#include <vector>

#include "hosts/vault/database.h"

namespace quintara::vault {

/// The statements that lead from one version of the tables to the next.
using Migration = std::vector<std::string>;

/// All migrations, in order: the first makes version 1 of an empty database.
std::span<const Migration> AllMigrations();

/// The version of the database's tables; 0 for an empty database.
int SchemaVersion(Database& database);

/// The same as `Migrate` of an empty database, in the transaction that is under way.
void MakeTables(Database& database);

/// Brings the tables up to date, in one transaction; nothing is done where they are. Fails for a
/// database that is newer than `migrations`, and changes nothing then.
void Migrate(Database& database, std::span<const Migration> migrations);

}  // namespace quintara::vault
