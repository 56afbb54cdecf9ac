#include "pages/text.h"

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

TEST(PageText, IsWindows1252) {
  EXPECT_EQ(PageText("Acarí, Norðurþing"), "Acar\xed, Nor\xf0ur\xfeing");
  EXPECT_EQ(PageText("€ Š ž ’"), "\x80 \x8a \x9e \x92");
}

TEST(PageText, TakesOffAccentsThatTheCodePageLacks) {
  EXPECT_EQ(PageText("Ōita, Gūlbene, Ḩajjah, İzmir, Diyarbakır"), "Oita, Gulbene, Hajjah, Izmir, Diyarbakir");
  EXPECT_EQ(PageText("Hawaiʻi"), "Hawai\x91i");
  EXPECT_EQ(PageText("e\u0301a\u0304"), "\xe9\x61");
}

TEST(PageText, ReplacesLettersByTheirLookAlikes) {
  const std::pair<const char *, const char *> look_alikes[] = {{"ı", "i"},    {"ł", "l"},    {"Ł", "L"}, {"đ", "d"},
                                                               {"Đ", "\xd0"}, {"ħ", "h"},    {"Ħ", "H"}, {"ŋ", "n"},
                                                               {"ʻ", "\x91"}, {"ʼ", "\x92"}, {"−", "-"}, {"′", "'"}};
  for (const auto &[letter, look_alike] : look_alikes)
    EXPECT_EQ(PageText(letter), look_alike) << letter;
}

TEST(PageText, DropsCombiningMarksThatNoLetterOfTheCodePageHas) {
  EXPECT_EQ(PageText("m\u0304q\u0323x\u0301\u0330"), "mqx");
  EXPECT_EQ(PageText("\u0301"), "");
}

TEST(PageText, ShowsAQuestionMarkForWhatItCannotShow) {
  EXPECT_EQ(PageText("東京 \U0001F30B!"), "?? ?!");
  EXPECT_EQ(PageText(QString(QChar(0xd800)) + "x"), "?x");
  EXPECT_EQ(PageText(QString(QChar(0xfffd))), "?");
}

TEST(PageText, TurnsControlCharactersIntoBlanks) {
  EXPECT_EQ(PageText(QString("a\r\nb\tc") + QChar(0) + QChar(0x7f) + QChar(0x85) + "d"), "a  b c   d");
}

TEST(HtmlText, EscapesWhatMeansSomethingToABrowser) {
  EXPECT_EQ(HtmlText("<b a=\"1\" c='2'>&amp;</b>"), "&lt;b a=&quot;1&quot; c=&#39;2&#39;&gt;&amp;amp;&lt;/b&gt;");
}

TEST(RowText, ReplacesAngleBracketsByTheirLookAlikes) { EXPECT_EQ(RowText("<i>"), "\x8bi\x9b"); }

TEST(RowText, EscapesAnAmpersandOnlyWhereItCouldStartAReference) {
  EXPECT_EQ(RowText("Bosnia & Herzegovina"), "Bosnia & Herzegovina");
  EXPECT_EQ(RowText("&lt;script&gt; &#60; a&"), "&amp;lt;script&amp;gt; &amp;#60; a&");
}

TEST(RowText, NeverHoldsTheMarkOfARow) {
  for (const char *place : {"x /recenteqs/Quakes/y", "/recenteqs//recenteqs/Quakes/", "/recenteqs/recenteqs/Quakes/",
                            "/recenteqs/Quakes/recenteqs/Quakes/", "/rerecenteqs/Quakescenteqs/Quakes/"})
    EXPECT_FALSE(RowText(place).contains("/recenteqs/Quakes/")) << place;
}

TEST(RowText, CutsWhatIsLongerThanAnyPlace) { EXPECT_EQ(RowText(QString(5000, 'x')).size(), 200); }

TEST(Places, GetMilesBesideTheKilometres) {
  EXPECT_EQ(PlaceWithMiles("6km ENE of Yucaipa, CA"), "6 km ( 4 mi) ENE of Yucaipa, CA");
  EXPECT_EQ(PlaceWithMiles("4 km W of Castaic, CA"), "4 km ( 2 mi) W of Castaic, CA");
  EXPECT_EQ(PlaceWithMiles("24km S of Cedar City, UT"), "24 km (15 mi) S of Cedar City, UT");
  EXPECT_EQ(PlaceWithMiles("300 km SE of Kodiak, Alaska"), "300 km (186 mi) SE of Kodiak, Alaska");
  EXPECT_EQ(PlaceWithMiles("0km N of Here"), "0 km ( 0 mi) N of Here");
}

TEST(Places, WithoutADistanceStayAsTheyAre) {
  for (const char *place : {"", "Fiji region", "6km of Yucaipa", "12 km  of Pinnacles, CA", "6 miles N of X",
                            "6km N of ", "about 6km N of X", "6km north of X", "1234567 km N of X"})
    EXPECT_EQ(PlaceWithMiles(place), place);
}

TEST(Places, MayHoldWhatLooksLikeAPlaceholder) {
  EXPECT_EQ(PlaceWithMiles("6km N of %1 %4"), "6 km ( 4 mi) N of %1 %4");
}

}  // namespace
}  // namespace borvane::mirror
