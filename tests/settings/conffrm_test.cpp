#include <set>
#include <string>

#include <gtest/gtest.h>

#include "core/program.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

TEST(SettingsForm, HasItsDesignValues) {
  Rig rig;
  EXPECT_EQ(conffrm->Caption(), "Settings");
  EXPECT_EQ(conffrm->border(), BorderStyle::FixedDialog);
  EXPECT_EQ(conffrm->Left(), (1280 * 15 - conffrm->Width()) / 2) << "the middle of the first screen";
  EXPECT_EQ(conffrm->Top(), (1024 * 15 - conffrm->Height()) / 2);
  EXPECT_EQ(conffrm->ScaleWidth(), 5790);
  EXPECT_EQ(conffrm->ScaleHeight(), 6030);
  EXPECT_EQ(conffrm->Combo2.Text(), "");
  EXPECT_EQ(conffrm->Combo2.ToolTipText(), "Area Select");
  EXPECT_EQ(conffrm->Text2.Text(), "700");
  EXPECT_EQ(conffrm->Text2.ToolTipText(), "Refresh Rate: 60 for each minute");
  EXPECT_EQ(conffrm->Text1.Text(), "3.5");
  EXPECT_EQ(conffrm->Text1.ToolTipText(), "Alert if Quake is box Val or higher");
  EXPECT_EQ(conffrm->Text3.Text(), "");
  EXPECT_EQ(conffrm->Text4.Text(), "");
  EXPECT_EQ(conffrm->Text5(0).Text(), "10");
  EXPECT_EQ(conffrm->Text5(1).Text(), "7");
  EXPECT_EQ(conffrm->Text6(0).Text(), "");
  EXPECT_EQ(conffrm->Text6(1).Text(), "");
  EXPECT_EQ(conffrm->Text7.Text(), "900");
  EXPECT_EQ(conffrm->Text8.Text(), "");
  EXPECT_EQ(conffrm->Combo1.Text(), "");
  EXPECT_EQ(conffrm->Combo1.ListCount(), 2);
  EXPECT_EQ(conffrm->Combo1.List(0), "Keep highest Magnitude");
  EXPECT_EQ(conffrm->Combo1.List(1), "Update on refresh!");
  EXPECT_EQ(conffrm->Picture1(0).BackColor(), 0x0000FFu);
  EXPECT_EQ(conffrm->Picture1(1).BackColor(), 0x00C000u);
  EXPECT_EQ(conffrm->Picture1(2).BackColor(), 0xFFFFFFu);
  EXPECT_EQ(conffrm->Timer1.Interval(), 200);
  EXPECT_FALSE(conffrm->Timer1.Enabled());
  EXPECT_EQ(conffrm->Label5.FontName(), "Arial");
}

TEST(SettingsForm, HasItsDesignCaptions) {
  Rig rig;
  const char *labels[] = {"Zone",       "Refresh ",  "Sec.",      "Alert on Mag >=",
                          "Magnitude",  "Bar Top",   "Bar Left",  "Alarm Tone",
                          "Repetition", "Latitude ", "Longitude", "Location",
                          "zone/city",  "Color #: ", "",          "Strongest Mag display"};
  ASSERT_EQ(conffrm->Label1.Count(), static_cast<int>(std::size(labels)));
  for (int i = 0; i < conffrm->Label1.Count(); ++i)
    EXPECT_EQ(conffrm->Label1(i).Caption(), labels[i]) << i;
  EXPECT_EQ(conffrm->Check4.Caption(), "Lat/Long");
  EXPECT_EQ(conffrm->Label5.Caption(), "Select zone OR position method");
  EXPECT_EQ(conffrm->Check6.Caption(), "Save size and position");
  EXPECT_EQ(conffrm->Check3.Caption(), "Colorize Bar tags");
  EXPECT_EQ(conffrm->Label3.Caption(), "Time");
  EXPECT_EQ(conffrm->Label4.Caption(), "On edge detection");
  EXPECT_EQ(conffrm->Option1(0).Caption(), "Move");
  EXPECT_EQ(conffrm->Option1(1).Caption(), "Hide");
  EXPECT_EQ(conffrm->Option1(2).Caption(), "Ignore");
  EXPECT_EQ(conffrm->Check1.Caption(), "Log");
  EXPECT_EQ(conffrm->Option2(0).Caption(), "All");
  EXPECT_EQ(conffrm->Option2(1).Caption(), "Only for");
  EXPECT_EQ(conffrm->Check7.Caption(), "Start with Windows");
  EXPECT_EQ(conffrm->Check5.Caption(), "World Snapshot");
  EXPECT_EQ(conffrm->Check2.Caption(), "Sound is ");
  EXPECT_EQ(conffrm->Label2.Caption(), "Disabled");
  EXPECT_EQ(conffrm->Command1(0).Caption(), "Test");
  EXPECT_EQ(conffrm->Command1(1).Caption(), "Reset");
  EXPECT_EQ(conffrm->Command2.Caption(), "Close");
}

