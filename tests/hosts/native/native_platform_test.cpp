#include "hosts/native/native_platform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>

#include "support/test_platform.h"

namespace quintara {
namespace {

class Thing : public AnyObject {};

class NativePlatformTest : public testing::Test {
 protected:
  int NumberOf(const std::function<void()>& body) {
    try {
      body();
    } catch (const Failure& failure) {
      return failure.Number();
    }
    return 0;
  }

  std::shared_ptr<Gate> gate = std::make_shared<Gate>();
  NativePlatform platform{gate, {}};
};

TEST_F(NativePlatformTest, AttachesToWhatWasRegisteredUnderAnyCapitals) {
  const Ref<AnyObject> thing = MakeRef<Thing>();

  platform.Register("ZORVA.Application", thing);

  EXPECT_EQ(platform.Attach("zorva.APPLICATION"), thing);
}

TEST_F(NativePlatformTest, AttachesToTheLastRegistered) {
  const Ref<AnyObject> thing = MakeRef<Thing>();
  platform.Register("ZORVA.Application", MakeRef<Thing>());

  platform.Register("Zorva.Application", thing);

  EXPECT_EQ(platform.Attach("ZORVA.Application"), thing);
}

TEST_F(NativePlatformTest, CannotAttachToWhatDoesNotRun) {
  platform.RegisterMaker("ZORVA.Application", [] { return Ref<AnyObject>(MakeRef<Thing>()); });

  EXPECT_EQ(NumberOf([&] { platform.Attach("ZORVA.Application"); }), failure::kCannotCreateObject);
}

TEST_F(NativePlatformTest, CreatesByItsMakersOnly) {
  platform.Register("Excel.Application", MakeRef<Thing>());
  platform.RegisterMaker("Thing", [] { return Ref<AnyObject>(MakeRef<Thing>()); });

  EXPECT_TRUE(platform.Create("thing"));
  EXPECT_EQ(NumberOf([&] { platform.Create("Excel.Application"); }), failure::kCannotCreateObject);
}

TEST_F(NativePlatformTest, AFailureOfAMakerComesOut) {
  platform.RegisterMaker("Thing", []() -> Ref<AnyObject> { throw Failure(failure::kDeviceError); });

  EXPECT_EQ(NumberOf([&] { platform.Create("Thing"); }), failure::kDeviceError);
}

TEST_F(NativePlatformTest, CreatesTheFileSystemFromTheStart) {
  const test::TemporaryFolder folder;

  const auto created = platform.Create("Scripting.FileSystemObject");

  EXPECT_TRUE(created->AsFileSystemObject()->FolderExists(folder.Path()));
  EXPECT_TRUE(platform.FileSystem()->FolderExists(folder.Path()));
}

TEST_F(NativePlatformTest, WithoutAnyoneToAskABoxIsAnsweredWithNoOrCancelWhereItHasOne) {
  EXPECT_EQ(platform.ShowBox("text", box::kYesNo | box::kQuestion, "title"), answer::kNo);
  EXPECT_EQ(platform.ShowBox("text", box::kOkCancel | box::kWarning, "title"), answer::kCancel);
  EXPECT_EQ(platform.ShowBox("text", box::kInformation | box::kSystemModal, "title"), answer::kOk);
}

TEST_F(NativePlatformTest, SleepsAndThenTellsItsListenersInTheirOrder) {
  std::string told;
  platform.OnSleep([&] { told += "a"; });
  platform.OnSleep([&] { told += "b"; });
  const auto start = std::chrono::steady_clock::now();

  platform.Sleep(20);

  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(20));
  EXPECT_EQ(told, "ab");
}

TEST_F(NativePlatformTest, AListenerMayAddAnother) {
  int told = 0;
  platform.OnYield([&] {
    if (told++ == 0) platform.OnYield([&] { told += 10; });
  });

  platform.Yield();

  EXPECT_EQ(told, 11);
}

#ifndef _WIN32
TEST_F(NativePlatformTest, GivesTheEnvironment) {
  ::setenv("QUINTARA_TEST_VALUE", "Größe", 1);

  EXPECT_EQ(platform.Environment("QUINTARA_TEST_VALUE"), "Größe");
  EXPECT_EQ(platform.Environment("QUINTARA_TEST_ABSENT"), "");
}

// In a process of its own, whose locale is its own and in which the C library may keep what it reads.
void ExpectDecimalSeparator(NativePlatform& platform, const std::string& locale, const std::string& separator) {
  const auto answer = [&] {
    ::setenv("LC_ALL", locale.c_str(), 1);
    std::_Exit(platform.DecimalSeparator() == separator ? 0 : 1);
  };
  EXPECT_EXIT(answer(), testing::ExitedWithCode(0), "");
}

TEST_F(NativePlatformTest, TheDecimalSeparatorIsThatOfTheUsersLocale) {
  const test::TemporaryFolder folder;
  folder.Write("source", "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \".\"\ngrouping 3;3\nEND LC_NUMERIC\n");
  const auto compile = "localedef -c -i '" + folder.Path("source") + "' -f ANSI_X3.4-1968 '" + folder.Path("comma") +
                       "' >'" + folder.Path("log") + "' 2>&1";
  if (std::system(compile.c_str()) < 0 || !folder.Has("comma")) GTEST_SKIP() << "no locale could be made";
  ::setenv("LOCPATH", folder.Path().c_str(), 1);

  ExpectDecimalSeparator(platform, "comma", ",");

  ::unsetenv("LOCPATH");
}

TEST_F(NativePlatformTest, TheDecimalSeparatorOfALocaleThatIsNotThereIsAPoint) {
  ExpectDecimalSeparator(platform, "nowhere", ".");
}

TEST_F(NativePlatformTest, TheCodePageIsWindows1252WhereTheSystemHasNone) {
  EXPECT_EQ(platform.ToCodePage("é€Ж"), "\xE9\x80?");
  EXPECT_EQ(platform.FromCodePage("\xE9\x80"), "é€");
}
#endif

TEST_F(NativePlatformTest, ACodePageHasOneByteForEachUtf16Unit) {
  EXPECT_EQ(platform.ToCodePage("BOLT 1"), "BOLT 1");
  EXPECT_EQ(platform.ToCodePage("\xE9\x83\xA8|\xF0\x9F\x94\xA9|\xFF").size(), 6U);
  EXPECT_EQ(platform.ToCodePage("").size(), 0U);
}

TEST_F(NativePlatformTest, EveryByteOfACodePageIsOneCharacter) {
  for (int byte = 0; byte < 128; ++byte) {
    const std::string text(1, static_cast<char>(byte));
    EXPECT_EQ(platform.FromCodePage(text), text) << byte;
    EXPECT_EQ(platform.ToCodePage(text), text) << byte;
  }
}

TEST_F(NativePlatformTest, AnEventIsOneLineAtTheEndOfTheLog) {
  const test::TemporaryFolder folder;

  platform.LogEvent(folder.Path("a.log"), "started", 4);
  platform.LogEvent(folder.Path("a.log"), "failed:\r\nno", 1);

  EXPECT_EQ(folder.Read("a.log"), "INFORMATION started\nERROR failed:  no\n");
}

TEST_F(NativePlatformTest, ALogThatCannotBeWrittenFails) {
  const test::TemporaryFolder folder;

  EXPECT_EQ(NumberOf([&] { platform.LogEvent(folder.Path("absent/a.log"), "text", 4); }), failure::kPathNotFound);
}

TEST(TestPlatformTest, IsInstalledWhileItLivesAndRecordsBoxesAndSleeps) {
  {
    test::TestPlatform platform;
    platform.answers = {answer::kYes, answer::kNo};

    EXPECT_EQ(ThePlatform().ShowBox("a", box::kYesNo, "t"), answer::kYes);
    EXPECT_EQ(ThePlatform().ShowBox("b", box::kYesNo, "t"), answer::kNo);
    EXPECT_EQ(ThePlatform().ShowBox("c", box::kOkOnly, "t"), answer::kOk);
    ThePlatform().Sleep(6000);

    EXPECT_EQ(platform.Boxes(), (std::vector<test::Box>{{"a", 4, "t"}, {"b", 4, "t"}, {"c", 0, "t"}}));
    EXPECT_EQ(platform.Sleeps(), (std::vector<int>{6000}));
  }
  EXPECT_THROW(ThePlatform(), Failure);
}

TEST(TemporaryFolderTest, GoesWithAllItHolds) {
  std::string path;
  {
    const test::TemporaryFolder folder;
    path = folder.Path();
    folder.Write("a", "");
  }

  EXPECT_FALSE(std::filesystem::exists(path));
}

}  // namespace
}  // namespace quintara
