// What the settings cost: one changed value, a start with many of them, and a page of which every row is the strongest
// event so far. QSettings alone, and a page that changes one value, are the baselines.

#include <QCoreApplication>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include "basic/number.h"
#include "core/dispatch.h"
#include "core/registry.h"
#include "core/start.h"
#include "desktop/settings/settings_file_store.h"
#include "scan/scanners.h"
#include "settings/values.h"
#include "support/idle_host.h"
#include "support/program/pages.h"

namespace borvane {

namespace {

constexpr int many_values = 60;

/// Stores the values of the table, and numbered ones after them, until there are `count`.
void Fill(int count) {
  SettingsFileStore store;
  int stored = 0;
  for (const StoredSetting &setting : stored_settings) {
    if (stored++ < count)
      store.Write(program_key, setting.name, "1");
  }
  for (; stored < count; ++stored)
    store.Write(program_key, "User" + std::to_string(stored), "Name of a reporter");
}

void SaveAChangedValue(benchmark::State &state) {
  IdleHost host;
  SettingsFileStore store;
  const Program program(host.ServicesWith(store), host);
  int value = 0;
  for (auto _ : state)
    SaveRegValue(HKEY_CURRENT_USER, program_key, "Alert", std::to_string(++value));
}

void SaveAnUnchangedValue(benchmark::State &state) {
  IdleHost host;
  SettingsFileStore store;
  const Program program(host.ServicesWith(store), host);
  for (auto _ : state)
    SaveRegValue(HKEY_CURRENT_USER, program_key, "Alert", "3");
}

void BareChangedValue(benchmark::State &state) {
  QSettings settings(QSettings::NativeFormat, QSettings::UserScope, "Nalvorin", "Borvane");
  int value = 0;
  for (auto _ : state) {
    settings.setValue("Alert", QString::number(++value));
    settings.sync();
  }
}

/// The program's own part of a start: everything that it reads from its settings, and what it writes back.
void Start(benchmark::State &state) {
  const QString file = UserSettingsFile();
  const auto count = static_cast<int>(state.range(0));
  Fill(count);
  for (auto _ : state) {
    if (count == 0) {
      state.PauseTiming();
      QFile::remove(file);
      state.ResumeTiming();
    }
    IdleHost host;
    SettingsFileStore store;
    const Program program(host.ServicesWith(store), host);
    Dispatch(Main);
  }
}

/// A start without settings, on a host that stores nothing: only the creation of the windows is left.
void BareStart(benchmark::State &state) {
  for (auto _ : state) {
    IdleHost host;
    const Program program(host.Services(), host);
    Dispatch(Main);
  }
}

constexpr int rows_of_page = 10'000;

/// A page whose rows all have magnitude 5.0.
std::string LevelPage() {
  std::string page;
  for (int row = 0; row < rows_of_page; ++row)
    page += Row("5.0");
  return Page(page);
}

/// A page of which every row is stronger than the one before.
std::string RisingPage() {
  std::string page;
  for (int row = 0; row < rows_of_page; ++row)
    page += Row(DoubleText(1 + row / 10'000.0));
  return Page(page);
}

/// A scan in one event, as a refresh makes it, with the strongest event kept in the settings.
void Scan(benchmark::State &state, const std::string &page) {
  for (auto _ : state) {
    state.PauseTiming();
    QFile::remove(UserSettingsFile());
    IdleHost host;
    SettingsFileStore store;
    const Program program(host.ServicesWith(store), host);
    state.ResumeTiming();
    Dispatch([&] {
      std::string text = page;
      Integer mode = 1;
      ScanQuakesList(mode, text);
    });
  }
}

void ScanRisingMagnitudes(benchmark::State &state) { Scan(state, RisingPage()); }
void BareScanOfLevelMagnitudes(benchmark::State &state) { Scan(state, LevelPage()); }

BENCHMARK(ScanRisingMagnitudes)->Unit(benchmark::kMillisecond);
BENCHMARK(BareScanOfLevelMagnitudes)->Unit(benchmark::kMillisecond);
BENCHMARK(SaveAChangedValue)->Unit(benchmark::kMillisecond);
BENCHMARK(SaveAnUnchangedValue)->Unit(benchmark::kMillisecond);
BENCHMARK(BareChangedValue)->Unit(benchmark::kMillisecond);
BENCHMARK(Start)->Arg(0)->Arg(many_values)->Unit(benchmark::kMillisecond);
BENCHMARK(BareStart)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace borvane

int main(int argument_count, char **arguments) {
  const QTemporaryDir folder;
  qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder.path()));
  const QCoreApplication application(argument_count, arguments);
  benchmark::Initialize(&argument_count, arguments);
  benchmark::RunSpecifiedBenchmarks();
}
