// How long the mirror takes to read a feed of 10,000 events, compared with the least that it could take: the same text
// read as JSON, also by Qt's reader, or split into its fields, and nothing made of it.

#include <QByteArrayView>
#include <QJsonDocument>
#include <cstdlib>
#include <iostream>

#include <benchmark/benchmark.h>
#include <simdjson.h>

#include "feeds/event_text.h"
#include "feeds/summary_feed.h"
#include "summary_text.h"

namespace borvane::mirror {

namespace {

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

/// What the same library takes to check and unpack the text, in memory of its own each time as the reader.
void ReadJsonAlone(benchmark::State &state) {
  const QByteArray text = SummaryText();
  for (auto _ : state) {
    simdjson::dom::parser parser;
    benchmark::DoNotOptimize(parser.parse(text.constData(), static_cast<std::size_t>(text.size())).error());
  }
  state.SetBytesProcessed(state.iterations() * text.size());
}

/// What another reader takes for it.
void ReadJsonByQt(benchmark::State &state) {
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
BENCHMARK(ReadJsonByQt)->Unit(benchmark::kMillisecond);
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
