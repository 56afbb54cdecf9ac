#pragma once

#include <QByteArray>

#include "feeds/feed_reading.h"

namespace borvane::mirror {

/// Reads the text form of the FDSN event services: a line an event, its fields separated by "|". The columns are those
/// that a first line with "#" names, in letters of either case; without it those of the form's first version:
///
///     #EventID|Time|Latitude|Longitude|Depth/km|Author|Catalog|Contributor|ContributorID|MagType|Magnitude|MagAuthor|
///     EventLocationName
///
/// and possibly EventType after them. Times are UTC, "2026-06-19T03:04:05", with any fraction and with or without "Z".
/// Lines end with LF or CR LF. A line has to have as many fields as there are columns; one that does not, or whose id,
/// time or epicentre cannot be read, is left out. The id of one with too few or too many fields is known where it comes
/// first. Any other field may be empty. An empty text has no events.
FeedReading ReadEventText(const QByteArray &text);

}  // namespace borvane::mirror
