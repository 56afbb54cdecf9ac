#include <QCryptographicHash>
#include <QHash>
#include <QTemporaryDir>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "feeds/feed_poller.h"
#include "live/live_catalogue.h"
#include "support/mirror/authority.h"
#include "support/mirror/feed_samples.h"
#include "support/mirror/feed_server.h"
#include "support/mirror/run_until.h"

// From a server to the events that are served: requests over https, their answers read, taken up and kept.

namespace borvane::mirror {
namespace {

using namespace std::chrono_literals;

/// An event of an hour before the test, as a feed gives it.
struct PublishedEvent {
  QByteArray id;
  double magnitude = 2.5;
  qint64 updated = start_of_test - one_hour / 2;
  QByteArray ids = {};  ///< besides its own
  QByteArray status = "automatic";
};

QByteArray PublishedText(const std::vector<PublishedEvent> &events, qint64 made) {
  QByteArrayList features;
  for (const PublishedEvent &event : events)
    features += R"({"type":"Feature","properties":{"mag":)" + QByteArray::number(event.magnitude) +
                R"(,"place":"14 km SW of Searles Valley, CA","time":)" + QByteArray::number(start_of_test - one_hour) +
                R"(,"updated":)" + QByteArray::number(event.updated) + R"(,"status":")" + event.status +
                R"(","net":"ci","ids":",)" + event.ids + "," + event.id +
                R"(,","type":"earthquake"},"geometry":{"type":"Point","coordinates":[-117.5,35.5,8.5]},"id":")" +
                event.id + "\"}";
  return R"({"type":"FeatureCollection","metadata":{"generated":)" + QByteArray::number(made) +
         R"(,"status":200,"count":)" + QByteArray::number(features.size()) + R"(},"features":[)" + features.join(',') +
         "]}";
}

/// The survey's server, and a mirror that asks it for the week's and the hour's feed. The test moves the time.
class LiveCatalogueOfFeeds : public testing::Test {
 protected:
  LiveCatalogueOfFeeds() {
    poller_ = std::make_unique<FeedPoller>(
        feeds_, [this](const Feed &feed, const FeedReading &reading) { return live_->Take(feed, reading); },
        [this](LogLevel, const QString &line) { lines_ += line; },
        FeedPoller::Surroundings{.authorities = authority_.File(),
                                 .clocks = [this] { return clocks_; },
                                 .random = [] { return 0.0; },
                                 .look_interval = 5ms});
    Restart();
  }
  ~LiveCatalogueOfFeeds() override {
    poller_.reset();
    live_.reset();
  }

