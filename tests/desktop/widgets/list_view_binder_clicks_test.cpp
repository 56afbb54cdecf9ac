#include <QClipboard>
#include <QCursor>
#include <QHeaderView>
#include <QMenu>
#include <QScrollBar>
#include <QTimer>
#include <QTreeView>
#include <QWindow>
#include <QtTest/QTest>
#include <functional>

#include <gtest/gtest.h>

#include "basic/number.h"
#include "controls/form.h"
#include "controls/form_set.h"
#include "controls/label.h"
#include "controls/list_view.h"
#include "controls/menu.h"
#include "controls/text_box.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

/// A window with a list that has a menu, and a label that has another one.
struct MenuForm : FormBase {
  MenuForm() : FormBase({.Name = "MenuForm", .Caption = "Menus", .ClientWidth = 6000, .ClientHeight = 4500}) {}

  ListView ListView1{*this,
                     "ListView1",
                     {.Columns = {{"Magnitude", 1500}, {"Where?", 3000}, {"", 1}},
                      .Left = 150,
                      .Top = 600,
                      .Width = 5700,
                      .Height = 3600}};
  Label Label3{*this, "Label3", {.Caption = "World", .Left = 150, .Top = 150, .Width = 3000, .Height = 195}};
  TextBox Text1{*this, "Text1", {.Left = 3300, .Top = 150, .Width = 1500, .Height = 300}};

  Menu Tmnu{*this, "Tmnu", {.Caption = "Menu"}};
  MenuItem mnuInfo{Tmnu, "mnuInfo", {.Caption = "More Info"}};
  MenuItem mnuGrid{Tmnu, "mnuGrid", {.Caption = "Grid lines"}};

  void Form_KeyUp(Integer key_code, Integer shift) override { KeyUp.Raise(key_code, shift); }

  Event<int, int> KeyUp;
};

inline constexpr Form<MenuForm> menu_form;

class ListClicks : public testing::Test {
 protected:
  ListClicks() {
    list().MouseUp = [this](const MouseState &mouse) { MouseUp(mouse); };
    menu_form->Label3.MouseUp = [this](const MouseState &mouse) { MouseUp(mouse); };
    menu_form->mnuInfo.Click = [this] { rig.note("info"); };
    menu_form->KeyUp = [this](int key, int /*shift*/) { rig.note("key " + IntegerText(key)); };
    menu_form->Show();
    for (int row = 1; row <= 100; ++row)
      list().ListItems.Add({.Text = IntegerText(row), .SubItemTexts = {"Yucaipa", "recenteqs/x.html"}});
    list().ListItems.Choose(1);
    Settle();
    view().setFocus();
    rig.events();
  }

  /// What the records window does: button 2 opens the menu.
  void MouseUp(const MouseState &mouse) {
    last = mouse;
    rig.note("mouse up " + IntegerText(mouse.button) + (mouse.shift != 0 ? " with " + IntegerText(mouse.shift) : "") +
             " row " + IntegerText(list().ListItems.Current()));
    if (mouse.button == 2)
      menu_form->PopupMenu(menu_form->Tmnu);
  }

  ListView &list() { return menu_form->ListView1; }
  QTreeView &view() const { return rig.widget<QTreeView>(*menu_form, "ListView1"); }
  QWindow &screen_window() const { return *rig.window(*menu_form).windowHandle(); }

  /// The middle of a row, which counts from 1, in the viewport.
  QPoint RowPoint(int row) const { return view().visualRect(view().model()->index(row - 1, 0)).center(); }

  void ClickRow(int row, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseClick(view().viewport(), button, modifiers, RowPoint(row));
    Settle();
  }

  void PressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(&screen_window(), key, modifiers);
    Settle();
  }

  /// Does `open`, which is to open a menu, and `work` while it is open.
  void Open(
      const std::function<void()> &open, const std::function<void(QMenu &)> &work = [](QMenu &) {}) {
    // The menu does not return while it is open.
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
      auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
      if (menu == nullptr)
        return;
      look.stop();
      rig.note("menu");
      work(*menu);
      menu->close();
    });
    look.start(1);
    open();
  }

  MouseState last{};
  ScreenRig rig;
};

// The mouse.

