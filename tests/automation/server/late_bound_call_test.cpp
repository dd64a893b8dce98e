#include <gmock/gmock.h>

#include "access/access_fixture.h"
#include "automation/dispatch/text16.h"
#include "automation/server/client.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Calls by name on the common operations, as scripts make them.
class ALateBoundCall : public testing::Test, protected AccessBench {
 protected:
  // In variables that a script has.
  static Value Text(const std::string& text) { return Value(text); }
  static Variant Held(const Value& variable) { return automation::ToVariant(variable.Raw(), nullptr); }

  Client utils{"Cls_Utils"};
};

TEST_F(ALateBoundCall, FindsAMethodInWhateverCapitals) {
  EXPECT_EQ(utils.Call("STRIPfileextension", "a.b").Given(), Variant("a"));
}

TEST_F(ALateBoundCall, DoesNotFindWhatIsNoMethod) {
  EXPECT_EQ(utils.Call("MatriceResultat").result, DISP_E_UNKNOWNNAME);
}

TEST_F(ALateBoundCall, DoesNotSetProperties) {
  CallArguments text;
  text.values.push_back(Passed("a.b"));

  EXPECT_EQ(utils.CallWith("StripFileExtension", std::move(text), DISPATCH_PROPERTYPUT).result, DISP_E_MEMBERNOTFOUND);
}

TEST_F(ALateBoundCall, MayAskForAPropertyWhereAMethodIs) {
  CallArguments text;
  text.values.push_back(Passed("a.b"));

  EXPECT_EQ(utils.CallWith("StripFileExtension", std::move(text), DISPATCH_PROPERTYGET).Given(), Variant("a"));
}

TEST_F(ALateBoundCall, TakesAVariable) {
  auto path = Text("a.b");

  EXPECT_EQ(utils.Call("StripFileExtension", path).Given(), Variant("a"));
}

TEST_F(ALateBoundCall, TakesAVariableBehindAnother) {
  auto path = Text("a.b");
  auto outer = Passed(path);

  EXPECT_EQ(utils.Call("StripFileExtension", outer).Given(), Variant("a"));
}

TEST_F(ALateBoundCall, TakesAVariableThatHasAType) {
  auto* path = automation::NewBstr("a.b");

  EXPECT_EQ(utils.Call("StripFileExtension", &path).Given(), Variant("a"));

  SysFreeString(path);
}

TEST_F(ALateBoundCall, TakesANumberForAText) {
  EXPECT_EQ(utils.Call("StripFileExtension", 12.5).Given(), Variant("12"));
}

TEST_F(ALateBoundCall, TakesEmptyForAText) {
  EXPECT_EQ(utils.Call("StripFileExtension", Value()).Given(), Variant(""));
}

TEST_F(ALateBoundCall, TakesNullForAText) {
  Value null;
  null.Raw().vt = VT_NULL;

  EXPECT_EQ(utils.Call("StripFileExtension", null).Given(), Variant(""));
}

TEST_F(ALateBoundCall, TakesATextForANumber) {
  utils.Call("ShowMessage", "told", "64", Array());

  EXPECT_THAT(Boxes(), ElementsAre(Told("told", 64)));
}

TEST_F(ALateBoundCall, RoundsANumberToAWholeOne) {
  utils.Call("ShowMessage", "told", 64.4, Array());

  EXPECT_THAT(Boxes(), ElementsAre(Told("told", 64)));
}

TEST_F(ALateBoundCall, NeverWritesWhatIsOnlyTaken) {
  Value path(12.5);

  utils.Call("StripFileExtension", path);

  EXPECT_EQ(Held(path), Variant(12.5));
}

TEST_F(ALateBoundCall, LeavesTheTextAndTheParametersOfGetMessage) {
  auto message = Text("REP1 and REP2");
  auto parameters = Array("one", 2);

  const auto outcome = utils.Call("GetMessage", message, parameters);

  EXPECT_EQ(outcome.Given(), Variant("one and 2"));
  EXPECT_EQ(Held(message), Variant("REP1 and REP2"));
}

