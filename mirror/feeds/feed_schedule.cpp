#include "feeds/feed_schedule.h"

#include <algorithm>

namespace borvane::mirror {

namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

struct Pauses {
  milliseconds first;
  milliseconds longest;
};

constexpr Pauses PausesAfter(FeedSchedule::Failure failure) {
  switch (failure) {
    case FeedSchedule::Failure::NoAnswer:
      return {.first = 10s, .longest = 5min};
    case FeedSchedule::Failure::BadAnswer:
      break;
  }
  return {.first = 1min, .longest = 1h};
}

constexpr milliseconds least_sleep = 10s;

}  // namespace

FeedSchedule::FeedSchedule(std::chrono::seconds period, Milliseconds now)
    : period_(period), asked_(now), due_(now), left_alone_(now) {}

FeedSchedule::Milliseconds FeedSchedule::Wait(Milliseconds now) const {
  return std::max(Milliseconds(0), std::max(due_, left_alone_) - now);
}

void FeedSchedule::Asked(Milliseconds now) {
  asked_ = now;
  due_ = now + period_;
}

void FeedSchedule::Succeeded(Milliseconds now, std::optional<std::chrono::seconds> lifetime) {
  due_ = std::max(asked_ + period_, now + lifetime.value_or(0s));
  left_alone_ = now;
  last_failure_.reset();
}

void FeedSchedule::Failed(Milliseconds now, Failure failure, std::optional<std::chrono::seconds> retry_after,
                          double random) {
  const Pauses pauses = PausesAfter(failure);
  last_pause_ = last_failure_ == failure ? std::min(2 * last_pause_, pauses.longest) : pauses.first;
  last_failure_ = failure;
  due_ = now + last_pause_ + std::chrono::duration_cast<Milliseconds>(last_pause_ * (random / 2));
  left_alone_ = now + retry_after.value_or(0s);
}

void FeedSchedule::WokeUp(Milliseconds now, Milliseconds slept) {
  due_ = now;
  left_alone_ -= slept;
  last_failure_.reset();
}

std::chrono::milliseconds SleptBetween(const ClockPair &before, const ClockPair &after) {
  const milliseconds ahead = (after.of_day - before.of_day) - (after.steady - before.steady);
  return ahead < least_sleep ? 0ms : ahead;
}

}  // namespace borvane::mirror
