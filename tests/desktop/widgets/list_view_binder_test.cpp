#include <QAccessible>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTextDocument>
#include <QToolTip>
#include <QTreeView>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "desktop/appearance.h"
#include "desktop/widgets/colors.h"
#include "records/frmRecords.h"
#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

class ListViewOnScreen : public testing::Test {
 protected:
  ListViewOnScreen() {
    sample->Show();
    Settle();
  }

  ListView &list() { return sample->ListView1; }
  QTreeView &view() const { return rig.widget<QTreeView>(*sample, "ListView1"); }

  /// What a screen reader reads in that cell; rows and columns count from 0.
  std::string cell(int row, int column) const {
    QAccessibleInterface *table = QAccessible::queryAccessibleInterface(&view());
    return table->tableInterface()->cellAt(row, column)->text(QAccessible::Name).toStdString();
  }

  /// How many pixels of the list are as dark as its text.
  int text_pixels() { return PixelsOf(Picture(*view().viewport()), view().palette().color(QPalette::Text), half); }

  ScreenRig rig;
};

TEST_F(ListViewOnScreen, ShowsRowsAsTheyAreAdded) {
  EXPECT_EQ(text_pixels(), 0);
  list().ListItems.Add({.Text = "1.6", .SubItemTexts = {"Yucaipa"}});
  const int one_row = text_pixels();
  EXPECT_GT(one_row, 10);
  EXPECT_EQ(cell(0, 0), "1.6");
  EXPECT_EQ(cell(0, 1), "Yucaipa");

  list().ListItems.Add({.Text = "2.0", .SubItemTexts = {"Castaic"}});
  EXPECT_GT(text_pixels(), one_row);
  list().ListItems.SetSubItem(2, 1, "Provo");
  EXPECT_EQ((Settle(), cell(1, 1)), "Provo");

  list().ListItems.Clear();
  EXPECT_EQ(text_pixels(), 0);
}

TEST_F(ListViewOnScreen, GridLinesComeAndGo) {
  list().ListItems.Add({.Text = "1.6", .SubItemTexts = {"Yucaipa"}});
  const QColor line = LineColor(view().palette());
  const int without = PixelsOf(Picture(*view().viewport()), line);

  list().GridLines = true;
  EXPECT_GT(PixelsOf(Picture(*view().viewport()), line), without + 200);

  list().GridLines = false;
  EXPECT_EQ(PixelsOf(Picture(*view().viewport()), line), without);
}

/// The colours of a light desktop and of a dark one.
class ListGrid : public testing::TestWithParam<bool> {
 protected:
  ListGrid() {
    if (GetParam())
      QApplication::setPalette(DarkPalette());
    sample->Show();
    for (const char *text : {"1.6", "2.0", "3.1"})
      sample->ListView1.ListItems.Add({.Text = text, .SubItemTexts = {"Yucaipa"}});
    sample->ListView1.GridLines = true;
    Settle();
  }
  ~ListGrid() override { QApplication::setPalette({}); }
  ListGrid(const ListGrid &) = delete;
  ListGrid &operator=(const ListGrid &) = delete;

  ScreenRig rig;
};

TEST_P(ListGrid, HasALineBelowEachRowAndBesideEachColumn) {
  auto &view = rig.widget<QTreeView>(*sample, "ListView1");
  const QColor line = LineColor(view.palette());
  const QImage picture = Picture(*view.viewport());
  const auto is_line = [&](int x, int y) { return picture.pixelColor(x, y).rgb() == line.rgb(); };
  for (int row = 0; row < 3; ++row) {
    const QRect cell = view.visualRect(view.model()->index(row, 0));
    for (int x = 0; x < 290; ++x)
      EXPECT_TRUE(is_line(x, cell.bottom())) << "below row " << row << " at " << x;
    for (int column = 0; column < 2; ++column) {
      const int right = view.columnViewportPosition(column) + view.columnWidth(column) - 1;
      for (int y = cell.top(); y <= cell.bottom(); ++y) {
        EXPECT_TRUE(is_line(right, y)) << "beside column " << column << " at " << y;
        EXPECT_FALSE(is_line(right - 1, y) && y < cell.bottom()) << "one pixel wide";
      }
    }
  }
  EXPECT_GE(Contrast(line, view.palette().color(QPalette::Base)), 2.0);
}

INSTANTIATE_TEST_SUITE_P(Colors, ListGrid, testing::Bool(),
                         [](const testing::TestParamInfo<bool> &dark) { return dark.param ? "dark" : "light"; });

class ListToolTips : public ListViewOnScreen {
 protected:
  ListToolTips() {
    list().ListItems.Add({.Text = "1.6", .SubItemTexts = {"Yucaipa"}});
    list().ListItems.Add(
        {.Text = "2.0", .SubItemTexts = {"a place far beyond the right edge of its column, as some are"}});
    Settle();
  }
  ~ListToolTips() override { QToolTip::hideText(); }
  ListToolTips(const ListToolTips &) = delete;
  ListToolTips &operator=(const ListToolTips &) = delete;

