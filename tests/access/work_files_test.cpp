#include <filesystem>
#include <string>
#include <vector>

#include "access/noted_vault.h"
#include "base/text.h"
#include "hosts/native/native_files.h"

namespace quintara::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::NiceMock;
using ::testing::Return;
using ::testing::Throw;
using veldora::VdObject;

const std::string kNotSet = "Object variable or With block variable not set";
// Names that would lead out of the work directory, or that not every system can have.
const std::vector<std::string> kUnsafe = {"../x", "a/b", "a\\b", "CON", "..", "C:x", "x\ny", "nul.stp", "a*"};

class WorkFiles : public NotedVault {
 protected:
  WorkFiles() {
    *object->values = {{"VAULT_OBJECT_ID", 5},
                       {"DIRECTORY", "store/3"},
                       {"FILE_NAME", "stored.stp"},
                       {"CAD_REF_FILE_NAME", "BOLT.v2.stp"},
                       {"NM_CN_PART_NUMBER", "BOLT"}};
    std::filesystem::create_directory(folder.Path("work"));
    folder.Write("x", "not ours");
    Process().gWorkDirectory = Work();
    ON_CALL(*client, NewRecList).WillByDefault([this] { return MakeRef<NotedTable>(notes); });
    platform.Native().Register("Veldora.VdApplication", client);
    files = MakeRef<NativeFileSystem>(platform.TheGate());
  }

  std::string Work(const std::string& name = {}) const { return folder.Path(name.empty() ? "work" : "work/" + name); }
  // What the session's service or the object copies appears as a file of these bytes.
  void GivenCopies(const std::string& call, const std::vector<std::string>& names) {
    notes->onCall = [this, call, names](const std::string& made) {
      if (!made.starts_with(call)) return;
      for (const auto& name : names) folder.Write("work/" + name, "new");
    };
  }

  TemporaryFolder folder;
  Ref<NotedObject> object = NewObject("the bolt", 7);
  Ref<NiceMock<MockClient>> client = MakeRef<NiceMock<MockClient>>();
  Ref<FileSystemObject> files;
};

class WholeCopy : public WorkFiles {
 protected:
  std::string Copy() { return utils.CopyVeldoraObjectToWork(object); }
};

