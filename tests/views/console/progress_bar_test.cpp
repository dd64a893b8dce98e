#include "views/console/progress_bar.h"

#include <limits>
#include <sstream>

namespace quintara {
namespace {

struct AProgressBar : ::testing::Test {
  std::ostringstream out;

  std::string ShownBy(double fraction, int columns = 80) {
    ProgressBar bar(out, columns);
    bar.Show(fraction, "nut");
    return out.str();
  }
};

TEST_F(AProgressBar, ShowsShareAndWhatIsBeingDone) {
  EXPECT_EQ(ShownBy(0.5), "\r\x1b[K[############............]  50% nut");
}

TEST_F(AProgressBar, IsFullAtTheEnd) {
  EXPECT_EQ(ShownBy(1), "\r\x1b[K[########################] 100% nut");
}

TEST_F(AProgressBar, NeverRunsPastTheEnd) {
  EXPECT_THAT(ShownBy(17), ::testing::HasSubstr(" 100% "));
}

TEST_F(AProgressBar, TakesWhatIsNoNumberForTheBeginning) {
  EXPECT_THAT(ShownBy(std::numeric_limits<double>::quiet_NaN()), ::testing::HasSubstr("   0% "));
}

TEST_F(AProgressBar, StaysWithinTheScreen) {
  EXPECT_EQ(ShownBy(0, 10), "\r\x1b[K[........");
}

TEST_F(AProgressBar, WorksOnAScreenThatTellsNoWidth) {
  EXPECT_EQ(ShownBy(0, -1), "\r\x1b[K[........");
}

TEST_F(AProgressBar, DrawsNothingThatIsShownAlready) {
  ProgressBar bar(out, 80);
  bar.Show(0.501, "nut");
  const auto before = out.str();

  bar.Show(0.502, "nut");

  EXPECT_EQ(out.str(), before);
}

TEST_F(AProgressBar, ShowsTheTextAloneOfWorkOfUnknownLength) {
  ProgressBar bar(out, 12);

  bar.ShowText("refreshing\x1b all");

  EXPECT_EQ(out.str(), "\r\x1b[Krefreshing?");
}

TEST_F(AProgressBar, MakesRoomForOtherTextAndComesBack) {
  ProgressBar bar(out, 80);
  bar.Show(0, "nut");
  out.str("");

  bar.Clear();
  bar.Clear();
  bar.Show(0, "nut");

  EXPECT_EQ(out.str(), "\r\x1b[K\r\x1b[K[........................]   0% nut");
}

TEST_F(AProgressBar, TakesItsLineAwayAtTheEnd) {
  { ProgressBar(out, 80).Show(0, "nut"); }

  EXPECT_TRUE(out.str().ends_with("nut\r\x1b[K"));
}

TEST_F(AProgressBar, WritesNothingWhenNothingWasShown) {
  { ProgressBar bar(out, 80); }

  EXPECT_EQ(out.str(), "");
}

}  // namespace
}  // namespace quintara
