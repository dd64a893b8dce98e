#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Before the system's headers, which rename what it declares.
#include "access/utils/Cls_Utils.h"
#include "matrix/matrix_fixture.h"
#include "services/running_hosts.h"
#include "views/win32/user.h"
#include "views/win32/views.h"

namespace quintara::test {

/// Running hosts whose dialogs stand on the desktop, with the texts as users get them.
class DesktopHosts : public RunningHosts {
 public:
  explicit DesktopHosts(const std::string& language = "EN");
  ~DesktopHosts();

  /// A checked-in assembly: PLANT holds BOLT, GROUP and PLATE, GROUP holds BOLT twice.
  Ref<veldora::VdObject> Plant();
  /// The root of a work in progress with two light components, BOLT with a newer revision and PLATE without one.
  Ref<zorva::Product> Wip();

  /// The layouts that dialogs were made from, in that order.
  std::vector<dialog::Layout> layouts;

  /// That of the latest dialog of this name.
  const dialog::Layout& LayoutOf(const std::string& dialog) const;
  /// The window of a control of it, and the dialog itself with an empty one; null while it isn't shown.
  HWND Window(const std::string& dialog, const std::string& control = {}) const;

 private:
  Ref<veldora::VdObject> Add(const std::string& className, const std::string& partNumber, const std::string& ending);
  void AddLight(const Ref<zorva::Product>& root, const Ref<veldora::VdObject>& object);

  std::vector<std::shared_ptr<dialog::View>> views_;
};

}  // namespace quintara::test