TEST_F(WholeCopy, RunsTheVaultsOperationWithItsIdAsParameter) {
  EXPECT_EQ(Copy(), Work("BOLT.v2.stp"));

  EXPECT_THAT(Calls(), ElementsAre("OperationByName(CopyFile)", "AddField(OPERATION_ID, 1, 2)", "AddRow",
                                   "SetValue(OPERATION_ID, 0, 77)",
                                   "RunOperation(the bolt, CopyFile, True, nothing, the table)"));
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(WholeCopy, DeletesAFileOfItsNameBeforehandForcedly) {
  folder.Write("work/BOLT.v2.stp", "old");
  platform.TheGate()->StartRecording();

  EXPECT_EQ(Copy(), Work("BOLT.v2.stp"));

  EXPECT_FALSE(folder.Has("work/BOLT.v2.stp"));
  EXPECT_THAT(platform.TheGate()->Record(), Contains("FileSystem.DeleteFile(" + Work("BOLT.v2.stp") + ", True)"));
}

TEST_F(WholeCopy, AttachesToTheClientThatRunsAndToNoOther) {
  platform.TheGate()->StartRecording();

  Copy();

  EXPECT_EQ(platform.TheGate()->Record().front(), "Platform.Attach(Veldora.VdApplication)");
}

TEST_F(WholeCopy, IsReportedWithWhateverFails) {
  for (const auto* call : {"OperationByName", "AddField", "AddRow", "SetValue", "RunOperation"}) {
    Process().texts.COMMON_UNEXPECTED_ERROR.text = "Failure in REP1: REP2";
    GivenFailureOf(call);
    EXPECT_EQ(Copy(), "") << call;
    EXPECT_EQ(Boxes().back(), Report("Cls_Utils.CopyVeldoraObjectToWork", "cable")) << call;
  }
}

TEST_F(WholeCopy, IsReportedWithoutAClient) {
  platform.TheGate()->FailOperation("Platform.Attach");

  EXPECT_EQ(Copy(), "");

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Utils.CopyVeldoraObjectToWork", "Injected failure")));
}

TEST_F(WholeCopy, IsNotMadeWhileTheOldFileCannotBeDeletedWhichIsReported) {
  folder.Write("work/BOLT.v2.stp", "old");
  platform.TheGate()->FailOperation("FileSystem.DeleteFile");

  EXPECT_EQ(Copy(), "");

  EXPECT_THAT(CallsOf("RunOperation"), IsEmpty());
  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Utils.CopyVeldoraObjectToWork", "Injected failure")));
}

TEST_F(WholeCopy, IsNotMadeUnderAnUnsafeNameWhichIsReported) {
  for (const auto& name : kUnsafe) {
    Process().texts.COMMON_UNEXPECTED_ERROR.text = "Failure in REP1: REP2";
    (*object->values)["CAD_REF_FILE_NAME"] = name;
    EXPECT_EQ(Copy(), "") << name;
    EXPECT_THAT(Boxes().back().text, HasSubstr("can't be the name of a file")) << name;
  }

  EXPECT_TRUE(folder.Has("x"));
  EXPECT_THAT(CallsOf("RunOperation"), IsEmpty());
}

TEST_F(WholeCopy, OfAnObjectWithoutTheHostsNameIsMadeAndGivesTheWorkDirectory) {
  (*object->values)["CAD_REF_FILE_NAME"] = "";
  folder.Write("work/other", "kept");

  EXPECT_EQ(Copy(), FromPath(ToPath(Work()) / ""));

  EXPECT_THAT(CallsOf("RunOperation"), testing::SizeIs(1));
  EXPECT_TRUE(folder.Has("work/other"));
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(WholeCopy, IsReportedWhereTheVaultGivesNothingForItsOperation) {
  content->operations["CopyFile"] = 0;

  EXPECT_EQ(Copy(), "");

  EXPECT_THAT(CallsOf("RunOperation"), IsEmpty());
  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Utils.CopyVeldoraObjectToWork", kNotSet)));
}

TEST_F(WholeCopy, OfNothingIsReported) {
  EXPECT_EQ(utils.CopyVeldoraObjectToWork(nullptr), "");

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Utils.CopyVeldoraObjectToWork", kNotSet)));
}

class LightCopy : public WorkFiles {
 protected:
  std::string Copy() { return utils.CopyVeldoraObjectLWTToWork(object, files); }
  std::string CopyWith(const std::string& suffix) {
    return utils.CopyVeldoraObjectLWTToWork_Temp(object, suffix, files);
  }
};

TEST_F(LightCopy, StandsInTheWorkDirectoryUnderThePartNumber) {
  EXPECT_EQ(Copy(), Work("BOLT.lwt"));

  EXPECT_THAT(Calls(), ElementsAre("CopyVaultFile(5, store/3, stored.stp.lwt, " + Work() + ", BOLT.lwt)"));
}

TEST_F(LightCopy, MayBearASuffixBehindThePartNumber) {
  EXPECT_EQ(CopyWith("_new"), Work("BOLT_new.lwt"));

  EXPECT_THAT(Calls(), ElementsAre("CopyVaultFile(5, store/3, stored.stp.lwt, " + Work() + ", BOLT_new.lwt)"));
}

TEST_F(LightCopy, TakesThePlaceOfTheFileOfItsOwnNameOnly) {
  folder.Write("work/BOLT.lwt", "old");
  folder.Write("work/BOLT_new.lwt", "old");
  platform.TheGate()->StartRecording();

  CopyWith("_new");

  EXPECT_TRUE(folder.Has("work/BOLT.lwt"));
  EXPECT_FALSE(folder.Has("work/BOLT_new.lwt"));
  EXPECT_THAT(platform.TheGate()->Record(), Contains("FileSystem.DeleteFile(" + Work("BOLT_new.lwt") + ", True)"));
}

TEST_F(LightCopy, IsNotLookedForAfterwards) {
  folder.Write("work/BOLT.lwt", "old");

  EXPECT_EQ(Copy(), Work("BOLT.lwt"));

  EXPECT_FALSE(folder.Has("work/BOLT.lwt"));
}

TEST_F(LightCopy, IsLookedForThroughTheFileSystemThatIsGiven) {
  EXPECT_EQ(utils.CopyVeldoraObjectLWTToWork(object, nullptr), "");

  EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(LightCopy, FailsInSilence) {
  GivenFailureOf("CopyVaultFile");
  EXPECT_EQ(Copy(), "");
  for (const auto* attribute : {"VAULT_OBJECT_ID", "DIRECTORY", "FILE_NAME", "NM_CN_PART_NUMBER"}) {
    const auto kept = *object->values;
    object->values->erase(attribute);
    EXPECT_EQ(Copy(), "") << attribute;
    EXPECT_EQ(CopyWith("_new"), "") << attribute;
    *object->values = kept;
  }
  Process().gSessionUtil = nullptr;
  EXPECT_EQ(Copy(), "");
  EXPECT_EQ(utils.CopyVeldoraObjectLWTToWork(nullptr, files), "");

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(LightCopy, IsNotMadeUnderAnUnsafeName) {
  for (const auto& name : kUnsafe) {
    if (name == "..") continue;  // "...lwt" and "_...lwt" are names of files
    (*object->values)["NM_CN_PART_NUMBER"] = name;
    EXPECT_EQ(Copy(), "") << name;
  }
  (*object->values)["NM_CN_PART_NUMBER"] = "BOLT";
  EXPECT_EQ(CopyWith("/../../x"), "");

  EXPECT_THAT(Calls(), IsEmpty());
  EXPECT_THAT(Boxes(), IsEmpty());
}

class DocumentAndLight : public WorkFiles {
 protected:
  std::string Copy() { return utils.CopyVeldoraObjectToWorkAndGetLWT(session, object, files); }
  std::string CopyCall() const { return "the bolt.CopyFileTo(BOLT.stp, " + Work() + ")"; }
};

TEST_F(DocumentAndLight, ComeFromTheObjectsOwnCopy) {
  GivenCopies("the bolt.CopyFileTo", {"BOLT.stp", "BOLT.stp.lwt"});

  EXPECT_EQ(Copy(), Work("BOLT.stp.lwt"));

  EXPECT_THAT(Calls(), ElementsAre(CopyCall()));
}

TEST_F(DocumentAndLight, ComeFromTheStoreWhereTheObjectsCopyGaveNoDocument) {
  GivenCopies("CopyVaultFile", {"BOLT.stp", "BOLT.stp.lwt"});

  EXPECT_EQ(Copy(), Work("BOLT.stp.lwt"));

  EXPECT_THAT(Calls(), ElementsAre(CopyCall(), "CopyVaultFile(5, store/3, stored.stp, " + Work() + ", BOLT.stp)"));
}

TEST_F(DocumentAndLight, AreNoneWithoutALightFileButTheDocumentStays) {
  GivenCopies("the bolt.CopyFileTo", {"BOLT.stp"});

  EXPECT_EQ(Copy(), "");

  EXPECT_TRUE(folder.Has("work/BOLT.stp"));
  EXPECT_THAT(CallsOf("CopyVaultFile"), IsEmpty());
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(DocumentAndLight, AreNoneWithoutTheDocument) {
  GivenCopies("the bolt.CopyFileTo", {"BOLT.stp.lwt"});

  EXPECT_EQ(Copy(), "");
}

TEST_F(DocumentAndLight, TakeThePlaceOfOldFiles) {
  folder.Write("work/BOLT.stp", "old");
  folder.Write("work/BOLT.stp.lwt", "old");
  platform.TheGate()->StartRecording();

  EXPECT_EQ(Copy(), "");

  EXPECT_FALSE(folder.Has("work/BOLT.stp"));
  EXPECT_FALSE(folder.Has("work/BOLT.stp.lwt"));
  EXPECT_THAT(platform.TheGate()->Record(), Contains("FileSystem.DeleteFile(" + Work("BOLT.stp") + ", True)"));
  EXPECT_THAT(platform.TheGate()->Record(), Contains("FileSystem.DeleteFile(" + Work("BOLT.stp.lwt") + ", True)"));
}

TEST_F(DocumentAndLight, BearTheLastExtensionOfTheHostsName) {
  (*object->values)["CAD_REF_FILE_NAME"] = "a.b.ZVAProduct";
  GivenCopies("the bolt.CopyFileTo", {"BOLT.ZVAProduct", "BOLT.ZVAProduct.lwt"});

  EXPECT_EQ(Copy(), Work("BOLT.ZVAProduct.lwt"));
}

TEST_F(DocumentAndLight, AreNoneOfAnObjectWithoutAnyName) {
  (*object->values)["CAD_REF_FILE_NAME"] = "";
  (*object->values)["FILE_NAME"] = "";
  folder.Write("work/BOLT.", "kept");

  EXPECT_EQ(Copy(), "");

  EXPECT_THAT(Calls(), IsEmpty());
  EXPECT_TRUE(folder.Has("work/BOLT."));
}

TEST_F(DocumentAndLight, OfAnObjectWithoutTheHostsNameHaveAnEmptyExtension) {
  (*object->values)["CAD_REF_FILE_NAME"] = "";
  folder.Write("work/BOLT.", "old");
  GivenCopies("CopyVaultFile", {"BOLT.", "BOLT..lwt"});

  EXPECT_EQ(Copy(), Work("BOLT..lwt"));

  EXPECT_THAT(Calls(), ElementsAre("the bolt.CopyFileTo(BOLT., " + Work() + ")",
                                   "CopyVaultFile(5, store/3, stored.stp, " + Work() + ", BOLT.)"));
  EXPECT_EQ(folder.Read("work/BOLT."), "new");
}

TEST_F(DocumentAndLight, OfAnObjectWithTheHostsNameAloneAreCopied) {
  (*object->values)["FILE_NAME"] = "";
  GivenCopies("the bolt.CopyFileTo", {"BOLT.stp", "BOLT.stp.lwt"});

  EXPECT_EQ(Copy(), Work("BOLT.stp.lwt"));
}

TEST_F(DocumentAndLight, OfANameOfPointsAloneDeleteNothing) {
  (*object->values)["CAD_REF_FILE_NAME"] = "";
  folder.Write("work/other", "kept");
  for (const auto* partNumber : {"", "."}) {
    (*object->values)["NM_CN_PART_NUMBER"] = partNumber;
    EXPECT_EQ(Copy(), "") << partNumber;
  }

  EXPECT_TRUE(folder.Has("work/other"));
  EXPECT_TRUE(folder.Has("x"));
}

TEST_F(DocumentAndLight, FailInSilence) {
  for (const auto* call : {"the bolt.CopyFileTo", "CopyVaultFile"}) {
    GivenFailureOf(call);
    EXPECT_EQ(Copy(), "") << call;
  }
  for (const auto* attribute :
       {"VAULT_OBJECT_ID", "DIRECTORY", "FILE_NAME", "CAD_REF_FILE_NAME", "NM_CN_PART_NUMBER"}) {
    const auto kept = *object->values;
    object->values->erase(attribute);
    EXPECT_EQ(Copy(), "") << attribute;
    *object->values = kept;
  }
  EXPECT_EQ(utils.CopyVeldoraObjectToWorkAndGetLWT(session, object, nullptr), "");
  EXPECT_EQ(utils.CopyVeldoraObjectToWorkAndGetLWT(session, nullptr, files), "");

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(DocumentAndLight, NeedNoSession) {
  GivenCopies("the bolt.CopyFileTo", {"BOLT.stp", "BOLT.stp.lwt"});

  EXPECT_EQ(utils.CopyVeldoraObjectToWorkAndGetLWT(nullptr, object, files), Work("BOLT.stp.lwt"));
}

TEST_F(DocumentAndLight, AreNotMadeUnderAnUnsafeName) {
  folder.Write("x.stp", "not ours");
  for (const auto& name : kUnsafe) {
    if (name == "..") continue;
    (*object->values)["NM_CN_PART_NUMBER"] = name;
    EXPECT_EQ(Copy(), "") << name;
  }
  (*object->values)["NM_CN_PART_NUMBER"] = "BOLT";
  for (const auto* name : {"x.s\\tp", "x.s:", "x.s\n"}) {
    (*object->values)["CAD_REF_FILE_NAME"] = name;
    EXPECT_EQ(Copy(), "") << name;
  }

  EXPECT_TRUE(folder.Has("x.stp"));
  EXPECT_THAT(Calls(), IsEmpty());
}

class FullNames : public NotedVault {
 protected:
  class Node : public NiceMock<MockProduct>, public std::enable_shared_from_this<Node> {
   public:
    Ref<zorva::Product> AsProduct() override { return Ref<zorva::Product>(shared_from_this()); }
  };
  Ref<Node> NewNode(const std::string& name, const Ref<AnyObject>& parent = nullptr) {
    const auto node = MakeRef<Node>();
    ON_CALL(*node, Name).WillByDefault(Return(name));
    ON_CALL(*node, Parent).WillByDefault(Return(parent));
    return node;
  }

  Ref<Node> root = NewNode("ROOT"), axle = NewNode("AXLE.1", root), wheel = NewNode("WHEEL.2", axle);
};

TEST_F(FullNames, GoFromTheComponentUpToTheRoot) {
  EXPECT_EQ(utils.BuildFullName(wheel, root), "WHEEL.2\\AXLE.1\\ROOT");
  EXPECT_EQ(utils.BuildFullName(axle, root), "AXLE.1\\ROOT");
}

TEST_F(FullNames, OfTheRootAreItsName) {
  EXPECT_EQ(utils.BuildFullName(root, root), "ROOT");
}

TEST_F(FullNames, EndAtTheFirstThatBearsTheRootsName) {
  const auto namesake = NewNode("ROOT", axle);

  EXPECT_EQ(utils.BuildFullName(namesake, root), "ROOT");
  EXPECT_EQ(utils.BuildFullName(NewNode("BOLT.1", namesake), root), "BOLT.1\\ROOT");
}

TEST_F(FullNames, TellCapitalsApart) {
  const auto namesake = NewNode("Root", axle);

  EXPECT_EQ(utils.BuildFullName(namesake, root), "Root\\AXLE.1\\ROOT");
}

TEST_F(FullNames, OfWhatStandsElsewhereAreReported) {
  EXPECT_EQ(utils.BuildFullName(wheel, NewNode("OTHER")), "");
  EXPECT_EQ(utils.BuildFullName(NewNode("X", session), root), "");

  EXPECT_THAT(Boxes(),
              ElementsAre(Report("Cls_Utils.BuildFullName", kNotSet), Report("Cls_Utils.BuildFullName", kNotSet)));
}

TEST_F(FullNames, OfNothingAreReported) {
  EXPECT_EQ(utils.BuildFullName(nullptr, root), "");
  EXPECT_EQ(utils.BuildFullName(wheel, nullptr), "");

  EXPECT_THAT(Boxes(),
              ElementsAre(Report("Cls_Utils.BuildFullName", kNotSet), Report("Cls_Utils.BuildFullName", kNotSet)));
}

TEST_F(FullNames, ThatCannotBeReadAreReported) {
  ON_CALL(*axle, Name).WillByDefault(Throw(Failure(failure::kDeviceError, "cable")));

  EXPECT_EQ(utils.BuildFullName(wheel, root), "");

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Utils.BuildFullName", "cable")));
}

TEST(Extensions, ArePartedAtTheLastPoint) {
  struct Case {
    std::string name, stem, extension;
  };
  for (const auto& [name, stem, extension] : std::vector<Case>{{"BOLT.stp", "BOLT", "stp"},
                                                               {"BOLT.v2.stp", "BOLT.v2", "stp"},
                                                               {"BOLT", "BOLT", ""},
                                                               {"BOLT.", "BOLT", ""},
                                                               {".stp", "", "stp"},
                                                               {".", "", ""},
                                                               {"..", ".", ""},
                                                               {"", "", ""},
                                                               {"a.b\\BOLT", "a", "b\\BOLT"},
                                                               {"a.b/BOLT", "a", "b/BOLT"},
                                                               {"Gehäuse.ßtp", "Gehäuse", "ßtp"},
                                                               {" . ", " ", " "},
                                                               {"x.y\nz", "x", "y\nz"}}) {
    Cls_Utils utils;
    EXPECT_EQ(utils.StripFileExtension(name), stem) << name;
    EXPECT_EQ(utils.GetFileExtension(name), extension) << name;
  }
}

class Scripts : public NotedVault {
 protected:
  Scripts() {
    auto& mock = static_cast<NiceMock<MockSession>&>(*session);
    ON_CALL(mock, Config).WillByDefault(Return(Ref<veldora::VdConfig>(config)));
    ON_CALL(*config, BaseDirectory).WillByDefault(Return("base"));
    ON_CALL(*host, ScriptService).WillByDefault([this] { return service; });
    ON_CALL(*runner, ExecuteScript)
        .WillByDefault([this](auto& library, int type, auto& module, auto& procedure, auto& arguments) {
          notes->Note(library + ", " + std::to_string(type) + ", " + module + ", " + procedure + ", " +
                      std::to_string(arguments.size()));
        });
    Process().gZorva = host;
  }
  bool Run() { return utils.ExecuteZorvaScript("RetrieveMatrix", "UpdateDisplay"); }

  Ref<NiceMock<MockConfig>> config = MakeRef<NiceMock<MockConfig>>();
  Ref<NiceMock<MockZorva>> host = MakeRef<NiceMock<MockZorva>>();
  Ref<NiceMock<MockScriptService>> runner = MakeRef<NiceMock<MockScriptService>>();
  Ref<zorva::ScriptService> service = runner;
};

TEST_F(Scripts, RunInTheProjectBelowTheVaultsBaseDirectory) {
  EXPECT_TRUE(Run());

  const auto library = FromPath(ToPath("base") / "QNTR" / "ProjectQNTR.zvavba");
  EXPECT_THAT(Calls(), ElementsAre(library + ", 2, RetrieveMatrix, UpdateDisplay, 0"));
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Scripts, WithoutARunnerAreTold) {
  service = nullptr;

  EXPECT_FALSE(Run());

  EXPECT_THAT(Boxes(), ElementsAre(Told("no scripts", kCriticalModal)));
}

TEST_F(Scripts, ThatFailAreReported) {
  GivenFailureOf("base");

  EXPECT_FALSE(Run());

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Utils.ExecuteZorvaScript", "cable")));
}

TEST_F(Scripts, WithoutASessionOrAHostAreReported) {
  Process().gZorva = nullptr;
  EXPECT_FALSE(Run());
  Process().gZorva = host;
  Process().gSession = nullptr;
  EXPECT_FALSE(Run());

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Utils.ExecuteZorvaScript", kNotSet),
                                   Report("Cls_Utils.ExecuteZorvaScript", kNotSet)));
}

}  // namespace
}  // namespace quintara::test
