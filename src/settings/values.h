#pragma once

#include <array>
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

/// What the text of a value stands for.
enum class ValueKind {
  Text,       // as typed, or as a page wrote it
  Number,     // decimal text
  Switch,     // 0 or 1, and 2 for a check box in its third state
  TrueFalse,  // "True" or "False"
};

/// One row of the table of values: the exact name, what the text stands for, what holds when it is missing, and who
/// reads and who writes it.
struct StoredSetting {
  Setting setting;
  std::string_view name;
  ValueKind kind;
  std::string_view when_missing;
  std::string_view read_by;
  std::string_view written_by;
};

// clang-format off
/// The values, in the order of Setting. "design" means that the control keeps its design value. The reporter slots of the felt
/// report, User1 and so on, are numbered and stand outside this table.
inline constexpr std::array stored_settings = {
    StoredSetting{Setting::MacID,            "MacID",            ValueKind::Number,    "made",   "LoadSettings",  "LoadSettings"},
    StoredSetting{Setting::StrongerDisplay,  "StrongerDisplay",  ValueKind::Number,    "0",      "LoadSettings",  "conffrm.Combo1"},
    StoredSetting{Setting::Grid,             "Grid",             ValueKind::Switch,    "0",      "LoadSettings",  "frmRecords.mnuGrid"},
    StoredSetting{Setting::RunTime,          "RunTime",          ValueKind::Number,    "0",      "LoadSettings",  "LoadSettings"},
    StoredSetting{Setting::ad,               "ad",               ValueKind::Number,    "0",      "LoadSettings",  "LoadSettings"},
    StoredSetting{Setting::EdgeOffset,       "EdgeOffset",       ValueKind::Text,      "900",    "LoadSettings",  "conffrm.Text7"},
    StoredSetting{Setting::EdgeDetect,       "EdgeDetect",       ValueKind::Number,    "0",      "LoadSettings",  "conffrm.Command2"},
    StoredSetting{Setting::Color0,           "Color0",           ValueKind::Number,    "0",      "LoadSettings",  "conffrm.Picture1(0)"},
    StoredSetting{Setting::Color1,           "Color1",           ValueKind::Number,    "0",      "LoadSettings",  "conffrm.Picture1(1)"},
    StoredSetting{Setting::Color2,           "Color2",           ValueKind::Number,    "0",      "LoadSettings",  "conffrm.Picture1(2)"},
    StoredSetting{Setting::KeepPosition,     "KeepPosition",     ValueKind::Switch,    "0",      "LoadSettings",  "conffrm.Check6"},
    StoredSetting{Setting::LogCity,          "LogCity",          ValueKind::Text,      "",       "LoadSettings",  "conffrm.Text8"},
    StoredSetting{Setting::EnableLog,        "EnableLog",        ValueKind::Switch,    "0",      "LoadSettings",  "conffrm.Check1"},
    StoredSetting{Setting::LogAll,           "LogAll",           ValueKind::TrueFalse, "True",   "LoadSettings",  "conffrm.Command2"},
    StoredSetting{Setting::noBother,         "noBother",         ValueKind::Number,    "0",      "LoadSettings",  "LoadSettings"},
    StoredSetting{Setting::Colorize,         "Colorize",         ValueKind::Switch,    "design", "LoadSettings",  "conffrm.Check3"},
    StoredSetting{Setting::AlarmTone,        "AlarmTone",        ValueKind::Text,      "design", "LoadSettings",  "conffrm.Text5(0)"},
    StoredSetting{Setting::AlarmPeriod,      "AlarmPeriod",      ValueKind::Text,      "design", "LoadSettings",  "conffrm.Text5(1)"},
    StoredSetting{Setting::EnableAlarmSound, "EnableAlarmSound", ValueKind::Switch,    "design", "LoadSettings",  "conffrm.Check2"},
    StoredSetting{Setting::Area,             "Area",             ValueKind::Text,      "design", "LoadSettings",  "SaveArea"},
    StoredSetting{Setting::StartWOS,         "StartWOS",         ValueKind::Switch,    "0",      "LoadSettings",  "conffrm.Check7"},
    StoredSetting{Setting::Refresh,          "Refresh",          ValueKind::Text,      "design", "LoadSettings",  "conffrm.Text2"},
    StoredSetting{Setting::Alert,            "Alert",            ValueKind::Text,      "design", "LoadSettings",  "conffrm.Text1"},
    StoredSetting{Setting::BarTop,           "BarTop",           ValueKind::Text,      "",       "LoadSettings",  "nothing"},
    StoredSetting{Setting::smBarLeft,        "smBarLeft",        ValueKind::Text,      "",       "nothing",       "conffrm.Text4"},
    StoredSetting{Setting::shortTop,         "shortTop",         ValueKind::Number,    "",       "PlaceShortBar", "Form1"},
    StoredSetting{Setting::shortLeft,        "shortLeft",        ValueKind::Number,    "",       "PlaceShortBar", "Form1"},
    StoredSetting{Setting::shortWidth,       "shortWidth",       ValueKind::Number,    "",       "nothing",       "Form1"},
    StoredSetting{Setting::longTop,          "longTop",          ValueKind::Number,    "",       "PlaceLongBar",  "newTagFrm"},
    StoredSetting{Setting::longLeft,         "longLeft",         ValueKind::Number,    "",       "PlaceLongBar",  "newTagFrm"},
    StoredSetting{Setting::longWidth,        "longWidth",        ValueKind::Number,    "",       "nothing",       "newTagFrm"},
    StoredSetting{Setting::TopForm,          "TopForm",          ValueKind::Switch,    "0",      "the bars",      "the bars"},
    StoredSetting{Setting::LastBig,          "LastBig",          ValueKind::Text,      "",       "KeepBiggest",   "KeepBiggest"},
    StoredSetting{Setting::BigPlace,         "BigPlace",         ValueKind::Text,      "",       "UpdateLongBar", "KeepBiggest"},
    StoredSetting{Setting::BigTime,          "BigTime",          ValueKind::Text,      "",       "UpdateLongBar", "KeepBiggest"},
    StoredSetting{Setting::BigDate,          "BigDate",          ValueKind::Text,      "",       "UpdateLongBar", "KeepBiggest"},
    StoredSetting{Setting::Tzip,             "Tzip",             ValueKind::Text,      "",       "ComPart",       "ComPart.Text1"},
    StoredSetting{Setting::MySchool,         "MySchool",         ValueKind::Text,      "",       "ComPart",       "ComPart.Text1"},
};
// clang-format on

/// The name under which `setting` is stored.
constexpr std::string_view NameOf(Setting setting) { return stored_settings[static_cast<std::size_t>(setting)].name; }

/// The stored text of `setting`; empty when there is none.
std::string ReadSetting(Setting setting);

/// The stored text of `setting`, or else what the table says for a missing one.
std::string ReadSettingOrDefault(Setting setting);

/// Stores `text` for `setting`.
void SaveSetting(Setting setting, std::string_view text);

}  // namespace borvane
