// What the settings cost: one changed value, and a start with many of them. The bare limit is QSettings itself.

#include <QCoreApplication>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include "core/registry.h"
#include "core/start.h"
#include "desktop/services/settings_store.h"
#include "settings/values.h"
#include "support/idle_host.h"

namespace borvane {

namespace {

constexpr int many_values = 60;

/// Stores the values of the table, and numbered ones behind them, until there are `count`.
void Fill(int count) {
  QtSettingsStore store;
  int stored = 0;
  for (const StoredSetting &setting : stored_settings) {
    if (stored++ < count)
      store.Write(HKEY_CURRENT_USER, program_key, setting.name, "1");
  }
  for (; stored < count; ++stored)
    store.Write(HKEY_CURRENT_USER, program_key, "User" + std::to_string(stored), "Name of a reporter");
}

void SaveAChangedValue(benchmark::State &state) {
  IdleHost host;
  QtSettingsStore store;
  const Program program(host.ServicesWith(store), host);
  int value = 0;
  for (auto _ : state)
    SaveRegValue(HKEY_CURRENT_USER, program_key, "Alert", std::to_string(++value));
}

void SaveAnUnchangedValue(benchmark::State &state) {
  IdleHost host;
  QtSettingsStore store;
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
  const QString file = QtSettingsStore().FileName();
  const auto count = static_cast<int>(state.range(0));
  Fill(count);
  for (auto _ : state) {
    if (count == 0) {
      state.PauseTiming();
      QFile::remove(file);
      state.ResumeTiming();
    }
    IdleHost host;
    QtSettingsStore store;
    const Program program(host.ServicesWith(store), host);
    Main();
  }
}

/// A start without settings, on a host that forgets: what is left is the making of the windows.
void BareStart(benchmark::State &state) {
  for (auto _ : state) {
    IdleHost host;
    const Program program(host.Services(), host);
    Main();
  }
}

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
