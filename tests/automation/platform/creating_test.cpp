#include "automation/dispatch/failures.h"
#include "automation/dispatch/late_bound.h"
#include "automation/platform/own_translator.h"
#include "automation/platform/platform_fixture.h"
#include "support/test_platform.h"

namespace quintara::test {
namespace {

using testing::HasSubstr;

class Thing : public AnyObject {
 public:
  std::string Name() override { return "thing"; }
};

/// A maker that refuses with a result.
Factory::Maker Refusing(HRESULT result) {
  return [result](REFIID /*kind*/, void** /*given*/) { return result; };
}

using Creating = PlatformTest;

TEST_F(Creating, GivesANewObjectOfANameInWhateverCapitals) {
  const ProgramName name(OwnName("Thing"));
  const Ref<AnyObject> thing = MakeRef<Thing>();
  const Factory factory(name.Class(), Making(thing));

  EXPECT_EQ(platform.Create(name.Name()), thing);
  EXPECT_EQ(platform.Create("QUINTARATEST" + name.Name().substr(12)), thing);
  EXPECT_EQ(factory.Made(), 2);
}

TEST_F(Creating, FailsForANameThatNobodyRegistered) {
  const auto unknown = OwnName("Unknown");

  EXPECT_THAT(FailureOf([&] { platform.Create(unknown); }), FailsNaming("\"" + unknown + "\" is not known"));
}

TEST_F(Creating, FailsForANameWhoseProgramIsGone) {
  const ProgramName name(OwnName("Gone"));

  EXPECT_THAT(FailureOf([&] { platform.Create(name.Name()); }), FailsNaming("\"" + name.Name() + "\": "));
}

TEST_F(Creating, FailsForAProgramThatRefusesAndTellsWhy) {
  const ProgramName name(OwnName("Refusing"));
  const Factory factory(name.Class(), Refusing(CO_E_SERVER_EXEC_FAILURE));
  EXCEPINFO none{};
  const auto why = automation::FailureOf(CO_E_SERVER_EXEC_FAILURE, none, "\"" + name.Name() + "\"").Description();

  EXPECT_THAT(FailureOf([&] { platform.Create(name.Name()); }), FailsNaming(why));
}

TEST_F(Creating, FailsForAnObjectThatRefusesAutomation) {
  const ProgramName name(OwnName("Mute"));
  Mute mute;
  const Factory factory(name.Class(), [&](REFIID kind, void** given) { return mute.QueryInterface(kind, given); });

  EXPECT_THAT(FailureOf([&] { platform.Create(name.Name()); }), FailsNaming("\"" + name.Name() + "\""));
}

TEST_F(Creating, DoesNotAttachToWhatRuns) {
  const ProgramName name(OwnName("Running"));
  const Running running(name, automation::Outgoing(Ref<AnyObject>(MakeRef<Thing>())).Get());

  EXPECT_THAT(FailureOf([&] { platform.Create(name.Name()); }), FailsNaming(name.Name()));
}

TEST_F(Creating, GivesTheSystemsFileSystem) {
  const TemporaryFolder folder;
  folder.Write("one.txt", "1");

  const auto created = platform.Create("Scripting.FileSystemObject");

  EXPECT_NE(dynamic_cast<automation::Adapter*>(&*created), nullptr);
  EXPECT_TRUE(created->AsFileSystemObject()->FileExists(folder.Path("one.txt")));
  EXPECT_FALSE(platform.FileSystem()->FileExists(folder.Path("two.txt")));
  EXPECT_EQ(platform.FileSystem()->GetExtensionName("a.b.xml"), "xml");
}

TEST_F(Creating, TheSystemsFileSystemDeletesFilesAndFailsForMissingOnes) {
  const TemporaryFolder folder;
  folder.Write("Größe.txt", "1");
  const auto files = platform.FileSystem();

  files->DeleteFile(folder.Path("Größe.txt"), true);

  EXPECT_FALSE(folder.Has("Größe.txt"));
  EXPECT_EQ(FailureOf([&] { files->DeleteFile(folder.Path("Größe.txt"), true); }).Number(), failure::kFileNotFound);
}

TEST_F(Creating, GivesAFileSystemOfItsOwnWhereTheSystemHasNone) {
  const TemporaryFolder folder;
  const ProgramName name("Scripting.FileSystemObject");
  const Factory none(name.Class(), Refusing(CLASS_E_CLASSNOTAVAILABLE));

  const auto created = platform.Create("scripting.filesystemobject");

  EXPECT_EQ(none.Made(), 1);
  EXPECT_EQ(dynamic_cast<automation::Adapter*>(&*created), nullptr);
  EXPECT_TRUE(created->AsFileSystemObject()->FolderExists(folder.Path()));
  EXPECT_TRUE(platform.FileSystem()->FolderExists(folder.Path()));
}

TEST_F(Creating, GivesATranslatorOfItsOwnWhereNoneIsRegistered) {
  CLSID known{};
  if (SUCCEEDED(CLSIDFromProgID(L"Veldora.VdTranslator", &known))) GTEST_SKIP() << "This system has a translator";

  const auto translator = platform.Create("veldora.vdtranslator");

  EXPECT_NE(dynamic_cast<automation::OwnTranslator*>(&*translator), nullptr);
  EXPECT_TRUE(translator->AsVdTranslator());
}

TEST_F(Creating, GivesTheTranslatorThatIsRegistered) {
  const ProgramName name("Veldora.VdTranslator");
  const Ref<AnyObject> thing = MakeRef<Thing>();
  const Factory factory(name.Class(), Making(thing));

  EXPECT_EQ(platform.Create("Veldora.VdTranslator"), thing);
}

TEST_F(Creating, FailsForATranslatorThatIsRegisteredAndRefuses) {
  const ProgramName name("Veldora.VdTranslator");
  const Factory factory(name.Class(), Refusing(E_FAIL));

  EXPECT_THAT(FailureOf([&] { platform.Create("Veldora.VdTranslator"); }), FailsNaming("Veldora.VdTranslator"));
}

TEST_F(Creating, HasNoClientContextOfItsOwn) {
  CLSID known{};
  if (SUCCEEDED(CLSIDFromProgID(L"Veldora.VdClientContext", &known))) GTEST_SKIP() << "This system has one";

  EXPECT_THAT(FailureOf([&] { platform.Create("Veldora.VdClientContext"); }), FailsNaming("Veldora.VdClientContext"));
}

}  // namespace
}  // namespace quintara::test
