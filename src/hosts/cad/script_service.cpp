#include <string_view>

#include "base/trimmed.h"
#include "hosts/cad/application.h"
#include "hosts/cad/session.h"

namespace quintara::cad {
namespace {

constexpr int kMacroProject = 2;

bool Lists(std::string_view project, const std::string& procedure) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (project.starts_with(kByteOrderMark)) project.remove_prefix(kByteOrderMark.size());
  while (!project.empty()) {
    const auto end = project.find('\n');
    const auto line = project.substr(0, end);
    if (Trimmed(line.substr(0, line.find('#'))) == procedure) return true;
    project.remove_prefix(end == project.npos ? project.size() : end + 1);
  }
  return false;
}

}  // namespace

void ScriptServiceObject::ExecuteScript(const std::string& libraryPath, int libraryType, const std::string& moduleName,
                                        const std::string& procedureName, const std::vector<std::string>& arguments) {
  const auto procedure = moduleName + "." + procedureName;
  Pass<"ExecuteScript">([&] { return procedure; });
  const auto session = life_->TheSession();
  if (libraryType != kMacroProject) {
    throw Failure(failure::kInvalidCall, "There is no library type " + std::to_string(libraryType));
  }
  if (!Lists(session->Files().Read(libraryPath), procedure)) {
    throw Failure(failure::kInvalidCall, "\"" + libraryPath + "\" has no procedure \"" + procedure + "\"");
  }
  if (!arguments.empty())
    throw Failure(failure::kInvalidCall, "The procedure \"" + procedure + "\" takes no arguments");
  if (procedure != "RetrieveMatrix.UpdateDisplay") {
    throw Failure(failure::kInvalidCall, "The procedure \"" + procedure + "\" isn't one that this host can run");
  }
  ++session->redraws;
}

}  // namespace quintara::cad
