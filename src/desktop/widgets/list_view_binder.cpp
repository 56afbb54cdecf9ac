#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <QTreeView>
#include <algorithm>

#include "desktop/widgets/binders.h"
#include "desktop/widgets/colors.h"
#include "desktop/widgets/list_model.h"
#include "desktop/widgets/twips.h"
#include "desktop/windows_1252.h"

namespace borvane {

namespace {

/// The view of a list: whole rows of one height, with lines between them when they are wanted.
class ListWidget final : public QTreeView {
 public:
  explicit ListWidget(QWidget *parent) : QTreeView(parent) {
    setUniformRowHeights(true);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setIndentation(0);
    setAllColumnsShowFocus(true);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollMode(ScrollPerPixel);
    header()->setMinimumSectionSize(1);
    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
    header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  }

  void ShowGridLines(bool on) {
    has_grid_lines_ = on;
    viewport()->update();
  }

 protected:
  void drawRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override {
    QTreeView::drawRow(painter, option, index);
    if (!has_grid_lines_)
      return;
    painter->save();
    painter->setPen(LineColor(palette()));
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    for (int column = 0; column < header()->count(); ++column) {
      const int right = columnViewportPosition(column) + columnWidth(column) - 1;
      painter->drawLine(right, option.rect.top(), right, option.rect.bottom());
    }
    painter->restore();
  }

  /// The list's own tool tip shows over its rows as well. Without one, a cell shows its text; one that has room for its
  /// text needs no tool tip with the same.
  bool viewportEvent(QEvent *event) override {
    if (event->type() == QEvent::ToolTip) {
      const auto &help = static_cast<QHelpEvent &>(*event);
      if (!toolTip().isEmpty()) {
        QToolTip::showText(help.globalPos(), toolTip(), this);
        return true;
      }
      const QModelIndex index = indexAt(help.pos());
      if (index.isValid() && sizeHintForIndex(index).width() <= visualRect(index).width()) {
        QToolTip::hideText();
        return true;
      }
    }
    return QTreeView::viewportEvent(event);
  }

 private:
  bool has_grid_lines_ = false;
};

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
    SetColumnWidths();
    view_.ShowGridLines(list_.GridLines());
    connect(&model_, &ListModel::headerDataChanged, this, &ListViewBinder::SetColumnWidths);
  }

  void Release() override {
    Binder::Release();
    model_.Release();
  }

 protected:
  void Show(const PropertyBase & /*property*/) override { view_.ShowGridLines(list_.GridLines()); }

 private:
  void SetColumnWidths() {
    for (int column = 0; column < model_.columnCount(); ++column) {
      const auto &width = model_.columns()[static_cast<std::size_t>(column)].Width;
      view_.setColumnWidth(column, std::max(1, PixelsOf(width.value_or(ListColumns::default_width))));
    }
  }

  ListView &list_;
  ListWidget &view_;
  ListModel model_;
};

}  // namespace

Binder *BindListView(ListView &list, const Surroundings &surroundings) {
  return new ListViewBinder(list, *new ListWidget(&surroundings.parent), surroundings);
}

}  // namespace borvane
