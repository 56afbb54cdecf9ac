#include "controls/list_view.h"

#include "basic/failure.h"

namespace borvane {

std::string_view ListItem::SubItems(int number) const {
  if (number < 1)
    Fail(Failure::Subscript);
  return SubItemTexts(number);
}

const ListItem &ListRows::operator()(int row) const {
  if (row < 1 || row > Count())
    Fail(Failure::Subscript);
  return items_[static_cast<std::size_t>(row - 1)];
}

ListItem &ListRows::Checked(int row) {
  if (row < 1 || row > Count())
    Fail(Failure::Subscript);
  return items_[static_cast<std::size_t>(row - 1)];
}

void ListRows::Add(ListItem item) {
  items_.push_back(std::move(item));
  if (Count() == 1)
    current_ = 1;
  if (watcher_ != nullptr)
    watcher_->RowAdded(Count());
}

void ListRows::Clear() {
  items_.clear();
  current_ = 0;
  if (watcher_ != nullptr)
    watcher_->RowsCleared();
}

void ListRows::Choose(int row) {
  Checked(row);
  current_ = row;
}

void ListRows::SetText(int row, std::string_view text) {
  Checked(row).Text = text;
  if (watcher_ != nullptr)
    watcher_->RowChanged(row);
}

void ListRows::SetSubItem(int row, int number, std::string_view text) {
  ListItem &item = Checked(row);
  if (number < 1)
    Fail(Failure::Subscript);
  item.SubItemTexts.Set(number, text);
  if (watcher_ != nullptr)
    watcher_->RowChanged(row);
}

const ColumnHeader &ListColumns::operator()(int column) const {
  if (column < 1 || column > Count())
    Fail(Failure::Subscript);
  return headers_[static_cast<std::size_t>(column - 1)];
}

void ListColumns::Add(std::string_view title, std::optional<float> width) {
  headers_.push_back({std::string(title), width});
  if (watcher_ != nullptr)
    watcher_->ColumnsChanged();
}

void ListColumns::Clear() {
  headers_.clear();
  if (watcher_ != nullptr)
    watcher_->ColumnsChanged();
}

void ListColumns::SetWidth(int column, float width) {
  if (column < 1 || column > Count())
    Fail(Failure::Subscript);
  headers_[static_cast<std::size_t>(column - 1)].Width = width;
  if (watcher_ != nullptr)
    watcher_->ColumnsChanged();
}

ListView::ListView(Container &container, std::string_view name, const Design &design, int index)
    : Control(container, name, design, index),
      GridLines(*this, false),
      hides_column_headers_(design.HideColumnHeaders) {
  ColumnHeaders.headers_ = design.Columns;
}

const ListItem &ListView::SelectedItem() const {
  if (ListItems.Current() == 0)
    Fail(Failure::ObjectNotSet);
  return ListItems(ListItems.Current());
}

void ListView::WatchRows(ListWatcher *watcher) {
  ListItems.watcher_ = watcher;
  ColumnHeaders.watcher_ = watcher;
}

}  // namespace borvane
