#pragma once

#include <QByteArray>
#include <QList>
#include <utility>

namespace borvane::mirror {

/// The keys and values after the "?" of a request target.
///
/// The monitor escapes nothing, so nothing is unescaped here: a value is the bytes between its "=" and the next "&",
/// blanks, "|", "#" and bytes above 127 included. An "&" inside a text that a user wrote starts a further key.
class Query {
 public:
  explicit Query(const QByteArray &target);

  /// The value of the key's first occurrence; empty when there is none.
  QByteArray Value(const QByteArray &key) const;

 private:
  QList<std::pair<QByteArray, QByteArray>> pairs_;
};

}  // namespace borvane::mirror
