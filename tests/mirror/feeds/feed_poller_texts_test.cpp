#include <gtest/gtest.h>

#include "support/mirror/poller_rig.h"

// What the poller makes of a text.

namespace borvane::mirror {
namespace {

using namespace std::chrono_literals;

TEST(FeedPoller, RefusesATextThatCannotBeRead) {
  const FeedServer server(Sends(HttpAnswer("200 OK", "<html>busy</html>")));
  PollerRig rig({FeedAt(server.Url())});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasLogged(1));
  EXPECT_TRUE(rig.log[0].startsWith("the feed " + server.Url() + " cannot be used: not JSON"))
      << rig.log[0].toStdString();
  EXPECT_EQ(rig.taken, QStringList());
}

TEST(FeedPoller, OffersAReadingThatWasNotBelievedAgain) {
  FeedServer server(Sends(HttpAnswer("200 OK", SummaryOf({"a"}), {"ETag: \"1\""})));
  PollerRig rig({FeedAt(server.Url())});
  rig.refusal = "it has lost most\nof its events \x1B[31m" + QString(300, 'x');
  rig.poller.Start();
  ASSERT_TRUE(rig.HasLogged(1));
  EXPECT_EQ(rig.log[0].count('\n'), 0);
  EXPECT_EQ(rig.log[0].count('\x1B'), 0);
  EXPECT_TRUE(rig.log[0].contains("cannot be used: it has lost most?of its events ?[31mxxx"));
  EXPECT_LT(rig.log[0].size(), 300);

  rig.refusal.clear();
  rig.Pass(60s);
  ASSERT_TRUE(rig.HasTaken(2));
  EXPECT_FALSE(server.Requests().last().contains("If-None-Match")) << "nothing was taken up that could be the same";
  EXPECT_EQ(rig.taken, QStringList({"0: a", "0: a"}));
  EXPECT_TRUE(rig.HasLogged(2));
}

TEST(FeedPoller, TakesTheAnswersOfTextServicesThatHaveNoEvents) {
  const FeedServer none(Sends("HTTP/1.1 204 No Content\r\n\r\n"));
  const FeedServer missing(Sends(HttpAnswer("404 Not Found", "Error 404: no data")));
  PollerRig rig(
      {FeedAt(none.Url(), 1, FeedForm::EventText), FeedAt(missing.Url("/query?nodata=404"), 2, FeedForm::EventText)});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasTaken(2));
  rig.taken.sort();
  EXPECT_EQ(rig.taken, QStringList({"1: ", "2: "}));
  EXPECT_EQ(rig.log, QStringList());

  PollerRig others({FeedAt(missing.Url("/query"), 1, FeedForm::EventText), FeedAt(none.Url(), 2)});
  others.poller.Start();
  ASSERT_TRUE(others.HasLogged(2));
  EXPECT_EQ(others.taken, QStringList());
}

TEST(FeedPoller, ReadsTheTextForm) {
  const FeedServer server(
      Sends(HttpAnswer("200 OK", "#EventID|Time|Latitude|Longitude\na|2026-06-19T00:00:00|1|2\nx\n")));
  PollerRig rig({FeedAt(server.Url(), 5, FeedForm::EventText)});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasTaken(1));
  EXPECT_EQ(rig.taken, QStringList("5: a"));
  EXPECT_EQ(rig.poller.States()[0].left_out, 1);
}

TEST(FeedPoller, LogsHowManyEventsCannotBeReadWhenTheyAreMoreThanEverOrNone) {
  const QByteArray text = "#EventID|Time|Latitude|Longitude\na|2026-06-19T00:00:00|1|2\n";
  FeedServer server(Sends(HttpAnswer("200 OK", "")));
  PollerRig rig({FeedAt(server.Url(), 0, FeedForm::EventText)});
  rig.poller.Start();
  qsizetype taken = 1;
  ASSERT_TRUE(rig.HasTaken(taken));
  for (const char *more : {"", "b\n", "c\n", "b\nc\n", "d\n", "e\nf\n", "", "g\n"}) {
    server.SetAnswer(Sends(HttpAnswer("200 OK", text + more)));
    rig.Pass(60s);
    ASSERT_TRUE(rig.HasTaken(++taken));
  }
  ASSERT_TRUE(rig.HasLogged(4));
  const QString feed = "the feed " + server.Url();
  EXPECT_EQ(rig.log,
            QStringList({feed + " has events that cannot be read: 1", feed + " has events that cannot be read: 2",
                         "all events of " + feed + " can be read again", feed + " has events that cannot be read: 1"}));
  EXPECT_EQ(rig.levels, QList<LogLevel>({LogLevel::Warning, LogLevel::Warning, LogLevel::Info, LogLevel::Warning}));
}

