#include "desktop/widgets/frame_widget.h"

#include <QPainter>

#include "desktop/widgets/colors.h"

namespace borvane {

FrameWidget::FrameWidget(QWidget *parent) : QGroupBox(parent) { setContentsMargins({}); }

void FrameWidget::ShowCaption(const QString &caption) {
  caption_ = caption;
  setAccessibleName(caption);
  update();
}

void FrameWidget::paintEvent(QPaintEvent * /*event*/) {
  constexpr int caption_left = 8;
  constexpr qreal corner_radius = 2;
  QPainter painter(this);
  const QRect caption(caption_left, 0, fontMetrics().horizontalAdvance(caption_), fontMetrics().height());

  painter.save();
  if (!caption_.isEmpty())
    painter.setClipRegion(QRegion(rect()).subtracted(caption));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(LineColor(palette()));
  const int top = caption_.isEmpty() ? 0 : caption.height() / 2;
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, top + 0.5, -0.5, -0.5), corner_radius, corner_radius);
  painter.restore();

  painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
  painter.drawText(caption, Qt::AlignLeft | Qt::AlignTop, caption_);
}

// At both of these a group box would make room for its own title again, so it is passed over.
// NOLINTBEGIN(bugprone-parent-virtual-call)

void FrameWidget::changeEvent(QEvent *event) { QWidget::changeEvent(event); }

void FrameWidget::resizeEvent(QResizeEvent *event) { QWidget::resizeEvent(event); }

// NOLINTEND(bugprone-parent-virtual-call)

}  // namespace borvane
