#include "core/load_settings.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "core/registry.h"
#include "info/banner.h"
#include "records/frmRecords.h"
#include "settings/conffrm.h"
#include "support/rig.h"

namespace borvane {
namespace {

/// The result of a run's LoadSettings.
int Load(Rig &rig) {
  int result = -1;
  rig.happen([&] { result = LoadSettings(); });
  return result;
}

TEST(LoadSettings, ReadsAndWritesInItsOrderOnAFirstRun) {
  Rig rig;
  Load(rig);
  EXPECT_EQ(rig.trace(), (Lines{"read MacID",
                                "seed 5415",
                                "draw",
                                "write MacID=500000",
                                "read StrongerDisplay",
                                "load conffrm",
                                "read Grid",
                                "load frmRecords",
                                "read RunTime",
                                "write RunTime=1",
                                "read ad",
                                "write ad= 1",
                                "read EdgeOffset",
                                "read EdgeDetect",
                                "read Color0",
                                "read Color1",
                                "read Color2",
                                "read KeepPosition",
                                "read LogCity",
                                "read EnableLog",
                                "read LogAll",
                                "read noBother",
                                "write noBother=2",
                                "read Colorize",
                                "read AlarmTone",
                                "read AlarmPeriod",
                                "read EnableAlarmSound",
                                "read Area",
                                "read StartWOS",
                                "read Refresh",
                                "read Alert",
                                "read BarTop",
                                "folder 5",
                                "exists /documents/Borvane/quakes.log"}));
}

TEST(LoadSettings, SetsTheControlsInItsOrder) {
  Rig rig;
  for (const auto &[name, text] : std::initializer_list<std::pair<const char *, const char *>>{
           {"MacID", "7"},       {"StrongerDisplay", "1"}, {"Grid", "1"},        {"ad", "5"},
           {"EdgeOffset", "50"}, {"EdgeDetect", " 2"},     {"Color0", "1"},      {"Color1", "1"},
           {"Color2", "1"},      {"KeepPosition", "1"},    {"LogCity", "CA"},    {"EnableLog", "1"},
           {"Colorize", "1"},    {"AlarmTone", "1"},       {"AlarmPeriod", "1"}, {"EnableAlarmSound", "1"},
           {"Area", "a"},        {"StartWOS", "1"},        {"Refresh", "60"},    {"Alert", "5"},
           {"BarTop", "8"},      {"noBother", "1"}})
    rig.store()[name] = text;
  rig.screen().on_load = [&](FormBase &form) {
    if (auto *settings = dynamic_cast<SettingsForm *>(&form)) {
      rig.watch(settings->Combo1, settings->Combo1.Text, "Combo1");
      rig.watch(settings->Text7, settings->Text7.Text, "Text7");
      rig.watch(settings->Option1(2), settings->Option1(2).Value, "Option1(2)");
      for (int i = 0; i < 3; ++i)
        rig.watch(settings->Picture1(i), settings->Picture1(i).BackColor, settings->Picture1(i).FullName());
      rig.watch(settings->Check6, settings->Check6.Value, "Check6");
      rig.watch(settings->Text8, settings->Text8.Text, "Text8");
      rig.watch(settings->Check1, settings->Check1.Value, "Check1");
      rig.watch(settings->Option2(0), settings->Option2(0).Value, "Option2(0)");
      rig.watch(settings->Check3, settings->Check3.Value, "Check3");
      rig.watch(settings->Text5(0), settings->Text5(0).Text, "Text5(0)");
      rig.watch(settings->Text5(1), settings->Text5(1).Text, "Text5(1)");
      rig.watch(settings->Check2, settings->Check2.Value, "Check2");
      rig.watch(settings->Combo2, settings->Combo2.Text, "Combo2");
      rig.watch(settings->Check7, settings->Check7.Value, "Check7");
      rig.watch(settings->Text2, settings->Text2.Text, "Text2");
      rig.watch(settings->Text1, settings->Text1.Text, "Text1");
      rig.watch(settings->Text4, settings->Text4.Text, "Text4");
      rig.watch(settings->Text3, settings->Text3.Text, "Text3");
    } else if (auto *records = dynamic_cast<RecordsForm *>(&form)) {
      rig.watch(records->mnuGrid, records->mnuGrid.Checked, "mnuGrid");
      rig.watch(records->ListView1, records->ListView1.GridLines, "GridLines");
    }
  };
  Load(rig);
  EXPECT_EQ(rig.trace({"load", "set"}), (Lines{"load conffrm",
                                               "set Combo1=Update on refresh!",
                                               "load frmRecords",
                                               "set mnuGrid=true",
                                               "set GridLines=true",
                                               "set Text7=50",
                                               "set Option1(2)=true",
                                               "set Picture1(0)=16711680",
                                               "set Picture1(1)=16711680",
                                               "set Picture1(2)=16711680",
                                               "set Check6=1",
                                               "set Text8=CA",
                                               "set Check1=1",
                                               "set Option2(0)=true",
                                               "set Check3=1",
                                               "set Text5(0)=1",
                                               "set Text5(1)=1",
                                               "set Check2=1",
                                               "set Combo2=a",
                                               "set Check7=1",
                                               "set Text2=60",
                                               "set Text1=5",
                                               "set Text4=5",
                                               "set Text3=8"}));
}

TEST(LoadSettings, StoresFourValuesOnAFirstRunAndNothingElse) {
  Rig rig;
  Load(rig);
  EXPECT_EQ(rig.store().Names(), (Lines{"MacID", "RunTime", "ad", "noBother"}));
  EXPECT_EQ(rig.store()["MacID"], "500000");
  EXPECT_EQ(rig.store()["RunTime"], "1");
  EXPECT_EQ(rig.store()["ad"], " 1");
  EXPECT_EQ(rig.store()["noBother"], "2");
  EXPECT_EQ(Module1->RunCount, 1);
  EXPECT_EQ(Module1->ShowBanner, flag_true);
}

TEST(LoadSettings, EnablesLogsWhenThereIsALog) {
  Rig rig;
  rig.files().PutFolder("/documents/Borvane");
  rig.files().Put("/documents/Borvane/quakes.log", "");
  Load(rig);
  EXPECT_EQ(Module1->LogFolder, "/documents/Borvane");
  EXPECT_TRUE(frmRecords->Label5.Enabled());
}

TEST(LoadSettings, KeepsTheIdentifierOnceCreated) {
  Rig rig;
  rig.store()["MacID"] = "42";
  Load(rig);
  EXPECT_EQ(Module1->MacID, "42");
  EXPECT_EQ(rig.store()["MacID"], "42");
  EXPECT_TRUE(rig.trace({"seed", "draw"}).empty());
}

TEST(LoadSettings, UsesANewIdentifierEvenWhenItCannotBeStored) {
  Rig rig;
  rig.store().RefuseWrites();
  Load(rig);
  EXPECT_EQ(Module1->MacID, "500000");
  EXPECT_FALSE(rig.store().Has("MacID"));
}

TEST(LoadSettings, StartsAsOnAFirstRunWhenTheStoreCannotBeRead) {
  Rig rig;
  rig.store()["Area"] = "Los Angeles";
  rig.store().FailReads(7);
  rig.start();
  EXPECT_EQ(rig.end_status(), std::nullopt);
  EXPECT_EQ(Module1->RunCount, 1);
  EXPECT_EQ(conffrm->Combo2.Text(), "");
}

TEST(LoadSettings, LeavesTheRecordsTimerAtItsDesignIntervalWhateverIsStored) {
  RecordProperty("quirk", "records-timer-keeps-design-interval");
  Rig rig;
  rig.store()["Refresh"] = "60";
  Load(rig);
  EXPECT_EQ(frmRecords->Timer1.Interval(), 700);
  EXPECT_EQ(conffrm->Text2.Text(), "60");
}

TEST(LoadSettings, FillsTheListOfAreasWhenItFirstNeedsTheSettingsWindow) {
  Rig rig;
  Load(rig);
  EXPECT_EQ(conffrm->Combo2.ListCount(), 25);
  EXPECT_EQ(conffrm->Combo2.Text(), "");
}

TEST(LoadSettings, ShowsTheAlertMagnitudeInTheBarLeftBox) {
  RecordProperty("quirk", "bar-left-shows-alert-magnitude");
  Rig rig;
  rig.store()["Alert"] = "4.2";
  rig.store()["smBarLeft"] = "900";
  Load(rig);
  EXPECT_EQ(conffrm->Text1.Text(), "4.2");
  EXPECT_EQ(conffrm->Text4.Text(), "4.2");
}

TEST(LoadSettings, LeavesBothLogOptionsAloneWhenTheStoreSaysFalse) {
  RecordProperty("quirk", "log-option-false-restores-nothing");
  Rig rig;
  rig.store()["LogAll"] = "False";
  Load(rig);
  EXPECT_FALSE(conffrm->Option2(0).Value());
  EXPECT_FALSE(conffrm->Option2(1).Value());
}

TEST(LoadSettings, ShowsColorsBlackThatAreNotStored) {
  RecordProperty("quirk", "missing-colors-are-black");
  Rig rig;
  EXPECT_NE(conffrm->Picture1(0).BackColor(), 0U) << "by design";
  Load(rig);
  for (int i = 0; i < conffrm->Picture1.Count(); ++i)
    EXPECT_EQ(conffrm->Picture1(i).BackColor(), 0U) << i;
}

TEST(LoadSettings, ReadsAValueThatNothingWritesAndNoneThatNothingReads) {
  RecordProperty("quirk", "values-read-or-written-alone");
  Rig rig;
  rig.store()["BarTop"] = "1200";
  rig.start();
  EXPECT_EQ(conffrm->Text3.Text(), "1200");
  const Lines reads = rig.trace({"read"});
  for (const char *name : {"smBarLeft", "shortWidth", "longWidth"})
    EXPECT_EQ(std::count(reads.begin(), reads.end(), "read " + std::string(name)), 0) << name;

  rig.type(conffrm->Text3, "900");
  rig.leave(conffrm->Text3);
  rig.click(conffrm->Command2);
  EXPECT_EQ(rig.store()["BarTop"], "1200");
}

TEST(LoadSettings, KeepsNeitherTheCoordinatesNorTheWorldSnapshot) {
  Rig rig;
  for (const char *name : {"Check4", "Check5", "Text6", "Text60", "Text61"})
    rig.store()[name] = "0";
  Load(rig);
  EXPECT_EQ(conffrm->Check5.Value(), 1);
  EXPECT_EQ(conffrm->Check4.Value(), 0);
  EXPECT_EQ(conffrm->Text6(0).Text(), "");
  EXPECT_EQ(conffrm->Text6(1).Text(), "");
}

TEST(LoadSettings, FindsThePositionOfTheStoredArea) {
  for (const auto &[area, position] : std::initializer_list<std::pair<const char *, int>>{
           {"* CALIFORNIA (State)", 0}, {"Los Angeles", 1}, {"Seattle Area", 12}, {"Puerto Rico", 24}}) {
    Rig rig;
    rig.store()["Area"] = area;
    Load(rig);
    EXPECT_EQ(conffrm->Combo2.Text(), area);
    EXPECT_EQ(Module1->AreaIndex, position) << area;
  }
}

TEST(LoadSettings, ShowsAStoredAreaThatIsNotInTheList) {
  Rig rig;
  rig.store()["Area"] = "Atlantis";
  Load(rig);
  EXPECT_EQ(conffrm->Combo2.Text(), "Atlantis");
  EXPECT_EQ(Module1->AreaIndex, 0);
}

TEST(MakeMacID, SeedsWithTheTimeOfDayAndDrawsOnce) {
  Rig rig;
  rig.clock().Set({.year = 2018, .month = 2, .day = 7, .hour = 23, .minute = 59, .second = 59});
  rig.clock().SetFraction(0.25);
  rig.happen([] { MakeMacID(); });
  EXPECT_EQ(rig.trace(), (Lines{"seed 86399.25", "draw"}));
}

TEST(MakeMacID, HasOneToSixDigits) {
  for (const auto &[drawn, identifier] :
       std::initializer_list<std::pair<double, const char *>>{{0, "1"},
                                                              {0.0000009, "1"},
                                                              {0.0000011, "2"},
                                                              {0.000009, "9"},
                                                              {0.5, "500000"},
                                                              {0.1, "100000"},
                                                              {0.9999999, "999999"},
                                                              {0x1.fffffffffffffp-1, "999999"}}) {
    Rig rig;
    rig.random().Add(drawn);
    EXPECT_EQ(MakeMacID(), identifier) << drawn;
  }
}

}  // namespace
}  // namespace borvane
