#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/event_pump.h"
#include "support/fake_http.h"
#include "support/trace.h"

namespace borvane {

/// Runs the events that the test has scripted, each through Dispatch.
class FakePump final : public EventPump {
 public:
  FakePump(Trace &trace, FakeHttp &http) : trace_(trace), http_(http) {}

  /// `event` happens in the pump or wait with that number, counted from 1 and from now.
  void InPump(int number, std::function<void()> event);

  /// `event` happens once, in a wait while a request of `address` is under way.
  void DuringRequest(std::string_view address, std::function<void()> event);

  void LetEventsRun() override;
  void LetEventsRunFor(int milliseconds) override;
  void WaitForEvents() override;

 private:
  struct Scripted {
    int pump;             // the number of the pump that runs it; 0 where the address decides
    std::string address;  // of the request that it waits for
    std::function<void()> event;
  };

  enum class Kind { Pump, Wait };

  /// Returns whether there was any event.
  bool RunScripted(Kind kind);

  Trace &trace_;
  FakeHttp &http_;
  std::vector<Scripted> script_;
  int pumps_ = 0;
};

}  // namespace borvane
