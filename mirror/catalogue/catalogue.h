#pragma once

#include <QHash>
#include <vector>

#include "catalogue/event.h"

namespace borvane::mirror {

/// An id under which an event was known, or another source knows it.
struct OtherId {
  QString id;
  QString event;  ///< the id that it has in the catalogue
};

/// The events that the mirror serves, newest first, each id once. A catalogue never changes: a changed file makes a new
/// one.
class Catalogue {
 public:
  Catalogue() = default;

  /// Of several events with one id the first one counts, and of several other ids that are the same. An event's own id
  /// is no other one's.
  explicit Catalogue(std::vector<Event> events, const std::vector<OtherId> &other_ids = {});

  const std::vector<Event> &events() const { return events_; }

  /// The event of that id or other id; null when there is none.
  const Event *Find(const QString &id) const;

 private:
  std::vector<Event> events_;
  QHash<QString, std::size_t> places_;
};

}  // namespace borvane::mirror
