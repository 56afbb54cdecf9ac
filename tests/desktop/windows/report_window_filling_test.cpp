// The felt report, filled and sent by the mouse alone and by the keyboard alone.
#include "support/desktop/report_by_hand.h"

namespace borvane {
namespace {

constexpr const char *key = "3.1-2024:02:29-23:59:59-34.000N-117.000W";

/// The first line of a request of the service.
std::string Request(const std::string &query) { return "GET /cgi-bin/borvane/control.pl?" + query + " HTTP/1.1"; }

/// A person who has reported before: the zip code is there already.
TEST_F(ReportByHand, IsFilledAndSentByTheMouseAlone) {
  rig.store()["Tzip"] = "90210";
  OpenForReport();
  Click("Text1(2)");
  for (const char *box : {"Check2(0)", "Check2(1)", "Check2(5)", "Check2(6)"})
    Click(box);
  Pick("Combo1", 3);
  Pick("Combo2", 4);
  EXPECT_FALSE(widget("Command1(0)").isEnabled()) << "the floor is still to come";
  Pick("Combo3", 13);
  ASSERT_TRUE(IsSubmitReady());
  Click("Command1(0)");
  ASSERT_TRUE(IsThanked());

  EXPECT_EQ(SpokenName(widget("Label2(2)")), "Thank you!!               Your report was received!");
  EXPECT_EQ(SpokenName(widget("Label2(4)")), "5.571429");
  const std::string details = "235|||90210|||0|1|1|0|0|0|1|1|3|4|13";
  EXPECT_EQ(maker.request_lines(),
            Lines({Request("cmd=puta&map=Los Angeles&strout=235|" + std::string(key) + "||5.571429|1|1|90210"),
                   Request("cmd=putb&map=Los Angeles&strout=" + details),
                   Request("cmd=putc&zip=90210&map=Los Angeles&strout=" + details)}));

  Click("Label3(1)");
  EXPECT_NE(rig.events().back().find("/shake/ous/html/unknown_form.html"), std::string::npos);
  answer = "235|" + std::string(key) + "||5.571429|1|1|90210\n";
  Click("Label3(2)");
  EXPECT_TRUE(Comes([this] { return widget("ListView1").isVisible(); }));
  EXPECT_FALSE(widget("Frame2").isVisible());
  ASSERT_EQ(ComPart->ListView1.ListItems.Count(), 1);
  EXPECT_EQ(ComPart->ListView1.ListItems(1).SubItems(1), "5.571429");

  Click("Command1(1)");
  Settle();
  EXPECT_EQ(ComPart.IfLoaded(), nullptr);
}

/// From the top to the bottom, by Tab, letters, Space, the arrow keys and Return.
TEST_F(ReportByHand, IsFilledAndSentByTheKeyboardAlone) {
  OpenForReport();
  Type("jane doe");
  ASSERT_TRUE(TabTo("Text1(1)"));
  Type("12");
  ASSERT_TRUE(TabTo("Text1(2)"));
  Type("92399");
  ASSERT_TRUE(TabTo("Check1"));
  Press(Qt::Key_Space);
  ASSERT_TRUE(TabTo("Text1(3)"));
  Type("east high");
  ASSERT_TRUE(TabTo("Check2(5)"));
  Press(Qt::Key_Space);
  ASSERT_TRUE(TabTo("Combo1"));
  PickByKeys("Combo1", 1);
  ASSERT_TRUE(TabTo("Combo2"));
  PickByKeys("Combo2", 2);
  ASSERT_TRUE(TabTo("Combo3"));
  PickByKeys("Combo3", 3);
  ASSERT_TRUE(TabTo("Text1(4)"));
  Type("Loud & long");
  Press(Qt::Key_Return);
  Type("GET / HTTP/1.1");
  ASSERT_TRUE(IsSubmitReady());
  ASSERT_TRUE(TabTo("Command1(0)"));
  Press(Qt::Key_Space);
  ASSERT_TRUE(IsThanked());

  EXPECT_EQ(SpokenName(widget("Label2(4)")), "2.285714");
  const std::string details = "235||12|92399|East High|Loud & long%0D%0AGET / HTTP/1.1|1|0|0|0|0|0|1|0|1|2|3";
  EXPECT_EQ(maker.request_lines(),
            Lines({Request("cmd=puta&map=Los Angeles&strout=235|" + std::string(key) + "|12|2.285714|0|1|92399"),
                   Request("cmd=putb&map=Los Angeles&strout=" + details),
                   Request("cmd=putc&zip=92399&map=Los Angeles&strout=" + details)}));
  EXPECT_EQ(rig.store().TextOf("Tzip"), "92399");
  EXPECT_EQ(rig.store().TextOf("MySchool"), "East High");
  EXPECT_TRUE(rig.store().Has("User1"));

  ASSERT_TRUE(TabTo("Label3(2)"));
  answer = "235|" + std::string(key) + "||2.285714|1|1|92399\n";
  Press(Qt::Key_Space);
  EXPECT_TRUE(Comes([this] { return widget("ListView1").isVisible(); }));
  ASSERT_TRUE(TabTo("Command1(1)"));
  Press(Qt::Key_Space);
  Settle();
  EXPECT_EQ(ComPart.IfLoaded(), nullptr);
}

/// A text that is typed is none of the list's: its place is -1, and it adds no strength.
TEST_F(ReportByHand, SendsTextsThatAreTypedIntoTheChoices) {
  OpenForReport();
  ASSERT_TRUE(TabTo("Text1(2)"));
  for (const char *box : {"Combo1", "Combo2", "Combo3"}) {
    ASSERT_TRUE(TabTo(box));
    Type("strong");
  }
  ASSERT_TRUE(TabTo("Text1(0)"));
  Type("x");
  ASSERT_TRUE(TabTo("Text1(1)"));
  ASSERT_TRUE(IsSubmitReady());
  ASSERT_TRUE(TabTo("Command1(0)"));
  Press(Qt::Key_Space);
  ASSERT_TRUE(IsThanked());

  EXPECT_EQ(SpokenName(widget("Label2(4)")), "1.285714");
  ASSERT_EQ(maker.request_lines().size(), 3u);
  EXPECT_TRUE(maker.request_lines()[1].ends_with("|-1|-1|-1 HTTP/1.1")) << maker.request_lines()[1];
}

/// Each entry that the arrow keys come by in a closed box is a click on it, and adds its strength.
TEST_F(ReportByHand, CountsEachStrengthThatTheArrowKeysComeBy) {
  OpenForReport();
  ASSERT_TRUE(TabTo("Combo2"));
  for (int press = 0; press < 3; ++press)
    Press(Qt::Key_Down);
  EXPECT_EQ(ComPart->Combo2.Text(), "moderate");
  EXPECT_EQ(program().report.FeltScore, 6);
}

}  // namespace
}  // namespace borvane
