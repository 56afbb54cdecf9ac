// What the live events cost: a week's feed of 10,000 events read, compared and stored, beside its reading alone; a new
// event on its way into the catalogue; a start with a year of events in the store, beside one with the shown week
// alone.

#include <QCoreApplication>
#include <QTemporaryDir>
#include <cstdlib>
#include <iostream>
#include <memory>

#include <benchmark/benchmark.h>

#include "feeds/summary_feed.h"
#include "live/live_catalogue.h"
#include "summary_text.h"

namespace borvane::mirror {

namespace {

constexpr int timeout_ms = 60'000;
constexpr int events_of_year = 250'000;
constexpr qint64 ms_of_day = 24 * 60 * 60'000;
constexpr qint64 time_between_events = 365 * ms_of_day / events_of_year;

const Feed week = {.url = "week", .span = {.whole = std::chrono::hours(7 * 24)}};
const Feed hour = {.url = "hour", .span = {}};

QStringList SourceNames() { return {"survey"}; }

/// A live catalogue on a store of that name, and the catalogue that it publishes.
class Live {
 public:
  explicit Live(const QString &file)
      : live_({.store = {.file = file},
               .sources = {{.name = "survey", .credit = "The survey", .rank = 1}},
               .feeds = {week, hour},
               .clock = [] { return made + 60'000; }},
              {.changed = [this](const std::shared_ptr<const Catalogue> &events) { events_ = events; },
               .restored = [] {},
               .may_poll = [](bool) {},
               .log = [](LogLevel, const QString &line) { std::cerr << line.toStdString() << '\n'; }}) {
    live_.Start(timeout_ms);
  }

  bool Take(const Feed &feed, const FeedReading &reading) { return live_.Take(feed, reading).isEmpty(); }
  bool Finish() { return live_.Finish(timeout_ms); }
  std::size_t Events() const { return events_ ? events_->events().size() : 0; }

 private:
  std::shared_ptr<const Catalogue> events_;
  LiveCatalogue live_;
};

/// Takes up the text, and ends when it is stored.
bool TakeUp(Live &live, const QByteArray &text) {
  return live.Take(week, ReadSummaryFeed(text, made)) && live.Finish();
}

void TakeUpTheFirstWeek(benchmark::State &state) {
  const QByteArray text = SummaryText();
  for (auto _ : state) {
    state.PauseTiming();
    const QTemporaryDir folder;
    Live live(folder.filePath("service.sqlite"));
    state.ResumeTiming();
    if (!TakeUp(live, text))
      state.SkipWithError("The feed was not taken up.");
  }
}

void TakeUpARevisedWeek(benchmark::State &state) {
  const QTemporaryDir folder;
  Live live(folder.filePath("service.sqlite"));
  TakeUp(live, SummaryText());
  qint64 later = 0;
  for (auto _ : state) {
    state.PauseTiming();
    const QByteArray text = SummaryText(++later);
    state.ResumeTiming();
    if (!TakeUp(live, text))
      state.SkipWithError("The feed was not taken up.");
  }
}

void ReadAlone(benchmark::State &state) {
  const QByteArray text = SummaryText();
  for (auto _ : state)
    benchmark::DoNotOptimize(ReadSummaryFeed(text, made).events.data());
}

EventRecord YearsEvent(int number) {
  EventRecord record = {.source = 0, .event = {}, .other_ids = {}, .seen = made};
  record.event.id = QString("ci%1").arg(number);
  record.event.origin_time = made - number * time_between_events;
  record.event.latitude = number % 160 - 80;
  record.event.longitude = number % 360 - 180;
  record.event.depth = number % 300 / 10.0;
  record.event.magnitude = number % 80 / 10.0;
  record.event.place = QString("%1 km SSW of Ridgecrest, CA").arg(number % 60);
  record.event.network = "ci";
  record.event.kind = "earthquake";
  return record;
}

/// A store with the newest `count` events of a year. It is made once for each count.
class Year {
 public:
  explicit Year(int count) {
    EventStore store(EventStoreAddress({.file = File()}), SourceNames(), {.clock = [] { return made; }},
                     {.take = [](const std::vector<EventRecord> &, qint64) {},
                      .everything = [] { return std::vector<EventRecord>(); },
                      .lead = [](bool) {},
                      .log = [](LogLevel, const QString &line) { std::cerr << line.toStdString() << '\n'; }});
    constexpr int events_at_once = 10'000;
    for (int first = 0; first < count; first += events_at_once) {
      std::vector<EventRecord> records;
      for (int i = first; i < std::min(count, first + events_at_once); ++i)
        records.push_back(YearsEvent(i));
      store.Write(records, made);
      if (!store.WaitUntilWritten(timeout_ms))
        std::exit(EXIT_FAILURE);
    }
  }
  QString File() const { return folder_.filePath("service.sqlite"); }

 private:
  QTemporaryDir folder_;
};

void Start(benchmark::State &state, const Year &year) {
  std::size_t events = 0;
  for (auto _ : state) {
    auto live = std::make_unique<Live>(year.File());
    events = live->Events();
    // The end is none of the start.
    state.PauseTiming();
    live.reset();
    state.ResumeTiming();
  }
  state.counters["events"] = static_cast<double>(events);
  if (events == 0)
    state.SkipWithError("Nothing is served.");
}

constexpr int events_of_week = static_cast<int>(7 * ms_of_day / time_between_events);

void StartWithAYear(benchmark::State &state) {
  static const Year year(events_of_year);
  Start(state, year);
}

void StartWithTheWeekAlone(benchmark::State &state) {
  static const Year year(events_of_week);
  Start(state, year);
}

/// From a reading to the catalogue that has it, with 20,000 events in the store, of which a week is shown.
void TakeUpANewEvent(benchmark::State &state) {
  static const Year year(20'000);
  static int number = 0;
  Live live(year.File());
  for (auto _ : state) {
    state.PauseTiming();
    live.Finish();
    FeedReading reading;
    reading.generated = made + ++number;
    FeedEvent given;
    given.event = YearsEvent(0).event;
    given.event.id = QString("new%1").arg(number);
    given.updated = made;
    given.ids = QStringList{given.event.id};
    reading.events.push_back(given);
    const std::size_t before = live.Events();
    state.ResumeTiming();
    if (!live.Take(hour, reading) || live.Events() <= before) {
      state.SkipWithError("The event is not served.");
      break;
    }
  }
}

BENCHMARK(TakeUpTheFirstWeek)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(TakeUpARevisedWeek)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(ReadAlone)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(TakeUpANewEvent)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(StartWithAYear)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(StartWithTheWeekAlone)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

}  // namespace borvane::mirror

int main(int argument_count, char **arguments) {
  const QCoreApplication application(argument_count, arguments);
  benchmark::Initialize(&argument_count, arguments);
  benchmark::RunSpecifiedBenchmarks();
}
