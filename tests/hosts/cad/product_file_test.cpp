#include "hosts/cad/product_file.h"

#include "hosts/cad/contract/fixture.h"

namespace quintara::cad {
namespace {

using test::FailureOf;
using testing::AllOf;
using testing::HasSubstr;

const std::string kIdentity = "position=\"1 0 0 0 1 0 0 0 1 0 0 0\"";

std::string InRoot(const std::string& content) {
  return "<ZVAProduct partNumber=\"ROOT\">" + content + "</ZVAProduct>";
}

std::string FaultOf(const std::string& bytes) {
  const auto failure = FailureOf([&] { ParseProductFile(bytes, "/w/A.ZVAProduct"); });
  EXPECT_EQ(failure.Number(), failure::kInvalidFormat) << bytes;
  EXPECT_THAT(failure.Description(), HasSubstr("/w/A.ZVAProduct"));
  return failure.Description();
}

TEST(ProductFileTest, ComesBackAsItWasWritten) {
  ProductFile product{"ROOT", "Name", test::At(1), {}, {}, {}};
  product.properties.Create("WIP", "TRUE");
  product.components.push_back({"A \"1\"", "A.lwt", test::At(0.1), {}});
  product.components.back().properties.Create("<T>", "a & b\r\n");
  product.references.push_back({"A.lwt", {}});
  product.references.back().properties.Create("TYPE", "LWT");

  const auto text = ProductFileText(product);

  const auto back = ParseProductFile(text, "A.ZVAProduct");
  EXPECT_EQ(ProductFileText(back), text);
  EXPECT_EQ(back.components[0].properties.Find("<T>")->value, "a & b\r\n");
  EXPECT_EQ(back.components[0].position, test::At(0.1));
  EXPECT_EQ(back.references[0].properties.Find("TYPE")->value, "LWT");
}

TEST(ProductFileTest, WhatIsNoXmlIsRefused) {
  FaultOf("");
  FaultOf("ROOT");
  FaultOf("<ZVAProduct partNumber=\"A\">");
  FaultOf("<ZVAProduct partNumber=\"A\"/><ZVAProduct partNumber=\"A\"/>");
  FaultOf("<!DOCTYPE x [<!ENTITY e SYSTEM \"file:///etc/passwd\">]><ZVAProduct partNumber=\"&e;\"/>");
  FaultOf("<ZVAProduct partNumber=\"\xFF\"/>");
}

TEST(ProductFileTest, AnotherRootIsRefused) {
  EXPECT_THAT(FaultOf("<Product partNumber=\"A\"/>"), HasSubstr("<ZVAProduct>"));
}

TEST(ProductFileTest, APartNumberIsNeeded) {
  EXPECT_THAT(FaultOf("<ZVAProduct/>"), HasSubstr("partNumber"));
  EXPECT_THAT(FaultOf("<ZVAProduct partNumber=\"\"/>"), HasSubstr("empty"));
}

TEST(ProductFileTest, WhatIsNotKnownIsRefused) {
  EXPECT_THAT(FaultOf("<ZVAProduct partNumber=\"A\" colour=\"red\"/>"), HasSubstr("colour"));
  EXPECT_THAT(FaultOf(InRoot("<Part/>")), HasSubstr("Part"));
  EXPECT_THAT(FaultOf(InRoot("text")), HasSubstr("text"));
  EXPECT_THAT(FaultOf(InRoot("<Property name=\"a\" value=\"b\"><x/></Property>")), HasSubstr("<x>"));
}

TEST(ProductFileTest, AComponentIsNamedWithItsFault) {
  EXPECT_THAT(FaultOf(InRoot("<Component file=\"a.stp\" " + kIdentity + "/>")),
              AllOf(HasSubstr("<Component> 1"), HasSubstr("name")));
  EXPECT_THAT(FaultOf(InRoot("<Component name=\"P\" " + kIdentity + "/>")),
              AllOf(HasSubstr("(\"P\")"), HasSubstr("file")));
  EXPECT_THAT(FaultOf(InRoot("<Component name=\"P\" file=\"a.txt\" " + kIdentity + "/>")),
              AllOf(HasSubstr("(\"P\")"), HasSubstr("a.txt")));
  EXPECT_THAT(FaultOf(InRoot("<Component name=\"P\" file=\"\" " + kIdentity + "/>")), HasSubstr("file"));
  EXPECT_THAT(
      FaultOf(InRoot("<Component name=\"P\" file=\"a.stp\" " + kIdentity + "/><Component name=\"Q\" file=\"a.stp\"/>")),
      AllOf(HasSubstr("<Component> 2 (\"Q\")"), HasSubstr("position")));
}

TEST(ProductFileTest, APositionIsTwelveFiniteNumbers) {
  for (const auto* const position :
       {"", "1", "1 0 0 0 1 0 0 0 1 0 0", "1 0 0 0 1 0 0 0 1 0 0 0 0", "1 0 0 0 1 0 0 0 1 0 0 x",
        "1 0 0 0 1 0 0 0 1 0 0 nan", "1 0 0 0 1 0 0 0 1 0 0 inf", "1 0 0 0 1 0 0 0 1 0 0 1e999",
        "1 0 0 0 1 0 0 0 1 0 0 0,5", "1  0 0 0 1 0 0 0 1 0 0 0", " 1 0 0 0 1 0 0 0 1 0 0 0"}) {
    EXPECT_THAT(FaultOf(InRoot("<Component name=\"P\" file=\"a.stp\" position=\"" + std::string(position) + "\"/>")),
                HasSubstr("position"))
        << position;
  }
}

TEST(ProductFileTest, APropertyHasANameOfItsOwnAndAValue) {
  EXPECT_THAT(FaultOf(InRoot("<Property value=\"b\"/>")), HasSubstr("name"));
  EXPECT_THAT(FaultOf(InRoot("<Property name=\"\" value=\"b\"/>")), HasSubstr("name"));
  EXPECT_THAT(FaultOf(InRoot("<Property name=\"a\"/>")), HasSubstr("value"));
  EXPECT_THAT(FaultOf(InRoot("<Property name=\"a\" value=\"1\"/><Property name=\"a\" value=\"2\"/>")),
              HasSubstr("twice"));
}

TEST(ProductFileTest, AReferenceIsTheFileOfAComponentAndStandsOnce) {
  const auto component = "<Component name=\"P\" file=\"a.stp\" " + kIdentity + "/>";
  EXPECT_THAT(FaultOf(InRoot(component + "<Reference file=\"b.stp\"/>")), HasSubstr("b.stp"));
  EXPECT_THAT(FaultOf(InRoot(component + "<Reference file=\"a.stp\"/><Reference file=\"a.stp\"/>")),
              HasSubstr("twice"));
  EXPECT_THAT(FaultOf(InRoot("<Component name=\"P\" file=\"a.ZVAProduct\" " + kIdentity +
                             "/><Reference file=\"a.ZVAProduct\"/>")),
              HasSubstr("itself"));
  EXPECT_THAT(FaultOf(InRoot(component + "<Reference/>")), HasSubstr("file"));
}

TEST(ProductFileTest, DeepNestingIsRefusedWithoutHarm) {
  std::string deep;
  for (int i = 0; i < 100000; ++i) deep += "<x>";
  for (int i = 0; i < 100000; ++i) deep += "</x>";

  EXPECT_THAT(FaultOf(InRoot(deep)), HasSubstr("<x>"));
}

TEST(ProductFileTest, APositionThatIsNotFiniteIsNotWritten) {
  ProductFile product{"ROOT", {}, test::At(std::numeric_limits<double>::infinity()), {}, {}, {}};

  FailureOf([&] { ProductFileText(product); });
}

}  // namespace
}  // namespace quintara::cad
