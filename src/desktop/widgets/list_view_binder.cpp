#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QScopedValueRollback>
#include <QStringList>
#include <algorithm>
#include <utility>
#include <vector>

#include "desktop/widgets/binders.h"
#include "desktop/widgets/label_text.h"
#include "desktop/widgets/list_model.h"
#include "desktop/widgets/list_widget.h"
#include "desktop/widgets/twips.h"
#include "desktop/windows_1252.h"

namespace borvane {

namespace {

// A column without a width of its own has room for its title and for the texts of so many rows, within these limits.
constexpr int measured_rows = 50;
constexpr int narrowest_column = 60;
constexpr int widest_column = 240;

/// A column that nobody is meant to see.
constexpr int hidden_column = 1;

bool IsMenuKey(const QKeyEvent &event) {
  return event.key() == Qt::Key_Menu || (event.key() == Qt::Key_F10 && event.modifiers() == Qt::ShiftModifier);
}

class ListViewBinder final : public Binder {
 public:
  ListViewBinder(ListView &list, ListWidget &view, const Surroundings &surroundings)
      : Binder(list, view, surroundings), list_(list), view_(view), model_(list) {
    view_.setModel(&model_);
    // A list has no caption of its own: a screen reader calls it by that of the frame around it.
    view_.setAccessibleName(surroundings.parent.accessibleName().trimmed());
    if (list_.hides_column_headers()) {
      view_.setHeaderHidden(true);
      // Such a list is as high as its rows, and a scroll bar would cover them.
      view_.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }
    view_.ShowGridLines(list_.GridLines());
    view_.viewport()->installEventFilter(this);
    ConnectHeader();
    connect(&model_, &ListModel::Published, this, &ListViewBinder::Published);
    connect(&model_, &ListModel::dataChanged, this, [this](const QModelIndex &first) {
      if (first.row() < measured_rows)
        WidenColumns();
    });
    connect(&model_, &ListModel::modelReset, this,
            [this] { has_highlight_ = has_highlight_ && model_.rowCount() > 0; });
    connect(view_.selectionModel(), &QItemSelectionModel::currentChanged, this, &ListViewBinder::CurrentChanged);
    connect(view_.selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { has_highlight_ = view_.selectionModel()->hasSelection(); });
    Published(true);
  }

  void Release() override {
    Binder::Release();
    model_.Release();
  }

 protected:
  void Show(const PropertyBase &property) override {
    if (&property == &list_.GridLines) {
      view_.ShowGridLines(list_.GridLines());
    } else {
      ShowSort();
      // Not at once: to measure a column reads rows, which would sort them by what has been set so far.
      QMetaObject::invokeMethod(this, &ListViewBinder::FitMarkedColumn, Qt::QueuedConnection);
    }
  }

  bool eventFilter(QObject *object, QEvent *event) override {
    if (is_released())
      return false;
    if (object == view_.viewport())
      return event->type() == QEvent::MouseButtonRelease && Released(static_cast<QMouseEvent &>(*event));
    if (object == &view_ && event->type() == QEvent::KeyPress)
      return Pressed(static_cast<QKeyEvent &>(*event));
    return Binder::eventFilter(object, event);
  }

 private:
  void ConnectHeader() {
    if (!list_.ColumnClick.IsWired())
      return;
    view_.header()->setSectionsClickable(true);
    // A second click that follows at once counts as well.
    for (const auto click : {&QHeaderView::sectionClicked, &QHeaderView::sectionDoubleClicked})
      connect(view_.header(), click, this, &ListViewBinder::TitleClicked);
  }

  void TitleClicked(int section) {
    const QPointer<ListWidget> view(&view_);
    Enter([&] {
      if (section < list_.ColumnHeaders.Count())
        list_.ClickColumn(section + 1);
    });
    // The header has moved the mark by itself.
    if (view && !is_released())
      ShowSort();
  }

  void ShowSort() {
    view_.header()->setSortIndicator(
        model_.SortedColumn(), list_.SortOrder() == ListView::descending ? Qt::DescendingOrder : Qt::AscendingOrder);
  }

  /// A column makes room for the mark while it has it, unless the user has changed its width.
  void FitMarkedColumn() {
    if (is_released())
      return;
    const int column = model_.SortedColumn();
    for (const int moved : {std::exchange(marked_column_, column), column}) {
      if (moved >= 0 && moved < static_cast<int>(default_widths_.size()) &&
          view_.columnWidth(moved) == default_widths_[static_cast<std::size_t>(moved)])
        SetDefaultWidth(moved);
    }
  }

  void Published(bool is_refresh) {
    if (is_refresh) {
      fitted_rows_ = 0;
      ShowSort();
      marked_column_ = model_.SortedColumn();
    }
    SetColumnWidths(is_refresh);
    ShowCurrent();
  }

