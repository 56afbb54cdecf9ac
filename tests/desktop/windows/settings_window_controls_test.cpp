#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QScreen>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "records/frmRecords.h"
#include "settings/conffrm.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

/// The settings window as the user gets to it, above the records window.
class SettingsControls : public testing::Test {
 protected:
  SettingsControls() {
    frmRecords->Show();
    conffrm->Show(&*frmRecords);
    Settle();
    rig.events();
  }

  FormWindow &window() const { return rig.window(*conffrm); }

  /// The writes since the last look.
  Lines writes() {
    Lines lines = rig.events();
    std::erase_if(lines, [](const std::string &line) { return !line.starts_with("write "); });
    return lines;
  }

  ScreenRig rig;
};

TEST_F(SettingsControls, AreInTheMiddleOfTheScreen) {
  // The program counts on a frame of 8 by 27 pixels, the screen has its own.
  const QSize free = QGuiApplication::primaryScreen()->size() - QSize(386 + 8, 402 + 27);
  EXPECT_LE((window().pos() - QPoint(free.width() / 2, free.height() / 2)).manhattanLength(), 1);
}

TEST_F(SettingsControls, ShowsEveryControlOfItsForm) {
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

TEST_F(SettingsControls, BoxesAreNamedByTheirLabelsForAScreenReader) {
  EXPECT_EQ(SpokenName(*rig.widget<QComboBox>(*conffrm, "Combo2").lineEdit()), "Zone");
  EXPECT_EQ(SpokenName(rig.widget(*conffrm, "Text1")), "Alert on Mag >=");
}

TEST_F(SettingsControls, PickedAreaIsStored) {
  auto &areas = rig.widget<QComboBox>(*conffrm, "Combo2");
  EXPECT_EQ(areas.count(), 25);
  areas.setFocus();
  QTest::keyClick(&areas, Qt::Key_Down);
  EXPECT_EQ(SpokenValue(areas), "");
  EXPECT_EQ(writes(), Lines());

  areas.setCurrentIndex(0);
  QTest::keyClick(&areas, Qt::Key_Down);

  EXPECT_EQ(SpokenValue(areas), "Los Angeles");
  EXPECT_EQ(writes(), Lines({"write Area=Los Angeles"}));
}

TEST_F(SettingsControls, RefreshIsStoredWhenItsBoxIsLeft) {
  auto &refresh = rig.widget<QLineEdit>(*conffrm, "Text2");
  refresh.setFocus();
  refresh.selectAll();
  QTest::keyClicks(&refresh, "60");
  EXPECT_EQ(writes(), Lines());

  QTest::mouseClick(&rig.widget(*conffrm, "Text1"), Qt::LeftButton);

  EXPECT_EQ(writes(), Lines({"write Refresh=60"}));
}

TEST_F(SettingsControls, RefreshIsStoredWhenTheRecordsWindowIsEntered) {
  rig.widget(*conffrm, "Text2").setFocus();
  Settle();
  rig.widget(*frmRecords, "ListView1").setFocus();
  QApplication::setActiveWindow(&rig.window(*frmRecords));
  Settle();

  EXPECT_EQ(writes(), Lines({"write Refresh=700"}));
}

TEST_F(SettingsControls, CoordinatesAreEnabledWithTheirBox) {
  EXPECT_FALSE(rig.widget(*conffrm, "Text6(0)").isEnabled());
  auto &box = rig.widget<QCheckBox>(*conffrm, "Check4");
  QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, box.height() / 2));

  EXPECT_TRUE(rig.widget(*conffrm, "Text6(0)").isEnabled());
  EXPECT_TRUE(rig.widget(*conffrm, "Label1(10)").isEnabled());
  QTest::keyClicks(&rig.widget(*conffrm, "Text6(0)"), "116.5");
  EXPECT_EQ(conffrm->Text6(0).Text(), "116.5");
}

TEST_F(SettingsControls, CloseHidesTheWindowAndReleasesTheToolbarsButton) {
  frmRecords->Toolbar1.Buttons(2).Value = 1;
  QTest::mouseClick(&rig.widget(*conffrm, "Command2"), Qt::LeftButton);

  EXPECT_FALSE(window().isVisible());
  EXPECT_NE(conffrm.IfLoaded(), nullptr);
  EXPECT_EQ(frmRecords->Toolbar1.Buttons(2).Value(), 0);
}

TEST_F(SettingsControls, CloseBoxDoesWhatCloseDoes) {
  frmRecords->Toolbar1.Buttons(2).Value = 1;
  window().close();
  Settle();

  EXPECT_FALSE(window().isVisible());
  ASSERT_NE(conffrm.IfLoaded(), nullptr);
  EXPECT_EQ(frmRecords->Toolbar1.Buttons(2).Value(), 0);
}

TEST_F(SettingsControls, CloseBoxDoesNothingWhileCloseIsDisabled) {
  conffrm->Command2.Enabled = false;
  window().close();
  Settle();

  EXPECT_TRUE(window().isVisible());
}

TEST_F(SettingsControls, KeepsWhatIsTypedWhenItIsShownAgain) {
  conffrm->Text8.Enabled = true;
  QTest::keyClicks(&rig.widget(*conffrm, "Text8"), "Yucaipa");
  conffrm->Hide();
  conffrm->Show(&*frmRecords);
  Settle();

  EXPECT_EQ(SpokenValue(rig.widget(*conffrm, "Text8")), "Yucaipa");
}

}  // namespace
}  // namespace borvane