TEST_F(ALateBoundCall, FillsTheTextOfAMessageInPlace) {
  auto message = Text("REP1ENTREP2");

  const auto outcome = utils.Call("ShowMessage", message, 64, Array("one", "two"));

  EXPECT_EQ(Held(message), Variant("one\r\ntwo"));
  EXPECT_EQ(outcome.Given(), Variant(std::int32_t{answer::kOk}));
  EXPECT_THAT(Boxes(), ElementsAre(Told("one\r\ntwo", 64)));
}

TEST_F(ALateBoundCall, FillsATextThatHasAType) {
  auto* message = automation::NewBstr("REP1");

  utils.Call("ShowMessage", &message, 64, Array("one"));

  EXPECT_EQ(automation::FromBstr(message), "one");
  SysFreeString(message);
}

TEST_F(ALateBoundCall, ShowsAConstantTextAsWell) {
  EXPECT_EQ(utils.Call("ShowMessage", "REP1", 64, Array("one")).result, S_OK);

  EXPECT_THAT(Boxes(), ElementsAre(Told("one", 64)));
}

TEST_F(ALateBoundCall, BringsBackWhatWasFilledBeforeAFailure) {
  auto message = Text("REP1 REP2");

  const auto outcome = utils.Call("ShowMessage", message, 64, Array("one", nullptr));

  EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
  EXPECT_EQ(Held(message), Variant("one REP2"));
}

TEST_F(ALateBoundCall, GivesEmptyForAMessageWithoutText) {
  const auto outcome = utils.Call("ShowMessage", "", 64, Array());

  EXPECT_TRUE(outcome.Given().IsEmpty());
  EXPECT_THAT(Boxes(), ElementsAre(Told("Nothing to say", 16)));
}

TEST_F(ALateBoundCall, TakesParametersInAVariable) {
  auto parameters = Array("one");

  EXPECT_EQ(utils.Call("GetMessage", "REP1", parameters).Given(), Variant("one"));
}

TEST_F(ALateBoundCall, TakesAnArrayOfTexts) {
  Value texts;
  texts.Raw().vt = VT_ARRAY | VT_BSTR;
  texts.Raw().parray = SafeArrayCreateVector(VT_BSTR, 0, 1);
  static_cast<BSTR*>(texts.Raw().parray->pvData)[0] = automation::NewBstr("one");

  EXPECT_EQ(utils.Call("GetMessage", "REP1", texts).Given(), Variant("one"));
}

TEST_F(ALateBoundCall, TakesNoParametersWhereThereIsNoArrayYet) {
  EXPECT_EQ(utils.Call("GetMessage", "REP1", Value()).Given(), Variant("REP1"));
}

TEST_F(ALateBoundCall, CountsParametersFromZero) {
  std::vector<Value> elements;
  elements.push_back(Passed("one"));

  const auto outcome = utils.Call("GetMessage", "REP1", ArrayOf(std::move(elements), 1));

  EXPECT_EQ(outcome.code, RunTimeError(9));
}

TEST_F(ALateBoundCall, TakesArgumentsByTheirNames) {
  CallArguments arguments;
  arguments.values.push_back(Array("one"));
  arguments.values.push_back(Passed("REP1"));
  arguments.names = {L"parameter", L"Message"};

  EXPECT_EQ(utils.CallWith("GetMessage", std::move(arguments)).Given(), Variant("one"));
}

TEST_F(ALateBoundCall, TakesNamedArgumentsBehindOthers) {
  CallArguments arguments;
  arguments.values.push_back(Passed("REP1"));
  arguments.values.push_back(Array("one"));
  arguments.names = {L"Parameter"};

  EXPECT_EQ(utils.CallWith("GetMessage", std::move(arguments)).Given(), Variant("one"));
}

