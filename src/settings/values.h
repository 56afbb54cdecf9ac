#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace borvane {

/// Every value that the program stores under its key.
enum class Setting {
  MacID,
  StrongerDisplay,
  Grid,
  RunTime,
  ad,
  EdgeOffset,
  EdgeDetect,
  Color0,
  Color1,
  Color2,
  KeepPosition,
  LogCity,
  EnableLog,
  LogAll,
  noBother,
  Colorize,
  AlarmTone,
  AlarmPeriod,
  EnableAlarmSound,
  Area,
  StartWOS,
  Refresh,
  Alert,
  BarTop,
  smBarLeft,
  shortTop,
  shortLeft,
  shortWidth,
  longTop,
  longLeft,
  longWidth,
  TopForm,
  LastBig,
  BigPlace,
  BigTime,
  BigDate,
  Tzip,
  MySchool,
};

/// The colour codes of the boxes of the settings window.
inline constexpr std::array color_settings = {Setting::Color0, Setting::Color1, Setting::Color2};

/// The exact name of a value, and what it reads as while none is stored.
struct StoredSetting {
  Setting setting;
  std::string_view name;
  std::string_view when_missing = "";
};

/// The values, in the order of Setting. One that reads as an empty text leaves its control's design value, or is 0 as a
/// number. The reporters of the felt report, User1 and so on, are numbered and have no row.
inline constexpr std::array stored_settings = {
    StoredSetting{Setting::MacID, "MacID"},
    StoredSetting{Setting::StrongerDisplay, "StrongerDisplay"},
    StoredSetting{Setting::Grid, "Grid"},
    StoredSetting{Setting::RunTime, "RunTime"},
    StoredSetting{Setting::ad, "ad"},
    StoredSetting{Setting::EdgeOffset, "EdgeOffset", "900"},
    StoredSetting{Setting::EdgeDetect, "EdgeDetect", "0"},
    StoredSetting{Setting::Color0, "Color0"},
    StoredSetting{Setting::Color1, "Color1"},
    StoredSetting{Setting::Color2, "Color2"},
    StoredSetting{Setting::KeepPosition, "KeepPosition"},
    StoredSetting{Setting::LogCity, "LogCity"},
    StoredSetting{Setting::EnableLog, "EnableLog"},
    StoredSetting{Setting::LogAll, "LogAll", "True"},
    StoredSetting{Setting::noBother, "noBother"},
    StoredSetting{Setting::Colorize, "Colorize"},
    StoredSetting{Setting::AlarmTone, "AlarmTone"},
    StoredSetting{Setting::AlarmPeriod, "AlarmPeriod"},
    StoredSetting{Setting::EnableAlarmSound, "EnableAlarmSound"},
    StoredSetting{Setting::Area, "Area"},
    StoredSetting{Setting::StartWOS, "StartWOS"},
    StoredSetting{Setting::Refresh, "Refresh"},
    StoredSetting{Setting::Alert, "Alert"},
    StoredSetting{Setting::BarTop, "BarTop"},
    StoredSetting{Setting::smBarLeft, "smBarLeft"},
    StoredSetting{Setting::shortTop, "shortTop"},
    StoredSetting{Setting::shortLeft, "shortLeft"},
    StoredSetting{Setting::shortWidth, "shortWidth"},
    StoredSetting{Setting::longTop, "longTop"},
    StoredSetting{Setting::longLeft, "longLeft"},
    StoredSetting{Setting::longWidth, "longWidth"},
    StoredSetting{Setting::TopForm, "TopForm"},
    StoredSetting{Setting::LastBig, "LastBig"},
    StoredSetting{Setting::BigPlace, "BigPlace"},
    StoredSetting{Setting::BigTime, "BigTime"},
    StoredSetting{Setting::BigDate, "BigDate"},
    StoredSetting{Setting::Tzip, "Tzip"},
    StoredSetting{Setting::MySchool, "MySchool"},
};

static_assert(std::all_of(stored_settings.begin(), stored_settings.end(), [](const StoredSetting &row) {
  return &row == &stored_settings[static_cast<std::size_t>(row.setting)];
}));

/// The stored text of `setting`; its row's text for a missing one where none or an empty one is stored.
std::string ReadSetting(Setting setting);

/// Stores `text` for `setting`.
void SaveSetting(Setting setting, std::string_view text);

}  // namespace borvane
