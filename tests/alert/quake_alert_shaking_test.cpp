// How the popup wanders, and what can happen meanwhile.
#include <gtest/gtest.h>

#include "records/frmRecords.h"
#include "support/program/alert_rig.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

using std::string_literals::operator""s;

TEST(ShakeQuakeAlert, MovesThenLetsEventsRunThenPaintsInEachStep) {
  AlertRig rig;
  rig.clock().SetFraction(0.5);
  frmQalert->Show();
  rig.watch(*frmQalert, frmQalert->Top, "Top");
  rig.watch(*frmQalert, frmQalert->Left, "Left");
  const float top = frmQalert->Top();
  const float left = frmQalert->Left();
  for (const double number : {2.5 / 600, 0.99, 0.5, 0.5, 0.49, 0.0, 0.0, 0.999, 0.999})
    rig.random().Add(number);
  rig.clear_trace();

  rig.happen(ShakeQuakeAlert);
  const auto moved = [](const char *edge, float to) { return "set "s + edge + "=" + SingleText(to); };
  EXPECT_EQ(rig.trace(), (Lines{"seed 5415.5", "draw",  //
                                "draw", "draw", "draw", "draw", moved("Top", top + 49), moved("Left", left - 25),
                                "pump in for 10 ms", "pump out", "repaint frmQalert",  //
                                "draw", "draw", "draw", "draw", moved("Left", left + 24), "pump in for 10 ms",
                                "pump out", "repaint frmQalert"}));
  EXPECT_EQ(frmQalert->Top(), top + 49);
  EXPECT_EQ(frmQalert->Left(), left + 24);
}

TEST(ShakeQuakeAlert, TakesNoneTo599Steps) {
  for (const auto &[number, steps] :
       {std::pair(0.0, 0), std::pair(0.0016, 0), std::pair(0.0017, 1), std::pair(0.5, 300), std::pair(0.9999, 599)}) {
    AlertRig rig;
    frmQalert->Show();
    rig.random().Add(number);
    rig.clear_trace();
    rig.happen(ShakeQuakeAlert);
    EXPECT_EQ(rig.trace({"repaint"}).size(), static_cast<std::size_t>(steps)) << number;
  }
}

TEST(ShakeQuakeAlert, JumpsUpTo49TwipsToEitherSide) {
  struct Case {
    double distance, side;
    float jump;
  };
  for (const Case &it : {Case{0.999, 0.4999, -49}, Case{0.999, 0.5, 49}, Case{0.02, 0.5, 1}, Case{0.0199, 0.0, 0}}) {
    AlertRig rig;
    const float top = frmQalert->Top();
    const float left = frmQalert->Left();
    for (const double number : {1.5 / 600, it.distance, it.side, it.distance, it.side})
      rig.random().Add(number);
    rig.happen(ShakeQuakeAlert);
    EXPECT_EQ(frmQalert->Top() - top, it.jump);
    EXPECT_EQ(frmQalert->Left() - left, it.jump);
  }
}

TEST(ShakeQuakeAlert, GoesOnFromWhereThePopupIs) {
  AlertRig rig;
  const auto one_step = [&] {
    for (const double number : {1.5 / 600, 0.2, 0.9, 0.4, 0.9})
      rig.random().Add(number);
    rig.check(AlertRig::strong());
  };
  one_step();
  const float top = frmQalert->Top();
  const float left = frmQalert->Left();
  EXPECT_GT(top, 0);
  one_step();
  EXPECT_EQ(frmQalert->Top(), top + 10);
  EXPECT_EQ(frmQalert->Left(), left + 20);
}

TEST(ShakeQuakeAlert, FollowsTheUserWhoMovesThePopupMeanwhile) {
  AlertRig rig;
  frmQalert->Show();
  for (const double number : {2.5 / 600, 0.2, 0.9, 0.4, 0.9, 0.2, 0.9, 0.4, 0.9})
    rig.random().Add(number);
  rig.during_next_pump([] { frmQalert->SetPlace(3000, 6000); });
  rig.happen(ShakeQuakeAlert);
  EXPECT_EQ(frmQalert->Left(), 3020);
  EXPECT_EQ(frmQalert->Top(), 6010);
}

TEST(ShakeQuakeAlert, LoadsAClosedPopupAgainAndLeavesItHidden) {
  RecordProperty("quirk", "shaking-brings-back-a-closed-popup");
  AlertRig rig;
  rig.shake(3);
  rig.during_pump(3, [] { current->Unload(*frmQalert, UnloadMode::CloseBox); });
  rig.check(AlertRig::strong());
  EXPECT_EQ(rig.trace({"load", "show", "hide", "unload", "repaint"}),
            (Lines{"load frmQalert", "show frmQalert", "repaint frmQalert", "hide frmQalert", "unload frmQalert",
                   "load frmQalert", "repaint frmQalert", "repaint frmQalert"}));
  ASSERT_NE(frmQalert.IfLoaded(), nullptr);
  EXPECT_FALSE(frmQalert->IsShown());
  EXPECT_FALSE(frmQalert->Timer1.Enabled()) << "its timer is the design's";
  EXPECT_NE(frmQalert->Top(), (1024 * 15 - frmQalert->Height()) / 2) << "it wanders from its design place";
}

