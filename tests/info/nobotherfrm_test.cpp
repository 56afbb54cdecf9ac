#include "info/nobotherfrm.h"

#include <gtest/gtest.h>

#include "feed/hosts.h"
#include "support/rig.h"

namespace borvane {
namespace {

/// The lines of a text, without the carriage return and line feed between them.
Lines LinesIn(std::string_view text) {
  Lines lines;
  for (std::size_t end = text.find("\r\n"); end != std::string_view::npos; end = text.find("\r\n")) {
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(end + 2);
  }
  lines.emplace_back(text);
  return lines;
}

TEST(UserNoteForm, HasItsDesign) {
  Rig rig;
  UserNoteForm &form = *nobotherfrm;
  EXPECT_EQ(form.name(), "nobotherfrm");
  EXPECT_EQ(form.Caption(), "Borvane - About you (the user)");
  EXPECT_EQ(form.ScaleWidth(), 8355);
  EXPECT_EQ(form.ScaleHeight(), 3060);
  EXPECT_EQ(form.border(), BorderStyle::FixedSingle);
  EXPECT_TRUE(form.Text1.multi_line());
  EXPECT_EQ(form.Label1.Caption(), "This screen will not show again");
}

TEST(UserNoteForm, IsInTheMiddleOfTheFirstScreenFromItsLoad) {
  Rig rig;
  EXPECT_EQ(nobotherfrm->Left(), (1280 * 15 - 8355 - 120) / 2.0F);
  EXPECT_EQ(nobotherfrm->Top(), (1024 * 15 - 3060 - 405) / 2.0F);
}

TEST(UserNoteForm, FillsItsBoxAtItsLoad) {
  Rig rig;
  const Lines lines = LinesIn(nobotherfrm->Text1.Text());
  ASSERT_EQ(lines.size(), 11U);
  EXPECT_EQ(lines[0], "Hi this is Borvane Team.");
  EXPECT_EQ(lines[1], "");
  EXPECT_EQ(lines[2], "Let me take just a minute of your time. ");
  EXPECT_EQ(lines[3],
            "We at Nalvorin would like to know who is using our software and where. If it is used in a school, a news "
            "service, a tv channel or any other type of organization please give us a minute and send us an email "
            "telling us. We would love to list your organization at our web site. If this is the case send your name, "
            "organization where it is used with address, city and country, your position at such organization, and any "
            "other relevant information. If the org has a graphic logo we can place it with a link as well.");
  EXPECT_EQ(lines[4], "");
  EXPECT_EQ(lines[5],
            "If you are a student, tell us about you. What you do, in what way this program is helping you and what "
            "else we can do to keep helping you.");
  EXPECT_EQ(lines[6], "");
  EXPECT_EQ(lines[7], "");
  EXPECT_EQ(lines[8], "send your mail to: borvane@nalvorin.example");
  EXPECT_EQ(lines[9], "");
  EXPECT_EQ(lines[10], "Thank you");
}

TEST(UserNoteForm, NamesTheStoredMailAddress) {
  Rig rig;
  rig.store().Put(hosts_key, "MakerMail", "quakes@school.example");
  EXPECT_NE(nobotherfrm->Text1.Text().find("send your mail to: quakes@school.example\r\n\r\nThank you"),
            std::string::npos);
}

TEST(UserNoteForm, IsOpenedByNothingInTheFirstRuns) {
  Rig rig;
  rig.start();
  EXPECT_EQ(nobotherfrm.IfLoaded(), nullptr);
}

}  // namespace
}  // namespace borvane
