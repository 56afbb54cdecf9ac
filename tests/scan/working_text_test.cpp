#include "scan/working_text.h"

#include <gtest/gtest.h>

#include "support/failure_of.h"

namespace borvane {
namespace {

TEST(WorkingText, RaisesAnInvalidArgumentBeforeItsFirstPosition) {
  std::string page = "abc";
  WorkingText text(page);
  Marker marker("b");
  EXPECT_EQ(FailureOf([&] { text.Find(marker, 0); }), invalid_argument);
  EXPECT_EQ(FailureOf([&] { text.Piece(0, 1); }), invalid_argument);
  EXPECT_EQ(FailureOf([&] { text.Piece(1, -1); }), invalid_argument);
  EXPECT_EQ(FailureOf([&] { text.TakeRest(0); }), invalid_argument);
  EXPECT_EQ(text.Piece(1, 3), "abc") << "nothing has been cut";
}

TEST(WorkingText, IsEmptyOnceItIsCutPastItsEnd) {
  std::string page = "abc";
  {
    WorkingText text(page);
    text.TakeRest(3);
    EXPECT_FALSE(text.IsEmpty());
    text.TakeRest(3);
    EXPECT_TRUE(text.IsEmpty());
  }
  EXPECT_EQ(page, "");
}

}  // namespace
}  // namespace borvane
