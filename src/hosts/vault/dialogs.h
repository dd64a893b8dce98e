#pragma once

#include <memory>

#include "access/contracts/veldora_services.h"
#include "hosts/vault/served.h"

namespace quintara::vault {

class CommonGuiObject final : public Served<"VdCommonGUI", veldora::VdCommonGUI>,
                              public std::enable_shared_from_this<CommonGuiObject> {
 public:
  using Served::Served;

  Ref<veldora::VdDialogs> Dialogs() override;

  Ref<veldora::VdCommonGUI> AsVdCommonGUI() override;
};

class GuiServicesObject final : public Served<"VdGUIServices", veldora::VdGUIServices>,
                                public std::enable_shared_from_this<GuiServicesObject> {
 public:
  using Served::Served;

  Ref<veldora::VdDialog> New(int kind) override;

  Ref<veldora::VdGUIServices> AsVdGUIServices() override;
};

}  // namespace quintara::vault
