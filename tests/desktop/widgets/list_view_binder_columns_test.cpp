#include <QAccessible>
#include <QHeaderView>
#include <QTreeView>
#include <QtTest/QTest>
#include <string>

#include <gtest/gtest.h>

#include "records/frmRecords.h"
#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

/// The columns of a list, their widths and the titles above them.
class ListColumnsOnScreen : public testing::Test {
 protected:
  ListColumnsOnScreen() {
    sample->ListView1.ColumnClick = [this](const ColumnHeader &clicked) {
      rig.note("column " + clicked.Text);
      if (sorts_by_click)
        SortBy(clicked.Text);
    };
    sample->ListView1.MouseUp = [this](const MouseState &) { rig.note("mouse up"); };
    sample->Show();
    Settle();
    rig.events();
  }

  ListView &list() { return sample->ListView1; }
  QTreeView &view() const { return rig.widget<QTreeView>(*sample, "ListView1"); }
  QHeaderView &header() const { return *view().header(); }

  /// As the records window sorts its list, step by step.
  void SortBy(const std::string &title) {
    list().Sorted = true;
    for (int column = list().ColumnHeaders.Count(); column > 0; --column) {
      if (list().ColumnHeaders(column).Text == title)
        list().SortKey = column - 1;
    }
    list().SortOrder = 1 - list().SortOrder();
    list().ListItems.PlaceRows();
  }

  QPoint TitlePoint(int column) const {
    return {header().sectionViewportPosition(column) + header().sectionSize(column) / 2, header().height() / 2};
  }
  QPoint BorderPoint(int column) const {
    return {header().sectionViewportPosition(column) + header().sectionSize(column) - 2, header().height() / 2};
  }
  void ClickTitle(int column) {
    QTest::mouseClick(header().viewport(), Qt::LeftButton, {}, TitlePoint(column));
    Settle();
  }

  /// A click after so long a pause that it is no double click.
  void ClickTitleLater(int column) {
    QTest::mouseClick(header().viewport(), Qt::LeftButton, {}, TitlePoint(column),
                      QApplication::doubleClickInterval() + 50);
    Settle();
  }

  /// What a screen reader calls the column.
  std::string SpokenTitle(int column) const {
    QAccessibleInterface *table = QAccessible::queryAccessibleInterface(&view());
    return table->child(column)->text(QAccessible::Name).toStdString();
  }

  /// The picture of a title.
  QImage TitlePicture(int column) {
    return Picture(*header().viewport())
        .copy(header().sectionViewportPosition(column), 0, header().sectionSize(column), header().height());
  }

  bool sorts_by_click = true;
  ScreenRig rig;
};

TEST_F(ListColumnsOnScreen, ClickOnATitleRaisesColumnClickAndNoMouseUp) {
  ClickTitle(1);
  EXPECT_EQ(rig.events(), Lines({"column Where?"}));
  ClickTitle(0);
  EXPECT_EQ(rig.events(), Lines({"column Magnitude"}));
}

TEST_F(ListColumnsOnScreen, EachOfTwoQuickClicksCounts) {
  ClickTitle(1);
  QTest::mouseDClick(header().viewport(), Qt::LeftButton, {}, TitlePoint(1));
  QTest::mouseRelease(header().viewport(), Qt::LeftButton, {}, TitlePoint(1));
  Settle();

  EXPECT_EQ(rig.events(), Lines({"column Where?", "column Where?"}));
}

