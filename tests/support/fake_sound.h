#pragma once

#include "basic/number.h"
#include "platform/sound.h"
#include "support/trace.h"

namespace borvane {

/// A loudspeaker that records its tones and takes no time: "beep 440 10".
class FakeSound final : public Sound {
 public:
  explicit FakeSound(Trace &trace) : trace_(trace) {}

  void Beep(std::int32_t frequency, std::int32_t duration) override {
    trace_.Add("beep " + IntegerText(frequency) + " " + IntegerText(duration));
  }

 private:
  Trace &trace_;
};

}  // namespace borvane
