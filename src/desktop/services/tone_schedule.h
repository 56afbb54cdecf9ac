#pragma once

#include <chrono>

namespace borvane {

/// When tones end that are asked for one after the other. What the program does between two of them is made up for, so
/// that an alarm is as long as its tones; after a longer pause they start again, so that each keeps its length.
class ToneSchedule {
 public:
  using Time = std::chrono::steady_clock::time_point;

  static constexpr std::chrono::milliseconds longest_made_up_pause{50};

  /// The end of the next tone, which is asked for at `now`.
  Time EndOf(Time now, std::chrono::milliseconds duration) {
    const bool follows = now - end_ <= longest_made_up_pause;
    end_ = (follows ? end_ : now) + duration;
    return end_;
  }

 private:
  Time end_{};
};

}  // namespace borvane
