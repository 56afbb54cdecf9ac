#pragma once

#include <chrono>
#include <optional>

namespace borvane::mirror {

/// When a feed is asked for next. It keeps no clock and draws no random numbers itself: the caller passes the moment
/// and a random number.
class FeedSchedule {
 public:
  /// A moment on both of the computer's clocks, in milliseconds. Only that of the day goes on while the computer
  /// sleeps; only the steady one is never set.
  struct Moment {
    std::chrono::milliseconds steady{0};
    std::chrono::milliseconds of_day{0};
  };

  /// Why a request brought nothing.
  enum class Failure {
    NoAnswer,   ///< the network or the host is away: often this computer's own fault, and over at any moment
    BadAnswer,  ///< the server refuses, or sends what cannot be used: asking soon again would only be a burden
  };

  /// The first request is due at `now`.
  FeedSchedule(std::chrono::seconds period, Moment now);

  /// How long until the next request is due; zero when it is. A computer that has slept since the last call asks at
  /// once, unless the server has asked to be left alone for longer than that.
  std::chrono::milliseconds Wait(Moment now);

  /// The request has been sent. The next one is not due before Succeeded or Failed.
  void Asked(Moment now);

  /// It was answered well, with news or without. `lifetime` is how long the server says that nothing newer comes.
  void Succeeded(Moment now, std::optional<std::chrono::seconds> lifetime);

  /// It was not. Each failure after another makes the pause longer, up to a bound, and `random`, from 0 to below 1,
  /// makes it longer by up to half, so that many mirrors don't come back at the same moment. `retry_after` is how long
  /// the server wants to be left alone.
  void Failed(Moment now, Failure failure, std::optional<std::chrono::seconds> retry_after, double random);

 private:
  void NoticeSleep(Moment now);

  const std::chrono::milliseconds period_;
  Moment seen_;                           ///< at the last call
  std::chrono::milliseconds asked_;       ///< on the steady clock, as what follows
  std::chrono::milliseconds due_;         ///< when the next request is
  std::chrono::milliseconds not_before_;  ///< until when the server wants to be left alone
  int failures_ = 0;                      ///< one after another
};

}  // namespace borvane::mirror
