#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "access/contracts/geometry.h"
#include "commands/Cls_GlobalRefreshVD.h"
#include "commands/global_refresh_internals.h"
#include "services/running_hosts.h"
#include "support/refresh_paths.h"
#include "support/scripted_view.h"

namespace quintara::test {

/// What each setting of a refresh is overwritten with.
const std::vector<std::string>& NewValues();
/// What each of them is before a test: "old 1" and so on.
std::vector<std::string> OldValues();
/// The three keys that only a failed refresh writes: for the settings 2, 3 and 4.
const std::vector<std::string>& KeysOfFailure();
/// The settings by the place, from 1, at which they are read: in the order in which they are overwritten, and in
/// which they are put back after a failure.
inline const std::vector<int> kOrderOfWriting = {2, 3, 4, 5, 1, 6, 7, 8, 9, 10, 11};

/// The old values, with the new ones for the settings of these numbers.
std::vector<std::string> NewOnly(const std::set<std::size_t>& numbers);
/// What those three keys hold: nothing at first, and after a failure the old values.
inline const std::vector<std::string> kNoKeys = {"", "", ""};
inline const std::vector<std::string> kKeysWritten = {"old 2", "old 3", "old 4"};

/// The call that writes a setting, and the one that puts the setting of a number back.
std::string Write(const std::string& path, const std::string& value);
std::string WriteOld(std::size_t number);

/// What a call says that the gate has made fail.
inline constexpr auto kInjected = "Injected failure";

Box RunReport(const std::string& description);
Box ReloadReport(const std::string& description);
Box Successful();

/// Who was started first: the vault or the CAD host.
enum class First { kVault, kZorva };

/// Hosts with an assembly in the vault: CAR holds FRAME at 100 and NUT at 200, FRAME holds BOLT at 1 and at 2. All are
/// checked in, and BOLT has a newer revision that is too. CAR has a matrix, "<old/>". The settings have their old
/// values, as at the log-on, and the dialogs are scripted ones.
class RefreshBench : public RunningHosts {
 public:
  explicit RefreshBench(First first = First::kVault);

  Ref<VdObject> Of(const std::string& partNumber) const { return objects.at(partNumber); }
  static Ref<VdObject> Latest(const Ref<VdObject>& object) { return object->GetVersion(veldora::version::kLast); }
  Ref<veldora::VdRecList> SelectionOf(const std::vector<Ref<VdObject>>& selected) const;
  /// "B1": the newest revision and its state.
  std::string RevisionAndState(const std::string& partNumber) const;
  /// The part numbers and revisions below the newest revision of a product, "FRAME A" and so on.
  std::vector<std::string> Holds(const std::string& partNumber) const;
  /// The matrix documents linked to the newest revision of CAR.
  std::vector<Ref<VdObject>> Matrices() const;

  /// Runs the command on CAR, or on what a test selects, and records the calls.
  std::vector<Box> Refresh();
  std::vector<Box> Refresh(const Ref<veldora::VdRecList>& selection);

  /// The values of the eleven settings, and of the keys of a failure.
  std::vector<std::string> Settings() const { return ValuesOf(SettingPaths()); }
  std::vector<std::string> OtherKeys() const { return ValuesOf(KeysOfFailure()); }
  std::vector<std::string> ValuesOf(const std::vector<std::string>& paths) const;
  bool Alerts() { return host.Application()->DisplayFileAlerts(); }
  bool IsWaiting() const { return desk.Made("frmWaiting") > 0 && desk.Last("frmWaiting").IsLoaded(); }
  /// How often the last run asked for a refreshed display.
  std::size_t DisplaysRefreshed() const { return Calls("Application.RefreshDisplay=(True)").size(); }
  std::vector<std::string> Calls(const std::string& beginning) const { return CallsOf(gate->Record(), beginning); }

  std::map<std::string, Ref<VdObject>> objects;
  Ref<VdObject> newBolt;
  Ref<VdObject> matrix;
  ScriptedDialogs desk{platform};
  int yields = 0;
  int failing = 0;  ///< the call, from 1, that is to fail in the next run; 0 for none

 private:
  void StoreAll();
  void AddMatrix();
};

class RefreshTest : public testing::Test, protected RefreshBench {
 protected:
  explicit RefreshTest(First first = First::kVault) : RefreshBench(first) {}
};

/// The calls of a run that goes well, on hosts of its own, which must be the only ones.
std::vector<std::string> CallsOfARefresh(First first);

/// A refresh whose calls are known beforehand.
class KnownRefreshTest : public RefreshTest {
 protected:
  static void SetUpTestSuite();

  /// The place, from 1, of the `nth` call that begins so.
  static int PlaceOf(const std::string& beginning, int nth = 1);
  static const std::vector<std::string>& All() { return calls_; }

 private:
  static std::vector<std::string> calls_;
};

}  // namespace quintara::test
