#include <array>

#include "automation/platform/platform_fixture.h"
#include "base/text.h"
#include "support/test_platform.h"

namespace quintara::test {
namespace {

using testing::HasSubstr;

class TheSystem : public PlatformTest {
 protected:
  static bool HasPage1252() { return GetACP() == 1252; }
};

TEST_F(TheSystem, GivesTheEnvironmentOfTheProcessAsItIsNow) {
  SetEnvironmentVariableW(L"QUINTARA_TEST_VALUE", L"Gr\u00f6\u00dfe");
  EXPECT_EQ(platform.Environment("QUINTARA_TEST_VALUE"), "Größe");

  SetEnvironmentVariableW(L"QUINTARA_TEST_VALUE", nullptr);
  EXPECT_EQ(platform.Environment("QUINTARA_TEST_VALUE"), "");
}

TEST_F(TheSystem, GivesAnEnvironmentVariableOfAnyLength) {
  for (const std::size_t length : {std::size_t{255}, std::size_t{256}, std::size_t{257}, std::size_t{5000}}) {
    SetEnvironmentVariableW(L"QUINTARA_TEST_VALUE", std::wstring(length, L'x').c_str());

    EXPECT_EQ(platform.Environment("QUINTARA_TEST_VALUE"), std::string(length, 'x'));
  }
  SetEnvironmentVariableW(L"QUINTARA_TEST_VALUE", nullptr);
}

TEST_F(TheSystem, GivesTheDecimalSeparatorOfTheUser) {
  std::array<wchar_t, 8> expected{};
  GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, expected.data(), int{expected.size()});

  EXPECT_EQ(platform.DecimalSeparator(), FromPath(expected.data()));
}

TEST_F(TheSystem, WritesAQuestionMarkForEachUnitThatTheCodePageLacks) {
  if (!HasPage1252()) GTEST_SKIP() << "Another code page";

  EXPECT_EQ(platform.ToCodePage("1 € für Größe"),
            "1 \x80 f\xfcr Gr\xf6\xdf"
            "e");
  // No letter that merely looks like it.
  EXPECT_EQ(platform.ToCodePage("\u0100\u221e"), "??");
  EXPECT_EQ(platform.ToCodePage("\U0001F600"), "??");
}

TEST_F(TheSystem, ReadsACharacterForEachByteOfTheCodePage) {
  if (!HasPage1252()) GTEST_SKIP() << "Another code page";

  EXPECT_EQ(platform.FromCodePage("1 \x80 f\xfcr"), "1 € für");
}

TEST_F(TheSystem, ReadsAndWritesWholeFiles) {
  const TemporaryFolder folder;

  platform.Contents().WriteWhole(folder.Path("Größe.xml"), "<a/>");

  EXPECT_EQ(platform.Contents().Read(folder.Path("Größe.xml")), "<a/>");
}

TEST_F(TheSystem, AddsLinesToTheEventLog) {
  const TemporaryFolder folder;
  const auto log = folder.Path("ReloadSession.log");

  platform.LogEvent(log, "Reload session started...", 4);
  platform.LogEvent(log, "Can't get the HIX Engine", 1);

  EXPECT_EQ(folder.Read("ReloadSession.log"),
            "INFORMATION Reload session started...\nERROR Can't get the HIX Engine\n");
}

TEST_F(TheSystem, FailsForAnEventLogThatCannotBeWritten) {
  const TemporaryFolder folder;
  const auto log = folder.Path("missing/ReloadSession.log");

  const auto failed = FailureOf([&] { platform.LogEvent(log, "text", 4); });

  EXPECT_EQ(failed.Number(), failure::kPathNotFound);
  EXPECT_THAT(failed.Description(), HasSubstr(log));
}

TEST_F(TheSystem, SleepsWithoutHandlingMessagesAndYieldHandlesThem) {
  static int handled;
  handled = 0;
  const auto window = CreateWindowExW(0, L"Static", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
  SetWindowLongPtrW(window, GWLP_WNDPROC,
                    reinterpret_cast<LONG_PTR>(
                        static_cast<WNDPROC>([](HWND which, UINT message, WPARAM first, LPARAM second) -> LRESULT {
                          if (message == WM_APP) ++handled;
                          return DefWindowProcW(which, message, first, second);
                        })));
  PostMessageW(window, WM_APP, 0, 0);
  const auto start = GetTickCount64();

  platform.Sleep(50);
  const auto slept = GetTickCount64() - start;
  const int handledAsleep = handled;
  platform.Yield();

  EXPECT_GE(slept, 40U);
  EXPECT_EQ(handledAsleep, 0);
  EXPECT_EQ(handled, 1);
  DestroyWindow(window);
}

}  // namespace
}  // namespace quintara::test
