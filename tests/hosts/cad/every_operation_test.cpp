#include <functional>
#include <string>
#include <vector>

#include "hosts/cad/embedded.h"

namespace quintara::test {
namespace {

struct Operation {
  std::string name;
  std::function<void()> call;
};

/// Every operation of every kind, each under the name by which the gate knows it.
class EveryOperation : public EmbeddedCad {
 protected:
  EveryOperation() {
    WritePart("PLATE");
    component = Added(root, "PLATE.stp");
    parameter = root->UserProperties()->CreateString("WIP", "TRUE");
    selection->Add(component);
    entry = selection->Item(1);
  }

  void AddOfAny(const std::string& kind, const Ref<AnyObject>& object) {
    operations.push_back({kind + ".Name", [object] { object->Name(); }});
    operations.push_back({kind + ".Parent", [object] { object->Parent(); }});
    operations.push_back({kind + ".Application", [object] { object->Application(); }});
    operations.push_back({kind + ".AsApplication", [object] { object->AsApplication(); }});
    operations.push_back({kind + ".AsDocument", [object] { object->AsDocument(); }});
    operations.push_back({kind + ".AsProductDocument", [object] { object->AsProductDocument(); }});
    operations.push_back({kind + ".AsProduct", [object] { object->AsProduct(); }});
    operations.push_back({kind + ".AsProducts", [object] { object->AsProducts(); }});
  }
  void Add(std::vector<Operation> more) { operations.insert(operations.end(), more.begin(), more.end()); }
  void AddCommon();
  void AddOfSession();
  void AddOfProducts();
  void AddOfSelection();

