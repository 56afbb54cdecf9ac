// What happens inside a submission, while its requests are under way.

#include <gtest/gtest.h>

#include "support/program/report_rig.h"

namespace borvane {
namespace {

TEST(InsideASubmission, TheTimerEnablesSubmitAgain) {
  RecordProperty("quirk", "submit-comes-back-while-sending");
  ReportRig rig;
  rig.fill_in();
  rig.take_report();
  bool is_enabled_at_first = true;
  bool is_enabled_after_a_tick = false;
  rig.during_request(ReportRig::puta(), [&] {
    is_enabled_at_first = ReportRig::submit_button().Enabled();
    rig.tick(ReportRig::form().Timer1);
    is_enabled_after_a_tick = ReportRig::submit_button().Enabled();
  });
  rig.submit();
  EXPECT_FALSE(is_enabled_at_first);
  EXPECT_TRUE(is_enabled_after_a_tick);
}

TEST(InsideASubmission, ASecondOneFailsAndTheFirstGoesOn) {
  for (const std::string &request : {ReportRig::puta(), ReportRig::putb(), ReportRig::putc()}) {
    ReportRig rig;
    rig.fill_in();
    rig.take_report();
    int pointer_after_second = -1;
    float score_after_second = -1;
    rig.during_request(request, [&] {
      rig.state().FeltScore += 7;
      rig.submit();
      pointer_after_second = ReportRig::form().MousePointer();
      score_after_second = rig.state().FeltScore;
    });
    rig.submit();
    EXPECT_EQ(pointer_after_second, pointer_normal);
    EXPECT_EQ(score_after_second, 0);
    EXPECT_EQ(rig.trace({"request", "message", "error"}),
              (Lines{"request " + ReportRig::puta(), "request " + ReportRig::putb(), "request " + ReportRig::putc()}));
    EXPECT_TRUE(ReportRig::form().Label2(2).Visible());
    EXPECT_EQ(ReportRig::form().Label2(4).Caption(), "2.571429") << "that of the second click";
  }
}

TEST(InsideASubmission, ASecondOneAfterAFailedFirstStartsAtAScoreOfZero) {
  ReportRig rig;
  rig.fill_in();
  rig.refuse(ReportRig::puta());
  rig.submit();
  rig.submit();
  EXPECT_EQ(ReportRig::form().Label2(4).Caption(), "1.428571");
}

TEST(InsideASubmission, CancelAndTheCloseBoxCloseTheWindowAndTheReportGoesOn) {
  RecordProperty("quirk", "cancelled-report-is-sent");
  for (const bool by_close_box : {false, true}) {
    for (const std::string &request : {ReportRig::puta(), ReportRig::putb(), ReportRig::putc()}) {
      ReportRig rig;
      rig.fill_in();
      rig.take_report();
      rig.during_request(request, [&] {
        if (by_close_box)
          current->Unload(*ComPart, UnloadMode::CloseBox);
        else
          rig.cancel();
      });
      rig.submit();
      EXPECT_EQ(rig.trace({"request", "message", "write", "load", "unload", "error"}).back(), "write User1=02-07-2018");
      EXPECT_EQ(rig.trace({"request"}).size(), 3U) << request;
      EXPECT_EQ(rig.trace({"load", "unload", "cancel"}), Lines{"unload ComPart"}) << "and no new window is loaded";
      EXPECT_EQ(ComPart.IfLoaded(), nullptr);
      EXPECT_EQ(rig.state().FeltScore, 0);
      EXPECT_EQ(rig.end_status(), std::nullopt);
    }
  }
}

TEST(InsideASubmission, CancelAndARefusalLeaveOneMessageAndNoWindow) {
  ReportRig rig;
  rig.fill_in();
  rig.serve(ReportRig::puta(), "busy");
  rig.message_box().DuringNext([&rig] { rig.cancel(); });
  rig.submit();
  EXPECT_EQ(
      rig.trace({"message", "unload", "load", "error"}),
      (Lines{"message [Borvane] Failed to submit. Please wait a few minutes and try again. (OK)", "unload ComPart"}));
  EXPECT_EQ(ComPart.IfLoaded(), nullptr);
}

TEST(InsideASubmission, AWindowOpenedAfterCancelIsAnotherOne) {
  ReportRig rig;
  rig.fill_in();
  rig.take_report();
  rig.during_request(ReportRig::puta(), [&rig] {
    rig.cancel();
    rig.click(frmRecords->mnuReportIt);
    rig.type(ReportRig::name(), "other");
    rig.type(ReportRig::zip(), "1");
  });
  rig.submit();
  EXPECT_EQ(rig.trace({"request"}),
            (Lines{"request " + ReportRig::puta(), "request " + ReportRig::putb(), "request " + ReportRig::putc()}));
  EXPECT_EQ(rig.trace({"write"}), (Lines{"write User-1=Ann Lee", "write User-1=02-07-2018"}))
      << "the slot is that of the new window";
  EXPECT_FALSE(ReportRig::form().Label2(2).Visible());
  EXPECT_FALSE(ReportRig::form().Frame2.Visible());
  EXPECT_EQ(ReportRig::form().MousePointer(), pointer_normal);
  EXPECT_EQ(ReportRig::name().Text(), "other");
}

TEST(InsideASubmission, ARefreshRunsOnItsOwnClient) {
  ReportRig rig;
  rig.fill_in();
  rig.take_report();
  rig.during_request(ReportRig::puta(), [&rig] { rig.refresh(); });
  rig.submit();
  EXPECT_EQ(rig.fetches(), 1);
  EXPECT_EQ(rig.trace({"cancel", "message"}), Lines{});
  EXPECT_TRUE(ReportRig::form().Label2(2).Visible());
}

TEST(InsideASubmission, ViewReportsFailsSilentlyAsTheClientIsBusy) {
  ReportRig rig;
  rig.fill_in();
  rig.take_report();
  rig.serve(ReportRig::geta, "");
  rig.during_request(ReportRig::puta(), [&rig] { rig.click(ReportRig::form().Label3(ReportForm::link_reports)); });
  rig.submit();
  EXPECT_EQ(rig.trace({"request"}).size(), 3U);
  EXPECT_EQ(rig.trace({"message"}), Lines{});
  EXPECT_TRUE(ReportRig::form().ListView1.Visible());
  EXPECT_FALSE(ReportRig::form().Frame2.Visible());
}

TEST(WaitWhileBusy, LetsEventsRunUntilTheRequestHasEnded) {
  ReportRig rig;
  rig.fill_in();
  rig.hold(ReportRig::puta());
  Lines waiting;
  rig.during_request(ReportRig::puta(), [&] {
    rig.clear_trace();
    rig.during_pump(3, [] { ReportRig::form().Inet1.Cancel(); });
    ReportRig::form().WaitWhileBusy();
    waiting = rig.trace({"pump", "cancel"});
  });
  rig.submit();
  EXPECT_EQ(waiting, (Lines{"pump in", "pump out", "pump in", "pump out", "pump in", "cancel " + ReportRig::puta(),
                            "pump out"}));
}

TEST(WaitWhileBusy, ReturnsAtOnceFromAClientThatIsFree) {
  ReportRig rig;
  rig.open();
  ReportRig::form().WaitWhileBusy();
  EXPECT_EQ(rig.trace({"pump", "wait"}), Lines{});
}

}  // namespace
}  // namespace borvane
