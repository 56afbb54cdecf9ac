#include "desktop/widgets/timer_binder.h"

#include "core/dispatch.h"

namespace borvane {

TimerBinder::TimerBinder(TimerControl &timer) : timer_(timer) {
  ticks_.setTimerType(Qt::PreciseTimer);
  ticks_.callOnTimeout([this] { Dispatch([this] { timer_.Tick(); }); });
  timer_.Watch(this);
  Restart();
}

void TimerBinder::Release() {
  timer_.Watch(nullptr);
  ticks_.stop();
}

void TimerBinder::PropertyChanged(const PropertyBase & /*property*/) { Restart(); }

void TimerBinder::Restart() {
  if (timer_.IsCounting())
    ticks_.start(timer_.Interval());
  else
    ticks_.stop();
}

}  // namespace borvane
