#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QRadioButton>
#include <functional>
#include <set>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

#include "bars/Form1.h"
#include "support/desktop/settings_by_hand.h"

namespace borvane {
namespace {

TEST_F(SettingsByHand, BeginsInTheListOfAreas) { EXPECT_TRUE(widget("Combo2").hasFocus()); }

TEST_F(SettingsByHand, StoresABoxWhenTheTabKeyLeavesIt) {
  const std::tuple<const char *, const char *, const char *> boxes[] = {{"Text2", "60", "write Refresh=60"},
                                                                        {"Text1", "4.5", "write Alert=4.5"},
                                                                        {"Text7", "450", "write EdgeOffset=450"},
                                                                        {"Text8", "Yucaipa", "write LogCity=Yucaipa"}};
  for (const auto &[name, text, write] : boxes) {
    Type(name, text);
    rig.events();
    QTest::keyClick(&widget(name), Qt::Key_Tab);
    EXPECT_EQ(happened(), Lines{write});
  }
}

TEST_F(SettingsByHand, StoresTheAlarmAtEachKey) {
  Type("Text5(0)", "2");
  happened();
  Type("Text5(1)", "3");
  QTest::keyClicks(&widget("Text5(1)"), "0");
  EXPECT_EQ(happened(), (Lines{"write AlarmPeriod=3", "write AlarmPeriod=30"}));
  EXPECT_EQ(rig.store()["AlarmTone"], "2");
}

TEST_F(SettingsByHand, StoresABoxThatIsClickedOrTickedByTheSpaceKey) {
  Click("Check6");
  Press("Check6", Qt::Key_Space);
  EXPECT_EQ(happened(), (Lines{"write KeepPosition= 1", "write KeepPosition= 0"}));
}

TEST_F(SettingsByHand, ActsOnTheMouseAloneForTheSoundAndTheColors) {
  Click("Check2");
  EXPECT_EQ(rig.widget<QLabel>(*conffrm, "Label2").text(), "Enabled");
  Click("Check3");
  EXPECT_EQ(happened(), (Lines{"write EnableAlarmSound=1", "write Colorize= 1"}));

  Press("Check2", Qt::Key_Space);
  Press("Check3", Qt::Key_Space);
  EXPECT_EQ(conffrm->Check2.Value(), 0);
  EXPECT_EQ(conffrm->Check3.Value(), 0);
  EXPECT_EQ(rig.widget<QLabel>(*conffrm, "Label2").text(), "Enabled");
  EXPECT_EQ(happened(), Lines());
}

TEST_F(SettingsByHand, WritesAndDeletesTheStartEntry) {
  Click("Check7");
  Click("Check7");
  const std::string entry = R"(Software\Microsoft\Windows\CurrentVersion\Run\Borvane)";
  const Lines lines = happened();
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(lines[0], "write StartWOS= 1");
  EXPECT_TRUE(lines[1].starts_with("write " + entry + "=")) << lines[1];
  EXPECT_EQ(lines[2], "write StartWOS= 0");
  EXPECT_EQ(lines[3], "delete " + entry);
}

TEST_F(SettingsByHand, GoesThroughTheColorsByClicksAndBySpace) {
  EXPECT_EQ(SpokenName(widget("Picture1(1)")), "Location: dark green");
  QTest::mouseMove(&widget("Picture1(1)"), QPoint(5, 5));
  QTest::mouseClick(&widget("Picture1(1)"), Qt::LeftButton);
  EXPECT_EQ(SpokenName(widget("Picture1(1)")), "Location: blue");
  Press("Picture1(1)", Qt::Key_Space);
  EXPECT_EQ(SpokenName(widget("Picture1(1)")), "Location: red");
  EXPECT_EQ(rig.widget<QLabel>(*conffrm, "Label1(14)").text(), "2");
  EXPECT_EQ(happened(), (Lines{"write Color1= 1", "write Color1= 2"}));
  EXPECT_GT(PixelsOf(Picture(widget("Picture1(1)")), Qt::red), 100);

  QMouseEvent over(QEvent::MouseMove, QPointF(5, 5), widget("Picture1(0)").mapToGlobal(QPointF(5, 5)), Qt::NoButton,
                   Qt::NoButton, Qt::NoModifier);
  QApplication::sendEvent(&widget("Picture1(0)"), &over);
  EXPECT_EQ(rig.widget<QLabel>(*conffrm, "Label1(14)").text(), "0") << "the code of the box under the pointer";
}

TEST_F(SettingsByHand, StoresTheDisplayThatIsChosenByAKey) {
  Press("Combo1", Qt::Key_Down);
  Press("Combo1", Qt::Key_Down);
  EXPECT_EQ(happened(), (Lines{"write StrongerDisplay=0", "write StrongerDisplay=1"}));
}

TEST_F(SettingsByHand, ResetsAndTestsTheAlarm) {
  Type("Text5(0)", "2");
  Type("Text5(1)", "1");
  happened();
  Click("Command1(0)");
  const Lines tones = happened();
  EXPECT_EQ(tones.size(), 91u);
  EXPECT_EQ(tones.front(), "beep 100 2");

  Click("Command1(1)");
  EXPECT_EQ(happened(), (Lines{"write AlarmTone=10", "write AlarmPeriod=7"}));
  EXPECT_EQ(SpokenValue(widget("Text5(1)")), "7");
}

TEST_F(SettingsByHand, StoresTheOptionsAtClose) {
  Click("Check1");
  EXPECT_FALSE(widget("Command2").isEnabled()) << "neither option is chosen";
  Click("Option2(1)");
  EXPECT_TRUE(widget("Command2").isEnabled());
  Click("Option1(2)");
  EXPECT_EQ(happened(), Lines{"write EnableLog= 1"});

  QTest::mouseClick(&widget("Command2"), Qt::LeftButton);
  EXPECT_EQ(rig.store()["LogAll"], "False");
  EXPECT_EQ(rig.store()["EdgeDetect"], " 2");
}

TEST_F(SettingsByHand, ChoosesAtTheScreensEdgeByClicksAndByTheArrowKeys) {
  const auto chosen = [] {
    std::string options;
    for (int i = 0; i < conffrm->Option1.Count(); ++i)
      options += conffrm->Option1(i).Value() ? '1' : '0';
    return options;
  };
  const auto is_shown = [&](int i) {
    return rig.widget<QRadioButton>(*conffrm, ("Option1(" + std::to_string(i) + ")").c_str()).isChecked();
  };
  ASSERT_EQ(chosen(), "100");
  Click("Option1(1)");
  EXPECT_EQ(chosen(), "010");
  Click("Option1(0)");
  EXPECT_EQ(chosen(), "100");

  Press("Option1(0)", Qt::Key_Right);
  EXPECT_EQ(chosen(), "010");
  EXPECT_TRUE(widget("Option1(1)").hasFocus());
  Press("Option1(1)", Qt::Key_Right);
  EXPECT_EQ(chosen(), "001");
  Press("Option1(2)", Qt::Key_Left);
  EXPECT_EQ(chosen(), "010");
  EXPECT_TRUE(is_shown(1) && !is_shown(0) && !is_shown(2));
  EXPECT_EQ(happened(), Lines()) << "they are stored at Close";

  Press("Command2", Qt::Key_Space);
  EXPECT_EQ(rig.store()["EdgeDetect"], " 1");
}

TEST_F(SettingsByHand, ChoosesForTheLogByClicksAndByTheArrowKeys) {
  Click("Check1");
  Click("Option2(0)");
  EXPECT_TRUE(conffrm->Option2(0).Value());
  Press("Option2(0)", Qt::Key_Right);
  EXPECT_TRUE(conffrm->Option2(1).Value());
  EXPECT_FALSE(conffrm->Option2(0).Value());
  EXPECT_TRUE(widget("Option2(1)").hasFocus());
  Press("Option2(1)", Qt::Key_Left);
  EXPECT_TRUE(conffrm->Option2(0).Value());
  EXPECT_TRUE(conffrm->Option1(0).Value()) << "the other group keeps its choice";
  EXPECT_EQ(happened(), Lines{"write EnableLog= 1"});

  QTest::mouseClick(&widget("Command2"), Qt::LeftButton);
  EXPECT_EQ(rig.store()["LogAll"], "True");
  EXPECT_EQ(rig.store()["EdgeDetect"], " 0");
}

TEST_F(SettingsByHand, StoresNothingOfTheSnapshotAndTheCoordinates) {
  Click("Check5");
  EXPECT_EQ(conffrm->Check5.Value(), 0);
  Press("Check5", Qt::Key_Space);
  EXPECT_EQ(conffrm->Check5.Value(), 1);

  Click("Check4");
  Type("Text6(0)", "34.1");
  QTest::keyClick(&widget("Text6(0)"), Qt::Key_Tab);
  EXPECT_TRUE(widget("Text6(1)").hasFocus());
  Type("Text6(1)", "116.5");
  QTest::keyClick(&widget("Text6(1)"), Qt::Key_Tab);
  EXPECT_EQ(conffrm->Text6(0).Text(), "34.1");
  EXPECT_EQ(conffrm->Text6(1).Text(), "116.5");
  EXPECT_EQ(happened(), Lines());
}

TEST_F(SettingsByHand, MovesTheShortBarByItsBoxes) {
  Module1->BarMode = face_short_bar;
  Type("Text3", "150");
  Type("Text4", "75");
  EXPECT_EQ(Form1->Top(), 150);
  EXPECT_EQ(Form1->Left(), 75);
  EXPECT_EQ(rig.store()["smBarLeft"], "75");
}

/// Controls that no handler of the window's own serves, and who reads them.
const std::set<std::string> read_elsewhere = {
    "Check5",                                 // the switching on of the refresh
    "Text6(0)",   "Text6(1)",                 // the address of the page
    "Option1(0)", "Option1(1)", "Option1(2)"  // "Close", and the bars at the screen's edge
};

TEST_F(SettingsByHand, HasNoControlWithoutAHandlerOrAReader) {
  conffrm->Option2(0).Value = true;
  conffrm->Check1.Value = 1;
  conffrm->Check4.Value = 1;
  int used = 0;
  const std::function<void(const Container &)> look = [&](const Container &container) {
    for (Control *control : container.children()) {
      if (const auto *inner = dynamic_cast<const Container *>(control))
        look(*inner);
      const auto *there = window().findChild<QWidget *>(QString::fromStdString(control->FullName()));
      if (there == nullptr || !there->isVisible() || there->focusPolicy() == Qt::NoFocus)
        continue;
      EXPECT_TRUE(there->isEnabled()) << control->FullName();
      const auto *text_box = dynamic_cast<const TextBox *>(control);
      const bool is_handled = control->Click.IsWired() || control->LostFocus.IsWired() || control->MouseUp.IsWired() ||
                              (text_box != nullptr && text_box->Change.IsWired());
      EXPECT_NE(is_handled, read_elsewhere.contains(control->FullName())) << control->FullName();
      ++used;
    }
  };
  look(*conffrm);
  EXPECT_EQ(used, 30);
}

}  // namespace
}  // namespace borvane
