#include "feeds/feed_reading.h"

#include <map>

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

FeedEvent EventOf(const QString &id, qint64 updated, const QString &place = {}) {
  FeedEvent event;
  event.event.id = id;
  event.event.place = place;
  event.updated = updated;
  event.ids = QStringList(id);
  return event;
}

/// The places of the events that are left of those.
QStringList PlacesLeftOf(std::vector<FeedEvent> events) {
  FeedReading reading;
  reading.events = std::move(events);
  QStringList places;
  for (const FeedEvent &event : FinishReading(std::move(reading)).events)
    places += event.event.id + " " + event.event.place;
  return places;
}

FeedReading Finished(std::size_t events, int left_out) {
  FeedReading reading;
  for (std::size_t i = 0; i < events; ++i)
    reading.events.push_back(EventOf(QString("e%1").arg(i), 0));
  reading.left_out = left_out;
  return FinishReading(std::move(reading));
}

TEST(FinishReading, KeepsOfEventsWithOneIdTheOneThatWasRevisedLast) {
  EXPECT_EQ(PlacesLeftOf({EventOf("a", 1, "old"), EventOf("b", 5, "only"), EventOf("a", 3, "new"),
                          EventOf("a", 2, "middle"), EventOf("c", 0, "last")}),
            QStringList({"a new", "b only", "c last"}));
}

TEST(FinishReading, KeepsTheFirstOfEventsWithOneIdThatWereRevisedTogether) {
  EXPECT_EQ(PlacesLeftOf({EventOf("a", 0, "first"), EventOf("a", 0, "second")}), QStringList("a first"));
}

TEST(FinishReading, KeepsTheRightOneOfThousandsThatShareFewIds) {
  std::vector<FeedEvent> events;
  QStringList ids;
  std::map<QString, FeedEvent> last;
  for (int i = 0; i < 5'000; ++i) {
    events.push_back(EventOf(QString::number(i * 7'919 % 97), i * 104'729 % 1'009, QString::number(i)));
    const FeedEvent &event = events.back();
    const auto [kept, is_new] = last.try_emplace(event.event.id, event);
    if (is_new)
      ids += event.event.id;
    else if (event.updated > kept->second.updated)
      kept->second = event;
  }
  QStringList expected;
  for (const QString &id : ids)
    expected += id + " " + last.at(id).event.place;
  EXPECT_EQ(PlacesLeftOf(events), expected);
}

TEST(FinishReading, CutsNamesThatAreTooLongForAPage) {
  FeedReading reading;
  reading.events = {EventOf("a", 0, QString(201, 'x')), EventOf("b", 0, QString(200, 'x')),
                    EventOf("c", 0, QString(199, 'x') + QString::fromUtf8("\xF0\x9F\x8C\x8B"))};
  reading.events[0].event.network = QString(17, 'n');
  reading.events[0].event.kind = QString(65, 'k');
  const FeedReading finished = FinishReading(std::move(reading));
  EXPECT_EQ(finished.events[0].event.place, QString(200, 'x'));
  EXPECT_EQ(finished.events[0].event.network, QString(16, 'n'));
  EXPECT_EQ(finished.events[0].event.kind, QString(64, 'k'));
  EXPECT_EQ(finished.events[1].event.place, QString(200, 'x'));
  EXPECT_EQ(finished.events[2].event.place, QString(199, 'x')) << "half of a pair is no character";
}

TEST(FinishReading, RefusesATextOfWhichTheMostPartCannotBeRead) {
  EXPECT_EQ(Finished(4, 6).fault, "6 of its 10 events cannot be read");
  EXPECT_TRUE(Finished(4, 6).events.empty());
  EXPECT_EQ(Finished(5, 5).fault, "");
  EXPECT_EQ(Finished(5, 5).left_out, 5);
}

TEST(FinishReading, TakesAFewOfWhichTheMostPartCannotBeRead) {
  EXPECT_EQ(Finished(0, 9).fault, "");
  EXPECT_EQ(Finished(1, 8).events.size(), 1U);
}

}  // namespace
}  // namespace borvane::mirror
