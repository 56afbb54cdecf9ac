// How long the mirror takes to read a feed of 10,000 events, compared with the least that it could take: the same text
// read as JSON, or split into its fields, and nothing made of it.

#include <QByteArrayView>
#include <QJsonDocument>
#include <cstdlib>
#include <iostream>

#include <benchmark/benchmark.h>

#include "feeds/event_text.h"
#include "feeds/summary_feed.h"

namespace borvane::mirror {

namespace {

constexpr int events_of_feed = 10'000;
constexpr qint64 made = 1'781'838'300'000;

/// A week's feed with all the properties that a real one has.
QByteArray SummaryText() {
  QByteArray text = R"({"type":"FeatureCollection","metadata":{"generated":)" + QByteArray::number(made) +
                    R"(,"title":"All Earthquakes, Past Week","status":200,"api":"1.10.3","count":)" +
                    QByteArray::number(events_of_feed) + R"(},"features":[)";
  for (int i = 0; i < events_of_feed; ++i) {
    const QByteArray code = QByteArray::number(38'592'402 + i);
    const QByteArray time = QByteArray::number(made - 60'000LL * i);
    text += (i == 0 ? "" : ",");
    text += R"({"type":"Feature","properties":{"mag":)" + QByteArray::number(i % 80 / 10.0) + R"(,"place":")" +
            QByteArray::number(i % 60) + R"( km SSW of Ridgecrest, CA","time":)" + time + R"(,"updated":)" + time +
            R"(,"tz":null,"url":"https://earthquake.usgs.gov/earthquakes/eventpage/ci)" + code +
            R"(","detail":"https://earthquake.usgs.gov/earthquakes/feed/v1.0/detail/ci)" + code +
            R"(.geojson","felt":null,"cdi":null,"mmi":null,"alert":null,"status":"automatic","tsunami":0,"sig":34,)"
            R"("net":"ci","code":")" +
            code + R"(","ids":",ci)" + code +
            R"(,","sources":",ci,","types":",nearby-cities,origin,phase-data,scitech-link,","nst":15,)"
            R"("dmin":0.1417,"rms":0.1,"gap":140,"magType":"ml","type":"earthquake","title":"M 1.5 - CA"},)"
            R"("geometry":{"type":"Point","coordinates":[)" +
            QByteArray::number(-118 + i % 100 / 400.0) + "," + QByteArray::number(34 + i % 70 / 400.0) + "," +
            QByteArray::number(i % 300 / 10.0) + R"(]},"id":"ci)" + code + R"("})";
  }
  return text + "]}";
}

QByteArray TextOfLines() {
  QByteArray text =
      "#EventID|Time|Latitude|Longitude|Depth/km|Author|Catalog|Contributor|ContributorID|MagType|Magnitude|"
      "MagAuthor|EventLocationName\n";
  for (int i = 0; i < events_of_feed; ++i)
    text += "gfz2026" + QByteArray::number(i) + "|2026-06-19T03:04:05.12|" + QByteArray::number(i % 80) + ".25|" +
            QByteArray::number(i % 170) + ".5|10.5|AUTH|EMSC-RTS|EMSC|1822|mb|" + QByteArray::number(i % 80 / 10.0) +
            "|EMSC|NORTHERN MID-ATLANTIC RIDGE\n";
  return text;
}

void ReadSummary(benchmark::State &state) {
  const QByteArray text = SummaryText();
  for (auto _ : state)
    benchmark::DoNotOptimize(ReadSummaryFeed(text, made).events.data());
  state.SetBytesProcessed(state.iterations() * text.size());
}

void ReadJsonAlone(benchmark::State &state) {
  const QByteArray text = SummaryText();
  for (auto _ : state)
    benchmark::DoNotOptimize(QJsonDocument::fromJson(text).isObject());
  state.SetBytesProcessed(state.iterations() * text.size());
}

void ReadLines(benchmark::State &state) {
  const QByteArray text = TextOfLines();
  for (auto _ : state)
    benchmark::DoNotOptimize(ReadEventText(text).events.data());
  state.SetBytesProcessed(state.iterations() * text.size());
}

void SplitLinesAlone(benchmark::State &state) {
  const QByteArray text = TextOfLines();
  for (auto _ : state)
    for (const QByteArray &line : text.split('\n'))
      benchmark::DoNotOptimize(line.split('|').size());
  state.SetBytesProcessed(state.iterations() * text.size());
}

/// The comparison is only valid if both readers read all events.
bool ReadAllEvents() {
  return ReadSummaryFeed(SummaryText(), made).events.size() == events_of_feed &&
         ReadEventText(TextOfLines()).events.size() == events_of_feed;
}

BENCHMARK(ReadSummary)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadJsonAlone)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadLines)->Unit(benchmark::kMillisecond);
BENCHMARK(SplitLinesAlone)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace borvane::mirror

int main(int argument_count, char **arguments) {
  if (!borvane::mirror::ReadAllEvents()) {
    std::cerr << "A reader leaves events out.\n";
    return EXIT_FAILURE;
  }
  benchmark::Initialize(&argument_count, arguments);
  benchmark::RunSpecifiedBenchmarks();
}
