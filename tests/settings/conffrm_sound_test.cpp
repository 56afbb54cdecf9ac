#include <gtest/gtest.h>

#include "core/program.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

TEST(SoundBox, IsShownAndStoredWhenTheMouseIsReleased) {
  WatchingRig rig;
  rig.watch(conffrm->Label2, conffrm->Label2.Caption, "Label2");
  rig.tick_off(conffrm->Check2, 1);
  rig.release_mouse_on(conffrm->Check2);
  rig.tick_off(conffrm->Check2, 0);
  rig.release_mouse_on(conffrm->Check2);
  EXPECT_EQ(rig.trace(), (Lines{"set Label2=Enabled", "write EnableAlarmSound=1", "set Label2=Disabled",
                                "write EnableAlarmSound=0"}));
}

TEST(SoundBox, IsDisabledInItsThirdState) {
  WatchingRig rig;
  rig.tick_off(conffrm->Check2, 2);
  rig.release_mouse_on(conffrm->Check2);
  EXPECT_EQ(conffrm->Label2.Caption(), "Disabled");
  EXPECT_EQ(rig.store()["EnableAlarmSound"], "2");
}

TEST(SoundBox, SaysDisabledAfterAStartWithTheSoundOn) {
  RecordProperty("quirk", "sound-label-waits-for-the-mouse");
  Rig rig;
  rig.store()["EnableAlarmSound"] = "1";
  rig.start();
  EXPECT_EQ(conffrm->Check2.Value(), 1);
  EXPECT_EQ(conffrm->Label2.Caption(), "Disabled");
}

TEST(AlarmBoxes, AreStoredAtEachChange) {
  WatchingRig rig;
  rig.type(conffrm->Text5(0), "1");
  rig.type(conffrm->Text5(0), "12");
  rig.type(conffrm->Text5(1), "");
  rig.type(conffrm->Text5(1), "x");
  rig.leave(conffrm->Text5(1));
  EXPECT_EQ(rig.trace(),
            (Lines{"write AlarmTone=1", "write AlarmTone=12", "write AlarmPeriod=", "write AlarmPeriod=x"}));
}

TEST(AlarmBoxes, AreStoredBeyondSixteenBitsToo) {
  WatchingRig rig;
  rig.type(conffrm->Text5(0), "40000");
  rig.type(conffrm->Text5(1), "1e9");
  EXPECT_EQ(rig.trace(), (Lines{"write AlarmTone=40000", "write AlarmPeriod=1e9"}));
  EXPECT_EQ(rig.end_status(), std::nullopt);
}

TEST(ResetButton, RestoresAndStoresBothAlarmBoxes) {
  WatchingRig rig;
  rig.type(conffrm->Text5(0), "12");
  rig.type(conffrm->Text5(1), "0");
  rig.clear_trace();
  rig.click(conffrm->Command1(1));
  EXPECT_EQ(conffrm->Text5(0).Text(), "10");
  EXPECT_EQ(conffrm->Text5(1).Text(), "7");
  EXPECT_EQ(rig.trace(), (Lines{"write AlarmTone=10", "write AlarmPeriod=7"}));
}

TEST(TestButton, SoundsTheAlarmWhetherTheSoundIsOnOrOff) {
  for (const int sound : {0, 1}) {
    WatchingRig rig;
    conffrm->Check2.Value = sound;
    rig.type(conffrm->Text5(1), "1");
    rig.clear_trace();
    rig.click(conffrm->Command1(0));
    const Lines tones = rig.trace({"beep"});
    ASSERT_EQ(tones.size(), 91u) << sound;
    EXPECT_EQ(tones.front(), "beep 100 10");
    EXPECT_TRUE(rig.trace({"write"}).empty());
  }
}

}  // namespace
}  // namespace borvane
