#include "hosts/vault/migrations.h"

#include "base/failure.h"

namespace quintara::vault {
namespace {

const Migration& TablesOfTheSchema() {
  static const Migration statements = {
      "CREATE TABLE vd_class (class_id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE, table_name TEXT NOT NULL, "
      "kind INTEGER NOT NULL)",
      "CREATE TABLE vd_attribute (class_id INTEGER NOT NULL REFERENCES vd_class, place INTEGER NOT NULL, "
      "name TEXT NOT NULL, is_integer INTEGER NOT NULL, size INTEGER NOT NULL, is_key INTEGER NOT NULL, "
      "PRIMARY KEY (class_id, place), UNIQUE (class_id, name))",
      "CREATE TABLE vd_operation (operation_id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE)",
      "CREATE TABLE vd_sequence (name TEXT PRIMARY KEY, next_value BIGINT NOT NULL)",
      "CREATE TABLE vd_mask (class_id INTEGER NOT NULL REFERENCES vd_class, attribute TEXT NOT NULL, "
      "sequence_name TEXT REFERENCES vd_sequence, width INTEGER NOT NULL, first_revision TEXT, "
      "PRIMARY KEY (class_id, attribute))",
      "CREATE TABLE vd_user (user_id INTEGER PRIMARY KEY, login TEXT NOT NULL UNIQUE, salt TEXT NOT NULL, "
      "password_hash TEXT NOT NULL)",
      // Operation 0 and class 0 stand for all of them.
      "CREATE TABLE vd_right (user_id INTEGER NOT NULL REFERENCES vd_user, operation_id INTEGER NOT NULL, "
      "class_id INTEGER NOT NULL, PRIMARY KEY (user_id, operation_id, class_id))",
      "CREATE TABLE vd_config (user_id INTEGER NOT NULL, path TEXT NOT NULL, value TEXT NOT NULL, "
      "PRIMARY KEY (user_id, path))",
  };
  return statements;
}

const Migration& TablesOfTheObjects() {
  static const Migration statements = {
      // One row for each content that was ever stored: a file and, beside it, its light representation.
      "CREATE TABLE vd_deposit (deposit_id INTEGER PRIMARY KEY, name TEXT NOT NULL, sha256 TEXT NOT NULL, "
      "size BIGINT NOT NULL, light_sha256 TEXT NOT NULL, light_size BIGINT NOT NULL, "
      "UNIQUE (sha256, name, light_sha256))",
      "CREATE INDEX vd_deposit_light ON vd_deposit (light_sha256)",
      "CREATE TABLE vd_object (object_id INTEGER PRIMARY KEY, class_id INTEGER NOT NULL REFERENCES vd_class, "
      "identity TEXT, version INTEGER NOT NULL, owner_id INTEGER REFERENCES vd_user, "
      "deposit_id INTEGER REFERENCES vd_deposit, UNIQUE (class_id, identity, version))",
      "CREATE INDEX vd_object_deposit ON vd_object (deposit_id)",
      "CREATE INDEX vd_object_owner ON vd_object (owner_id)",
      "CREATE TABLE vd_link (\"OBJECT_ID\" INTEGER PRIMARY KEY, \"CLASS_ID\" INTEGER NOT NULL REFERENCES vd_class, "
      "from_object INTEGER NOT NULL REFERENCES vd_object, to_object INTEGER NOT NULL REFERENCES vd_object, "
      "place INTEGER NOT NULL, \"QUANTITY\" INTEGER NOT NULL CHECK (\"QUANTITY\" > 0), "
      "UNIQUE (from_object, \"CLASS_ID\", to_object))",
      "CREATE INDEX vd_link_order ON vd_link (from_object, \"CLASS_ID\", place)",
      "CREATE INDEX vd_link_to ON vd_link (to_object, \"CLASS_ID\")",
      "CREATE TABLE vd_working_copy (user_id INTEGER NOT NULL REFERENCES vd_user, path TEXT NOT NULL, "
      "object_id INTEGER NOT NULL REFERENCES vd_object, deposit_id INTEGER NOT NULL REFERENCES vd_deposit, "
      "PRIMARY KEY (user_id, path))",
      "CREATE INDEX vd_working_copy_object ON vd_working_copy (object_id, user_id)",
  };
  return statements;
}

bool HasVersionTable(Database& database) {
  const std::string catalogue =
      database.IsPostgres()
          ? "SELECT COUNT(*) FROM pg_tables WHERE schemaname = current_schema() AND tablename = 'schema_version'"
          : "SELECT COUNT(*) FROM sqlite_master WHERE type = 'table' AND name = 'schema_version'";
  return IntegerOf(database.QueryOne(ColumnType::kInteger, catalogue)) != 0;
}

void Apply(Database& database, std::span<const Migration> migrations) {
  if (!HasVersionTable(database)) {
    database.ExecuteOnce("CREATE TABLE schema_version (version INTEGER NOT NULL)");
    database.ExecuteOnce("INSERT INTO schema_version VALUES (0)");
  }
  const auto first = static_cast<std::size_t>(SchemaVersion(database));
  for (auto version = first; version < migrations.size(); ++version) {
    for (const auto& statement : migrations[version]) database.ExecuteOnce(statement);
  }
  if (first < migrations.size()) {
    database.ExecuteOnce("UPDATE schema_version SET version = " + std::to_string(migrations.size()));
  }
}

}  // namespace

std::span<const Migration> AllMigrations() {
  static const std::vector<Migration> migrations = {TablesOfTheSchema(), TablesOfTheObjects()};
  return migrations;
}

int SchemaVersion(Database& database) {
  if (!HasVersionTable(database)) return 0;
  return static_cast<int>(IntegerOf(database.QueryOne(ColumnType::kInteger, "SELECT version FROM schema_version")));
}

void MakeTables(Database& database) {
  Apply(database, AllMigrations());
}

void Migrate(Database& database, std::span<const Migration> migrations) {
  const auto known = static_cast<int>(migrations.size());
  const int version = SchemaVersion(database);
  if (version > known) {
    throw Failure(failure::kInvalidFormat, "The vault's tables have version " + std::to_string(version) +
                                               ", and this program knows them up to version " + std::to_string(known) +
                                               ": a newer program made them");
  }
  if (version == known) return;
  database.Begin(true);
  try {
    Apply(database, migrations);
    database.Commit();
  } catch (const std::exception&) {
    database.Rollback();
    throw;
  }
}

}  // namespace quintara::vault
