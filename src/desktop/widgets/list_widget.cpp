#include "desktop/widgets/list_widget.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>

#include "desktop/widgets/colors.h"

namespace borvane {

ListHeader::ListHeader(QWidget *parent) : QHeaderView(Qt::Horizontal, parent) {
  setMinimumSectionSize(1);
  setStretchLastSection(false);
  setSectionsMovable(false);
  setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  setSortIndicator(-1, Qt::AscendingOrder);
}

QSize ListHeader::sectionSizeFromContents(int section) const {
  QStyleOptionHeader option;
  initStyleOption(&option);
  option.section = section;
  option.text = model()->headerData(section, orientation(), Qt::DisplayRole).toString();
  if (section == sortIndicatorSection())
    option.sortIndicator = QStyleOptionHeader::SortDown;
  return style()->sizeFromContents(QStyle::CT_HeaderSection, &option, {}, this);
}

void ListHeader::mouseDoubleClickEvent(QMouseEvent *event) {
  if (event->button() == Qt::LeftButton && logicalIndexAt(event->pos()) >= 0)
    QHeaderView::mouseDoubleClickEvent(event);
}

ListWidget::ListWidget(QWidget *parent) : QTreeView(parent) {
  setHeader(new ListHeader(this));
  header()->setSortIndicatorShown(true);
  setUniformRowHeights(true);
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setIndentation(0);
  setAllColumnsShowFocus(true);
  setEditTriggers(NoEditTriggers);
  setHorizontalScrollMode(ScrollPerPixel);
}

void ListWidget::ShowGridLines(bool on) {
  has_grid_lines_ = on;
  viewport()->update();
}

int ListWidget::NeededWidth(int column, int rows) const {
  int width = header()->sectionSizeHint(column);
  for (int row = 0; row < rows; ++row)
    width = std::max(width, sizeHintForIndex(model()->index(row, column)).width());
  return width;
}

void ListWidget::GoTo(const QModelIndex &index, bool with_highlight) {
  const bool scrolls = hasAutoScroll();
  setAutoScroll(false);
  selectionModel()->setCurrentIndex(index, with_highlight
                                               ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                                               : QItemSelectionModel::NoUpdate);
  setAutoScroll(scrolls);
}

QRect ListWidget::BringIntoSight(const QModelIndex &index) {
  const int left = horizontalScrollBar()->value();
  scrollTo(index);
  horizontalScrollBar()->setValue(left);
  const QRect cell = visualRect(index);
  return {0, cell.top(), viewport()->width(), cell.height()};
}

bool ListWidget::viewportEvent(QEvent *event) {
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

void ListWidget::drawRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const {
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

void ListWidget::mouseMoveEvent(QMouseEvent *event) {
  if (event->buttons() == Qt::NoButton)
    QTreeView::mouseMoveEvent(event);
}

void ListWidget::keyboardSearch(const QString & /*text*/) {}

QItemSelectionModel::SelectionFlags ListWidget::selectionCommand(const QModelIndex &index,
                                                                 const QEvent * /*event*/) const {
  return index.isValid() ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                         : QItemSelectionModel::SelectionFlags(QItemSelectionModel::NoUpdate);
}

}  // namespace borvane
