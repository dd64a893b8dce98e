#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "access/utils/Cls_Utils.h"
#include "commands/Cls_InsertLWT.h"
#include "services/running_hosts.h"
#include "support/tiny_files.h"

namespace quintara::test {

/// The standard report.
inline Box Report(const std::string& description) {
  return Report("Cls_InsertLWT.Run", kCriticalModal, description);
}

inline Box NoDocument(const std::string& description = {}) {
  return TextBox("QD.INSERTWLT.CANT_RETRIEVE_ZORVA_ACTIVEDOCUMENT", kCriticalModal, {description});
}

inline Box NoWip() {
  return TextBox("QD.INSERTWLT.IS_NOT_WIP", kCriticalModal, {""});
}

/// A work in progress with a plate in it is active, and a bolt, whose part file has a light one, is in the vault.
class Insertion : public testing::Test, protected RunningHosts {
 protected:
  Insertion() {
    RunVault();
    RunZorva();
    bolt = AddOfType("ZVAPart", "BOLT", "ZORVA Part");
    EXPECT_TRUE(Init());
    GivenProduct();
    Mark("TRUE");
  }

  Ref<VdObject> AddOfType(const std::string& fileType, const std::string& partNumber, const std::string& className) {
    folder.Write("source/" + partNumber + ".stp", TinyStep(partNumber));
    folder.Write("source/" + partNumber + ".stp.lwt", TinyLight(partNumber));
    return vault->AddObject(
        className, {{"NM_CN_PART_NUMBER", partNumber}, {"FILE_TYPE", std::to_string(vault->FileTypeId(fileType))}},
        folder.Path("source/" + partNumber + ".stp"));
  }
  void GivenProduct() {
    AssemblyStructure structure;
    structure.definitions = {{"PLATE", false, {}}, {"WIP~~TEST", true, {{"PLATE.1", 0, kIdentityPosition}}}};
    structure.root = 1;
    root = host.Build(structure)->Product();
  }
  void Mark(const std::string& value) { Utils().WriteStringProperty(root, "WIP", value); }
  void GivenNoDocument() { host.Application()->ActiveDocument()->AsDocument()->Close(); }

  void Run(const Ref<VdObject>& object, const std::string& mode) { Cls_InsertLWT().Run(object, mode); }
  std::vector<Box> BoxesOfRun(const Ref<VdObject>& object, const std::string& mode) {
    const auto before = static_cast<std::ptrdiff_t>(platform.Boxes().size());
    Run(object, mode);
    return {platform.Boxes().begin() + before, platform.Boxes().end()};
  }
  /// The calls of a run behind its start.
  std::vector<std::string> CallsOfRun(const Ref<VdObject>& object, const std::string& mode) {
    gate->StartRecording();
    Run(object, mode);
    gate->StopRecording();
    const auto& record = gate->Record();
    return {std::ranges::find(record, "Application.Documents"), record.end()};
  }
  static std::vector<std::string> OfZorva(std::vector<std::string> calls) {
    std::erase_if(calls, [](const auto& call) {
      return call.starts_with("Vd") || call.starts_with("File") || call.starts_with("Platform.") ||
             call.find(".As") != call.npos;
    });
    return calls;
  }

  int Count() { return root->Products()->Count(); }
  Ref<zorva::Product> Last() { return root->Products()->Item(Count()); }
  static std::string Property(const Ref<zorva::Product>& component, const std::string& name) {
    return Utils().ReadStringProperty(component, name);
  }
  static bool Alerts() { return Process().gZorva->DisplayFileAlerts(); }
  static void SetAlerts(bool alerts) { Process().gZorva->SetDisplayFileAlerts(alerts); }

  Ref<VdObject> bolt;
  Ref<zorva::Product> root;
};

}  // namespace quintara::test
