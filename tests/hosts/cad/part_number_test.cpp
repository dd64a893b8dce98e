#include <gtest/gtest.h>

#include <map>
#include <random>

#include "hosts/cad/cad_host.h"
#include "hosts/cad/contract/fixture.h"

namespace quintara::test {
namespace {

using testing::HasSubstr;

/// Files that are only read.
class MemoryFiles : public FileContents {
 public:
  std::string Read(const std::string& path) override {
    const auto file = bytes.find(path);
    if (file == bytes.end()) throw Failure(failure::kFileNotFound);
    return file->second;
  }
  void Write(const std::string&, const std::string&) override { throw Failure(failure::kPermissionDenied); }
  void WriteUnsynced(const std::string&, const std::string&) override { throw Failure(failure::kPermissionDenied); }
  void SyncAll(const std::vector<std::string>&) override { throw Failure(failure::kPermissionDenied); }
  void WriteWhole(const std::string&, const std::string&) override { throw Failure(failure::kPermissionDenied); }
  void Rename(const std::string&, const std::string&) override { throw Failure(failure::kPermissionDenied); }
  void RenameAll(const std::vector<NewName>&) override { throw Failure(failure::kPermissionDenied); }

  std::map<std::string, std::string> bytes;
};

class PartNumbers : public testing::Test {
 protected:
  std::string Of(const std::string& name, const std::string& bytes) {
    files.bytes[name] = bytes;
    return PartNumberOfFile(name, files);
  }
  static std::string Step(const std::string& data) {
    return "ISO-10303-21;\nHEADER;\nFILE_NAME('x;''PRODUCT(','',(''));\nENDSEC;\nDATA;\n" + data +
           "\nENDSEC;\nEND-ISO-10303-21;\n";
  }
  std::string OfStep(const std::string& data) { return Of("a.stp", Step(data)); }
  std::string OfName(const std::string& raw) { return OfStep("#1=PRODUCT('id','" + raw + "','',(#2));"); }
  void ExpectRefused(const std::string& name, const std::string& bytes, const std::string& why) {
    const auto failure = FailureOf([&] { Of(name, bytes); });
    EXPECT_EQ(failure.Number(), failure::kInvalidFormat) << bytes;
    EXPECT_THAT(failure.Description(), testing::AllOf(HasSubstr(name), HasSubstr(why)));
  }

