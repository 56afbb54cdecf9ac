#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "controls/list_view.h"

namespace borvane {

/// The rows of a list as a view sees them: no copy of them, but the control's own. What is added or changed is
/// published in one block as soon as events run, before anything is painted, so that a view lays its rows out once: a
/// refresh and a sort as one reset, rows that are added later as one insertion.
class ListModel final : public QAbstractTableModel, public ListWatcher {
  Q_OBJECT

 public:
  explicit ListModel(ListView &list, QObject *parent = nullptr);

  /// Takes the model off its list, which is about to go: it is empty from then on.
  void Release();

  int rowCount(const QModelIndex &parent = {}) const override;
  int columnCount(const QModelIndex &parent = {}) const override;
  QVariant data(const QModelIndex &index, int role) const override;

  /// A screen reader gets a title with the order, if the list is sorted by its column.
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  /// The columns as they are published.
  const std::vector<ColumnHeader> &columns() const { return columns_; }

  /// The column by which the list is sorted, from 0 on; -1 for none.
  int SortedColumn() const;

 Q_SIGNALS:
  /// What has changed is published. In a refresh the rows or columns have been cleared before.
  void Published(bool is_refresh);

 private:
  void RowAdded(int row) override;
  void RowsMoved() override;
  void RowChanged(int row) override;
  void RowsCleared() override;
  void ColumnsChanged() override;

  void PublishSoon();
  void Publish();
  void PublishAll();
  void PublishChanges();
  void PublishAdditions();
  QString SpokenTitle(int column) const;

  ListView *list_;
  std::vector<ColumnHeader> columns_;
  int published_rows_ = 0;
  int first_changed_ = 0;  // rows from 1 on; 0 while none has changed
  int last_changed_ = 0;
  bool rows_moved_ = false;
  bool rows_cleared_ = false;
  bool columns_changed_ = false;
  bool is_publishing_soon_ = false;
};

}  // namespace borvane
