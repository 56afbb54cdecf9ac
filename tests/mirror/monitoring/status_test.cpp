#include "monitoring/status.h"

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

constexpr qint64 noon = 1'781'870'400'000;  // 2026-06-19 12:00:00 UTC
constexpr qint64 minute_ms = 60'000;

/// A mirror that is well and asks one feed.
Status Live() {
  return {.now = noon,
          .traffic = {},
          .connections = 3,
          .events = 250,
          .is_live = true,
          .data_time = noon - minute_ms,
          .feeds = {{.url = "https://a.example/x",
                     .period = std::chrono::minutes(1),
                     .last_success = noon - minute_ms,
                     .failures = 2,
                     .fault = {}}},
          .asking_since = noon - 1000 * minute_ms};
}

TEST(FaultsOf, AreNoneWhereAllIsWell) {
  EXPECT_EQ(FaultsOf(Status{}), QStringList());
  EXPECT_EQ(FaultsOf(Live()), QStringList());
}

TEST(FaultsOf, AreThoseOfTheStores) {
  Status status = Live();
  status.service_store_works = false;
  status.event_store_works = false;
  EXPECT_EQ(FaultsOf(status), QStringList({"The service's store does not work.", "The events' store does not work."}));
  status.is_live = false;
  EXPECT_EQ(FaultsOf(status), QStringList("The service's store does not work."));
}

TEST(FaultsOf, AreFeedsThatDoNotAnswerAnyMore) {
  Status status = Live();
  status.data_time = noon - 61 * minute_ms;
  EXPECT_EQ(FaultsOf(status), QStringList()) << "a feed that has nothing new";
  status.feeds.push_back({.url = "https://b.example/", .last_success = 0, .failures = 1, .fault = "gone"});
  EXPECT_EQ(FaultsOf(status),
            QStringList("The feed https://b.example/ has not answered since this mirror began to ask for it at "
                        "2026-06-18 19:20:00 UTC."))
      << "one of two";
  status.feeds[1].last_success = noon - 2000 * minute_ms;
  EXPECT_EQ(FaultsOf(status),
            QStringList("The feed https://b.example/ has not answered since this mirror began to ask for it at "
                        "2026-06-18 19:20:00 UTC."))
      << "it may have answered another mirror since";
  status.asking_since = noon - 59 * minute_ms;
  EXPECT_EQ(FaultsOf(status), QStringList()) << "it has not been asked for long";
}

TEST(FaultsOf, GoByThePeriodOfEachFeed) {
  Status status = Live();
  status.feeds[0].last_success = noon - 61 * minute_ms;
  EXPECT_EQ(FaultsOf(status),
            QStringList("The feed https://a.example/x has not answered since 2026-06-19 10:59:00 UTC."));
  status.feeds[0].period = std::chrono::hours(6);
  EXPECT_EQ(FaultsOf(status), QStringList());
  status.feeds[0].last_success = noon - 721 * minute_ms;
  EXPECT_EQ(FaultsOf(status),
            QStringList("The feed https://a.example/x has not answered since 2026-06-18 23:59:00 UTC."));
}

TEST(FaultsOf, GoByTheLifetimeOfALongLivedAnswer) {
  Status status = Live();
  status.feeds[0].last_success = noon - 119 * minute_ms;
  status.feeds[0].lifetime = std::chrono::minutes(60);
  EXPECT_EQ(FaultsOf(status), QStringList());
  status.feeds[0].last_success = noon - 121 * minute_ms;
  EXPECT_EQ(FaultsOf(status),
            QStringList("The feed https://a.example/x has not answered since 2026-06-19 09:59:00 UTC."));
}

TEST(FaultsOf, AreVeryOldDataWhereAnotherMirrorAsks) {
  constexpr qint64 hour_ms = 60 * minute_ms;
  Status status = Live();
  status.asking_since = 0;
  status.feeds[0].last_success = noon - 500 * minute_ms;
  EXPECT_EQ(FaultsOf(status), QStringList());
  status.data_time = noon - 47 * hour_ms;
  EXPECT_EQ(FaultsOf(status), QStringList()) << "feeds in which nothing has changed";
  status.data_time = noon - 49 * hour_ms;
  EXPECT_EQ(FaultsOf(status), QStringList("The newest data were made at 2026-06-17 11:00:00 UTC."));
  status.data_time = 0;
  EXPECT_EQ(FaultsOf(status), QStringList("No feed has answered yet."));
}