  Ref<zorva::Application> application = host->Application();
  Ref<zorva::Documents> documents = application->Documents();
  Ref<zorva::ProductDocument> document = NewDocument();
  Ref<zorva::Product> root = document->Product();
  Ref<zorva::Products> children = root->Products();
  Ref<zorva::Selection> selection = document->Selection();
  Ref<zorva::ScriptService> scripts = application->ScriptService();
  Ref<zorva::Window> window = application->ActiveWindow();
  Ref<zorva::Viewer> viewer = window->ActiveViewer();
  Ref<zorva::Position> position = root->Position();
  Ref<zorva::Parameters> parameters = root->Parameters();
  Ref<zorva::Product> component;
  Ref<zorva::Parameter> parameter;
  Ref<zorva::SelectedElement> entry;
  PositionMatrix numbers = kIdentityPosition;
  std::vector<Operation> operations;
};

void EveryOperation::AddCommon() {
  AddOfAny("Application", application);
  AddOfAny("Documents", documents);
  AddOfAny("Document", document);
  AddOfAny("Product", component);
  AddOfAny("Products", children);
  AddOfAny("Position", position);
  AddOfAny("Parameters", parameters);
  AddOfAny("Parameter", parameter);
  AddOfAny("Selection", selection);
  AddOfAny("SelectedElement", entry);
  AddOfAny("ScriptService", scripts);
  AddOfAny("Window", window);
  AddOfAny("Viewer", viewer);
}

void EveryOperation::AddOfSession() {
  Add({{"Application.GetItem", [this] { application->GetItem("x"); }},
       {"Application.Documents", [this] { application->Documents(); }},
       {"Application.ActiveDocument", [this] { application->ActiveDocument(); }},
       {"Application.ScriptService", [this] { application->ScriptService(); }},
       {"Application.DisplayFileAlerts", [this] { application->DisplayFileAlerts(); }},
       {"Application.DisplayFileAlerts=", [this] { application->SetDisplayFileAlerts(false); }},
       {"Application.RefreshDisplay=", [this] { application->SetRefreshDisplay(true); }},
       {"Application.ActiveWindow", [this] { application->ActiveWindow(); }},
       {"Window.ActiveViewer", [this] { window->ActiveViewer(); }},
       {"Viewer.RefreshView", [this] { viewer->RefreshView(); }},
       {"Documents.Count", [this] { documents->Count(); }},
       {"Documents.Add", [this] { documents->Add("ZVAProduct"); }},
       {"Documents.Open", [this] { documents->Open(folder.Path("PLATE.stp")); }},
       {"Documents.Read", [this] { documents->Read(folder.Path("PLATE.stp")); }},
       {"Document.GetItem", [this] { document->GetItem("PLATE"); }},
       {"Document.Selection", [this] { document->Selection(); }},
       {"Document.Close", [this] { document->Close(); }},
       {"Document.FullName", [this] { document->FullName(); }},
       {"ProductDocument.Product", [this] { document->Product(); }},
       {"ScriptService.ExecuteScript", [this] { scripts->ExecuteScript("x", 2, "m", "p", {}); }}});
}

void EveryOperation::AddOfProducts() {
  Add({{"Product.Name=", [this] { component->SetName("x"); }},
       {"Product.Products", [this] { component->Products(); }},
       {"Product.PartNumber", [this] { component->PartNumber(); }},
       {"Product.PartNumber=", [this] { component->SetPartNumber("x"); }},
       {"Product.Position", [this] { component->Position(); }},
       {"Product.Reference", [this] { component->Reference(); }},
       {"Product.Parameters", [this] { component->Parameters(); }},
       {"Product.UserProperties", [this] { component->UserProperties(); }},
       {"Product.ApplyUpdate", [this] { component->ApplyUpdate(); }},
       {"Product.SetWorkMode", [this] { component->SetWorkMode(1); }},
       {"Products.Count", [this] { children->Count(); }},
       {"Products.Item", [this] { children->Item(1); }},
       {"Products.Remove", [this] { children->Remove(1); }},
       {"Products.ReplaceWithFile", [this] { children->ReplaceWithFile(component, folder.Path("PLATE.stp"), false); }},
       {"Products.AddComponentsFromFiles",
        [this] { children->AddComponentsFromFiles({folder.Path("PLATE.stp")}, "All"); }},
       {"Position.GetComponents", [this] { position->GetComponents(numbers); }},
       {"Position.SetComponents", [this] { position->SetComponents(At(5)); }},
       {"Parameters.Count", [this] { parameters->Count(); }},
       {"Parameters.Item", [this] { parameters->Item("WIP"); }},
       {"Parameters.CreateString", [this] { parameters->CreateString("x", "y"); }},
       {"Parameter.ValueAsString", [this] { parameter->ValueAsString(); }},
       {"Parameter.ValuateFromString", [this] { parameter->ValuateFromString("x"); }}});
}

void EveryOperation::AddOfSelection() {
  Add({{"Selection.Count", [this] { selection->Count(); }},
       {"Selection.Item", [this] { selection->Item(1); }},
       {"Selection.Add", [this] { selection->Add(component); }},
       {"Selection.Clear", [this] { selection->Clear(); }},
       {"Selection.Copy", [this] { selection->Copy(); }},
       {"Selection.Paste", [this] { selection->Paste(); }},
       {"SelectedElement.Value", [this] { entry->Value(); }}});
}

TEST_F(EveryOperation, CanBeMadeToFailUnderItsNameAndChangesNothingThen) {
  AddCommon();
  AddOfSession();
  AddOfProducts();
  AddOfSelection();

  for (const auto& [name, call] : operations) {
    gate->Reset();
    gate->FailOperation(name);
    EXPECT_EQ(FailureOf(call).Number(), failure::kDeviceError) << name;
  }
  gate->Reset();

  EXPECT_EQ(NamesOf(children), (std::vector<std::string>{"PLATE.1"}));
  EXPECT_EQ(component->PartNumber(), "PLATE");
  EXPECT_EQ(PositionOf(root), kIdentityPosition);
  EXPECT_EQ(ValueOf(parameters, "WIP"), "TRUE");
  EXPECT_EQ(parameters->Count(), 1);
  EXPECT_EQ(selection->Count(), 1);
  EXPECT_EQ(documents->Count(), 1);
  EXPECT_EQ(host->Redraws(), 0);
  EXPECT_TRUE(application->DisplayFileAlerts());
}

}  // namespace
}  // namespace quintara::test
