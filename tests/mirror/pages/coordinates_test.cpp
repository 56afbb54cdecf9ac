#include "pages/coordinates.h"

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

Event At(double latitude, double longitude) {
  Event event;
  event.latitude = latitude;
  event.longitude = longitude;
  return event;
}

TEST(CoordinatePages, AreNamedByTwoWholeNumbers) {
  EXPECT_EQ(PageNumbers("116-33.html"), std::pair(116, 33));
  EXPECT_EQ(PageNumbers("-116-33.html"), std::pair(-116, 33));
  EXPECT_EQ(PageNumbers("116--33.html"), std::pair(116, -33));
  EXPECT_EQ(PageNumbers("-116--33.html"), std::pair(-116, -33));
  EXPECT_EQ(PageNumbers("0-0.html"), std::pair(0, 0));
  EXPECT_EQ(PageNumbers("-32768-32767.html"), std::pair(-32768, 32767));
}

TEST(CoordinatePages, HaveNoOtherNames) {
  for (const char *name :
       {"", "116.html", "116-33", "116-33.htm", "116-33.html ", "116-33.html\n", "a-33.html", "116-.html", "-.html",
        "1 16-33.html", "116.5-33.html", "1000000-33.html", "---1.html", "116-33-1.html"})
    EXPECT_EQ(PageNumbers(name), std::nullopt) << name;
}

TEST(CoordinatePages, HoldWhatLiesWithinOneDegree) {
  EXPECT_TRUE(BelongsToPage(At(33, -116), 116, 33));
  EXPECT_TRUE(BelongsToPage(At(34, -117), 116, 33));
  EXPECT_TRUE(BelongsToPage(At(32, -115), 116, 33));
  EXPECT_FALSE(BelongsToPage(At(34.001, -116), 116, 33));
  EXPECT_FALSE(BelongsToPage(At(33, -117.001), 116, 33));
  EXPECT_FALSE(BelongsToPage(At(33, 116), 116, 33));
}

TEST(CoordinatePages, AreTheSameInBothOrders) {
  EXPECT_TRUE(BelongsToPage(At(33, -116), 33, 116));
  EXPECT_FALSE(BelongsToPage(At(33, 116), 33, 116));
  EXPECT_TRUE(BelongsToPage(At(38, -85), 38, 85));
  EXPECT_TRUE(BelongsToPage(At(38, -85), 85, 38));
}

TEST(CoordinatePages, CountNegativeNumbersEastAndSouth) {
  EXPECT_TRUE(BelongsToPage(At(33, 116), -116, 33));
  EXPECT_TRUE(BelongsToPage(At(-33, 116), -116, -33));
  EXPECT_FALSE(BelongsToPage(At(33, -116), -116, 33));
}

TEST(CoordinatePages, GoAcrossTheDateLine) {
  EXPECT_TRUE(BelongsToPage(At(52, 179.5), 180, 52));
  EXPECT_TRUE(BelongsToPage(At(52, -179.5), 180, 52));
  EXPECT_TRUE(BelongsToPage(At(52, -179.5), -180, 52));
}

TEST(CoordinatePages, HoldNothingWhereTheNumbersAreNoPlace) {
  EXPECT_FALSE(BelongsToPage(At(0, 0), 0, 0));
  EXPECT_FALSE(BelongsToPage(At(0.5, -0.5), 0, 0));
  EXPECT_FALSE(BelongsToPage(At(90, -100), 100, 91));
  EXPECT_FALSE(BelongsToPage(At(0, 179), 181, 0));
  EXPECT_FALSE(BelongsToPage(At(0, 0), -32768, 32767));
}

TEST(MapPath, IsNamedByTheWholeDegreesOfTheEvent) {
  EXPECT_EQ(MapPath(At(33.7, -116.9)), "/recenteqs/Maps/116-33.html");
  EXPECT_EQ(MapPath(At(-33.7, 116.9)), "/recenteqs/Maps/-116--33.html");
  EXPECT_EQ(MapPath(At(0.5, -116.9)), "/recenteqs/Maps/116-0.html");
  EXPECT_EQ(MapPath(At(33.7, 0.5)), "/recenteqs/Maps/0-33.html");
}

TEST(MapPath, IsBesideTheEmptyPageForAnEventThere) {
  EXPECT_EQ(MapPath(At(0.5, -0.5)), "/recenteqs/Maps/1-0.html");
  EXPECT_EQ(MapPath(At(-0.5, 0.5)), "/recenteqs/Maps/-1-0.html");
}

TEST(MapPath, LeadsToAPageThatHoldsTheEvent) {
  for (double latitude = -90; latitude <= 90; latitude += 0.75) {
    for (double longitude = -180; longitude <= 180; longitude += 0.75) {
      const Event event = At(latitude, longitude);
      const auto numbers = PageNumbers(MapPath(event).mid(sizeof "/recenteqs/Maps/" - 1));
      ASSERT_TRUE(numbers) << latitude << ' ' << longitude;
      ASSERT_TRUE(BelongsToPage(event, numbers->first, numbers->second)) << latitude << ' ' << longitude;
    }
  }
}

}  // namespace
}  // namespace borvane::mirror
