#include <QGroupBox>
#include <QPainter>

#include "desktop/widgets/binders.h"
#include "desktop/windows_1252.h"

namespace borvane {

namespace {

/// An outline with the caption set into its upper edge. The styles draw a group box's caption above its outline, which
/// would leave too little room for what stands inside at fixed places.
class FrameWidget final : public QGroupBox {
 public:
  explicit FrameWidget(QWidget *parent) : QGroupBox(parent) {}

  /// The caption is not the box's own title, which a screen reader would read for every label that is empty.
  void ShowCaption(const QString &caption) {
    caption_ = caption;
    setAccessibleName(caption);
    update();
  }

 protected:
  void paintEvent(QPaintEvent * /*event*/) override {
    constexpr int caption_left = 8;
    constexpr qreal corner_radius = 2;
    QPainter painter(this);
    const QRect caption(caption_left, 0, fontMetrics().horizontalAdvance(caption_), fontMetrics().height());

    painter.save();
    if (!caption_.isEmpty())
      painter.setClipRegion(QRegion(rect()).subtracted(caption));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::Mid));
    const int top = caption_.isEmpty() ? 0 : caption.height() / 2;
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, top + 0.5, -0.5, -0.5), corner_radius, corner_radius);
    painter.restore();

    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(caption, Qt::AlignLeft | Qt::AlignTop, caption_);
  }

 private:
  QString caption_;
};

class FrameBinder final : public Binder {
 public:
  FrameBinder(Frame &frame, FrameWidget &widget, const Surroundings &surroundings)
      : Binder(frame, widget, surroundings), frame_(frame), frame_widget_(widget) {
    Show(frame_.Caption);
  }

 protected:
  void Show(const PropertyBase & /*property*/) override { frame_widget_.ShowCaption(ShownText(frame_.Caption())); }

 private:
  Frame &frame_;
  FrameWidget &frame_widget_;
};

}  // namespace

Binder *BindFrame(Frame &frame, const Surroundings &surroundings) {
  return new FrameBinder(frame, *new FrameWidget(&surroundings.parent), surroundings);
}

}  // namespace borvane