TEST_F(ListClicks, OnARowMakeItTheCurrentOneBeforeMouseUp) {
  ClickRow(3);
  EXPECT_EQ(rig.events(), Lines({"mouse up 1 row 3"}));
  ClickRow(2, Qt::MiddleButton, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(rig.events(), Lines({"mouse up 4 with 3 row 2"}));
}

TEST_F(ListClicks, CarryTheirPlaceInTheList) {
  ClickRow(3);
  const QPoint place = view().viewport()->mapTo(&view(), RowPoint(3));
  EXPECT_EQ(last.x, static_cast<float>(place.x()) * 15);
  EXPECT_EQ(last.y, static_cast<float>(place.y()) * 15);
  EXPECT_GT(place.y(), RowPoint(3).y()) << "the titles are part of the list";
}

TEST_F(ListClicks, OnBlankSpaceLeaveTheSelectionAsItIs) {
  list().ListItems.Clear();
  for (const char *text : {"3.1", "2.0", "1.6"})
    list().ListItems.Add({.Text = text});
  Settle();
  ClickRow(2);
  rig.events();
  const QPoint below(20, RowPoint(3).y() + 60);
  const QPoint beside(view().viewport()->width() - 5, RowPoint(1).y());
  for (const QPoint &blank : {below, beside}) {
    for (const auto modifiers : {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::ControlModifier)}) {
      QTest::mouseClick(view().viewport(), Qt::LeftButton, modifiers, blank);
      EXPECT_TRUE(view().selectionModel()->isRowSelected(1)) << blank.x();
    }
  }

  EXPECT_EQ(rig.events(),
            Lines({"mouse up 1 row 2", "mouse up 1 with 2 row 2", "mouse up 1 row 2", "mouse up 1 with 2 row 2"}));
}

TEST_F(ListClicks, OnAnEmptyListComeWithoutARow) {
  list().ListItems.Clear();
  Settle();
  QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, QPoint(20, 20));

  EXPECT_EQ(rig.events(), Lines({"mouse up 1 row 0"}));
}

TEST_F(ListClicks, WithCtrlLeaveTheHighlightOnTheRow) {
  ClickRow(2);
  ClickRow(2, Qt::LeftButton, Qt::ControlModifier);

  EXPECT_TRUE(view().selectionModel()->isRowSelected(1));
}

TEST_F(ListClicks, EndOutsideOfTheListThatTheyBeganOn) {
  QTest::mousePress(view().viewport(), Qt::LeftButton, {}, RowPoint(2));
  QTest::mouseRelease(view().viewport(), Qt::LeftButton, {}, QPoint(-30, RowPoint(2).y()));

  EXPECT_EQ(rig.events(), Lines({"mouse up 1 row 2"}));
}

TEST_F(ListClicks, KeepThePressedRowWhileThePointerIsDrawnOverOthers) {
  QWidget &viewport = *view().viewport();
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton}) {
    QTest::mousePress(&viewport, button, {}, RowPoint(2));
    QMouseEvent move(QEvent::MouseMove, RowPoint(5), viewport.mapToGlobal(RowPoint(5)), Qt::NoButton, button,
                     Qt::NoModifier);
    QApplication::sendEvent(&viewport, &move);
    QTest::mouseRelease(&viewport, button, {}, RowPoint(5));
    Settle();
    EXPECT_EQ(view().currentIndex().row(), 1);
  }

  EXPECT_EQ(rig.events(), Lines({"mouse up 1 row 2", "mouse up 4 row 2"}));
}

// The current row.

TEST_F(ListClicks, KeysMakeARowTheCurrentOne) {
  PressKey(Qt::Key_Down);
  EXPECT_EQ(list().ListItems.Current(), 2);
  PressKey(Qt::Key_End);
  EXPECT_EQ(list().ListItems.Current(), 100);
}

TEST_F(ListClicks, LettersAndDigitsAreNoKeysOfTheList) {
  PressKey(Qt::Key_5);
  PressKey(Qt::Key_Y);

  EXPECT_EQ(list().ListItems.Current(), 1);
  EXPECT_EQ(rig.events(), Lines({"key 53", "key 89"}));
}

TEST_F(ListClicks, RefreshMakesTheFirstRowTheCurrentOneWithoutAHighlight) {
  ClickRow(3);
  list().ListItems.Clear();
  for (const char *text : {"3.1", "2.0", "1.6"})
    list().ListItems.Add({.Text = text});
  Settle();

  EXPECT_EQ(list().ListItems.Current(), 1);
  EXPECT_EQ(view().currentIndex().row(), 0);
  EXPECT_FALSE(view().selectionModel()->hasSelection());
}

