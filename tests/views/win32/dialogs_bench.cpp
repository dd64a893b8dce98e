#include "views/win32/dialogs_bench.h"

#include <algorithm>
#include <filesystem>

#include "base/attempt.h"
#include "base/text.h"
#include "nls/embedded_texts.h"
#include "support/tiny_files.h"
#include "views/win32/windows_of.h"

namespace quintara::test {

DesktopHosts::DesktopHosts(const std::string& language) {
  for (const auto& file : EmbeddedTexts()) {
    const auto path = vault->Folder().base + "/NLS/" + std::string(file.path);
    std::filesystem::create_directories(ToPath(path).parent_path());
    files->WriteWhole(path, std::string(file.bytes));
  }
  RunVaultIn(language);
  RunZorva();
  EXPECT_TRUE(Init());
  platform.Native().SetViewMaker([this](const dialog::Layout& layout, dialog::Events& events) {
    layouts.push_back(layout);
    return views_.emplace_back(win32::NewView(layout, events));
  });
}

DesktopHosts::~DesktopHosts() {
  platform.Native().SetViewMaker({});
}

Ref<veldora::VdObject> DesktopHosts::Add(const std::string& className, const std::string& partNumber,
                                         const std::string& ending) {
  const auto file = "source/" + partNumber + ending;
  folder.Write(file, TinyStep(partNumber));
  folder.Write(file + ".lwt", TinyLight(partNumber));
  return vault->AddObject(className, {{"NM_CN_PART_NUMBER", partNumber}}, folder.Path(file));
}

Ref<veldora::VdObject> DesktopHosts::Plant() {
  const auto bolt = Add("ZORVA Part", "BOLT", ".stp");
  const auto plate = Add("ZORVA Part", "PLATE", ".stp");
  const auto group = Add("ZORVA Product", "GROUP", ".ZVAProduct");
  const auto plant = Add("ZORVA Product", "PLANT", ".ZVAProduct");
  vault->SetStructure(group, {{bolt, 2}});
  vault->SetStructure(plant, {{bolt, 1}, {group, 1}, {plate, 1}});
  for (const auto& object : {bolt, plate, group, plant}) CheckIn(object);
  return plant;
}

Ref<zorva::Product> DesktopHosts::Wip() {
  const auto bolt = Add("ZORVA Part", "BOLT", ".stp");
  const auto plate = Add("ZORVA Part", "PLATE", ".stp");
  for (const auto& object : {bolt, plate}) CheckIn(object);
  const auto root = host.Build(StructureOf({"WIP~~TEST", "WIP~~TEST", kIdentityPosition, {}}))->Product();
  Utils().WriteStringProperty(root, "WIP", "TRUE");
  AddLight(root, bolt);
  AddLight(root, plate);
  vault->NewRevision(bolt);
  return root;
}

void DesktopHosts::AddLight(const Ref<zorva::Product>& root, const Ref<veldora::VdObject>& object) {
  const auto path = Utils().CopyVeldoraObjectLWTToWork(object, Process().gFileSystem);
  root->Products()->AddComponentsFromFiles({path}, "All");
  const auto component = root->Products()->Item(root->Products()->Count())->Reference();
  Utils().WriteStringProperty(component, "TYPE", "LWT");
  Utils().WriteStringProperty(component, "OBJECT_ID", std::to_string(object->ObjectId()));
  Utils().WriteStringProperty(component, "CLASS_ID", std::to_string(object->ClassId()));
}

const dialog::Layout& DesktopHosts::LayoutOf(const std::string& dialog) const {
  const auto found = std::find_if(layouts.rbegin(), layouts.rend(), [&](const auto& at) { return at.name == dialog; });
  if (found == layouts.rend()) throw Failure(failure::kElementNotFound, "There is no dialog " + dialog);
  return *found;
}

HWND DesktopHosts::Window(const std::string& dialog, const std::string& control) const {
  for (auto at = layouts.size(); at-- > 0;) {
    if (layouts[at].name != dialog) continue;
    const auto title = OrElse(std::string(), [&] { return views_[at]->Text(""); });  // it may be unloaded
    const auto window = title.empty() ? nullptr : ShownDialog(title);
    return control.empty() || window == nullptr ? window : WindowOf(window, layouts[at], control);
  }
  return nullptr;
}

}  // namespace quintara::test
