#include "info/banner.h"

#include <gtest/gtest.h>

#include "feed/hosts.h"
#include "records/frmRecords.h"
#include "support/rig.h"

namespace borvane {
namespace {

const std::string page = "open http://maker.localhost:17650/borvane/index.html for banner";

TEST(BannerForm, HasItsDesign) {
  Rig rig;
  rig.start();
  BannerForm &form = *banner;
  EXPECT_EQ(form.name(), "banner");
  EXPECT_EQ(form.Caption(), "Borvane ");
  EXPECT_EQ(form.ScaleWidth(), 7170);
  EXPECT_EQ(form.ScaleHeight(), 1815);
  EXPECT_EQ(form.border(), BorderStyle::Sizable);

  EXPECT_EQ(form.Label1.Caption(), "Your help is needed to support this project");
  EXPECT_TRUE(form.Label1.Bold());

  EXPECT_EQ(form.Picture1.BackColor(), 0xFFFFFFU);
  EXPECT_EQ(form.Picture1.Left(), 0);
  EXPECT_EQ(form.Picture1.Width(), form.ScaleWidth());

  EXPECT_EQ(&form.Label3.container(), &form.Picture1);
  EXPECT_EQ(form.Label3.Caption(), "How can your help make a difference");
  EXPECT_TRUE(form.Label3.Bold());
  EXPECT_TRUE(form.Label3.Underline());
  EXPECT_EQ(form.Label3.ForeColor(), Rgb(0, 0, 255));
  EXPECT_EQ(form.Label3.FontSize(), 18);

  EXPECT_EQ(form.Label2.Caption(),
            "This ad supports our free software. It will show 4 times only. Please click at least once. Thank you");
}

TEST(BannerForm, IsInTheMiddleOfTheFirstScreenFromItsLoad) {
  Rig rig;
  rig.start();
  EXPECT_EQ(banner->Left(), (1280 * 15 - 7170 - 120) / 2.0F);
  EXPECT_EQ(banner->Top(), (1024 * 15 - 1815 - 405) / 2.0F);
}

TEST(BannerForm, ComesToTheFrontWithTheKeyboardAndWithoutAnOwner) {
  Rig rig;
  rig.start();
  EXPECT_TRUE(banner->takes_focus());
  EXPECT_EQ(rig.trace().back(), "show banner");
}

TEST(BannerForm, OpensThePageOfTheProductFromItsBoxAndFromTheTextInIt) {
  Rig rig;
  rig.start();
  rig.clear_trace();
  rig.click(banner->Picture1);
  EXPECT_EQ(rig.trace({"open", "hide", "write"}), Lines{page});
  rig.clear_trace();
  rig.click(banner->Label3);
  EXPECT_EQ(rig.trace({"open", "hide", "write"}), Lines{page}) << "nothing records the click";
  EXPECT_TRUE(banner->IsShown());
}

TEST(BannerForm, OpensThePageOnTheStoredHost) {
  Rig rig;
  rig.start();
  rig.store().Put(hosts_key, "Maker", "quakes.school.example:8080");
  rig.clear_trace();
  rig.click(banner->Label3);
  EXPECT_EQ(rig.trace({"open"}), Lines{"open http://quakes.school.example:8080/borvane/index.html for banner"});
}

TEST(BannerForm, ClosesByItsCloseBoxAlone) {
  Rig rig;
  rig.start();
  for (const Control *control : banner->children())
    EXPECT_EQ(dynamic_cast<const TimerControl *>(control), nullptr) << control->FullName();
  rig.clear_trace();
  rig.happen([] { current->Unload(*banner, UnloadMode::CloseBox); });
  EXPECT_EQ(rig.trace(), (Lines{"hide banner", "unload banner"}));
  EXPECT_TRUE(frmRecords->IsShown());
}

}  // namespace
}  // namespace borvane
