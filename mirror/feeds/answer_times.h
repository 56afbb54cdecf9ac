#pragma once

#include <QByteArray>
#include <chrono>
#include <optional>

namespace borvane::mirror {

/// The headers of an answer that say when to ask again, as they were sent; empty for one that was not.
struct TimeHeaders {
  QByteArray date = {};
  QByteArray age = {};
  QByteArray cache_control = {};
  QByteArray expires = {};
  QByteArray retry_after = {};
};

/// What they say.
struct AnswerTimes {
  std::optional<std::chrono::seconds> lifetime = {};     ///< how long the answer is the newest there is
  std::optional<std::chrono::seconds> retry_after = {};  ///< how long the server wants to be left alone
  qint64 made = 0;  ///< when the answer was made, in milliseconds since 1970 UTC; 0 for nothing
};

/// No time is longer: a server that asks for a year has made a mistake.
constexpr std::chrono::seconds longest_answer_time = std::chrono::hours(24);

/// Reads them by the rules of HTTP. Cache-Control counts before Expires, an age has passed of a lifetime already, and
/// moments count from the server's own clock where it gives that. `now` is this computer's, in milliseconds since 1970
/// UTC. What cannot be read says nothing, but for Expires, which then is over.
AnswerTimes ReadTimeHeaders(const TimeHeaders &headers, qint64 now);

}  // namespace borvane::mirror
