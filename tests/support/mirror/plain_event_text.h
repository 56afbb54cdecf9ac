#pragma once

#include <QByteArray>
#include <string>

#include "feeds/feed_reading.h"

namespace borvane::mirror {

/// What ReadEventText has to read, found the slow way, by splitting and patterns.
FeedReading ReadEventTextPlainly(const QByteArray &text);

/// All that a reading holds, as a text to compare.
std::string DescriptionOf(const FeedReading &reading);

}  // namespace borvane::mirror
