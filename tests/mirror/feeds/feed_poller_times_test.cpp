#include <QPointer>

#include <gtest/gtest.h>

#include "support/mirror/poller_rig.h"

// When the poller asks, and whom.

namespace borvane::mirror {
namespace {

using namespace std::chrono_literals;

TEST(FeedPoller, AsksAHostForOneFeedAtATime) {
  QList<QPointer<QTcpSocket>> held;
  const FeedServer server([&](QTcpSocket &connection) { held += &connection; });
  PollerRig rig({FeedAt(server.Url("/1")), FeedAt(server.Url("/2"))});
  rig.poller.Start();
  ASSERT_TRUE(HasBeenAsked(server, 1));
  ExpectNoMoreThan(server, 1);
  Sends(HttpAnswer("200 OK", SummaryOf({})))(*held[0]);
  EXPECT_TRUE(HasBeenAsked(server, 2));
}

TEST(FeedPoller, AsksFirstForTheFeedThatHasBeenDueLongest) {
  QList<QPointer<QTcpSocket>> held;
  const FeedServer server([&](QTcpSocket &connection) { held += &connection; });
  const QByteArray answer = HttpAnswer("200 OK", SummaryOf({}), {"ETag: \"1\""});
  PollerRig rig({FeedAt(server.Url("/1")), FeedAt(server.Url("/2"))});
  rig.poller.Start();
  for (qsizetype feed = 0; feed < 2; ++feed) {
    ASSERT_TRUE(HasBeenAsked(server, feed + 1));
    Sends(answer)(*held[feed]);
    ASSERT_TRUE(rig.HasTaken(feed + 1));
  }
  // The first feed's answer takes so long that the feed is due again when it comes.
  rig.Pass(60s);
  ASSERT_TRUE(HasBeenAsked(server, 3));
  rig.Pass(60s);
  Sends(HttpAnswer("304 Not Modified", ""))(*held[2]);
  ASSERT_TRUE(HasBeenAsked(server, 4));
  EXPECT_TRUE(server.Requests()[2].startsWith("GET /1 ")) << server.Requests()[2].toStdString();
  EXPECT_TRUE(server.Requests()[3].startsWith("GET /2 ")) << server.Requests()[3].toStdString();
}

TEST(FeedPoller, AsksOtherHostsWhileOneIsSilent) {
  const FeedServer silent([](QTcpSocket &) {});
  const FeedServer other(Sends(HttpAnswer("200 OK", SummaryOf({"a"}))));
  PollerRig rig({FeedAt(silent.Url()), FeedAt(other.Url(), 7)});
  rig.poller.Start();
  EXPECT_TRUE(rig.HasTaken(1));
  EXPECT_EQ(rig.taken, QStringList("7: a"));
}

TEST(FeedPoller, AsksAgainWhenAPeriodHasPassed) {
  const FeedServer server(Sends(HttpAnswer("200 OK", SummaryOf({}))));
  PollerRig rig({FeedAt(server.Url())});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasTaken(1));
  rig.Pass(59s);
  ExpectNoMoreThan(server, 1);
  rig.Pass(1s);
  EXPECT_TRUE(HasBeenAsked(server, 2));
}

TEST(FeedPoller, DoesNotAskWhileTheAnswerLives) {
  const FeedServer server(Sends(HttpAnswer("200 OK", SummaryOf({}), {"Cache-Control: max-age=300"})));
  PollerRig rig({FeedAt(server.Url())});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasTaken(1));
  rig.Pass(299s);
  ExpectNoMoreThan(server, 1);
  rig.Pass(1s);
  EXPECT_TRUE(HasBeenAsked(server, 2));
  EXPECT_EQ(rig.poller.States()[0].lifetime, 300s);
}

