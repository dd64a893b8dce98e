#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "access/contracts/veldora.h"
#include "base/ref.h"

namespace quintara {

/// The settings of the site and of its users: rows of two tables of the vault's database, addressed by
/// a section and a subject. A list of values is a table whose columns bear the names of the
/// database's columns.
///
/// The columns exist in three generations, told apart by their prefix; the first reading finds out
/// which one stands in the database.
class Cls_AdminSettings {
 public:
  /// Finds out the names of the columns, once. False when one of the two tables is missing; then the
  /// names are set only if the users' table is there. A failure is shown, and gives False too.
  bool InitSettings(const Ref<veldora::VdSession>& VdSession);

  /// Writes the values of one setting, a new one where there is none: row 0 of those columns of
  /// `Values` that are named as the value columns are, numbered from 1 up to the number of all its
  /// columns. Counts on the names that an earlier reading found. `UserId` counts from 1 on. False,
  /// after a message, when there are several settings of that name already, or no sequence for
  /// the id of a new one. Failures go to the caller.
  bool SetSettingValues(const Ref<veldora::VdSession>& VdSession, const std::string& SectionName,
                        const std::string& Subject, bool Admin, std::int32_t UserId,
                        const Ref<veldora::VdRecList>& Values);

  /// One setting as a table of one row: its values and what other columns its table has, but for
  /// those that the vault keeps for itself, the id, the section and the subject. Nothing unless
  /// exactly one is found. A `UserId` below 1, or `Admin`, reads the settings of all users. Failures
  /// go to the caller.
  Ref<veldora::VdRecList> GetSettingValues(const Ref<veldora::VdSession>& VdSession, const std::string& SectionName,
                                           const std::string& Subject, bool Admin, std::int32_t UserId = -1);
  /// All settings of a section in the same form, a row and the subject for each; nothing when there
  /// are none.
  Ref<veldora::VdRecList> GetSettingSection(const Ref<veldora::VdSession>& VdSession, const std::string& SectionName,
                                            bool Admin, std::int32_t UserId = -1);

  /// True once both tables and the names of their columns are known.
  bool Initialized = false;

  // The names of the columns; those of the values are the prefix and a number from 1.
  std::string IdAttribute;
  std::string UserIdAttribute;
  std::string SectionAttribute;
  std::string SubjectAttribute;
  std::string ValuePrefix;
  std::string ValueLongAttribute;

 private:
  // What a query asks for. Without a subject it asks for a whole section.
  struct Wanted {
    std::string section;
    std::optional<std::string> subject;
    bool admin;
    std::int32_t userId;
    std::vector<std::string> selected;
  };
  // A query that was run.
  struct Search {
    Ref<veldora::VdClass> ofClass;
    Ref<veldora::VdBehavior> behavior;
    Ref<veldora::VdQuery> query;
  };

  void ReadColumnNames(const Ref<veldora::VdAttributes>& attributes);
  Search SearchFor(const Ref<veldora::VdSession>& session, const Wanted& wanted) const;
  bool AddSetting(const Ref<veldora::VdObjectStore>& store, const Search& search, const Wanted& wanted,
                  const Ref<veldora::VdRecList>& values) const;
  void UpdateSetting(const Ref<veldora::VdObjectStore>& store, const Search& search,
                     const Ref<veldora::VdRecList>& values) const;
  void CopyValues(const Ref<veldora::VdRecList>& values, const Ref<veldora::VdRecord>& record) const;
  Ref<veldora::VdRecList> TableLike(const Ref<veldora::VdRecord>& record, bool withSubject) const;
  bool IsLeftOut(const std::string& column, bool withSubject) const;
};

}  // namespace quintara
