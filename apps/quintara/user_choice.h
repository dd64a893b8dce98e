#pragma once

#include <functional>
#include <string>

namespace quintara {

/// The value of an environment variable; empty when it isn't set.
using Environment = std::function<std::string(const std::string& name)>;

/// The options that every verb has.
struct CommonOptions {
  std::string workFolder;
  std::string vault;
  std::string user;
  std::string language;
  bool zorvaStartedFirst = false;
  bool yes = false;
  bool no = false;
};

/// Who works where, as the options tell, else the environment.
struct UserChoice {
  std::string workFolder;  ///< empty when nobody named one
  std::string namedVault;  ///< the folder that was named as that of the vault; empty for none
  std::string vault;       ///< that, else the one that was found; empty for none. Not looked at yet.
  std::string user;
  std::string language;  ///< a code such as "EN"
  bool zorvaStartedFirst = false;
};

/// `--work`, else QUINTARA_WORK. `--vault`, else QUINTARA_VAULT, else the nearest `quintara.vault` from the
/// current folder upwards. `--user`, else QUINTARA_USER, else "admin". `--lang`, else QUINTARA_LANG, else the
/// language of the locale where there are texts in it, else "EN". Wrong use for a language that is no code of
/// two letters.
UserChoice ChooseUser(const CommonOptions& options, const Environment& environment);

}  // namespace quintara
