#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "controls/control.h"
#include "controls/packed_texts.h"

namespace borvane {

/// A row of a list: its text and the texts of the further columns, counted from 1.
struct ListItem {
  std::string Text;
  PackedTexts SubItemTexts = {};

  /// The text of the sub-item at `number`; empty where none has been set. Raises a subscript failure below 1.
  std::string_view SubItems(int number) const;
};

/// A column title and, where one was given, its width in twips.
struct ColumnHeader {
  std::string Text;
  std::optional<float> Width;
};

/// Learns what changes in the rows and columns of a list. Rows count from 1.
class ListWatcher {
 public:
  /// There is one more row at the end.
  virtual void RowAdded(int row) = 0;

  /// Any row may be another one, and there may be more: the list is to be sorted, or a row has been added to a sorted
  /// one. The rows take their places when one is read, so a watcher does better to read them later, all at once.
  virtual void RowsMoved() = 0;

  virtual void RowChanged(int row) = 0;
  virtual void RowsCleared() = 0;
  virtual void ColumnsChanged() = 0;

 protected:
  ~ListWatcher() = default;
};

/// How a list sorts its rows: by the text of one column, the letters A to Z in either case being the same.
struct ListArrangement {
  bool is_sorted = false;
  int key = 0;  // 0 for the rows' own text, else the number of a sub-item
  bool is_descending = false;
};

/// The rows of a list, counted from 1 in the order in which they are shown. That is the order of their addition until
/// the list is sorted. A sorted list puts a row that is added in front of the first row that comes after it; rows of
/// equal texts keep their order. A text that is written later moves no row.
class ListRows {
 public:
  ListRows() = default;
  ListRows(const ListRows &) = delete;
  ListRows &operator=(const ListRows &) = delete;

  int Count() const { return static_cast<int>(items_.size()); }

  /// Good until a row is added. Raises a subscript failure when there is no such row.
  const ListItem &operator()(int row) const;

  void Add(ListItem item);
  void Clear();

  /// The current row: the one that the user, or a screen reader, came to last; 0 for none. The first row of an empty
  /// list becomes the current one by itself, without being highlighted. It stays the current one wherever it moves.
  int Current() const;

  /// The user comes to that row, or with 0 to none. Raises a subscript failure when there is no such row.
  void Choose(int row);

  void SetText(int row, std::string_view text);

  /// Sets the text of the sub-item at `number`, from 1 on.
  void SetSubItem(int row, int number, std::string_view text);

  /// Puts the rows that have none yet into their places: what has been set and added so far is one sort. The next read
  /// of a row does this, too.
  void PlaceRows() const;

 private:
  friend class ListView;

  /// The offset of a row's item. Raises a subscript failure when there is no such row.
  std::size_t ItemOf(int row) const;

  void Arrange(const ListArrangement &arrangement);
  std::string_view KeyOf(std::size_t item) const;

  std::vector<ListItem> items_;  // in the order of their addition: to move whole rows would be quadratic
  std::optional<std::size_t> current_;
  ListArrangement arrangement_;
  ListWatcher *watcher_ = nullptr;

  // Rows are placed when one is read, not when they are added: together, that costs one sort.
  mutable std::vector<std::uint32_t> order_;  // the offset of each row's item
  mutable std::size_t placed_ = 0;      // that many rows are in their places; the others follow as they were added
  mutable bool is_rearranged_ = false;  // all rows are to be sorted afresh
};

/// The columns of a list, counted from 1.
class ListColumns {
 public:
  ListColumns() = default;
  ListColumns(const ListColumns &) = delete;
  ListColumns &operator=(const ListColumns &) = delete;

  int Count() const { return static_cast<int>(headers_.size()); }

  /// Raises a subscript failure when there is no such column.
  const ColumnHeader &operator()(int column) const;

  void Add(std::string_view title, std::optional<float> width = std::nullopt);
  void Clear();

  /// Gives a column a width in twips. Raises a subscript failure when there is no such column.
  void SetWidth(int column, float width);

 private:
  friend class ListView;

  std::vector<ColumnHeader> headers_;
  ListWatcher *watcher_ = nullptr;
};

/// A list with columns. The user's clicks on their titles raise ColumnClick; clicks on rows and below them, MouseUp.
class ListView : public Control {
 public:
  // The values of SortOrder.
  static constexpr int ascending = 0;
  static constexpr int descending = 1;

  struct Design {
    std::vector<ColumnHeader> Columns;
    bool HideColumnHeaders = false;
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
    bool Enabled = true;
    bool Visible = true;
    std::string_view ToolTipText = "";
  };

  ListView(Container &container, std::string_view name, const Design &design, int index = no_index);

  bool hides_column_headers() const { return hides_column_headers_; }

  /// The current row. Raises an object failure when there is none.
  int SelectedRow() const;

  /// The current row's item. Raises an object failure when there is none.
  const ListItem &SelectedItem() const;

  /// Sets the one watcher of rows and columns; null for none.
  void WatchRows(ListWatcher *watcher);

  /// The user clicks the title of a column: ColumnClick is raised. Raises a subscript failure when there is no such
  /// column.
  void ClickColumn(int column);

  /// The user is about to edit the current row's text in place: BeforeLabelEdit is raised. Returns whether no handler
  /// has cancelled that.
  bool AllowsLabelEdit() const;

  ListRows ListItems;
  ListColumns ColumnHeaders;
  Property<bool> GridLines;

  // While Sorted is set, the rows are sorted by the column whose position, from 0 on, is SortKey. A sort by all that
  // has been set since the last one is made when a row is read.
  Property<bool> Sorted;
  Property<int> SortKey;
  Property<int> SortOrder;

  Event<const ColumnHeader &> ColumnClick;
  Event<Integer &> BeforeLabelEdit;  // its argument cancels the editing when it is set to anything but 0

 protected:
  void Changed(const PropertyBase &property) override;

 private:
  bool hides_column_headers_;
};

}  // namespace borvane
