#include "hosts/vault/import_fixture.h"

namespace quintara::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

template <class Maker>
class VaultImportRefusals : public ImportTest<Maker> {
 protected:
  // Import and preview fail alike, and change nothing.
  void ExpectRefusal(const AssemblyPlan& plan, const testing::Matcher<const std::string&>& text) {
    this->Remember();

    const auto failure = FailureOf([&] { this->Import(plan); });

    EXPECT_NE(failure.Number(), 0);
    EXPECT_THAT(failure.Description(), text);
    this->ExpectNothingChanged();
    EXPECT_EQ(FailureOf([&] { this->vault->PreviewImport(plan, {}); }).Description(), failure.Description());
    this->ExpectNothingChanged("after the preview");
  }
};
TYPED_TEST_SUITE(VaultImportRefusals, Databases, DatabaseName);

TYPED_TEST(VaultImportRefusals, RefusesWhatChangedAndIsNewCheckedOutOrObsoleteAndNamesAllOfIt) {
  this->Import(this->Car());
  const auto bolt = this->Newest("BOLT");
  this->CheckOut(bolt);
  this->Release(this->Newest("NUT"));
  this->Util()->Obsolete(this->Newest("NUT"), nullptr, false);
  this->vault->NewRevision(this->Newest("AXLE"));
  const auto plan = this->Car();
  for (const auto* name : {"BOLT.stp", "NUT.stp", "AXLE.ZVAProduct", "CAR.ZVAProduct"})
    this->WriteSplit(name, "changed");

  this->ExpectRefusal(plan,
                      AllOf(HasSubstr("\"BOLT\" has changed, and its revision A is checked out"),
                            HasSubstr("\"NUT\" has changed, and its revision A is obsolete"),
                            HasSubstr("\"AXLE\" has changed, and its revision B is new"), Not(HasSubstr("\"CAR\""))));
}

TYPED_TEST(VaultImportRefusals, PassesOverWhatIsCheckedOutAndDidNotChange) {
  this->Import(this->Car());
  this->CheckOut(this->Newest("BOLT"));
  const auto plan = this->Car();
  this->WriteSplit("NUT.stp", "another nut");

  EXPECT_EQ(this->Import(plan)[this->kNut].outcome, Outcome::kRevised);
  EXPECT_EQ(this->StateOf(this->Newest("BOLT")), 2);
}

TYPED_TEST(VaultImportRefusals, RefusesAPartNumberOfTheOtherClass) {
  this->AddPart("CAR");
  this->AddProduct("BOLT");

  this->ExpectRefusal(this->Car(), AllOf(HasSubstr("\"CAR\" is an object of the class \"ZORVA Part\" in the vault"),
                                         HasSubstr("\"BOLT\" is an object of the class \"ZORVA Product\"")));
}

TYPED_TEST(VaultImportRefusals, RefusesAPartNumberThatDiffersInCapitalsAlone) {
  this->AddPart("Bolt");
  this->AddPart("B\xC3\x96LT");
  auto plan = this->Car();
  plan.definitions.insert(plan.definitions.begin() + this->kAxle, this->Part("b\xC3\xB6lt", "x"));
  plan.definitions[4].children = {{3, 2}, {0, 3}};

  this->ExpectRefusal(plan, AllOf(HasSubstr("\"BOLT\" differs only in capitals from \"Bolt\""),
                                  HasSubstr("\"b\xC3\xB6lt\" differs only in capitals from \"B\xC3\x96LT\"")));
}

TYPED_TEST(VaultImportRefusals, RefusesAPartNumberOfSeveralObjects) {
  this->AddPart("BOLT");
  this->AddPart("BOLT");

  this->ExpectRefusal(this->Car(), HasSubstr("\"BOLT\" is the part number of 2 objects"));
}

TYPED_TEST(VaultImportRefusals, RefusesOnePartNumberTwiceWhateverItsCapitals) {
  this->ExpectRefusal({{this->Part("BOLT", "a"), this->Part("bolt", "b")}}, HasSubstr("\"bolt\" twice"));
}

TYPED_TEST(VaultImportRefusals, RefusesAnEmptyPartNumber) {
  auto plan = this->Car();
  plan.definitions[this->kNut].partNumber.clear();

  this->ExpectRefusal(plan, HasSubstr("a part number is empty"));
}

TYPED_TEST(VaultImportRefusals, RefusesAPlanThatIsNotBottomUp) {
  auto plan = this->Car();
  plan.definitions[this->kAxle].children = {{this->kCar, 1}};

  this->ExpectRefusal(plan, HasSubstr("\"AXLE\" stands before one of its children"));
}

TYPED_TEST(VaultImportRefusals, RefusesAnAssemblyThatHoldsItself) {
  auto plan = this->Car();
  plan.definitions[this->kAxle].children = {{this->kAxle, 1}};

  this->ExpectRefusal(plan, HasSubstr("\"AXLE\" stands before"));
}

TYPED_TEST(VaultImportRefusals, RefusesAChildNamedTwiceOrWithoutAnInstance) {
  auto plan = this->Car();
  plan.definitions[this->kCar].children = {{this->kBolt, 1}, {this->kBolt, 1}};
  this->ExpectRefusal(plan, HasSubstr("\"CAR\" names one child twice"));

  plan.definitions[this->kCar].children = {{this->kBolt, 0}};
  this->ExpectRefusal(plan, HasSubstr("\"CAR\" has a child without an instance"));
}

TYPED_TEST(VaultImportRefusals, RefusesAPartWithChildren) {
  auto plan = this->Car();
  plan.definitions[this->kCar].isAssembly = false;

  this->ExpectRefusal(plan, HasSubstr("the part \"CAR\" has children"));
}

TYPED_TEST(VaultImportRefusals, RefusesAnUnknownClass) {
  AssemblyImportOptions options;
  options.partClass = "Thing";

  EXPECT_THAT(FailureOf([&] { this->Import(this->Car(), options); }).Description(), HasSubstr("Thing"));
}

TYPED_TEST(VaultImportRefusals, LeavesNothingBehindWhenAFileIsMissing) {
  const auto plan = this->Car();
  std::filesystem::remove(this->SplitPath("CAR.ZVAProduct"));
  this->Remember();

  EXPECT_THAT(FailureOf([&] { this->Import(plan); }).Description(), HasSubstr("CAR.ZVAProduct"));
  this->ExpectNothingChanged();
}

TYPED_TEST(VaultImportRefusals, NeedsTheRightToCheckIn) {
  this->vault->AddUser("ann", "pw", false);
  auto options = this->Options();
  options.login = "ann";
  options.password = "pw";
  const auto plan = this->Car();
  this->Open(options);
  this->Remember();

  EXPECT_THAT(FailureOf([&] { this->Import(plan); }), FailsWith(failure::kPermissionDenied));
  this->ExpectNothingChanged();
}

TYPED_TEST(VaultImportRefusals, NeedsALogOn) {
  const auto plan = this->Car();
  this->Session()->UserLogoff();

  EXPECT_THAT(FailureOf([&] { this->Import(plan); }), FailsWith(failure::kPermissionDenied));
}

}  // namespace
}  // namespace quintara::test
