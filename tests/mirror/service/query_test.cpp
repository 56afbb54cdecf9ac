#include "service/query.h"

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

TEST(Query, GivesTheBytesOfAKeyAsTheyCame) {
  const Query query("/x.pl?cmd=puta&map=San Juan Bautista, CA&strout=235|a b#c%41+?\x80\xff|=");
  EXPECT_EQ(query.Value("cmd"), "puta");
  EXPECT_EQ(query.Value("map"), "San Juan Bautista, CA");
  EXPECT_EQ(query.Value("strout"), "235|a b#c%41+?\x80\xff|=");
}

TEST(Query, EndsAValueAtTheNextAmpersand) {
  const Query query("/?strout=felt & heard&it=3");
  EXPECT_EQ(query.Value("strout"), "felt ");
  EXPECT_EQ(query.Value(" heard"), "");
  EXPECT_EQ(query.Value("it"), "3");
}

TEST(Query, TakesTheFirstOfEqualKeys) {
  const Query query("/?map=A&map=B&cmd=geta&cmd=puta");
  EXPECT_EQ(query.Value("map"), "A");
  EXPECT_EQ(query.Value("cmd"), "geta");
}

TEST(Query, IsEmptyForAKeyThatIsMissingOrHasNoValue) {
  const Query query("/?cmd=&map&=x&&");
  EXPECT_EQ(query.Value("cmd"), "");
  EXPECT_EQ(query.Value("map"), "");
  EXPECT_EQ(query.Value("strout"), "");
  EXPECT_EQ(Query("/x.pl").Value("cmd"), "");
  EXPECT_EQ(Query("/x.pl?").Value("cmd"), "");
}

TEST(Query, TellsKeysApartByCase) { EXPECT_EQ(Query("/?appversion=1&AppVersion=2").Value("AppVersion"), "2"); }

}  // namespace
}  // namespace borvane::mirror
