#include <stdlib.h>

#include "base/failure.h"
#include "geometry/geometry_fixture.h"
#include "geometry/measures.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::uint32_t BigEndian(const std::string& bytes, std::size_t at) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < 4; ++i) number = number << 8U | static_cast<unsigned char>(bytes[at + i]);
  return number;
}

class Picture : public GeometryTest {
 protected:
  Picture() {
    const auto assembly = Read(DataFile("as1-oc-214.stp"));
    Split(*assembly);
    exact_ = SceneOf(*assembly, ".stp");
    light_ = SceneOf(*assembly, ".lwt");
  }

  SceneNode exact_;
  SceneNode light_;
};

// An environment variable with another value for a while.
class Environment {
 public:
  Environment(const std::string& name, const std::string& value) : name_(name) {
    const char* old = getenv(name.c_str());
    if (old != nullptr) old_ = old;
    setenv(name.c_str(), value.c_str(), 1);
  }
  ~Environment() { setenv(name_.c_str(), old_.c_str(), 1); }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

 private:
  std::string name_;
  std::string old_;
};

TEST_F(Picture, HasTheSizeAskedFor) {
  geometry_->WritePicture({{"as1", exact_}}, Path("a.png"), 321, 234);

  const auto bytes = folder_.Read("a.png");
  EXPECT_EQ(bytes.substr(1, 3), "PNG");
  EXPECT_EQ(BigEndian(bytes, 16), 321U);
  EXPECT_EQ(BigEndian(bytes, 20), 234U);
}

TEST_F(Picture, ShowsEachSceneAboveItsCaption) {
  geometry_->WritePicture({{"exact", exact_}, {"light", light_}}, Path("a.png"), 800, 400);

  for (const int left : {0, 400}) {
    EXPECT_GT(CountColours(Path("a.png"), left, 0, 400, 360), 20U) << left;
    EXPECT_GT(CountColours(Path("a.png"), left, 368, 400, 32), 2U) << left;
  }
}

TEST_F(Picture, ShowsPaperOnlyForAnEmptyScene) {
  geometry_->WritePicture({{"", {"", "NOTHING", kIdentityPosition, "", {}}}}, Path("a.png"), 200, 200);

  EXPECT_EQ(CountColours(Path("a.png"), 0, 0, 200, 200), 1U);
}

TEST_F(Picture, CutsACaptionThatIsTooLong) {
  geometry_->WritePicture({{std::string(500, 'm'), exact_}, {"", exact_}}, Path("a.png"), 400, 200);

  EXPECT_GT(CountColours(Path("a.png"), 0, 180, 200, 20), 2U);
  EXPECT_EQ(CountColours(Path("a.png"), 200, 180, 200, 20), 1U);
}

TEST_F(Picture, PrintsNothing) {
  testing::internal::CaptureStdout();

  geometry_->WritePicture({{"as1", exact_}}, Path("a.png"), 200, 200);

  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(Picture, NeedsNoDisplay) {
  const Environment noDisplay("DISPLAY", "");

  EXPECT_NO_THROW(geometry_->WritePicture({{"as1", exact_}}, Path("a.png"), 200, 200));
}

TEST_F(Picture, NamesThePackageThatItNeeds) {
  const Environment noDisplay("DISPLAY", "");
  const Environment noPrograms("PATH", Path("nothing"));

  const auto text = FailureOf([&] { geometry_->WritePicture({{"as1", exact_}}, Path("a.png"), 200, 200); });

  EXPECT_THAT(text, HasSubstr("package xvfb"));
  EXPECT_FALSE(folder_.Has("a.png"));
}

TEST_F(Picture, FailsWithADisplayThatIsNotThere) {
  const Environment noDisplay("DISPLAY", ":9999");
  const Environment noPrograms("PATH", Path("nothing"));

  const auto text = FailureOf([&] { geometry_->WritePicture({{"as1", exact_}}, Path("a.png"), 200, 200); });

  EXPECT_THAT(text, HasSubstr("a.png: could not be drawn"));
}

TEST_F(Picture, NamesTheFileThatIsMissing) {
  exact_.children[2].file = Path("no.stp");

  const auto text = FailureOf([&] { geometry_->WritePicture({{"as1", exact_}}, Path("a.png"), 200, 200); });

  EXPECT_THAT(text, HasSubstr("no.stp: could not be opened"));
}

TEST_F(Picture, RefusesSizesThatMakeNoSense) {
  for (const int size : {-1, 0, 63, 8193}) {
    EXPECT_THROW(geometry_->WritePicture({{"as1", exact_}}, Path("a.png"), size, 200), Failure) << size;
    EXPECT_THROW(geometry_->WritePicture({{"as1", exact_}}, Path("a.png"), 200, size), Failure) << size;
  }
  EXPECT_THROW(geometry_->WritePicture({}, Path("a.png"), 200, 200), Failure);
}

TEST_F(Picture, KeepsTheOldOneWhenItFails) {
  folder_.Write("a.png", "old");
  exact_.children[2].file = Path("no.stp");

  FailureOf([&] { geometry_->WritePicture({{"as1", exact_}}, Path("a.png"), 200, 200); });

  EXPECT_EQ(folder_.Read("a.png"), "old");
}

}  // namespace
}  // namespace quintara::test
