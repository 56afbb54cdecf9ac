// What an update of the bars costs; for comparison the conversion of the listed magnitudes alone.

#include <charconv>

#include <benchmark/benchmark.h>

#include "bars/Form1.h"
#include "bars/bar_content.h"
#include "bars/newTagFrm.h"
#include "core/start.h"
#include "quakes_page.h"
#include "records/frmRecords.h"
#include "scan/scanners.h"
#include "support/idle_host.h"

namespace borvane {

namespace {

constexpr int rows_of_page = 10'000;

/// A started program whose list has the rows of a page.
class ListedProgram {
 public:
  ListedProgram() : program_(host_.Services(), host_) {
    Main();
    Integer mode = 0;
    std::string page = QuakesPage(rows_of_page);
    ScanQuakesList(mode, page);
  }

 private:
  IdleHost host_;
  Program program_;
};

void MeasureLongBar(benchmark::State &state) {
  const ListedProgram program;
  for (auto _ : state)
    UpdateLongBar();
  if (newTagFrm->Label2(0).Caption() != "Strong: 9.9")
    state.SkipWithError("the bar does not show the strongest event");
}

/// Only reads the magnitudes of the list.
void BareMagnitudes(benchmark::State &state) {
  const ListedProgram program;
  const ListRows &rows = frmRecords->ListView1.ListItems;
  for (auto _ : state) {
    float highest = 0;
    for (int row = 1; row <= rows.Count(); ++row) {
      const std::string &text = rows(row).Text;
      float magnitude = 0;
      std::from_chars(text.data(), text.data() + text.size(), magnitude);
      highest = std::max(highest, magnitude);
    }
    benchmark::DoNotOptimize(highest);
  }
}

/// A tick of the short bar that changes nothing.
void MeasureShortBar(benchmark::State &state) {
  const ListedProgram program;
  for (auto _ : state)
    UpdateShortBar();
}

template <class Bar>
void Load(benchmark::State &state, const Form<Bar> &bar) {
  const ListedProgram program;
  for (auto _ : state) {
    benchmark::DoNotOptimize(*bar);
    bar.Unload();
  }
}

void LoadShortBar(benchmark::State &state) { Load(state, Form1); }
void LoadLongBar(benchmark::State &state) { Load(state, newTagFrm); }

BENCHMARK(MeasureLongBar)->Name("UpdateLongBar")->Unit(benchmark::kMicrosecond);
BENCHMARK(BareMagnitudes)->Unit(benchmark::kMicrosecond);
BENCHMARK(MeasureShortBar)->Name("UpdateShortBar")->Unit(benchmark::kMicrosecond);
BENCHMARK(LoadShortBar)->Unit(benchmark::kMicrosecond);
BENCHMARK(LoadLongBar)->Unit(benchmark::kMicrosecond);

}  // namespace

}  // namespace borvane

BENCHMARK_MAIN();
