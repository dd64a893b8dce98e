#include <algorithm>
#include <array>
#include <string_view>

#include "access/session/process.h"
#include "base/attempt.h"
#include "base/counter16.h"
#include "base/text.h"
#include "base/trimmed.h"
#include "services/Cls_AdminSettings.h"
#include "services/Cls_Init.h"

namespace quintara {
namespace {

constexpr std::int32_t kAllUsers = -1;

constexpr auto kSubject = "TDMX_SUBJECT";
constexpr auto kValue = "TDMX_VALUE_1";

struct TextSetting {
  std::string_view section;
  std::string_view subject;
  std::string ProcessGlobals::*global;
  std::string ProcessGlobals::*firstOfList = nullptr;
};

struct NumberSetting {
  std::string_view section;
  std::string_view subject;
  std::int16_t ProcessGlobals::*global;
};

constexpr std::string_view kCommon = "COMMON";
constexpr std::string_view kOwn = "QD";

constexpr std::array kTextSettings = {
    TextSetting{kCommon, "PART_NUMBER", &ProcessGlobals::gAttrPartNumber},
    TextSetting{kCommon, "CN_ID", &ProcessGlobals::gAttrId},
    TextSetting{kCommon, "CN_DESCRIPTION", &ProcessGlobals::gAttrDescription},
    TextSetting{kCommon, "TABLE_DOCUMENTS", &ProcessGlobals::gClassDocuments},
    TextSetting{kCommon, "DOC_DOC_LINK", &ProcessGlobals::gClassDocLink},
    TextSetting{kCommon, "FONT_NAME", &ProcessGlobals::gFontName},
    TextSetting{kOwn, "CLASS_PRODUCTS", &ProcessGlobals::gClassProducts, &ProcessGlobals::gFirstClassProducts},
    TextSetting{kOwn, "CLASS_PARTS", &ProcessGlobals::gClassParts, &ProcessGlobals::gFirstClassParts},
    TextSetting{kOwn, "TREE_VIEW_SEPARATOR", &ProcessGlobals::gTreeViewSeparator},
    TextSetting{kOwn, "TREE_VIEW", &ProcessGlobals::gTreeView},
};

constexpr std::array kNumberSettings = {
    NumberSetting{kCommon, "FONT_SIZE", &ProcessGlobals::gFontSize},
    NumberSetting{kCommon, "FONT_CHARSET", &ProcessGlobals::gFontCharset},
    NumberSetting{kCommon, "FONT_BOLD", &ProcessGlobals::gFontBold},
    NumberSetting{kCommon, "FONT_ITALIC", &ProcessGlobals::gFontItalic},
};

void NameAttributes(ProcessGlobals& process) {
  process.OBJECT_ID = "OBJECT_ID";
  process.CLASS_ID = "CLASS_ID";
  process.REVISION = "REVISION";
  process.STATE = "STATE";
  process.CAD_REF_FILE_NAME = "CAD_REF_FILE_NAME";
  process.FILE_NAME = "FILE_NAME";
  process.FILE_TYPE = "FILE_TYPE";
  process.VAULT_OBJECT_ID = "VAULT_OBJECT_ID";
  process.DIRECTORY = "DIRECTORY";
  process.OPERATION_ID = "OPERATION_ID";
  process.TDM_FILE_ID = "TDM_FILE_ID";
}

void ForgetFont(ProcessGlobals& process) {
  process.gFontName.clear();
  process.gFontSize = process.gFontCharset = process.gFontBold = process.gFontItalic = -1;
}

// A subject that isn't known is passed over.
void ReadSetting(ProcessGlobals& process, std::string_view section, const Ref<veldora::VdRecord>& row) {
  const auto subject = row->ValueAsString(kSubject);
  const auto isMeant = [&](const auto& setting) { return setting.section == section && setting.subject == subject; };
  if (const auto text = std::ranges::find_if(kTextSettings, isMeant); text != kTextSettings.end()) {
    process.*text->global = row->ValueAsString(kValue);
    if (text->firstOfList != nullptr) process.*text->firstOfList = Split(process.*text->global, ',').front();
  }
  if (const auto number = std::ranges::find_if(kNumberSettings, isMeant); number != kNumberSettings.end()) {
    process.*number->global = Variant(row->ValueAsInteger(kValue)).ToInteger16();
  }
}

void ReadSettings(ProcessGlobals& process, std::string_view section, const Ref<veldora::VdRecList>& rows) {
  for (const int row : Counting(0, rows->RecordCount() - 1)) ReadSetting(process, section, rows->GetRecord(row));
}

}  // namespace

bool Cls_Init::InitAdminSettings(const Ref<veldora::VdSession>& /*VdSession*/) {
  return OrElse(false, [&] {
    auto& process = Process();
    if (!process.gClsAdminSettings) process.gClsAdminSettings = std::make_shared<Cls_AdminSettings>();
    const auto section = [&](std::string_view name) {
      return process.gClsAdminSettings->GetSettingSection(process.gSession, std::string(name), true, kAllUsers);
    };
    const auto common = section(kCommon);
    ForgetFont(process);
    NameAttributes(process);
    ReadSettings(process, kCommon, common);
    ReadSettings(process, kOwn, section(kOwn));
    process.gTreeViewAttributes.clear();
    for (const auto& name : Split(process.gTreeView, ',')) {
      process.gTreeViewAttributes.emplace_back(Trimmed(name, " "));
    }
    return true;
  });
}

}  // namespace quintara
