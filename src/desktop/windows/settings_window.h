#pragma once

#include "desktop/windows/form_window.h"

class QBoxLayout;
class QHBoxLayout;

namespace borvane {

class Label;
class PictureBox;
class TextBox;
struct SettingsForm;

/// The settings window. It has a layout of its own, in groups with an outline.
class SettingsWindow final : public FormWindow {
 public:
  SettingsWindow(SettingsForm &form, FocusTracker &focus);

  void Build() override;

 protected:
  void closeEvent(QCloseEvent *event) override;

 private:
  void BuildArea(QBoxLayout &groups);
  void BuildBars(QBoxLayout &groups);
  void BuildEdge(QBoxLayout &groups);
  void BuildLog(QBoxLayout &groups);
  void BuildStart(QBoxLayout &groups);
  void BuildSound(QBoxLayout &groups);
  void BuildLastRow(QBoxLayout &groups);

  QHBoxLayout &AddRow(QBoxLayout &group) const;

  /// Puts the widget of `control` at the end of `row`.
  QWidget &Add(QBoxLayout &row, Control &control);

  /// The same after its label, whose text is its name for a screen reader.
  QWidget &AddLabelled(QBoxLayout &row, Label &label, Control &control, int least_label_width = 0);

  /// The same for a box that takes a number.
  void AddNumber(QBoxLayout &row, Label &label, TextBox &box, int least_label_width = 0);

  /// A colour box before its label.
  void AddSwatch(QBoxLayout &row, PictureBox &box, Label &label);

  SettingsForm &settings_;
  const int row_height_;
  QWidget *close_ = nullptr;
};

}  // namespace borvane
