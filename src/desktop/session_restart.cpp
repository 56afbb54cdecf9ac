#include "desktop/session_restart.h"

#include <QGuiApplication>
#include <QSessionManager>

#include "settings/conffrm.h"

namespace borvane {

SessionRestart::SessionRestart() {
  connect(
      qApp, &QGuiApplication::saveStateRequest, this,
      [](QSessionManager &session) {
        const SettingsForm *settings = conffrm.IfLoaded();
        const bool starts_anyway = settings != nullptr && settings->Check7.Value() == 1;
        session.setRestartHint(starts_anyway ? QSessionManager::RestartNever : QSessionManager::RestartIfRunning);
      },
      Qt::DirectConnection);
}

}  // namespace borvane