TEST(ShakeQuakeAlert, LoadsAPopupThatIsClosedInTheLastStep) {
  AlertRig rig;
  rig.shake(1);
  rig.during_pump(2, [] { current->Unload(*frmQalert, UnloadMode::CloseBox); });
  rig.check(AlertRig::strong());
  ASSERT_NE(frmQalert.IfLoaded(), nullptr);
  EXPECT_EQ(frmQalert->Top(), (1024 * 15 - frmQalert->Height()) / 2);
}

TEST(CheckEventAlert, ShowsAClosedPopupAgainAtItsDesignPlace) {
  AlertRig rig;
  rig.shake(1);
  rig.check(AlertRig::strong());
  rig.happen([] { current->Unload(*frmQalert, UnloadMode::CloseBox); });
  EXPECT_TRUE(rig.alerts(AlertRig::strong()));
  EXPECT_EQ(frmQalert->Top(), (1024 * 15 - frmQalert->Height()) / 2);
  EXPECT_EQ(frmQalert->Left(), (1280 * 15 - frmQalert->Width()) / 2);
}

// Events meanwhile.

TEST(CheckEventAlert, SoundsTheAlarmInsideAStepOfTheShaking) {
  AlertRig rig;
  conffrm->Check2.Value = 1;
  conffrm->Text5(0).Text = "3";
  conffrm->Text5(1).Text = "1";
  rig.shake(2);
  rig.during_pump(2, [&] {
    rig.note("tick");
    rig.tick(frmQalert->Timer1);
  });
  rig.clear_trace();
  rig.check(AlertRig::strong());

  const Lines trace = rig.trace({"show", "repaint", "tick", "beep"});
  ASSERT_EQ(trace.size(), 95U);
  EXPECT_EQ(Lines(trace.begin(), trace.begin() + 4), (Lines{"show frmQalert", "tick", "beep 100 3", "beep 110 3"}));
  EXPECT_EQ(Lines(trace.end() - 3, trace.end()), (Lines{"beep 1000 3", "repaint frmQalert", "repaint frmQalert"}));
  EXPECT_FALSE(frmQalert->Timer1.Enabled());
}

TEST(CheckEventAlert, ShakesInsideAToneWhenItIsRaisedThere) {
  AlertRig rig;
  conffrm->Check2.Value = 1;
  conffrm->Text5(1).Text = "1";
  rig.check(AlertRig::strong("4.0"));
  rig.clear_trace();
  rig.during_next_pump([&] {
    rig.shake(1);
    rig.check(AlertRig::strong("6.0"));
    rig.tick(frmQalert->Timer1);
  });
  rig.tick(frmQalert->Timer1);
  EXPECT_EQ(frmQalert->Label1.Caption(), "6.0");
  EXPECT_EQ(rig.trace({"repaint"}), Lines{"repaint frmQalert"});
  EXPECT_EQ(rig.trace({"beep"}).size(), 2 * 91U) << "the timer was enabled again, so both alarms sound";
}

TEST(CheckEventAlert, EndsTheProgramWhenAHandlerFailsMeanwhile) {
  AlertRig rig;
  conffrm->Check2.Value = 1;
  conffrm->Text5(0).Text = "32768";
  rig.shake(1);
  rig.during_pump(2, [&] { rig.tick(frmQalert->Timer1); });
  rig.check(AlertRig::strong());
  EXPECT_EQ(rig.trace({"error", "end"}), (Lines{"error report 6 Overflow", "end 1"}))
      << "the trap of the check is not that of the handler";
}

TEST(CheckEventAlert, LetsTheUserQuitDuringTheShaking) {
  AlertRig rig;
  rig.shake(5);
  rig.during_pump(2, [&] { rig.press(frmRecords->Toolbar1, 5); });
  rig.check(AlertRig::strong());
  EXPECT_EQ(rig.end_status(), 0);
  EXPECT_EQ(rig.trace().back(), "end 0");
}

// Inside a scan.

/// A program that watches Los Angeles with an alert magnitude of 3. Its page's events are older than the program, and
/// the first alert shakes the popup in that many steps.
struct ScanRig : WatchingRig {
  explicit ScanRig(int steps = 0) {
    conffrm->Text1.Text = "3";
    random().Add((steps + 0.5) / 600);
    clear_trace();
  }

  int alerts() const { return static_cast<int>(trace({"show"}).size()); }

  /// The magnitudes that have been stored as the strongest one, one after the other.
  Lines biggest() const {
    const std::string begin = "write LastBig=";
    Lines magnitudes;
    for (const std::string &line : trace({"write"})) {
      if (line.starts_with(begin))
        magnitudes.push_back(line.substr(begin.size()));
    }
    return magnitudes;
  }
};

