#include "service/query.h"

namespace borvane::mirror {

Query::Query(const QByteArray &target) {
  const qsizetype mark = target.indexOf('?');
  if (mark < 0)
    return;
  for (const QByteArray &piece : target.sliced(mark + 1).split('&')) {
    const qsizetype equals = piece.indexOf('=');
    if (equals >= 0)
      pairs_.emplaceBack(piece.first(equals), piece.sliced(equals + 1));
  }
}

QByteArray Query::Value(const QByteArray &key) const {
  for (const auto &[name, value] : pairs_)
    if (name == key)
      return value;
  return {};
}

}  // namespace borvane::mirror
