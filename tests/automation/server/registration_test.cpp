#include "automation/server/registration.h"

#include <gmock/gmock.h>

#include <array>

#include "automation/server/interface.h"
#include "automation/server/public_classes.h"
#include "automation/server/registry_dump.h"
#include "base/failure.h"
#include "base/text16_windows.h"

namespace quintara::test {
namespace {

using automation::RegisterBelow;
using automation::UnregisterBelow;
using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

constexpr auto kPath = L"C:\\Program Files\\Quintara\\Quintara.dll";
#ifdef _WIN64
constexpr auto kOwnWords = "win64";
constexpr auto kOtherWords = L"win32";
#else
constexpr auto kOwnWords = "win32";
constexpr auto kOtherWords = L"win64";
#endif

std::wstring Text(REFGUID id) {
  std::array<wchar_t, 40> text{};
  StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
  return text.data();
}

class TheRegistration : public testing::Test {
 protected:
  std::vector<std::string> Lines() const { return Dump(classes.Get()); }
  void Register() const { RegisterBelow(classes.Get(), kPath); }

  OwnKey classes;
  std::wstring library = Text(LIBID_Quintara);
  std::string narrowLibrary = Narrow(library);
};

TEST_F(TheRegistration, LeadsFromEachNameToTheModule) {
  Register();

  for (const auto& known : automation::PublicClasses()) {
    const auto name = Narrow(known.ProgramName());
    const auto id = Narrow(Text(known.classId));
    EXPECT_THAT(Lines(),
                IsSupersetOf({name + "\\CLSID|=" + id, "CLSID\\" + id + "\\ProgID|=" + name,
                              "CLSID\\" + id + "\\InprocServer32|=" + Narrow(kPath), "CLSID\\" + id + "\\Programmable",
                              "CLSID\\" + id + "\\TypeLib|=" + narrowLibrary}));
  }
}

TEST_F(TheRegistration, NamesNoThreadingModel) {
  Register();

  EXPECT_THAT(Lines(), Each(Not(HasSubstr("ThreadingModel"))));
}

TEST_F(TheRegistration, LeadsFromEachInterfaceToTheTypeLibrary) {
  Register();

  for (const auto& known : automation::PublicClasses()) {
    const auto key = "Interface\\" + Narrow(Text(known.interfaceId));
    EXPECT_THAT(Lines(), IsSupersetOf({key + "|=_" + Narrow(known.name),
                                       key + "\\ProxyStubClsid32|={00020424-0000-0000-C000-000000000046}",
                                       key + "\\TypeLib|=" + narrowLibrary, key + "\\TypeLib|Version=1.0"}));
  }
}

TEST_F(TheRegistration, LeadsFromTheTypeLibraryToTheModule) {
  Register();

  const auto key = "TypeLib\\" + narrowLibrary + "\\1.0";
  EXPECT_THAT(Lines(),
              IsSupersetOf({key + "|=Quintara automation server", key + "\\0\\" + kOwnWords + "|=" + Narrow(kPath),
                            key + "\\FLAGS|=0", key + "\\HELPDIR|=C:\\Program Files\\Quintara"}));
}

TEST_F(TheRegistration, IsTheSameWhenItIsMadeAgain) {
  Register();
  const auto once = Lines();

  Register();

  EXPECT_THAT(Lines(), ElementsAreArray(once));
}

TEST_F(TheRegistration, MovesWithTheModule) {
  RegisterBelow(classes.Get(), L"D:\\old\\Quintara.dll");

  Register();

  EXPECT_THAT(Lines(), Each(Not(HasSubstr("old"))));
}

TEST_F(TheRegistration, LeavesNothingBehind) {
  classes.Make(L"CLSID");
  classes.Make(L"Interface");
  classes.Make(L"TypeLib");
  const auto before = Lines();
  Register();

  UnregisterBelow(classes.Get());

  EXPECT_THAT(Lines(), ElementsAreArray(before));
}

TEST_F(TheRegistration, MayBeTakenAwayTwice) {
  Register();
  UnregisterBelow(classes.Get());
  const auto once = Lines();

  UnregisterBelow(classes.Get());

  EXPECT_THAT(Lines(), ElementsAreArray(once));
}

TEST_F(TheRegistration, LeavesWhatIsOfOthers) {
  classes.Write(L"CLSID\\{00000000-0000-0000-0000-00000000ABCD}\\InprocServer32", L"other.dll");
  classes.Write(L"Quintara.Cls_Utils2", L"other");
  classes.Write(L"TypeLib\\" + library + L"\\2.0", L"a later one");
  const auto before = Lines();
  classes.Make(L"Interface");
  Register();

  UnregisterBelow(classes.Get());

  EXPECT_THAT(Lines(), IsSupersetOf(before));
  EXPECT_THAT(Lines(), Each(Not(HasSubstr("InprocServer32|=C:"))));
}

TEST_F(TheRegistration, LeavesTheTypeLibraryOfTheOtherWordSize) {
  Register();
  classes.Write(L"TypeLib\\" + library + L"\\1.0\\0\\" + kOtherWords, L"twin.dll");

  UnregisterBelow(classes.Get());

  EXPECT_THAT(Lines(), AllOf(Contains(HasSubstr("|=twin.dll")), Contains(HasSubstr("FLAGS")),
                             Each(Not(HasSubstr(std::string(kOwnWords) + "|=")))));
}

TEST_F(TheRegistration, IsUndoneWhereAKeyFails) {
  // A lasting key can't stand below one that doesn't last.
  const auto& last = automation::PublicClasses().back();
  classes.Make(L"CLSID");
  classes.Make(L"CLSID\\" + Text(last.classId), true);
  const auto before = Lines();

  EXPECT_THROW(Register(), Failure);

  EXPECT_THAT(Lines(), ElementsAreArray(before));
}

TEST_F(TheRegistration, OfAnOlderModuleIsThereAgainWhereAKeyFails) {
  RegisterBelow(classes.Get(), L"D:\\old\\Quintara.dll");
  const auto& last = automation::PublicClasses().back();
  RegDeleteTreeW(classes.Get(), (L"CLSID\\" + Text(last.classId)).c_str());
  classes.Make(L"CLSID\\" + Text(last.classId), true);
  const auto before = Lines();

  EXPECT_THROW(Register(), Failure);

  EXPECT_THAT(Lines(), ElementsAreArray(before));
}

TEST_F(TheRegistration, TellsWhichKeyFailed) {
  const auto& last = automation::PublicClasses().back();
  classes.Make(L"CLSID");
  classes.Make(L"CLSID\\" + Text(last.classId), true);

  try {
    Register();
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_LT(failure.Number(), 0);
    EXPECT_THAT(failure.Description(), HasSubstr(Narrow(Text(last.classId))));
  }
}

TEST_F(TheRegistration, GoesToTheUserWhereTheMachineIsForbidden) {
  const ForbiddenKey machine;

  automation::RegisterBelowFirst(std::array{machine.Get(), classes.Get()}, kPath);

  EXPECT_THAT(Lines(), Contains(HasSubstr("InprocServer32|=")));
}

TEST_F(TheRegistration, DoesNotGoToTheUserForAnyOtherFailure) {
  const OwnKey machine;
  machine.Make(L"CLSID");
  machine.Make(L"CLSID\\" + Text(automation::PublicClasses().back().classId), true);

  EXPECT_THROW(automation::RegisterBelowFirst(std::array{machine.Get(), classes.Get()}, kPath), Failure);

  EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(TheRegistration, FailsWhereAllIsForbidden) {
  const ForbiddenKey machine;

  try {
    automation::RegisterBelowFirst(std::array{machine.Get()}, kPath);
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), E_ACCESSDENIED);
  }
}

}  // namespace
}  // namespace quintara::test
