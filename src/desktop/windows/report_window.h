#pragma once

#include <utility>
#include <vector>

#include "desktop/windows/laid_out_window.h"

class QVBoxLayout;

namespace borvane {

struct ReportForm;

/// The felt report's window. The form places its frames and its list; what is in a frame has a layout.
class ReportWindow final : public LaidOutWindow {
 public:
  ReportWindow(ReportForm &form, FocusTracker &focus);

  void Build() override;

 protected:
  void resizeEvent(QResizeEvent *event) override;
  bool eventFilter(QObject *object, QEvent *event) override;

 private:
  void BuildEvent();
  void BuildForm();
  void BuildReporter(QVBoxLayout &rows);
  void BuildAnswers(QVBoxLayout &rows);
  void BuildChoices(QVBoxLayout &rows);
  void BuildComments(QVBoxLayout &rows);
  void BuildThanks();
  void BuildList();
  void BuildButtons();

  /// Puts a box in the column of the boxes, after its label.
  QWidget &AddField(QHBoxLayout &row, Label &label, Control &control);

  /// The Tab key passes over the form while it is outside of the window or below the thanks, where nobody sees what has
  /// the keyboard. The list keeps its stop: a screen reader reads it wherever it is.
  void UpdateStops();

  ReportForm &report_;
  QWidget *frame_ = nullptr;                                  // of the form
  QWidget *thanks_ = nullptr;                                 // their frame
  std::vector<std::pair<QWidget *, Qt::FocusPolicy>> stops_;  // what is in it, with how it gets the keyboard
};

}  // namespace borvane
