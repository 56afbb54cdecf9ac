#include "bars/bar_content.h"

#include <string>

#include <gtest/gtest.h>

#include "bars/paint_bar.h"
#include "support/program/bar_rig.h"

namespace borvane {
namespace {

// The screen measures 90 twips for a character and 100 for a bold one.

// The short bar.

TEST(UpdateShortBar, ShowsMagnitudePlaceAndTimeOfTheNewestEvent) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  EXPECT_EQ(Captions(bar.Label1),
            (Lines{"Mag: 2.0", "location: 4 km ( 2 mi) W of Castaic, CA", "at: 01:26:13, Wed 07"}));
}

TEST(UpdateShortBar, PutsEachLabelAHundredTwipsAfterTheNewTextInFrontOfIt) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  const float left = bar.Label1(0).Left();
  EXPECT_EQ(bar.Label1(1).Left(), left + 8 * 90 + 100);
  EXPECT_EQ(bar.Label1(2).Left(), bar.Label1(1).Left() + 39 * 90 + 100);

  frmRecords->ListView2.ListItems.SetText(1, "10.25");
  rig.happen(UpdateShortBar);
  EXPECT_EQ(bar.Label1(0).Left(), left);
  EXPECT_EQ(bar.Label1(1).Left(), left + 10 * 90 + 100);
  EXPECT_EQ(bar.Label1(2).Left(), bar.Label1(1).Left() + 39 * 90 + 100);
}

TEST(UpdateShortBar, RunsItsStepsInOrder) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  conffrm->Check3.Value = 1;
  frmRecords->ListView2.ListItems.SetText(1, "4");
  frmRecords->ListView2.ListItems.SetSubItem(1, 1, "X");
  frmRecords->ListView2.ListItems.SetSubItem(1, 2, "Y");
  for (int i = 0; i < 3; ++i) {
    const std::string name = std::to_string(i);
    rig.watch(bar.Label1(i), bar.Label1(i).ForeColor, name + ".ForeColor");
    rig.watch(bar.Label1(i), bar.Label1(i).Bold, name + ".Bold");
    rig.watch(bar.Label1(i), bar.Label1(i).Caption, name + ".Caption");
    rig.watch(bar.Label1(i), bar.Label1(i).Left, name + ".Left");
  }
  bar.Label1(0).Left = 0;
  rig.clear_trace();
  rig.happen(UpdateShortBar);
  EXPECT_EQ(rig.trace(), (Lines{"set 0.ForeColor=0", "set 0.Bold=true", "set 1.ForeColor=0", "set 1.Bold=true",
                                "set 2.ForeColor=0", "set 0.Caption=Mag: 4", "set 1.Left=700",
                                "set 1.Caption=location: X", "set 2.Left=1900", "set 2.Caption=at: Y"}));
}

TEST(UpdateShortBar, ChangesNothingWhenNothingHasChanged) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  for (int colorize : {0, 1}) {
    conffrm->Check3.Value = colorize;
    rig.happen(UpdateShortBar);
    for (int i = 0; i < 3; ++i) {
      rig.watch(bar.Label1(i), bar.Label1(i).Caption, "Caption");
      rig.watch(bar.Label1(i), bar.Label1(i).Left, "Left");
      rig.watch(bar.Label1(i), bar.Label1(i).Width, "Width");
      rig.watch(bar.Label1(i), bar.Label1(i).Bold, "Bold");
      rig.watch(bar.Label1(i), bar.Label1(i).ForeColor, "ForeColor");
    }
    rig.watch(bar, bar.Width, "bar.Width");
    rig.clear_trace();
    rig.happen(UpdateShortBar);
    EXPECT_TRUE(rig.trace().empty()) << colorize;
  }
}

TEST(UpdateShortBar, ShowsThePlaceholdersBeforeTheFirstScan) {
  Rig rig;
  rig.start();
  rig.happen(UpdateShortBar);
  EXPECT_EQ(Captions(Form1->Label1), (Lines{"Mag: Mag", "location: Area", "at: Time Recorded"}));
}

TEST(UpdateShortBar, ShowsTheNewestEventWhenTheListIsEmpty) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  BarRig::list({});
  frmRecords->ListView2.ListItems.SetText(1, "7");
  rig.tick(bar.Timer1);
  EXPECT_EQ(bar.Label1(0).Caption(), "Mag: 7");
  EXPECT_EQ(rig.end_status(), std::nullopt);
}

