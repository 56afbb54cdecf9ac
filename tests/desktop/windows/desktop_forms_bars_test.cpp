// The two bars on a screen, worked by a pointer and by keys.
#include <QApplication>
#include <QMenu>
#include <QScreen>
#include <QTimer>
#include <QWindow>
#include <QtTest/QTest>
#include <functional>

#include <gtest/gtest.h>

#include "bars/Form1.h"
#include "bars/bar_content.h"
#include "bars/newTagFrm.h"
#include "core/registry.h"
#include "records/frmRecords.h"
#include "settings/conffrm.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

constexpr int timeout = 60'000;  // milliseconds

/// Works in a menu as soon as it is open, and closes it. `opened` is what the menu showed, one entry each.
class MenuWork {
 public:
  explicit MenuWork(const char *chosen = "") {
    QObject::connect(&look_, &QTimer::timeout, [this, chosen] {
      auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
      if (menu == nullptr)
        return;
      look_.stop();
      for (QAction *action : menu->actions()) {
        opened += (action->isSeparator() ? "-" : action->text().toStdString()) + (action->isChecked() ? "*;" : ";");
        if (action->text() == QLatin1String(chosen))
          QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
      }
      menu->close();
    });
    look_.start(1);
  }

  std::string opened;

 private:
  QTimer look_;
};

class BarOnScreen : public testing::Test {
 protected:
  QWidget &widget(const FormBase &form, const char *name) { return rig.widget(form, name); }

  /// Moves the pointer over the widget.
  static void Hover(QWidget &widget, const QPoint &point) {
    QTest::mouseMove(&widget, point + QPoint(0, 1));
    QTest::mouseMove(&widget, point);
    Settle();
  }

  static QPoint Middle(const QWidget &widget) { return widget.rect().center(); }

  void Press(const FormBase &form, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(rig.window(form).windowHandle(), key, modifiers);
    Settle();
  }

  ScreenRig rig;
};

struct ShortBarOnScreen : BarOnScreen {
  ShortBarOnScreen() {
    conffrm->Text3.Text = "300";
    Form1->Show();
    Settle();
  }
};

struct LongBarOnScreen : BarOnScreen {
  LongBarOnScreen() {
    // A bar stays away for four ticks, longer than a busy machine takes to look.
    conffrm->Text2.Text = "500";
    newTagFrm->Show();
    Settle();
  }

  /// Moves the pointer over the bar's right end.
  void HoverEnd() {
    QWidget &box = widget(*newTagFrm, "Picture1");
    Hover(box, {box.width() - 40, box.height() / 2});
  }
};

TEST_F(ShortBarOnScreen, HasItsPlaceItsSizeAndNoFrame) {
  const FormWindow &window = rig.window(*Form1);
  EXPECT_EQ(window.pos(), QPoint(3, 20));
  EXPECT_EQ(window.size(), QSize(529, 29));
  EXPECT_TRUE(window.windowFlags().testFlag(Qt::FramelessWindowHint));
  EXPECT_EQ(SpokenName(rig.window(*Form1)), "Borvane Short Bar");
}

TEST_F(ShortBarOnScreen, HasReadableTextsOnBlackAndOnBlue) {
  UpdateShortBar();
  for (const bool is_open : {false, true}) {
    QWidget &box = widget(*Form1, "Picture1");
    if (is_open)
      Hover(box, {200, 2});
    const QColor ground = Picture(box).pixelColor(box.width() - 2, 2);
    EXPECT_EQ(ground, is_open ? QColor(0, 90, 245) : QColor(Qt::black));
    for (const char *name : {"Label1(0)", "Label1(1)", "Label1(2)"}) {
      const QColor text = widget(*Form1, name).palette().color(QPalette::WindowText);
      EXPECT_GE(Contrast(text, ground), 4.5) << name;
      EXPECT_GT(PixelsOf(Picture(widget(*Form1, name)), text, half), 5) << name;
    }
  }
}

TEST_F(ShortBarOnScreen, CollapsesAndOpensUnderThePointer) {
  Form1->IdleTicks = 99;
  Form1->Timer1_Timer();
  Settle();
  EXPECT_FALSE(widget(*Form1, "Check1").isVisible());
  EXPECT_EQ(rig.window(*Form1).width(), 491);

  Hover(widget(*Form1, "Picture1"), {200, 20});
  EXPECT_FALSE(widget(*Form1, "Check1").isVisible()) << "over the lower part";
  Hover(widget(*Form1, "Picture1"), {200, 2});
  EXPECT_TRUE(widget(*Form1, "Check1").isVisible());
  EXPECT_TRUE(widget(*Form1, "Check2").isVisible());
  EXPECT_EQ(rig.window(*Form1).width(), 529);
}

TEST_F(ShortBarOnScreen, MovesAndChangesItsWidthByKeys) {
  const FormWindow &window = rig.window(*Form1);
  const QPoint start = window.pos();
  for (int i = 0; i < 3; ++i) {
    Press(*Form1, Qt::Key_Down);
    Press(*Form1, Qt::Key_Right);
  }
  EXPECT_EQ(window.pos() - start, QPoint(10, 10));
  Press(*Form1, Qt::Key_Up);
  Press(*Form1, Qt::Key_Left);
  EXPECT_EQ(window.pos() - start, QPoint(7, 7));

  for (int i = 0; i < 3; ++i)
    Press(*Form1, Qt::Key_S);
  EXPECT_EQ(window.width(), 519);
  for (int i = 0; i < 3; ++i)
    Press(*Form1, Qt::Key_E);
  EXPECT_EQ(window.width(), 529);

  const int screen = QApplication::primaryScreen()->size().width();
  Press(*Form1, Qt::Key_R);
  EXPECT_EQ(window.x(), screen - 529);
  Press(*Form1, Qt::Key_C);
  EXPECT_EQ(window.x(), (screen - 529 + 1) / 2);
  Press(*Form1, Qt::Key_L);
  EXPECT_EQ(window.x(), 0);
}

