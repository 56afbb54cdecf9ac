#include <QLabel>
#include <QWindow>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "records/frmRecords.h"
#include "settings/conffrm.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

class RecordsOnScreen : public testing::Test {
 protected:
  RecordsOnScreen() {
    frmRecords->Show();
    Settle();
    rig.events();
  }

  FormWindow &window() const { return rig.window(*frmRecords); }

  /// Where the control is in its window, in pixels.
  QRect place(const char *name) const {
    const QWidget &widget = rig.widget(*frmRecords, name);
    return {widget.mapTo(&window(), QPoint()), widget.size()};
  }

  void press(Qt::Key key) const { QTest::keyClick(window().windowHandle(), key); }

  ScreenRig rig;
};

TEST_F(RecordsOnScreen, HasItsDesignSize) { EXPECT_EQ(window().size(), QSize(735, 555)); }

TEST_F(RecordsOnScreen, IsTitledAndHasAnIcon) {
  EXPECT_EQ(window().windowTitle(), "Borvane - Last Events");
  EXPECT_FALSE(window().windowIcon().pixmap(32, 32).toImage().isNull());
  EXPECT_GT(PixelsOf(window().windowIcon().pixmap(32, 32).toImage(), QColor(0x1f, 0x3a, 0x4d)), 200);
}

TEST_F(RecordsOnScreen, ListsGrowWithTheWindow) {
  const QRect history = place("ListView1");
  window().resize(835, 655);
  Settle();

  EXPECT_EQ(place("ListView1"), history.adjusted(0, 0, 100, 100));
  EXPECT_EQ(place("StatusBar1"), QRect(0, 630, 835, 25));
}

TEST_F(RecordsOnScreen, CloseBoxOnlyHidesTheWindow) {
  window().close();
  Settle();
  EXPECT_FALSE(window().isVisible());
  ASSERT_NE(frmRecords.IfLoaded(), nullptr);

  frmRecords->Show();
  EXPECT_TRUE(window().isVisible());
}

TEST_F(RecordsOnScreen, HiddenLabelsComeWithTheirKeys) {
  const QWidget &users = rig.widget(*frmRecords, "Label9");
  const QWidget &heartbeat = rig.widget(*frmRecords, "Label10");
  EXPECT_FALSE(users.isVisible());
  EXPECT_FALSE(heartbeat.isVisible());

  press(Qt::Key_U);
  press(Qt::Key_F10);

  EXPECT_TRUE(users.isVisible());
  EXPECT_TRUE(heartbeat.isVisible());
}

TEST_F(RecordsOnScreen, KeysCountWhateverHasTheFocus) {
  for (const char *name : {"ListView1", "ListView2", "settings"}) {
    rig.widget(*frmRecords, name).setFocus();
    frmRecords->StatusBar1.Panels(1).Text = "Depth: 7";
    press(Qt::Key_X);
    EXPECT_EQ(frmRecords->StatusBar1.Panels(1).Text(), "") << name;
  }
}

TEST_F(RecordsOnScreen, WatermarkComesBackUnderThePointer) {
  frmRecords->Timer2.Enabled = false;
  frmRecords->Image1.Visible = false;
  const QPoint place(500, 110);
  QTest::mouseMove(&window(), place);
  Settle();

  EXPECT_TRUE(rig.widget(*frmRecords, "Image1").isVisible());
  EXPECT_TRUE(frmRecords->Timer2.Enabled());
}

TEST_F(RecordsOnScreen, HeadlineIsUnderlinedUnderThePointer) {
  frmRecords->Label3.Visible = true;
  frmRecords->Label3.Caption = "MAP 5.1 2018/02/07 Off the coast";
  QWidget &headline = rig.widget(*frmRecords, "Label3");
  const QImage plain = Picture(headline);
  QTest::mouseMove(&headline, QPoint(30, 6));
  Settle();
  EXPECT_NE(Picture(headline), plain);

  QTest::mouseMove(&window(), QPoint(300, 130));
  Settle();
  EXPECT_EQ(Picture(headline), plain);
}

TEST_F(RecordsOnScreen, VersionShowsTheAboutWindow) {
  QTest::mouseClick(&rig.widget(*frmRecords, "Label6"), Qt::LeftButton);
  Settle();

  const QWidgetList windows = QApplication::topLevelWidgets();
  EXPECT_TRUE(std::any_of(windows.begin(), windows.end(), [](const QWidget *shown) {
    return shown->isVisible() && shown->windowTitle() == "Borvane 2007";
  }));
}

TEST_F(RecordsOnScreen, RefreshWithoutAnAreaLeadsToTheSettings) {
  QTest::mouseClick(&rig.widget(*frmRecords, "refresh"), Qt::LeftButton);
  Settle();

  EXPECT_TRUE(rig.window(*conffrm).isVisible());
  EXPECT_EQ(frmRecords->Toolbar1.Buttons(1).Value(), 0);
  EXPECT_EQ(frmRecords->Toolbar1.Buttons(2).Value(), 1);
}

/// The desktop's colours while it is there.
class Colours {
 public:
  explicit Colours(const QPalette &palette) : before_(QApplication::palette()) { QApplication::setPalette(palette); }
  Colours(const Colours &) = delete;
  Colours &operator=(const Colours &) = delete;
  ~Colours() { QApplication::setPalette(before_); }

 private:
  QPalette before_;
};

TEST(Watermark, IsFaintAndYetThereOnLightAndOnDarkGround) {
  for (const QColor &ground : {QColor(0xef, 0xef, 0xef), QColor(0xff, 0xff, 0xff), QColor(0x32, 0x32, 0x32)}) {
    const Colours colours{QPalette(ground)};
    ScreenRig rig;
    frmRecords->Show();
    QWidget &watermark = rig.widget(*frmRecords, "Image1");
    ASSERT_EQ(watermark.size(), QSize(262, 31));
    const QImage picture = Picture(watermark);
    constexpr int all = 262 * 31;
    constexpr int barely_seen = 12;
    constexpr int faint = 80;
    EXPECT_GT(PixelsOf(picture, ground), all / 2) << ground.name().toStdString();
    EXPECT_LT(PixelsOf(picture, ground, barely_seen), all - 600) << ground.name().toStdString();
    EXPECT_EQ(PixelsOf(picture, ground, faint), all) << ground.name().toStdString();
  }
}

TEST(DarkDesktop, LeavesTextsAndPicturesReadable) {
  const Colours colours{QPalette(QColor(0x33, 0x33, 0x33))};
  ScreenRig rig;
  frmRecords->Show();
  frmRecords->Label8.Enabled = true;
  Settle();
  const QColor white = Qt::white;
  EXPECT_GT(PixelsOf(Picture(rig.widget(*frmRecords, "Label4")), white, half), 50);
  EXPECT_GT(PixelsOf(Picture(rig.widget(*frmRecords, "Label8")), white, half), 20);
  EXPECT_GT(PixelsOf(Picture(rig.widget(*frmRecords, "quit")), white, half), 50);
  EXPECT_GT(PixelsOf(Picture(rig.widget(*frmRecords, "Frame2")), white, half), 20);
}

}  // namespace
}  // namespace borvane
