#include <stdexcept>

#include <gtest/gtest.h>

#include "core/program.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

TEST(RecordsForm, HasItsDesignTextsAndGeometry) {
  Rig rig;
  struct Place {
    Control &control;
    std::string text;
    float left, top, width, height;
  };
  RecordsForm &form = *frmRecords;
  const Place places[] = {
      {form.Frame1, form.Frame1.Caption() + "| Current Map ", 80, 0, 10920, 510},
      {form.Frame3, form.Frame3.Caption() + "| Last Activity ", 80, 540, 10920, 750},
      {form.ListView2, "|", 90, 195, 10620, 465},
      {form.Label4, form.Label4.Caption() + "|Global Monitor:", 135, 1350, 1260, 225},
      {form.Label3, form.Label3.Caption() + "|N/A", 1470, 1370, 9180, 195},
      {form.Image1, "|", 6705, 1470, 3930, 465},
      {form.Frame4, form.Frame4.Caption() + "|", 120, 1965, 750, 5970},
      {form.Toolbar1, "|", 60, 300, 630, 2910},
      {form.Label5, form.Label5.Caption() + "|Logs", 90, 3525, 510, 225},
      {form.Label6, form.Label6.Caption() + "|Version", 90, 4380, 525, 240},
      {form.Label7, form.Label7.Caption() + "|Help", 90, 3960, 495, 195},
      {form.Label8, form.Label8.Caption() + "|Refresh", 90, 4815, 600, 195},
      {form.Frame2, form.Frame2.Caption() + "| History ", 930, 1965, 9690, 5970},
      {form.ListView1, "|", 180, 315, 9285, 5460},
      {form.Label9, form.Label9.Caption() + "|", 165, 1740, 45, 180},
      {form.Label10, form.Label10.Caption() + "|[ ]", 10605, 7680, 240, 195},
  };
  for (const Place &place : places) {
    const std::string name = place.control.FullName();
    const std::size_t bar = place.text.find('|');
    EXPECT_EQ(place.text.substr(0, bar), place.text.substr(bar + 1)) << name;
    EXPECT_EQ(place.control.Left(), place.left) << name;
    EXPECT_EQ(place.control.Top(), place.top) << name;
    EXPECT_EQ(place.control.Width(), place.width) << name;
    EXPECT_EQ(place.control.Height(), place.height) << name;
  }
}

TEST(RecordsForm, HidesAndDisablesByDesignWhatComesLater) {
  Rig rig;
  EXPECT_EQ(frmRecords->Caption(), "Borvane - Last Events");
  EXPECT_FALSE(frmRecords->Label3.Visible());
  EXPECT_FALSE(frmRecords->Label9.Visible());
  EXPECT_FALSE(frmRecords->Label10.Visible());
  EXPECT_TRUE(frmRecords->Image1.Visible());
  EXPECT_FALSE(frmRecords->Label5.Enabled());
  EXPECT_FALSE(frmRecords->Label8.Enabled());
  EXPECT_FALSE(frmRecords->Timer1.Enabled());
  EXPECT_EQ(&frmRecords->ListView2.container(), &frmRecords->Frame3);
  EXPECT_EQ(&frmRecords->ListView1.container(), &frmRecords->Frame2);
  EXPECT_EQ(&frmRecords->Toolbar1.container(), &frmRecords->Frame4);
}

TEST(RecordsForm, HasItsLinksInTheLeftColumnAndItsValuesInTheUpperFrame) {
  Rig rig;
  for (const Label *link : {&frmRecords->Label5, &frmRecords->Label6, &frmRecords->Label7, &frmRecords->Label8})
    EXPECT_EQ(&link->container(), &frmRecords->Frame4) << link->FullName();
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(&frmRecords->Label1(i).container(), &frmRecords->Frame1) << i;
    EXPECT_EQ(&frmRecords->Label2(i).container(), &frmRecords->Frame1) << i;
    EXPECT_EQ(frmRecords->Label2(i).Top(), frmRecords->Label1(i).Top()) << i;
    EXPECT_GE(frmRecords->Label2(i).Left(), frmRecords->Label1(i).Left() + frmRecords->Label1(i).Width()) << i;
  }
}

TEST(RecordsForm, NamesItsFourValues) {
  Rig rig;
  EXPECT_EQ(frmRecords->Label1(0).Caption(), "City:");
  EXPECT_EQ(frmRecords->Label1(1).Caption(), "Latitude:");
  EXPECT_EQ(frmRecords->Label1(2).Caption(), "Longitude:");
  EXPECT_EQ(frmRecords->Label1(3).Caption(), "Last change:");
}

TEST(RecordsForm, HasFourPanelsOfWhichTheLastIsNeverWritten) {
  WatchingRig rig;
  const float widths[] = {1840, 4440, 4440, 1440};
  ASSERT_EQ(frmRecords->StatusBar1.PanelCount(), 4);
  for (int panel = 1; panel <= 4; ++panel)
    EXPECT_EQ(frmRecords->StatusBar1.Panels(panel).Width, widths[panel - 1]);
  rig.press(frmRecords->Toolbar1, 1);
  rig.key('R');
  rig.key('F');
  EXPECT_EQ(frmRecords->StatusBar1.Panels(4).Text(), "");
}

