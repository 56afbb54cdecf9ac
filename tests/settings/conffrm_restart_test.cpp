#include <map>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "core/program.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

/// Changes every setting of the settings window as its user does.
void ChangeEverySetting(Rig &rig) {
  rig.choose(conffrm->Combo2, "Seattle Area");
  for (const auto &[box, text] : {std::pair(&conffrm->Text2, "60"), std::pair(&conffrm->Text1, "4,5 x"),
                                  std::pair(&conffrm->Text7, " 450"), std::pair(&conffrm->Text8, "Yucaipa; CA ")}) {
    rig.type(*box, text);
    rig.leave(*box);
  }
  for (CheckBox *box : {&conffrm->Check6, &conffrm->Check3, &conffrm->Check1, &conffrm->Check7, &conffrm->Check2}) {
    rig.tick_off(*box, 1);
    rig.release_mouse_on(*box);
  }
  for (int box = 0; box < 3; ++box) {
    for (int click = 0; click <= box; ++click)
      rig.click(conffrm->Picture1(box));
  }
  rig.happen([] { conffrm->Option1(2).Value = true; });
  rig.happen([] { conffrm->Option2(0).Value = true; });
  rig.type(conffrm->Text5(0), "20");
  rig.type(conffrm->Text5(1), "3");
  rig.choose(conffrm->Combo1, "Update on refresh!");
  rig.click(conffrm->Command2);
}

/// The values in the store, as text, but for those that count runs.
std::map<std::string, std::string> Stored(FakeStore &store) {
  std::map<std::string, std::string> values;
  for (const std::string &name : store.Names()) {
    if (name != "RunTime" && name != "noBother")
      values[name] = store.TextOf(name);
  }
  return values;
}

TEST(SettingsForm, StoresEveryChangedSettingInItsForm) {
  WatchingRig rig;
  ChangeEverySetting(rig);
  const std::map<std::string, std::string> expected = {{"MacID", "500000"},
                                                       {"ad", "5"},
                                                       {"Area", "Seattle Area"},
                                                       {"Refresh", "60"},
                                                       {"Alert", "4,5 x"},
                                                       {"EdgeOffset", " 450"},
                                                       {"LogCity", "Yucaipa; CA "},
                                                       {"KeepPosition", " 1"},
                                                       {"Colorize", " 1"},
                                                       {"EnableLog", " 1"},
                                                       {"StartWOS", " 1"},
                                                       {"EnableAlarmSound", "1"},
                                                       {"Color0", " 1"},
                                                       {"Color1", " 2"},
                                                       {"Color2", " 3"},
                                                       {"EdgeDetect", " 2"},
                                                       {"LogAll", "True"},
                                                       {"AlarmTone", "20"},
                                                       {"AlarmPeriod", "3"},
                                                       {"StrongerDisplay", "1"}};
  EXPECT_EQ(Stored(rig.store()), expected);
}

TEST(SettingsForm, FindsEverySettingAgainAfterARestart) {
  std::map<std::string, std::string> stored;
  {
    WatchingRig rig;
    ChangeEverySetting(rig);
    stored = Stored(rig.store());
  }
  Rig rig;
  for (const auto &[name, text] : stored)
    rig.store()[name] = text;
  rig.start();

  EXPECT_EQ(conffrm->Combo2.Text(), "Seattle Area");
  EXPECT_EQ(conffrm->Text2.Text(), "60");
  EXPECT_EQ(conffrm->Text1.Text(), "4,5 x");
  EXPECT_EQ(conffrm->Text7.Text(), " 450");
  EXPECT_EQ(conffrm->Text8.Text(), "Yucaipa; CA ");
  for (const CheckBox *box : {&conffrm->Check6, &conffrm->Check3, &conffrm->Check1, &conffrm->Check7, &conffrm->Check2})
    EXPECT_EQ(box->Value(), 1) << box->FullName();
  EXPECT_EQ(conffrm->Picture1(0).BackColor(), 0xFF0000u);
  EXPECT_EQ(conffrm->Picture1(1).BackColor(), 0x0000FFu);
  EXPECT_EQ(conffrm->Picture1(2).BackColor(), 0x00FF00u);
  EXPECT_TRUE(conffrm->Option1(2).Value());
  EXPECT_TRUE(conffrm->Option2(0).Value());
  EXPECT_TRUE(conffrm->Option2(0).Enabled());
  EXPECT_EQ(conffrm->Text5(0).Text(), "20");
  EXPECT_EQ(conffrm->Text5(1).Text(), "3");
  EXPECT_EQ(conffrm->Combo1.Text(), "Update on refresh!");
  EXPECT_TRUE(conffrm->Command2.Enabled());
  EXPECT_EQ(Stored(rig.store()), stored) << "a start changes none of them";
}

}  // namespace
}  // namespace borvane
