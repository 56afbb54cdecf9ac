#include "catalogue/catalogue.h"

#include <QSet>
#include <algorithm>

namespace borvane::mirror {

Catalogue::Catalogue(std::vector<Event> events, const std::vector<OtherId> &other_ids) : events_(std::move(events)) {
  QSet<QString> seen;
  seen.reserve(std::ssize(events_));
  std::erase_if(events_, [&](const Event &event) {
    const qsizetype before = seen.size();
    seen.insert(event.id);
    return seen.size() == before;
  });
  std::stable_sort(events_.begin(), events_.end(),
                   [](const Event &a, const Event &b) { return a.origin_time > b.origin_time; });
  places_.reserve(std::ssize(events_) + std::ssize(other_ids));
  for (std::size_t i = 0; i < events_.size(); ++i)
    places_.insert(events_[i].id, i);
  for (const auto &[id, event] : other_ids)
    if (const auto found = places_.constFind(event); found != places_.cend() && !places_.contains(id))
      places_.insert(id, std::size_t(*found));
}

const Event *Catalogue::Find(const QString &id) const {
  const auto found = places_.find(id);
  return found == places_.end() ? nullptr : &events_[*found];
}

}  // namespace borvane::mirror
