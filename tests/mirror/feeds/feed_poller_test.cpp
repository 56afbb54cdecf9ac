#include "feeds/feed_poller.h"

#include <QPointer>

#include <gtest/gtest.h>

#include "support/mirror/feed_server.h"
#include "support/mirror/run_until.h"

namespace borvane::mirror {
namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds today{1'781'838'300'000};

/// A summary feed with these events, made at the moment at which the tests begin.
QByteArray SummaryOf(const QByteArrayList &ids) {
  QByteArrayList features;
  for (const QByteArray &id : ids)
    features += R"({"id":")" + id + R"(","properties":{"time":1781838000000},"geometry":{"coordinates":[1,2]}})";
  return R"({"type":"FeatureCollection","metadata":{"generated":)" + QByteArray::number(qint64{today.count()}) +
         R"(},"features":[)" + features.join(',') + "]}";
}

/// A poller whose clocks the test moves, with a record of what it gives and logs.
class PollerRig {
 public:
  explicit PollerRig(std::vector<Feed> feeds)
      : poller(
            std::move(feeds), [this](const Feed &feed, FeedReading reading) { return Take(feed, std::move(reading)); },
            [this](LogLevel level, const QString &line) {
              levels += level;
              log += line;
            },
            {.clocks = [this] { return clocks_; }, .random = [] { return 0.0; }, .look_interval = 5ms}) {}

  /// Moves all clocks forward, as time does.
  void Pass(std::chrono::milliseconds time) {
    clocks_.awake += time;
    Sleep(time);
  }

  /// Lets the computer sleep.
  void Sleep(std::chrono::milliseconds time) {
    clocks_.elapsed += time;
    SetClockForward(time);
  }

  void SetClockForward(std::chrono::milliseconds time) { clocks_.of_day += time; }

  bool HasTaken(qsizetype readings) const {
    return RunUntil([&] { return taken.size() >= readings; });
  }
  bool HasLogged(qsizetype lines) const {
    return RunUntil([&] { return log.size() >= lines; });
  }

  QStringList taken;     ///< a line a reading: the feed's source and the ids
  qint64 generated = 0;  ///< of the last reading
  QStringList log;
  QList<LogLevel> levels;  ///< of the lines
  QString refusal;         ///< what readings are refused with; empty for not at all
  std::function<void()> at_take = [] {};
  FeedPoller poller;

 private:
  QString Take(const Feed &feed, FeedReading reading) {
    QStringList ids;
    for (const FeedEvent &event : reading.events)
      ids += event.event.id;
    taken += QString("%1: %2").arg(feed.source).arg(ids.join(' '));
    generated = reading.generated;
    at_take();
    return refusal;
  }

  Clocks clocks_ = {.elapsed = 2'000s, .awake = 1'000s, .of_day = today};
};

Feed FeedAt(const QString &url, int source = 0, FeedForm form = FeedForm::Summary) {
  return {.url = url, .form = form, .period = 60s, .span = {}, .source = source};
}

bool HasBeenAsked(const FeedServer &server, qsizetype requests) {
  return RunUntil([&] { return server.Requests().size() >= requests; });
}

/// Expects no request more, as far as a short wait can show.
void ExpectNoMoreThan(const FeedServer &server, qsizetype requests) {
  RunFor(60);
  EXPECT_EQ(server.Requests().size(), requests);
}

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

TEST(FeedPoller, DoesNotTakeNoChangeForAnAnswerWhenItHasNothing) {
  const FeedServer server(Sends(HttpAnswer("304 Not Modified", "")));
  PollerRig rig({FeedAt(server.Url())});
  rig.poller.Start();
  ASSERT_TRUE(rig.HasLogged(1));
  EXPECT_TRUE(rig.log[0].endsWith("answered with the status 304"));
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
  EXPECT_EQ(rig.log,
            QStringList({feed + " has events that cannot be read: 1",
                         feed + " has events without an id: 1; until it has none, no event that it lacks is taken "
                                "back, since it may be one of these",
                         "all events of " + feed + " can be read again",
                         feed + " has no events without an id any more; what it lacks is taken back again"}));
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
  rig.Pass(10s);
  rig.poller.Start();
  ASSERT_TRUE(RunUntil([&] { return rig.poller.States()[0].last_success == (today + 10s).count(); }));
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
