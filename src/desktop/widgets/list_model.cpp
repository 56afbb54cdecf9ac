#include "desktop/widgets/list_model.h"

#include <algorithm>
#include <utility>

#include "desktop/widgets/label_text.h"

namespace borvane {

namespace {

std::vector<ColumnHeader> ColumnsOf(const ListColumns &columns) {
  std::vector<ColumnHeader> headers;
  for (int column = 1; column <= columns.Count(); ++column)
    headers.push_back(columns(column));
  return headers;
}

}  // namespace

ListModel::ListModel(ListView &list, QObject *parent)
    : QAbstractTableModel(parent),
      list_(&list),
      columns_(ColumnsOf(list.ColumnHeaders)),
      published_rows_(list.ListItems.Count()) {
  list.WatchRows(this);
}

void ListModel::Release() {
  list_->WatchRows(nullptr);
  beginResetModel();
  list_ = nullptr;
  published_rows_ = 0;
  endResetModel();
}

int ListModel::rowCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : published_rows_; }

int ListModel::columnCount(const QModelIndex &parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant ListModel::data(const QModelIndex &index, int role) const {
  if ((role != Qt::DisplayRole && role != Qt::ToolTipRole) || !checkIndex(index, CheckIndexOption::IndexIsValid))
    return {};
  const ListItem &row = list_->ListItems(index.row() + 1);
  const QString text =
      OneLine(LabelText(index.column() == 0 ? std::string_view(row.Text) : row.SubItems(index.column())));
  return role == Qt::ToolTipRole ? HoverText(text) : text;
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
    return {};
  switch (role) {
    case Qt::DisplayRole:
      return LabelText(columns_[static_cast<std::size_t>(section)].Text);
    case Qt::AccessibleTextRole:
      return SpokenTitle(section);
    default:
      return {};
  }
}

QString ListModel::SpokenTitle(int column) const {
  QString title = LabelText(columns_[static_cast<std::size_t>(column)].Text);
  if (column == SortedColumn())
    title += list_->SortOrder() == ListView::descending ? QStringLiteral(", sorted in descending order")
                                                        : QStringLiteral(", sorted in ascending order");
  return title;
}

int ListModel::SortedColumn() const {
  return list_ != nullptr && list_->Sorted() && list_->SortKey() < columnCount() ? list_->SortKey() : -1;
}

void ListModel::RowAdded(int /*row*/) { PublishSoon(); }

void ListModel::RowsMoved() {
  rows_moved_ = true;
  PublishSoon();
}

void ListModel::RowChanged(int row) {
  first_changed_ = first_changed_ == 0 ? row : std::min(first_changed_, row);
  last_changed_ = std::max(last_changed_, row);
  PublishSoon();
}

/// The rows are gone at once, so the view must not ask for them any more.
void ListModel::RowsCleared() {
  rows_cleared_ = true;
  first_changed_ = 0;
  last_changed_ = 0;
  PublishSoon();
  if (published_rows_ == 0)
    return;
  beginResetModel();
  published_rows_ = 0;
  endResetModel();
}

void ListModel::ColumnsChanged() {
  columns_changed_ = true;
  PublishSoon();
}

void ListModel::PublishSoon() {
  if (is_publishing_soon_)
    return;
  is_publishing_soon_ = true;
  QMetaObject::invokeMethod(this, &ListModel::Publish, Qt::QueuedConnection);
}

void ListModel::Publish() {
  is_publishing_soon_ = false;
  if (list_ == nullptr)
    return;
  const bool is_refresh = rows_cleared_ || columns_changed_;
  if (is_refresh || rows_moved_) {
    PublishAll();
  } else {
    PublishChanges();
    PublishAdditions();
  }
  Q_EMIT Published(is_refresh);
}

void ListModel::PublishAll() {
  beginResetModel();
  if (std::exchange(columns_changed_, false))
    columns_ = ColumnsOf(list_->ColumnHeaders);
  rows_cleared_ = false;
  rows_moved_ = false;
  first_changed_ = 0;
  last_changed_ = 0;
  published_rows_ = list_->ListItems.Count();
  endResetModel();
}

void ListModel::PublishChanges() {
  const int first = first_changed_;
  const int last = std::min(last_changed_, published_rows_);
  first_changed_ = 0;
  last_changed_ = 0;
  if (first != 0 && first <= last && columnCount() > 0)
    Q_EMIT dataChanged(index(first - 1, 0), index(last - 1, columnCount() - 1));
}

void ListModel::PublishAdditions() {
  const int count = list_->ListItems.Count();
  if (count <= published_rows_)
    return;
  beginInsertRows({}, published_rows_, count - 1);
  published_rows_ = count;
  endInsertRows();
}

}  // namespace borvane
