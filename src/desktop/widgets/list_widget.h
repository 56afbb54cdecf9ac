#pragma once

#include <QHeaderView>
#include <QTreeView>

namespace borvane {

/// The titles of a list's columns. A title asks for room for the sort mark only while it has it.
class ListHeader final : public QHeaderView {
 public:
  explicit ListHeader(QWidget *parent);

 protected:
  QSize sectionSizeFromContents(int section) const override;

  /// Qt reports a double click of any button, and one beside the titles.
  void mouseDoubleClickEvent(QMouseEvent *event) override;
};

/// The view of a list: whole rows of one height, with lines between them when they are wanted.
class ListWidget final : public QTreeView {
 public:
  explicit ListWidget(QWidget *parent);

  void ShowGridLines(bool on);

  /// The width in pixels that a column needs for its title and for its texts in the first `rows` rows.
  int NeededWidth(int column, int rows) const;

  /// Makes the row at `index` the current one, with or without a highlight, and leaves the list scrolled as it is.
  void GoTo(const QModelIndex &index, bool with_highlight);

  /// Scrolls up or down to the row at `index` and returns where it is in the viewport, over its whole width.
  QRect BringIntoSight(const QModelIndex &index);

  /// The list's own tool tip shows over its rows as well. Without one, a cell shows its text; one that has room for its
  /// text needs no tool tip with the same.
  bool viewportEvent(QEvent *event) override;

 protected:
  void drawRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

  /// A pressed row stays the current one while the pointer is drawn over others.
  void mouseMoveEvent(QMouseEvent *event) override;

  /// A letter is a key of the window and goes to no row that begins with it.
  void keyboardSearch(const QString &text) override;

  /// A press on blank space changes nothing, and Ctrl does not take the highlight from a row.
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index, const QEvent *event) const override;

 private:
  bool has_grid_lines_ = false;
};

}  // namespace borvane
