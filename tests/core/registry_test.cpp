#include "core/registry.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "support/rig.h"

namespace borvane {
namespace {

constexpr std::string_view run_key = R"(Software\Microsoft\Windows\CurrentVersion\Run)";

std::string Read(std::string_view name) { return ReadRegValue(HKEY_CURRENT_USER, program_key, name); }

TEST(ReadRegValue, ReturnsTheTextUnchanged) {
  Rig rig;
  rig.store()["EnableLog"] = " 1";
  rig.store()["LogCity"] = "Castaic; \"CA\" ";
  EXPECT_EQ(Read("EnableLog"), " 1");
  EXPECT_EQ(Read("LogCity"), "Castaic; \"CA\" ");
}

TEST(ReadRegValue, ReturnsAnEmptyTextWhenTheKeyOrTheValueIsMissing) {
  Rig rig;
  rig.store()["Area"] = "Los Angeles";
  EXPECT_EQ(Read("Refresh"), "");
  EXPECT_EQ(ReadRegValue(HKEY_CURRENT_USER, run_key, "Area"), "");
}

TEST(ReadRegValue, ReturnsAnEmptyTextForAValueWithoutLength) {
  Rig rig;
  rig.store()["Area"] = "";
  EXPECT_EQ(Read("Area"), "");
}

TEST(ReadRegValue, ReturnsANumberAsDecimalText) {
  Rig rig;
  rig.store()["Refresh"] = std::uint32_t{60};
  EXPECT_EQ(Read("Refresh"), "60");
  rig.store()["Refresh"] = std::uint32_t{2'147'483'648U};
  EXPECT_EQ(Read("Refresh"), "2147483648") << "such a number has no sign";
  rig.store()["Refresh"] = std::uint32_t{4'294'967'295U};
  EXPECT_EQ(Read("Refresh"), "4294967295");
}

TEST(ReadRegValue, ReturnsAnEmptyTextForAValueOfAnotherType) {
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

TEST(ReadRegValue, DoesNotTrapAForeignException) {
  Rig rig;
  rig.store().BreakReads();
  EXPECT_THROW(Read("Refresh"), std::length_error);
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

TEST(SaveRegValue, ReplacesAnyKindOfValueWithText) {
  Rig rig;
  rig.store()["Refresh"] = std::uint32_t{60};
  SaveRegValue(HKEY_CURRENT_USER, program_key, "Refresh", "");
  EXPECT_EQ(rig.store()["Refresh"], "");
}

TEST(SaveRegValue, IsSilentWhenTheStoreRefusesTheWrite) {
  Rig rig;
  rig.store()["Area"] = "Los Angeles";
  rig.store().RefuseWrites();
  EXPECT_NO_THROW(SaveRegValue(HKEY_CURRENT_USER, program_key, "Area", "Seattle Area"));
  EXPECT_EQ(rig.store()["Area"], "Los Angeles");
}

}  // namespace
}  // namespace borvane
