#include "catalogue/catalogue.h"

#include <algorithm>

namespace borvane::mirror {

Catalogue::Catalogue(std::vector<Event> events, const std::vector<OtherId> &other_ids) : events_(std::move(events)) {
  places_.reserve(std::ssize(events_) + std::ssize(other_ids));
  std::erase_if(events_, [this](const Event &event) {
    const qsizetype before = places_.size();
    std::size_t &place = places_[event.id];
    if (places_.size() == before)
      return true;
    place = static_cast<std::size_t>(before);
    return false;
  });
  const auto is_newer = [](const Event &a, const Event &b) { return a.origin_time > b.origin_time; };
  if (!std::is_sorted(events_.begin(), events_.end(), is_newer)) {
    std::stable_sort(events_.begin(), events_.end(), is_newer);
    for (std::size_t i = 0; i < events_.size(); ++i)
      places_[events_[i].id] = i;
  }
  for (const auto &[id, event] : other_ids)
    if (const auto found = places_.constFind(event); found != places_.cend() && !places_.contains(id))
      places_.insert(id, std::size_t(*found));
}

const Event *Catalogue::Find(const QString &id) const {
  const auto found = places_.find(id);
  return found == places_.end() ? nullptr : &events_[*found];
}

}  // namespace borvane::mirror