TEST(UpdateShortBar, EndsTheProgramWithoutTheRowThatItReads) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  const Lines captions = Captions(bar.Label1);
  conffrm->Check3.Value = 1;
  conffrm->Picture1(2).BackColor = 7;
  frmRecords->ListView2.ListItems.Clear();
  rig.happen(UpdateShortBar);
  EXPECT_EQ(rig.trace({"error"}), Lines{"error report 9 Subscript out of range"});
  EXPECT_TRUE(bar.Label1(1).Bold()) << "the labels have been painted";
  EXPECT_EQ(bar.Label1(2).ForeColor(), 7U);
  EXPECT_EQ(Captions(bar.Label1), captions);
}

TEST(UpdateShortBar, PaintsTheLabelsInTheColorsOfTheBoxesWhileTagsAreColored) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(bar.Label1(i).ForeColor(), 0x80000013U);
    conffrm->Picture1(i).BackColor = static_cast<Color>(i + 1);
  }
  conffrm->Check3.Value = 1;
  rig.happen(UpdateShortBar);
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(bar.Label1(i).ForeColor(), static_cast<Color>(i + 1));
  EXPECT_TRUE(bar.Label1(0).Bold());
  EXPECT_TRUE(bar.Label1(1).Bold());
  EXPECT_EQ(bar.Label1(1).Left(), bar.Label1(0).Left() + 8 * 100 + 100) << "widths are those of the new weight";
}

TEST(UpdateShortBar, PaintsLabelsBlackForStoredColorsThatAreNoCodes) {
  Rig rig;
  rig.store()["Color0"] = "99";
  rig.store()["Color1"] = "x";
  rig.store()["Color2"] = "12";
  rig.store()["Colorize"] = "1";
  rig.start();
  rig.happen(UpdateShortBar);
  EXPECT_EQ(Form1->Label1(0).ForeColor(), 0U);
  EXPECT_EQ(Form1->Label1(1).ForeColor(), 0U);
  EXPECT_EQ(Form1->Label1(2).ForeColor(), 0xFFA43CU);
}

TEST(UpdateShortBar, PaintsPlainLabelsInTheColorOfTheSystem) {
  for (const int value : {0, 2}) {
    BarRig rig;
    ShortBarForm &bar = rig.open_short_bar();
    conffrm->Check3.Value = 1;
    rig.happen(UpdateShortBar);
    bar.Label1(2).Bold = true;
    conffrm->Check3.Value = value;
    rig.happen(UpdateShortBar);
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(bar.Label1(i).ForeColor(), 0x80000013U) << i;
      EXPECT_FALSE(bar.Label1(i).Bold()) << i;
    }
  }
}

TEST(UpdateShortBar, LeavesTheWeightOfTheTimeAlone) {
  RecordProperty("quirk", "time-labels-are-never-bold");
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  conffrm->Check3.Value = 1;
  rig.happen(UpdateShortBar);
  EXPECT_FALSE(bar.Label1(2).Bold());
  bar.Label1(2).Bold = true;
  rig.happen(UpdateShortBar);
  EXPECT_TRUE(bar.Label1(2).Bold());
}

// The long bar.

/// The labels of the long bar, those of the newest event first.
Lines LongBarCaptions() {
  Lines captions = Captions(newTagFrm->Label1);
  const Lines strongest = Captions(newTagFrm->Label2);
  captions.insert(captions.end(), strongest.begin(), strongest.end());
  return captions;
}

/// An open long bar over a list with one row of magnitude 1, a stored event of 5.2 and labels that say what they are.
struct LongBarRig : BarRig {
  LongBarRig() {
    open_long_bar();
    store()["LastBig"] = "5.2";
    store()["BigPlace"] = "Old Town";
    store()["BigDate"] = "2001/01/01";
    store()["BigTime"] = "12:00:00";
    list({row("1", "Near")});
    for (int i = 0; i < 3; ++i) {
      newTagFrm->Label1(i).Caption = "old";
      newTagFrm->Label2(i).Caption = "old";
    }
    newTagFrm->Label1(1).Left = 0;
    clear_trace();
  }

  void update() { happen(UpdateLongBar); }
};

