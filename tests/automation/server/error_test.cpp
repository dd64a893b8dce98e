#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <map>
#include <stdexcept>

#include "access/utils/Cls_Utils.h"
#include "automation/server/client.h"
#include "automation/server/declared_methods.h"
#include "automation/server/foreign.h"
#include "automation/server/methods.h"
#include "hosts/native/native_platform.h"
#include "services/running_hosts.h"

namespace quintara::test {
namespace {

using testing::HasSubstr;

/// What a method fails with when it is called with nothing, zeros and empty texts.
const std::map<std::string, int> kFailures = {
    {"Cls_RetrieveMatrix.Positionner", 91},
    {"Cls_RetrieveMatrix.recherche_Ligne_produit_Pere", 91},
    {"Cls_RetrieveMatrix.Operation_Matrice", 9},
    {"Cls_AllInstances.Positionner", 91},
    {"Cls_AllInstances.recherche_Ligne_produit_Pere", 91},
    {"Cls_AllInstances.Operation_Matrice", 9},
    {"Cls_AllInstances.getLineColumn", 91},
    {"Cls_Init.InitXML", 429},
    {"Cls_AdminSettings.SetSettingValues", 91},
    {"Cls_AdminSettings.GetSettingValues", 91},
    {"Cls_AdminSettings.GetSettingSection", 91},
    {"Cls_XML.Init", 429},
    {"Cls_XML.InitTranslator", 429},
    {"Cls_XML.InitLanguage", 91},
    {"Cls_Base64Class.EncodeByteArray", 9},
    {"Cls_Base64Class.DecodeToString", 9},
    {"Cls_Base64Class.DecodeToByteArray", 9},
    {"Cls_Utils.IsCorrectClassID", 91},
    {"Cls_Utils.RetrieveVDObject_FromLWT", 91},
    {"Cls_Utils.IsMatrixAlreadyExist", 91},
    {"Cls_Utils.IsMatrixAlreadyExistAsInformation", 91},
    {"Cls_Utils.PopulateObjectMasks", 91},
};

struct NamedMethod {
  std::string className;
  std::string name;

  std::string Full() const { return className + "." + name; }
};

std::vector<NamedMethod> AllMethods() {
  std::vector<NamedMethod> all;
  for (const auto& known : kDeclaredClasses) {
    for (const auto& declaration : known.methods) {
      all.push_back({known.name, declaration.substr(0, declaration.find('('))});
    }
  }
  return all;
}

class EachMethod : public testing::TestWithParam<NamedMethod> {
 protected:
  // Nothing, zero, or an empty text or array, by what the argument is.
  static CallArguments Neutral(const Client& client, const NamedMethod& named) {
    CallArguments arguments;
    const automation::Methods methods(InterfaceOf(named.className));
    auto name = Wide(named.name);
    auto* text = name.data();
    DISPID id = 0;
    client.Object()->GetIDsOfNames(IID_NULL, &text, 1, 0, &id);
    for (const auto& parameter : methods.Find(id)->parameters) {
      arguments.values.push_back(parameter.isArray ? Array() : Value());
    }
    return arguments;
  }
  static IID InterfaceOf(const std::string& className) {
    const auto& all = automation::PublicClasses();
    return std::ranges::find(all, Wide(className), &automation::PublicClass::name)->interfaceId;
  }

  TestPlatform platform;
};

TEST_P(EachMethod, SwallowsOrTellsItsFailuresAsItsClassDoes) {
  const Client client(GetParam().className);

  const auto outcome = client.CallWith(GetParam().name, Neutral(client, GetParam()));

  const auto failure = kFailures.find(GetParam().Full());
  if (failure == kFailures.end()) {
    EXPECT_EQ(outcome.result, S_OK) << outcome.description;
    return;
  }
  EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
  EXPECT_EQ(outcome.code, RunTimeError(failure->second));
  EXPECT_EQ(outcome.source, "Quintara." + GetParam().className);
  EXPECT_NE(outcome.description, "");
}

INSTANTIATE_TEST_SUITE_P(Called, EachMethod, testing::ValuesIn(AllMethods()),
                         [](const auto& named) { return named.param.className + "_" + named.param.name; });

class AnError : public testing::Test {
 protected:
  TestPlatform platform;
  Client utils{"Cls_Utils"};
};

TEST_F(AnError, OfAHostKeepsItsOwnNumber) {
  const auto session = Foreign::Failing(static_cast<HRESULT>(0x80041234U), "the database is down");

  const auto outcome = utils.Call("IsCorrectClassID", session, "Rack", 1);

  EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
  EXPECT_EQ(outcome.code, static_cast<HRESULT>(0x80041234U));
  EXPECT_THAT(outcome.description, HasSubstr("the database is down"));
  EXPECT_EQ(outcome.source, "Quintara.Cls_Utils");
}

TEST_F(AnError, OfAHostThatIsARunTimeErrorStaysOne) {
  const auto session = Foreign::Failing(RunTimeError(70), "locked");

  EXPECT_EQ(utils.Call("IsCorrectClassID", session, "Rack", 1).code, RunTimeError(70));
}

TEST_F(AnError, OfAMessagesParametersIsTold) {
  EXPECT_EQ(utils.Call("ShowMessage", "REP1", 64, Array(nullptr)).code, RunTimeError(13));
  EXPECT_EQ(utils.Call("GetMessage", "REP1", Array(nullptr)).code, RunTimeError(13));
}

TEST_F(AnError, IsToldToACallerWhoWantsNoDetails) {
  auto name = std::wstring(L"IsCorrectClassID");
  auto* text = name.data();
  DISPID id = 0;
  utils.Object()->GetIDsOfNames(IID_NULL, &text, 1, 0, &id);
  std::array<VARIANT, 3> arguments{};
  DISPPARAMS given{arguments.data(), nullptr, 3, 0};

  EXPECT_EQ(utils.Object()->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &given, nullptr, nullptr, nullptr),
            DISP_E_EXCEPTION);
}

TEST_F(AnError, OfOneCallIsNotThatOfTheNext) {
  utils.Call("IsCorrectClassID", nullptr, "", 0);

  const auto outcome = utils.Call("StripFileExtension", "a.b");

  EXPECT_EQ(outcome.result, S_OK);
  EXPECT_EQ(outcome.code, S_OK);
  EXPECT_EQ(outcome.description, "");
}

/// A platform that is broken in a way that nobody foresaw.
class BrokenPlatform : public NativePlatform {
 public:
  BrokenPlatform() : NativePlatform(std::make_shared<Gate>(), nullptr) {}

