#include "feeds/feed_poller.h"

#include <gtest/gtest.h>

#include "support/mirror/poller_rig.h"

namespace borvane::mirror {
namespace {

using namespace std::chrono_literals;

TEST(FeedPoller, GivesTheReadingOfEachFeedInTheirOrder) {
  FeedServer server(Sends(""));
  server.SetAnswer([&](QTcpSocket &connection) {
    const bool is_week = server.Requests().last().startsWith("GET /week ");
    Sends(HttpAnswer("200 OK", SummaryOf(is_week ? QByteArrayList({"a", "b"}) : QByteArrayList({"b"}))))(connection);
  });
  PollerRig rig({FeedAt(server.Url("/week"), 3), FeedAt(server.Url("/hour"), 4)});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasTaken(2));
  EXPECT_EQ(rig.taken, QStringList({"3: a b", "4: b"}));
  EXPECT_TRUE(server.Requests().first().startsWith("GET /week "));
  EXPECT_EQ(rig.log, QStringList());
  for (const FeedState &state : rig.poller.States()) {
    EXPECT_EQ(state.last_success, today.count());
    EXPECT_EQ(state.failures, 0U);
    EXPECT_EQ(state.fault, "");
  }
}

TEST(FeedPoller, NamesNoQueryWhichMayHoldAKey) {
  const FeedServer server(Sends(HttpAnswer("500 Oh", "")));
  PollerRig rig({FeedAt(server.Url("/query?key=secret"))});
  rig.poller.Start();
  ASSERT_TRUE(RunUntil([&] { return rig.poller.States()[0].failures == 1; }));
  EXPECT_TRUE(server.Requests().first().startsWith("GET /query?key=secret "));
  EXPECT_EQ(rig.poller.States()[0].url, server.Url("/query"));
  EXPECT_EQ(rig.poller.States()[0].period, 60s);
  EXPECT_EQ(rig.log, QStringList("the feed " + server.Url("/query") + " cannot be used: answered with the status 500"));
}

TEST(FeedPoller, GivesNothingWhenNothingIsNew) {
  FeedServer server(Sends(HttpAnswer("200 OK", SummaryOf({"a"}), {"ETag: \"1\"", "Last-Modified: Fri"})));
  PollerRig rig({FeedAt(server.Url())});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasTaken(1));

  server.SetAnswer(Sends(HttpAnswer("304 Not Modified", "")));
  rig.Pass(60s);
  ASSERT_TRUE(HasBeenAsked(server, 2));
  EXPECT_TRUE(server.Requests()[1].contains("If-None-Match: \"1\"\r\nIf-Modified-Since: Fri\r\n"));
  EXPECT_TRUE(RunUntil([&] { return rig.poller.States()[0].last_success == (today + 60s).count(); }));

  server.SetAnswer(Sends(HttpAnswer("200 OK", SummaryOf({"a"}))));
  rig.Pass(60s);
  EXPECT_TRUE(RunUntil([&] { return rig.poller.States()[0].last_success == (today + 120s).count(); }));
  EXPECT_EQ(rig.taken.size(), 1);

  server.SetAnswer(Sends(HttpAnswer("200 OK", SummaryOf({"b"}))));
  rig.Pass(60s);
  EXPECT_TRUE(rig.HasTaken(2));
  EXPECT_EQ(rig.log, QStringList());
}

TEST(FeedPoller, LogsOneLineWhenAFeedFailsAndOneWhenItWorksAgain) {
  FeedServer server(Sends(HttpAnswer("500 Oh", "")));
  PollerRig rig({FeedAt(server.Url())});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasLogged(1));
  for (qsizetype requests = 2; requests < 5; ++requests) {
    rig.Pass(1h);
    ASSERT_TRUE(HasBeenAsked(server, requests));
    ASSERT_TRUE(RunUntil([&] { return rig.poller.States()[0].failures == static_cast<quint64>(requests); }));
  }
  EXPECT_EQ(rig.poller.States()[0].fault, "answered with the status 500");
  EXPECT_EQ(rig.poller.States()[0].last_success, 0);

  server.SetAnswer(Sends(HttpAnswer("200 OK", SummaryOf({}))));
  rig.Pass(1h);
  ASSERT_TRUE(rig.HasLogged(2));
  EXPECT_EQ(rig.log, QStringList({"the feed " + server.Url() + " cannot be used: answered with the status 500",
                                  "the feed " + server.Url() + " can be used again"}));
  EXPECT_EQ(rig.levels, QList<LogLevel>({LogLevel::Warning, LogLevel::Info}));
  EXPECT_EQ(rig.poller.States()[0].fault, "");
  EXPECT_EQ(rig.poller.States()[0].failures, 4U);
}