TEST_F(ListClicks, SortedRefreshMakesTheNewestRowTheCurrentOneWhereverItIs) {
  list().SortOrder = ListView::descending;
  list().Sorted = true;
  list().ListItems.Clear();
  for (const char *text : {"1.6", "3.1", "2.0"})
    list().ListItems.Add({.Text = text});
  Settle();

  EXPECT_EQ(list().ListItems.Current(), 3);
  EXPECT_EQ(view().currentIndex().row(), 2);
}

TEST_F(ListClicks, ChosenRowKeepsItsHighlightWhereASortMovesIt) {
  ClickRow(3);
  list().SortOrder = ListView::descending;
  list().Sorted = true;
  Settle();
  const int row = list().ListItems.Current();

  EXPECT_EQ(list().SelectedItem().Text, "3");
  EXPECT_NE(row, 3);
  EXPECT_EQ(view().currentIndex().row(), row - 1);
  EXPECT_TRUE(view().selectionModel()->isRowSelected(row - 1));
  EXPECT_EQ(view().selectionModel()->selectedRows().size(), 1);
}

TEST_F(ListClicks, SortAndRefreshLeaveTheListScrolledAsItIs) {
  ClickRow(3);
  view().verticalScrollBar()->setValue(40);
  list().Sorted = true;
  Settle();
  EXPECT_EQ(view().verticalScrollBar()->value(), 40);

  list().ListItems.Clear();
  for (int row = 1; row <= 100; ++row)
    list().ListItems.Add({.Text = IntegerText(row)});
  Settle();
  EXPECT_EQ(view().verticalScrollBar()->value(), 40);
}

TEST_F(ListClicks, RowThatFollowsLaterKeepsWhatTheUserHasChosen) {
  for (const bool is_sorted : {false, true}) {
    list().Sorted = is_sorted;
    list().ListItems.Clear();
    list().ListItems.Add({.Text = "2.0"});
    Settle();
    ClickRow(1);
    list().ListItems.Add({.Text = "1.6"});
    Settle();
    EXPECT_EQ(list().SelectedItem().Text, "2.0");
    EXPECT_TRUE(view().selectionModel()->isRowSelected(list().ListItems.Current() - 1)) << is_sorted;
  }
}

// The menus.

TEST_F(ListClicks, RightButtonOpensTheMenuOfTheRowAtThePointer) {
  const QPoint place = view().viewport()->mapToGlobal(RowPoint(3));
  QCursor::setPos(place);
  QPoint opened;
  Open([&] { ClickRow(3, Qt::RightButton); }, [&](QMenu &menu) { opened = menu.pos(); });

  EXPECT_EQ(rig.events(), Lines({"mouse up 2 row 3", "menu"}));
  EXPECT_LE((opened - place).manhattanLength(), 8);
}

TEST_F(ListClicks, MenuOpensWhereTheButtonIsReleasedAlsoOutsideOfTheWindow) {
  const QRect window = rig.window(*menu_form).geometry();
  const QPoint outside = window.topLeft() + QPoint(window.width() + 30, 100);
  QCursor::setPos(outside);
  QPoint opened;
  Open(
      [&] {
        QTest::mousePress(view().viewport(), Qt::RightButton, {}, RowPoint(3));
        QTest::mouseRelease(view().viewport(), Qt::RightButton, {}, view().viewport()->mapFromGlobal(outside));
      },
      [&](QMenu &menu) { opened = menu.pos(); });

  EXPECT_EQ(rig.events(), Lines({"mouse up 2 row 3", "menu"}));
  EXPECT_LE((opened - outside).manhattanLength(), 8);
}

TEST_F(ListClicks, KeysOpenTheMenuOfTheCurrentRowAtItsPlace) {
  for (const auto &[key, modifiers] : {std::pair(Qt::Key_Menu, Qt::KeyboardModifiers()),
                                       std::pair(Qt::Key_F10, Qt::KeyboardModifiers(Qt::ShiftModifier))}) {
    ClickRow(5);
    rig.events();
    QCursor::setPos(rig.window(*menu_form).mapToGlobal(QPoint(5, 5)));
    QPoint opened;
    Open([&, key = key, modifiers = modifiers] { PressKey(key, modifiers); },
         [&](QMenu &menu) { opened = menu.pos(); });

    EXPECT_EQ(rig.events(), Lines({"mouse up 2 row 5", "menu"})) << "no release of the key counts for the window";
    const QRect row = view().visualRect(view().model()->index(4, 0));
    const QPoint below = view().viewport()->mapToGlobal(row.bottomLeft());
    EXPECT_LE((opened - below).manhattanLength(), 8);
    EXPECT_EQ(last.shift, 0);
    EXPECT_EQ(last.y, static_cast<float>(view().viewport()->mapTo(&view(), row.center()).y()) * 15);
  }
}

