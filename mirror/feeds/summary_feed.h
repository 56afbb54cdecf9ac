#pragma once

#include <QByteArray>

#include "feeds/feed_reading.h"

namespace borvane::mirror {

/// Reads a summary feed of the US Geological Survey: what ReadGeoJson reads, with the property "updated", all ids of an
/// event in "ids", its "status", and the time at which the feed was made in "metadata".
///
/// `now` is the computer's clock, in milliseconds since 1970 UTC. A feed that was made more than a day from it is
/// faulty, as is one whose "metadata" contradicts its events.
FeedReading ReadSummaryFeed(const QByteArray &text, qint64 now);

}  // namespace borvane::mirror
