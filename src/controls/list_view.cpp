#include "controls/list_view.h"

#include <algorithm>
#include <string>

#include "basic/failure.h"

namespace borvane {

namespace {

/// A row that is being sorted.
struct SortedRow {
  std::string_view key;
  std::uint32_t item;
};

// Meant (sorts-fold-a-to-z-only): letters with accents should sort beside those without. Texts are sorted by their
// bytes, which is the same on every system; only A to Z and a to z are one.
char InLowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

std::string_view ListItem::SubItems(int number) const {
  if (number < 1)
    Fail(Failure::Subscript);
  return SubItemTexts(number);
}

const ListItem &ListRows::operator()(int row) const { return items_[ItemOf(row)]; }

std::size_t ListRows::ItemOf(int row) const {
  if (row < 1 || row > Count())
    Fail(Failure::Subscript);
  PlaceRows();
  return order_[static_cast<std::size_t>(row - 1)];
}

void ListRows::Add(ListItem item) {
  order_.push_back(static_cast<std::uint32_t>(items_.size()));
  items_.push_back(std::move(item));
  if (Count() == 1)
    current_ = 0;

  if (!arrangement_.is_sorted)
    placed_ = order_.size();

  if (watcher_ == nullptr)
    return;
  if (arrangement_.is_sorted)
    watcher_->RowsMoved();
  else
    watcher_->RowAdded(Count());
}

void ListRows::Clear() {
  items_.clear();
  order_.clear();
  placed_ = 0;
  is_rearranged_ = false;
  current_.reset();
  if (watcher_ != nullptr)
    watcher_->RowsCleared();
}

int ListRows::Current() const {
  if (!current_)
    return 0;
  PlaceRows();
  return static_cast<int>(std::find(order_.begin(), order_.end(), *current_) - order_.begin()) + 1;
}

void ListRows::Choose(int row) { current_ = row == 0 ? std::nullopt : std::optional(ItemOf(row)); }

void ListRows::SetText(int row, std::string_view text) {
  items_[ItemOf(row)].Text = text;
  if (watcher_ != nullptr)
    watcher_->RowChanged(row);
}

void ListRows::SetSubItem(int row, int number, std::string_view text) {
  ListItem &item = items_[ItemOf(row)];
  if (number < 1)
    Fail(Failure::Subscript);
  item.SubItemTexts.Set(number, text);
  if (watcher_ != nullptr)
    watcher_->RowChanged(row);
}

void ListRows::Arrange(const ListArrangement &arrangement) {
  // What is set together, as by a click on a title, is one sort.
  if (!is_rearranged_ || !arrangement.is_sorted)
    PlaceRows();

  arrangement_ = arrangement;
  if (!arrangement.is_sorted || Count() == 0)
    return;
  placed_ = 0;
  is_rearranged_ = true;
  if (watcher_ != nullptr)
    watcher_->RowsMoved();
}

void ListRows::PlaceRows() const {
  if (placed_ == order_.size())
    return;

  // Folded once and in one piece of memory: to fold them at each comparison would cost more than all else.
  std::size_t size = 0;
  for (const std::uint32_t item : order_)
    size += KeyOf(item).size();
  std::string keys(size, '\0');
  std::vector<SortedRow> rows;
  rows.reserve(order_.size());
  auto place = keys.begin();
  for (const std::uint32_t item : order_) {
    const std::string_view key = KeyOf(item);
    rows.push_back({.key = {place, place + static_cast<std::ptrdiff_t>(key.size())}, .item = item});
    place = std::transform(key.begin(), key.end(), place, InLowerCase);
  }

  const auto comes_before = [is_descending = arrangement_.is_descending](const SortedRow &a, const SortedRow &b) {
    return is_descending ? b.key < a.key : a.key < b.key;
  };
  const auto added = rows.begin() + static_cast<std::ptrdiff_t>(placed_);
  std::stable_sort(added, rows.end(), comes_before);

  // Not with std::merge, which asks for sorted rows: a text that was written later may have made one of the placed rows
  // greater than the next one.
  auto next_placed = rows.begin();
  auto next_added = added;
  for (std::uint32_t &item : order_) {
    const bool takes_added =
        next_placed == added || (next_added != rows.end() && comes_before(*next_added, *next_placed));
    item = takes_added ? (next_added++)->item : (next_placed++)->item;
  }
  placed_ = order_.size();
  is_rearranged_ = false;
}

std::string_view ListRows::KeyOf(std::size_t item) const {
  return arrangement_.key == 0 ? items_[item].Text : items_[item].SubItems(arrangement_.key);
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
      Sorted(*this, false),
      SortKey(*this, 0),
      SortOrder(*this, ascending),
      hides_column_headers_(design.HideColumnHeaders) {
  ColumnHeaders.headers_ = design.Columns;
}

int ListView::SelectedRow() const {
  if (!ListItems.current_)
    Fail(Failure::ObjectNotSet);
  return ListItems.Current();
}

const ListItem &ListView::SelectedItem() const {
  if (!ListItems.current_)
    Fail(Failure::ObjectNotSet);
  return ListItems.items_[*ListItems.current_];
}

void ListView::WatchRows(ListWatcher *watcher) {
  ListItems.watcher_ = watcher;
  ColumnHeaders.watcher_ = watcher;
}

void ListView::ClickColumn(int column) {
  // A copy: a handler may replace the columns.
  const ColumnHeader header = ColumnHeaders(column);
  ColumnClick.Raise(header);
}

bool ListView::AllowsLabelEdit() const {
  Integer cancel = 0;
  BeforeLabelEdit.Raise(cancel);
  return cancel == 0;
}

void ListView::Changed(const PropertyBase &property) {
  if (&property == &Sorted || &property == &SortKey || &property == &SortOrder)
    ListItems.Arrange({.is_sorted = Sorted(), .key = SortKey(), .is_descending = SortOrder() == descending});
}

}  // namespace borvane
