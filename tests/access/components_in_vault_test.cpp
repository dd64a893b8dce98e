#include <string>

#include "access/vault_bench.h"
#include "hosts/cad/cad_host.h"
#include "hosts/integration/embedded_engine.h"
#include "support/tiny_files.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A checked-in bolt in the assembly CAR, whose files were copied to the work directory.
class Components : public WithVault {
 protected:
  Components() {
    bolt = AddPart("BOLT", TinyStep("BOLT"));
    AssemblyStructure structure;
    structure.definitions = {{"BOLT", false, {}}, {"CAR", true, {{"BOLT.1", 0, kIdentityPosition}}}};
    structure.root = 1;
    WriteProductFiles(structure, folder.Path("source"), *files);
    car = vault->AddObject("ZORVA Product", {{"NM_CN_PART_NUMBER", "CAR"}}, folder.Path("source/CAR.ZVAProduct"));
    bolt->CopyFileTo("BOLT.stp", folder.Path("work"));
    car->CopyFileTo("CAR.ZVAProduct", folder.Path("work"));
    engine = MakeRef<EmbeddedEngine>(
        EmbeddedEngine::Surroundings{gate, session, host.Application(), &vault->Integration(), nullptr});
    Process().gZorva = host.Application();
    Process().gHIX = engine;
    document = host.Application()->Documents()->Open(WorkPath("CAR.ZVAProduct"))->AsProductDocument();
    component = document->Product()->Products()->Item(1);
  }

  void Stamp(const Ref<VdObject>& object) {
    utils.WriteStringProperty(component->Reference(), "CLASS_ID", std::to_string(object->ClassId()));
    utils.WriteStringProperty(component->Reference(), "OBJECT_ID", std::to_string(object->ObjectId()));
  }

  CadHost host{{gate, files, {}}};
  Ref<EmbeddedEngine> engine;
  Ref<VdObject> bolt, car;
  Ref<zorva::ProductDocument> document;
  Ref<zorva::Product> component;
};

TEST_F(Components, OfAFileOfTheVaultLeadToItsObject) {
  const auto found = utils.RetrieveVDObject(session, component);

  ASSERT_TRUE(found);
  EXPECT_EQ(found->ClassId(), bolt->ClassId());
  EXPECT_EQ(found->ObjectId(), bolt->ObjectId());
  EXPECT_EQ(found->Record()->ValueAsString("NM_CN_PART_NUMBER"), "BOLT");
}

TEST_F(Components, AtTheRootLeadToTheObjectOfTheDocument) {
  const auto found = utils.RetrieveVDObject(session, document->Product());

  ASSERT_TRUE(found);
  EXPECT_EQ(found->ObjectId(), car->ObjectId());
}

TEST_F(Components, OfAFileThatTheVaultDoesNotKnowLeadNowhere) {
  folder.Write("work/NUT.stp", TinyStep("NUT"));
  document->Product()->Products()->AddComponentsFromFiles({WorkPath("NUT.stp")}, "All");

  EXPECT_FALSE(utils.RetrieveVDObject(session, document->Product()->Products()->Item(2), true));

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Components, LeadNowhereWhileTheEngineIsNotConnectedWhichIsToldWhenAskedFor) {
  engine->Disconnect();

  EXPECT_FALSE(utils.RetrieveVDObject(session, component));
  EXPECT_THAT(Boxes(), IsEmpty());
  EXPECT_FALSE(utils.RetrieveVDObject(session, component, true));
  EXPECT_THAT(Boxes(),
              ElementsAre(Report("Cls_Utils.RetrieveVDObject", "The integration engine isn't connected to the vault")));
}

TEST_F(Components, WithStampsLeadToTheirObject) {
  Stamp(bolt);

  const auto found = utils.RetrieveVDObject_FromLWT(session, component);

  ASSERT_TRUE(found);
  EXPECT_EQ(found->ObjectId(), bolt->ObjectId());
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Components, LeadToAnObjectThatIsIndependentOfAllOthers) {
  Stamp(bolt);

  const auto found = utils.RetrieveVDObject_FromLWT(session, component);
  found->Record()->ValuateFromString("CN_DESCRIPTION", "mine");

  EXPECT_EQ(utils.RetrieveVDObject_FromLWT(session, component)->Record()->ValueAsString("CN_DESCRIPTION"), "");
}

TEST_F(Components, WithStampsOfNoObjectAreWarnedOf) {
  Stamp(bolt);
  utils.WriteStringProperty(component->Reference(), "OBJECT_ID", "987654");

  EXPECT_FALSE(utils.RetrieveVDObject_FromLWT(session, component));

  EXPECT_THAT(Boxes(), ElementsAre(Told("no object of BOLT.1", kWarning)));
}

TEST_F(Components, WithStampsOfAnotherClassAreWarnedOf) {
  Stamp(bolt);
  utils.WriteStringProperty(component->Reference(), "CLASS_ID", std::to_string(car->ClassId()));

  EXPECT_FALSE(utils.RetrieveVDObject_FromLWT(session, component));

  EXPECT_THAT(Boxes(), ElementsAre(Told("no object of BOLT.1", kWarning)));
}

TEST_F(Components, KeepTheirStampsAndTheMarkOverSavingAndOpening) {
  Stamp(bolt);
  utils.WriteStringProperty(document->Product(), "WIP", "TRUE");
  host.Save(document, WorkPath("WIP.ZVAProduct"));
  CadHost later{{gate, files, {}}};
  Process().gZorva = later.Application();

  const auto opened = later.Application()->Documents()->Open(WorkPath("WIP.ZVAProduct"))->AsProductDocument();

  EXPECT_TRUE(utils.IsAWIP());
  const auto found = utils.RetrieveVDObject_FromLWT(session, opened->Product()->Products()->Item(1));
  ASSERT_TRUE(found);
  EXPECT_EQ(found->ObjectId(), bolt->ObjectId());
}

}  // namespace
}  // namespace quintara::test
