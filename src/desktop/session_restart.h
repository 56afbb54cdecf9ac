#pragma once

#include <QObject>

namespace borvane {

/// Keeps a desktop that restores its programs at the next login from starting this one as well where the autostart
/// entry does: there would be two.
class SessionRestart final : public QObject {
 public:
  SessionRestart();
};

}  // namespace borvane
