#include "catalogue/sample.h"

#include <QDateTime>
#include <vector>

#include <gtest/gtest.h>

#include "catalogue/catalogue.h"

namespace borvane::mirror {
namespace {

TEST(Sample, HoldsRealEventsOfOneMonth) {
  const std::vector<Event> events = SampleEvents();
  EXPECT_GE(events.size(), 600U);
  EXPECT_LE(events.size(), 2000U);
  for (const Event &event : events) {
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(event.origin_time, Qt::UTC);
    EXPECT_GE(time, QDateTime::fromString("2025-04-15T00:00:00Z", Qt::ISODate));
    EXPECT_LE(time, QDateTime::fromString("2025-05-16T00:00:00Z", Qt::ISODate));
    EXPECT_TRUE(event.magnitude && event.depth && !event.place.isEmpty() && !event.network.isEmpty())
        << event.id.toStdString();
  }
  EXPECT_EQ(Catalogue(events).events().size(), events.size());
}

TEST(Sample, IsATableWithOneRowPerEvent) {
  const std::vector<Event> events = ReadEventTable(
      "id,time,latitude,longitude,depth,magnitude,place,network\n"
      "us1,2025-05-15T00:50:51Z,-7.1,126.1,479.1,5.9,\"148 km N of Manatutu, Timor Leste\",us\n"
      "us2,2025-05-15T00:50:52Z,-7.2,126.2,,,Fiji region,us\n"
      "bad line\n"
      "us3,yesterday,1,2,3,4,x,us\n");
  ASSERT_EQ(events.size(), 2U);
  EXPECT_EQ(events[0].id, "us1");
  EXPECT_EQ(events[0].origin_time, 1747270251000);
  EXPECT_EQ(events[0].place, "148 km N of Manatutu, Timor Leste");
  EXPECT_EQ(events[0].latitude, -7.1);
  EXPECT_EQ(events[0].longitude, 126.1);
  EXPECT_EQ(events[0].depth, 479.1);
  EXPECT_EQ(events[0].magnitude, 5.9);
  EXPECT_EQ(events[0].network, "us");
  EXPECT_EQ(events[0].kind, "earthquake");
  EXPECT_EQ(events[1].magnitude, std::nullopt);
  EXPECT_EQ(events[1].depth, std::nullopt);
}

}  // namespace
}  // namespace borvane::mirror
