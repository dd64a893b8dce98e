#include "views/console/text_line.h"

#include "views/console/test_dialog.h"

namespace quintara::test {
namespace {

using Code = Key::Code;

TextLine Pressed(const std::string& text, const std::vector<Key>& keys) {
  TextLine line(text);
  for (const auto& key : keys) EXPECT_TRUE(line.Press(key));
  return line;
}

TEST(ATextLine, TypesBehindTheEnd) {
  EXPECT_EQ(Pressed("ab", {{Code::kCharacter, "ü"}}).Text(), "abü");
}

TEST(ATextLine, DeletesWholeCharacters) {
  EXPECT_EQ(Pressed("aüb", {{Code::kLeft, {}}, {Code::kBackspace, {}}}).Text(), "ab");
  EXPECT_EQ(Pressed("aüb", {{Code::kHome, {}}, {Code::kRight, {}}, {Code::kDelete, {}}}).Text(), "ab");
}

TEST(ATextLine, StopsAtItsEnds) {
  const auto line = Pressed("a", {{Code::kRight, {}},
                                  {Code::kDelete, {}},
                                  {Code::kHome, {}},
                                  {Code::kLeft, {}},
                                  {Code::kBackspace, {}},
                                  {Code::kCharacter, "b"},
                                  {Code::kEnd, {}},
                                  {Code::kCharacter, "c"}});

  EXPECT_EQ(line.Text(), "bac");
}

TEST(ATextLine, LeavesOtherKeys) {
  TextLine line("a");

  EXPECT_FALSE(line.Press({Code::kEnter, {}}));
  EXPECT_EQ(line.Text(), "a");
}

TEST(ATextLine, ShowsThePartWithTheCaret) {
  const TextLine line("abcdef");

  const auto cut = line.CutTo(4);

  EXPECT_EQ(cut.text, "def");
  EXPECT_EQ(cut.caret, 3U);
}

TEST(ATextLine, StandsNoPlaceAtAll) {
  EXPECT_EQ(TextLine("abc").CutTo(0).text, "");
  EXPECT_EQ(TextLine("部品").CutTo(1).caret, 0U);
}

TEST(TheRowsOfATree, LeaveOutWhatAClosedNodeHides) {
  TestTree tree({"gear", " axle", "  nut", "   thread", " bolt", "other"});
  tree.SetExpanded(2, false);
  TreeRows rows;

  rows.Read(tree);

  EXPECT_EQ(rows.Count(), 4);
  EXPECT_EQ(rows.NodeAt(2), 5);
  EXPECT_EQ(rows.NodeAt(3), 6);
  EXPECT_EQ(rows.NodeAt(4), 0);
  EXPECT_EQ(rows.NodeAt(-1), 0);
  EXPECT_EQ(rows.RowOf(4), 1);
  EXPECT_EQ(rows.DepthOf(4), 3);
  EXPECT_EQ(rows.RowOf(99), 0);
}

TEST(TheRowsOfATree, OfAnEmptyOneAreNone) {
  TreeRows rows;

  rows.Read(TestTree());

  EXPECT_EQ(rows.Count(), 0);
  EXPECT_EQ(rows.NodeAt(0), 0);
}

}  // namespace
}  // namespace quintara::test
