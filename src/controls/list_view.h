#pragma once

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
  virtual void RowAdded(int row) = 0;
  virtual void RowChanged(int row) = 0;
  virtual void RowsCleared() = 0;
  virtual void ColumnsChanged() = 0;

 protected:
  ~ListWatcher() = default;
};

/// The rows of a list, counted from 1.
class ListRows {
 public:
  ListRows() = default;
  ListRows(const ListRows &) = delete;
  ListRows &operator=(const ListRows &) = delete;

  int Count() const { return static_cast<int>(items_.size()); }

  /// Raises a subscript failure when there is no such row.
  const ListItem &operator()(int row) const;

  void Add(ListItem item);
  void Clear();

  /// The current row: the one that the user, or a screen reader, came to last; 0 for none. The first row of an empty
  /// list becomes the current one by itself, without being highlighted.
  int Current() const { return current_; }

  /// The user comes to that row. Raises a subscript failure when there is no such row.
  void Choose(int row);

  void SetText(int row, std::string_view text);

  /// Sets the text of the sub-item at `number`, from 1 on.
  void SetSubItem(int row, int number, std::string_view text);

 private:
  friend class ListView;
  ListItem &Checked(int row);

  std::vector<ListItem> items_;
  int current_ = 0;
  ListWatcher *watcher_ = nullptr;
};

/// The columns of a list, counted from 1.
class ListColumns {
 public:
  ListColumns() = default;
  ListColumns(const ListColumns &) = delete;
  ListColumns &operator=(const ListColumns &) = delete;

  /// The width in twips of a column without one of its own.
  static constexpr float default_width = 1440;

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

/// A list with columns.
class ListView : public Control {
 public:
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

  /// The current row's item. Raises an object failure when there is none.
  const ListItem &SelectedItem() const;

  /// Sets the one watcher of rows and columns; null for none.
  void WatchRows(ListWatcher *watcher);

  ListRows ListItems;
  ListColumns ColumnHeaders;
  Property<bool> GridLines;

 private:
  bool hides_column_headers_;
};

}  // namespace borvane
