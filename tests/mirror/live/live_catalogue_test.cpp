#include "live/live_catalogue.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <array>
#include <memory>

#include <gtest/gtest.h>
#include <unistd.h>

#include "support/mirror/events_under_test.h"
#include "support/mirror/run_until.h"

namespace borvane::mirror {
namespace {

class LiveCatalogueTest : public testing::Test {
 protected:
  LiveCatalogueTest() { Restart(); }

  /// Begins again with what the store has.
  void Restart() {
    live_.reset();
    served_.reset();
    publications_ = restorations_ = 0;
    live_ = std::make_unique<LiveCatalogue>(
        LiveCatalogue::Settings{.store = {.file = folder_.filePath("service.sqlite")},
                                .sources = TwoSources(),
                                .feeds = {week_, hour_},
                                .timing = {.look_interval = std::chrono::milliseconds(20),
                                           .retry_interval = std::chrono::milliseconds(20),
                                           .takeover_timeout = std::chrono::milliseconds(50)},
                                .aging_interval = std::chrono::milliseconds(20),
                                .clock = [this] { return now_; }},
        LiveCatalogue::Callbacks{.changed =
                                     [this](const std::shared_ptr<const Catalogue> &events) {
                                       served_ = events;
                                       ++publications_;
                                     },
                                 .restored = [this] { ++restorations_; },
                                 .may_poll = [this](bool may_poll) { may_poll_ = may_poll; },
                                 .log = [this](LogLevel, const QString &line) { lines_.append(line); }});
    live_->Start(60'000);
  }

  QString Ids() const {
    QStringList ids;
    if (!served_)
      return "nothing";
    for (const Event &event : served_->events())
      ids.append(event.id);
    return ids.join(' ');
  }

  const Feed week_ = {.url = "https://feeds.example/week", .span = WholeWeek()};
  const Feed hour_ = {.url = "https://feeds.example/hour", .span = Recent()};
  const Feed centre_ = {.url = "https://feeds.example/centre", .span = Recent(), .source = 1};
  QTemporaryDir folder_;
  qint64 now_ = start_of_test;
  std::shared_ptr<const Catalogue> served_;
  int publications_ = 0;
  int restorations_ = 0;
  bool may_poll_ = false;
  QStringList lines_;
  std::unique_ptr<LiveCatalogue> live_;
};

/// Has bytes to read from its beginning on, and notes when the event loop says so.
class ReadableSocket {
 public:
  ReadableSocket() {
    EXPECT_EQ(::pipe(ends_.data()), 0);
    EXPECT_EQ(::write(ends_[1], "x", 1), 1);
    notifier_ = std::make_unique<QSocketNotifier>(ends_[0], QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { is_served_ = true; });
  }
  ~ReadableSocket() {
    notifier_.reset();
    for (const int end : ends_)
      ::close(end);
  }
  ReadableSocket(const ReadableSocket &) = delete;
  ReadableSocket &operator=(const ReadableSocket &) = delete;

  bool IsServed() const { return is_served_; }

