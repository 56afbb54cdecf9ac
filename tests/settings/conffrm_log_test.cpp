#include <gtest/gtest.h>

#include "core/program.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

TEST(LogBox, EnablesItsOptionsWhileItIsTicked) {
  WatchingRig rig;
  const auto are_enabled = [] {
    const bool enabled = conffrm->Option2(0).Enabled();
    EXPECT_EQ(conffrm->Option2(1).Enabled(), enabled);
    EXPECT_EQ(conffrm->Text8.Enabled(), enabled);
    return enabled;
  };
  rig.tick_off(conffrm->Check1, 1);
  EXPECT_TRUE(are_enabled());
  rig.tick_off(conffrm->Check1, 2);
  EXPECT_FALSE(are_enabled());
  rig.tick_off(conffrm->Check1, 1);
  rig.tick_off(conffrm->Check1, 0);
  EXPECT_FALSE(are_enabled());
  EXPECT_EQ(rig.trace(),
            (Lines{"write EnableLog= 1", "write EnableLog= 2", "write EnableLog= 1", "write EnableLog= 0"}));
}

TEST(LogBox, EnablesThenStoresThenLooksAtClose) {
  Rig rig;
  rig.store()["LogAll"] = "False";
  rig.start();
  rig.clear_trace();
  rig.watch(conffrm->Option2(0), conffrm->Option2(0).Enabled, "All");
  rig.watch(conffrm->Option2(1), conffrm->Option2(1).Enabled, "Only for");
  rig.watch(conffrm->Text8, conffrm->Text8.Enabled, "place");
  rig.watch(conffrm->Command2, conffrm->Command2.Enabled, "Close");
  rig.tick_off(conffrm->Check1, 1);
  EXPECT_EQ(rig.trace(), (Lines{"set All=true", "set Only for=true", "write EnableLog= 1", "set Close=false"}));
  rig.clear_trace();
  rig.tick_off(conffrm->Check1, 0);
  EXPECT_EQ(rig.trace(),
            (Lines{"set All=false", "set Only for=false", "set place=false", "write EnableLog= 0", "set Close=true"}));
}

TEST(LogBox, LeavesThePlaceBoxEnabledUntilItsFirstClick) {
  RecordProperty("quirk", "place-box-starts-enabled");
  WatchingRig rig;
  EXPECT_FALSE(conffrm->Option2(1).Enabled());
  EXPECT_TRUE(conffrm->Text8.Enabled());
}

TEST(LogBox, DisablesCloseWhileNeitherOptionIsChosen) {
  Rig rig;
  rig.store()["LogAll"] = "False";
  rig.start();
  rig.tick_off(conffrm->Check1, 1);
  EXPECT_FALSE(conffrm->Command2.Enabled());
  rig.tick_off(conffrm->Check1, 0);
  EXPECT_TRUE(conffrm->Command2.Enabled());
  rig.tick_off(conffrm->Check1, 1);
  rig.tick_off(conffrm->Check1, 2);
  EXPECT_TRUE(conffrm->Command2.Enabled());
}

TEST(LogBox, LeavesCloseEnabledWhileAnOptionIsChosen) {
  for (const int chosen : {0, 1}) {
    WatchingRig rig;
    conffrm->Option2(chosen).Value = true;
    rig.tick_off(conffrm->Check1, 1);
    EXPECT_TRUE(conffrm->Command2.Enabled()) << chosen;
  }
}

TEST(LogOption, EnablesCloseWhenItIsChosen) {
  for (const int chosen : {0, 1}) {
    Rig rig;
    rig.store()["LogAll"] = "False";
    rig.start();
    rig.tick_off(conffrm->Check1, 1);
    rig.clear_trace();
    rig.happen([chosen] { conffrm->Option2(chosen).Value = true; });
    EXPECT_TRUE(conffrm->Command2.Enabled()) << chosen;
    EXPECT_TRUE(rig.trace().empty()) << "the choice is stored at Close";
  }
}

TEST(LogOption, LooksAtTheLogBoxOfThatMoment) {
  WatchingRig rig;
  conffrm->Command2.Enabled = false;
  rig.happen([] { conffrm->Option2(1).Value = true; });
  EXPECT_TRUE(conffrm->Command2.Enabled()) << "the log is off";
}

TEST(PlaceBox, IsStoredWhenItIsLeft) {
  WatchingRig rig;
  rig.type(conffrm->Text8, "Yucaipa; CA ");
  EXPECT_TRUE(rig.trace().empty());
  rig.leave(conffrm->Text8);
  EXPECT_EQ(rig.trace(), Lines{"write LogCity=Yucaipa; CA "});
}

/// A start with the log on and the other option stored, and the settings opened.
struct RepairRig : Rig {
  RepairRig() {
    store()["EnableLog"] = " 1";
    store()["LogAll"] = "False";
    start();
    press(frmRecords->Toolbar1, 2);
    clear_trace();
  }
};

TEST(SettingsTimer, ChoosesAllWhenNeitherOptionIsChosen) {
  RepairRig rig;
  EXPECT_FALSE(conffrm->Command2.Enabled());
  EXPECT_TRUE(conffrm->Timer1.Enabled());
  rig.tick(conffrm->Timer1);
  EXPECT_TRUE(conffrm->Option2(0).Value());
  EXPECT_FALSE(conffrm->Option2(1).Value());
  EXPECT_TRUE(conffrm->Command2.Enabled()) << "by the option's own Click";
  EXPECT_FALSE(conffrm->Timer1.Enabled());
}

TEST(SettingsTimer, LeavesAChosenOptionAloneAndStops) {
  RepairRig rig;
  conffrm->Option2(1).Value = true;
  rig.tick(conffrm->Timer1);
  EXPECT_TRUE(conffrm->Option2(1).Value());
  EXPECT_FALSE(conffrm->Timer1.Enabled());
}

TEST(SettingsTimer, GoesOnWhileTheLogIsOff) {
  RepairRig rig;
  for (const int not_ticked : {0, 2}) {
    rig.tick_off(conffrm->Check1, not_ticked);
    rig.tick(conffrm->Timer1, 3);
    EXPECT_FALSE(conffrm->Option2(0).Value());
    EXPECT_TRUE(conffrm->Timer1.Enabled());
  }
  rig.tick_off(conffrm->Check1, 1);
  rig.tick(conffrm->Timer1);
  EXPECT_TRUE(conffrm->Option2(0).Value());
}

TEST(SettingsTimer, IsStartedByEachOpening) {
  RepairRig rig;
  rig.tick(conffrm->Timer1);
  rig.click(conffrm->Command2);
  EXPECT_FALSE(conffrm->Timer1.Enabled());
  rig.press(frmRecords->Toolbar1, 2);
  EXPECT_TRUE(conffrm->Timer1.Enabled());
}

}  // namespace
}  // namespace borvane
