#include "alert/quake_alert.h"

#include <gtest/gtest.h>

#include "support/program/alert_rig.h"

namespace borvane {
namespace {

TEST(CheckEventAlert, ShowsThePopupThenStartsItsTimerThenShowsTheMagnitudeThenShakes) {
  AlertRig rig;
  frmQalert->Label2.Caption = "old";
  rig.watch(*frmQalert, frmQalert->Caption, "Caption");
  rig.watch(frmQalert->Label1, frmQalert->Label1.Caption, "Label1");
  rig.watch(frmQalert->Label2, frmQalert->Label2.Caption, "Label2");
  rig.watch(frmQalert->Timer1, frmQalert->Timer1.Enabled, "Timer1");
  rig.clear_trace();

  rig.check(AlertRig::strong("5.25"));
  EXPECT_EQ(rig.trace(), (Lines{"set Label2=", "show frmQalert", "set Timer1=true", "set Label1=5.25", "pump in",
                                "pump out", "seed 5415", "draw"}));
}

TEST(CheckEventAlert, LoadsThePopupAtItsFirstAlert) {
  AlertRig rig;
  rig.check(AlertRig::strong());
  EXPECT_EQ(rig.trace({"load", "topmost", "show"}), (Lines{"load frmQalert", "topmost frmQalert", "show frmQalert"}));
}

TEST(CheckEventAlert, LeavesThePopupUnloadedWithoutAnAlert) {
  AlertRig rig;
  rig.check(AlertRig::event("3.4", "2018/02/07", "01:00:00"));
  rig.check(AlertRig::event("5.0", "2018/02/07", "02:00:00"));
  rig.check(AlertRig::event("5.0", "soon", "01:00:00"));
  EXPECT_EQ(rig.trace(), Lines{});
}

// The magnitude.

TEST(CheckEventAlert, ComparesTheNumberAtTheStartOfTheMagnitude) {
  const std::pair<const char *, bool> magnitudes[] = {
      {"3.5", true},    {"3.4", false},  {"3.49", false}, {"3.51", true},  {" 3.5  ", true},
      {"3.5 Ml", true}, {"Ml 5", false}, {"", false},     {"-5", false},   {"+4", true},
      {"4e0", true},    {"0.4E1", true}, {"35", true},    {"3,9", false},  {"9x", true},
      {"3.5.9", true},  {"\t5", false},  {"1e39", false}, {"1e999", false}};
  AlertRig rig;
  for (const auto &[magnitude, alerts] : magnitudes)
    EXPECT_EQ(rig.alerts(AlertRig::strong(magnitude)), alerts) << "\"" << magnitude << "\"";
}

TEST(CheckEventAlert, ComparesInSinglePrecision) {
  AlertRig rig;
  Module1->AlertThreshold = 3.1F;
  EXPECT_TRUE(rig.alerts(AlertRig::strong("3.1")));
  EXPECT_TRUE(rig.alerts(AlertRig::strong("3.09999999")));
  EXPECT_FALSE(rig.alerts(AlertRig::strong("3.0999")));
}

TEST(CheckEventAlert, TakesAMagnitudeWithoutANumberAsZero) {
  AlertRig rig;
  Module1->AlertThreshold = 0;
  EXPECT_TRUE(rig.alerts(AlertRig::strong("")));
  EXPECT_TRUE(rig.alerts(AlertRig::strong("unknown")));
  EXPECT_FALSE(rig.alerts(AlertRig::strong("-0.1")));
}

TEST(CheckEventAlert, ShowsTheMagnitudeAsThePageHasIt) {
  AlertRig rig;
  rig.check(AlertRig::strong(" 5.30 Mw"));
  EXPECT_EQ(frmQalert->Label1.Caption(), " 5.30 Mw");
}

// The time.

TEST(CheckEventAlert, AlertsForEventsThatAreMoreThanASecondOlder) {
  RecordProperty("quirk", "newer-events-never-alert");
  const std::pair<const char *, bool> times[] = {{"01:30:11", true},  {"01:30:12", true},  {"01:30:13", false},
                                                 {"01:30:14", false}, {"01:30:15", false}, {"01:30:16", false},
                                                 {"01:31:00", false}, {"23:59:59", false}, {"00:00:00", true}};
  AlertRig rig;
  ASSERT_EQ(Module1->LastAlertTime, "02-07-2018 01:30:14");
  for (const auto &[time, alerts] : times)
    EXPECT_EQ(rig.alerts(AlertRig::event("5.0", "2018/02/07", time)), alerts) << time;
}

TEST(CheckEventAlert, ComparesAcrossTheBordersOfDaysAndYears) {
  struct Case {
    const char *last, *date, *time;
    bool alerts;
  };
  const Case cases[] = {
      {"02/07/2018 12:00:01 AM", "2018/02/06", "23:59:59", true},
      {"02/07/2018 12:00:00 AM", "2018/02/06", "23:59:59", false},
      {"02/07/2018 12:00:00 AM", "2018/02/06", "23:59:58", true},
      {"02/06/2018 11:59:59 PM", "2018/02/07", "00:00:00", false},
      {"01/01/2018 12:00:01 AM", "2017/12/31", "23:59:59", true},
      {"01/01/2018 12:00:00 AM", "2017/12/31", "23:59:59", false},
      {"03/01/2020 12:00:00 AM", "2020/02/29", "23:59:58", true},
      {"02/07/2018 11:59:59 PM", "0100/01/01", "00:00:00", true},
      {"02/07/2018 11:59:59 PM", "9999/12/31", "23:59:59", false},
  };
  AlertRig rig;
  for (const Case &it : cases) {
    Module1->LastAlertTime = it.last;
    EXPECT_EQ(rig.alerts(AlertRig::event("5.0", it.date, it.time)), it.alerts)
        << it.last << ": " << it.date << " " << it.time;
  }
}

TEST(CheckEventAlert, ReadsEveryFormOfTheLastAlertTime) {
  struct Case {
    const char *last, *at_the_border, *just_after;
  };
  const Case cases[] = {
      {"02-07-2018 01:30:14", "01:30:12", "01:30:13"},    {"02-07-2018 01:30:4", "01:30:02", "01:30:03"},
      {"02-07-2018 01:30:0", "01:29:58", "01:29:59"},     {"02/07/2018 01:30:14 AM", "01:30:12", "01:30:13"},
      {"02/07/2018 01:30:14 PM", "13:30:12", "13:30:13"}, {"02/07/2018 12:30:14 AM", "00:30:12", "00:30:13"},
      {"02/07/2018 12:30:14 PM", "12:30:12", "12:30:13"}, {"02/07/2018 12:00:02 PM", "12:00:00", "12:00:01"},
      {"2018/2/7 1:30", "01:29:58", "01:29:59"},
  };
  AlertRig rig;
  for (const Case &it : cases) {
    for (const bool again : {false, true}) {
      if (!again)
        Module1->LastAlertTime = it.last;
      EXPECT_TRUE(rig.alerts(AlertRig::event("5.0", "2018/02/07", it.at_the_border))) << it.last << again;
      EXPECT_FALSE(rig.alerts(AlertRig::event("5.0", "2018/02/07", it.just_after))) << it.last << again;
    }
  }
}

TEST(CheckEventAlert, ComparesWithTheBaseDayWhenTheLastAlertTimeHasNoDay) {
  AlertRig rig;
  Module1->LastAlertTime = "01:30:14";
  EXPECT_FALSE(rig.alerts(AlertRig::strong()));
  EXPECT_TRUE(rig.alerts(AlertRig::event("5.0", "1899/12/29", "23:00:00")));
}

TEST(CheckEventAlert, RaisesNothingForALastAlertTimeThatIsNoDate) {
  for (const char *last : {"02-07-2018 01:30:-1", "soon", " ", "13/45/2018"}) {
    AlertRig rig;
    Module1->LastAlertTime = last;
    EXPECT_FALSE(rig.alerts(AlertRig::strong())) << last;
    EXPECT_EQ(Module1->LastAlertTime, last);
    EXPECT_EQ(rig.end_status(), std::nullopt);
  }
}

TEST(CheckEventAlert, SetsAnEmptyLastAlertTimeFromTheClock) {
  AlertRig rig;
  Module1->LastAlertTime = "";
  EXPECT_FALSE(rig.alerts(AlertRig::event("5.0", "2018/02/07", "01:30:13")));
  EXPECT_EQ(Module1->LastAlertTime, "02/07/2018 01:30:14 AM");
  EXPECT_TRUE(rig.alerts(AlertRig::event("5.0", "2018/02/07", "01:30:12")));
}

TEST(CheckEventAlert, SetsAnEmptyLastAlertTimeToNoDateAtSecondZero) {
  AlertRig rig;
  Module1->LastAlertTime = "";
  rig.clock().Set({.year = 2018, .month = 2, .day = 7, .hour = 13, .minute = 30, .second = 0});
  EXPECT_FALSE(rig.alerts(AlertRig::strong()));
  EXPECT_EQ(Module1->LastAlertTime, "02-07-2018 13:30:-1");
}

TEST(CheckEventAlert, RewritesTheLastAlertTimeAlsoBelowTheThreshold) {
  AlertRig rig;
  rig.check(AlertRig::event("1.0", "2018/02/07", "01:00:00"));
  EXPECT_EQ(Module1->LastAlertTime, "02/07/2018 01:30:14 AM");
}

TEST(CheckEventAlert, LeavesTheLastAlertTimeAloneForAnEventWithoutAMoment) {
  AlertRig rig;
  for (const auto &[date, time] : {std::pair("soon", "01:00:00"), std::pair("2018/02/07", "")}) {
    EXPECT_FALSE(rig.alerts(AlertRig::event("5.0", date, time)));
    EXPECT_EQ(Module1->LastAlertTime, "02-07-2018 01:30:14");
  }
  Module1->LastAlertTime = "";
  rig.check(AlertRig::event("5.0", "soon", "01:00:00"));
  EXPECT_EQ(Module1->LastAlertTime, "");
}

TEST(CheckEventAlert, NeverAlertsInARunThatWasStartedAtSecondZero) {
  Rig rig;
  rig.clock().Set({.year = 2018, .month = 2, .day = 7, .hour = 1, .minute = 30, .second = 0});
  rig.start();
  EventFields fields = AlertRig::strong();
  rig.happen([&] { CheckEventAlert(fields); });
  EXPECT_EQ(frmQalert.IfLoaded(), nullptr);
}

// After the alert.

TEST(CheckEventAlert, AlertsAgainForTheSameEvent) {
  RecordProperty("quirk", "alert-repeats-at-every-refresh");
  for (const int bound : {20, 10}) {
    AlertRig rig;
    const EventFields fields = AlertRig::event("5.0", "2018/02/07", "01:00:00", bound);
    EXPECT_TRUE(rig.alerts(fields)) << bound;
    EXPECT_TRUE(rig.alerts(fields)) << bound;
    EXPECT_EQ(Module1->LastAlertTime, "02/07/2018 01:30:14 AM");
    EXPECT_EQ(frmQalert->Label2.Caption(), "");
    EXPECT_EQ(frmQalert->Label1.ForeColor(), 0x8000000E);
    EXPECT_EQ(rig.end_status(), std::nullopt);
  }
}

TEST(CheckEventAlert, DoesNotAlertForAnArrayWithoutATime) {
  AlertRig rig;
  EventFields fields(2);
  fields(1) = "5.0";
  fields(2) = "2018/02/07";
  EXPECT_FALSE(rig.alerts(fields));
  EXPECT_EQ(rig.end_status(), std::nullopt);
}

struct Place {
  std::string label2;
  Color color;
  std::string last_alert_time;
};

/// What an event of that magnitude leaves whose slots from 13 on have `texts`.
Place PlaceOf(std::string_view magnitude, std::initializer_list<const char *> texts) {
  AlertRig rig;
  EventFields fields = AlertRig::strong(magnitude);
  int slot = 13;
  for (const char *text : texts)
    fields(slot++) = text;
  rig.check(fields);
  return {frmQalert->Label2.Caption(), frmQalert->Label1.ForeColor(), Module1->LastAlertTime};
}

TEST(CheckEventAlert, ShowsThePlaceUpToItsCommaAndTakesTheEventIntoAccount) {
  const Place first = PlaceOf("5.0", {"Castaic,"});
  EXPECT_EQ(first.label2, " Castaic");
  EXPECT_EQ(first.color, 0x8000000E);
  EXPECT_EQ(first.last_alert_time, "02/07/2018 01:00:00 AM");

  EXPECT_EQ(PlaceOf("5.0", {"near", "Castaic,", "CA,"}).label2, " Castaic");
  EXPECT_EQ(PlaceOf("5.0", {"1", "2", "3", "4", "5", "6", "7", "last,"}).label2, " last");
  EXPECT_EQ(PlaceOf("5.0", {","}).label2, " ");
}

TEST(CheckEventAlert, LooksForThePlaceNoFurtherThanAnEmptySlotOrTheLast) {
  for (const auto &texts : {std::initializer_list<const char *>{"", "Castaic,"},
                            {"near", "", "Castaic,"},
                            {"Castaic"},
                            {"1", "2", "3", "4", "5", "6", "7", "8"}}) {
    const Place place = PlaceOf("5.0", texts);
    EXPECT_EQ(place.label2, "");
    EXPECT_EQ(place.last_alert_time, "02/07/2018 01:30:14 AM");
  }
}

TEST(CheckEventAlert, ShowsAMagnitudeOfSevenWithItsPlaceInRed) {
  EXPECT_EQ(PlaceOf("6.99", {"Castaic,"}).color, 0x8000000E);
  EXPECT_EQ(PlaceOf("7.0", {"Castaic,"}).color, 0x0000FFU);
  EXPECT_EQ(PlaceOf("7.0", {}).color, 0x8000000E) << "without a place it keeps its color";
}

TEST(CheckEventAlert, ComparesWithAnEventThatWasTakenIntoAccount) {
  AlertRig rig;
  EventFields fields = AlertRig::strong();
  fields(13) = "Castaic,";
  EXPECT_TRUE(rig.alerts(fields));
  EXPECT_FALSE(rig.alerts(fields));
  EXPECT_TRUE(rig.alerts(AlertRig::event("5.0", "2018/02/07", "00:59:58")));
}

TEST(CheckEventAlert, EmptiesThePlaceOfTheLastAlert) {
  AlertRig rig;
  EventFields fields = AlertRig::strong();
  fields(13) = "Castaic,";
  rig.check(fields);
  rig.check(AlertRig::event("5.0", "2018/02/07", "00:30:00"));
  EXPECT_EQ(frmQalert->Label2.Caption(), "");
}

}  // namespace
}  // namespace borvane
