#include "quintara/spreadsheet_access.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>

#include "base/attempt.h"
#include "hosts/native/native_platform.h"
#include "stories/live_spreadsheet.h"
#include "support/test_platform.h"

namespace quintara::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

// What asking for the application fails with, where its library is this file.
ErrorState FailureWith(const std::string& library) {
  const auto gate = std::make_shared<Gate>();
  NativePlatform platform(gate, {});
  RegisterSpreadsheet(platform, gate, library);
  ErrorState failure;
  Attempt(failure, [&] { platform.Create("EXCEL.APPLICATION"); });
  return failure;
}

std::string LibrariesOf(const std::string& file) {
  std::string text;
  std::array<char, 4096> buffer{};
  auto* const pipe = popen(("ldd '" + file + "'").c_str(), "r");
  while (std::fgets(buffer.data(), buffer.size(), pipe) != nullptr) text += buffer.data();
  pclose(pipe);
  return text;
}

TEST(TheSpreadsheetLibrary, ThatIsMissingIsNamed) {
  const TemporaryFolder folder;

  const auto failure = FailureWith(folder.Path("none.so"));

  EXPECT_EQ(failure.number, 429);
  EXPECT_THAT(failure.description, AllOf(HasSubstr("installed without it"), HasSubstr(folder.Path("none.so"))));
}

TEST(TheSpreadsheetLibrary, ThatLacksLibreOfficesOwnSaysWhichAndWhatToInstall) {
  const auto failure = FailureWith(QUINTARA_ORPHAN_LIBRARY);

  EXPECT_EQ(failure.number, 429);
  EXPECT_THAT(failure.description,
              AllOf(HasSubstr("libabsent_library.so"), HasSubstr("LibreOffice"), HasSubstr("libreoffice-calc-nogui")));
}

TEST(TheSpreadsheetLibrary, ThatIsNoLibraryFails) {
  const TemporaryFolder folder;
  folder.Write("text.so", "text");

  const auto failure = FailureWith(folder.Path("text.so"));

  EXPECT_EQ(failure.number, 429);
  EXPECT_THAT(failure.description, HasSubstr(folder.Path("text.so")));
}

TEST(TheSpreadsheetLibrary, ThatIsAnotherOneFails) {
  const auto failure = FailureWith(QUINTARA_ABSENT_LIBRARY);

  EXPECT_EQ(failure.number, 429);
  EXPECT_THAT(failure.description, HasSubstr("is another library"));
}

TEST(TheSpreadsheetLibrary, BringsLibreOfficeWhichTheProgramItselfStartsWithout) {
  EXPECT_THAT(LibrariesOf(QUINTARA_SPREADSHEET_LIBRARY), HasSubstr("libuno_"));
  EXPECT_THAT(LibrariesOf(QUINTARA_PROGRAM), AllOf(HasSubstr("libc.so"), Not(HasSubstr("libuno_"))));
}

TEST(TheSpreadsheetLibrary, LiesBesideTheProgram) {
  const std::string program = QUINTARA_PROGRAM;
  const std::string library = QUINTARA_SPREADSHEET_LIBRARY;

  EXPECT_EQ(library.substr(0, library.rfind('/')), program.substr(0, program.rfind('/')));
  EXPECT_THAT(SpreadsheetLibrary(), testing::EndsWith(library.substr(library.rfind('/'))));
}

TEST(TheSpreadsheetLibrary, StartsAnApplicationForEachThatIsAskedFor) {
  const auto first = StartLive();
  const auto second = SharedLive();

  first->Quit();

  ErrorState gone;
  Attempt(gone, [&] { first->Workbooks()->Add(); });
  EXPECT_EQ(gone.number, failure::kServerGone);
  EXPECT_TRUE(second->Workbooks()->Add());
}

}  // namespace
}  // namespace quintara::test
