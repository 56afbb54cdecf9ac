#include "info/Aboutfrm.h"

#include <gtest/gtest.h>

#include "feed/hosts.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

/// What the about window's line says when it is loaded while the records window's label has that text.
std::string LineWith(std::string_view users_online) {
  Rig rig;
  rig.start();
  frmRecords->Label9.Caption = users_online;
  rig.happen([] { Aboutfrm->Show(); });
  return Aboutfrm->Label5.Caption();
}

TEST(AboutForm, HasItsDesign) {
  Rig rig;
  rig.start();
  AboutForm &form = *Aboutfrm;
  EXPECT_EQ(form.name(), "Aboutfrm");
  EXPECT_EQ(form.Caption(), "Borvane 2007");
  EXPECT_EQ(form.ScaleWidth(), 5595);
  EXPECT_EQ(form.ScaleHeight(), 2790);
  EXPECT_EQ(form.border(), BorderStyle::FixedSingle);

  EXPECT_EQ(form.Label3.Caption(), "Borvane Live");
  EXPECT_EQ(form.Label3.FontName(), "Arial Narrow");
  EXPECT_TRUE(form.Label3.Bold());
  EXPECT_GE(form.Label3.FontSize(), 18);
  EXPECT_FALSE(form.Label4.Caption().empty());
  EXPECT_EQ(form.Label4.Caption().find('\n'), std::string::npos);
  EXPECT_EQ(form.Label1.FontName(), "Arial Narrow");
  EXPECT_TRUE(form.Label1.Click.IsWired());
  EXPECT_TRUE(form.Label5.auto_size());
}

TEST(AboutForm, ShowsAVersionThatIsAFixedText) {
  RecordProperty("quirk", "about-version-is-a-fixed-text");
  Rig rig;
  rig.start();
  EXPECT_EQ(Aboutfrm->Label2.Caption(), "version 2 b3.5");
}

TEST(AboutForm, IsInTheMiddleOfTheFirstScreenFromItsLoad) {
  Rig rig;
  rig.start();
  EXPECT_EQ(Aboutfrm->Left(), (1280 * 15 - 5595 - 120) / 2.0F);
  EXPECT_EQ(Aboutfrm->Top(), (1024 * 15 - 2790 - 405) / 2.0F);
}

TEST(AboutForm, SaysHowManyUsersAreOnline) {
  EXPECT_EQ(LineWith("Users Online: 17"), "Users Online: 17 with this version");
  EXPECT_EQ(LineWith("Users Online: "), "Users Online:  with this version");
}

TEST(AboutForm, ReadsTheUsersOnlineAtItsLoadAlone) {
  RecordProperty("quirk", "about-counts-the-users-at-its-load");
  WatchingRig rig;
  rig.serve(who_is_on, "17");
  rig.click(frmRecords->Label6);
  EXPECT_EQ(Aboutfrm->Label5.Caption(), " with this version") << "nobody has been counted yet";

  rig.tick(frmRecords->Timer3);
  EXPECT_EQ(frmRecords->Label9.Caption(), "Users Online: 17");
  rig.click(frmRecords->Label6);
  EXPECT_EQ(Aboutfrm->Label5.Caption(), " with this version") << "it is still loaded";

  rig.happen([] { current->Unload(*Aboutfrm, UnloadMode::CloseBox); });
  rig.click(frmRecords->Label6);
  EXPECT_EQ(Aboutfrm->Label5.Caption(), "Users Online: 17 with this version");
}

TEST(AboutForm, MakesItsLineAsWideAsItsText) {
  Rig rig;
  rig.start();
  frmRecords->Label9.Caption = "Users Online: 17";
  EXPECT_EQ(Aboutfrm->Label5.Width(), 90 * 34);
}

TEST(AboutForm, LeadsToTheProductsOfTheMaker) {
  Rig rig;
  rig.start();
  rig.click(frmRecords->Label6);
  rig.clear_trace();
  EXPECT_EQ(Aboutfrm->Label1.Caption(), "http://maker.localhost:17650");
  rig.click(Aboutfrm->Label1);
  EXPECT_EQ(rig.trace(), Lines{"open http://maker.localhost:17650/products.html for Aboutfrm"});
}

TEST(AboutForm, ShowsTheStoredHostOfTheMaker) {
  Rig rig;
  rig.store().Put(hosts_key, "Maker", "quakes.school.example");
  rig.start();
  EXPECT_EQ(Aboutfrm->Label1.Caption(), "http://quakes.school.example");
  rig.clear_trace();
  rig.click(Aboutfrm->Label1);
  EXPECT_EQ(rig.trace(), Lines{"open http://quakes.school.example/products.html for Aboutfrm"});
}

TEST(AboutForm, OpensWhatItsLabelShows) {
  Rig rig;
  rig.start();
  Aboutfrm->Label1.Caption = "http://other.example";
  rig.clear_trace();
  rig.click(Aboutfrm->Label1);
  EXPECT_EQ(rig.trace(), Lines{"open http://other.example/products.html for Aboutfrm"});
}

TEST(AboutForm, ClosesByItsCloseBox) {
  Rig rig;
  rig.start();
  rig.click(frmRecords->Label6);
  rig.clear_trace();
  rig.happen([] { current->Unload(*Aboutfrm, UnloadMode::CloseBox); });
  EXPECT_EQ(rig.trace(), (Lines{"hide Aboutfrm", "unload Aboutfrm"}));
}

}  // namespace
}  // namespace borvane