/// Whether the last update came to its painting.
bool WasPainted() { return newTagFrm->Label1(1).Left() != 0; }

const Lines untouched = {"old", "old", "old", "old", "old", "old"};

TEST(UpdateLongBar, ShowsTheStoredEventWhileItIsStronger) {
  LongBarRig rig;
  BarRig::list({BarRig::row("4.9", "Near")});
  rig.update();
  EXPECT_EQ(LongBarCaptions(),
            (Lines{"Last: 2.0", "location: 4 km ( 2 mi) W of Castaic, CA", "time: 2018/02/07  01:26:13, Wed 07",
                   "Strong: 5.2", "location: Old Town", "time : 2001/01/01  12:00:00"}));
  EXPECT_TRUE(WasPainted());
}

TEST(UpdateLongBar, SpellsTheTwoTimesInTwoWays) {
  RecordProperty("quirk", "two-spellings-of-time");
  LongBarRig rig;
  rig.update();
  EXPECT_EQ(newTagFrm->Label1(2).Caption().substr(0, 6), "time: ");
  EXPECT_EQ(newTagFrm->Label2(2).Caption().substr(0, 7), "time : ");
}

TEST(UpdateLongBar, ShowsTheStoredMagnitudeAsItIsStored) {
  LongBarRig rig;
  rig.store()["LastBig"] = " 05.20 ";
  rig.update();
  EXPECT_EQ(newTagFrm->Label2(0).Caption(), "Strong:  05.20 ");
}

TEST(UpdateLongBar, ShowsTheListedEventWhenTheStoredOneIsEqual) {
  LongBarRig rig;
  BarRig::list({BarRig::row("5.20", "Near", "2018/02/06", "02:00:00")});
  rig.update();
  EXPECT_EQ(Captions(newTagFrm->Label2), (Lines{"Strong: 5.2", "location: Near", "time : 2018/02/06  02:00:00"}));
}

TEST(UpdateLongBar, ComparesInSinglePrecision) {
  LongBarRig rig;
  rig.store()["LastBig"] = "5.20000001";
  BarRig::list({BarRig::row("5.2", "a"), BarRig::row("5.20000001", "b")});
  rig.update();
  EXPECT_EQ(Captions(newTagFrm->Label2), (Lines{"Strong: 5.2", "location: a", "time : 2018/02/07  01:26:13"}))
      << "in double precision the stored event or the lower row would be the strongest";

  BarRig::list({BarRig::row("5.20000001", "c")});
  rig.store()["LastBig"] = "5.2";
  rig.update();
  EXPECT_EQ(Captions(newTagFrm->Label2), (Lines{"Strong: 5.2", "location: c", "time : 2018/02/07  01:26:13"}));
}

TEST(UpdateLongBar, WritesTheListedMagnitudeAsADisplayedNumber) {
  LongBarRig rig;
  rig.store()["LastBig"] = "0";
  rig.region().SetDecimalSeparator(',');
  BarRig::list({BarRig::row(".25", "Near")});
  rig.update();
  EXPECT_EQ(newTagFrm->Label2(0).Caption(), "Strong: 0,25");
}

TEST(UpdateLongBar, TakesTheTopmostOfTheStrongestRows) {
  LongBarRig rig;
  BarRig::list({BarRig::row("1", "a"), BarRig::row("6.1", "b"), BarRig::row("6.1", "c"), BarRig::row("2", "d")});
  rig.update();
  EXPECT_EQ(newTagFrm->Label2(1).Caption(), "location: b");
}

TEST(UpdateLongBar, ReadsListedMagnitudesUpToTheFirstForeignCharacter) {
  LongBarRig rig;
  rig.store()["LastBig"] = "4";
  BarRig::list({BarRig::row("abc", "a"), BarRig::row("M 9", "b"), BarRig::row("4.1*", "c"), BarRig::row("-5", "d")});
  rig.update();
  EXPECT_EQ(Captions(newTagFrm->Label2), (Lines{"Strong: 4.1", "location: c", "time : 2018/02/07  01:26:13"}));
}

