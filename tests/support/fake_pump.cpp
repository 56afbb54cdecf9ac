#include "support/fake_pump.h"

#include <gtest/gtest.h>

#include "basic/number.h"
#include "core/dispatch.h"
#include "support/fake_process.h"

namespace borvane {

void FakePump::InPump(int number, std::function<void()> event) {
  script_.push_back({.pump = pumps_ + number, .address = {}, .event = std::move(event)});
}

void FakePump::DuringRequest(std::string_view address, std::function<void()> event) {
  script_.push_back({.pump = 0, .address = std::string(address), .event = std::move(event)});
}

bool FakePump::RunScripted(Kind kind) {
  // Events that are due leave the script first: an event can itself process events, and can script more.
  const int pump = ++pumps_;
  std::vector<std::function<void()>> due;
  std::erase_if(script_, [&](Scripted &scripted) {
    const bool is_due =
        scripted.pump == pump || (scripted.pump == 0 && kind == Kind::Wait && http_.IsUnderWay(scripted.address));
    if (is_due)
      due.push_back(std::move(scripted.event));
    return is_due;
  });
  for (const auto &event : due)
    Dispatch(event);
  return !due.empty();
}

void FakePump::LetEventsRun() {
  trace_.Add("pump in");
  RunScripted(Kind::Pump);
  trace_.Add("pump out");
}

void FakePump::LetEventsRunFor(int milliseconds) {
  trace_.Add("pump in for " + IntegerText(milliseconds) + " ms");
  RunScripted(Kind::Pump);
  trace_.Add("pump out");
}

void FakePump::WaitForEvents() {
  trace_.Add("wait in");
  const bool has_run = RunScripted(Kind::Wait);
  const bool has_ended = http_.PassWait();
  if (!has_run && !has_ended && !http_.PassTime()) {
    ADD_FAILURE() << "the program waits for something that never comes";
    throw ProcessEnded{};
  }
  trace_.Add("wait out");
}

}  // namespace borvane
