#include "core/registry.h"

#include <gtest/gtest.h>

#include "settings/values.h"
#include "support/rig.h"

namespace borvane {
namespace {

constexpr std::string_view run_key = R"(Software\Microsoft\Windows\CurrentVersion\Run)";

std::string Read(std::string_view name) { return ReadRegValue(HKEY_CURRENT_USER, program_key, name); }

TEST(ReadRegValue, GivesTheTextAsItStands) {
  Rig rig;
  rig.store()["EnableLog"] = " 1";
  rig.store()["LogCity"] = "Castaic; \"CA\" ";
  EXPECT_EQ(Read("EnableLog"), " 1");
  EXPECT_EQ(Read("LogCity"), "Castaic; \"CA\" ");
}

TEST(ReadRegValue, GivesAnEmptyTextWhenTheKeyOrTheValueIsMissing) {
  Rig rig;
  rig.store()["Area"] = "Los Angeles";
  EXPECT_EQ(Read("Refresh"), "");
  EXPECT_EQ(ReadRegValue(HKEY_CURRENT_USER, run_key, "Area"), "");
}

TEST(ReadRegValue, GivesAnEmptyTextForAValueWithoutLength) {
  Rig rig;
  rig.store()["Area"] = "";
  EXPECT_EQ(Read("Area"), "");
}

TEST(ReadRegValue, GivesANumberAsDecimalText) {
  Rig rig;
  rig.store()["Refresh"] = std::uint32_t{60};
  EXPECT_EQ(Read("Refresh"), "60");
  rig.store()["Refresh"] = std::uint32_t{2'147'483'648U};
  EXPECT_EQ(Read("Refresh"), "2147483648") << "such a number has no sign";
  rig.store()["Refresh"] = std::uint32_t{4'294'967'295U};
  EXPECT_EQ(Read("Refresh"), "4294967295");
}

TEST(ReadRegValue, GivesAnEmptyTextForAValueOfAnotherType) {
  Rig rig;
  rig.store()["Refresh"] = OtherValue{};
  EXPECT_EQ(Read("Refresh"), "");
}

TEST(ReadRegValue, TrapsAFailureOfTheStore) {
  Rig rig;
  rig.store()["Refresh"] = "60";
  rig.store().FailReads(7);
  EXPECT_EQ(Read("Refresh"), "");
}

TEST(SaveRegValue, WritesOneValue) {
  Rig rig;
  SaveRegValue(HKEY_CURRENT_USER, program_key, "Area", "Los Angeles");
  EXPECT_EQ(rig.trace(), Lines{"write Area=Los Angeles"});
  EXPECT_EQ(Read("Area"), "Los Angeles");
}

TEST(SaveRegValue, WritesOutsideTheProgramsKey) {
  Rig rig;
  SaveRegValue(HKEY_CURRENT_USER, run_key, "Borvane", "C:\\Borvane\\borvane.exe");
  EXPECT_EQ(ReadRegValue(HKEY_CURRENT_USER, run_key, "Borvane"), "C:\\Borvane\\borvane.exe");
  EXPECT_FALSE(rig.store().Has("Borvane"));
}

TEST(SaveRegValue, PutsTextInPlaceOfAnyKindOfValue) {
  Rig rig;
  rig.store()["Refresh"] = std::uint32_t{60};
  SaveRegValue(HKEY_CURRENT_USER, program_key, "Refresh", "");
  EXPECT_EQ(rig.store()["Refresh"], "");
}

TEST(SaveRegValue, SaysNothingWhenTheStoreTakesNothing) {
  Rig rig;
  rig.store()["Area"] = "Los Angeles";
  rig.store().RefuseWrites();
  EXPECT_NO_THROW(SaveRegValue(HKEY_CURRENT_USER, program_key, "Area", "Seattle Area"));
  EXPECT_EQ(rig.store()["Area"], "Los Angeles");
}

TEST(StoredSettings, StandInTheOrderOfTheirNumbersWithoutARepeatedName) {
  for (std::size_t i = 0; i < stored_settings.size(); ++i) {
    EXPECT_EQ(static_cast<std::size_t>(stored_settings[i].setting), i) << stored_settings[i].name;
    for (std::size_t j = 0; j < i; ++j)
      EXPECT_NE(stored_settings[i].name, stored_settings[j].name);
  }
}

TEST(StoredSettings, AreReadAndSavedByTheirNames) {
  Rig rig;
  SaveSetting(Setting::smBarLeft, "900");
  EXPECT_EQ(rig.store()["smBarLeft"], "900");
  EXPECT_EQ(ReadSetting(Setting::smBarLeft), "900");
  EXPECT_EQ(NameOf(Setting::noBother), "noBother");
  EXPECT_EQ(NameOf(Setting::StartWOS), "StartWOS");
}

}  // namespace
}  // namespace borvane