TEST(UpdateLongBar, KeepsEverythingWhenTheStoredMagnitudeIsNoNumber) {
  RecordProperty("quirk", "long-bar-needs-a-stored-number");
  for (const char *stored : {"5.2*", "", "abc", "5,2", "5.2 Ml", "1e39", "&H5", "5.2\t"}) {
    LongBarRig rig;
    rig.store()["LastBig"] = stored;
    rig.update();
    EXPECT_EQ(LongBarCaptions(), untouched) << stored;
    EXPECT_FALSE(WasPainted()) << stored;
    EXPECT_EQ(rig.end_status(), std::nullopt) << stored;
  }
}

TEST(UpdateLongBar, KeepsEverythingInTheModeUpdateOnRefresh) {
  RecordProperty("quirk", "update-on-refresh-changes-nothing");
  for (const char *mode : {"Update on refresh!", "", "keep highest magnitude"}) {
    LongBarRig rig;
    conffrm->Combo1.Text = mode;
    rig.update();
    EXPECT_EQ(LongBarCaptions(), untouched) << mode;
    EXPECT_FALSE(WasPainted());
    EXPECT_TRUE(rig.trace({"read"}).empty());
  }
}

TEST(UpdateLongBar, ReadsTheStoredEventAtEachUpdate) {
  LongBarRig rig;
  rig.update();
  EXPECT_EQ(rig.trace({"read"}), (Lines{"read LastBig", "read BigPlace", "read BigTime", "read BigDate"}));
}

TEST(UpdateLongBar, KeepsEverythingWhenTheListIsEmpty) {
  LongBarRig rig;
  BarRig::list({});
  rig.update();
  EXPECT_EQ(LongBarCaptions(), untouched);
  EXPECT_FALSE(WasPainted());
}

TEST(UpdateLongBar, EndsAfterTheMagnitudeWhenAllMagnitudesAreZero) {
  RecordProperty("quirk", "long-bar-stops-at-magnitude-zero");
  for (const char *stored : {"0", "-1"}) {
    LongBarRig rig;
    rig.store()["LastBig"] = stored;
    BarRig::list({BarRig::row("0.0", "Near"), BarRig::row("", "Far")});
    rig.update();
    EXPECT_EQ(LongBarCaptions(), (Lines{"old", "old", "old", "Strong: 0", "old", "old"}));
    EXPECT_FALSE(WasPainted());
  }
}

TEST(UpdateLongBar, KeepsEverythingForAListedMagnitudeBeyondSinglePrecision) {
  LongBarRig rig;
  BarRig::list({BarRig::row("1e300", "Near")});
  rig.update();
  EXPECT_EQ(LongBarCaptions(), untouched);
  EXPECT_EQ(rig.end_status(), std::nullopt);
}

TEST(UpdateLongBar, KeepsTheNewestEventWhenItsRowIsMissing) {
  LongBarRig rig;
  frmRecords->ListView2.ListItems.Clear();
  rig.update();
  EXPECT_EQ(LongBarCaptions(),
            (Lines{"old", "old", "old", "Strong: 5.2", "location: Old Town", "time : 2001/01/01  12:00:00"}));
  EXPECT_FALSE(WasPainted());
}

TEST(UpdateLongBar, PutsTheDateOfTheListBeforeATimeThatHasADay) {
  RecordProperty("quirk", "long-bar-shows-the-day-twice");
  LongBarRig rig;
  BarRig::list({BarRig::row("1", "Near", "yesterday")});
  rig.update();
  EXPECT_EQ(newTagFrm->Label1(2).Caption(), "time: yesterday  01:26:13, Wed 07");
}

TEST(UpdateLongBar, ReadsTheSameColumnsForEveryArea) {
  RecordProperty("quirk", "long-bar-reads-fixed-columns");
  LongBarRig rig;
  BarRig::list({{"6", "noon of 7 Feb", "10 km N of Nome", "map", "64.5", "-165.4", "12"}});
  rig.update();
  EXPECT_EQ(Captions(newTagFrm->Label2), (Lines{"Strong: 6", "location: 12", "time : noon of 7 Feb  10 km N of Nome"}));
}

TEST(UpdateLongBar, ShowsTheCaptionsOfTheDesignWhenItWasOpenedWithNothingToShow) {
  BarRig rig;
  conffrm->Combo1.Text = conffrm->Combo1.List(1);
  rig.open_long_bar();
  EXPECT_EQ(LongBarCaptions(), (Lines{"Label1", "Label1", "Label1", "Label2", "Label2", "Label2"}));
}

}  // namespace
}  // namespace borvane