TEST(FeedPoller, PausesAfterFailuresAsTheScheduleSays) {
  FeedServer server(Sends(HttpAnswer("503 Later", "", {"Retry-After: 600"})));
  PollerRig rig({FeedAt(server.Url())});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasLogged(1));
  rig.Pass(599s);
  ExpectNoMoreThan(server, 1);
  rig.Pass(1s);
  ASSERT_TRUE(HasBeenAsked(server, 2));

  // No answer at all is tried again sooner.
  FeedServer gone(Sends(""));
  gone.Close();
  PollerRig other({FeedAt(gone.Url())});
  other.poller.Start();
  ASSERT_TRUE(other.HasLogged(1));
  other.Pass(9s);
  RunFor(60);
  EXPECT_EQ(other.poller.States()[0].failures, 1U);
  other.Pass(1s);
  EXPECT_TRUE(RunUntil([&] { return other.poller.States()[0].failures == 2; }));
}

TEST(FeedPoller, LeavesAHostAloneWithAllOfItsFeeds) {
  FeedServer server(Sends(HttpAnswer("429 Slower", "", {"Retry-After: 600"})));
  const FeedServer other(Sends(HttpAnswer("200 OK", SummaryOf({}))));
  PollerRig rig({FeedAt(server.Url("/hour")), FeedAt(server.Url("/week")), FeedAt(other.Url())});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasLogged(1));
  rig.Pass(599s);
  ExpectNoMoreThan(server, 1);
  EXPECT_TRUE(HasBeenAsked(other, 2)) << "another host";

  rig.poller.Stop();
  rig.poller.Start();
  ExpectNoMoreThan(server, 1);
  server.SetAnswer(Sends(HttpAnswer("200 OK", SummaryOf({}))));
  rig.Pass(1s);
  EXPECT_TRUE(HasBeenAsked(server, 3));
}

TEST(FeedPoller, AsksAtOnceWhenTheComputerHasSlept) {
  FeedServer server(Sends(HttpAnswer("200 OK", SummaryOf({}))));
  PollerRig rig({FeedAt(server.Url())});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasTaken(1));
  rig.Pass(5s);
  ExpectNoMoreThan(server, 1);
  rig.Sleep(15s);
  EXPECT_TRUE(HasBeenAsked(server, 2));
}

TEST(FeedPoller, DoesNotAskAfterSleepOrAPauseWhileTheAnswerLives) {
  const FeedServer server(Sends(HttpAnswer("200 OK", SummaryOf({}), {"Cache-Control: max-age=300"})));
  PollerRig rig({FeedAt(server.Url())});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasTaken(1));
  rig.Sleep(100s);
  ExpectNoMoreThan(server, 1);
  rig.poller.Stop();
  rig.Pass(100s);
  rig.poller.Start();
  ExpectNoMoreThan(server, 1);
  rig.Sleep(100s);
  EXPECT_TRUE(HasBeenAsked(server, 2));
}

/// Stops the poller for that long.
void StopFor(PollerRig &rig, std::chrono::milliseconds time) {
  rig.poller.Stop();
  rig.Pass(time);
  rig.poller.Start();
}

TEST(FeedPoller, AsksAtOnceAfterAStopOfAMinute) {
  const FeedServer server(Sends(HttpAnswer("200 OK", SummaryOf({}))));
  Feed feed = FeedAt(server.Url());
  feed.period = 1h;
  PollerRig rig({feed});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasTaken(1));
  StopFor(rig, 60s - 1ms);
  ExpectNoMoreThan(server, 1);
  StopFor(rig, 60s);
  ASSERT_TRUE(RunUntil([&] { return rig.poller.States()[0].last_success > (today + 60s).count(); }));
  EXPECT_EQ(server.Requests().size(), 2);

  // It has been stopped since the first of the two Stops.
  rig.poller.Stop();
  rig.Pass(40s);
  StopFor(rig, 20s);
  EXPECT_TRUE(HasBeenAsked(server, 3));
}

