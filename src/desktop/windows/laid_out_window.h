#pragma once

#include "desktop/windows/form_window.h"

class QBoxLayout;
class QHBoxLayout;

namespace borvane {

class Label;
class TextBox;

/// A window that lays its controls out in rows of one height.
class LaidOutWindow : public FormWindow {
 public:
  LaidOutWindow(FormBase &form, FocusTracker &focus);

 protected:
  QHBoxLayout &AddRow(QBoxLayout &group) const;

  /// Puts the widget of `control` at the end of `row`.
  QWidget &Add(QBoxLayout &row, Control &control);

  /// The same after its label, whose text is its name for a screen reader.
  QWidget &AddLabelled(QBoxLayout &row, Label &label, Control &control, int least_label_width = 0);

  int row_height() const { return row_height_; }

 private:
  const int row_height_;
};

}  // namespace borvane
