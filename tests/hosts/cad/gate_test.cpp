#include "hosts/cad/embedded.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using CadGate = EmbeddedCad;

TEST_F(CadGate, RecordsOperationsUnderTheirNamesInTheirOrder) {
  WritePart("PLATE");
  const auto path = folder.Path("PLATE.stp");
  gate->StartRecording();

  const auto application = host->Application();
  application->SetDisplayFileAlerts(false);
  const auto document = application->Documents()->Add("ZVAProduct")->AsProductDocument();
  const auto root = document->Product();
  root->SetPartNumber("WIP~~A");
  root->Products()->AddComponentsFromFiles({path}, "All");
  const auto child = root->Products()->Item(1);
  child->SetName("a\\b");
  child->Position()->SetComponents(At(1));
  document->Selection()->Add(child);

  EXPECT_THAT(gate->Record(),
              ElementsAre("Application.DisplayFileAlerts=(False)", "Application.Documents", "Documents.Add(ZVAProduct)",
                          "Document.AsProductDocument", "ProductDocument.Product", "Product.PartNumber=(WIP~~A)",
                          "Product.Products", "Products.AddComponentsFromFiles(" + path + ")",
                          "Files.Read(" + path + ")", "Product.Products", "Products.Item(1)", "Product.Name=(a\\b)",
                          "Product.Position", "Position.SetComponents", "Document.Selection", "Selection.Add"));
}

TEST_F(CadGate, ConversionsPassOnlyWhenTheyAreAskedForFromOutside) {
  const auto document = NewDocument();
  const auto root = document->Product();
  gate->StartRecording();

  document->AsDocument();
  EXPECT_FALSE(document->AsProductDocument()->AsProduct());
  host->Application()->AsApplication();
  document->Selection()->Add(root);
  document->Selection()->Copy();

  EXPECT_THAT(gate->Record(), ElementsAre("Document.AsDocument", "Document.AsProductDocument", "Document.AsProduct",
                                          "Application.AsApplication", "Document.Selection", "Selection.Add",
                                          "Document.Selection", "Selection.Copy"));
}

/// Everything that changes a session, one after the other, on a fresh host each time.
class CadSweep : public EmbeddedCad {
 protected:
  CadSweep() {
    WritePart("PLATE");
    WritePart("BOLT");
    folder.Write("project.zvavba", "RetrieveMatrix.UpdateDisplay\n");
  }

  void Work() {
    const auto application = host->Application();
    application->SetDisplayFileAlerts(false);
    const auto document = application->Documents()->Add("ZVAProduct")->AsProductDocument();
    const auto root = document->Product();
    const auto children = root->Products();
    application->Documents()->Read(folder.Path("PLATE.stp"));
    children->AddComponentsFromFiles({folder.Path("PLATE.stp"), folder.Path("BOLT.stp")}, "All");
    const auto plate = document->GetItem("PLATE")->AsProduct();
    plate->UserProperties()->CreateString("TYPE", "LWT");
    plate->Parameters()->Item("TYPE")->ValuateFromString("3D");
    plate->SetWorkMode(1);
    plate->SetWorkMode(0);
    plate->SetName("ROOT\\PLATE");
    plate->Position()->SetComponents(At(2));
    children->ReplaceWithFile(children->Item(2), folder.Path("PLATE.stp"), false)->ApplyUpdate();
    const auto selection = document->Selection();
    selection->Add(plate);
    selection->Copy();
    selection->Clear();
    selection->Add(children);
    selection->Paste();
    children->Remove(1);
    root->SetPartNumber("WIP~~X");
    application->ScriptService()->ExecuteScript(folder.Path("project.zvavba"), 2, "RetrieveMatrix", "UpdateDisplay",
                                                {});
    application->ActiveWindow()->ActiveViewer()->RefreshView();
    host->Save(document, folder.Path("WIP" + std::to_string(++works) + ".ZVAProduct"));
    application->Documents()->Open(folder.Path("BOLT.stp"))->Close();
  }

  int works = 0;
};

TEST_F(CadSweep, AnyCallCanFailAndTheHostGoesOnWorking) {
  gate->StartRecording();
  Work();
  const int calls = gate->Calls();

  for (int n = 1; n <= calls; ++n) {
    StartHost();
    gate->Reset();
    gate->FailCall(n);
    EXPECT_EQ(FailureOf([&] { Work(); }).Number(), failure::kDeviceError) << n;
    EXPECT_TRUE(gate->HasFailed()) << n;
    gate->Reset();
    EXPECT_NO_THROW(Work()) << n;
  }
}

TEST_F(CadSweep, AFailedCallHasNoEffect) {
  Work();
  const auto document = host->Application()->ActiveDocument()->AsProductDocument();
  const auto root = document->Product();
  const auto children = root->Products();
  const auto child = children->Item(1);
  const auto selection = document->Selection();
  const auto names = NamesOf(children);
  const auto position = PositionOf(child);

  gate->FailOperation("Product.Name=");
  FailureOf([&] { child->SetName("new"); });
  gate->FailOperation("Product.PartNumber=");
  FailureOf([&] { root->SetPartNumber("new"); });
  gate->FailOperation("Products.Remove");
  FailureOf([&] { children->Remove(1); });
  gate->FailOperation("Position.SetComponents");
  FailureOf([&] { child->Position()->SetComponents(At(77)); });
  gate->FailOperation("Selection.Paste");
  selection->Clear();
  selection->Add(children);
  FailureOf([&] { selection->Paste(); });
  gate->FailOperation("Files.Read");
  FailureOf([&] { children->AddComponentsFromFiles({folder.Path("PLATE.stp")}, "All"); });
  FailureOf([&] { children->ReplaceWithFile(child, folder.Path("BOLT.stp"), false); });
  gate->FailOperation("Document.Close");
  FailureOf([&] { document->Close(); });
  gate->Reset();

  EXPECT_EQ(NamesOf(children), names);
  EXPECT_EQ(PositionOf(child), position);
  EXPECT_EQ(root->PartNumber(), "WIP~~X");
}

}  // namespace
}  // namespace quintara::test
