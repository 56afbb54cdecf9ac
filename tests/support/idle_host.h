#pragma once

#include "core/program.h"

namespace borvane {

/// A host without a network, settings, screen or user, for what is run many thousand times: nothing is written down.
class IdleHost final : public SettingsStore,
                       public HttpTransfer,
                       public EventPump,
                       public Clock,
                       public RandomSource,
                       public MessageBox,
                       public Shell,
                       public Process,
                       public FormHost {
 public:
  Platform Services() { return ServicesWith(*this); }

  /// The same with settings that are kept.
  Platform ServicesWith(SettingsStore &settings) {
    return {.settings = settings,
            .http = *this,
            .events = *this,
            .clock = *this,
            .random = *this,
            .message_box = *this,
            .shell = *this,
            .process = *this};
  }

  std::optional<StoredValue> Read(Hive /*hive*/, std::string_view /*key*/, std::string_view /*name*/) override {
    return {};
  }
  void Write(Hive /*hive*/, std::string_view /*key*/, std::string_view /*name*/, std::string_view /*text*/) override {}

  TransferNumber Start(std::string_view /*address*/) override { return 1; }
  bool IsDone(TransferNumber /*transfer*/) const override { return true; }
  void Cancel(TransferNumber /*transfer*/) override {}
  TransferResult Take(TransferNumber /*transfer*/) override { return {.failed = true, .text = {}}; }

  void LetEventsRun() override {}
  void WaitForEvents() override {}

  Date Now() override { return MakeDate({.year = 2018, .month = 2, .day = 7}); }
  double SecondsSinceMidnight() override { return 0; }

  void Seed(double /*seed*/) override {}
  double Next() override { return 0; }

  MessageAnswer Show(std::string_view /*text*/, std::string_view /*title*/, MessageButtons buttons,
                     MessageIcon /*icon*/) override {
    return buttons == MessageButtons::YesNo ? MessageAnswer::No : MessageAnswer::Cancel;
  }

  void Open(std::string_view /*address*/, FormBase * /*owner*/) override {}

  void ReportRuntimeError(int /*number*/, std::string_view /*description*/) override {}
  void End(int /*status*/) override {}

  void FormLoaded(FormBase & /*form*/) override {}
  void FormUnloaded(FormBase & /*form*/) override {}
  void ShowForm(FormBase & /*form*/, FormBase * /*owner*/) override {}
  void HideForm(FormBase & /*form*/) override {}
};

}  // namespace borvane
