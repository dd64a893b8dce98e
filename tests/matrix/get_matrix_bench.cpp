#include "matrix/get_matrix_bench.h"

#include <algorithm>

namespace quintara::test {
namespace {

constexpr auto kCar = "2:18";

}  // namespace

Steps operator+(Steps left, const Steps& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

Steps UpTo(const std::string& last, Steps steps) {
  const auto found = std::ranges::find(steps, last);
  EXPECT_NE(found, steps.end()) << last;
  if (found != steps.end()) steps.erase(found + 1, steps.end());
  return steps;
}

Steps Looking() {
  return {"VdObjectStore.DefaultBehavior",
          "VdBehavior.OptionC",
          "VdBehavior.OptionA",
          "VdObjectStore.DefaultBehavior",
          "VdBehavior.Clone",
          "VdBehavior.OptionB=(0)",
          "VdBehavior.OptionA=(0)",
          "VdBehavior.OptionC=(2)",
          std::string("VdObject.Refresh(") + kCar + ")",
          std::string("VdObject.Retrieve(") + kCar + ")",
          std::string("VdObject.Parents(") + kCar + ")",
          "Application.ActiveDocument",
          "Application.ActiveDocument",
          "VdRecord.ValueAsString(NM_CN_PART_NUMBER)",
          "VdObject.GetVersion(3)",
          std::string("VdObject.Refresh(") + kCar + ")",
          "VdRecord.ValueAsInteger(STATE)",
          "VdQuery.RunClassQuery",
          "VdQuery.RunLinkQuery"};
}

Steps Deleting() {
  return {"FileSystem.FileExists(work/CAR Matrix.xml)"};
}

Steps ReadingStateOf(const std::string& matrix) {
  return {"VdObject.Retrieve(" + matrix + ")", "VdObject.GetVersion(3)", "VdObject.Retrieve(" + matrix + ")",
          "VdObject.Refresh(" + matrix + ")", "VdRecord.ValueAsInteger(STATE)"};
}

Steps TakingUp(const std::string& operation, const std::string& call) {
  return {"VdBehavior.OptionC=(2)", "VdBehavior.OptionA=(0)", "VdMetaInfo.OperationByName(" + operation + ")",
          "VdSessionUtil.CanPerform", "VdSessionUtil." + call};
}

Steps PuttingBack() {
  return {"VdBehavior.OptionC=(5)", "VdBehavior.OptionA=(6)"};
}

Steps Writing() {
  Steps steps(7, "Position.GetComponents");
  return steps + Steps{"Files.Write(work/CAR Matrix.xml.new)", "FileSystem.FileExists(work/CAR Matrix.xml)",
                       "Files.Rename(work/CAR Matrix.xml.new, work/CAR Matrix.xml)"};
}

Steps Updating() {
  return {"VdObject.RetrieveAttributes(FILE_NAME;DIRECTORY)", "VdRecord.ValuateFromString(FILE_NAME, CAR Matrix.xml)",
          "VdRecord.ValuateFromString(DIRECTORY, work)"};
}

Steps Adding() {
  return {"VdQuery.RunClassQuery",
          "VdObjectStore.NewObject(4)",
          "VdObject.InitData(4:0)",
          "VdMask.NextValue(CN_ID)",
          "VdRecord.ValuateFromString(CN_ID, 00000006)",
          "VdMask.FirstRevision(REVISION)",
          "VdRecord.ValuateFromString(REVISION, A)",
          "VdRecord.ValuateFromString(CN_DESCRIPTION, CAR Matrix)",
          "VdRecord.ValuateFromString(NM_CN_PART_NUMBER, CAR Matrix)",
          "VdRecord.ValuateFromString(FILE_TYPE, 3)",
          "VdRecord.ValuateFromString(FILE_NAME, CAR Matrix.xml)",
          "VdRecord.ValuateFromString(DIRECTORY, work)",
          "VdObject.AddToVault",
          "VdObject.AddLink(8)"};
}

Steps RunningOn(const std::string& operation) {
  return {"VdMetaInfo.OperationByName(" + operation + ")", "VdSessionUtil.RunOperation(" + operation + ")"};
}

Steps Resolving(const std::string& file, const std::string& object) {
  return {"HIXEngine.DocumentInfo(work/" + file + ")", "VdObject.Retrieve(" + object + ")"};
}

Steps AskingForAMatrix() {
  return {"VdQuery.RunClassQuery", "VdQuery.RunLinkQuery"};
}

}  // namespace quintara::test
