#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <algorithm>
#include <deque>
#include <random>

#include <gtest/gtest.h>

#include "live/live_events.h"
#include "support/mirror/events_under_test.h"
#include "support/mirror/plain_live_events.h"

#ifdef __GLIBC__
#include <malloc.h>
#endif

// A month of feeds, a minute after another, with what happens to events in the public ones.

namespace borvane::mirror {
namespace {

/// The world's events and what two sources say of them at each minute. Time is the test's.
class World {
 public:
  /// Moves the time on by a minute: events come, are revised, get other ids, are taken back.
  void PassMinute(qint64 now) {
    if (OneIn(4))
      Happen(now);
    // Most revisions come within the first hour, some days later.
    for (std::size_t i = survey_.size(); i > 0 && survey_[i - 1].event.origin_time > now - one_hour; --i)
      if (OneIn(20))
        Revise(survey_[i - 1], now);
    if (!survey_.empty() && OneIn(2))
      Revise(survey_[Place()], now);
    if (survey_.size() > 10 && OneIn(60))
      Delete(now);
    while (!withdrawn_.empty() && withdrawn_.front().until < now)
      withdrawn_.pop_front();
    while (!survey_.empty() && survey_.front().event.origin_time < now - 7 * one_day)
      survey_.pop_front();
    while (centre_.size() > 50)
      centre_.pop_front();
  }

  /// The newest 200 events of the first source, with some that it calls deleted.
  FeedReading NewestEvents(qint64 now) const {
    const std::size_t count = std::min<std::size_t>(survey_.size(), 200);
    std::vector<FeedEvent> events(survey_.end() - static_cast<std::ptrdiff_t>(count), survey_.end());
    for (const Withdrawn &withdrawn : withdrawn_)
      events.push_back(withdrawn.event);
    return ReadingOf(std::move(events), now);
  }
  FeedReading WholeWeekOfEvents(qint64 now) const {
    return ReadingOf(std::vector<FeedEvent>(survey_.begin(), survey_.end()), now);
  }
  /// What the second source says, in a form without times.
  FeedReading EventsOfTheCentre() const { return ReadingOf(std::vector<FeedEvent>(centre_.begin(), centre_.end()), 0); }

 private:
  struct Withdrawn {
    FeedEvent event;
    qint64 until;
  };

  int Number(int least, int greatest) { return std::uniform_int_distribution(least, greatest)(random_); }
  bool OneIn(int count) { return Number(1, count) == 1; }

  std::size_t Place() { return static_cast<std::size_t>(Number(0, static_cast<int>(survey_.size()) - 1)); }

  /// Takes an event back. Of one half the feed of new events says so for a while, the other half only disappears.
  void Delete(qint64 now) {
    const auto event = survey_.begin() + static_cast<std::ptrdiff_t>(Place());
    if (OneIn(2)) {
      withdrawn_.push_back({.event = *event, .until = now + 10 * one_minute});
      withdrawn_.back().event.deleted = true;
    }
    survey_.erase(event);
  }

