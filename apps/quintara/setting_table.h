#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "access/contracts/veldora.h"
#include "hosts/vault/embedded_vault.h"
#include "services/Cls_AdminSettings.h"

namespace quintara {

/// One class of settings, in the generation of columns that the vault has.
class SettingTable {
 public:
  struct Row {
    std::string section;
    std::string subject;
    std::vector<std::string> values;  ///< up to the last one that isn't empty
  };

  /// Those of the user who is logged on, else those of the site.
  SettingTable(EmbeddedVault& vault, bool ofUser);

  bool IsOfUser() const { return ofUser_; }
  /// How many values a setting has; the last one is the long one.
  int ValueCount() const { return shortValues_ + 1; }

  /// The rows of a section and subject, or of all where these are empty.
  std::vector<Row> Find(const std::string& section, const std::string& subject);

  /// Sets the values of a setting, which is made when it isn't there; those that aren't given become empty. Fails
  /// where there are several of that section and subject.
  void Set(const std::string& section, const std::string& subject, const std::vector<std::string>& values);

 private:
  std::string ValueColumn(int number) const;
  std::vector<std::string> Sections() const;
  std::vector<std::string> ValuesIn(const Ref<veldora::VdRecList>& rows, int row) const;

  Ref<veldora::VdApplication> application_;
  Ref<veldora::VdSession> session_;
  bool ofUser_;
  std::int32_t userId_;
  Ref<veldora::VdClass> class_;
  Cls_AdminSettings settings_;
  int shortValues_ = 0;
};

/// The first class that the site's setting of that section and subject names; empty for none. Fails for one that
/// the vault hasn't got.
std::string FirstClassOfSetting(EmbeddedVault& vault, const std::string& section, const std::string& subject);

}  // namespace quintara