  MemoryFiles files;
};

TEST_F(PartNumbers, OfAStepPartIsTheNameOfItsProduct) {
  EXPECT_EQ(OfStep("#1=PRODUCT('id','PLATE','text',(#2));"), "PLATE");
}

TEST_F(PartNumbers, WithoutANameItIsTheId) {
  EXPECT_EQ(OfStep("#1=PRODUCT('P-7','','',(#2));"), "P-7");
  EXPECT_EQ(OfStep("#1=PRODUCT('P-7','  ','',(#2));"), "P-7");
  EXPECT_EQ(OfStep("#1=PRODUCT('P-7',$,'',(#2));"), "P-7");
}

TEST_F(PartNumbers, OfAStepAssemblyIsThatOfTheProductWhichNoOtherHolds) {
  EXPECT_EQ(
      OfStep("#10=PRODUCT('1','PLATE','',());#11=PRODUCT_DEFINITION_FORMATION('','',#10);"
             "#12=PRODUCT_DEFINITION('','',#11,#9);"
             "#20=PRODUCT('2','ROOT','',());#21=PRODUCT_DEFINITION_FORMATION_WITH_SPECIFIED_SOURCE('','',#20,.MADE.);"
             "#22=PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS('','',#21,#9,(#1,#2));"
             "#30=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#22,#12,$);"),
      "ROOT");
}

TEST_F(PartNumbers, AUsageMayStandBeforeWhatItNames) {
  EXPECT_EQ(OfStep("#30=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#22,#12,$);#12=PRODUCT_DEFINITION('','',#11,#9);"
                   "#11=PRODUCT_DEFINITION_FORMATION('','',#10);#10=PRODUCT('1','PLATE','',());"
                   "#20=PRODUCT('2','ROOT','',());"),
            "ROOT");
}

TEST_F(PartNumbers, AProductWithAShapeGoesBeforeAMaterial) {
  EXPECT_EQ(OfStep("#1=PRODUCT('1','STEEL','',());#2=PRODUCT('2','PLATE','',());"
                   "#3=PRODUCT_DEFINITION_FORMATION('','',#2);#4=PRODUCT_DEFINITION('','',#3,#9);"
                   "#5=PRODUCT_DEFINITION_SHAPE('','',#4);"),
            "PLATE");
}

TEST_F(PartNumbers, AnAssemblyGoesBeforeAProductThatStandsAlone) {
  EXPECT_EQ(OfStep("#1=PRODUCT('1','ALONE','',());#2=PRODUCT('2','ROOT','',());#3=PRODUCT('3','CHILD','',());"
                   "#4=PRODUCT_DEFINITION_FORMATION('','',#2);#5=PRODUCT_DEFINITION('','',#4,#9);"
                   "#6=PRODUCT_DEFINITION_FORMATION('','',#3);#7=PRODUCT_DEFINITION('','',#6,#9);"
                   "#8=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#5,#7,$);"),
            "ROOT");
}

TEST_F(PartNumbers, BlanksBreaksAndCommentsMayStandAnywhere) {
  EXPECT_EQ(Of("a.step",
               "/* ; ' */ ISO-10303-21 ;\r\nDATA;\r\n# 1 = PRODUCT('x','no','',());\r\n"
               "#1 /* '; */\t=\n PRODUCT /* ( */ (\r\n 'id' , /* ' */ 'PL\r\nATE' , $ , ( #2 , 'x)' ) ) ;"
               "ENDSEC;END-ISO-10303-21;"),
            "PLATE");
}

TEST_F(PartNumbers, AStepFileMayBeginWithAByteOrderMark) {
  EXPECT_EQ(Of("a.stp", "\xEF\xBB\xBF" + Step("#1=PRODUCT('id','PLATE','',());")), "PLATE");
}

TEST_F(PartNumbers, OtherEntitiesAndTextsThatLookAlikeAreNotTaken) {
  EXPECT_EQ(OfStep("#1=APPLICATION_CONTEXT('#9=PRODUCT(''a'',''b'','''',());');#2=PRODUCT_CONTEXT('','b',#1);"
                   "#3=PRODUCT_RELATED_PRODUCT_CATEGORY('part','c',(#5));#4=(PRODUCT('d','e','',()) CHILD());"
                   "/* #6=PRODUCT('f','g','',()); */ #5=PRODUCT('id','PLATE','',(#2));PRODUCT('h','i','',());"),
            "PLATE");
}

TEST_F(PartNumbers, StepEscapesAreDecoded) {
  EXPECT_EQ(OfName("it''s"), "it's");
  EXPECT_EQ(OfName("C:\\\\X"), "C:\\X");
  EXPECT_EQ(OfName("Geh\\S\\duse"), "Gehäuse");
  EXPECT_EQ(OfName("\\PA\\Geh\\X\\E4use"), "Gehäuse");
  EXPECT_EQ(OfName("\\X2\\00E400DF\\X0\\x"), "äßx");
  EXPECT_EQ(OfName("\\X2\\D83DDE00\\X0\\"), "\xF0\x9F\x98\x80");
  EXPECT_EQ(OfName("\\X4\\0001F600\\X0\\"), "\xF0\x9F\x98\x80");
  EXPECT_EQ(OfName("\\X2\\30\r\n42\\X0\\"), "\xE3\x81\x82");
}

TEST_F(PartNumbers, IncompleteStepEscapesStandForThemselves) {
  for (const auto* const raw : {"C:\\temp", "a\\", "\\X\\G1", "\\X2\\00E4", "\\X2\\00G4\\X0\\", "\\X2\\00E\\X0\\",
                                "\\X\\", "\\S\\", "\\P", "\\X4\\1F600\\X0\\"}) {
    EXPECT_EQ(OfName(raw), raw);
  }
}

TEST_F(PartNumbers, CodesThatAreNoCharacterAreReplaced) {
  const std::string replacement = "\xEF\xBF\xBD";

  EXPECT_EQ(OfName("\\X2\\D83D\\X0\\"), replacement);
  EXPECT_EQ(OfName("\\X2\\DE00D83D0041\\X0\\"), replacement + replacement + "A");
  EXPECT_EQ(OfName("\\X4\\00110000\\X0\\"), replacement);
  EXPECT_EQ(OfName("a\\X\\00"), "a" + replacement);
}

TEST_F(PartNumbers, RawTextIsUtf8OrElseWindows1252) {
  EXPECT_EQ(OfName("Gehäuse"), "Gehäuse");
  EXPECT_EQ(OfName("Geh\xE4use \x80"), "Gehäuse €");
}

TEST_F(PartNumbers, ADamagedStepFileIsRefused) {
  ExpectRefused("a.stp", "", "no STEP file");
  ExpectRefused("a.stp", "solid x", "no STEP file");
  ExpectRefused("a.stp", "ISO-10303-21", "no STEP file");
  ExpectRefused("a.stp", "ISO-10303-21;DATA;#1=PRODUCT('a','b','',());", "too early");
  ExpectRefused("a.stp", "ISO-10303-21;DATA;#1=PRODUCT('a','b;END-ISO-10303-21;", "too early");
  ExpectRefused("a.stp", "ISO-10303-21;/* #1=PRODUCT('a','b','',());END-ISO-10303-21;", "too early");
  ExpectRefused("a.stp", Step(""), "no product");
  ExpectRefused("a.stp", Step("#1=PRODUCT('','','',());"), "neither a name nor an id");
  ExpectRefused("a.stp", Step("#1=PRODUCT"), "neither a name nor an id");
  ExpectRefused("a.stp", Step("#1=PRODUCT;"), "neither a name nor an id");
  ExpectRefused("a.stp",
                Step("#1=PRODUCT('1','A','',());#2=PRODUCT_DEFINITION_FORMATION('','',#1);"
                     "#3=PRODUCT_DEFINITION('','',#2,#9);#4=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#3,#3,$);"),
                "held by another");
}

TEST_F(PartNumbers, AStepFileOfAnyCutOrDamageEndsInATextOrAFailure) {
  const auto whole = Step(
      "#10=PRODUCT('1','PL''A\\X2\\00E4\\X0\\','',(#1,(#2)));#11=PRODUCT_DEFINITION_FORMATION('','',#10);"
      "#12=PRODUCT_DEFINITION('','',#11,#9);/* c */#30=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#12,#5,$);");
  std::mt19937 chance(7);
  for (std::size_t cut = 0; cut <= whole.size(); ++cut) {
    auto damaged = whole;
    damaged[chance() % damaged.size()] = "();'/*#=,\\\0"[chance() % 11];
    for (const auto& bytes : {whole.substr(0, cut), damaged, damaged.substr(cut)}) {
      try {
        EXPECT_FALSE(Of("a.stp", bytes).empty());
      } catch (const Failure& failure) {
        EXPECT_EQ(failure.Number(), failure::kInvalidFormat);
      }
    }
  }
}

TEST_F(PartNumbers, OfALightFileIsInTheExtrasOfItsAsset) {
  EXPECT_EQ(Of("other name.lwt", TinyLight("Gehäuse \"A\"")), "Gehäuse \"A\"");
  EXPECT_EQ(Of("PN.stp.lwt", TinyLight("PN")), "PN");
}

TEST_F(PartNumbers, OnlyTheAssetOfALightFileCounts) {
  EXPECT_EQ(
      Of("a.lwt", LightWithJson(R"({"extras":{"PartNumber":"A"},"nodes":[{"extras":{"PartNumber":"B"},"asset":{}}],)"
                                R"("asset":{"extras":{"Other":{"PartNumber":"C"},"PartNumber":"D"}}})")),
      "D");
}

TEST_F(PartNumbers, ADamagedLightFileIsRefused) {
  const auto whole = TinyLight("PN");
  ExpectRefused("a.lwt", "", "no binary glTF");
  ExpectRefused("a.lwt", "glTF", "no binary glTF");
  ExpectRefused("a.lwt", "gltf" + whole.substr(4), "no binary glTF");
  ExpectRefused("a.lwt", whole.substr(0, 4) + "\x01" + whole.substr(5), "version 2");
  ExpectRefused("a.lwt", whole.substr(0, whole.size() - 1), "length");
  ExpectRefused("a.lwt", whole + " ", "length");
  ExpectRefused("a.lwt", whole.substr(0, 12) + "\xFF\xFF\xFF\xFF" + whole.substr(16), "first chunk");
  ExpectRefused("a.lwt", whole.substr(0, 16) + "BIN " + whole.substr(20), "first chunk");
  ExpectRefused("a.lwt", LightWithJson("{\"asset\":"), "JSON is damaged");
  ExpectRefused("a.lwt", LightWithJson("{\"asset\":{\"extras\":{\"PartNumber\":\"\xFF\"}}}"), "JSON is damaged");
  ExpectRefused("a.lwt", LightWithJson("[]"), "no part number");
  ExpectRefused("a.lwt", LightWithJson("{}"), "no part number");
  ExpectRefused("a.lwt", LightWithJson("{\"asset\":7}"), "no part number");
  ExpectRefused("a.lwt", LightWithJson("{\"asset\":{\"extras\":[]}}"), "no part number");
  ExpectRefused("a.lwt", LightWithJson("{\"asset\":{\"extras\":{\"PartNumber\":7}}}"), "no part number");
  ExpectRefused("a.lwt", LightWithJson("{\"asset\":{\"extras\":{\"PartNumber\":\"\"}}}"), "empty");
  ExpectRefused("a.lwt", LightWithJson(std::string(200000, '[')), "JSON is damaged");
}

TEST_F(PartNumbers, ALightFileOfDeepJsonIsRead) {
  EXPECT_EQ(Of("a.lwt", LightWithJson("{\"asset\":{\"extras\":{\"PartNumber\":\"PN\",\"x\":" +
                                      std::string(100000, '[') + std::string(100000, ']') + "}}}")),
            "PN");
}

TEST_F(PartNumbers, OfAProductFileStandsInItsRootElement) {
  EXPECT_EQ(Of("a.ZVAProduct", "<ZVAProduct partNumber=\"ROOT\"/>"), "ROOT");
  EXPECT_EQ(Of("a.zvaproduct", "<ZVAProduct partNumber=\"ROOT\"/>"), "ROOT");
}

TEST_F(PartNumbers, OtherFilesAndPathsAreRefused) {
  ExpectRefused("a.txt", TinyStep("A"), "no .ZVAProduct");
  ExpectRefused("stp", TinyStep("A"), "no .ZVAProduct");
  EXPECT_EQ(FailureOf([&] { PartNumberOfFile("", files); }).Number(), failure::kFileNotFound);
  EXPECT_EQ(FailureOf([&] { PartNumberOfFile("absent.stp", files); }).Number(), failure::kFileNotFound);
  EXPECT_NE(FailureOf([&] { PartNumberOfFile(std::string("a\0.stp", 6), files); }).Number(), 0);
  EXPECT_NE(FailureOf([&] { PartNumberOfFile("\xFF.stp", files); }).Number(), 0);
}

}  // namespace
}  // namespace quintara::test