TEST_F(ListColumnsOnScreen, ClicksBesideTheTitlesRaiseNothing) {
  list().ColumnHeaders.Clear();
  list().ColumnHeaders.Add("Date");
  Settle();
  const QPoint beside(header().length() + 20, header().height() / 2);
  ASSERT_LT(beside.x(), header().viewport()->width());
  QTest::mouseClick(header().viewport(), Qt::LeftButton, {}, beside);
  QTest::mouseDClick(header().viewport(), Qt::LeftButton, {}, beside);
  Settle();

  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(ListColumnsOnScreen, ClickLeavesEqualTextsInTheirOrder) {
  for (const char *magnitude : {"2.0", "3.0", "1.0"})
    list().ListItems.Add({.Text = magnitude, .SubItemTexts = {"Yucaipa"}});
  Settle();
  ClickTitle(1);

  for (int row = 1; row <= 3; ++row)
    rig.note(list().ListItems(row).Text);
  EXPECT_EQ(rig.events(), Lines({"column Where?", "2.0", "3.0", "1.0"})) << "the titles' room was measured in between";
}

TEST_F(ListColumnsOnScreen, OtherButtonsAndDragsRaiseNothing) {
  QTest::mouseClick(header().viewport(), Qt::RightButton, {}, TitlePoint(1));
  QTest::mouseDClick(header().viewport(), Qt::RightButton, {}, TitlePoint(1));
  QTest::mousePress(header().viewport(), Qt::LeftButton, {}, TitlePoint(1));
  QTest::mouseRelease(header().viewport(), Qt::LeftButton, {}, TitlePoint(0));
  Settle();

  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(ListColumnsOnScreen, ColumnWithoutATitleIsClickedAsAnyOther) {
  list().ColumnHeaders.Clear();
  list().ColumnHeaders.Add("Date");
  list().ColumnHeaders.Add("");
  Settle();
  ClickTitle(1);

  EXPECT_EQ(rig.events(), Lines({"column "}));
}

TEST_F(ListColumnsOnScreen, ClickMayReplaceTheColumns) {
  sorts_by_click = false;
  list().ColumnClick = [this](const ColumnHeader & /*clicked*/) {
    list().ColumnHeaders.Clear();
    list().ColumnHeaders.Add("Date");
  };
  ClickTitle(1);

  EXPECT_EQ(header().count(), 1);
}

TEST_F(ListColumnsOnScreen, ClickMayUnloadTheWindow) {
  sorts_by_click = false;
  list().ColumnClick = [](const ColumnHeader & /*clicked*/) { sample.Unload(); };
  ClickTitle(1);

  EXPECT_EQ(sample.IfLoaded(), nullptr);
}

TEST_F(ListColumnsOnScreen, MarkShowsTheSortedColumnAndItsOrder) {
  EXPECT_EQ(header().sortIndicatorSection(), -1);
  const QImage plain = TitlePicture(1);

  ClickTitle(1);
  EXPECT_EQ(header().sortIndicatorSection(), 1);
  EXPECT_EQ(header().sortIndicatorOrder(), Qt::DescendingOrder);
  const QImage descending = TitlePicture(1);
  EXPECT_NE(descending, plain);

  ClickTitleLater(1);
  EXPECT_EQ(header().sortIndicatorOrder(), Qt::AscendingOrder);
  EXPECT_NE(TitlePicture(1), descending);
  EXPECT_NE(TitlePicture(1), plain);

  list().Sorted = false;
  EXPECT_EQ(TitlePicture(1), plain);
}

TEST_F(ListColumnsOnScreen, MarkIsThatOfTheListWhateverAClickDoes) {
  sorts_by_click = false;
  ClickTitle(1);
  EXPECT_EQ(header().sortIndicatorSection(), -1);

  list().SortKey = 0;
  list().Sorted = true;
  ClickTitleLater(1);
  EXPECT_EQ(header().sortIndicatorSection(), 0);
  EXPECT_EQ(header().sortIndicatorOrder(), Qt::AscendingOrder);
}

TEST_F(ListColumnsOnScreen, MarkStaysThroughARefreshAndGoesWithItsColumn) {
  list().SortKey = 1;
  list().Sorted = true;
  list().ListItems.Clear();
  list().ColumnHeaders.Clear();
  for (const char *title : {"Magnitude", "Date"})
    list().ColumnHeaders.Add(title);
  Settle();
  EXPECT_EQ(header().sortIndicatorSection(), 1);

  list().ColumnHeaders.Clear();
  list().ColumnHeaders.Add("Magnitude");
  Settle();
  EXPECT_EQ(header().sortIndicatorSection(), -1);
}

TEST_F(ListColumnsOnScreen, ScreenReaderGetsTheOrderWithTheTitle) {
  EXPECT_EQ(SpokenTitle(0), "Magnitude");
  EXPECT_EQ(SpokenTitle(1), "Where?");

  list().SortKey = 1;
  list().Sorted = true;
  EXPECT_EQ(SpokenTitle(0), "Magnitude");
  EXPECT_EQ(SpokenTitle(1), "Where?, sorted in ascending order");

  list().SortOrder = ListView::descending;
  EXPECT_EQ(SpokenTitle(1), "Where?, sorted in descending order");
}

// The widths.

/// The width of a text in the list's font.
int TextWidth(const QTreeView &view, const char *text) { return view.fontMetrics().horizontalAdvance(text); }

TEST_F(ListColumnsOnScreen, HaveTheWidthsThatTheyAreGiven) {
  EXPECT_EQ(view().columnWidth(1), 200);
  EXPECT_EQ(view().columnWidth(2), 1);

  list().ColumnHeaders.Clear();
  list().ColumnHeaders.Add("Place", 4500);
  Settle();
  ASSERT_EQ(header().count(), 1);
  EXPECT_EQ(view().columnWidth(0), 300);
}

TEST_F(ListColumnsOnScreen, WithoutAGivenWidthHaveRoomForTheTitleWithinLimits) {
  const char *title = "Time and Date, UTC";
  list().ColumnHeaders.Clear();
  list().ColumnHeaders.Add("Lat");
  list().ColumnHeaders.Add(title);
  list().ColumnHeaders.Add(std::string(200, 'W'));
  Settle();

  EXPECT_EQ(view().columnWidth(0), 60);
  EXPECT_GT(view().columnWidth(1), TextWidth(view(), title));
  EXPECT_LT(view().columnWidth(1), TextWidth(view(), title) + 20);
  EXPECT_EQ(view().columnWidth(2), 240);
}

TEST_F(ListColumnsOnScreen, WithoutAGivenWidthHaveRoomForTheTextsOfTheFirstRows) {
  const char *text = "2005/06/16 14:36:24";
  for (int row = 0; row < 5; ++row)
    list().ListItems.Add({.Text = row == 4 ? text : "1.6"});
  Settle();
  EXPECT_GT(view().columnWidth(0), TextWidth(view(), text));
  EXPECT_LT(view().columnWidth(0), TextWidth(view(), text) + 20);

  list().ListItems.Clear();
  for (int row = 0; row < 200; ++row)
    list().ListItems.Add({.Text = row == 199 ? text : "1.6"});
  Settle();
  EXPECT_LT(view().columnWidth(0), TextWidth(view(), text)) << "a text that is out of sight";

  list().ListItems.Clear();
  list().ListItems.Add({.Text = std::string(10'000'000, 'W')});
  Settle();
  EXPECT_EQ(view().columnWidth(0), 240);
}

TEST_F(ListColumnsOnScreen, AreMeasuredAgainWhenTheFirstRowsComeInSeveralBlocks) {
  list().ListItems.Clear();
  list().ListItems.Add({.Text = "1.6"});
  Settle();
  const int width = view().columnWidth(0);
  list().ListItems.Add({.Text = "2005/06/16 14:36:24"});
  Settle();

  EXPECT_GT(view().columnWidth(0), width);
}

TEST_F(ListColumnsOnScreen, MakeRoomForATextThatIsWrittenLater) {
  const char *text = "2.33333333333333";
  list().ListItems.Add({.Text = "2"});
  Settle();
  list().ListItems.SetText(1, text);
  Settle();
  EXPECT_GT(view().columnWidth(0), TextWidth(view(), text));
}

TEST_F(ListColumnsOnScreen, RefreshBringsBackWhatTheUserHasChanged) {
  list().ListItems.Add({.Text = "1.6"});
  Settle();
  const int width = view().columnWidth(0);
  view().setColumnWidth(0, 50);
  view().setColumnWidth(1, 70);
  list().ListItems.SetText(1, "1.7");
  Settle();
  EXPECT_EQ(view().columnWidth(0), 50) << "a changed text is no refresh";
  EXPECT_EQ(view().columnWidth(1), 70);

  list().ListItems.Clear();
  list().ListItems.Add({.Text = "2.0"});
  Settle();
  EXPECT_EQ(view().columnWidth(0), width);
  EXPECT_EQ(view().columnWidth(1), 200);
}

TEST_F(ListColumnsOnScreen, ColumnMakesRoomForTheMarkWhileItHasIt) {
  list().ColumnHeaders.Clear();
  list().ColumnHeaders.Add("Magnitude");
  list().ColumnHeaders.Add("Depth (km)");
  Settle();
  const int plain = view().columnWidth(0);
  EXPECT_LT(header().sectionSizeHint(0), plain);
  ClickTitle(0);
  EXPECT_GT(view().columnWidth(0), plain);
  EXPECT_GE(view().columnWidth(0), header().sectionSizeHint(0));

  ClickTitle(1);
  EXPECT_EQ(view().columnWidth(0), plain);
  view().setColumnWidth(1, 300);
  ClickTitleLater(1);
  EXPECT_EQ(view().columnWidth(1), 300) << "the user's own width";
}

TEST_F(ListColumnsOnScreen, AreResizedByTheirBorders) {
  const int width = view().columnWidth(0);
  const QPoint border = BorderPoint(0);
  QTest::mousePress(header().viewport(), Qt::LeftButton, {}, border);
  QTest::mouseMove(header().viewport(), border + QPoint(20, 0));
  QMouseEvent drag(QEvent::MouseMove, border + QPoint(40, 0), header().viewport()->mapToGlobal(border + QPoint(40, 0)),
                   Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(header().viewport(), &drag);
  QTest::mouseRelease(header().viewport(), Qt::LeftButton, {}, border + QPoint(40, 0));
  Settle();

  EXPECT_EQ(view().columnWidth(0), width + 40);
  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(ListColumnsOnScreen, DoubleClickOnABorderFitsTheColumn) {
  const char *text = "a place whose name is longer than what any column has room for by itself";
  list().ListItems.Add({.Text = text, .SubItemTexts = {"Yucaipa"}});
  Settle();
  EXPECT_EQ(view().columnWidth(0), 240);
  QTest::mouseDClick(header().viewport(), Qt::LeftButton, {}, BorderPoint(0));
  Settle();
  EXPECT_GT(view().columnWidth(0), TextWidth(view(), text));
  EXPECT_LT(view().columnWidth(0), TextWidth(view(), text) + 20);

  QTest::mouseDClick(header().viewport(), Qt::LeftButton, {}, BorderPoint(1));
  Settle();
  EXPECT_LT(view().columnWidth(1), 80);
  EXPECT_EQ(rig.events(), Lines()) << "the border is no title";
}

TEST(RecordsColumns, LeaveRoomForThePlaceAtTheDesignSize) {
  ScreenRig rig;
  frmRecords->Show();
  ListView &list = frmRecords->ListView1;
  list.ListItems.Clear();
  list.ColumnHeaders.Clear();
  for (const char *title : {"Magnitude", "Date", "Time", "Latitude", "Longitude", "Depth (km)"})
    list.ColumnHeaders.Add(title);
  list.ColumnHeaders.Add("Where?", 5400);
  list.ColumnHeaders.Add("", 1);
  const char *place = "6 km ( 4 mi) ENE of Yucaipa, CA";
  for (int row = 0; row < 100; ++row) {
    list.ListItems.Add({.Text = "1.6",
                        .SubItemTexts = {"2005/06/16", "14:36:24", "34.049N", "116.990W", "11.6", place,
                                         "recenteqs/Quakes/ci14155392.html"}});
  }
  Settle();
  const auto &view = rig.widget<QTreeView>(*frmRecords, "ListView1");

  EXPECT_EQ(view.columnWidth(6), 360);
  EXPECT_GE(view.viewport()->width() - view.columnViewportPosition(6), TextWidth(view, place));
}

}  // namespace
}  // namespace borvane