TEST(MetricsText, HasNoFeedsThatAnotherMirrorAsks) {
  Status status = Live();
  EXPECT_TRUE(MetricsText(status).contains("\nborvane_asks_feeds 1\n"));
  status.asking_since = 0;
  EXPECT_TRUE(MetricsText(status).contains("\nborvane_asks_feeds 0\n"));
  EXPECT_FALSE(MetricsText(status).contains("borvane_feed_"));
}

TEST(FaultsOf, AreNoDataAtAll) {
  Status status = Live();
  status.data_time = 0;
  status.feeds[0].last_success = 0;
  EXPECT_EQ(FaultsOf(status), QStringList("No feed has answered yet."));
}

TEST(MetricsText, HasEachFigureWithItsHelp) {
  Status status = Live();
  status.traffic.answers = {{200, 17}, {404, 1}};
  status.unwritten_events = 4;
  status.event_store_works = false;
  EXPECT_EQ(MetricsText(status),
            "# HELP borvane_build_info The version of the program.\n"
            "# TYPE borvane_build_info gauge\n"
            "borvane_build_info{version=\"" BORVANE_VERSION
            "\"} 1\n"
            "# HELP borvane_answers_total Answers sent, by their status.\n"
            "# TYPE borvane_answers_total counter\n"
            "borvane_answers_total{status=\"200\"} 17\n"
            "borvane_answers_total{status=\"404\"} 1\n"
            "# HELP borvane_connections Open connections.\n"
            "# TYPE borvane_connections gauge\n"
            "borvane_connections 3\n"
            "# HELP borvane_events Events that are served.\n"
            "# TYPE borvane_events gauge\n"
            "borvane_events 250\n"
            "# HELP borvane_store_works Whether a store did what it was asked for last.\n"
            "# TYPE borvane_store_works gauge\n"
            "borvane_store_works{store=\"service\"} 1\n"
            "borvane_store_works{store=\"events\"} 0\n"
            "# HELP borvane_unwritten_events Events that wait for the store.\n"
            "# TYPE borvane_unwritten_events gauge\n"
            "borvane_unwritten_events 4\n"
            "# HELP borvane_data_timestamp_seconds When the newest data were made, 0 for none.\n"
            "# TYPE borvane_data_timestamp_seconds gauge\n"
            "borvane_data_timestamp_seconds 1781870340.000\n"
            "# HELP borvane_asks_feeds Whether this mirror asks the feeds, and not another one for all.\n"
            "# TYPE borvane_asks_feeds gauge\n"
            "borvane_asks_feeds 1\n"
            "# HELP borvane_feed_last_success_timestamp_seconds When the feed last answered, 0 for never.\n"
            "# TYPE borvane_feed_last_success_timestamp_seconds gauge\n"
            "borvane_feed_last_success_timestamp_seconds{feed=\"1\",url=\"https://a.example/x\"} 1781870340.000\n"
            "# HELP borvane_feed_failures_total Requests of the feed that failed.\n"
            "# TYPE borvane_feed_failures_total counter\n"
            "borvane_feed_failures_total{feed=\"1\",url=\"https://a.example/x\"} 2\n");
}

TEST(MetricsText, HasNoLineThatAnAddressBreaks) {
  Status status = Live();
  status.feeds = {{.url = "https://a.example/q", .last_success = 0, .failures = 0, .fault = {}},
                  {.url = "https://a.example/\"\\\n", .last_success = 0, .failures = 0, .fault = {}}};
  const QByteArray text = MetricsText(status);
  EXPECT_TRUE(text.contains("borvane_feed_failures_total{feed=\"1\",url=\"https://a.example/q\"} 0\n"));
  EXPECT_TRUE(text.contains("borvane_feed_failures_total{feed=\"2\",url=\"https://a.example/\\\"\\\\\\n\"} 0\n"));
}

TEST(MetricsText, SaysNothingOfFeedsWhereNoneIsAsked) {
  EXPECT_FALSE(MetricsText(Status{}).contains("feed"));
  EXPECT_FALSE(MetricsText(Status{}).contains("store=\"events\""));
}

}  // namespace
}  // namespace borvane::mirror