 private:
  std::array<int, 2> ends_ = {};
  std::unique_ptr<QSocketNotifier> notifier_;
  bool is_served_ = false;
};

TEST_F(LiveCatalogueTest, HasTheEventsOfTheStoreBeforeAnySocketIsServed) {
  live_->Take(week_, ReadingOf({Given("ci1")}));
  ASSERT_TRUE(live_->Finish(60'000));
  const ReadableSocket socket;
  Restart();
  EXPECT_EQ(Ids(), "ci1");
  EXPECT_FALSE(socket.IsServed());
  EXPECT_TRUE(RunUntil([&] { return socket.IsServed(); }));
}

TEST_F(LiveCatalogueTest, DoesNotWaitForAStoreThatCannotBeRead) {
  live_.reset();
  QFile file(folder_.filePath("service-events.sqlite"));
  ASSERT_TRUE(file.open(QFile::WriteOnly));
  file.write(QByteArray(10'000, 'x'));
  file.close();
  QElapsedTimer time;
  time.start();
  Restart();
  EXPECT_LT(time.elapsed(), 30'000) << "it would wait for a minute";
  EXPECT_EQ(Ids(), "nothing");
}

TEST_F(LiveCatalogueTest, HasNothingToServeBeforeTheFirstFeed) {
  EXPECT_EQ(Ids(), "nothing");
  EXPECT_EQ(live_->TimeOfData(), 0);
  EXPECT_TRUE(WaitFor([this] { return may_poll_; }));
}

TEST_F(LiveCatalogueTest, ServesAFeedsEventsBeforeTakeReturns) {
  EXPECT_EQ(live_->Take(week_, ReadingOf({Given("ci1")}, now_ - 7)), "");
  EXPECT_EQ(Ids(), "ci1");
  EXPECT_EQ(live_->TimeOfData(), now_ - 7);
  EXPECT_EQ(live_->EventsServed(), 1U);
}

TEST_F(LiveCatalogueTest, ServesAnEmptyFeedAsWell) {
  EXPECT_EQ(live_->Take(hour_, ReadingOf({})), "");
  EXPECT_EQ(Ids(), "");
}

TEST_F(LiveCatalogueTest, ChangesNothingForAFeedWithoutNews) {
  live_->Take(week_, ReadingOf({Given("ci1")}));
  now_ += one_minute;
  live_->Take(week_, ReadingOf({Given("ci1")}, now_));
  EXPECT_EQ(publications_, 1);
  EXPECT_EQ(live_->TimeOfData(), now_);
}

TEST_F(LiveCatalogueTest, GoesOnToServeWhatItHasWhenAFeedIsRefused) {
  live_->Take(week_, ReadingOf({Given("ci1")}));
  EXPECT_NE(live_->Take(week_, ReadingOf({Given("ci2")}, now_ + 365 * one_day)), "");
  EXPECT_EQ(Ids(), "ci1");
  EXPECT_EQ(live_->TimeOfData(), now_);
}

TEST_F(LiveCatalogueTest, ServesAfterARestartWhatItServedBefore) {
  live_->Take(week_, ReadingOf({Given("ci1"), GivenAt("ci2", now_ - 2 * one_hour)}));
  live_->Take(centre_, ReadingOf({GivenAt("gfz3", now_ - 3 * one_hour)}, 0));
  EXPECT_TRUE(live_->Finish(60'000));
  const std::vector<Event> before = served_->events();
  EXPECT_EQ(before.size(), 3U);
  now_ += one_day;
  Restart();
  ASSERT_TRUE(served_);
  EXPECT_EQ(served_->events(), before);
  EXPECT_EQ(live_->TimeOfData(), start_of_test) << "its age can be seen";
  EXPECT_EQ(restorations_, 1);
  EXPECT_EQ(lines_, QStringList());
}

TEST_F(LiveCatalogueTest, ServesAfterARestartWhatAFeedWithoutEventsLeft) {
  live_->Take(hour_, ReadingOf({}));
  EXPECT_TRUE(live_->Finish(60'000));
  Restart();
  EXPECT_EQ(live_->TimeOfData(), start_of_test);
  EXPECT_EQ(restorations_, 0);
  EXPECT_EQ(Ids(), "");
}

TEST_F(LiveCatalogueTest, ServesOnWhileTheStoreIsLocked) {
  live_->Take(week_, ReadingOf({Given("ci1")}));
  EXPECT_TRUE(live_->Finish(60'000));
  Database other({.file = folder_.filePath("service-events.sqlite")});
  other.Open();
  other.Begin();
  now_ += one_minute;
  live_->Take(week_, ReadingOf({Given("ci1"), GivenAt("ci2", now_)}, now_));
  EXPECT_EQ(Ids(), "ci2 ci1");
  EXPECT_TRUE(WaitFor([this] { return !lines_.isEmpty(); }));
  EXPECT_TRUE(lines_[0].startsWith("the events' store ")) << lines_[0].toStdString();
  EXPECT_FALSE(live_->store().Works());
  EXPECT_FALSE(live_->Finish(10));
  other.Commit();
  EXPECT_TRUE(live_->Finish(60'000));
  Restart();
  EXPECT_EQ(Ids(), "ci2 ci1");
}

TEST_F(LiveCatalogueTest, ServesAgainWhatAClockThatWasAheadHasHidden) {
  live_->Take(week_, ReadingOf({Given("ci1")}));
  now_ += 100 * one_day;
  EXPECT_TRUE(WaitFor([this] { return Ids() == ""; }));
  now_ = start_of_test + one_minute;
  EXPECT_TRUE(WaitFor([this] { return Ids() == "ci1"; }));
}

TEST_F(LiveCatalogueTest, ServesWhatAClockThatWasAheadAtTheStartHasHidden) {
  live_->Take(week_, ReadingOf({Given("ci1")}));
  EXPECT_TRUE(live_->Finish(60'000));
  now_ += 100 * one_day;
  Restart();
  EXPECT_EQ(Ids(), "");
  now_ = start_of_test + one_minute;
  EXPECT_TRUE(WaitFor([this] { return Ids() == "ci1"; }));
}

TEST_F(LiveCatalogueTest, BelievesNoTimeOfTheFutureThatTheStoreHas) {
  now_ = start_of_test + 21 * one_day;
  live_->Take(centre_, ReadingOf({Given("gfz1", 0, 2)}, 0));
  EXPECT_TRUE(live_->Finish(60'000));
  now_ = start_of_test;
  Restart();
  EXPECT_EQ(live_->TimeOfData(), start_of_test);
  now_ += one_minute;
  live_->Take(centre_, ReadingOf({Given("gfz1", 0, 5)}, 0));
  EXPECT_EQ(served_->Find("gfz1")->magnitude, 5);
  EXPECT_TRUE(live_->Finish(60'000));
  now_ += one_minute;
  Restart();
  EXPECT_EQ(served_->Find("gfz1")->magnitude, 5);
  EXPECT_EQ(live_->TimeOfData(), start_of_test + one_minute);
}

TEST_F(LiveCatalogueTest, ListsTheKindsAndDaysThatAreSet) {
  FeedEvent blast = GivenAt("blast", now_ - 3 * one_day);
  blast.event.kind = "quarry blast";
  live_->Take(week_, ReadingOf({Given("ci1"), blast}));
  EXPECT_FALSE(served_->Find("blast")->is_listed);
  live_->Show(7, {"quarry blast"});
  EXPECT_TRUE(served_->Find("blast")->is_listed);
  EXPECT_FALSE(served_->Find("ci1")->is_listed);
  live_->Show(2, {"earthquake"});
  EXPECT_EQ(Ids(), "ci1");
}

}  // namespace
}  // namespace borvane::mirror
