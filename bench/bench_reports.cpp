// What the list of felt reports costs: 100,000 lines on one event, from 5,000 zip codes. Its peer looks through all
// rows for each line.

#include <string>
#include <utility>

#include <benchmark/benchmark.h>

#include "reports/ComPart.h"
#include "reports/show_reports.h"
#include "support/one_answer.h"
#include "support/program/plain_reports.h"

namespace borvane {

namespace {

constexpr int lines = 100'000;
constexpr int zips = 5'000;
constexpr const char *event_key = "5.2-2018:02:07-01:26:13-34.495N-118.667W";

/// What the service answers.
std::string Answer() {
  std::string answer;
  for (int line = 0; line < lines; ++line) {
    const std::string zip = std::to_string(10'000 + line % zips);
    const std::string magnitude = std::to_string(1 + line % 7) + "." + std::to_string(571'429 + line % 97);
    answer.append("235|").append(event_key).append("|42|").append(magnitude).append("|0|1|").append(zip).append("\n");
  }
  return answer;
}

/// A program with an empty list of reports.
class ReportedProgram {
 public:
  explicit ReportedProgram(std::string answer) : program_(ServicesOver(network_, host_), host_) {
    network_.Set(std::move(answer));
    ComPart->Label2(1).Caption = event_key;
  }

  static ListRows &Rows() { return ComPart->ListView1.ListItems; }

 private:
  IdleHost host_;
  OneAnswer network_;
  Program program_;
};

std::string TextOf(const ListRows &rows) {
  std::string text;
  for (int row = 1; row <= rows.Count(); ++row)
    text.append(rows(row).Text).append("|").append(rows(row).SubItems(1)).append("|").append(rows(row).SubItems(2)) +=
        '\n';
  return text;
}

void ShowAllReports(benchmark::State &state) {
  const std::string answer = Answer();
  const ReportedProgram program(answer);
  ReportFields fields;
  for (auto _ : state) {
    state.PauseTiming();
    ReportedProgram::Rows().Clear();
    state.ResumeTiming();
    ShowReports(fields);
  }

  ListRows plain_rows;
  ReportFields plain_fields;
  plain::AddReports(answer, event_key, plain_fields, plain_rows, '.');
  if (plain_rows.Count() != zips || TextOf(ReportedProgram::Rows()) != TextOf(plain_rows))
    state.SkipWithError("the rows are not those of the plain steps");
}

void LookThroughAllRowsForEachLine(benchmark::State &state) {
  const std::string answer = Answer();
  ReportFields fields;
  for (auto _ : state) {
    ListRows rows;
    plain::AddReports(answer, event_key, fields, rows, '.');
    benchmark::DoNotOptimize(rows.Count());
  }
}

BENCHMARK(ShowAllReports)->Unit(benchmark::kMillisecond);
BENCHMARK(LookThroughAllRowsForEachLine)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace borvane

BENCHMARK_MAIN();