  /// A row that the user has chosen stays highlighted where a sort has moved it. The first row of a refresh is the
  /// current one without that.
  void ShowCurrent() {
    const int row = list_.ListItems.Current();
    if (row == 0 || row > model_.rowCount() || view_.currentIndex().row() == row - 1)
      return;
    const QScopedValueRollback<bool> by_program(is_moved_by_program_, true);
    view_.GoTo(model_.index(row - 1, 0), has_highlight_);
  }

  void CurrentChanged(const QModelIndex &current) {
    if (!is_released() && !is_moved_by_program_ && current.isValid() && current.row() < list_.ListItems.Count())
      list_.ListItems.Choose(current.row() + 1);
  }

  /// A refresh brings all widths back. The first rows may come in several blocks.
  void SetColumnWidths(bool is_refresh) {
    const int rows = std::min(measured_rows, model_.rowCount());
    if (!is_refresh && rows <= fitted_rows_)
      return;
    fitted_rows_ = rows;
    default_widths_.assign(model_.columns().size(), 0);
    for (int column = 0; column < model_.columnCount(); ++column) {
      const auto &width = model_.columns()[static_cast<std::size_t>(column)].Width;
      if (!width)
        SetDefaultWidth(column);
      else if (is_refresh)
        view_.setColumnWidth(column, std::max(hidden_column, PixelsOf(*width)));
    }
  }

  /// A text that was written later may need more room. What the user has changed stays.
  void WidenColumns() {
    for (int column = 0; column < static_cast<int>(default_widths_.size()); ++column) {
      const int width = default_widths_[static_cast<std::size_t>(column)];
      if (width != 0 && view_.columnWidth(column) == width && DefaultWidth(column) > width)
        SetDefaultWidth(column);
    }
  }

  int DefaultWidth(int column) const {
    return std::clamp(view_.NeededWidth(column, fitted_rows_), narrowest_column, widest_column);
  }

  void SetDefaultWidth(int column) {
    const int width = DefaultWidth(column);
    default_widths_[static_cast<std::size_t>(column)] = width;
    view_.setColumnWidth(column, width);
  }

  /// MouseUp comes when the view has made the pressed row the current one.
  bool Released(QMouseEvent &event) {
    if (!list_.MouseUp.IsWired())
      return false;
    const QPointer<ListWidget> view(&view_);
    const QPoint origin = -view_.viewport()->pos();
    view_.viewportEvent(&event);
    if (view)
      EnterWithMenuAt(event.globalPosition().toPoint(), [&] { list_.MouseUp.Raise(MouseStateOf(event, origin)); });
    return true;
  }

  bool Pressed(const QKeyEvent &event) {
    if (event.matches(QKeySequence::Copy)) {
      CopyCurrentRow();
      return true;
    }
    if (event.key() == Qt::Key_F2 && list_.BeforeLabelEdit.IsWired()) {
      // No window lets its rows be edited, so there is no editor that could open.
      Enter([&] { list_.AllowsLabelEdit(); });
      return true;
    }
    if (IsMenuKey(event) && list_.MouseUp.IsWired()) {
      if (!event.isAutoRepeat())
        ClickCurrentRow(right_button);
      return true;
    }
    return false;
  }

  /// Does what a click does whose pointer is on the current row. A menu opens there, wherever the pointer is.
  void ClickCurrentRow(int button) {
    const int row = list_.ListItems.Current();
    if (row == 0 || row > model_.rowCount())
      return;
    const QRect place = view_.BringIntoSight(model_.index(row - 1, 0));
    const QPoint click = view_.viewport()->mapTo(&view_, QPoint(place.left(), place.center().y()));
    EnterWithMenuAt(view_.viewport()->mapToGlobal(place.bottomLeft()), [&] {
      list_.MouseUp.Raise({.button = button, .shift = 0, .x = TwipsOf(click.x()), .y = TwipsOf(click.y())});
    });
  }

  void CopyCurrentRow() const {
    const int row = list_.ListItems.Current();
    if (row == 0)
      return;
    const ListItem &item = list_.ListItems(row);
    QStringList fields;
    for (int column = 0; column < model_.columnCount(); ++column) {
      if (view_.columnWidth(column) > hidden_column)
        fields += OneLine(ShownText(column == 0 ? std::string_view(item.Text) : item.SubItems(column)));
    }
    QGuiApplication::clipboard()->setText(fields.join(QLatin1Char('\t')));
  }

  ListView &list_;
  ListWidget &view_;
  ListModel model_;
  std::vector<int> default_widths_;  // of the columns without one of their own, in pixels; 0 for the others
  int fitted_rows_ = 0;              // by so many rows these have been measured
  int marked_column_ = -1;           // the one that has room for the sort mark
  bool has_highlight_ = false;
  bool is_moved_by_program_ = false;
};

}  // namespace

Binder *BindListView(ListView &list, const Surroundings &surroundings) {
  return new ListViewBinder(list, *new ListWidget(&surroundings.parent), surroundings);
}

}  // namespace borvane
