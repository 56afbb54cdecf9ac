// The alert's popup on a screen.
#include <QEvent>
#include <QTimer>
#include <QtTest/QTest>
#include <algorithm>

#include <gtest/gtest.h>

#include "alert/frmQalert.h"
#include "alert/quake_alert.h"
#include "core/dispatch.h"
#include "desktop/appearance.h"
#include "settings/conffrm.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

/// An event that calls for an alert, whose shaking has that many steps.
void Alert(ScreenRig &rig, int steps) {
  Module1->LastAlertTime = "02/07/2018 02:00:00 AM";
  rig.random().Add((steps + 0.5) / 600);
  EventFields fields(20);
  fields(1) = "5.2";
  fields(2) = "2018/02/07";
  fields(3) = "01:00:00";
  CheckEventAlert(fields);
}

TEST(AlertOnTheDesktop, ShowsTheMagnitudeReadableOnLightAndDarkDesktops) {
  for (const bool dark : {false, true}) {
    ScreenRig rig;
    PreferDark(dark);
    Alert(rig, 0);
    Settle();
    const QImage picture = Picture(rig.window(*frmQalert));
    const QColor ground = picture.pixelColor(1, 1);
    EXPECT_EQ(ground, QColor(0x20, 0x20, 0x20));
    const QWidget &label = rig.widget(*frmQalert, "Label1");
    const QColor text = label.palette().color(QPalette::WindowText);
    EXPECT_GE(Contrast(text, ground), 4.5) << dark;
    EXPECT_GT(PixelsOf(picture, text), 20) << "large letters have their color inside: " << dark;
    for (const char *name : {"Label1", "Label2"})
      EXPECT_EQ(picture.pixelColor(rig.widget(*frmQalert, name).geometry().topLeft()), ground) << name;
  }
  PreferDark(false);
}

TEST(AlertOnTheDesktop, SpeaksTheMagnitude) {
  ScreenRig rig;
  Alert(rig, 0);
  EXPECT_EQ(SpokenName(rig.window(*frmQalert)), " Quake Alert");
  EXPECT_EQ(SpokenName(rig.widget(*frmQalert, "Label1")), "5.2");
}

TEST(AlertOnTheDesktop, HasAPointerOfItsOwn) {
  ScreenRig rig;
  Alert(rig, 0);
  EXPECT_EQ(rig.window(*frmQalert).cursor().shape(), Qt::BitmapCursor);
}

TEST(AlertOnTheDesktop, WandersStepByStep) {
  ScreenRig rig;
  class Places : public QObject {
   public:
    int moves = 0;

   protected:
    bool eventFilter(QObject * /*object*/, QEvent *event) override {
      moves += event->type() == QEvent::Move ? 1 : 0;
      return false;
    }
  } places;
  Alert(rig, 0);
  FormWindow &window = rig.window(*frmQalert);
  const QPoint before = window.pos();
  window.installEventFilter(&places);
  // Each random number is 0.5: every step goes 25 twips to the right and down.
  Alert(rig, 6);
  EXPECT_EQ(window.pos() - before, QPoint(10, 10));
  EXPECT_GE(places.moves, 6);
}

TEST(AlertOnTheDesktop, SoundsInsideTheShaking) {
  ScreenRig rig;
  conffrm->Check2.Value = 1;
  conffrm->Text5(1).Text = "1";
  rig.events();
  // 50 steps of 10 ms, and the popup's timer ticks after 100 ms.
  Alert(rig, 50);
  const Lines events = rig.events();
  EXPECT_EQ(std::count(events.begin(), events.end(), "beep 1000 10"), 1);
}

void ClosePopup() {
  Dispatch([] { current->Unload(*frmQalert, UnloadMode::CloseBox); });
}

TEST(AlertOnTheDesktop, GoesOnUnseenWhenThePopupIsClosedDuringTheShaking) {
  ScreenRig rig;
  QTimer::singleShot(0, ClosePopup);
  Alert(rig, 6);
  Settle();
  ASSERT_NE(frmQalert.IfLoaded(), nullptr) << "each step names it";
  EXPECT_FALSE(frmQalert->IsShown());
}

TEST(AlertOnTheDesktop, GoesOnWhenThePopupIsClosedDuringTheAlarm) {
  ScreenRig rig;
  conffrm->Check2.Value = 1;
  conffrm->Text5(1).Text = "1";
  Alert(rig, 0);
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, [&look] {
    // The alarm begins with that.
    if (frmQalert->Timer1.Enabled())
      return;
    look.stop();
    ClosePopup();
  });
  look.start(0);
  ASSERT_TRUE(QTest::qWaitFor([] { return frmQalert.IfLoaded() == nullptr; }, 60'000));
  Settle();
  const Lines events = rig.events();
  EXPECT_EQ(std::count(events.begin(), events.end(), "beep 1000 10"), 1);
}

}  // namespace
}  // namespace borvane
