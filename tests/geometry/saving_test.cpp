#include "geometry/saving.h"

#include <unistd.h>

#include <fstream>

#include "base/failure.h"
#include "base/text.h"
#include "geometry/geometry_fixture.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

void WriteText(const std::string& path, const std::string& text) {
  std::ofstream(ToPath(path)) << text;
}

TEST(SaveBeside, PutsTheNewFileInPlaceOfTheOld) {
  const TemporaryFolder folder;
  folder.Write("a.stp", "old");

  SaveBeside(folder.Path("a.stp"), [](const std::string& path) { WriteText(path, "new"); });

  EXPECT_EQ(folder.Read("a.stp"), "new");
  EXPECT_THAT(folder.Names(), ElementsAre("a.stp"));
}

TEST(SaveBeside, KeepsTheOldFileWhenTheWritingFails) {
  const TemporaryFolder folder;
  folder.Write("a.stp", "old");
  const auto failing = [](const std::string& path) {
    WriteText(path, "half");
    throw Failure(failure::kDiskFull, path + ": no room");
  };

  const auto text = FailureOf([&] { SaveBeside(folder.Path("a.stp"), failing); });

  EXPECT_EQ(text, folder.Path("a.stp") + ": no room");
  EXPECT_EQ(folder.Read("a.stp"), "old");
  EXPECT_THAT(folder.Names(), ElementsAre("a.stp"));
}

TEST(SaveBeside, FailsWithoutAWordToTheWriterWhereTheFolderIsMissing) {
  const TemporaryFolder folder;
  bool asked = false;

  const auto text = FailureOf([&] { SaveBeside(folder.Path("no/a.stp"), [&](const std::string&) { asked = true; }); });

  EXPECT_THAT(text, HasSubstr("a.stp: could not be written"));
  EXPECT_FALSE(asked);
}

TEST(SaveBeside, FailsWhereNoFileCanBeMade) {
  EXPECT_THAT(FailureOf([] { SaveBeside("/proc/a.stp", [](const std::string&) {}); }),
              HasSubstr("/proc/a.stp: could not be written"));
}

TEST(SaveBeside, KeepsAFolderOfTheSameName) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(ToPath(folder.Path("a.stp")));

  const auto text =
      FailureOf([&] { SaveBeside(folder.Path("a.stp"), [](const std::string& path) { WriteText(path, "new"); }); });

  EXPECT_THAT(text, HasSubstr("a.stp: could not be written"));
  EXPECT_THAT(folder.Names(), ElementsAre("a.stp"));
}

TEST(NamelessFile, IsReadByItsPathAndLeavesNothingBehind) {
  const NamelessFile file;

  WriteText(file.Path(), "text");

  EXPECT_EQ(BytesOf(file.Path()), "text");
}

}  // namespace
}  // namespace quintara::test
