#pragma once

#include <QProxyStyle>

namespace borvane {

/// Qt's Fusion style with outlines that are seen on any ground. Fusion makes them from the window's colour, and on a
/// dark desktop they vanish. The mark of a check box that is too small for it is smaller, too.
class OutlineStyle final : public QProxyStyle {
 public:
  OutlineStyle();

  void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                          const QWidget *widget) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override;
};

}  // namespace borvane
