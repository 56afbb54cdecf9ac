#pragma once

#include <QPushButton>

#include "controls/color.h"

namespace borvane {

/// A box filled with a colour. It is a button for the keyboard and the screen reader, which reads its label and its
/// colour.
class Swatch final : public QPushButton {
 public:
  explicit Swatch(QWidget *parent);

  void ShowColor(Color color);

  /// What the colour is for.
  void SetLabel(const QString &label);

 protected:
  void paintEvent(QPaintEvent *event) override;

 private:
  void ShowName();

  Color color_ = color_button_face;
  QString label_;
};

}  // namespace borvane