TEST_F(ListClicks, MenuKeyScrollsToTheCurrentRow) {
  PressKey(Qt::Key_End);
  view().verticalScrollBar()->setValue(0);
  rig.events();
  const QRect list_place(view().viewport()->mapToGlobal(QPoint()), view().viewport()->size());
  QPoint opened;
  Open([&] { PressKey(Qt::Key_Menu); }, [&](QMenu &menu) { opened = menu.pos(); });

  EXPECT_EQ(rig.events(), Lines({"mouse up 2 row 100", "menu"}));
  EXPECT_TRUE(view().viewport()->rect().contains(RowPoint(100)));
  EXPECT_TRUE(list_place.adjusted(0, 0, 8, 8).contains(opened));
}

TEST_F(ListClicks, MenuKeyDoesNothingWithoutACurrentRow) {
  list().ListItems.Clear();
  Settle();
  Open([&] { PressKey(Qt::Key_Menu); });
  Open([&] { PressKey(Qt::Key_F10, Qt::ShiftModifier); });

  for (const std::string &event : rig.events())
    EXPECT_EQ(event.rfind("key ", 0), 0u) << event;
}

TEST_F(ListClicks, MenuKeyDoesNothingElsewhereInTheWindow) {
  rig.widget(*menu_form, "Text1").setFocus();
  QTest::keyClick(&rig.widget(*menu_form, "Text1"), Qt::Key_F10, Qt::ShiftModifier);
  Settle();

  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(ListClicks, F10AloneIsNoMenuKey) {
  PressKey(Qt::Key_F10);

  EXPECT_EQ(rig.events(), Lines({"key 121"}));
}

TEST_F(ListClicks, ChosenEntryIsRaisedAfterTheMenuOfAKeyAsAfterThatOfTheMouse) {
  Open([&] { PressKey(Qt::Key_Menu); },
       [&](QMenu &menu) {
         QTest::keyClick(&menu, Qt::Key_Down);
         QTest::keyClick(&menu, Qt::Key_Return);
       });
  EXPECT_EQ(rig.events(), Lines({"mouse up 2 row 1", "menu", "info"}));
}

TEST_F(ListClicks, LabelOpensItsMenuByTheRightButton) {
  QWidget &label = rig.widget(*menu_form, "Label3");
  QCursor::setPos(label.mapToGlobal(QPoint(10, 5)));
  Open([&] { QTest::mouseClick(&label, Qt::RightButton, {}, QPoint(10, 5)); });

  EXPECT_EQ(rig.events(), Lines({"mouse up 2 row 1", "menu"}));
}

// In-place editing.

TEST_F(ListClicks, F2AsksWhetherARowMayBeEditedAndOpensNoEditor) {
  list().BeforeLabelEdit = [this](Integer &cancel) {
    cancel = 1;
    rig.note("before edit");
  };
  QTest::keyPress(&screen_window(), Qt::Key_F2);
  Settle();

  EXPECT_EQ(rig.events(), Lines({"before edit"}));
  EXPECT_EQ(view().findChild<QWidget *>("qt_editing_widget"), nullptr);
  EXPECT_FALSE(view().model()->flags(view().currentIndex()).testFlag(Qt::ItemIsEditable));
}

// Copying.

TEST_F(ListClicks, CopyTakesTheTextsOfTheCurrentRowThatShow) {
  list().ListItems.Add({.Text = "1.6", .SubItemTexts = {"6 km\tENE of\r\nPi\xF1on", "recenteqs/y.html"}});
  Settle();
  PressKey(Qt::Key_End);
  PressKey(Qt::Key_C, Qt::ControlModifier);

  EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "1.6\t6 km ENE of  Pi\u00F1on");
}

TEST_F(ListClicks, CopyTakesTheRowsWholeTexts) {
  const std::string text(5'000, 'x');
  list().ListItems.SetSubItem(1, 1, text);
  PressKey(Qt::Key_C, Qt::ControlModifier);

  EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "1\t" + text);
}

TEST_F(ListClicks, CopyOfNoRowLeavesTheClipboardAlone) {
  QGuiApplication::clipboard()->setText("before");
  list().ListItems.Clear();
  Settle();
  PressKey(Qt::Key_C, Qt::ControlModifier);

  EXPECT_EQ(QGuiApplication::clipboard()->text(), "before");
}

}  // namespace
}  // namespace borvane
