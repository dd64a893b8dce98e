#include "hosts/vault/connection_text.h"
#include "hosts/vault/database.h"
#include "hosts/vault/file_names.h"
#include "hosts/vault/migrations.h"
#include "hosts/vault/sequences.h"
#include "hosts/vault/sha256.h"
#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

using namespace vault;

TEST(Sha256, GivesThePublishedDigests) {
  EXPECT_EQ(Sha256Text(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(Sha256Text("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(Sha256Text("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
            "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
  EXPECT_EQ(Sha256Text(std::string(1000000, 'a')), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Revisions, CountThroughTheAlphabetAndThroughDigits) {
  EXPECT_EQ(NextRevision("A"), "B");
  EXPECT_EQ(NextRevision("Z"), "AA");
  EXPECT_EQ(NextRevision("AZ"), "BA");
  EXPECT_EQ(NextRevision("ZZ"), "AAA");
  EXPECT_EQ(NextRevision("9"), "10");
  EXPECT_EQ(NextRevision("99"), "100");
}

TEST(Revisions, OfAnotherKindHaveNoNext) {
  for (const auto* revision : {"", "a", "A1", "-", "\xC3\x84"}) {
    EXPECT_THAT(FailureOf([&] { NextRevision(revision); }), FailsWith(failure::kInvalidCall)) << revision;
  }
}

TEST(FileNames, OrdinaryNamesAreTaken) {
  for (const auto* name : {"BOLT.stp", "CAR Matrix.xml", "Geh\xC3\xA4use.ZVAProduct", ".hidden", "CONSOLE", "COM10.stp",
                           "LPT.txt", "a..b"}) {
    EXPECT_EQ(FailureOf([&] { RequireFileName(name); }).Number(), 0) << name;
  }
}

TEST(FileNames, WhatIsNoPlainNameIsRefused) {
  for (const std::string name : {"",     ".",        "..",          "../x", "..\\..\\x", "/x",   "\\\\server\\x",
                                 "C:x",  "x/y",      "a*",          "a?",   "a|b",       "a<b",  "\"",
                                 "a\nb", "x.",       "x ",          "CON",  "con.txt",   "AUX ", "nul .x",
                                 "COM1", "lpt9.stp", "COM\xC2\xB9", "\xFF"}) {
    EXPECT_THAT(FailureOf([&] { RequireFileName(name); }), FailsWith(failure::kInvalidCall)) << name;
  }
  EXPECT_THAT(FailureOf([&] { RequireFileName(std::string(256, 'x')); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { RequireFileName(std::string("a\0b", 3)); }), FailsWith(failure::kInvalidCall));
}

TEST(ConnectionText, ThePasswordIsTakenOut) {
  EXPECT_EQ(PasswordIn("postgresql://host=x password=abc dbname=y"), "abc");
  EXPECT_EQ(WithoutPassword("postgresql://host=x password=abc dbname=y"), "postgresql://host=x dbname=y");
  EXPECT_EQ(PasswordIn("postgresql://password='a b\\'c' host=x"), "a b'c");
  EXPECT_EQ(WithoutPassword("postgresql://password='a b\\'c' host=x"), "postgresql://host=x");
  EXPECT_EQ(PasswordIn("postgresql://user:pw@host/db"), "pw");
  EXPECT_EQ(WithoutPassword("postgresql://user:pw@host/db"), "postgresql://user@host/db");
}

TEST(ConnectionText, WithoutAPasswordItStaysAsItIs) {
  for (const auto* text : {"sqlite:/a/b", "postgresql://", "postgresql://host=x", "postgresql://host:5432/db"}) {
    EXPECT_EQ(PasswordIn(text), "");
    EXPECT_EQ(WithoutPassword(text), text);
  }
}

class Migrations : public testing::Test {
 protected:
  TemporaryFolder folder;
  Database database{"sqlite:" + folder.Path("x.sqlite")};
  std::vector<Migration> two = {{"CREATE TABLE a (x INTEGER)"},
                                {"ALTER TABLE a ADD COLUMN y INTEGER", "INSERT INTO a VALUES (1, 2)"}};
};

TEST_F(Migrations, AreAppliedInOrderAndOnce) {
  Migrate(database, std::span(two).first(1));
  EXPECT_EQ(SchemaVersion(database), 1);

  Migrate(database, two);
  Migrate(database, two);

  EXPECT_EQ(SchemaVersion(database), 2);
  EXPECT_EQ(IntegerOf(database.QueryOne(ColumnType::kInteger, "SELECT COUNT(*) FROM a")), 1);
}

TEST_F(Migrations, ANewerDatabaseIsRefused) {
  Migrate(database, two);

  EXPECT_THAT(FailureOf([&] { Migrate(database, std::span(two).first(1)); }), FailsWith(failure::kInvalidFormat));
  EXPECT_EQ(SchemaVersion(database), 2);
}

TEST_F(Migrations, AFailedMigrationChangesNothing) {
  two[1].push_back("NONSENSE");

  EXPECT_THAT(FailureOf([&] { Migrate(database, two); }), FailsWith(failure::kDeviceError));

  EXPECT_EQ(SchemaVersion(database), 0);
  EXPECT_THAT(FailureOf([&] { database.Query("i", "SELECT COUNT(*) FROM a"); }), FailsWith(failure::kDeviceError));
}

TEST(Connections, OtherDatabasesAreRefused) {
  EXPECT_THAT(FailureOf([&] { Database database("mysql://x"); }), FailsWith(failure::kInvalidCall));
}

}  // namespace
}  // namespace quintara::test
