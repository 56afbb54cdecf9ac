#include "feeds/event_text.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "support/mirror/plain_event_text.h"

// Any text as a feed of events: what is read of it is what the plain rules find, and each event is one.

namespace {

using namespace borvane::mirror;

void Require(bool fact) {
  if (!fact)
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const QByteArray text(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
  const FeedReading reading = ReadEventText(text);
  Require(reading.fault.isEmpty() || (reading.events.empty() && reading.left_out == 0 && reading.unread_ids.isEmpty()));
  Require(reading.unread_ids.size() + reading.nameless == reading.left_out);
  for (const FeedEvent &read : reading.events) {
    Require(IsEventId(read.event.id) && read.ids == QStringList(read.event.id) && !read.deleted);
    Require(IsOriginTime(static_cast<double>(read.event.origin_time)));
    Require(std::abs(read.event.latitude) <= 90 && std::abs(read.event.longitude) <= 180);
    Require(!read.event.magnitude || PlausibleMagnitude(*read.event.magnitude));
    Require(!read.event.depth || PlausibleDepth(*read.event.depth));
  }
  Require(DescriptionOf(reading) == DescriptionOf(ReadEventTextPlainly(text)));
  return 0;
}
