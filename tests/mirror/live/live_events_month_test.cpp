#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <algorithm>
#include <tuple>

#include <gtest/gtest.h>

#include "feeds/event_text.h"
#include "feeds/summary_feed.h"
#include "live/live_events.h"
#include "support/mirror/events_under_test.h"
#include "support/mirror/feed_world.h"

#ifdef __GLIBC__
#include <malloc.h>
#endif

// A month of feeds, a minute after another, with what happens to events in the public ones. What is shown is compared
// with what has happened.

namespace borvane::mirror {
namespace {

qint64 BytesInUse() {
#ifdef __GLIBC__
  const struct mallinfo2 state = ::mallinfo2();
  return static_cast<qint64>(state.uordblks + state.hblkhd);
#else
  return 0;
#endif
}

qint64 BytesOfFiles(const QString &folder) {
  qint64 bytes = 0;
  for (const QFileInfo &file : QDir(folder).entryInfoList(QDir::Files))
    bytes += file.size();
  return bytes;
}

/// In memory where there is such a folder: a month of commits would take a disk several minutes.
QString FolderForAMonth() {
  return QDir("/dev/shm").exists() ? "/dev/shm/borvane-XXXXXX" : QDir::tempPath() + "/XXXXXX";
}

QString EventText(const Event &event) {
  const auto text = [](const std::optional<double> &number) {
    return number ? QString::number(*number, 'g', 17) : "-";
  };
  return QStringList({event.id, QString::number(event.origin_time), text(event.latitude), text(event.longitude),
                      text(event.depth), text(event.magnitude), event.place, event.network, event.kind,
                      QString::number(event.updated), event.credit, event.is_listed ? "listed" : "not listed"})
      .join(", ");
}

/// The first event in which two lists differ, as either has it; empty for none.
std::string FirstDifference(const std::vector<Event> &one, const std::vector<Event> &other) {
  const auto [in_one, in_other] = std::mismatch(one.begin(), one.end(), other.begin(), other.end());
  if (in_one == one.end() && in_other == other.end())
    return {};
  return QString((in_one == one.end() ? "nothing" : EventText(*in_one)) + " and " +
                 (in_other == other.end() ? "nothing" : EventText(*in_other)))
      .toStdString();
}

class LiveEventsMonth : public testing::Test {
 protected:
  void Take(int source, const FeedSpan &span, const FeedReading &reading) {
    ASSERT_EQ(reading.fault, "");
    ASSERT_EQ(reading.left_out, 0);
    const EventChanges changes = events_.Take(source, span, reading, now_);
    ASSERT_EQ(changes.fault, "");
    follower_.Restore(changes.records, now_);
    store_.SetTime(now_);
    store_.store().Write(changes.records, now_);
  }

  void PassMinute(int minute) {
    now_ += one_minute;
    world_.PassMinute(now_);
    Take(0, Recent(), ReadSummaryFeed(world_.NewestEvents(now_), now_));
    if (minute % 180 == 0)
      Take(0, WholeWeek(), ReadSummaryFeed(world_.WholeWeekOfEvents(now_), now_));
    if (minute % 10 == 0)
      Take(1, Recent(), ReadEventText(world_.EventsOfTheCentre()));
    // What comes meanwhile is written together.
    if (minute % 10 == 0) {
      ASSERT_TRUE(store_.store().WaitUntilWritten(60'000));
    }
  }

  void PassDay() {
    for (int minute = 0; minute < 24 * 60; ++minute) {
      PassMinute(minute);
      if (HasFatalFailure())
        return;
      // All feeds have just been read.
      if (minute % 360 == 0) {
        ASSERT_EQ(FirstDifference(SurelyShown(), world_.EventsSince(SurelyInTheWeek())), "");
        ASSERT_EQ(FirstDifference(Shown(follower_), Shown(events_)), "");
      }
    }
  }

  std::vector<Event> Shown(const LiveEvents &events) const { return events.Shown(now_, 7, {"earthquake"})->events(); }

  /// What is shown by a mirror that starts now.
  std::vector<Event> ShownFromTheStore() const {
    EventsUnderTest store({.file = file_});
    store.SetTime(now_);
    store.Start();
    LiveEvents events(TwoSources());
    events.Restore(store.Records(), now_);
    return Shown(events);
  }

  /// From when on a feed of the whole week has all events.
  qint64 SurelyInTheWeek() const { return now_ - 7 * one_day + 10 * one_minute; }

  /// What is shown of the time since then, those of one moment in the order of their ids.
  std::vector<Event> SurelyShown() const {
    std::vector<Event> events = Shown(events_);
    std::erase_if(events, [this](const Event &event) { return event.origin_time < SurelyInTheWeek(); });
    std::sort(events.begin(), events.end(), [](const Event &a, const Event &b) {
      return std::tie(a.origin_time, a.id) > std::tie(b.origin_time, b.id);
    });
    return events;
  }

  qint64 now_ = start_of_test;
  FeedWorld world_;
  LiveEvents events_{TwoSources()};
  LiveEvents follower_{TwoSources()};  ///< has only what the other has written
  QTemporaryDir folder_{FolderForAMonth()};
  const QString file_ = folder_.filePath("events.sqlite");
  EventsUnderTest store_{{.file = file_}, {.days = 9, .revisions = 5'000}};
};

TEST_F(LiveEventsMonth, OverAMonthAreWhatHasHappenedAndDoNotGrow) {
  store_.Start();
  constexpr int days_until_all_is_full = 11;
  for (int day = 0; day < days_until_all_is_full; ++day) {
    PassDay();
    ASSERT_FALSE(HasFatalFailure()) << "day " << day;
  }
  const qint64 bytes_in_use = BytesInUse();
  const qint64 bytes_of_files = BytesOfFiles(folder_.path());
  const std::size_t records = events_.Records().size();
  EXPECT_GT(records, 2'500U);
  for (int day = days_until_all_is_full; day < 30; ++day) {
    PassDay();
    ASSERT_FALSE(HasFatalFailure()) << "day " << day;
  }

  // Otherwise the centre had no event of its own.
  const std::vector<Event> shown = Shown(events_);
  EXPECT_GT(std::count_if(shown.begin(), shown.end(), [](const Event &event) { return event.id.startsWith("gfz"); }),
            50);
  // Events come at random: some more at one time than at another.
  EXPECT_LT(events_.Records().size(), records * 11 / 10);
  EXPECT_LT(follower_.Records().size(), records * 11 / 10);
  EXPECT_LE(BytesInUse(), bytes_in_use * 11 / 10);
  EXPECT_LT(BytesOfFiles(folder_.path()), bytes_of_files * 11 / 10);
  ASSERT_TRUE(store_.store().WaitUntilWritten(60'000));
  EXPECT_EQ(FirstDifference(ShownFromTheStore(), Shown(events_)), "");
  EXPECT_EQ(store_.Lines(), QStringList());
}

}  // namespace
}  // namespace borvane::mirror