  /// Begins with what the store has.
  void Restart() {
    poller_->Stop();
    live_.reset();
    served_.reset();
    live_ = std::make_unique<LiveCatalogue>(
        LiveCatalogue::Settings{.store = {.file = folder_.filePath("service.sqlite")},
                                .sources = TwoSources(),
                                .feeds = feeds_,
                                .clock = [this] { return Now(); }},
        LiveCatalogue::Callbacks{
            .changed = [this](const std::shared_ptr<const Catalogue> &events) { served_ = events; },
            .restored = [] {},
            .may_poll = [](bool) {},
            .log = [this](LogLevel, const QString &line) { lines_ += line; }});
    live_->Start(60'000);
  }

  qint64 Now() const { return clocks_.of_day.count(); }
  void Pass(std::chrono::milliseconds time) {
    clocks_.elapsed += time;
    clocks_.awake += time;
    clocks_.of_day += time;
  }

  void Publish(const char *target, const std::vector<PublishedEvent> &events, qint64 made) {
    texts_[target] = PublishedText(events, made);
  }

  /// Asks for the first time, for both feeds.
  bool Start(const std::vector<PublishedEvent> &week, const std::vector<PublishedEvent> &hour) {
    Publish("/week", week, Now());
    Publish("/hour", hour, Now());
    poller_->Start();
    return HaveAnswered({0, 1});
  }
  bool AfterAMinuteWithoutNews() {
    Pass(1min);
    return HaveAnswered({1});
  }
  bool AfterAMinuteTheHourHas(const std::vector<PublishedEvent> &hour) {
    Pass(1min);
    Publish("/hour", hour, Now());
    return HaveAnswered({1});
  }
  /// The text of the week's feed has been made at `made`, when the hour's is the same as before.
  bool AfterAnHourTheWeekHas(const std::vector<PublishedEvent> &week, qint64 made) {
    Pass(1h);
    Publish("/week", week, made);
    return HaveAnswered({0, 1});
  }

  /// The ids of what is served, in alphabetical order.
  std::string Ids() const {
    QStringList ids;
    for (const Event &event : served_->events())
      ids.append(event.id);
    ids.sort();
    return ids.join(' ').toStdString();
  }

  qsizetype not_modified_ = 0;  ///< how many answers were a 304
  Clocks clocks_ = {.elapsed = 2'000s, .awake = 1'000s, .of_day = std::chrono::milliseconds(start_of_test)};
  QStringList lines_;
  std::shared_ptr<const Catalogue> served_;
  std::unique_ptr<LiveCatalogue> live_;

 private:
  /// Waits until these feeds have been asked and answered at this moment.
  bool HaveAnswered(const std::vector<std::size_t> &feeds) {
    return RunUntil([&] {
      const std::vector<FeedState> states = poller_->States();
      return std::all_of(feeds.begin(), feeds.end(),
                         [&](std::size_t feed) { return states[feed].last_success == Now(); });
    });
  }

  void Answer(QTcpSocket &connection) {
    const QByteArray request = server_.Requests().last();
    const QByteArray text = texts_.value(request.split(' ').value(1));
    const QByteArray tag = "\"" + QCryptographicHash::hash(text, QCryptographicHash::Md5).toHex() + "\"";
    const bool has_it = request.contains("\r\nIf-None-Match: " + tag + "\r\n");
    not_modified_ += has_it ? 1 : 0;
    Sends(has_it ? HttpAnswer("304 Not Modified", "", {"ETag: " + tag})
                 : HttpAnswer("200 OK", text, {"ETag: " + tag}))(connection);
  }

  Authority authority_;
  QHash<QByteArray, QByteArray> texts_;
  FeedServer server_{[this](QTcpSocket &connection) { Answer(connection); }, authority_.Certify("feeds.localhost")};
  const std::vector<Feed> feeds_ = {{.url = server_.Url("/week"), .period = 1h, .span = WholeWeek()},
                                    {.url = server_.Url("/hour"), .period = 1min, .span = Recent()}};
  QTemporaryDir folder_;
  std::unique_ptr<FeedPoller> poller_;
};

TEST_F(LiveCatalogueOfFeeds, FollowsAnEventThroughTenRevisions) {
  ASSERT_TRUE(Start({{.id = "ci1"}, {.id = "ci2"}}, {{.id = "ci1"}}));
  EXPECT_EQ(Ids(), "ci1 ci2");
  for (int revision = 1; revision <= 10; ++revision) {
    const double magnitude = (25 + revision) / 10.0;
    ASSERT_TRUE(AfterAMinuteTheHourHas({{.id = "ci1", .magnitude = magnitude, .updated = Now()}}));
    EXPECT_EQ(served_->Find("ci1")->magnitude, magnitude);
    EXPECT_EQ(served_->Find("ci1")->updated, Now() - one_minute);
    ASSERT_TRUE(AfterAMinuteWithoutNews());
    EXPECT_EQ(served_->Find("ci1")->magnitude, magnitude);
    EXPECT_EQ(not_modified_, revision);
  }
  EXPECT_EQ(Ids(), "ci1 ci2");
  ASSERT_TRUE(live_->Finish(60'000));
  Restart();
  EXPECT_EQ(served_->Find("ci1")->magnitude, 3.5);
  EXPECT_EQ(Ids(), "ci1 ci2");
  EXPECT_EQ(lines_, QStringList());
}

TEST_F(LiveCatalogueOfFeeds, KnowsAnEventThatIsRenamedAndRenamedAgain) {
  ASSERT_TRUE(Start({{.id = "ci1"}, {.id = "ci2"}}, {{.id = "ci1"}}));
  ASSERT_TRUE(AfterAMinuteTheHourHas({{.id = "us1", .magnitude = 3, .updated = Now(), .ids = "ci1"}}));
  EXPECT_EQ(Ids(), "ci2 us1");
  ASSERT_NE(served_->Find("ci1"), nullptr);
  EXPECT_EQ(served_->Find("ci1")->id, "us1");
  ASSERT_TRUE(AfterAMinuteWithoutNews());
  EXPECT_EQ(Ids(), "ci2 us1");
  const qint64 made = Now();
  ASSERT_TRUE(
      AfterAnHourTheWeekHas({{.id = "us1", .magnitude = 3, .updated = made, .ids = "ci1"}, {.id = "ci2"}}, made));
  EXPECT_EQ(Ids(), "ci2 us1");
  ASSERT_TRUE(AfterAMinuteTheHourHas({{.id = "ci1", .magnitude = 4, .updated = Now(), .ids = "us1"}}));
  EXPECT_EQ(Ids(), "ci1 ci2");
  EXPECT_EQ(served_->Find("us1")->magnitude, 4);
  EXPECT_EQ(not_modified_, 2);
  ASSERT_TRUE(live_->Finish(60'000));
  Restart();
  EXPECT_EQ(Ids(), "ci1 ci2");
  EXPECT_EQ(served_->Find("us1")->magnitude, 4);
  EXPECT_EQ(lines_, QStringList());
}

TEST_F(LiveCatalogueOfFeeds, LosesADeletedEventForGood) {
  ASSERT_TRUE(Start({{.id = "ci1"}, {.id = "ci2"}}, {{.id = "ci1"}}));
  const qint64 before = Now();
  ASSERT_TRUE(AfterAMinuteTheHourHas({{.id = "ci1", .updated = Now(), .status = "deleted"}}));
  EXPECT_EQ(Ids(), "ci2");
  ASSERT_TRUE(AfterAMinuteWithoutNews());
  EXPECT_EQ(Ids(), "ci2");
  // The week's feed comes from a cache.
  ASSERT_TRUE(AfterAnHourTheWeekHas({{.id = "ci1"}, {.id = "ci2"}, {.id = "ci3"}}, before));
  EXPECT_EQ(Ids(), "ci2 ci3");
  EXPECT_EQ(not_modified_, 2);
  ASSERT_TRUE(live_->Finish(60'000));
  Restart();
  EXPECT_EQ(Ids(), "ci2 ci3");
  EXPECT_EQ(lines_, QStringList());
}

TEST_F(LiveCatalogueOfFeeds, LosesWhatTheWeekLacksAndNotWhatLeavesTheHour) {
  ASSERT_TRUE(Start({{.id = "ci1"}, {.id = "ci2"}}, {{.id = "ci1"}, {.id = "ci2"}}));
  ASSERT_TRUE(AfterAMinuteTheHourHas({{.id = "ci1"}}));
  EXPECT_EQ(Ids(), "ci1 ci2");
  ASSERT_TRUE(AfterAMinuteWithoutNews());
  EXPECT_EQ(Ids(), "ci1 ci2");
  ASSERT_TRUE(AfterAnHourTheWeekHas({{.id = "ci1"}}, Now() + one_hour));
  EXPECT_EQ(Ids(), "ci1");
  ASSERT_TRUE(AfterAMinuteWithoutNews());
  EXPECT_EQ(Ids(), "ci1");
  EXPECT_EQ(not_modified_, 3);
  ASSERT_TRUE(live_->Finish(60'000));
  Restart();
  EXPECT_EQ(Ids(), "ci1");
  EXPECT_EQ(lines_, QStringList());
}

}  // namespace
}  // namespace borvane::mirror
