#include "settings/values.h"

#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "support/rig.h"

namespace borvane {
namespace {

/// All values with their names in the stores of users.
const std::pair<Setting, const char *> names[] = {
    {Setting::MacID, "MacID"},
    {Setting::StrongerDisplay, "StrongerDisplay"},
    {Setting::Grid, "Grid"},
    {Setting::RunTime, "RunTime"},
    {Setting::ad, "ad"},
    {Setting::EdgeOffset, "EdgeOffset"},
    {Setting::EdgeDetect, "EdgeDetect"},
    {Setting::Color0, "Color0"},
    {Setting::Color1, "Color1"},
    {Setting::Color2, "Color2"},
    {Setting::KeepPosition, "KeepPosition"},
    {Setting::LogCity, "LogCity"},
    {Setting::EnableLog, "EnableLog"},
    {Setting::LogAll, "LogAll"},
    {Setting::noBother, "noBother"},
    {Setting::Colorize, "Colorize"},
    {Setting::AlarmTone, "AlarmTone"},
    {Setting::AlarmPeriod, "AlarmPeriod"},
    {Setting::EnableAlarmSound, "EnableAlarmSound"},
    {Setting::Area, "Area"},
    {Setting::StartWOS, "StartWOS"},
    {Setting::Refresh, "Refresh"},
    {Setting::Alert, "Alert"},
    {Setting::BarTop, "BarTop"},
    {Setting::smBarLeft, "smBarLeft"},
    {Setting::shortTop, "shortTop"},
    {Setting::shortLeft, "shortLeft"},
    {Setting::shortWidth, "shortWidth"},
    {Setting::longTop, "longTop"},
    {Setting::longLeft, "longLeft"},
    {Setting::longWidth, "longWidth"},
    {Setting::TopForm, "TopForm"},
    {Setting::LastBig, "LastBig"},
    {Setting::BigPlace, "BigPlace"},
    {Setting::BigTime, "BigTime"},
    {Setting::BigDate, "BigDate"},
    {Setting::Tzip, "Tzip"},
    {Setting::MySchool, "MySchool"},
};

TEST(StoredSettings, HaveTheNamesInTheStoresOfUsers) {
  Rig rig;
  ASSERT_EQ(std::size(names), stored_settings.size());
  for (const auto &[setting, name] : names) {
    SaveSetting(setting, "x");
    EXPECT_EQ(rig.store()[name], "x");
    rig.store()[name] = "y";
    EXPECT_EQ(ReadSetting(setting), "y") << name;
  }
}

TEST(StoredSettings, ReadAsTheirDefaultWhenTheyAreMissingOrEmpty) {
  const std::map<std::string_view, std::string_view> defaults = {
      {"EdgeOffset", "900"}, {"EdgeDetect", "0"}, {"LogAll", "True"}};
  Rig rig;
  for (const auto &[setting, name] : names) {
    const auto row = defaults.find(name);
    const std::string_view expected = row == defaults.end() ? "" : row->second;
    EXPECT_EQ(ReadSetting(setting), expected) << name;
    rig.store()[name] = "";
    EXPECT_EQ(ReadSetting(setting), expected) << name;
  }
}

}  // namespace
}  // namespace borvane
