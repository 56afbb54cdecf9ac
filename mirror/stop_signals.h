#pragma once

#include <QObject>
#include <functional>

namespace borvane::mirror {

/// While one is alive, SIGTERM and SIGINT end the event loop instead of the process, so that the store is closed and no
/// log stays beside its file. SIGHUP has the program read its configuration again; only where it comes because the
/// program's terminal has gone, it ends the event loop, too. At most one may be alive. On systems without these signals
/// it does nothing.
class StopSignals : public QObject {
 public:
  /// `reread` is called from the event loop.
  explicit StopSignals(std::function<void()> reread);
  ~StopSignals() override;

  /// Whether the program is to end. A signal that comes before the event loop runs ends none.
  bool HasStopped() const { return has_stopped_; }

 private:
  bool has_stopped_ = false;
};

}  // namespace borvane::mirror
