// How long the mirror takes to write a page of 1,000 events, compared with the least that it could take: the same
// lines, ready-made, joined to one page.

#include <cstdlib>
#include <iostream>
#include <vector>

#include <benchmark/benchmark.h>

#include "pages/area_page.h"
#include "pages/event_page.h"
#include "pages/list_rows.h"

namespace borvane::mirror {

namespace {

constexpr int events_of_page = 1000;

/// A thousand events of all magnitudes, a minute apart.
Catalogue ManyEvents() {
  std::vector<Event> events;
  for (int i = 0; i < events_of_page; ++i) {
    Event event;
    event.id = QString("ci%1").arg(14'155'392 + i);
    event.origin_time = 1'518'000'000'000 - 60'000LL * i;
    event.latitude = 34 + i % 70 / 400.0;
    event.longitude = -118 + i % 100 / 400.0;
    event.depth = i % 300 / 10.0;
    event.magnitude = i % 80 / 10.0;
    event.place = QString("%1 km SSW of Ridgecrest, CA").arg(i % 60);
    event.network = "ci";
    event.kind = "earthquake";
    events.push_back(event);
  }
  return Catalogue(std::move(events));
}

/// The form's page of all events.
QByteArray PageOf(ListForm form, const Catalogue &catalogue) {
  const Area everywhere = {.name = "Everywhere",
                           .endpoint = Endpoint::National,
                           .path = "/",
                           .form = form,
                           .box = {.south = -90, .north = 90, .west = -180, .east = 180}};
  return AreaPage(everywhere, catalogue, "alaska.localhost:17650");
}

void WriteList(benchmark::State &state, ListForm form) {
  const Catalogue catalogue = ManyEvents();
  for (auto _ : state)
    benchmark::DoNotOptimize(PageOf(form, catalogue).constData());
}

void JoinLines(benchmark::State &state, ListForm form) {
  const QList<QByteArray> lines = PageOf(form, ManyEvents()).split('\n');
  for (auto _ : state) {
    QByteArray page;
    for (const QByteArray &line : lines)
      page += line + '\n';
    benchmark::DoNotOptimize(page.constData());
  }
}

void WriteEventPage(benchmark::State &state) {
  const Catalogue catalogue = ManyEvents();
  const Event &event = catalogue.events()[events_of_page / 2];
  for (auto _ : state)
    benchmark::DoNotOptimize(EventPage(event, catalogue, PageHost("", 17650)).constData());
}

/// The comparison is only valid if each page has all events.
bool HaveAllEvents() {
  const Catalogue catalogue = ManyEvents();
  for (const ListForm form :
       {ListForm::Quakes, ListForm::MapList, ListForm::MapAnchor, ListForm::World, ListForm::Region}) {
    const QByteArray page = PageOf(form, catalogue);
    for (const Event &event : catalogue.events())
      if (!page.contains(EventPath(event).sliced(1)))
        return false;
  }
  return true;
}

BENCHMARK_CAPTURE(WriteList, quakes, ListForm::Quakes)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(JoinLines, quakes, ListForm::Quakes)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WriteList, map_list, ListForm::MapList)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(JoinLines, map_list, ListForm::MapList)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WriteList, map_anchor, ListForm::MapAnchor)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(JoinLines, map_anchor, ListForm::MapAnchor)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WriteList, world, ListForm::World)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(JoinLines, world, ListForm::World)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WriteList, region, ListForm::Region)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(JoinLines, region, ListForm::Region)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteEventPage)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace borvane::mirror

int main(int argument_count, char **arguments) {
  if (!borvane::mirror::HaveAllEvents()) {
    std::cerr << "A page lacks an event.\n";
    return EXIT_FAILURE;
  }
  benchmark::Initialize(&argument_count, arguments);
  benchmark::RunSpecifiedBenchmarks();
}