TEST(FeedPoller, DoesNotTakeNoChangeForAnAnswerWhenItHasNothing) {
  const FeedServer server(Sends(HttpAnswer("304 Not Modified", "")));
  PollerRig rig({FeedAt(server.Url())});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasLogged(1));
  EXPECT_TRUE(rig.log[0].endsWith("answered with the status 304"));
}

TEST(FeedPoller, TakesNothingWhenItHasBeenStopped) {
  // So many events are still being read at some of the stops.
  QByteArrayList ids;
  for (int i = 0; i < 20'000; ++i)
    ids += "e" + QByteArray::number(i);
  const FeedServer server(Sends(HttpAnswer("200 OK", SummaryOf(ids))));
  PollerRig rig({FeedAt(server.Url())});
  for (qsizetype round = 1; round <= 20; ++round) {
    rig.poller.Start();
    EXPECT_TRUE(rig.poller.IsRunning());
    ASSERT_TRUE(HasBeenAsked(server, round));
    RunFor(static_cast<int>(2 * round));
    rig.poller.Stop();
    EXPECT_FALSE(rig.poller.IsRunning());
    const QStringList taken = rig.taken;
    RunFor(60);
    EXPECT_TRUE(rig.taken == taken) << round;
    rig.Pass(1min);
  }
  rig.Pass(1h);
  ExpectNoMoreThan(server, 20);
}

TEST(FeedPoller, AsksForWhatIsNewWhenItIsStartedAgain) {
  FeedServer server(Sends(HttpAnswer("200 OK", SummaryOf({"a"}), {"ETag: \"1\"", "Last-Modified: Fri"})));
  PollerRig rig({FeedAt(server.Url())});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasTaken(1));
  rig.poller.Start();
  ExpectNoMoreThan(server, 1);
  rig.poller.Stop();
  server.SetAnswer(Sends(HttpAnswer("304 Not Modified", "")));
  rig.Pass(1min);
  rig.poller.Start();
  ASSERT_TRUE(RunUntil([&] { return rig.poller.States()[0].last_success == (today + 1min).count(); }));
  EXPECT_TRUE(server.Requests()[1].contains("If-None-Match: \"1\"\r\nIf-Modified-Since: Fri\r\n"));
  EXPECT_EQ(rig.taken.size(), 1);
  EXPECT_EQ(rig.log, QStringList());
}

TEST(FeedPoller, TakesTheSameAnswerOnceMoreWhenItHasForgottenIt) {
  const FeedServer server(Sends(HttpAnswer("200 OK", SummaryOf({"a"}), {"ETag: \"1\"", "Last-Modified: Fri"})));
  PollerRig rig({FeedAt(server.Url())});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasTaken(1));
  rig.poller.Stop();
  rig.poller.ForgetAnswers();
  rig.Pass(1min);
  rig.poller.Start();
  ASSERT_TRUE(rig.HasTaken(2));
  EXPECT_FALSE(server.Requests()[1].contains("If-None-Match"));
  EXPECT_FALSE(server.Requests()[1].contains("If-Modified-Since"));
}

TEST(FeedPoller, MayBeStoppedByWhatTakesAReading) {
  const FeedServer server(Sends(HttpAnswer("200 OK", SummaryOf({"a"}))));
  PollerRig rig({FeedAt(server.Url())});
  rig.at_take = [&] { rig.poller.Stop(); };
  rig.poller.Start();
  ASSERT_TRUE(rig.HasTaken(1));
  rig.Pass(1h);
  ExpectNoMoreThan(server, 1);
  EXPECT_FALSE(rig.poller.IsRunning());
}

TEST(FeedPoller, MayGoWhileItAsksOrReads) {
  const FeedServer server(Sends(HttpAnswer("200 OK", SummaryOf({"a"}))));
  for (qsizetype round = 1; round <= 20; ++round) {
    PollerRig rig({FeedAt(server.Url())});
    rig.poller.Start();
    ASSERT_TRUE(HasBeenAsked(server, round));
    RunFor(static_cast<int>(round % 4));
  }
}

}  // namespace
}  // namespace borvane::mirror
