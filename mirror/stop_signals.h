#pragma once

#include <QObject>

namespace borvane::mirror {

/// While one is alive, SIGTERM and SIGINT end the event loop instead of the process, so that the store is closed and no
/// log stays beside its file. At most one may be alive. On systems without these signals it does nothing.
class StopSignals : public QObject {
 public:
  StopSignals();
  ~StopSignals() override;
};

}  // namespace borvane::mirror
