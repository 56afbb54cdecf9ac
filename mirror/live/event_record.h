#pragma once

#include <QStringList>

#include "catalogue/event.h"

namespace borvane::mirror {

/// What one source has last said of an event.
struct EventRecord {
  int source = 0;         ///< its place in the list of sources
  Event event;            ///< under the id that the source prefers
  QStringList other_ids;  ///< under which the source knows the event as well
  qint64 seen = 0;        ///< when the text was made that says so, in milliseconds since 1970 UTC
  bool is_gone = false;   ///< whether the source has taken it back, or prefers another id

  bool operator==(const EventRecord &) const = default;
};

}  // namespace borvane::mirror
