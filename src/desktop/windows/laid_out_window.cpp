#include "desktop/windows/laid_out_window.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

#include "controls/label.h"
#include "desktop/windows_1252.h"

namespace borvane {

namespace {

constexpr int spacing = 6;

/// The height of every row and of what is in it. A text box rounds up where it divides the room above and below its
/// text, all else rounds down: the texts of a row are on one line if there is nothing to round.
int RowHeight(const QFontMetrics &font) {
  constexpr int least = 18;
  return least + font.height() % 2;
}

}  // namespace

LaidOutWindow::LaidOutWindow(FormBase &form, FocusTracker &focus)
    : FormWindow(form, focus), row_height_(RowHeight(fontMetrics())) {}

QHBoxLayout &LaidOutWindow::AddRow(QBoxLayout &group) const {
  auto *row = new QHBoxLayout;
  row->setSpacing(spacing);
  row->addStrut(row_height_);
  group.addLayout(row);
  return *row;
}

QWidget &LaidOutWindow::Add(QBoxLayout &row, Control &control) {
  QWidget &widget = *Bind(control, *row.parentWidget(), Placing::ByLayout);
  widget.setMaximumHeight(row_height_);
  if (auto *label = qobject_cast<QLabel *>(&widget)) {
    // As high as the row, its text is where the style puts that of a check box.
    label->setMinimumHeight(row_height_);
    label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  }
  row.addWidget(&widget, 0, Qt::AlignVCenter);
  return widget;
}

QWidget &LaidOutWindow::AddLabelled(QBoxLayout &row, Label &label, Control &control, int least_label_width) {
  auto *text = dynamic_cast<QLabel *>(&Add(row, label));
  text->setMinimumWidth(least_label_width);
  QWidget &widget = Add(row, control);
  const QString name = ShownText(label.Caption()).trimmed();
  widget.setAccessibleName(name);
  if (const auto *box = dynamic_cast<QComboBox *>(&widget); box != nullptr && box->isEditable())
    box->lineEdit()->setAccessibleName(name);
  // A combo box is read with its text for a name, and is known by its label.
  text->setBuddy(&widget);
  return widget;
}

}  // namespace borvane