TEST_F(ShortBarOnScreen, OpensItsMenuByABoxAndByKeys) {
  const std::string entries = "Settings;Expand;-;More Info;Strong Motion Maps;-;On Top;About;Exit;";
  {
    const MenuWork work;
    QTest::mouseClick(&widget(*Form1, "Check1"), Qt::LeftButton, {}, Middle(widget(*Form1, "Check1")));
    EXPECT_EQ(work.opened, entries);
    EXPECT_EQ(Form1->Check1.Value(), 0);
  }
  {
    const MenuWork work("On Top");
    Press(*Form1, Qt::Key_Menu);
    EXPECT_EQ(work.opened, entries);
  }
  {
    const MenuWork work;
    Press(*Form1, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(work.opened, "Settings;Expand;-;More Info;Strong Motion Maps;-;On Top*;About;Exit;");
  }
}

TEST_F(ShortBarOnScreen, ExpandsToTheRecordsWindow) {
  frmRecords->Hide();
  const MenuWork work("Expand");
  Press(*Form1, Qt::Key_Menu);
  EXPECT_TRUE(rig.window(*frmRecords).isVisible());
  EXPECT_FALSE(rig.window(*Form1).isVisible());
}

TEST_F(ShortBarOnScreen, SwitchesTheRefreshByItsBox) {
  EXPECT_FALSE(widget(*Form1, "Label5").isEnabled());
  QTest::mouseClick(&widget(*Form1, "Check2"), Qt::LeftButton, {}, Middle(widget(*Form1, "Check2")));
  EXPECT_TRUE(widget(*Form1, "Label5").isEnabled());
  EXPECT_TRUE(frmRecords->Timer1.Enabled());
}

TEST_F(LongBarOnScreen, LiesAcrossTheTopInOneLine) {
  const FormWindow &window = rig.window(*newTagFrm);
  EXPECT_EQ(window.pos(), QPoint(0, 0));
  EXPECT_EQ(window.size(), QSize(QApplication::primaryScreen()->size().width(), 24));
  for (const char *name : {"Label1(0)", "Label1(2)", "Label2(0)", "Label2(2)"})
    EXPECT_LE(widget(*newTagFrm, name).geometry().bottom(), 24) << name;
}

TEST_F(LongBarOnScreen, HasAPurpleHandle) {
  QWidget &handle = widget(*newTagFrm, "Check1");
  EXPECT_EQ(Picture(handle).pixelColor(handle.width() - 1, 0), QColor(128, 0, 128));
  EXPECT_EQ(SpokenName(handle), "Menu");
}

TEST_F(LongBarOnScreen, OpensItsMenuByTheRightButtonAndByAKey) {
  const std::string entries = "Refresh;More Info;Strong Motion Maps;-;Expand;Settings;-;On Top;About;Exit;";
  {
    const MenuWork work;
    QTest::mouseClick(&widget(*newTagFrm, "Check1"), Qt::RightButton, {}, Middle(widget(*newTagFrm, "Check1")));
    EXPECT_EQ(work.opened, entries);
  }
  {
    const MenuWork work("On Top");
    Press(*newTagFrm, Qt::Key_Menu);
    EXPECT_EQ(work.opened, entries);
    EXPECT_TRUE(rig.window(*newTagFrm).windowFlags().testFlag(Qt::WindowStaysOnTopHint));
  }
}

TEST_F(LongBarOnScreen, MovesOutOfThePointersWayAndComesBack) {
  HoverEnd();
  EXPECT_EQ(rig.window(*newTagFrm).x(), -60);
  EXPECT_TRUE(QTest::qWaitFor([this] { return rig.window(*newTagFrm).x() == 0; }, timeout));
  EXPECT_FALSE(newTagFrm->Timer1.Enabled());
}

TEST_F(LongBarOnScreen, HidesFromThePointerAndComesBackWithoutAskingForTheKeyboard) {
  conffrm->Option1(1).Value = true;
  HoverEnd();
  EXPECT_FALSE(rig.window(*newTagFrm).isVisible());
  EXPECT_TRUE(QTest::qWaitFor([this] { return rig.window(*newTagFrm).isVisible(); }, timeout));
  EXPECT_TRUE(rig.window(*newTagFrm).testAttribute(Qt::WA_ShowWithoutActivating));
  EXPECT_EQ(rig.window(*newTagFrm).x(), 0);
}

TEST_F(LongBarOnScreen, StaysWhereItIsWithIgnore) {
  conffrm->Option1(2).Value = true;
  HoverEnd();
  EXPECT_EQ(rig.window(*newTagFrm).x(), 0);
  EXPECT_TRUE(newTagFrm->Timer1.Enabled());
}

TEST_F(LongBarOnScreen, IsAsFarAwayAsAScreenAllows) {
  conffrm->Text7.Text = "1e9";
  HoverEnd();
  EXPECT_EQ(newTagFrm->Left(), -1e9F);
  EXPECT_EQ(rig.window(*newTagFrm).x(), -30'000);
}

}  // namespace
}  // namespace borvane
