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

// After so many, any pause has reached its bound.
constexpr int most_doublings = 10;

constexpr milliseconds least_sleep = 10s;

}  // namespace

FeedSchedule::FeedSchedule(std::chrono::seconds period, Milliseconds now)
    : period_(period), asked_(now), due_(now), left_alone_(now), fresh_until_(now) {}

FeedSchedule::Milliseconds FeedSchedule::Wait(Milliseconds now) const {
  return std::max(Milliseconds(0), std::max({due_, left_alone_, fresh_until_}) - now);
}

void FeedSchedule::Asked(Milliseconds now) {
  asked_ = now;
  due_ = now + period_;
}

void FeedSchedule::Succeeded(Milliseconds now, std::optional<std::chrono::seconds> lifetime) {
  due_ = asked_ + period_;
  fresh_until_ = now + lifetime.value_or(0s);
  failures_ = 0;
}

void FeedSchedule::Failed(Milliseconds now, Failure failure, double random) {
  const Pauses pauses = PausesAfter(failure);
  failures_ = std::min(failures_ + 1, most_doublings + 1);
  const Milliseconds pause = std::min(pauses.first * (1 << (failures_ - 1)), pauses.longest);
  due_ = now + pause + std::chrono::duration_cast<Milliseconds>(pause * (random / 2));
}

void FeedSchedule::LeaveAloneUntil(Milliseconds moment) { left_alone_ = std::max(left_alone_, moment); }

void FeedSchedule::BeginAgain(Milliseconds now) {
  due_ = now;
  failures_ = 0;
}

bool HasSleptBetween(const Clocks &before, const Clocks &after) {
  return (after.elapsed - before.elapsed) - (after.awake - before.awake) >= least_sleep;
}

}  // namespace borvane::mirror