void AddDisabled(const Container &container, std::set<std::string> &names) {
  for (const Control *control : container.children()) {
    if (!control->Enabled())
      names.insert(control->FullName());
    if (const auto *inner = dynamic_cast<const Container *>(control))
      AddDisabled(*inner, names);
  }
}

TEST(SettingsForm, DisablesByDesignWhatAnotherControlEnablesAndOneLabelAndNothingElse) {
  Rig rig;
  std::set<std::string> disabled;
  AddDisabled(*conffrm, disabled);
  EXPECT_EQ(disabled, (std::set<std::string>{"Label1(10)", "Label1(6)", "Label1(9)", "Option2(0)", "Option2(1)",
                                             "Text6(0)", "Text6(1)", "Timer1"}));
}

TEST(SettingsForm, TicksByDesignOnlyTheSnapshotAndTheMove) {
  Rig rig;
  for (const CheckBox *box :
       {&conffrm->Check1, &conffrm->Check2, &conffrm->Check3, &conffrm->Check4, &conffrm->Check6, &conffrm->Check7})
    EXPECT_EQ(box->Value(), 0) << box->FullName();
  EXPECT_EQ(conffrm->Check5.Value(), 1);
  EXPECT_TRUE(conffrm->Option1(0).Value());
  EXPECT_FALSE(conffrm->Option1(1).Value());
  EXPECT_FALSE(conffrm->Option1(2).Value());
  EXPECT_FALSE(conffrm->Option2(0).Value());
  EXPECT_FALSE(conffrm->Option2(1).Value());
}

TEST(Check4, EnablesTheCoordinatesWhileItIsTicked) {
  RecordProperty("quirk", "coordinates-and-snapshot-last-one-run");
  WatchingRig rig;
  const auto are_enabled = [] {
    const bool enabled = conffrm->Text6(0).Enabled();
    EXPECT_EQ(conffrm->Text6(1).Enabled(), enabled);
    EXPECT_EQ(conffrm->Label1(9).Enabled(), enabled);
    EXPECT_EQ(conffrm->Label1(10).Enabled(), enabled);
    return enabled;
  };
  rig.tick_off(conffrm->Check4, 1);
  EXPECT_TRUE(are_enabled());
  rig.tick_off(conffrm->Check4, 2);
  EXPECT_FALSE(are_enabled());
  rig.tick_off(conffrm->Check4, 1);
  rig.tick_off(conffrm->Check4, 0);
  EXPECT_FALSE(are_enabled());
  EXPECT_TRUE(rig.trace({"write"}).empty()) << "none of this is stored";
}

TEST(SettingsForm, IsReadHalfTypedByARefresh) {
  WatchingRig rig;
  rig.type(conffrm->Text1, "4.");
  rig.refresh();
  EXPECT_EQ(Module1->AlertThreshold, 4.0F);
}

TEST(SettingsForm, ServesAsTheLiveSettingsWhileHidden) {
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, 2);
  rig.choose(conffrm->Combo2, "Seattle Area");
  rig.click(conffrm->Command2);
  rig.key('R');
  EXPECT_EQ(rig.trace({"request"}).back(),
            "request http://pacificnorthwest.localhost:17650/recenteqs/Quakes/quakes0.html");
}

TEST(SettingsForm, ClosesLikeItsButtonByItsCloseBox) {
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, 2);
  rig.happen([] { program().Unload(*conffrm, UnloadMode::CloseBox); });
  EXPECT_NE(conffrm.IfLoaded(), nullptr);
  EXPECT_FALSE(conffrm->IsShown());
  EXPECT_EQ(frmRecords->Toolbar1.Buttons(2).Value(), 0);
  EXPECT_EQ(rig.store()["EdgeDetect"], " 0");
}

TEST(SettingsForm, StaysOpenAtItsCloseBoxWhileCloseIsDisabled) {
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, 2);
  conffrm->Command2.Enabled = false;
  rig.happen([] { program().Unload(*conffrm, UnloadMode::CloseBox); });
  EXPECT_TRUE(conffrm->IsShown());
  EXPECT_FALSE(rig.store().Has("EdgeDetect"));
}

}  // namespace
}  // namespace borvane
