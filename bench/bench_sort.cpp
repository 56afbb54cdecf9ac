// What the sort of the list costs, without the screen: a click on a title, and a refresh while the list is sorted. The
// least that a click could cost is std::stable_sort over ready-made keys; for a refresh, the one of a list that is not
// sorted.

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "quakes_page.h"
#include "records/frmRecords.h"
#include "scan/scanners.h"
#include "support/idle_host.h"

namespace borvane {

namespace {

constexpr int rows_of_list = 100'000;

/// The columns: many equal texts, few equal ones, and long ones that begin alike.
constexpr int magnitude = 1;
constexpr int latitude = 4;
constexpr int link = 8;

/// A program whose list has the rows of a page.
class ListedProgram {
 public:
  explicit ListedProgram(int rows) : program_(host_.Services(), host_), page_(QuakesPage(rows)) { Refresh(); }

  void Refresh() {
    Integer mode = 3;
    std::string page = page_;
    ScanQuakesList(mode, page);
    ReadARow();
  }

  static void ReadARow() { benchmark::DoNotOptimize(frmRecords->ListView1.ListItems(1).Text.data()); }

 private:
  IdleHost host_;
  Program program_;
  std::string page_;
};

std::string_view TextOf(int row, int column) {
  const ListItem &item = frmRecords->ListView1.ListItems(row);
  return column == 1 ? std::string_view(item.Text) : item.SubItems(column - 1);
}

/// Whether the list is in the order of a column. None of the texts have capital letters in places that matter.
bool IsInOrder(int column) {
  for (int row = 2; row <= frmRecords->ListView1.ListItems.Count(); ++row) {
    const bool falls = TextOf(row, column) < TextOf(row - 1, column);
    const bool rises = TextOf(row - 1, column) < TextOf(row, column);
    if (frmRecords->ListView1.SortOrder() == ListView::ascending ? falls : rises)
      return false;
  }
  return true;
}

void SortClick(benchmark::State &state) {
  const ListedProgram program(rows_of_list);
  const auto column = static_cast<int>(state.range(0));
  for (auto _ : state) {
    // Each click sorts what another column has sorted.
    state.PauseTiming();
    frmRecords->ListView1.ClickColumn(column == latitude ? magnitude : latitude);
    ListedProgram::ReadARow();
    state.ResumeTiming();
    frmRecords->ListView1.ClickColumn(column);
    ListedProgram::ReadARow();
  }
  if (!IsInOrder(column))
    state.SkipWithError("the list is not sorted");
}

/// The keys in one piece of memory, in the order in which a click finds them: sorted by another column.
void BareStableSort(benchmark::State &state) {
  const ListedProgram program(rows_of_list);
  const auto column = static_cast<int>(state.range(0));
  frmRecords->ListView1.ClickColumn(column == latitude ? magnitude : latitude);
  std::string texts;
  for (int row = 1; row <= rows_of_list; ++row)
    texts += TextOf(row, column);
  std::vector<std::pair<std::string_view, int>> keys;
  std::string_view rest = texts;
  for (int row = 1; row <= rows_of_list; ++row) {
    const std::size_t length = TextOf(row, column).size();
    keys.emplace_back(rest.substr(0, length), row);
    rest.remove_prefix(length);
  }
  for (auto _ : state) {
    state.PauseTiming();
    auto sorted = keys;
    state.ResumeTiming();
    std::stable_sort(sorted.begin(), sorted.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    benchmark::DoNotOptimize(sorted.data());
  }
}

void RefreshSorted(benchmark::State &state) {
  ListedProgram program(static_cast<int>(state.range(0)));
  frmRecords->ListView1.ClickColumn(link);
  for (auto _ : state)
    program.Refresh();
  if (!IsInOrder(link))
    state.SkipWithError("the list is not sorted");
}

void RefreshUnsorted(benchmark::State &state) {
  ListedProgram program(static_cast<int>(state.range(0)));
  for (auto _ : state)
    program.Refresh();
}

BENCHMARK(SortClick)->Arg(magnitude)->Arg(latitude)->Arg(link)->Unit(benchmark::kMillisecond);
BENCHMARK(BareStableSort)->Arg(magnitude)->Arg(latitude)->Arg(link)->Unit(benchmark::kMillisecond);
BENCHMARK(RefreshSorted)->Arg(10'000)->Arg(rows_of_list)->Unit(benchmark::kMillisecond);
BENCHMARK(RefreshUnsorted)->Arg(10'000)->Arg(rows_of_list)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace borvane

BENCHMARK_MAIN();