  /// The text that shows while the pointer rests on that cell.
  QString over(int row, int column) {
    const QPoint point = view().visualRect(view().model()->index(row, column)).center();
    QHelpEvent help(QEvent::ToolTip, point, view().viewport()->mapToGlobal(point));
    QApplication::sendEvent(view().viewport(), &help);
    return QToolTip::isVisible() ? QToolTip::text() : QString();
  }
};

TEST_F(ListToolTips, ShowTheTextOfACellThatIsCutOff) {
  EXPECT_EQ(over(1, 1), "a place far beyond the right edge of its column, as some are");
}

TEST_F(ListToolTips, TakeNoMarkupFromAPage) {
  const char *text = "a place that is cut off and holds <b>what a page</b> may &lt; hold";
  list().ListItems.Add({.Text = "2.0", .SubItemTexts = {text}});
  Settle();
  QTextDocument shown;
  shown.setHtml(over(2, 1));

  EXPECT_EQ(shown.toPlainText().simplified(), text);
}

TEST_F(ListToolTips, SayNothingAboutACellThatIsWhole) { EXPECT_EQ(over(0, 1), ""); }

TEST_F(ListToolTips, AreTheListsOwnWhereItHasOne) {
  list().ToolTipText = "Newest event";

  EXPECT_EQ(over(0, 1), "Newest event");
  EXPECT_EQ(over(1, 1), "Newest event");
}

TEST_F(ListViewOnScreen, RowsCannotBeEdited) {
  list().ListItems.Add({.Text = "1.6"});
  Settle();
  view().setFocus();
  QTest::keyClick(&view(), Qt::Key_F2);
  QTest::mouseDClick(view().viewport(), Qt::LeftButton, {}, QPoint(5, 5));

  EXPECT_EQ(view().findChild<QLineEdit *>(), nullptr);
}

TEST_F(ListViewOnScreen, ScrollsAHundredThousandRowsWithoutMeasuringThem) {
  class MeasureCounter : public QStyledItemDelegate {
   public:
    mutable int cells = 0;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override {
      ++cells;
      return QStyledItemDelegate::sizeHint(option, index);
    }
  } counter;
  view().setItemDelegate(&counter);
  for (int i = 0; i < 100'000; ++i)
    list().ListItems.Add({.Text = "1.6", .SubItemTexts = {"Yucaipa"}});
  Settle();
  view().setFocus();
  QTest::keyClick(&view(), Qt::Key_End);
  const int shown = text_pixels();

  EXPECT_GT(shown, 100);
  EXPECT_EQ(view().currentIndex().row(), 99'999);
  EXPECT_GT(counter.cells, 0);
  EXPECT_LT(counter.cells, 1'000);
  view().setItemDelegate(nullptr);
}

TEST_F(ListViewOnScreen, PaintsOncePerRefresh) {
  class PaintCounter : public QObject {
   public:
    int paints = 0;

   protected:
    bool eventFilter(QObject * /*object*/, QEvent *event) override {
      paints += event->type() == QEvent::Paint ? 1 : 0;
      return false;
    }
  } counter;
  QTest::qWait(50);
  view().viewport()->installEventFilter(&counter);
  list().ListItems.Clear();
  for (int i = 0; i < 10'000; ++i)
    list().ListItems.Add({.Text = "1.6", .SubItemTexts = {"Yucaipa"}});
  EXPECT_TRUE(QTest::qWaitFor([&] { return counter.paints > 0; }, 20'000));
  QTest::qWait(50);

  EXPECT_EQ(counter.paints, 1);
}

TEST_F(ListViewOnScreen, PaintsOnlyTheRowsInSight) {
  class CellCounter : public QStyledItemDelegate {
   public:
    mutable int cells = 0;
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override {
      ++cells;
      QStyledItemDelegate::paint(painter, option, index);
    }
  } counter;
  view().setItemDelegate(&counter);
  QTest::qWait(50);
  for (int i = 0; i < 10'000; ++i)
    list().ListItems.Add({.Text = "1.6", .SubItemTexts = {"Yucaipa"}});
  EXPECT_TRUE(QTest::qWaitFor([&] { return counter.cells > 0; }, 20'000));
  QTest::qWait(50);

  const int rows_in_sight = view().viewport()->height() / view().visualRect(view().model()->index(0, 0)).height() + 1;
  EXPECT_LE(counter.cells, rows_in_sight * view().header()->count());
  view().setItemDelegate(nullptr);
}

TEST(RecordsLists, AreNamedByTheirFrames) {
  ScreenRig rig;
  frmRecords->Show();

  EXPECT_EQ(SpokenName(rig.widget(*frmRecords, "ListView1")), "History");
  EXPECT_EQ(SpokenName(rig.widget(*frmRecords, "ListView2")), "Last Activity");
}

TEST(RecordsLists, NewestEventHasRoomInItsList) {
  ScreenRig rig;
  frmRecords->Show();
  Settle();
  auto &view = rig.widget<QTreeView>(*frmRecords, "ListView2");

  EXPECT_TRUE(view.isHeaderHidden());
  EXPECT_GE(view.viewport()->height(), view.visualRect(view.model()->index(0, 0)).bottom());
  rig.window(*frmRecords).resize(400, 400);
  Settle();
  EXPECT_FALSE(view.horizontalScrollBar()->isVisible());
}

}  // namespace
}  // namespace borvane
