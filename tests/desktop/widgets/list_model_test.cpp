#include "desktop/widgets/list_model.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

/// A list with its model, under the contract that holds for all models of Qt.
class ListModelTest : public testing::Test {
 protected:
  ListView &list() { return sample->ListView1; }

  std::string cell(int row, int column) const {
    return model.data(model.index(row, column), Qt::DisplayRole).toString().toStdString();
  }

  ScreenRig rig;
  ListModel model{sample->ListView1};
  QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(ListModelTest, ShowsTheRowsThatAreThere) {
  list().ListItems.Add({.Text = "1.6", .SubItemTexts = {"6 km ENE of Yucaipa"}});
  list().ListItems.Add({.Text = "2.0"});
  Settle();

  ASSERT_EQ(model.rowCount(), 2);
  EXPECT_EQ(cell(0, 0), "1.6");
  EXPECT_EQ(cell(0, 1), "6 km ENE of Yucaipa");
  EXPECT_EQ(cell(1, 1), "");
}

TEST_F(ListModelTest, StartsWithTheRowsOfALongLivedList) {
  list().ListItems.Add({.Text = "Mag"});
  const ListModel late(list());

  EXPECT_EQ(late.rowCount(), 1);
}

TEST_F(ListModelTest, PublishesAdditionsInOneBlock) {
  const QSignalSpy insertions(&model, &QAbstractItemModel::rowsInserted);
  for (int i = 0; i < 1000; ++i)
    list().ListItems.Add({.Text = "1.6"});
  EXPECT_EQ(model.rowCount(), 0);
  Settle();

  EXPECT_EQ(insertions.count(), 1);
  EXPECT_EQ(model.rowCount(), 1000);
}

TEST_F(ListModelTest, PublishesASortAndASortedRefreshAsOneResetEach) {
  for (const char *text : {"2.0", "3.0", "1.0"})
    list().ListItems.Add({.Text = text});
  Settle();
  const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
  list().Sorted = true;
  list().SortOrder = ListView::descending;
  Settle();
  EXPECT_EQ(resets.count(), 1);
  EXPECT_EQ(cell(0, 0) + cell(1, 0) + cell(2, 0), "3.02.01.0");

  list().ListItems.Clear();
  EXPECT_EQ(resets.count(), 2) << "the rows are gone at once";
  for (int i = 0; i < 1000; ++i)
    list().ListItems.Add({.Text = std::to_string(i)});
  EXPECT_EQ(model.rowCount(), 0);
  Settle();
  EXPECT_EQ(resets.count(), 3);
  EXPECT_EQ(model.rowCount(), 1000);
  EXPECT_EQ(cell(0, 0), "999");
}

TEST_F(ListModelTest, PublishesARefreshAsOneReset) {
  list().ListItems.Add({.Text = "1.6"});
  Settle();
  const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
  const QSignalSpy insertions(&model, &QAbstractItemModel::rowsInserted);
  const QSignalSpy published(&model, &ListModel::Published);
  list().ListItems.Clear();
  EXPECT_EQ(resets.count(), 1) << "the rows are gone at once";
  list().ColumnHeaders.Clear();
  for (const char *title : {"Magnitude", "Date"})
    list().ColumnHeaders.Add(title);
  for (int i = 0; i < 1000; ++i)
    list().ListItems.Add({.Text = "1.6"});
  Settle();

  EXPECT_EQ(resets.count(), 2);
  EXPECT_EQ(insertions.count(), 0);
  ASSERT_EQ(published.count(), 1);
  EXPECT_TRUE(published.at(0).at(0).toBool());
  EXPECT_EQ(model.rowCount(), 1000);
  EXPECT_EQ(model.columnCount(), 2);
}

TEST_F(ListModelTest, RowsThatFollowLaterAreNoRefresh) {
  const QSignalSpy published(&model, &ListModel::Published);
  list().ListItems.Add({.Text = "1.6"});
  Settle();

  ASSERT_EQ(published.count(), 1);
  EXPECT_FALSE(published.at(0).at(0).toBool());
}

TEST_F(ListModelTest, ShowsTheBeginningOfALongTextInOneLine) {
  list().ListItems.Add({.Text = "1.6\n\t" + std::string(10'000'000, '7')});
  Settle();

  EXPECT_EQ(cell(0, 0), "1.6  " + std::string(995, '7'));
}

TEST_F(ListModelTest, PublishesChangesInOneBlock) {
  for (int i = 0; i < 10; ++i)
    list().ListItems.Add({.Text = "1.6"});
  Settle();
  const QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
  list().ListItems.SetText(7, "2.0");
  list().ListItems.SetSubItem(3, 1, "Utah");
  Settle();

  ASSERT_EQ(changes.count(), 1);
  EXPECT_EQ(changes.at(0).at(0).toModelIndex().row(), 2);
  EXPECT_EQ(changes.at(0).at(1).toModelIndex().row(), 6);
  EXPECT_EQ(cell(6, 0), "2.0");
  EXPECT_EQ(cell(2, 1), "Utah");
}

TEST_F(ListModelTest, ChangeOfARowThatIsNotYetPublishedComesWithIt) {
  const QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
  list().ListItems.Add({.Text = "1.6"});
  list().ListItems.SetText(1, "2.0");
  Settle();

  EXPECT_EQ(changes.count(), 0);
  EXPECT_EQ(cell(0, 0), "2.0");
}

TEST_F(ListModelTest, IsEmptyAtOnceWhenTheRowsAreCleared) {
  list().ListItems.Add({.Text = "1.6"});
  Settle();
  list().ListItems.SetText(1, "2.0");
  list().ListItems.Clear();
  EXPECT_EQ(model.rowCount(), 0);

  list().ListItems.Add({.Text = "3.1"});
  Settle();
  ASSERT_EQ(model.rowCount(), 1);
  EXPECT_EQ(cell(0, 0), "3.1");
}

TEST_F(ListModelTest, TakesUpNewColumns) {
  list().ListItems.Add({.Text = "1.6", .SubItemTexts = {"a", "b", "c"}});
  Settle();
  const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
  list().ColumnHeaders.Clear();
  for (const char *title : {"Magnitude", "Date", "Time", "Where?"})
    list().ColumnHeaders.Add(title);
  EXPECT_EQ(model.columnCount(), 3);
  Settle();

  EXPECT_EQ(resets.count(), 1);
  ASSERT_EQ(model.columnCount(), 4);
  EXPECT_EQ(model.headerData(3, Qt::Horizontal, Qt::DisplayRole).toString(), "Where?");
  EXPECT_EQ(model.headerData(4, Qt::Horizontal, Qt::DisplayRole), QVariant());
  EXPECT_EQ(cell(0, 3), "c");
}

TEST_F(ListModelTest, HoldsAHundredThousandRowsWithoutACopy) {
  for (int i = 0; i < 100'000; ++i)
    list().ListItems.Add({.Text = "1.6"});
  Settle();
  ASSERT_EQ(model.rowCount(), 100'000);

  list().ListItems.SetText(100'000, "9.5");

  EXPECT_EQ(cell(99'999, 0), "9.5");
}

TEST_F(ListModelTest, IsEmptyWhenItsListHasGone) {
  list().ListItems.Add({.Text = "1.6"});
  Settle();
  list().ListItems.Add({.Text = "2.0"});
  model.Release();
  list().ListItems.Add({.Text = "3.1"});
  Settle();

  EXPECT_EQ(model.rowCount(), 0);
}

}  // namespace
}  // namespace borvane
