#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QScreen>

#include <gtest/gtest.h>

#include "support/desktop/settings_by_hand.h"

namespace borvane {
namespace {

TEST_F(SettingsByHand, IsInTheMiddleOfTheScreen) {
  // The program counts on a frame of 8 by 27 pixels, the screen has its own.
  const QSize free = QGuiApplication::primaryScreen()->size() - QSize(386 + 8, 402 + 27);
  EXPECT_LE((window().pos() - QPoint(free.width() / 2, free.height() / 2)).manhattanLength(), 1);
}

TEST_F(SettingsByHand, ShowsEveryControlOfItsForm) {
  const std::function<void(const Container &)> look = [&](const Container &container) {
    for (Control *control : container.children()) {
      const bool is_seen = dynamic_cast<TimerControl *>(control) == nullptr && dynamic_cast<Inet *>(control) == nullptr;
      auto *widget = window().findChild<QWidget *>(QString::fromStdString(control->FullName()));
      EXPECT_EQ(widget != nullptr && widget->isVisible(), is_seen) << control->FullName();
      if (const auto *inner = dynamic_cast<const Container *>(control))
        look(*inner);
    }
  };
  look(*conffrm);
}

TEST_F(SettingsByHand, NamesABoxByItsLabelForAScreenReader) {
  EXPECT_EQ(SpokenName(*rig.widget<QComboBox>(*conffrm, "Combo2").lineEdit()), "Zone");
  EXPECT_EQ(SpokenName(rig.widget(*conffrm, "Text1")), "Alert on Mag >=");
}

TEST_F(SettingsByHand, StoresThePickedArea) {
  auto &areas = rig.widget<QComboBox>(*conffrm, "Combo2");
  EXPECT_EQ(areas.count(), 25);
  areas.setFocus();
  QTest::keyClick(&areas, Qt::Key_Down);
  EXPECT_EQ(SpokenValue(areas), "");
  EXPECT_EQ(happened(), Lines());

  areas.setCurrentIndex(0);
  QTest::keyClick(&areas, Qt::Key_Down);

  EXPECT_EQ(SpokenValue(areas), "Los Angeles");
  EXPECT_EQ(happened(), Lines({"write Area=Los Angeles"}));
}

TEST_F(SettingsByHand, StoresABoxWhenTheRecordsWindowIsEntered) {
  rig.widget(*conffrm, "Text2").setFocus();
  Settle();
  rig.widget(*frmRecords, "ListView1").setFocus();
  QApplication::setActiveWindow(&rig.window(*frmRecords));
  Settle();

  EXPECT_EQ(happened(), Lines({"write Refresh=700"}));
}

TEST_F(SettingsByHand, EnablesTheCoordinatesWithTheirBox) {
  EXPECT_FALSE(rig.widget(*conffrm, "Text6(0)").isEnabled());
  auto &box = rig.widget<QCheckBox>(*conffrm, "Check4");
  QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, box.height() / 2));

  EXPECT_TRUE(rig.widget(*conffrm, "Text6(0)").isEnabled());
  EXPECT_TRUE(rig.widget(*conffrm, "Label1(10)").isEnabled());
  QTest::keyClicks(&rig.widget(*conffrm, "Text6(0)"), "116.5");
  EXPECT_EQ(conffrm->Text6(0).Text(), "116.5");
}

TEST_F(SettingsByHand, HidesAtCloseAndReleasesTheToolbarsButton) {
  frmRecords->Toolbar1.Buttons(2).Value = 1;
  QTest::mouseClick(&rig.widget(*conffrm, "Command2"), Qt::LeftButton);

  EXPECT_FALSE(window().isVisible());
  EXPECT_NE(conffrm.IfLoaded(), nullptr);
  EXPECT_EQ(frmRecords->Toolbar1.Buttons(2).Value(), 0);
}

TEST_F(SettingsByHand, DoesAtItsCloseBoxWhatCloseDoes) {
  frmRecords->Toolbar1.Buttons(2).Value = 1;
  window().close();
  Settle();

  EXPECT_FALSE(window().isVisible());
  ASSERT_NE(conffrm.IfLoaded(), nullptr);
  EXPECT_EQ(frmRecords->Toolbar1.Buttons(2).Value(), 0);
}

TEST_F(SettingsByHand, DoesNothingAtItsCloseBoxWhileCloseIsDisabled) {
  conffrm->Command2.Enabled = false;
  Type("Text2", "60");
  window().close();
  Settle();
  EXPECT_TRUE(window().isVisible());
  EXPECT_EQ(happened(), Lines()) << "the box is not left either";

  QTest::keyClick(&widget("Text2"), Qt::Key_Tab);
  EXPECT_EQ(happened(), Lines{"write Refresh=60"});
}

TEST_F(SettingsByHand, StoresTheBoxInUseBeforeItsCloseBoxDoesAnything) {
  frmRecords->Hide();
  Type("Text2", "63");
  happened();
  window().close();
  Settle();

  const Lines lines = happened();
  ASSERT_GE(lines.size(), 2u);
  EXPECT_EQ(lines[0], "write Refresh=63");
  EXPECT_EQ(lines[1], "write LogAll=False");
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "write Refresh=63"), 1);
}

TEST_F(SettingsByHand, StoresTheBoxInUseWhenNoOtherWindowTakesTheKeyboard) {
  frmRecords->Hide();
  Type("Text2", "63");
  happened();
  conffrm->Hide();
  Settle();

  EXPECT_EQ(happened(), Lines{"write Refresh=63"});
}

TEST_F(SettingsByHand, KeepsWhatIsTypedWhenItIsShownAgain) {
  QTest::keyClicks(&rig.widget(*conffrm, "Text8"), "Yucaipa");
  conffrm->Hide();
  conffrm->Show(&*frmRecords);
  Settle();

  EXPECT_EQ(SpokenValue(rig.widget(*conffrm, "Text8")), "Yucaipa");
}

}  // namespace
}  // namespace borvane