TEST_F(ALateBoundCall, RefusesANameThatNoArgumentHas) {
  CallArguments arguments;
  arguments.values.push_back(Passed("REP1"));
  arguments.names = {L"Text"};

  EXPECT_EQ(utils.CallWith("GetMessage", std::move(arguments)).result, DISP_E_UNKNOWNNAME);
}

TEST_F(ALateBoundCall, RefusesAnArgumentThatIsGivenTwice) {
  CallArguments arguments;
  arguments.values.push_back(Passed("REP1"));
  arguments.values.push_back(Passed("REP1"));
  arguments.names = {L"Message"};

  EXPECT_EQ(utils.CallWith("GetMessage", std::move(arguments)).result, DISP_E_PARAMNOTFOUND);
}

TEST_F(ALateBoundCall, RefusesAnArgumentTooMany) {
  EXPECT_EQ(utils.Call("StripFileExtension", "a.b", "c").result, DISP_E_BADPARAMCOUNT);
}

TEST_F(ALateBoundCall, RefusesToGoWithoutAnArgument) {
  EXPECT_EQ(utils.Call("StripFileExtension").result, DISP_E_PARAMNOTOPTIONAL);
  EXPECT_EQ(utils.Call("StripFileExtension", LeftOut()).result, DISP_E_PARAMNOTOPTIONAL);
}

TEST_F(ALateBoundCall, RefusesAnObjectForAText) {
  const auto outcome = utils.Call("GetMessage", utils.Object(), Array());

  EXPECT_EQ(outcome.result, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(outcome.faulty, 1U);
}

TEST_F(ALateBoundCall, RefusesATextForAnObject) {
  EXPECT_EQ(utils.Call("TestWIP", "a product").result, DISP_E_TYPEMISMATCH);
}

TEST_F(ALateBoundCall, RefusesATextForAnArray) {
  const auto outcome = utils.Call("GetMessage", "REP1", "one");

  EXPECT_EQ(outcome.result, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(outcome.faulty, 0U);
}

TEST_F(ALateBoundCall, RefusesATextThatIsNoNumber) {
  EXPECT_EQ(utils.Call("ShowMessage", "told", "loud", Array()).result, DISP_E_TYPEMISMATCH);
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(ALateBoundCall, RefusesANumberThatDoesNotFit) {
  EXPECT_EQ(utils.Call("IsCorrectClassID", nullptr, "", 40000).result, DISP_E_OVERFLOW);
}

TEST_F(ALateBoundCall, TakesNothingEmptyAndNullForAnObject) {
  Value null;
  null.Raw().vt = VT_NULL;

  EXPECT_EQ(utils.Call("TestWIP", nullptr).Given(), Variant(false));
  EXPECT_EQ(utils.Call("TestWIP", Value()).Given(), Variant(false));
  EXPECT_EQ(utils.Call("TestWIP", null).Given(), Variant(false));
}

TEST_F(ALateBoundCall, MayLeaveOutWhatIsOptional) {
  EXPECT_EQ(utils.Call("ReadStringProperty", nullptr, "WIP").Given(), Variant(""));
  EXPECT_EQ(utils.Call("ReadStringProperty", nullptr, "WIP", LeftOut()).Given(), Variant(""));
  EXPECT_EQ(utils.Call("ReadStringProperty", nullptr, "WIP", "Integer").Given(), Variant("-1"));
}

TEST_F(ALateBoundCall, MayHaveNoUseForTheResult) {
  auto name = std::wstring(L"StripFileExtension");
  auto* text = name.data();
  DISPID id = 0;
  utils.Object()->GetIDsOfNames(IID_NULL, &text, 1, 0, &id);
  auto path = Passed("a.b");
  DISPPARAMS given{&path.Raw(), nullptr, 1, 0};

  EXPECT_EQ(utils.Object()->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &given, nullptr, nullptr, nullptr), S_OK);
}

}  // namespace
}  // namespace quintara::test