TEST(FeedPoller, LogsThatNoEventIsTakenBackWhileAFeedOfAWholeSpanHasEventsWithoutAnId) {
  const QByteArray nameless = SummaryOf({"a", "b", "?"}).replace(R"("id":"?",)", "");
  FeedServer server(Sends(HttpAnswer("200 OK", nameless)));
  Feed week = FeedAt(server.Url("/week"));
  week.span.whole = 7 * 24h;
  PollerRig rig({week});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasTaken(1));
  server.SetAnswer(Sends(HttpAnswer("200 OK", nameless + '\n')));
  rig.Pass(60s);
  ASSERT_TRUE(rig.HasTaken(2));
  server.SetAnswer(Sends(HttpAnswer("200 OK", SummaryOf({"a", "b"}))));
  rig.Pass(60s);
  ASSERT_TRUE(rig.HasTaken(3));
  ASSERT_TRUE(rig.HasLogged(4));
  const QString feed = "the feed " + server.Url("/week");
  EXPECT_EQ(
      rig.log,
      QStringList({feed + " has events that cannot be read: 1",
                   feed + " has events without an id: 1; until there are none, events that it no longer lists "
                          "are kept, since they may be among these",
                   "all events of " + feed + " can be read again",
                   feed + " has no more events without an id; events that it no longer lists are removed again"}));
  EXPECT_EQ(rig.levels, QList<LogLevel>({LogLevel::Warning, LogLevel::Warning, LogLevel::Info, LogLevel::Info}));

  // Without a span, nothing that a feed lacks was taken back.
  const FeedServer other(Sends(HttpAnswer("200 OK", nameless)));
  PollerRig recent({FeedAt(other.Url())});
  recent.poller.Start();
  ASSERT_TRUE(recent.HasLogged(1));
  EXPECT_EQ(recent.log, QStringList("the feed " + other.Url() + " has events that cannot be read: 1"));
}

TEST(FeedPoller, SaysNothingOfTheEventsOfAReadingThatWasNotBelieved) {
  const FeedServer server(
      Sends(HttpAnswer("200 OK", "#EventID|Time|Latitude|Longitude\na|2026-06-19T00:00:00|1|2\nb\n")));
  PollerRig rig({FeedAt(server.Url(), 0, FeedForm::EventText)});
  rig.refusal = "it has lost most of its events";
  rig.poller.Start();
  ASSERT_TRUE(rig.HasTaken(1));
  ASSERT_TRUE(rig.HasLogged(1));
  EXPECT_EQ(rig.log, QStringList("the feed " + server.Url() + " cannot be used: it has lost most of its events"));
  EXPECT_EQ(rig.poller.States()[0].left_out, 0);
}

TEST(FeedPoller, TakesTheTimeOfTheAnswerForThatOfATextThatHasNone) {
  const QByteArray text = "#EventID|Time|Latitude|Longitude\na|2026-06-19T00:00:00|1|2\n";
  FeedServer server(Sends(HttpAnswer("200 OK", text, {"Date: Fri, 19 Jun 2026 03:04:30 GMT"})));
  PollerRig rig({FeedAt(server.Url(), 0, FeedForm::EventText)});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasTaken(1));
  EXPECT_EQ(rig.generated, (today - 30s).count());

  server.SetAnswer(Sends(HttpAnswer("200 OK", text + "b|2026-06-19T00:00:00|1|2\n")));
  rig.Pass(60s);
  ASSERT_TRUE(rig.HasTaken(2));
  EXPECT_EQ(rig.generated, 0);

  server.SetAnswer(Sends(HttpAnswer("200 OK", text, {"Date: Fri, 19 Jun 2026 03:04:30 GMT"})));
  rig.SetClockForward(21 * 24h);
  rig.Pass(60s);
  ASSERT_TRUE(rig.HasLogged(1));
  EXPECT_TRUE(rig.log[0].endsWith("made at 2026-06-19T03:04:30Z, more than a day from this computer's clock"));
  EXPECT_EQ(rig.taken.size(), 2);
}

TEST(FeedPoller, TakesNothingOfAPackedTextThatEndsTooEarly) {
  QByteArray lines = "#EventID|Time|Latitude|Longitude\n";
  QByteArrayList ids;
  for (int i = 0; i < 1'000; ++i) {
    ids += "e" + QByteArray::number(i);
    lines += ids.last() + "|2026-06-19T00:00:00|1|2\n";
  }
  // The length is that of the part, so that to HTTP the body is whole.
  const auto half = [](const QByteArray &text) {
    const QByteArray packed = Gzip(text);
    return Sends(HttpAnswer("200 OK", packed.first(packed.size() / 2), {"Content-Encoding: gzip"}));
  };
  const FeedServer of_lines(half(lines));
  const FeedServer of_json(half(SummaryOf(ids)));
  PollerRig rig({FeedAt(of_lines.Url(), 0, FeedForm::EventText), FeedAt(of_json.Url())});
  rig.poller.Start();
  EXPECT_TRUE(RunUntil([&] { return rig.log.size() + rig.taken.size() >= 2; }));
  EXPECT_TRUE(rig.taken.isEmpty());
  EXPECT_EQ(rig.log.size(), 2);
}

}  // namespace
}  // namespace borvane::mirror
