#include "desktop/windows/report_window.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "desktop/widgets/twips.h"
#include "desktop/windows_1252.h"
#include "reports/ComPart.h"

namespace borvane {

namespace {

constexpr int frame_margin = 9;
constexpr int row_spacing = 4;
constexpr int block_spacing = 7;
constexpr int column_spacing = 12;
constexpr int label_column = 92;
constexpr int field_width = 176;
constexpr int age_width = 36;

// Where the form is while it is filled: what is above and below it is placed by that.
constexpr QRect form_place(13, 34, 471, 316);

}  // namespace

ReportWindow::ReportWindow(ReportForm &form, FocusTracker &focus) : LaidOutWindow(form, focus), report_(form) {}

/// The Tab key goes by this order.
void ReportWindow::Build() {
  BuildEvent();
  BuildForm();
  BuildThanks();
  BuildList();
  BuildButtons();
}

void ReportWindow::resizeEvent(QResizeEvent *event) {
  LaidOutWindow::resizeEvent(event);
  UpdateStops();
}

bool ReportWindow::eventFilter(QObject *object, QEvent *event) {
  if (object != frame_ && object != thanks_)
    return LaidOutWindow::eventFilter(object, event);
  if (event->type() == QEvent::Move || event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent)
    UpdateStops();
  return false;
}

void ReportWindow::UpdateStops() {
  if (is_released() || frame_ == nullptr || thanks_ == nullptr)
    return;
  const bool is_covered = report_.Frame2.Visible() && thanks_->geometry().intersects(frame_->geometry());
  const bool is_in_sight = rect().intersects(frame_->geometry()) && !is_covered;
  for (const auto &[widget, policy] : stops_)
    widget->setFocusPolicy(is_in_sight ? policy : Qt::ClickFocus);
}

/// The event's key is above the frames.
void ReportWindow::BuildEvent() {
  const int top = (form_place.top() - row_height()) / 2;
  QWidget &label = *Bind(report_.Label2(0), *this, Placing::ByLayout);
  label.setGeometry(form_place.left(), top, label.sizeHint().width(), row_height());
  QWidget &key = *Bind(report_.Label2(1), *this, Placing::ByLayout);
  const int left = label.geometry().right() + 1 + row_spacing;
  key.setGeometry(left, top, form_place.right() + 1 - left, row_height());
}

void ReportWindow::BuildForm() {
  frame_ = Bind(report_.Frame1, *this, Placing::ByTwips);
  frame_->setAccessibleName(QStringLiteral("Felt report"));
  auto *rows = new QVBoxLayout(frame_);
  rows->setContentsMargins(frame_margin, frame_margin, frame_margin, frame_margin);
  rows->setSpacing(row_spacing);
  BuildReporter(*rows);
  rows->addSpacing(block_spacing);
  BuildAnswers(*rows);
  rows->addSpacing(block_spacing);
  BuildChoices(*rows);
  rows->addSpacing(block_spacing);
  BuildComments(*rows);

  for (QWidget *widget : frame_->findChildren<QWidget *>()) {
    if ((widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr)
      stops_.emplace_back(widget, widget->focusPolicy());
  }
  frame_->installEventFilter(this);
}

void ReportWindow::BuildReporter(QVBoxLayout &rows) {
  QHBoxLayout &person = AddRow(rows);
  AddField(person, report_.Label1(0), report_.Text1(ReportForm::text_name)).setFocus();
  person.addSpacing(column_spacing);
  QWidget &age = AddLabelled(person, report_.Label1(1), report_.Text1(ReportForm::text_age));
  age.setFixedWidth(age_width);
  Add(person, report_.Label1(5));
  age.setAccessibleName(ShownText(report_.Label1(1).Caption() + " " + report_.Label1(5).Caption()));
  person.addStretch();

  QHBoxLayout &place = AddRow(rows);
  AddField(place, report_.Label1(2), report_.Text1(ReportForm::text_zip));
  place.addSpacing(column_spacing);
  Add(place, report_.Check1);
  place.addStretch();

  AddLabelled(AddRow(rows), report_.Label1(3), report_.Text1(ReportForm::text_school), label_column);
}

/// In two columns, the second one below what is to the right of the boxes.
void ReportWindow::BuildAnswers(QVBoxLayout &rows) {
  for (int i = 0; i < report_.Check2.Count(); i += 2) {
    QHBoxLayout &row = AddRow(rows);
    Add(row, report_.Check2(i)).setFixedWidth(label_column + row.spacing() + field_width);
    row.addSpacing(column_spacing);
    if (i + 1 < report_.Check2.Count())
      Add(row, report_.Check2(i + 1));
    row.addStretch();
  }
}

void ReportWindow::BuildChoices(QVBoxLayout &rows) {
  const auto add = [&](Label &label, ComboBox &box) {
    QHBoxLayout &row = AddRow(rows);
    AddField(row, label, box);
    row.addStretch();
  };
  add(report_.Label1(4), report_.Combo1);
  add(report_.Label1(6), report_.Combo2);
  add(report_.Label1(8), report_.Combo3);
}

/// They have the room that is left.
void ReportWindow::BuildComments(QVBoxLayout &rows) {
  QHBoxLayout &row = AddRow(rows);
  QWidget &box = AddLabelled(row, report_.Label1(7), report_.Text1(ReportForm::text_comments), label_column);
  row.setAlignment(row.itemAt(row.count() - 2)->widget(), Qt::AlignTop);
  row.setAlignment(&box, {});
  box.setMinimumHeight(2 * row_height());
  box.setMaximumHeight(QWIDGETSIZE_MAX);
  rows.setStretchFactor(&row, 1);
}

void ReportWindow::BuildThanks() {
  constexpr int wide_margin = 21;
  constexpr int wide_spacing = 2 * block_spacing;
  thanks_ = Bind(report_.Frame2, *this, Placing::ByTwips);
  QWidget &frame = *thanks_;
  frame.installEventFilter(this);
  frame.setAccessibleName(QStringLiteral("Other activities"));
  // A form that comes back for another report is below it.
  frame.setAutoFillBackground(true);
  auto *rows = new QVBoxLayout(&frame);
  rows->setContentsMargins(wide_margin, wide_margin, wide_margin, wide_margin);
  rows->setSpacing(row_spacing);

  QHBoxLayout &thanks = AddRow(*rows);
  QWidget &text = Add(thanks, report_.Label2(2));
  // It comes when all has been sent, and moves nothing then.
  QSizePolicy policy = text.sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  text.setSizePolicy(policy);
  rows->addSpacing(wide_spacing);

  QHBoxLayout &magnitude = AddRow(*rows);
  Add(magnitude, report_.Label2(3));
  Add(magnitude, report_.Label2(4));
  magnitude.addStretch();
  rows->addSpacing(2 * wide_spacing);

  for (const int i :
       {ReportForm::heading_links, ReportForm::link_usa, ReportForm::link_other_countries, ReportForm::link_reports}) {
    QHBoxLayout &row = AddRow(*rows);
    Add(row, report_.Label3(i));
    row.addStretch();
  }
  rows->addStretch();
}

void ReportWindow::BuildList() {
  Bind(report_.ListView1, *this, Placing::ByTwips)->setAccessibleName(QStringLiteral("Reports"));
}

/// They are below the frames, at their right edge.
void ReportWindow::BuildButtons() {
  constexpr int width = 80;
  constexpr int height = 23;
  constexpr int spacing = 6;
  const int bottom = form_place.bottom() + 1;
  const int top = bottom + (PixelsOf(report_.ScaleHeight()) - bottom - height) / 2;
  const int right = form_place.right() + 1;
  const auto place = [&](int button, int left) {
    Bind(report_.Command1(button), *this, Placing::ByLayout)->setGeometry(left, top, width, height);
  };
  place(ReportForm::button_submit, right - 2 * width - spacing);
  place(ReportForm::button_cancel, right - width);
}

QWidget &ReportWindow::AddField(QHBoxLayout &row, Label &label, Control &control) {
  QWidget &field = AddLabelled(row, label, control, label_column);
  field.setFixedWidth(field_width);
  return field;
}

}  // namespace borvane