  void Happen(qint64 now) {
    FeedEvent event = GivenAt(QString("ci%1").arg(++count_), now - Number(1, 55'000));
    event.updated = now;
    event.event.latitude = Number(-80'000, 80'000) / 1000.0;
    event.event.longitude = Number(-180'000, 180'000) / 1000.0;
    event.event.magnitude = Number(0, 60) / 10.0;
    event.event.place = QString("%1 km N of Sometown").arg(Number(1, 300));
    if (OneIn(30))
      event.event.kind = "quarry blast";
    survey_.push_back(event);
    if (!OneIn(6))
      return;
    FeedEvent other = event;
    other.event.id = QString("gfz%1").arg(count_);
    other.ids = QStringList{other.event.id};
    other.updated = 0;
    other.event.origin_time -= Number(0, 25'000);
    other.event.latitude += OneIn(3) ? 5 : 0.3;
    centre_.push_back(other);
  }

  void Revise(FeedEvent &event, qint64 now) {
    event.updated = now;
    event.event.magnitude = *event.event.magnitude + (OneIn(2) ? 0.1 : -0.1);
    event.event.latitude += 0.001;
    if (!OneIn(15))
      return;
    // The other network's solution is preferred now.
    const QString other = "us" + event.event.id.mid(2);
    event.event.id = event.event.id.startsWith("ci") ? other : "ci" + event.event.id.mid(2);
    event.ids.removeAll(event.event.id);
    event.ids.prepend(event.event.id);
  }

  std::mt19937 random_{1};
  std::deque<FeedEvent> survey_;  ///< in the order of their origin times
  std::deque<FeedEvent> centre_;
  std::deque<Withdrawn> withdrawn_;
  int count_ = 0;
};

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

class LiveEventsMonth : public testing::Test {
 protected:
  void TakeBoth(int source, const FeedSpan &span, const FeedReading &reading) {
    const EventChanges changes = events_.Take(source, span, reading, now_);
    ASSERT_EQ(changes.fault, "");
    follower_.Restore(changes.records, now_);
    store_.SetTime(now_);
    store_.store().Write(changes.records, now_);
    plain_.Take(source, span, reading, now_);
  }

  void PassMinute(int minute) {
    now_ += one_minute;
    world_.PassMinute(now_);
    TakeBoth(0, Recent(), world_.NewestEvents(now_));
    if (minute % 60 == 0)
      TakeBoth(0, WholeWeek(), world_.WholeWeekOfEvents(now_));
    if (minute % 10 == 0)
      TakeBoth(1, Recent(), world_.EventsOfTheCentre());
    // What comes meanwhile is written together.
    if (minute % 3 == 0) {
      ASSERT_TRUE(store_.store().WaitUntilWritten(60'000));
    }
  }

  void PassDay() {
    for (int minute = 0; minute < 24 * 60; ++minute) {
      PassMinute(minute);
      if (HasFatalFailure())
        return;
      if (minute % 360 == 0) {
        ASSERT_EQ(Shown(events_), plain_.Shown(now_, 7, {"earthquake"}));
        ASSERT_EQ(Shown(follower_), Shown(events_));
        ASSERT_EQ(ShownOfTheSurvey(), InTheWorld());
      }
    }
    plain_.Forget(now_ - 9 * one_day);
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

  static QString TextOf(const Event &event) {
    return QString("%1 at %2, magnitude %3").arg(event.id).arg(event.origin_time).arg(*event.magnitude);
  }
  /// From when on a feed of the whole week has all events.
  qint64 SurelyInTheWeek() const { return now_ - 7 * one_day + 10 * one_minute; }

  /// What is shown of the first source, which no other source hides.
  QStringList ShownOfTheSurvey() const {
    QStringList events;
    for (const Event &event : Shown(events_))
      if (event.credit == "The survey" && event.origin_time >= SurelyInTheWeek())
        events.append(TextOf(event));
    events.sort();
    return events;
  }
  /// What has happened, by no rule but that a feed of the whole week has just been taken up.
  QStringList InTheWorld() const {
    QStringList events;
    for (const FeedEvent &given : world_.WholeWeekOfEvents(now_).events)
      if (given.event.origin_time >= SurelyInTheWeek())
        events.append(TextOf(given.event));
    events.sort();
    return events;
  }

  qint64 now_ = start_of_test;
  World world_;
  LiveEvents events_{TwoSources()};
  LiveEvents follower_{TwoSources()};  ///< has only what the other has written
  PlainLiveEvents plain_{TwoSources(), PlainLiveEvents::Repetitions::Skipped};
  QTemporaryDir folder_{FolderForAMonth()};
  const QString file_ = folder_.filePath("events.sqlite");
  EventsUnderTest store_{{.file = file_}, {.days = 9, .revisions = 5'000}};
};

TEST_F(LiveEventsMonth, OverAMonthAreWhatThePlainRulesKnowAndDoNotGrow) {
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

  // Events come at random: some more at one time than at another.
  EXPECT_LT(events_.Records().size(), records * 11 / 10);
  EXPECT_LT(follower_.Records().size(), records * 11 / 10);
  EXPECT_LE(BytesInUse(), bytes_in_use * 11 / 10);
  EXPECT_LT(BytesOfFiles(folder_.path()), bytes_of_files * 11 / 10);
  ASSERT_TRUE(store_.store().WaitUntilWritten(60'000));
  EXPECT_EQ(ShownFromTheStore(), Shown(events_));
  EXPECT_EQ(store_.Lines(), QStringList());
}

}  // namespace
}  // namespace borvane::mirror
