#include "pages/figures.h"

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

TEST(Figures, RoundTheMagnitudeAwayFromZero) {
  EXPECT_EQ(MagnitudeText(2.25), "2.3");
  EXPECT_EQ(MagnitudeText(0.85), "0.9");
  EXPECT_EQ(MagnitudeText(-0.25), "-0.3");
  EXPECT_EQ(MagnitudeText(5), "5.0");
  EXPECT_EQ(MagnitudeText(9.96), "10.0");
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

}  // namespace
}  // namespace borvane::mirror
