#include <string>

#include "access/contracts/platform.h"
#include "access/session/process.h"
#include "access/session/the_platform.h"
#include "access/utils/messages.h"
#include "base/file_names.h"
#include "base/text.h"
#include "commands/Cls_GlobalRefreshVD.h"

namespace quintara {
namespace {

using veldora::HIXEngine;
using veldora::VdSession;

constexpr int kError = 1;
constexpr int kInformation = 4;

/// The log of one reload. Where a line can't be written the further ones are left out.
class ReloadLog {
 public:
  explicit ReloadLog(bool isOn) : isOn_(isOn) {}

  void Note(const std::string& text, int type = kInformation) {
    if (!isOn_) return;
    ErrorState failure;
    isOn_ = Attempt(failure,
                    [&] { ThePlatform().LogEvent(PathIn(Process().gWorkDirectory, "ReloadSession.log"), text, type); });
  }
  bool End(const std::string& text, int type) {
    Note(text, type);
    return false;
  }

 private:
  bool isOn_;
};

void LogOffAndOn(const Ref<VdSession>& session, const Ref<HIXEngine>& engine, ReloadLog& log) {
  const auto user = session->UserMetaInfo();
  const auto login = user->Login();
  log.Note("User login retrieved");
  const auto password = user->Password();
  log.Note("User password retrieved");
  engine->Disconnect();
  log.Note("HIX disconnected");
  session->UserLogoff();
  log.Note("Veldora session logoff");
  session->UserLogin(login, password);
  log.Note("Veldora session logon");
  engine->Connect(login, password);
  log.Note("HIX connected");
}

bool Reload(const Ref<VdSession>& session, const Ref<HIXEngine>& engine, ReloadLog& log) {
  log.Note("Reload session started...");
  if (!session) return log.End("Can't get the current veldora session", kError);
  log.Note("Current veldora session retrieved");
  if (!engine) return log.End("Can't get the HIX Engine", kError);
  log.Note("Current veldora session retrieved");
  const auto application = Capitals(session->ApplicationName());
  if (application != "ZORVA") {
    if (application != "VELDORA") return log.End("Can't retrieve Application Name", kInformation);
    log.Note("Veldora launched before ZORVA");
    LogOffAndOn(session, engine, log);
  }
  log.Note("Reload session terminated successfully");
  return true;
}

}  // namespace

bool Cls_GlobalRefreshVD::ReloadSession(const Ref<VdSession>& Session, const Ref<HIXEngine>& Engine, bool WithLog) {
  ReloadLog log(WithLog);
  const auto report = [&](const ErrorState& failure) {
    log.Note("Error during the reload session function : " + failure.description, kError);
    Show(Process().texts.COMMON_UNEXPECTED_ERROR, box::kCritical, "Cls_GlobalRefreshVD.ReloadSession",
         failure.description);
  };
  return OrReport(false, report, [&] { return Reload(Session, Engine, log); });
}

}  // namespace quintara