TEST(FeedPoller, AsksNoMoreOftenHoweverOftenItIsStopped) {
  const FeedServer server(Sends(HttpAnswer("200 OK", SummaryOf({}))));
  PollerRig rig({FeedAt(server.Url())});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasTaken(1));
  for (int i = 0; i < 5; ++i) {
    StopFor(rig, 10s);
    ExpectNoMoreThan(server, 1);
  }
  StopFor(rig, 10s - 1ms);
  ExpectNoMoreThan(server, 1);
  rig.Pass(1ms);
  EXPECT_TRUE(HasBeenAsked(server, 2));
}

TEST(FeedPoller, PausesForLongerAfterEachFailureHoweverOftenItIsStopped) {
  const FeedServer server(Sends(HttpAnswer("500 Oh", "")));
  PollerRig rig({FeedAt(server.Url())});
  rig.poller.Start();
  qsizetype requests = 1;
  for (const auto pause : {1min, 2min, 4min}) {
    ASSERT_TRUE(RunUntil([&] { return rig.poller.States()[0].failures == static_cast<quint64>(requests); }));
    for (std::chrono::seconds passed = 30s; passed < pause; passed += 30s)
      StopFor(rig, 30s);
    ExpectNoMoreThan(server, requests);
    StopFor(rig, 30s);
    ASSERT_TRUE(HasBeenAsked(server, ++requests));
  }
}

TEST(FeedPoller, CountsWhatAStopCutsOffAsNotAnswered) {
  FeedServer server([](QTcpSocket &) {});
  Feed feed = FeedAt(server.Url());
  feed.period = 1h;
  PollerRig rig({feed});
  rig.poller.Start();
  qsizetype requests = 1;
  for (const auto pause : {10s, 20s, 40s}) {
    ASSERT_TRUE(HasBeenAsked(server, requests));
    StopFor(rig, pause - 1s);
    ExpectNoMoreThan(server, requests);
    server.SetAnswer(requests < 3 ? FeedServer::Answer([](QTcpSocket &) {})
                                  : Sends(HttpAnswer("200 OK", SummaryOf({"a"}))));
    rig.Pass(1s);
    ++requests;
  }
  EXPECT_TRUE(rig.HasTaken(1));
  EXPECT_EQ(rig.log, QStringList());
  EXPECT_EQ(rig.poller.States()[0].failures, 0U);
}

TEST(FeedPoller, LeavesAServerAloneWhateverTheClockOfTheDayIsSetTo) {
  FeedServer server(Sends(HttpAnswer("503 Later", "", {"Retry-After: 3600"})));
  PollerRig rig({FeedAt(server.Url())});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasLogged(1));
  rig.SetClockForward(2h);
  ExpectNoMoreThan(server, 1);
  rig.SetClockForward(-4h);
  rig.Pass(3'599s);
  ExpectNoMoreThan(server, 1);
  rig.Pass(1s);
  EXPECT_TRUE(HasBeenAsked(server, 2));
}

TEST(FeedPoller, ReadsTheClocksOfThisComputer) {
  const FeedServer server(Sends("HTTP/1.1 204 No Content\r\n\r\n"));
  bool is_taken = false;
  FeedPoller poller(
      {FeedAt(server.Url(), 0, FeedForm::EventText)},
      [&](const Feed &, const FeedReading &) {
        is_taken = true;
        return QString();
      },
      [](LogLevel, const QString &) {});
  poller.Start();
  ASSERT_TRUE(RunUntil([&] { return is_taken; }));
  RunFor(100);
  EXPECT_EQ(server.Requests().size(), 1) << "no sleep, and no period, has passed";
}

TEST(FeedPoller, GivesUpARequestInWhichTheComputerHasSlept) {
  FeedServer server([](QTcpSocket &) {});
  PollerRig rig({FeedAt(server.Url())});
  rig.poller.Start();
  ASSERT_TRUE(HasBeenAsked(server, 1));
  server.SetAnswer(Sends(HttpAnswer("200 OK", SummaryOf({"a"}))));
  rig.Sleep(1h);
  EXPECT_TRUE(rig.HasTaken(1));
  EXPECT_EQ(rig.log, QStringList());
}

}  // namespace
}  // namespace borvane::mirror
