#pragma once

#include <QHash>
#include <QHostAddress>
#include <QList>

namespace borvane::mirror {

/// Lets so many requests of one address pass in any minute. Addresses are kept in memory only, until the first Forget
/// after that minute.
class RateLimit {
 public:
  /// `most_addresses` bounds the memory: when so many addresses have sent something within a minute, further ones are
  /// turned away.
  explicit RateLimit(qsizetype a_minute, qsizetype most_addresses = 10'000)
      : a_minute_(a_minute), most_addresses_(most_addresses) {}

  /// Whether a request of the address may pass at `now`, in milliseconds of any clock; counts it if so.
  bool Admit(const QHostAddress &address, qint64 now);

  /// Forgets the addresses of which no request passed in the minute before `now`.
  void Forget(qint64 now);

  /// Whether it keeps no address.
  bool IsEmpty() const { return times_.isEmpty(); }

 private:
  const qsizetype a_minute_;
  const qsizetype most_addresses_;
  QHash<QHostAddress, QList<qint64>> times_;  ///< when the requests of an address passed, oldest first
};

}  // namespace borvane::mirror