TEST(RecordsForm, HasTwoStateButtonsWhereAStateIsKept) {
  Rig rig;
  ASSERT_EQ(frmRecords->Toolbar1.ButtonCount(), 5);
  for (int button = 1; button <= 5; ++button) {
    EXPECT_EQ(frmRecords->Toolbar1.Buttons(button).TwoState, button <= 2) << button;
    EXPECT_EQ(frmRecords->Toolbar1.Buttons(button).Enabled(), button != 3 && button != 4) << button;
    EXPECT_EQ(frmRecords->Toolbar1.Buttons(button).Value(), 0) << button;
  }
}

TEST(RecordsForm, LoadRunsItsStepsInOrder) {
  Rig rig;
  rig.screen().on_load = [&](FormBase &form) {
    if (auto *records = dynamic_cast<RecordsForm *>(&form)) {
      rig.watch_rows(records->ListView2, "ListView2");
      rig.watch(records->Label2(3), records->Label2(3).Caption, "Label2(3)");
      rig.watch(records->Timer1, records->Timer1.Interval, "Timer1");
      rig.watch(records->StatusBar1.Panels(3), records->StatusBar1.Panels(3).Text, "Panels(3)");
      records->ListView2.ListItems.Clear();
      EXPECT_EQ(Module1->LastAlertTime, "");
    }
  };
  rig.happen([] { frmRecords->Label4.Caption(); });
  EXPECT_EQ(rig.trace(),
            (Lines{"load frmRecords", "rows ListView2 cleared", "rows ListView2 1 added", "set Label2(3)=N/A",
                   "load conffrm", "set Timer1=700", "set Panels(3)=Auto Refresh Off"}));
  EXPECT_NE(Module1->LastAlertTime, "");
}

TEST(RecordsForm, LoadReadsTheIntervalFromTheSettingsBox) {
  Rig rig;
  conffrm->Text2.Text = "1234.5 ms";
  EXPECT_EQ(frmRecords->Timer1.Interval(), 1234);
}

TEST(RecordsForm, LoadRoundsAHalfOfTheIntervalToEven) {
  Rig rig;
  conffrm->Text2.Text = "1235.5";
  EXPECT_EQ(frmRecords->Timer1.Interval(), 1236);
}

TEST(RecordsForm, LoadLeavesTheListAndItsColumnsAlone) {
  Rig rig;
  struct Watcher : ListWatcher {
    int changes = 0;
    void RowAdded(int /*row*/) override { ++changes; }
    void RowsMoved() override { ++changes; }
    void RowChanged(int /*row*/) override { ++changes; }
    void RowsCleared() override { ++changes; }
    void ColumnsChanged() override { ++changes; }
  } watcher;
  rig.screen().on_load = [&](FormBase &form) {
    if (auto *records = dynamic_cast<RecordsForm *>(&form))
      records->ListView1.WatchRows(&watcher);
  };
  rig.start();
  EXPECT_EQ(watcher.changes, 0);

  frmRecords->ListView1.ColumnHeaders.Clear();
  EXPECT_EQ(watcher.changes, 1) << "the watcher sees nothing";
  frmRecords->ListView1.WatchRows(nullptr);
}

// Resize.

TEST(RecordsForm, KeepsItsDesignWhereItsSizeIsTheDesignSize) {
  Rig rig;
  rig.start();
  EXPECT_EQ(frmRecords->ScaleWidth(), 11025);
  EXPECT_EQ(frmRecords->ScaleHeight(), 8325);
  EXPECT_EQ(frmRecords->Frame2.Width(), 9690);
  EXPECT_EQ(frmRecords->Frame2.Height(), 5970);
}

TEST(RecordsForm, LaysItselfOutByItsSize) {
  Rig rig;
  rig.start();
  rig.happen([] { frmRecords->SetSize(15120, 10405); });
  EXPECT_EQ(frmRecords->Frame2.Width(), 15000 - 930 - 405);
  EXPECT_EQ(frmRecords->ListView1.Width(), 13665 - 180 - 220);
  EXPECT_EQ(frmRecords->Frame1.Width(), 14900);
  EXPECT_EQ(frmRecords->Frame3.Width(), 14900);
  EXPECT_EQ(frmRecords->ListView2.Width(), 14700);
  EXPECT_EQ(frmRecords->Image1.Left(), 15120 - 3930 - 800);
  EXPECT_EQ(frmRecords->Frame2.Height(), 10405 - 1965 - 375 - 420);
  EXPECT_EQ(frmRecords->Frame4.Height(), 7645);
  EXPECT_EQ(frmRecords->ListView1.Height(), 7645 - 315 - 200);
}

