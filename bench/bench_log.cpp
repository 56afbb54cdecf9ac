// What the log costs: 500 rows offered to a log of 50 MB. To search the same bytes once, for one text that is not in
// them, is the least that it could cost.

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <cstring>
#include <filesystem>

#include <benchmark/benchmark.h>

#include "alert/quake_log.h"
#include "desktop/services/files.h"
#include "quakes_page.h"
#include "records/frmRecords.h"
#include "scan/scanners.h"
#include "support/idle_host.h"

namespace borvane {

namespace {

constexpr int rows = 500;
constexpr std::uintmax_t log_bytes = 50'000'000;

/// A home with a log, and a program whose list has the rows of a page.
class LoggedHome {
 public:
  LoggedHome() : program_(ServicesWithFiles(), host_) {
    qputenv("HOME", QFile::encodeName(folder_.path()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder_.path()));
    std::string page = QuakesPage(rows);
    Integer mode = 3;
    ScanQuakesList(mode, page);
    WriteQuakeLog();
    InitLogPath();
    new_lines_ = Content();
  }

  /// Lines of other events up to the log's size; after them, the lines of the rows if the log is to have them.
  void Fill(bool has_rows) {
    std::string text;
    text.reserve(log_bytes + 1000);
    std::string line;
    for (int number = 0; text.size() < log_bytes; ++number) {
      line = std::to_string(number) + " 2018/02/07 01:26:13 34.495N 118.667W 26.5 4 km ( 2 mi) W of Castaic, CA\r\n";
      text += line;
    }
    size_without_rows_ = text.size();
    std::filesystem::remove(LogPath());
    files_.Append(LogPath(), has_rows ? text + new_lines_ : text);
  }

  void RemoveRows() { std::filesystem::resize_file(LogPath(), size_without_rows_); }

  std::string Content() {
    std::string content;
    files_.Read(LogPath(), [&](std::string_view piece) { content += piece; });
    return content;
  }

  const std::string &new_lines() const { return new_lines_; }

 private:
  Platform ServicesWithFiles() {
    const Platform idle = host_.Services();
    return {.settings = idle.settings,
            .http = idle.http,
            .events = idle.events,
            .clock = idle.clock,
            .random = idle.random,
            .message_box = idle.message_box,
            .shell = idle.shell,
            .files = files_,
            .sound = idle.sound,
            .region = idle.region,
            .process = idle.process};
  }

  QTemporaryDir folder_;
  IdleHost host_;
  DesktopFiles files_;
  Program program_;
  std::string new_lines_;
  std::uintmax_t size_without_rows_ = 0;
};

void WriteNoNewRow(benchmark::State &state) {
  LoggedHome home;
  home.Fill(true);
  const std::string before = home.Content();
  for (auto _ : state)
    WriteQuakeLog();
  if (home.Content() != before)
    state.SkipWithError("the log has changed");
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(log_bytes));
}

void WriteNewRowsOnly(benchmark::State &state) {
  LoggedHome home;
  home.Fill(false);
  for (auto _ : state) {
    state.PauseTiming();
    home.RemoveRows();
    state.ResumeTiming();
    WriteQuakeLog();
  }
  if (!home.Content().ends_with(home.new_lines()))
    state.SkipWithError("the rows are not in the log");
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(log_bytes));
}

/// Reads the file and searches it once, for a text that it has not.
void BareSearch(benchmark::State &state) {
  LoggedHome home;
  home.Fill(true);
  DesktopFiles files;
  constexpr std::string_view missing = "9.9 2099/01/01 00:00:00 0.000N 0.000W 0.0 nowhere";
  for (auto _ : state) {
    files.Read(LogPath(), [&](std::string_view piece) {
      benchmark::DoNotOptimize(::memmem(piece.data(), piece.size(), missing.data(), missing.size()));
    });
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(log_bytes));
}

BENCHMARK(WriteNoNewRow)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteNewRowsOnly)->Unit(benchmark::kMillisecond);
BENCHMARK(BareSearch)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace borvane

int main(int argument_count, char **arguments) {
  const QCoreApplication application(argument_count, arguments);
  benchmark::Initialize(&argument_count, arguments);
  benchmark::RunSpecifiedBenchmarks();
}
