#include "desktop/widgets/outline_style.h"

#include <QPainter>
#include <QPlainTextEdit>
#include <QStyleOption>
#include <algorithm>

#include "desktop/widgets/colors.h"

namespace borvane {

namespace {

constexpr qreal square = 0;
constexpr qreal rounded = 2;
constexpr qreal circle = 100;

/// Draws over the outline that Fusion has drawn along the edge of `place`.
void DrawOutline(QPainter &painter, const QRect &place, const QColor &color, qreal radius) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(color);
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
  painter.restore();
}

/// The colour of the outline, which also shows where the keyboard is.
QColor OutlineColor(const QStyleOption &option, QStyle::State focus) {
  return (option.state & focus) == focus ? option.palette.color(QPalette::Highlight) : LineColor(option.palette);
}

}  // namespace

OutlineStyle::OutlineStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void OutlineStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                 const QWidget *widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  const State reached_by_keyboard = State_HasFocus | State_KeyboardFocusChange;
  switch (element) {
    case PE_IndicatorCheckBox:
      DrawOutline(*painter, option->rect, OutlineColor(*option, reached_by_keyboard), square);
      break;
    case PE_IndicatorRadioButton:
      DrawOutline(*painter, option->rect, OutlineColor(*option, reached_by_keyboard), circle);
      break;
    case PE_PanelButtonCommand:
    case PE_PanelButtonTool:
      DrawOutline(*painter, option->rect, OutlineColor(*option, reached_by_keyboard), rounded);
      break;
    case PE_FrameLineEdit:
      DrawOutline(*painter, option->rect, OutlineColor(*option, State_HasFocus), rounded);
      break;
    case PE_Frame:
      // Of a box with many lines it is what a line edit's own frame is.
      if (qobject_cast<const QPlainTextEdit *>(widget) != nullptr)
        DrawOutline(*painter, option->rect, OutlineColor(*option, State_HasFocus), rounded);
      else
        DrawOutline(*painter, option->rect, LineColor(option->palette), square);
      break;
    case PE_PanelMenu:
      DrawOutline(*painter, option->rect, LineColor(option->palette), square);
      break;
    default:
      break;
  }
}

void OutlineStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                                      const QWidget *widget) const {
  QProxyStyle::drawComplexControl(control, option, painter, widget);
  if (control == CC_ScrollBar) {
    const QRect slider = subControlRect(control, option, SC_ScrollBarSlider, widget);
    DrawOutline(*painter, slider, LineColor(option->palette), square);
  }
}

int OutlineStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const {
  const int size = QProxyStyle::pixelMetric(metric, option, widget);
  const bool is_of_mark = metric == PM_IndicatorWidth || metric == PM_IndicatorHeight;
  if (!is_of_mark || qstyleoption_cast<const QStyleOptionButton *>(option) == nullptr || option->rect.isEmpty())
    return size;
  return std::min({size, option->rect.width(), option->rect.height()});
}

}  // namespace borvane
