#include "desktop/windows/settings_window.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <array>

#include "desktop/widgets/frame_widget.h"
#include "desktop/widgets/swatch.h"
#include "desktop/windows_1252.h"
#include "settings/conffrm.h"

namespace borvane {

namespace {

constexpr int margin = 6;
constexpr int spacing = 5;
constexpr int group_spacing = 8;
constexpr int number_width = 52;
constexpr int code_width = 14;
constexpr int label_width = 56;  // of the first labels of the rows: the boxes after them are a column

QVBoxLayout &LayOut(QWidget &group) {
  auto *rows = new QVBoxLayout(&group);
  rows->setContentsMargins(margin, spacing, margin, spacing);
  rows->setSpacing(spacing);
  return *rows;
}

/// A new group with an outline, and its name for a screen reader if it has one.
QVBoxLayout &AddGroup(QBoxLayout &groups, const QString &name = {}) {
  auto *group = new FrameWidget(groups.parentWidget());
  group->setAccessibleName(name);
  groups.addWidget(group);
  return LayOut(*group);
}

}  // namespace

SettingsWindow::SettingsWindow(SettingsForm &form, FocusTracker &focus) : LaidOutWindow(form, focus), settings_(form) {}

void SettingsWindow::Build() {
  auto *groups = new QVBoxLayout(this);
  groups->setContentsMargins(margin, margin, margin, margin);
  groups->setSpacing(group_spacing);
  BuildArea(*groups);
  BuildBars(*groups);
  BuildEdge(*groups);
  BuildLog(*groups);
  BuildStart(*groups);
  BuildSound(*groups);
  groups->addStretch();
  BuildLastRow(*groups);
}

void SettingsWindow::BuildArea(QBoxLayout &groups) {
  QVBoxLayout &group = AddGroup(groups);

  QHBoxLayout &zone = AddRow(group);
  QWidget &areas = AddLabelled(zone, settings_.Label1(0), settings_.Combo2, label_width);
  zone.setStretchFactor(&areas, 1);
  areas.setFocus();

  QHBoxLayout &numbers = AddRow(group);
  AddNumber(numbers, settings_.Label1(1), settings_.Text2, label_width);
  Add(numbers, settings_.Label1(2));
  numbers.addStretch();
  AddNumber(numbers, settings_.Label1(3), settings_.Text1);

  QHBoxLayout &hint = AddRow(group);
  Add(hint, settings_.Label5);

  QHBoxLayout &position = AddRow(group);
  Add(position, settings_.Check4);
  position.addStretch();
  AddNumber(position, settings_.Label1(9), settings_.Text6(0));
  position.addSpacing(margin);
  AddNumber(position, settings_.Label1(10), settings_.Text6(1));
}

void SettingsWindow::BuildBars(QBoxLayout &groups) {
  QVBoxLayout &group = AddGroup(groups);

  QHBoxLayout &place = AddRow(group);
  AddNumber(place, settings_.Label1(5), settings_.Text3, label_width);
  place.addStretch();
  AddNumber(place, settings_.Label1(6), settings_.Text4);

  QHBoxLayout &colors = AddRow(group);
  Add(colors, settings_.Check3);
  const std::array labels = {&settings_.Label1(4), &settings_.Label1(11), &settings_.Label3};
  for (int box = 0; box < settings_.Picture1.Count(); ++box) {
    colors.addStretch();
    AddSwatch(colors, settings_.Picture1(box), *labels[static_cast<std::size_t>(box)]);
  }

  QHBoxLayout &code = AddRow(group);
  Add(code, settings_.Check6);
  code.addStretch();
  Add(code, settings_.Label1(13));
  Add(code, settings_.Label1(14)).setFixedWidth(code_width);
}

void SettingsWindow::AddSwatch(QBoxLayout &row, PictureBox &box, Label &label) {
  constexpr int size = 17;
  auto &swatch = dynamic_cast<Swatch &>(Add(row, box));
  swatch.setFixedSize(size, size);
  swatch.SetLabel(ShownText(label.Caption()));
  Add(row, label);
}

void SettingsWindow::BuildEdge(QBoxLayout &groups) {
  QWidget &frame = *Bind(settings_.Frame1, *this, Placing::ByLayout);
  const QString name = ShownText(settings_.Label4.Caption());
  frame.setAccessibleName(name);
  groups.addWidget(&frame);
  QHBoxLayout &row = AddRow(LayOut(frame));
  Add(row, settings_.Label4);
  row.addStretch();
  Add(row, settings_.Option1(0));
  QWidget &offset = Add(row, settings_.Text7);
  offset.setFixedWidth(number_width);
  offset.setAccessibleName(name + ", " + ShownText(settings_.Option1(0).Caption()));
  Add(row, settings_.Option1(1));
  Add(row, settings_.Option1(2));
}

void SettingsWindow::BuildLog(QBoxLayout &groups) {
  QHBoxLayout &row = AddRow(AddGroup(groups, ShownText(settings_.Check1.Caption())));
  Add(row, settings_.Check1);
  row.addStretch();
  Add(row, settings_.Option2(0));
  Add(row, settings_.Option2(1));
  QWidget &place = Add(row, settings_.Text8);
  Add(row, settings_.Label1(12));
  place.setAccessibleName(ShownText(settings_.Option2(1).Caption() + " " + settings_.Label1(12).Caption()));
}

void SettingsWindow::BuildStart(QBoxLayout &groups) {
  QHBoxLayout &row = AddRow(AddGroup(groups));
  Add(row, settings_.Check7);
  row.addStretch();
  Add(row, settings_.Check5);
}

void SettingsWindow::BuildSound(QBoxLayout &groups) {
  QVBoxLayout &group = AddGroup(groups);
  QHBoxLayout &row = AddRow(group);
  Add(row, settings_.Check2);
  Add(row, settings_.Label2);
  row.addStretch();
  Add(row, settings_.Command1(0));
  Add(row, settings_.Command1(1));

  QHBoxLayout &tone = AddRow(group);
  AddNumber(tone, settings_.Label1(7), settings_.Text5(0), label_width);
  tone.addStretch();
  AddNumber(tone, settings_.Label1(8), settings_.Text5(1));
}

void SettingsWindow::BuildLastRow(QBoxLayout &groups) {
  QHBoxLayout &row = AddRow(groups);
  row.addSpacing(margin);
  AddLabelled(row, settings_.Label1(15), settings_.Combo1);
  row.addStretch();
  close_ = &Add(row, settings_.Command2);
}

void SettingsWindow::closeEvent(QCloseEvent *event) {
  // It does what a click of "Close" does, and a click leaves the box first: its handler comes before those of "Close".
  if (close_->isEnabled())
    LeaveControl();
  LaidOutWindow::closeEvent(event);
}

void SettingsWindow::AddNumber(QBoxLayout &row, Label &label, TextBox &box, int least_label_width) {
  AddLabelled(row, label, box, least_label_width).setFixedWidth(number_width);
}

}  // namespace borvane
