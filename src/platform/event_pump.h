#pragma once

namespace borvane {

/// Lets the events of the outside world in while a procedure runs. Each event enters through Dispatch.
class EventPump {
 public:
  /// Runs what is pending, without waiting.
  virtual void LetEventsRun() = 0;

  /// Runs what is pending and what comes, for that time.
  virtual void LetEventsRunFor(int milliseconds) = 0;

  /// Sleeps until there is an event, then runs what is pending.
  virtual void WaitForEvents() = 0;

 protected:
  ~EventPump() = default;
};

}  // namespace borvane
