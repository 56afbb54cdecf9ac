#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QScreen>
#include <QTemporaryDir>
#include <QWindow>

#include <gtest/gtest.h>

#include "desktop/appearance.h"
#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

bool IsOnTop(const FormWindow &window) {
  const bool is_on_top = window.windowFlags().testFlag(Qt::WindowStaysOnTopHint);
  EXPECT_EQ(window.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint), is_on_top);
  return is_on_top;
}

TEST(FormWindowOrder, IsKeptOnTopFromItsFirstShowOnWhenItWasAskedForBefore) {
  const ScreenRig rig;
  notice->KeepOnTop(true);
  other_form->KeepOnTop(true);
  other_form->KeepOnTop(false);
  notice->Show();
  other_form->Show();

  EXPECT_TRUE(IsOnTop(rig.window(*notice)));
  EXPECT_FALSE(IsOnTop(rig.window(*other_form)));
}

TEST(FormWindowOrder, IsSwitchedWhileItIsOpenWithoutHidingOrANewWindow) {
  const ScreenRig rig;
  notice->Show();
  Settle();
  FormWindow &window = rig.window(*notice);
  const WId id = window.winId();
  class Hides : public QObject {
   public:
    int count = 0;

   protected:
    bool eventFilter(QObject * /*object*/, QEvent *event) override {
      count += event->type() == QEvent::Hide || event->type() == QEvent::WinIdChange ? 1 : 0;
      return false;
    }
  } hides;
  window.installEventFilter(&hides);

  notice->KeepOnTop(true);
  EXPECT_TRUE(IsOnTop(window));
  notice->KeepOnTop(false);
  EXPECT_FALSE(IsOnTop(window));
  Settle();

  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(window.winId(), id);
  EXPECT_EQ(hides.count, 0);
}

TEST(FormWindowOrder, StaysOnTopWhenItIsHiddenAndShown) {
  const ScreenRig rig;
  notice->KeepOnTop(true);
  notice->Show();
  notice->Hide();
  notice->Show();

  EXPECT_TRUE(IsOnTop(rig.window(*notice)));
}

TEST(FormWindowFocus, IsLeftWhereItIsByAFormThatDoesNotTakeIt) {
  const ScreenRig rig;
  notice->Show();
  sample->Show();
  Settle();
  ASSERT_EQ(QApplication::activeWindow(), &rig.window(*sample));
  // This screen gives every new window the keyboard; a window manager looks at this.
  EXPECT_TRUE(rig.window(*notice).testAttribute(Qt::WA_ShowWithoutActivating));
  EXPECT_TRUE(rig.window(*notice).isVisible());

  notice->Show();
  Settle();
  EXPECT_EQ(QApplication::activeWindow(), &rig.window(*sample));
}

TEST(FormWindowFocus, IsTakenByAnyOtherFormAlsoWhenItIsOpenAlready) {
  const ScreenRig rig;
  sample->Show();
  other_form->Show();
  Settle();
  ASSERT_EQ(QApplication::activeWindow(), &rig.window(*other_form));

  sample->Show();
  Settle();
  EXPECT_EQ(QApplication::activeWindow(), &rig.window(*sample));
  EXPECT_FALSE(rig.window(*sample).testAttribute(Qt::WA_ShowWithoutActivating));
}

TEST(FormWindowPlace, IsTheMiddleOfTheFirstScreenWhereTheDesignSaysSo) {
  const ScreenRig rig;
  const QSize screen = QApplication::primaryScreen()->size();
  EXPECT_EQ(notice->Left(), (static_cast<float>(screen.width()) * 15 - 1830) / 2);
  EXPECT_EQ(notice->Top(), (static_cast<float>(screen.height()) * 15 - 1185) / 2);
  notice->Show();
  Settle();

  EXPECT_EQ(rig.window(*notice).pos(), QPoint((screen.width() - 122) / 2, (screen.height() - 79 + 1) / 2));
}

TEST(FormWindowPlace, CountsFromTheFirstScreenWhereverThatIsAmongTheOthers) {
  const QTemporaryDir folder;
  QFile screens(folder.filePath("screens.json"));
  ASSERT_TRUE(screens.open(QFile::WriteOnly));
  screens.write(R"({"screens": [
      {"name": "first", "x": 1920, "y": 40, "width": 1280, "height": 1024},
      {"name": "to its left", "x": 0, "y": 0, "width": 1920, "height": 1080}]})");
  screens.close();
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("QT_QPA_PLATFORM", "offscreen:configfile=" + screens.fileName());
  process.setProcessEnvironment(environment);
  process.start(QCoreApplication::applicationFilePath(), {"--places"});
  ASSERT_TRUE(process.waitForFinished(60'000));

  // In the middle, after a move to 2000, 100, and a bar at 40, 20.
  EXPECT_EQ(process.readAllStandardOutput(), "8685 7087.5 2499 513\n1200 900 2000 100\n1960 60\n");
}

TEST(FormWindowBackground, IsTheFormsAndFollowsIt) {
  const ScreenRig rig;
  notice->Show();
  sample->Show();
  FormWindow &window = rig.window(*notice);
  const QColor usual = Picture(rig.window(*sample)).pixelColor(1, 1);
  EXPECT_EQ(Picture(window).pixelColor(1, 1), QColor(0x00, 0x18, 0x30));

  notice->BackColor = 0x0000FF;
  EXPECT_EQ(Picture(window).pixelColor(1, 1), QColor(Qt::red));

  notice->BackColor = color_button_face;
  EXPECT_EQ(Picture(window).pixelColor(1, 1), usual);
}

TEST(FormWindowBackground, ThatIsAColourOfTheSystemChangesWithTheDesktop) {
  const ScreenRig rig;
  notice->BackColor = 0x80000002;
  notice->Show();
  FormWindow &window = rig.window(*notice);
  const QColor light = Picture(window).pixelColor(1, 1);
  PreferDark(true);
  const QColor dark = Picture(window).pixelColor(1, 1);
  PreferDark(false);

  EXPECT_EQ(dark, DarkPalette().color(QPalette::Highlight));
  EXPECT_NE(light, dark);
  EXPECT_EQ(Picture(window).pixelColor(1, 1), light);
}

TEST(FormWindowPointer, IsTheProgramsOwnOverTheWindowAndItsLinks) {
  const ScreenRig rig;
  notice->MousePointer = pointer_custom;
  notice->Label1.Click = [] {};
  notice->Show();
  FormWindow &window = rig.window(*notice);
  ASSERT_EQ(window.cursor().shape(), Qt::BitmapCursor);
  EXPECT_EQ(rig.widget(*notice, "Label1").cursor().shape(), Qt::BitmapCursor);

  const QCursor pointer = window.cursor();
  EXPECT_EQ(pointer.hotSpot(), QPoint(0, 0));
  EXPECT_EQ(pointer.pixmap().size(), QSize(24, 24) * window.devicePixelRatioF());
  EXPECT_GT(qAlpha(pointer.pixmap().toImage().pixel(2, 3)), 200) << "the tip is at the place that it points at";

  notice->MousePointer = pointer_normal;
  EXPECT_EQ(window.cursor().shape(), Qt::ArrowCursor);
}

}  // namespace
}  // namespace borvane
