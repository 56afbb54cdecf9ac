#include "http/unsent_bodies.h"

namespace borvane::mirror {

void UnsentBodies::Add(const QByteArray &body) {
  if (++connections_[body.constData()] == 1)
    bytes_ += body.size();
}

void UnsentBodies::Remove(const QByteArray &body) {
  const auto found = connections_.find(body.constData());
  if (--*found == 0) {
    connections_.erase(found);
    bytes_ -= body.size();
  }
}

}  // namespace borvane::mirror
