#pragma once

#include <cstdint>

#include "controls/control.h"

namespace borvane {

/// Raises Timer every `Interval` milliseconds while it is enabled and the interval is above 0, its window shown or not.
class TimerControl : public Control {
 public:
  struct Design {
    std::int32_t Interval = 0;
    bool Enabled = true;
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
    bool Visible = false;
    std::string_view ToolTipText = "";
  };

  TimerControl(Container &container, std::string_view name, const Design &design, int index = no_index)
      : Control(container, name, design, index), Interval(*this, design.Interval) {}

  bool IsCounting() const { return Enabled() && Interval() > 0; }

  /// The period has passed: raises Timer. Does nothing while the timer does not count, nor inside its own handler,
  /// unless it has been disabled and enabled since that began.
  void Tick();

  Property<std::int32_t> Interval;
  Event<> Timer;

 protected:
  void Changed(const PropertyBase &property) override;

 private:
  std::uint64_t running_tick_ = 0;  // 0 while no tick prevents another
  std::uint64_t ticks_ = 0;
};

}  // namespace borvane
