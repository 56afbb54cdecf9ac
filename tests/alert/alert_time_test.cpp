#include "alert/alert_time.h"

#include <gtest/gtest.h>

#include "basic/failure.h"
#include "core/module1.h"
#include "support/failure_of.h"
#include "support/rig.h"

namespace borvane {
namespace {

std::string Moment(std::string_view date, std::string_view time) {
  return FormatDate(EventTime(date, time), "yyyy/mm/dd hh:mm:ss");
}

TEST(EventTime, JoinsDateAndTime) {
  EXPECT_EQ(Moment("2018/02/07", "01:26:13"), "2018/02/07 01:26:13");
  EXPECT_EQ(Moment("02/07/2018", "13:26"), "2018/02/07 13:26:00");
  EXPECT_EQ(Moment("02-07-2018", "12:00:01 AM"), "2018/02/07 00:00:01");
  EXPECT_EQ(Moment(" 2018/02/07 ", " 12:30:00 pm "), "2018/02/07 12:30:00");
}

TEST(EventTime, IsMidnightForATimeOfMidnight) {
  EXPECT_EQ(Moment("2018/02/07", "00:00:00"), "2018/02/07 00:00:00");
  EXPECT_EQ(Moment("2018/02/07", "12:00 AM"), "2018/02/07 00:00:00");
}

TEST(EventTime, IsNoneForATextThatIsNoDate) {
  const std::pair<const char *, const char *> slots[] = {
      {"", "01:00:00"},           {"2018/02/07", ""},         {"soon", "01:00:00"},       {"2018/02/07", "now"},
      {"2018/02/30", "01:00:00"}, {"2018/02/07", "24:00:00"}, {"2018/02/07", "01:00:-1"}, {"18/02/07", "01:00:00"},
  };
  for (const auto &[date, time] : slots)
    EXPECT_EQ(FailureOf([date = date, time = time] { EventTime(date, time); }), static_cast<int>(Failure::TypeMismatch))
        << date << " and " << time;
}

TEST(EventTime, IsNoneForADateWithATimeOfItsOwn) {
  RecordProperty("quirk", "event-time-joined-as-text");
  const auto failure_of = [](const char *date, const char *time) { return FailureOf([=] { EventTime(date, time); }); };
  constexpr int no_date = static_cast<int>(Failure::TypeMismatch);
  EXPECT_EQ(failure_of("2018/02/07 01:00:00", "02:00:00"), no_date) << "two times";
  EXPECT_EQ(failure_of("01:00:00", "02:00:00"), no_date) << "two times";
  EXPECT_EQ(failure_of("2018/02/07", "2018/02/07 01:00:00"), no_date) << "two dates";
  EXPECT_EQ(failure_of("2018/02/07", "2018/02/08"), no_date) << "two dates";
  EXPECT_EQ(failure_of("00:00", "00:00"), no_date) << "neither a date nor a time is left";

  EXPECT_EQ(Moment("2018/02/07 01:00:00", "00:00:00"), "2018/02/07 01:00:00") << "the time of midnight is no text";
  EXPECT_EQ(Moment("1899/12/30", "2018/02/07 01:00:00"), "2018/02/07 01:00:00") << "nor is the base day";
  EXPECT_EQ(Moment("00:00:00", "05:00:00"), "1899/12/30 05:00:00");
}

TEST(DateText, LeavesOutMidnightAndTheBaseDay) {
  const auto text = [](const char *date) { return DateText(DateValue(date)); };
  EXPECT_EQ(text("2018/02/07 13:05:09"), "02/07/2018 01:05:09 PM");
  EXPECT_EQ(text("2018/02/07"), "02/07/2018");
  EXPECT_EQ(text("13:05:09"), "01:05:09 PM");
  EXPECT_EQ(text("00:00:00"), "");
  EXPECT_EQ(text("1899/12/30 00:00:01"), "12:00:01 AM");
  EXPECT_EQ(text("1899/12/29 23:59:59"), "12/29/1899 11:59:59 PM");
  EXPECT_EQ(text("1899/12/31"), "12/31/1899");
  EXPECT_EQ(text("0100/01/01"), "01/01/0100");
}

TEST(DateText, IsReadAsTheSameDate) {
  for (const char *date : {"2018/02/07 00:00:01", "2018/02/07 12:00:00", "2018/02/07 23:59:59", "9999/12/31 00:30:00"})
    EXPECT_EQ(DateValue(DateText(DateValue(date))), DateValue(date)) << date;
}

TEST(LastAlertTime, IsTheClockAtTheLoadOneSecondBefore) {
  Rig rig;
  rig.clock().Set({.year = 2018, .month = 2, .day = 7, .hour = 1, .minute = 30, .second = 15});
  rig.start();
  EXPECT_EQ(Module1->LastAlertTime, "02-07-2018 01:30:14");
}

TEST(LastAlertTime, HasItsSecondsAsPlainDecimalText) {
  Rig rig;
  rig.clock().Set({.year = 2018, .month = 12, .day = 31, .hour = 23, .minute = 9, .second = 5});
  rig.start();
  EXPECT_EQ(Module1->LastAlertTime, "12-31-2018 23:09:4");
}

TEST(LastAlertTime, DoesNotBorrowFromTheMinutesAtSecondZero) {
  RecordProperty("quirk", "alert-time-does-not-borrow");
  Rig rig;
  rig.clock().Set({.year = 2018, .month = 2, .day = 7, .hour = 1, .minute = 30, .second = 0});
  rig.start();
  EXPECT_EQ(Module1->LastAlertTime, "02-07-2018 01:30:-1");
}

}  // namespace
}  // namespace borvane