  int ShowBox(const std::string&, int, const std::string&) override { throw std::logic_error("no screen"); }
  std::string ToCodePage(std::string_view) override { throw std::logic_error("no code page"); }
  std::string Environment(const std::string& name) override { return name == "DEBUG" ? "True" : ""; }
};

class AnUnforeseenError : public AnError {
 protected:
  AnUnforeseenError() : before_(InstallPlatform(std::make_shared<BrokenPlatform>())) {}
  ~AnUnforeseenError() override { InstallPlatform(before_); }

 private:
  std::shared_ptr<Platform> before_;
};

TEST_F(AnUnforeseenError, IsToldWithItsText) {
  const auto outcome = utils.Call("ShowMessage", "told", 64, Array());

  EXPECT_EQ(outcome.code, E_FAIL);
  EXPECT_EQ(outcome.description, "no screen");
  EXPECT_EQ(outcome.source, "Quintara.Cls_Utils");
}

TEST_F(AnUnforeseenError, IsToldWhereATextIsEncoded) {
  const auto outcome = Client("Cls_Base64Class").Call("EncodeString", "text");

  EXPECT_EQ(outcome.code, E_FAIL);
  EXPECT_EQ(outcome.description, "no code page");
}

TEST_F(AnUnforeseenError, IsToldWhereOneIsShown) {
  const auto error = Foreign::New([](const std::string& member, DISPPARAMS&, VARIANT& result, EXCEPINFO&) {
    result = (member == "Number" ? Value(std::int32_t{13}) : Value(std::string("Type mismatch"))).Release();
    return S_OK;
  });

  EXPECT_EQ(utils.Call("GetError", "Main", error).description, "no screen");
}

TEST_F(AnUnforeseenError, IsOneThatIsMissingWhereOneIsShown) {
  EXPECT_EQ(utils.Call("GetError", "Main", nullptr).code, RunTimeError(91));
}

/// A platform on which somebody debugs.
class DebugPlatform : public NativePlatform {
 public:
  explicit DebugPlatform(std::vector<Box>& boxes)
      : NativePlatform(std::make_shared<Gate>(),
                       [&boxes](const std::string& text, int style, const std::string& title) {
                         boxes.push_back({text, style, title});
                         return answer::kOk;
                       }) {}

  std::string Environment(const std::string& name) override { return name == "DEBUG" ? "True" : ""; }
};

TEST_F(AnError, OfAScriptIsShownToThoseWhoDebug) {
  std::vector<Box> boxes;
  const auto before = InstallPlatform(std::make_shared<DebugPlatform>(boxes));
  const auto error = Foreign::New([](const std::string& member, DISPPARAMS&, VARIANT& result, EXCEPINFO&) {
    result = (member == "Number" ? Value(std::int32_t{13}) : Value(std::string("Type mismatch"))).Release();
    return S_OK;
  });

  const auto outcome = utils.Call("GetError", "Main", error);
  InstallPlatform(before);

  EXPECT_EQ(outcome.result, S_OK);
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_THAT(boxes[0].text, HasSubstr("''Main''"));
  EXPECT_THAT(boxes[0].text, HasSubstr(": 13"));
  EXPECT_THAT(boxes[0].text, HasSubstr(": Type mismatch"));
}

TEST_F(AnError, OfAScriptIsNotReadWhereNobodyDebugs) {
  const auto error = Foreign::Failing(E_FAIL, "must not be asked");

  EXPECT_EQ(utils.Call("GetError", "Main", error).result, S_OK);
  EXPECT_TRUE(error->calls.empty());
}

TEST(AFailureOfACommandWithoutHandler, GoesToItsCaller) {
  RunningHosts hosts;
  hosts.RunVault();
  hosts.RunZorva();
  const auto wip = hosts.host.Application()->Documents()->Add("ZVAProduct")->AsProductDocument()->Product();
  Cls_Utils().WriteStringProperty(wip, "WIP", "TRUE");

  // It has a dialog, and there is no screen.
  const auto outcome = Client("Cls_ReplaceByLatestLWT").Call("Run");

  EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
  EXPECT_EQ(outcome.code, RunTimeError(429));
  EXPECT_EQ(outcome.source, "Quintara.Cls_ReplaceByLatestLWT");
}

}  // namespace
}  // namespace quintara::test
