#include "service/rate_limit.h"

#include "http/client_address.h"

namespace borvane::mirror {

namespace {

constexpr qint64 minute_ms = 60'000;

/// Whether a request at `then` still counts. The clock may have been set back in between.
bool Counts(qint64 then, qint64 now) { return then <= now && now - then < minute_ms; }

}  // namespace

bool RateLimit::Admit(const QHostAddress &address, qint64 now) {
  const QHostAddress client = ClientOf(address);
  if (!times_.contains(client) && times_.size() >= most_addresses_) {
    Forget(now);
    if (times_.size() >= most_addresses_)
      return false;
  }
  QList<qint64> &times = times_[client];
  times.removeIf([now](qint64 then) { return !Counts(then, now); });
  if (times.size() >= a_minute_)
    return false;
  times.append(now);
  return true;
}

void RateLimit::Forget(qint64 now) {
  times_.removeIf(
      [now](std::pair<const QHostAddress &, QList<qint64> &> entry) { return !Counts(entry.second.last(), now); });
}

}  // namespace borvane::mirror
