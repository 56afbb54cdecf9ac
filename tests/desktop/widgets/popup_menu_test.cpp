#include <QAccessible>
#include <QApplication>
#include <QCursor>
#include <QMenu>
#include <QTimer>
#include <QtTest/QTest>
#include <functional>

#include <gtest/gtest.h>

#include "core/dispatch.h"
#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

class PopupMenuOnScreen : public testing::Test {
 protected:
  PopupMenuOnScreen() {
    bar_form->mnuExpand.Click = [this] { rig.note("expand"); };
    bar_form->mnuTop.Click = [this] { rig.note("top"); };
    bar_form->mnuPale.Click = [this] { rig.note("pale"); };
    bar_form->mnuText.Click = [this] { rig.note("text"); };
    bar_form->Show();
    Settle();
    rig.events();
  }

  /// Opens the bar's menu, in an event of its own, and does `work` while it is open.
  void Open(const std::function<void(QMenu &)> &work) {
    QTimer::singleShot(0, [&] {
      auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
      if (menu == nullptr) {
        rig.note("no menu");
        return;
      }
      work(*menu);
      menu->close();
    });
    Dispatch([&] {
      current->host().ShowPopupMenu(*bar_form, bar_form->Tmnu);
      rig.note("returned");
    });
  }

  static void Choose(QMenu &menu, const char *text) {
    for (QAction *action : menu.actions()) {
      if (action->text() == QLatin1String(text))
        QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
    }
  }

  ScreenRig rig;
};

TEST_F(PopupMenuOnScreen, RaisesTheClickOfTheChosenEntryBeforeItReturns) {
  Open([](QMenu &menu) { Choose(menu, "Expand"); });

  EXPECT_EQ(rig.events(), Lines({"expand", "returned"}));
}

TEST_F(PopupMenuOnScreen, IsWorkedWithTheKeyboard) {
  Open([](QMenu &menu) {
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Return);
  });

  EXPECT_EQ(rig.events(), Lines({"top", "returned"}));
}

TEST_F(PopupMenuOnScreen, RaisesNothingWhenTheUserClosesIt) {
  Open([](QMenu &menu) { QTest::keyClick(&menu, Qt::Key_Escape); });

  EXPECT_EQ(rig.events(), Lines({"returned"}));
}

TEST_F(PopupMenuOnScreen, RaisesNothingForADisabledEntryOrASeparator) {
  Open([](QMenu &menu) {
    Choose(menu, "Pale");
    Choose(menu, "");
  });

  EXPECT_EQ(rig.events(), Lines({"returned"}));
}

TEST_F(PopupMenuOnScreen, ShowsItsVisibleEntriesAsTheyAreAtThatMoment) {
  bar_form->mnuExpand.Checked = true;
  bar_form->mnuTop.Checked = false;
  std::string seen;
  Open([&](QMenu &menu) {
    for (const QAction *action : menu.actions()) {
      seen += action->isSeparator() ? "---" : action->text().toStdString();
      seen += std::string(action->isChecked() ? " ticked" : "") + (action->isEnabled() ? "" : " disabled") + "\n";
    }
  });

  EXPECT_EQ(seen, "Expand ticked\n---\nOn Top\nPale disabled\nQ&&A\n");
}

TEST_F(PopupMenuOnScreen, SpeaksItsCaptionAndItsEntries) {
  std::string seen;
  Open([&](QMenu &menu) {
    seen = SpokenName(menu);
    const QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(&menu);
    for (int i = 0; i < spoken->childCount(); ++i)
      seen += "|" + spoken->child(i)->text(QAccessible::Name).toStdString();
  });

  EXPECT_EQ(seen, "Menu|Expand||On Top|Pale|Q&A");
}

TEST_F(PopupMenuOnScreen, TakesNoKeyFromAnEntrysText) {
  Open([](QMenu &menu) { QTest::keyClick(&menu, Qt::Key_A); });

  EXPECT_EQ(rig.events(), Lines({"returned"}));
}

TEST_F(PopupMenuOnScreen, OpensAtThePointer) {
  const QPoint place = rig.window(*bar_form).mapToGlobal(QPoint(20, 10));
  QCursor::setPos(place);
  QPoint opened;
  Open([&](QMenu &menu) { opened = menu.pos(); });

  EXPECT_LE((opened - place).manhattanLength(), 8);
}

TEST_F(PopupMenuOnScreen, LetsEventsRunMeanwhile) {
  Open([&](QMenu &menu) {
    bar_form->Picture1.Click = [this] { rig.note("nested event"); };
    Dispatch([] { bar_form->Picture1.Click.Raise(); });
    Choose(menu, "Q&&A");
  });

  EXPECT_EQ(rig.events(), Lines({"nested event", "text", "returned"}));
}

TEST_F(PopupMenuOnScreen, IsTheOnlyOneWhileItIsOpen) {
  Open([&](QMenu &menu) {
    current->host().ShowPopupMenu(*bar_form, bar_form->Tmnu);
    rig.note("second returned");
    EXPECT_TRUE(menu.isVisible());
  });

  EXPECT_EQ(rig.events(), Lines({"second returned", "returned"}));
}

TEST_F(PopupMenuOnScreen, EndsWithItsForm) {
  Open([&](QMenu &menu) {
    bar_form.Unload();
    EXPECT_FALSE(menu.isVisible());
  });

  EXPECT_EQ(rig.events(), Lines({"returned"}));
  EXPECT_EQ(bar_form.IfLoaded(), nullptr);
}

TEST_F(PopupMenuOnScreen, EntryMayUnloadTheForm) {
  bar_form->mnuExpand.Click = [] { bar_form.Unload(); };
  Open([](QMenu &menu) { Choose(menu, "Expand"); });

  EXPECT_EQ(rig.events(), Lines({"returned"}));
  EXPECT_EQ(bar_form.IfLoaded(), nullptr);
}

TEST_F(PopupMenuOnScreen, EntryMayOpenTheMenuAgain) {
  int opened = 0;
  bar_form->mnuExpand.Click = [&] {
    if (++opened == 1)
      Open([](QMenu &menu) { Choose(menu, "On Top"); });
  };
  Open([](QMenu &menu) { Choose(menu, "Expand"); });

  EXPECT_EQ(rig.events(), Lines({"top", "returned", "returned"}));
}

TEST_F(PopupMenuOnScreen, WithoutAnEntryToShowIsNotShown) {
  for (MenuItem *item :
       {&bar_form->mnuExpand, &bar_form->sep1, &bar_form->mnuTop, &bar_form->mnuPale, &bar_form->mnuText})
    item->Visible = false;
  Dispatch([&] {
    current->host().ShowPopupMenu(*bar_form, bar_form->Tmnu);
    rig.note("returned");
  });

  EXPECT_EQ(rig.events(), Lines({"returned"}));
}

}  // namespace
}  // namespace borvane
