#include <gtest/gtest.h>

#include "basic/number.h"
#include "support/failure_of.h"

namespace borvane {
namespace {

TEST(StrictSingle, ReadsATextThatIsANumberFromItsFirstCharacterToItsLast) {
  EXPECT_EQ(StrictSingle("5.2"), 5.2F);
  EXPECT_EQ(StrictSingle("05"), 5);
  EXPECT_EQ(StrictSingle("5."), 5);
  EXPECT_EQ(StrictSingle(".5"), .5F);
  EXPECT_EQ(StrictSingle("-1.25"), -1.25F);
  EXPECT_EQ(StrictSingle("+1"), 1);
  EXPECT_EQ(StrictSingle("1e2"), 100);
  EXPECT_EQ(StrictSingle("1E-2"), .01F);
  EXPECT_EQ(StrictSingle("5.e+1"), 50);
  EXPECT_EQ(StrictSingle("123456789012345678"), 123456789012345678.0F);
}

TEST(StrictSingle, AcceptsBlanksAroundTheNumber) {
  EXPECT_EQ(StrictSingle("  5.2 "), 5.2F);
  EXPECT_EQ(StrictSingle(" -1"), -1);
}

TEST(StrictSingle, RaisesATypeMismatchForEverythingElse) {
  for (const char *text : {"",
                           " ",
                           ".",
                           "-",
                           "+",
                           "-.",
                           "abc",
                           "5.2*",
                           "5,2",
                           "5 2",
                           "1.2.3",
                           "1e",
                           "1e+",
                           "e5",
                           ".e5",
                           "--1",
                           "5-",
                           "inf",
                           "nan",
                           "&H5",
                           "5\t",
                           "\t5",
                           "\xA0"
                           "5",
                           "5M",
                           "1d2"})
    EXPECT_EQ(FailureOf([&] { StrictSingle(text); }), type_mismatch) << text;
}

TEST(StrictSingle, RaisesAnOverflowBeyondSinglePrecision) {
  for (const char *text : {"1e39", "-1e39", "1e300", "1e999"})
    EXPECT_EQ(FailureOf([&] { StrictSingle(text); }), overflow) << text;
}

TEST(IsNumeric, AcceptsWhatIsANumberFromItsFirstCharacterToItsLast) {
  for (const char *text : {"90210", " 90210 ", "0", "-1.5", ".5", "5.", "1e2", "1e999"})
    EXPECT_TRUE(IsNumeric(text)) << text;
}

TEST(IsNumeric, RefusesEverythingElse) {
  for (const char *text : {"", " ", "90210-1234", "9021O", "K1A 0B1", "90,210", "1e", "&H5", "5\t", "inf"})
    EXPECT_FALSE(IsNumeric(text)) << text;
}

}  // namespace
}  // namespace borvane
