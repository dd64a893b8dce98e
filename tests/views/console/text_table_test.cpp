#include "views/console/text_table.h"

#include <sstream>

#include "base/failure.h"

namespace quintara {
namespace {

std::string Printed(const TextTable& table) {
  std::ostringstream out;
  table.Print(out);
  return out.str();
}

TEST(ATextTable, AlignsColumnsByTheirWidestCell) {
  TextTable table({{"part"}, {"file"}});

  table.AddRow({"l-bracket", "a"});
  table.AddRow({"nut", "b"});

  EXPECT_EQ(Printed(table),
            "part       file\n"
            "---------  ----\n"
            "l-bracket  a\n"
            "nut        b\n");
}

TEST(ATextTable, CountsCharactersAndNotBytes) {
  TextTable table({{"name"}, {"x"}});

  table.AddRow({"Träger", "1"});
  table.AddRow({"Trager", "2"});

  EXPECT_EQ(Printed(table),
            "name    x\n"
            "------  -\n"
            "Träger  1\n"
            "Trager  2\n");
}

TEST(ATextTable, AlignsNumbersOnTheRight) {
  TextTable table({{"count", true}, {"of"}});

  table.AddRow({"7", "a"});

  EXPECT_EQ(Printed(table),
            "count  of\n"
            "-----  --\n"
            "    7  a\n");
}

TEST(ATextTable, MissingCellsAreEmptyAndLeaveNoBlanks) {
  TextTable table({{"a"}, {"b"}});

  table.AddRow({"1"});

  EXPECT_EQ(Printed(table), "a  b\n-  -\n1\n");
}

TEST(ATextTable, RefusesMoreCellsThanColumns) {
  TextTable table({{"a"}});

  EXPECT_THROW(table.AddRow({"1", "2"}), Failure);
}

TEST(ATextTable, ALineBreakInACellDoesNotBreakTheRow) {
  TextTable table({{"a"}});

  table.AddRow({"x\ny"});

  EXPECT_EQ(Printed(table), "a\n---\nx?y\n");
}

TEST(ATextTable, IsEmptyUntilARowComes) {
  TextTable table({{"a"}});

  EXPECT_TRUE(table.Empty());
}

}  // namespace
}  // namespace quintara
