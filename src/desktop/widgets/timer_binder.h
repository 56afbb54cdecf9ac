#pragma once

#include <QObject>
#include <QTimer>

#include "controls/timer.h"

namespace borvane {

/// Lets a timer of the program tick while it counts. It needs no window.
class TimerBinder final : public QObject, public PropertyWatcher {
 public:
  explicit TimerBinder(TimerControl &timer);

  /// Stops the timer for good; its window is about to go.
  void Release();

 private:
  void PropertyChanged(const PropertyBase &property) override;

  /// Starts a new period, or none.
  void Restart();

  TimerControl &timer_;
  QTimer ticks_;
};

}  // namespace borvane
