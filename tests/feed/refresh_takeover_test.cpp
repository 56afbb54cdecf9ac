#include <gtest/gtest.h>

#include "support/program/watching_rig.h"

namespace borvane {
namespace {

TEST(Takeover, LetsASecondRefreshEndTheFetchOfTheFirst) {
  WatchingRig rig;
  rig.hold(los_angeles);
  rig.during_request(los_angeles, [&] {
    rig.note("R again");
    rig.serve(los_angeles, Page(Row("3.3")));
    rig.key('R');
    rig.note("second over with " + Newest());
    EXPECT_EQ(LastRefresh(), "Last Refresh: 01:30:15");
    EXPECT_EQ(Module1->RefreshCount, 0);
    EXPECT_EQ(Module1->SiteRoot, southern + "/");
  });
  rig.key('R');
  EXPECT_EQ(rig.trace({"request", "cancel", "R", "second"}),
            (Lines{"request " + set_online, "request " + los_angeles, "R again", "cancel " + los_angeles,
                   "request " + set_online, "request " + los_angeles, "second over with 3.3"}));
  EXPECT_EQ(Newest(), "3.3");
  EXPECT_EQ(Module1->RefreshCount, 700) << "the first refresh has failed";
  EXPECT_EQ(Module1->RefreshBusy, flag_false);
  EXPECT_EQ(frmRecords->MousePointer(), pointer_normal);
  EXPECT_TRUE(frmRecords->Timer1.Enabled());
}

TEST(Takeover, LetsTheSecondRefreshFinishWithoutAFetchWhenTheFirstNeverStops) {
  WatchingRig rig;
  rig.hold_stubbornly(los_angeles);
  rig.during_request(los_angeles, [&] {
    rig.clear_trace();
    rig.key('R');
    rig.note("second over");
    EXPECT_EQ(LastRefresh(), "Last Refresh: 01:30:15");
  });
  rig.key('R');
  const Lines both = {"cancel " + los_angeles, "cancel " + los_angeles, "second over", "time-out " + los_angeles};
  EXPECT_EQ(rig.trace({"request", "cancel", "second", "time-out"}), both)
      << "presence and page each wait once, and neither sends a request";
  EXPECT_EQ(Module1->RefreshCount, 700);
}

TEST(Takeover, LetsTheUsersOnlineTimerFailARefresh) {
  RecordProperty("quirk", "users-online-call-fails-a-refresh");
  WatchingRig rig;
  rig.hold(los_angeles);
  rig.serve(who_is_on, "17");
  rig.during_request(los_angeles, [&] { rig.tick(frmRecords->Timer3); });
  rig.key('R');
  EXPECT_EQ(rig.trace({"request", "cancel"}), (Lines{"request " + set_online, "request " + los_angeles,
                                                     "cancel " + los_angeles, "request " + who_is_on}));
  EXPECT_EQ(frmRecords->Label9.Caption(), "Users Online: 17");
  EXPECT_EQ(Module1->RefreshCount, 700);
  EXPECT_EQ(LastRefresh(), "");
}

TEST(Takeover, LetsTheFKeyFailARefresh) {
  WatchingRig rig;
  rig.hold(los_angeles);
  rig.serve(who_is_on, "17");
  rig.during_request(los_angeles, [&] { rig.key('F'); });
  rig.key('R');
  EXPECT_EQ(frmRecords->Label9.Caption(), "Users Online: 17");
  EXPECT_EQ(Module1->RefreshCount, 700);
}

TEST(Takeover, LetsARefreshSucceedWhenItsPresenceCallIsTakenOver) {
  WatchingRig rig;
  rig.hold(set_online);
  rig.serve(who_is_on, "17");
  rig.during_request(set_online, [&] { rig.tick(frmRecords->Timer3); });
  rig.key('R');
  EXPECT_EQ(Newest(), "2.0") << "the presence call traps its failure, and the refresh continues";
  EXPECT_EQ(Module1->RefreshCount, 0);
}

TEST(Takeover, FinishesWithTheTimerOnAlthoughTheButtonWasReleasedDuringTheFetch) {
  WatchingRig rig;
  rig.during_request(los_angeles, [&] {
    rig.press(frmRecords->Toolbar1, 1);
    EXPECT_FALSE(frmRecords->Timer1.Enabled());
  });
  rig.press(frmRecords->Toolbar1, 1);
  EXPECT_EQ(frmRecords->Toolbar1.Buttons(1).Value(), 0);
  EXPECT_TRUE(frmRecords->Timer1.Enabled());
  EXPECT_EQ(Newest(), "2.0");
  EXPECT_EQ(frmRecords->StatusBar1.Panels(3).Text(), "Auto Refresh On");
  EXPECT_EQ(frmRecords->Label2(0).Caption(), "Los Angeles");
  EXPECT_EQ(rig.trace({"request"}).back(), "request " + who_is_on) << "switching on continues to its end";
}

TEST(Takeover, DelaysATickThatComesDuringABusyRefresh) {
  WatchingRig rig;
  rig.key('R');
  rig.hold(los_angeles);
  rig.serve(who_is_on, "17");
  // Button 1 starts the timer while the page is being fetched; switching on ends with a request for the users online.
  rig.during_request(los_angeles, [&] { rig.press(frmRecords->Toolbar1, 1); });
  bool has_ticked = false;
  rig.during_request(who_is_on, [&] {
    ASSERT_TRUE(frmRecords->Timer1.IsCounting());
    ASSERT_EQ(Module1->RefreshBusy, flag_true);
    conffrm->Text2.Text = "0";
    rig.clear_trace();
    rig.tick(frmRecords->Timer1, 3);
    has_ticked = true;
    EXPECT_EQ(Module1->RefreshCount, 0) << "the count waits until the flag is cleared";
    EXPECT_TRUE(rig.trace({"request"}).empty());
  });
  rig.key('R');
  EXPECT_TRUE(has_ticked);
}

TEST(Takeover, KeepsTheTimerOutOfTheRefreshThatItsOwnTickStarted) {
  WatchingRig rig;
  rig.key('R');
  conffrm->Text2.Text = "0";
  rig.clear_trace();
  bool has_ticked = false;
  rig.during_request(set_online, [&] {
    ASSERT_TRUE(frmRecords->Timer1.IsCounting()) << "the presence call comes before the timer is stopped";
    rig.tick(frmRecords->Timer1);
    has_ticked = true;
  });
  rig.tick(frmRecords->Timer1);
  EXPECT_TRUE(has_ticked);
  EXPECT_EQ(rig.trace({"request"}), (Lines{"request " + set_online, "request " + los_angeles}));
  EXPECT_EQ(Module1->RefreshCount, 1);
}

TEST(Takeover, LetsOtherHandlersRunDuringAFetch) {
  WatchingRig rig;
  rig.during_request(los_angeles, [&] {
    rig.tick(frmRecords->Timer2);
    rig.press(frmRecords->Toolbar1, 2);
    rig.type(conffrm->Text1, "4.5");
    rig.leave(conffrm->Text1);
  });
  rig.key('R');
  EXPECT_FALSE(frmRecords->Image1.Visible());
  EXPECT_TRUE(conffrm->IsShown());
  EXPECT_EQ(rig.store()["Alert"], "4.5");
  EXPECT_EQ(Module1->AlertThreshold, 3.5F) << "read before the fetch";
  EXPECT_EQ(Newest(), "2.0");
}

TEST(Takeover, EndsTheProgramForAnErrorInAHandlerThatRunsDuringAFetch) {
  for (const std::string &address : {set_online, los_angeles, who_is_on}) {
    WatchingRig rig;
    conffrm->Text6(0).Text = "";
    rig.during_request(address, [&] {
      conffrm->Text6(0).Text = "40000";
      rig.choose(conffrm->Combo2, "Los Angeles");
    });
    rig.press(frmRecords->Toolbar1, 1);
    EXPECT_EQ(rig.end_status(), 1) << "the trap around " << address << " is not the handler's";
  }
}

TEST(Takeover, LetsTheSecondCallCutTheAddressThatTheFirstOneNeeds) {
  RecordProperty("quirk", "site-root-is-unprotected");
  WatchingRig rig;
  // The second refresh runs while the first waits for the client, after the choice of its page.
  rig.during_pump(3, [&] {
    ASSERT_EQ(Module1->SiteRoot, los_angeles);
    rig.key('R');
  });
  rig.key('R');
  EXPECT_EQ(rig.trace({"request"}).back(), "request " + southern + "/");
}

}  // namespace
}  // namespace borvane
