#pragma once

#include <chrono>
#include <optional>

namespace borvane::mirror {

/// When a feed is asked for next. It keeps no clock and draws no random numbers: the caller passes both. `now` is on a
/// clock that is never set and goes on while the computer sleeps.
class FeedSchedule {
 public:
  using Milliseconds = std::chrono::milliseconds;

  /// Why a request brought nothing.
  enum class Failure {
    NoAnswer,   ///< the network or the host is away: often this computer's own fault, and over at any moment
    BadAnswer,  ///< the server refuses, or sends what cannot be used: to ask soon again would only burden it
  };

  /// The first request is due at `now`.
  FeedSchedule(std::chrono::seconds period, Milliseconds now);

  /// When the next request is due as far as this mirror is concerned; the server may want to be left alone for longer,
  /// and what it last gave may hold for longer.
  Milliseconds Due() const { return due_; }

  /// How long until it may be sent; zero when it may.
  Milliseconds Wait(Milliseconds now) const;

  /// A request is sent. The next one is due a period later, unless one of the following says otherwise.
  void Asked(Milliseconds now);

  /// It was answered well, with news or without. `lifetime` is how long the server says that nothing newer comes.
  void Succeeded(Milliseconds now, std::optional<std::chrono::seconds> lifetime);

  /// It was not. Each failure after another, of whatever sort, makes the pause twice as long; the sort says with how
  /// long a pause it begins and what its bound is. `random`, from 0 to below 1, makes it longer by up to half, so that
  /// many mirrors do not come back at the same moment.
  void Failed(Milliseconds now, Failure failure, double random);

  /// The server has asked for this, of whichever of its feeds.
  void LeaveAloneUntil(Milliseconds moment);

  /// The computer has slept, or the mirror did not ask for a while. As at first, a request is due at `now`, unless the
  /// server wants to be left alone for longer or its last answer still lives.
  void BeginAgain(Milliseconds now);

 private:
  Milliseconds period_;
  Milliseconds asked_;
  Milliseconds due_;
  Milliseconds left_alone_;   ///< until when the server wants to be
  Milliseconds fresh_until_;  ///< how long the last good answer lives
  int failures_ = 0;          ///< since it was answered well
};

/// A moment on the computer's clocks.
struct Clocks {
  std::chrono::milliseconds elapsed{0};  ///< never set, and goes on while the computer sleeps
  std::chrono::milliseconds awake{0};    ///< never set, and does not go on while the computer sleeps
  std::chrono::milliseconds of_day{0};   ///< since 1970 UTC, as somebody has set it
};

/// Whether the computer has slept between two moments. Less than ten seconds are no sleep: a connection outlasts them.
bool HasSleptBetween(const Clocks &before, const Clocks &after);

}  // namespace borvane::mirror
