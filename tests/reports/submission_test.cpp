#include <vector>

#include <gtest/gtest.h>

#include "core/program_info.h"
#include "support/program/report_rig.h"

namespace borvane {
namespace {

const std::string refused = "message [Borvane] Failed to submit. Please wait a few minutes and try again. (OK)";

TEST(Submission, SendsThreeRequestsOneAfterTheOther) {
  ReportRig rig;
  rig.fill_in();
  rig.take_report();
  rig.submit();
  EXPECT_EQ(rig.trace({"request", "message", "write"}),
            (Lines{"request " + ReportRig::puta(), "request " + ReportRig::putb(), "request " + ReportRig::putc(),
                   "write User1=Ann Lee", "write User1=02-07-2018"}));
}

TEST(Submission, GoesThroughItsStepsInTheirOrder) {
  ReportRig rig;
  rig.fill_in();
  rig.take_report();
  ReportForm &form = ReportRig::form();
  rig.watch(form, form.MousePointer, "pointer");
  rig.watch(ReportRig::submit_button(), ReportRig::submit_button().Enabled, "submit");
  rig.watch(form.Frame1, form.Frame1.Top, "Frame1.Top");
  rig.watch(form.Frame2, form.Frame2.Visible, "Frame2");
  rig.watch(form.Label2(4), form.Label2(4).Caption, "magnitude");
  rig.watch(form.Label2(2), form.Label2(2).Visible, "thanks");
  rig.submit();
  EXPECT_EQ(
      rig.trace({"set", "request", "write"}),
      (Lines{"set pointer=11", "set submit=false", "set Frame1.Top=6825", "set Frame2=true", "set magnitude=1.571429",
             "request " + ReportRig::puta(), "request " + ReportRig::putb(), "request " + ReportRig::putc(),
             "write User1=Ann Lee", "write User1=02-07-2018", "set thanks=true", "set pointer=0"}));
  EXPECT_EQ(rig.state().FeltScore, 0);
  EXPECT_FALSE(rig.state().FormTouched);
  EXPECT_FALSE(ReportRig::submit_button().Enabled()) << "until the next tick";
}

TEST(Submission, ShowsTheMagnitudeInTheRegionsFormAndSendsItWithAPoint) {
  ReportRig rig;
  rig.region().SetDecimalSeparator(',');
  rig.open();
  rig.choose_all("Duck", "weak", "Ground level");
  rig.tick_off(ReportRig::form().Check2(1), 1);
  rig.happen([&rig] { rig.state().FeltScore = -6; });
  rig.clear_trace();
  rig.submit();
  EXPECT_EQ(ReportRig::form().Label2(4).Caption(), "0,5714286");
  EXPECT_EQ(rig.trace({"request"}),
            Lines{"request " + ReportRig::puta(VersionDigits() + "|" + ReportRig::key + "||.5714286|0|0|")});
}

/// The clicks of a form, and its magnitude as it is shown and as it is sent.
struct FilledForm {
  std::vector<int> boxes;  // ticked, in this order
  const char *strength;    // chosen; none while it is typed
  const char *floor;
  const char *shown;
  const char *sent;
};

TEST(Submission, WorksTheMagnitudeOutFromTheClicksToTheLastDigit) {
  const FilledForm forms[] = {
      {{}, "weak", "Ground level", "1.571429", "1.571429"},     {{}, "moderate", "3rd floor", "2.285714", "2.285714"},
      {{0, 1}, "violent!", "Higher!", "5.571429", "5.571429"},  {{1}, nullptr, "Ground level", "0.5714286", ".5714286"},
      {{5, 6}, "weak", "Ground level", "1.571429", "1.571429"},
  };
  for (const FilledForm &filled : forms) {
    ReportRig rig;
    rig.open();
    for (const int box : filled.boxes)
      rig.tick_off(ReportRig::form().Check2(box), 1);
    if (filled.strength == nullptr)
      ReportRig::form().Combo2.Text = "hardly";
    else
      rig.choose(ReportRig::form().Combo2, filled.strength);
    rig.choose(ReportRig::form().Combo3, filled.floor);
    rig.clear_trace();
    rig.submit();
    EXPECT_EQ(ReportRig::form().Label2(4).Caption(), filled.shown);
    ASSERT_EQ(rig.trace({"request"}).size(), 1U);
    EXPECT_NE(rig.trace({"request"})[0].find("||" + std::string(filled.sent) + "|"), std::string::npos)
        << rig.trace({"request"})[0];
  }
}

TEST(Submission, CountsATypedFloorAsOneBelowTheGround) {
  ReportRig rig;
  rig.fill_in();
  rig.happen([] { ReportRig::form().Combo3.Text = "in a boat"; });
  rig.submit();
  EXPECT_EQ(ReportRig::form().Label2(4).Caption(), "1.428571");
}

TEST(Submission, NamesTheAreaOfTheLastSwitchingOn) {
  RecordProperty("quirk", "reports-name-the-area-switched-on");
  ReportRig rig;
  rig.fill_in();
  rig.happen([] { conffrm->Combo2.Text = "Seattle Area"; });
  rig.submit();
  EXPECT_EQ(rig.trace({"request"}).at(0), "request " + ReportRig::puta());
  EXPECT_NE(ReportRig::puta().find("&map=Los Angeles&"), std::string::npos);
}

/// What the user changes while the first request is under way.
TEST(Submission, ReadsTheZipForEachRequestAndTheAnswersOnceAtItsStart) {
  ReportRig rig;
  rig.fill_in();
  rig.serve(ReportRig::puta(), "ok");
  rig.during_request(ReportRig::puta(), [] {
    ReportRig::zip().Text = "10001";
    ReportRig::comments().Text = "late";
    frmRecords->Label2(0).Caption = "Nevada";
  });
  const std::string putb = service + "cmd=putb&map=Nevada&strout=" + ReportRig::details();
  const std::string putc = service + "cmd=putc&zip=10001&map=Nevada&strout=" + ReportRig::details();
  rig.serve(putb, "");
  rig.serve(putc, "");
  rig.submit();
  EXPECT_EQ(rig.trace({"request"}), (Lines{"request " + ReportRig::puta(), "request " + putb, "request " + putc}));
}

TEST(Submission, SendsTextsAsTheyStand) {
  ReportRig rig;
  rig.fill_in();
  rig.answer(ReportRig::comments(), "a|b&cmd=puta #\xE9\r\nHost: x");
  rig.answer(ReportRig::zip(), "90210&map=x");
  const std::string record = VersionDigits() + "||42|90210&map=x||a|b&cmd=puta #\xE9\r\nHost: x|0|0|0|0|0|0|0|0|1|0|0";
  const std::string summary = VersionDigits() + "|" + ReportRig::key + "|42|1.571429|0|0|90210&map=x";
  const std::string putc = service + "cmd=putc&zip=90210&map=x&map=Los Angeles&strout=" + record;
  rig.serve(ReportRig::puta(summary), "ok");
  rig.serve(ReportRig::putb(record), "ok");
  rig.serve(putc, "ok");
  rig.clear_trace();
  rig.submit();
  EXPECT_EQ(rig.trace({"request"}),
            (Lines{"request " + ReportRig::puta(summary), "request " + ReportRig::putb(record), "request " + putc}));
  EXPECT_TRUE(ReportRig::form().Label2(2).Visible());
}

TEST(Submission, LooksAtTheAnswerToItsFirstRequestAlone) {
  for (const char *answer : {"", "no", "<html>error</html>"}) {
    ReportRig rig;
    rig.fill_in();
    rig.serve(ReportRig::puta(), "ok");
    rig.serve(ReportRig::putb(), answer);
    rig.serve(ReportRig::putc(), answer);
    rig.submit();
    EXPECT_EQ(rig.trace({"message"}), Lines{});
    EXPECT_TRUE(ReportRig::form().Label2(2).Visible()) << answer;
  }
}

// An answer other than "ok".

TEST(Submission, IsRefusedByEveryOtherAnswerThanOk) {
  for (const char *answer : {"", "OK", "Ok", "ok\n", " ok", "ok ", "okay", "o", "<html>ok</html>"}) {
    ReportRig rig;
    rig.fill_in();
    rig.serve(ReportRig::puta(), answer);
    rig.submit();
    EXPECT_EQ(rig.trace({"request", "message", "write"}), (Lines{"request " + ReportRig::puta(), refused})) << answer;
  }
}

TEST(Submission, KeepsHourglassScoreAndThanksWhenItIsRefused) {
  RecordProperty("quirk", "refused-report-keeps-the-hourglass");
  ReportRig rig;
  rig.fill_in();
  rig.serve(ReportRig::puta(), "busy");
  rig.submit();
  ReportForm &form = ReportRig::form();
  EXPECT_EQ(form.MousePointer(), pointer_hourglass);
  EXPECT_EQ(rig.state().FeltScore, 1);
  EXPECT_TRUE(form.Frame2.Visible());
  EXPECT_FALSE(form.Label2(2).Visible());
  EXPECT_TRUE(ReportRig::submit_button().Enabled());
  EXPECT_FALSE(rig.state().FormTouched);

  // A retry begins where this one has ended, and its success tidies up.
  rig.take_report();
  rig.submit();
  EXPECT_EQ(form.MousePointer(), pointer_normal);
  EXPECT_EQ(rig.state().FeltScore, 0);
  EXPECT_TRUE(form.Label2(2).Visible());
}

TEST(Submission, EnablesSubmitAfterTheMessageHasBeenAnswered) {
  ReportRig rig;
  rig.fill_in();
  rig.serve(ReportRig::puta(), "busy");
  bool is_enabled = true;
  rig.message_box().DuringNext([&] { is_enabled = ReportRig::submit_button().Enabled(); });
  rig.submit();
  EXPECT_FALSE(is_enabled);
  EXPECT_TRUE(ReportRig::submit_button().Enabled());
}

// A failure.

TEST(Submission, EndsSilentlyWhicheverRequestFails) {
  RecordProperty("quirk", "lost-report-says-nothing");
  const Lines requests = {"request " + ReportRig::puta(), "request " + ReportRig::putb(),
                          "request " + ReportRig::putc()};
  for (int failing = 1; failing <= 3; ++failing) {
    ReportRig rig;
    rig.fill_in();
    rig.take_report();
    rig.http().FailRequest(failing);
    rig.submit();
    ReportForm &form = ReportRig::form();
    EXPECT_EQ(rig.trace({"request", "message", "write", "error"}),
              (Lines{requests.begin(), requests.begin() + failing}));
    EXPECT_EQ(form.MousePointer(), pointer_normal);
    EXPECT_EQ(rig.state().FeltScore, 0);
    EXPECT_TRUE(form.Frame2.Visible());
    EXPECT_FALSE(form.Label2(2).Visible());
    EXPECT_EQ(form.Frame1.Top(), 6825);
    EXPECT_EQ(rig.end_status(), std::nullopt);
  }
}

TEST(Submission, EndsSilentlyWhenTheServiceGoesAwayBetweenTwoRequests) {
  ReportRig rig;
  rig.fill_in();
  rig.take_report();
  rig.during_request(ReportRig::puta(), [&rig] { rig.refuse(ReportRig::putb()); });
  rig.submit();
  EXPECT_EQ(rig.trace({"request", "message", "write"}),
            (Lines{"request " + ReportRig::puta(), "request " + ReportRig::putb()}));
  EXPECT_EQ(ReportRig::form().MousePointer(), pointer_normal);
  EXPECT_FALSE(ReportRig::form().Label2(2).Visible());
}

TEST(Submission, EndsSilentlyAfterSixtySecondsWithoutAnAnswer) {
  ReportRig rig;
  rig.fill_in();
  rig.hold(ReportRig::puta());
  rig.submit();
  EXPECT_EQ(rig.trace({"time-out", "message"}), Lines{"time-out " + ReportRig::puta()});
  EXPECT_EQ(ReportRig::form().MousePointer(), pointer_normal);
}

TEST(Submission, MakesNoCheckBeforeItSends) {
  ReportRig rig;
  rig.fill_in();
  rig.submit();
  EXPECT_EQ(rig.trace({"request"}), Lines{"request " + ReportRig::puta()});
}

TEST(Submission, HoldsNoFaultThatIsNoFailureOfTheProgram) {
  ReportRig rig;
  rig.fill_in();
  rig.http().Break(ReportRig::puta());
  rig.submit();
  EXPECT_EQ(rig.trace({"error", "end"}), (Lines{"error report 0 broken", "end 1"}));
}

}  // namespace
}  // namespace borvane
