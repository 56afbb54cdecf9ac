#pragma once

#include <QApplication>
#include <QMenu>
#include <QTimer>
#include <QWindow>
#include <QtTest/QTest>
#include <string>

#include <gtest/gtest.h>

#include "bars/Form1.h"
#include "bars/newTagFrm.h"
#include "settings/conffrm.h"
#include "support/desktop/screen_rig.h"

namespace borvane {

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

/// A bar on the screen, worked by a pointer and by keys.
class BarOnScreen : public testing::Test {
 protected:
  QWidget &widget(const FormBase &form, const char *name) { return rig.widget(form, name); }

  /// Moves the pointer over the widget.
  static void Hover(QWidget &widget, const QPoint &point) {
    QTest::mouseMove(&widget, point + QPoint(0, 1));
    QTest::mouseMove(&widget, point);
    Settle();
  }

  /// Presses and releases the right button where that point of the window is, whichever widget is there.
  void RightClick(const FormBase &form, const QPoint &point) {
    QTest::mouseClick(rig.window(form).windowHandle(), Qt::RightButton, {}, point);
    Settle();
  }

  /// What of the window the screen shows where the widget is, with all that is around and above it.
  QImage PartOf(const FormBase &form, const char *name) {
    QWidget &part = widget(form, name);
    return Picture(rig.window(form)).copy(QRect(part.mapTo(&rig.window(form), QPoint()), part.size()));
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

}  // namespace borvane
