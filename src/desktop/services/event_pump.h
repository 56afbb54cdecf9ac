#pragma once

#include "platform/event_pump.h"

namespace borvane {

/// Qt's event loop.
class QtEventPump final : public EventPump {
 public:
  void LetEventsRun() override;
  void LetEventsRunFor(int milliseconds) override;
  void WaitForEvents() override;
};

}  // namespace borvane