TEST(AlertInAScan, IsRaisedByTheNewestEventAlone) {
  ScanRig rig;
  rig.serve(los_angeles, Page(Row("3.0") + Row("9.0")));
  rig.refresh();
  EXPECT_EQ(rig.alerts(), 1);
  EXPECT_EQ(frmQalert->Label1.Caption(), "3.0");

  rig.serve(los_angeles, Page(Row("2.9") + Row("9.0")));
  rig.clear_trace();
  rig.refresh();
  EXPECT_EQ(rig.alerts(), 0);
}

TEST(AlertInAScan, IsRaisedAtEveryRefresh) {
  ScanRig rig;
  rig.serve(los_angeles, Page(Row("3.0")));
  for (int refresh = 1; refresh <= 3; ++refresh) {
    rig.random().Add(0);
    rig.refresh();
    EXPECT_EQ(rig.alerts(), refresh);
  }
}

TEST(AlertInAScan, TakesTheAlertMagnitudeFromTheSettingsAtEachRefresh) {
  ScanRig rig;
  rig.serve(los_angeles, Page(Row("3.0")));
  conffrm->Text1.Text = "3.1";
  rig.refresh();
  EXPECT_EQ(rig.alerts(), 0);
  conffrm->Text1.Text = "3";
  rig.refresh();
  EXPECT_EQ(rig.alerts(), 1);
}

TEST(AlertInAScan, LetsTheScanGoOnAfterADateThatIsNone) {
  ScanRig rig;
  std::string row = Row("3.0");
  row.replace(row.find("2018/02/07"), 10, "2018-02-07");
  rig.serve(los_angeles, Page(row + Row("4.0")));
  rig.refresh();
  EXPECT_EQ(rig.alerts(), 0);
  EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), 2);
  EXPECT_EQ(rig.biggest(), (Lines{"3.0", "4.0"})) << "both rows are compared with the strongest event";
  EXPECT_EQ(rig.store()["BigDate"], "2018/02/07");
  EXPECT_NE(LastRefresh(), "");
}

/// The events of these pages have no slot for a place, not even an empty one.
TEST(AlertInAScan, LetsTheScanGoOnAfterAnAlertWithoutASlotForThePlace) {
  struct Case {
    const char *area;
    const char *address;
    std::string page;
  };
  for (const Case &it : std::initializer_list<Case>{
           {"Puerto Rico", "http://puertorico.localhost:17650/recenteqs/eqs_all.htm",
            AnchorPage(AnchorRow("3.4") + AnchorRow("4.5"))},
           {"Worldwide 5+", "http://national.localhost:17650/eqcenter/recenteqsww/Quakes/quakes_big.php",
            WorldPage(WorldRow("3.4") + WorldRow("4.5"))}}) {
    ScanRig rig;
    conffrm->Combo2.Text = it.area;
    rig.serve(it.address, it.page);
    rig.refresh();
    EXPECT_EQ(rig.alerts(), 1) << it.area;
    EXPECT_EQ(frmQalert->Label1.Caption(), "3.4") << it.area;
    EXPECT_EQ(frmQalert->Label2.Caption(), "") << it.area;
    EXPECT_EQ(Module1->LastAlertTime, "02/07/2018 01:30:14 AM") << it.area;
    EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), 2) << it.area;
    EXPECT_EQ(rig.biggest(), (Lines{"3.4", "4.5"})) << it.area;
    EXPECT_EQ(LastRefresh(), "Last Refresh: 01:30:15") << it.area;
  }
}

TEST(AlertInAScan, LetsARefreshInsideTheShakingRunWholeAndThenAppendsItsFurtherRows) {
  RecordProperty("quirk", "refresh-inside-the-shaking");
  ScanRig rig(1);
  rig.serve(los_angeles, Page(Row("3.0") + Row("1.1") + Row("1.2")));
  rig.screen().on_load = [&](FormBase & /*popup*/) {
    constexpr int first_step = 2;
    rig.during_pump(first_step, [&] {
      rig.serve(los_angeles, Page(Row("2.0") + Row("1.0")));
      rig.key('R');
      rig.note("refreshed with " + IntegerText(frmRecords->ListView1.ListItems.Count()) + " rows");
    });
  };
  rig.refresh();
  Lines magnitudes;
  for (int row = 1; row <= frmRecords->ListView1.ListItems.Count(); ++row)
    magnitudes.push_back(frmRecords->ListView1.ListItems(row).Text);
  EXPECT_EQ(magnitudes, (Lines{"2.0", "1.0", "1.1", "1.2"}));
  EXPECT_EQ(rig.trace({"refreshed", "repaint"}), (Lines{"refreshed with 2 rows", "repaint frmQalert"}));
  EXPECT_EQ(Newest(), "2.0") << "that of the refresh inside";
}

}  // namespace
}  // namespace borvane
