#pragma once

#include "desktop/windows/laid_out_window.h"

namespace borvane {

class PictureBox;
struct SettingsForm;

/// The settings window. It has a layout of its own, in groups with an outline.
class SettingsWindow final : public LaidOutWindow {
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

  /// Puts a box that takes a number at the end of `row`, after its label.
  void AddNumber(QBoxLayout &row, Label &label, TextBox &box, int least_label_width = 0);

  /// A colour box before its label.
  void AddSwatch(QBoxLayout &row, PictureBox &box, Label &label);

  SettingsForm &settings_;
  QWidget *close_ = nullptr;
};

}  // namespace borvane
