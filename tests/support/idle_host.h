#pragma once

#include "core/program.h"

namespace borvane {

/// A host without a network, screen or user, for code that runs many thousand times: nothing is recorded. Its settings
/// hold one value, the magnitude of an event that none is stronger than.
class IdleHost final : public SettingsStore,
                       public HttpTransfer,
                       public EventPump,
                       public Clock,
                       public RandomSource,
                       public MessageBox,
                       public Shell,
                       public Files,
                       public Sound,
                       public Region,
                       public Process,
                       public FormHost {
 public:
  Platform Services() { return ServicesWith(*this); }

  /// The same with stored settings.
  Platform ServicesWith(SettingsStore &settings) {
    return {.settings = settings,
            .http = *this,
            .events = *this,
            .clock = *this,
            .random = *this,
            .message_box = *this,
            .shell = *this,
            .files = *this,
            .sound = *this,
            .region = *this,
            .process = *this};
  }

  std::optional<StoredValue> Read(std::string_view /*key*/, std::string_view name) override {
    return name == "LastBig" ? std::optional<StoredValue>("9.9") : std::nullopt;
  }
  void Write(std::string_view /*key*/, std::string_view /*name*/, std::string_view /*text*/) override {}

  void Delete(std::string_view /*key*/, std::string_view /*name*/) override {}

  void BeginEvent() override {}
  void EndEvent() override {}

  TransferNumber Start(std::string_view /*address*/) override { return 1; }
  bool IsDone(TransferNumber /*transfer*/) const override { return true; }
  void Cancel(TransferNumber /*transfer*/) override {}
  TransferResult Take(TransferNumber /*transfer*/) override { return {.failed = true, .text = {}}; }

  void LetEventsRun() override {}
  void LetEventsRunFor(int /*milliseconds*/) override {}
  void WaitForEvents() override {}

  Date Now() override { return MakeDate({.year = 2018, .month = 2, .day = 7}); }
  double SecondsSinceMidnight() override { return 0; }

  void Seed(double /*seed*/) override {}
  double Next() override { return 0; }

  MessageAnswer Show(std::string_view /*text*/, std::string_view /*title*/, MessageButtons buttons,
                     MessageIcon /*icon*/) override {
    return buttons == MessageButtons::Ok      ? MessageAnswer::Ok
           : buttons == MessageButtons::YesNo ? MessageAnswer::No
                                              : MessageAnswer::Cancel;
  }

  void Open(std::string_view /*address*/, FormBase * /*owner*/) override {}
  void OpenFile(std::string_view /*path*/, FormBase * /*owner*/) override {}

  std::optional<std::string> SpecialFolder(std::int32_t /*number*/) override { return {}; }
  bool Exists(std::string_view /*path*/) override { return false; }
  void MakeFolder(std::string_view /*path*/) override {}
  FileState StateOf(std::string_view /*path*/) override { return {}; }
  bool Read(std::string_view /*path*/, const std::function<void(std::string_view)> & /*take*/) override { return true; }
  FileState Append(std::string_view /*path*/, std::string_view /*text*/) override { return {}; }

  void Beep(std::int32_t /*frequency*/, std::int32_t /*duration*/) override {}
  char DecimalSeparator() override { return '.'; }

  std::string Folder() override { return {}; }
  std::string ExecutableName() override { return {}; }
  void ReportRuntimeError(int /*number*/, std::string_view /*description*/) override {}
  void End(int /*status*/) override {}

  void FormLoaded(FormBase & /*form*/) override {}
  void FormUnloaded(FormBase & /*form*/) override {}
  void ShowForm(FormBase & /*form*/, FormBase * /*owner*/, bool /*with_focus*/) override {}
  void HideForm(FormBase & /*form*/) override {}
  void RepaintForm(FormBase & /*form*/) override {}
  void KeepOnTop(FormBase & /*form*/, bool /*on*/) override {}
  Size FirstScreen() override { return {.width = 1280 * 15, .height = 1024 * 15}; }
  Size SizeOfText(std::string_view /*text*/, const Font & /*font*/) override { return {}; }
  void ShowPopupMenu(FormBase & /*form*/, Menu & /*menu*/) override {}
};

}  // namespace borvane
