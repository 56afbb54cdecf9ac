#include "feeds/event_text.h"

#include <QDateTime>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include "support/mirror/plain_event_text.h"

namespace borvane::mirror {
namespace {

constexpr const char *header =
    "#EventID|Time|Latitude|Longitude|Depth/km|Author|Catalog|Contributor|ContributorID|MagType|Magnitude|MagAuthor|"
    "EventLocationName\n";
constexpr const char *line =
    "20260619_0000123|2026-06-19T03:04:05.12|38.4|-20.25|10.5|AUTH|EMSC-RTS|EMSC|1822|mb|4.6|EMSC|AZORES ISLANDS";

/// The line of one event, with `replaced` by `replacement`.
QByteArray Line(const QByteArray &replaced = "", const QByteArray &replacement = "") {
  QByteArray text = line;
  if (!replaced.isEmpty()) {
    EXPECT_EQ(text.count(replaced), 1) << replaced.constData();
    text.replace(replaced, replacement);
  }
  return text;
}

std::optional<FeedEvent> ReadLine(const QByteArray &text) {
  const FeedReading reading = ReadEventText(header + text + "\n");
  EXPECT_EQ(reading.fault, "");
  EXPECT_EQ(reading.events.size() + static_cast<std::size_t>(reading.left_out), 1U) << text.constData();
  return reading.events.empty() ? std::nullopt : std::optional(reading.events[0]);
}

/// The origin time that is read of `time`, in ISO form; empty when the event is left out.
std::string TimeReadOf(const QByteArray &time) {
  const std::optional<FeedEvent> read = ReadLine(Line("2026-06-19T03:04:05.12", time));
  return read ? QDateTime::fromMSecsSinceEpoch(read->event.origin_time, Qt::UTC)
                    .toString(Qt::ISODateWithMs)
                    .toStdString()
              : "";
}

TEST(ReadEventText, TakesEveryFieldOfAnEvent) {
  const std::optional<FeedEvent> read = ReadLine(Line());
  ASSERT_TRUE(read);
  EXPECT_EQ(read->event.id, "20260619_0000123");
  EXPECT_EQ(read->event.origin_time, 1781838245120);
  EXPECT_EQ(read->event.latitude, 38.4);
  EXPECT_EQ(read->event.longitude, -20.25);
  EXPECT_EQ(read->event.depth, 10.5);
  EXPECT_EQ(read->event.magnitude, 4.6);
  EXPECT_EQ(read->event.place, "AZORES ISLANDS");
  EXPECT_EQ(read->event.network, "EMSC");
  EXPECT_EQ(read->event.kind, "earthquake");
  EXPECT_EQ(read->ids, QStringList("20260619_0000123"));
  EXPECT_EQ(read->updated, 0);
  EXPECT_FALSE(read->deleted);
}

TEST(ReadEventText, FindsTheColumnsByTheirNamesInAnyOrderAndLetters) {
  const FeedReading reading = ReadEventText(
      "# EVENTTYPE | Depth/Km | longitude | LATITUDE | Mystery | Time | EventLocationName | Magnitude | EventID\r\n"
      "quarry blast | 1.5 | 10 | 20 | x | 2026-01-02T00:00:00Z | M\xC3\xBCnster | -0.3 | a.1\r\n");
  ASSERT_EQ(reading.events.size(), 1U) << reading.fault.toStdString();
  const Event &event = reading.events[0].event;
  EXPECT_EQ(event.id, "a.1");
  EXPECT_EQ(event.kind, "quarry blast");
  EXPECT_EQ(event.depth, 1.5);
  EXPECT_EQ(event.longitude, 10);
  EXPECT_EQ(event.latitude, 20);
  EXPECT_EQ(event.magnitude, -0.3);
  EXPECT_EQ(event.place, QString::fromUtf8("M\xC3\xBCnster"));
  EXPECT_EQ(event.network, "");
}

TEST(ReadEventText, TakesTheColumnsOfTheFirstVersionWithoutAHeader) {
  const FeedReading reading = ReadEventText(Line() + "\n" + Line("0000123", "4").append("|explosion"));
  ASSERT_EQ(reading.events.size(), 2U) << reading.fault.toStdString();
  EXPECT_EQ(reading.events[0].event.place, "AZORES ISLANDS");
  EXPECT_EQ(reading.events[0].event.kind, "earthquake");
  EXPECT_EQ(reading.events[1].event.id, "20260619_4");
  EXPECT_EQ(reading.events[1].event.kind, "explosion");
}

TEST(ReadEventText, TakesAnEventWithoutTheFieldsThatItCanDoWithout) {
  const std::optional<FeedEvent> read = ReadLine("a|2026-06-19T03:04:05|1|2|||||||||");
  ASSERT_TRUE(read);
  EXPECT_EQ(read->event.depth, std::nullopt);
  EXPECT_EQ(read->event.magnitude, std::nullopt);
  EXPECT_EQ(read->event.place, "");
  EXPECT_EQ(read->event.network, "");
  for (const char *nothing : {"x", "nan", "inf", "1e9", "4,6", "4.6 5"})
    EXPECT_EQ(ReadLine(Line("4.6", nothing))->event.magnitude, std::nullopt) << nothing;
  EXPECT_EQ(ReadLine(Line("10.5", "7000"))->event.depth, std::nullopt);
  EXPECT_EQ(ReadLine(Line("10.5", "-3.25"))->event.depth, -3.25);
  EXPECT_EQ(ReadLine(Line("|EMSC|1822", "||1822"))->event.network, "AUTH");
}

TEST(ReadEventText, ReadsTimesWithAndWithoutAFractionAndALetterForUtc) {
  EXPECT_EQ(TimeReadOf("2026-06-19T03:04:05"), "2026-06-19T03:04:05.000Z");
  EXPECT_EQ(TimeReadOf("2026-06-19T03:04:05Z"), "2026-06-19T03:04:05.000Z");
  EXPECT_EQ(TimeReadOf("2026-06-19T03:04:05.1"), "2026-06-19T03:04:05.100Z");
  EXPECT_EQ(TimeReadOf("2026-06-19T03:04:05.123456Z"), "2026-06-19T03:04:05.123Z");
  EXPECT_EQ(TimeReadOf("2026-06-19T03:04:05.999999999999999999"), "2026-06-19T03:04:05.999Z");
  EXPECT_EQ(TimeReadOf(" 2024-02-29T23:59:60.7 "), "2024-02-29T23:59:59.999Z");
}

TEST(ReadEventText, LeavesOutAnEventOfNoTime) {
  for (const char *time : {"", "2026-06-19", "2026-06-19T03:04", "2026-06-19T03:04:05.", "2026-06-19T03:04:05ZZ",
                           "2026-06-19T24:00:00", "2026-06-19T03:60:05", "2026-06-19T03:04:60", "2026-02-29T03:04:05",
                           "2026-13-01T03:04:05", "0000-01-01T00:00:00", "0999-12-31T00:00:00", "26-06-19T03:04:05",
                           "2026-06-19T03:04:05+02:00", "-026-06-19T03:04:05", "2026-06-19T+3:04:05", "now"})
    EXPECT_EQ(TimeReadOf(time), "") << time;
}

TEST(ReadEventText, LeavesOutWhatIsNoEvent) {
  EXPECT_FALSE(ReadLine(Line("20260619_0000123", "")));
  EXPECT_FALSE(ReadLine(Line("20260619_0000123", "a/b")));
  EXPECT_FALSE(ReadLine(Line("20260619_0000123", "<b>")));
  EXPECT_FALSE(ReadLine(Line("38.4", "90.5")));
  EXPECT_FALSE(ReadLine(Line("38.4", "")));
  EXPECT_FALSE(ReadLine(Line("38.4", "nan")));
  EXPECT_FALSE(ReadLine(Line("-20.25", "361")));
  EXPECT_FALSE(ReadLine(Line("-20.25", "x")));
  EXPECT_FALSE(ReadLine(Line("|AZORES ISLANDS", "")));
  EXPECT_FALSE(ReadLine(Line("AZORES ISLANDS", "AZORES|ISLANDS")));
  EXPECT_FALSE(ReadLine("x"));
  EXPECT_FALSE(ReadLine(QByteArray(1'000'000, '|')));
}

TEST(ReadEventText, KeepsTheIdsOfWhatItLeavesOut) {
  const QByteArray lines = Line("38.4", "north") + "\n" + Line("0000123", "4").replace("ISLANDS", "||ISLANDS") + "\n" +
                           Line("20260619_0000123", "<b>") + "\n" + Line("0000123", "5") + "\n";
  for (const QByteArray &text : {header + lines, lines}) {
    const FeedReading reading = ReadEventText(text);
    ASSERT_EQ(reading.events.size(), 1U) << reading.fault.toStdString();
    EXPECT_EQ(reading.left_out, 3);
    EXPECT_EQ(reading.unread_ids, QStringList({"20260619_0000123", "20260619_4"}));
    EXPECT_EQ(reading.nameless, 1);
  }
}

TEST(ReadEventText, DoesNotTakeAnotherFieldForTheIdOfALineThatDoesNotFit) {
  const FeedReading reading =
      ReadEventText("#Time|EventID|Latitude|Longitude\n2026-06-19T03:04:05|a|1|2\n2026|06|b|1|2\nx|c|1|2\n");
  ASSERT_EQ(reading.events.size(), 1U) << reading.fault.toStdString();
  EXPECT_EQ(reading.unread_ids, QStringList("c"));
  EXPECT_EQ(reading.nameless, 1);
}

TEST(ReadEventText, BringsLongitudesBackBetweenTheDateLines) {
  EXPECT_EQ(ReadLine(Line("-20.25", "190.5"))->event.longitude, -169.5);
}

TEST(ReadEventText, SkipsEmptyLinesAndRemarks) {
  const FeedReading reading =
      ReadEventText("\xEF\xBB\xBF# made by hand\r\n" + QByteArray(header) + "\r\n\r\n# a|b\r\n" + Line() + "\r\n#\r\n");
  EXPECT_EQ(reading.events.size(), 1U) << reading.fault.toStdString();
  EXPECT_EQ(reading.left_out, 0);
}

TEST(ReadEventText, TakesATextWithoutEvents) {
  for (const char *text : {"", "\r\n", header, "# nothing\n"}) {
    const FeedReading reading = ReadEventText(text);
    EXPECT_EQ(reading.fault, "") << text;
    EXPECT_TRUE(reading.events.empty()) << text;
    EXPECT_EQ(reading.left_out, 0) << text;
  }
}

TEST(ReadEventText, SaysWhatIsWrongWithTheText) {
  EXPECT_EQ(ReadEventText("<html>\n<body>Busy</body>\n</html>").fault, "not the event text form");
  EXPECT_EQ(ReadEventText("{\"type\":\"FeatureCollection\"}").fault, "not the event text form");
  EXPECT_EQ(ReadEventText("#EventID|Time|Latitude|Depth/km\na|b|c|d\n").fault,
            "its header has no column \"Longitude\"");
  EXPECT_EQ(ReadEventText("#" + QByteArray(100, '|')).fault, "its header has no column \"EventID\"");
}

TEST(ReadEventText, RefusesATextOfMoreEventsThanAnyFeedHas) {
  QByteArray text = header;
  for (int i = 0; i <= most_feed_events; ++i)
    text += "e" + QByteArray::number(i) + "|2026-06-19T03:04:05|1|2|||||||||\n";
  EXPECT_EQ(ReadEventText(text).fault, QString("more than %1 events").arg(most_feed_events));
  const FeedReading reading = ReadEventText(text.first(text.chopped(1).lastIndexOf('\n') + 1));
  EXPECT_EQ(reading.fault, "");
  EXPECT_EQ(reading.events.size(), static_cast<std::size_t>(most_feed_events));
  EXPECT_EQ(ReadEventText(header + QByteArray("x\n").repeated(most_feed_events + 1)).fault,
            QString("more than %1 events").arg(most_feed_events));
}

/// A text of random pieces, most of them such as a feed may have.
QByteArray RandomText(QRandomGenerator &random) {
  static const QByteArrayList pieces = {"|",
                                        "|",
                                        "|",
                                        "|",
                                        "|",
                                        "|",
                                        "\n",
                                        "\r\n",
                                        "#",
                                        " ",
                                        "a1",
                                        "b_2",
                                        "2026-06-19T03:04:05",
                                        "2026-06-19T03:04:05.5Z",
                                        "2026-02-30T00:00:00",
                                        "1.5",
                                        "-170",
                                        "200",
                                        "95",
                                        "nan",
                                        "EventID",
                                        "Time",
                                        "\xC3\xBC",
                                        "\xFF"};
  QByteArray text = random.bounded(2) == 0 ? QByteArray(header) : QByteArray();
  for (int events = random.bounded(4); events > 0; --events) {
    QByteArray event = line;
    if (random.bounded(2) == 0)
      event.replace(random.bounded(static_cast<int>(event.size())), random.bounded(5),
                    pieces[random.bounded(static_cast<int>(pieces.size()))]);
    text += event + (random.bounded(2) == 0 ? "\n" : "\r\n");
  }
  for (int count = random.bounded(40); count > 0; --count)
    text += pieces[random.bounded(static_cast<int>(pieces.size()))];
  return text;
}

TEST(ReadEventText, ReadsAnyTextAsThePlainRulesDo) {
  QRandomGenerator random(20);
  std::size_t events = 0;
  for (int round = 0; round < 20'000; ++round) {
    const QByteArray text = RandomText(random);
    const FeedReading reading = ReadEventText(text);
    ASSERT_EQ(DescriptionOf(reading), DescriptionOf(ReadEventTextPlainly(text))) << text.toStdString();
    events += reading.events.size();
  }
  EXPECT_GT(events, 10'000U) << "the texts have too few events to prove anything";
}

}  // namespace
}  // namespace borvane::mirror
