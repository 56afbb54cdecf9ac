#include <gtest/gtest.h>

#include "core/program.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

constexpr std::string_view run = R"(Software\Microsoft\Windows\CurrentVersion\Run)";

/// The program that is started with the desktop; empty when none is.
std::string Entry(Rig &rig) {
  const StoredValue *value = rig.store().Get(run, "Borvane");
  return value == nullptr ? "" : std::get<std::string>(*value);
}

/// The executable in a folder, in this system's form.
std::string Executable(const std::string &folder, const std::string &name) {
#ifdef _WIN32
  return folder + "\\" + name + ".exe";
#else
  return folder + "/" + name;
#endif
}

TEST(StartWithWindows, WritesItsValueThenTheEntry) {
  WatchingRig rig;
  rig.tick_off(conffrm->Check7, 1);
  EXPECT_EQ(rig.trace(), (Lines{"write StartWOS= 1",
                                "write " + std::string(run) + "\\Borvane=" + Executable("/programs", "borvane")}));
}

TEST(StartWithWindows, DeletesTheEntryWhenItIsCleared) {
  WatchingRig rig;
  rig.tick_off(conffrm->Check7, 1);
  rig.clear_trace();
  rig.tick_off(conffrm->Check7, 0);
  EXPECT_EQ(rig.trace(), (Lines{"write StartWOS= 0", "delete " + std::string(run) + "\\Borvane"}));
  EXPECT_EQ(Entry(rig), "");
}

TEST(StartWithWindows, CountsItsThirdStateAsCleared) {
  WatchingRig rig;
  rig.tick_off(conffrm->Check7, 2);
  EXPECT_EQ(rig.trace(), (Lines{"write StartWOS= 2", "delete " + std::string(run) + "\\Borvane"}));
}

TEST(StartWithWindows, NamesTheProgramAsItIsAtThatMoment) {
  WatchingRig rig;
  rig.tick_off(conffrm->Check7, 1);
  rig.process().folder = "/moved \xE9";
  rig.process().executable_name = "quakes";
  EXPECT_EQ(Entry(rig), Executable("/programs", "borvane"));
  rig.tick_off(conffrm->Check7, 0);
  rig.tick_off(conffrm->Check7, 1);
  EXPECT_EQ(Entry(rig), Executable("/moved \xE9", "quakes"));
}

TEST(StartWithWindows, IsWrittenAgainByAStartWithTheTickedBox) {
  Rig rig;
  rig.store()["StartWOS"] = " 1";
  rig.start();
  EXPECT_EQ(conffrm->Check7.Value(), 1);
  EXPECT_EQ(Entry(rig), Executable("/programs", "borvane"));
}

TEST(StartWithWindows, IsNotTouchedByAStartWithTheClearedBox) {
  for (const char *stored : {"", " 0", "abc"}) {
    Rig rig;
    rig.store()["StartWOS"] = stored;
    rig.start();
    EXPECT_EQ(rig.trace({"delete"}), Lines()) << stored;
    EXPECT_EQ(Entry(rig), "") << stored;
  }
}

}  // namespace
}  // namespace borvane
