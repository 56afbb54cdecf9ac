#include "desktop/windows/info_windows.h"

#include <QPushButton>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "core/start.h"
#include "desktop/appearance.h"
#include "info/Aboutfrm.h"
#include "info/banner.h"
#include "info/nobotherfrm.h"
#include "records/frmRecords.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

/// The middle of the first screen, as far as a window of an odd size can be there.
void ExpectMiddleOfTheScreen(const FormWindow &window) {
  constexpr int frame_height = 27;
  constexpr int frame_side = 8;
  const QSize outer = window.size() + QSize(frame_side, frame_height);
  const QSize screen = window.screen()->size();
  EXPECT_NEAR(window.pos().x() - window.screen()->geometry().x(), (screen.width() - outer.width()) / 2, 1);
  EXPECT_NEAR(window.pos().y() - window.screen()->geometry().y(), (screen.height() - outer.height()) / 2, 1);
}

/// Whether the label's text can be read where it is.
void ExpectReadable(const ScreenRig &rig, const FormBase &form, const char *label, const QColor &ground) {
  const QColor text = rig.widget(form, label).palette().color(QPalette::WindowText);
  EXPECT_GE(Contrast(text, ground), 4.5) << label;
  EXPECT_GT(PixelsOf(Picture(rig.widget(form, label)), text, half), 10) << label;
}

// The banner.

const std::string product_page = "open http://maker.localhost:17650/borvane/index.html for banner";

TEST(BannerOnScreen, IsInFrontOfTheRecordsWindowAfterAStart) {
  ScreenRig rig;
  Main();
  Settle();
  EXPECT_TRUE(rig.window(*frmRecords).isVisible());
  EXPECT_EQ(QApplication::activeWindow(), &rig.window(*banner));
  ExpectMiddleOfTheScreen(rig.window(*banner));
}

TEST(BannerOnScreen, HasAWhiteBoxAcrossTheWindowAtEverySize) {
  ScreenRig rig;
  banner->Show();
  Settle();
  FormWindow &window = rig.window(*banner);
  EXPECT_EQ(window.size(), QSize(478, 121));
  QWidget &box = rig.widget(*banner, "Picture1");
  for (const QSize &size : {QSize(478, 121), QSize(900, 300), QSize(100, 100)}) {
    window.resize(size);
    Settle();
    EXPECT_EQ(box.x(), 0);
    EXPECT_EQ(box.width(), window.width());
    EXPECT_EQ(Picture(box).pixelColor(2, 2), QColor(Qt::white));
    EXPECT_TRUE(box.rect().contains(rig.widget(*banner, "Label3").geometry()));
  }
  EXPECT_GE(window.width(), 400) << "no smaller than its texts need";
}

TEST(BannerOnScreen, IsReadableOnLightAndDarkDesktops) {
  for (const bool dark : {false, true}) {
    ScreenRig rig;
    PreferDark(dark);
    banner->Show();
    Settle();
    const QColor ground = Picture(rig.window(*banner)).pixelColor(1, 1);
    EXPECT_EQ(ground.lightness() < 128, dark);
    ExpectReadable(rig, *banner, "Label1", ground);
    ExpectReadable(rig, *banner, "Label2", ground);
    ExpectReadable(rig, *banner, "Label3", Qt::white);
    EXPECT_TRUE(rig.widget(*banner, "Label3").font().underline());
  }
  PreferDark(false);
}

TEST(BannerOnScreen, OpensThePageFromTheBoxTheTextAndTheKeyboard) {
  ScreenRig rig;
  banner->Show();
  Settle();
  QWidget &box = rig.widget(*banner, "Picture1");
  QWidget &link = rig.widget(*banner, "Label3");
  EXPECT_EQ(box.cursor().shape(), Qt::PointingHandCursor);
  EXPECT_EQ(link.cursor().shape(), Qt::PointingHandCursor);

  rig.events();
  QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(3, 3));
  EXPECT_EQ(rig.events().back(), product_page);
  QTest::mouseClick(&link, Qt::LeftButton);
  EXPECT_EQ(rig.events().back(), product_page);
  QTest::keyClick(rig.window(*banner).windowHandle(), Qt::Key_Tab);
  QTest::keyClick(rig.window(*banner).windowHandle(), Qt::Key_Space);
  EXPECT_EQ(rig.events().back(), product_page);
  EXPECT_TRUE(rig.window(*banner).isVisible());
}

TEST(BannerOnScreen, IsGoneAfterItsCloseBox) {
  ScreenRig rig;
  banner->Show();
  Settle();
  rig.window(*banner).close();
  EXPECT_EQ(banner.IfLoaded(), nullptr);
}

// The about window.

TEST(AboutOnScreen, IsInTheMiddleOfTheScreenWithASizeThatStays) {
  ScreenRig rig;
  Aboutfrm->Show();
  Settle();
  const FormWindow &window = rig.window(*Aboutfrm);
  EXPECT_EQ(window.size(), QSize(373, 186));
  EXPECT_EQ(window.minimumSize(), window.maximumSize());
  ExpectMiddleOfTheScreen(window);
}

TEST(AboutOnScreen, IsReadableOnLightAndDarkDesktops) {
  for (const bool dark : {false, true}) {
    ScreenRig rig;
    PreferDark(dark);
    frmRecords->Label9.Caption = "Users Online: 17";
    Aboutfrm->Show();
    Settle();
    const QColor ground = Picture(rig.window(*Aboutfrm)).pixelColor(1, 1);
    EXPECT_EQ(ground.lightness() < 128, dark);
    for (const char *label : {"Label1", "Label2", "Label3", "Label4", "Label5"})
      ExpectReadable(rig, *Aboutfrm, label, ground);
    EXPECT_EQ(SpokenName(rig.widget(*Aboutfrm, "Label5")), "Users Online: 17 with this version");
  }
  PreferDark(false);
}

TEST(AboutOnScreen, OpensTheProductsByTheMouseAndTheKeyboard) {
  ScreenRig rig;
  Aboutfrm->Show();
  Settle();
  QWidget &link = rig.widget(*Aboutfrm, "Label1");
  EXPECT_EQ(link.cursor().shape(), Qt::PointingHandCursor);
  rig.events();
  QTest::mouseClick(&link, Qt::LeftButton);
  EXPECT_EQ(rig.events(), Lines{"open http://maker.localhost:17650/products.html for Aboutfrm"});
  QTest::keyClick(rig.window(*Aboutfrm).windowHandle(), Qt::Key_Tab);
  QTest::keyClick(rig.window(*Aboutfrm).windowHandle(), Qt::Key_Space);
  EXPECT_EQ(rig.events(), Lines{"open http://maker.localhost:17650/products.html for Aboutfrm"});
}

// The note.

TEST(UserNoteOnScreen, ShowsItsTextInABoxThatIsNamed) {
  ScreenRig rig;
  nobotherfrm->Show();
  Settle();
  ExpectMiddleOfTheScreen(rig.window(*nobotherfrm));
  QWidget &box = rig.widget(*nobotherfrm, "Text1");
  EXPECT_EQ(box.accessibleName(), "Borvane - About you (the user)");
  const QString text = QString::fromStdString(SpokenValue(box));
  EXPECT_TRUE(text.startsWith("Hi this is Borvane Team.")) << text.toStdString();
  EXPECT_TRUE(text.endsWith("Thank you")) << text.toStdString();
}

}  // namespace
}  // namespace borvane