TEST(RecordsForm, MovesNothingElse) {
  Rig rig;
  rig.start();
  rig.happen([] { frmRecords->SetSize(15120, 10405); });
  EXPECT_EQ(frmRecords->Label3.Left(), 1470);
  EXPECT_EQ(frmRecords->Label3.Width(), 9180);
  EXPECT_EQ(frmRecords->Label9.Top(), 1740);
  EXPECT_EQ(frmRecords->Label10.Left(), 10605);
  EXPECT_EQ(frmRecords->Toolbar1.Height(), 2910);
}

TEST(RecordsForm, SkipsTheStepsAfterARefusedSize) {
  RecordProperty("quirk", "tiny-window-keeps-its-layout");
  Rig rig;
  rig.start();
  rig.happen([] { frmRecords->SetSize(1400, 300); });
  EXPECT_EQ(rig.end_status(), std::nullopt);
  EXPECT_EQ(frmRecords->Frame2.Width(), 9690) << "1280 - 930 - 405 is refused";
  EXPECT_EQ(frmRecords->Frame1.Width(), 10925) << "and nothing follows";

  rig.happen([] { frmRecords->SetSize(1600, 300); });
  EXPECT_EQ(frmRecords->Frame2.Width(), 145);
  EXPECT_EQ(frmRecords->ListView1.Width(), 9290) << "145 - 180 - 220 is refused";
  EXPECT_EQ(frmRecords->Frame1.Width(), 10925);

  rig.happen([] { frmRecords->SetSize(3000, 300); });
  EXPECT_EQ(frmRecords->ListView1.Width(), 1145);
  EXPECT_EQ(frmRecords->Image1.Left(), 3000 - 3930 - 800) << "a negative left edge is not refused";
  EXPECT_EQ(frmRecords->Frame2.Height(), 5970) << "300 - 1965 - 375 - 420 is refused";

  rig.happen([] { frmRecords->SetSize(3000, 2800); });
  EXPECT_EQ(frmRecords->Frame2.Height(), 40);
  EXPECT_EQ(frmRecords->Frame4.Height(), 40);
  EXPECT_EQ(frmRecords->ListView1.Height(), 5455) << "40 - 315 - 200 is refused";
}

TEST(RecordsForm, ResizeDoesNotTrapAForeignException) {
  Rig rig;
  rig.start();
  struct Breaker : PropertyWatcher {
    void PropertyChanged(const PropertyBase & /*property*/) override { throw std::length_error("broken"); }
  } breaker;
  frmRecords->Frame2.Watch(&breaker);
  rig.happen([] { frmRecords->SetSize(15120, 10405); });
  frmRecords->Frame2.Watch(nullptr);
  EXPECT_EQ(rig.trace({"error", "end"}), (Lines{"error report 0 broken", "end 1"}));
}

TEST(RecordsForm, AcceptsASizeOfZero) {
  Rig rig;
  rig.start();
  rig.happen([] { frmRecords->SetSize(120 + 930 + 405, 300); });
  EXPECT_EQ(frmRecords->Frame2.Width(), 0);
  EXPECT_EQ(frmRecords->ListView1.Width(), 9290) << "0 - 180 - 220 is refused";
}

TEST(RecordsForm, RecoversWithTheNextResize) {
  Rig rig;
  rig.start();
  rig.happen([] { frmRecords->SetSize(100, 50); });
  rig.happen([] { frmRecords->SetSize(11145, 8730); });
  EXPECT_EQ(frmRecords->Frame2.Width(), 9690);
  EXPECT_EQ(frmRecords->ListView1.Height(), 5455);
}

// Closing.

TEST(RecordsForm, IsHiddenByItsCloseBoxAndStaysLoaded) {
  RecordProperty("quirk", "closing-only-hides");
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, 1);
  rig.happen([] { program().Unload(*frmRecords, UnloadMode::CloseBox); });
  EXPECT_NE(frmRecords.IfLoaded(), nullptr);
  EXPECT_FALSE(frmRecords->IsShown());
  EXPECT_EQ(rig.end_status(), std::nullopt);
  EXPECT_TRUE(frmRecords->Timer1.IsCounting());
  EXPECT_TRUE(frmRecords->Timer3.IsCounting());
  rig.clear_trace();
  Module1->RefreshCount = 700;
  rig.tick(frmRecords->Timer1);
  EXPECT_EQ(rig.fetches(), 1);
}

TEST(RecordsForm, ReadsThePageThatArrivesWhileItIsHidden) {
  WatchingRig rig;
  rig.during_request(los_angeles, [] { program().Unload(*frmRecords, UnloadMode::CloseBox); });
  rig.press(frmRecords->Toolbar1, 1);
  EXPECT_FALSE(frmRecords->IsShown());
  EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), 1);
  EXPECT_EQ(frmRecords->Caption(), "2.0 - Borvane - Last Events");
}

}  // namespace
}  // namespace borvane
