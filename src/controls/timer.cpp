#include "controls/timer.h"

namespace borvane {

void TimerControl::Tick() {
  if (!IsCounting() || running_tick_ != 0)
    return;

  const std::uint64_t tick = ++ticks_;
  running_tick_ = tick;
  struct End {
    TimerControl &timer;
    std::uint64_t tick;
    ~End() {
      if (timer.running_tick_ == tick)
        timer.running_tick_ = 0;
    }
  } end{*this, tick};
  Timer.Raise();
}

void TimerControl::Changed(const PropertyBase &property) {
  if (&property == &Enabled && Enabled())
    running_tick_ = 0;
}

}  // namespace borvane
