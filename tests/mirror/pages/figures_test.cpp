#include "pages/figures.h"

#include <gtest/gtest.h>

#include "support/mirror/time_zone.h"

namespace borvane::mirror {
namespace {

TEST(Figures, RoundTheMagnitudeAwayFromZero) {
  EXPECT_EQ(MagnitudeText(2.25), "2.3");
  EXPECT_EQ(MagnitudeText(0.85), "0.9");
  EXPECT_EQ(MagnitudeText(-0.25), "-0.3");
  EXPECT_EQ(MagnitudeText(5), "5.0");
  EXPECT_EQ(MagnitudeText(9.96), "10.0");
}

TEST(ShownMagnitude, IsTheNumberOfTheMagnitudesText) {
  for (const double magnitude : {-9.96, -0.25, -0.04, 0.0, 0.85, 2.25, 2.94, 2.96, 3.0, 4.46, 5.96, 9.96})
    EXPECT_EQ(ShownMagnitude(magnitude), MagnitudeText(magnitude).toDouble()) << magnitude;
}

TEST(Figures, NeverShowAMinusInFrontOfZero) {
  EXPECT_EQ(MagnitudeText(-0.04), "0.0");
  EXPECT_EQ(DepthText(-0.01), "0.0");
  EXPECT_EQ(LatitudeText(-0.0001), "0.000N");
  EXPECT_EQ(LongitudeText(-0.0001), "0.000E");
}

TEST(Figures, NameTheHemisphere) {
  EXPECT_EQ(LatitudeText(34.0491), "34.049N");
  EXPECT_EQ(LatitudeText(-17.5), "17.500S");
  EXPECT_EQ(LongitudeText(-116.99), "116.990W");
  EXPECT_EQ(LongitudeText(179.9996), "180.000E");
}

TEST(SignedDegreesText, HasThreeDecimalsAndAMinusInTheSouthAndWest) {
  EXPECT_EQ(SignedDegreesText(61.7258), "61.726");
  EXPECT_EQ(SignedDegreesText(-149.6276), "-149.628");
  EXPECT_EQ(SignedDegreesText(0), "0.000");
  EXPECT_EQ(SignedDegreesText(-0.0001), "0.000");
}

TEST(Figures, ShowTheDepthWithOneDecimal) {
  EXPECT_EQ(DepthText(11.57), "11.6");
  EXPECT_EQ(DepthText(-1.27), "-1.3");
  EXPECT_EQ(DepthText(std::nullopt), "");
}

TEST(Figures, ShowMomentsInUtc) {
  EXPECT_EQ(UtcTimeText(1118932584999), "2005/06/16 14:36:24");
  EXPECT_EQ(UtcTimeText(-1), "1969/12/31 23:59:59");
}

TEST(Figures, ShowMomentsOfEveryYearThatAnEventMayHave) {
  EXPECT_EQ(UtcTimeText(-30'610'224'000'000), "1000/01/01 00:00:00");
  EXPECT_EQ(UtcTimeText(-30'610'224'000'001 + 1000), "1000/01/01 00:00:00");
  EXPECT_EQ(UtcTimeText(253'402'214'400'000), "9999/12/31 00:00:00");
  EXPECT_EQ(UtcTimeText(951'782'399'999), "2000/02/28 23:59:59");
}

TEST(Figures, ShowMomentsInTheZoneOfTheComputer) {
  {
    const TimeZone zone("PST8PDT,M3.2.0,M11.1.0");
    EXPECT_EQ(LocalTimeText(1118932584999), "2005/06/16 07:36:24");
    EXPECT_EQ(LocalTimeText(1138932584999), "2006/02/02 18:09:44");
  }
  const TimeZone zone("JST-9");
  EXPECT_EQ(LocalTimeText(1118932584999), "2005/06/16 23:36:24") << "also after the zone has changed";
}

constexpr qint64 end_of_summer = 1'793'523'600'000;  // 2026-11-01 09:00 UTC, when the clocks go from 2:00 to 1:00
constexpr qint64 day = 86'400'000;

TEST(ZoneText, IsTheDistanceFromUtcAtThatMoment) {
  {
    const TimeZone zone("PST8PDT,M3.2.0,M11.1.0");
    EXPECT_EQ(ZoneText(end_of_summer), "UTC-08:00");
    EXPECT_EQ(ZoneText(end_of_summer - 1), "UTC-07:00");
  }
  {
    const TimeZone zone("<+0545>-5:45");
    EXPECT_EQ(ZoneText(0), "UTC+05:45");
  }
  const TimeZone zone("UTC");
  EXPECT_EQ(ZoneText(0), "UTC+00:00");
}

TEST(ZonesText, IsOneZoneWhereTheClocksWereNotChanged) {
  const TimeZone zone("PST8PDT,M3.2.0,M11.1.0");
  EXPECT_EQ(ZonesText(end_of_summer, end_of_summer), "UTC-08:00");
  EXPECT_EQ(ZonesText(end_of_summer, end_of_summer + 90 * day), "UTC-08:00");
  EXPECT_EQ(ZonesText(end_of_summer - 90 * day, end_of_summer - 1), "UTC-07:00");
}

TEST(ZonesText, SaysWhenTheClocksWereChanged) {
  const TimeZone zone("PST8PDT,M3.2.0,M11.1.0");
  const QByteArray both = "UTC-08:00 (UTC-07:00 before 2026/11/01 09:00:00 UTC)";
  EXPECT_EQ(ZonesText(end_of_summer - 1, end_of_summer), both);
  for (int days = 1; days < 120; ++days)
    EXPECT_EQ(ZonesText(end_of_summer - days * day, end_of_summer + (120 - days) * day), both) << days;
}

TEST(ZonesText, NamesNoDateWhereTheClocksWereChangedOftener) {
  const TimeZone zone("PST8PDT,M3.2.0,M11.1.0");
  EXPECT_EQ(ZonesText(end_of_summer - 300 * day, end_of_summer), "UTC-08:00, or the offset in force on the date");
  EXPECT_EQ(ZonesText(-30'610'224'000'000, 253'402'214'400'000), "UTC-08:00, or the offset in force on the date");
}

}  // namespace
}  // namespace borvane::mirror
