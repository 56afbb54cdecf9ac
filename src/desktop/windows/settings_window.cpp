#include "desktop/windows/settings_window.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>
#include <array>

#include "desktop/widgets/frame_widget.h"
#include "desktop/windows_1252.h"
#include "settings/conffrm.h"

namespace borvane {

namespace {

constexpr int margin = 6;
constexpr int spacing = 5;
constexpr int row_height = 19;
constexpr int number_width = 52;

QVBoxLayout &LayOut(QWidget &group) {
  auto *rows = new QVBoxLayout(&group);
  rows->setContentsMargins(margin, spacing, margin, spacing);
  rows->setSpacing(spacing);
  return *rows;
}

/// A new group with an outline.
QVBoxLayout &AddGroup(QBoxLayout &groups) {
  auto *group = new FrameWidget(groups.parentWidget());
  groups.addWidget(group);
  return LayOut(*group);
}

QHBoxLayout &AddRow(QBoxLayout &group) {
  auto *row = new QHBoxLayout;
  row->setSpacing(spacing + 1);
  row->addStrut(row_height);
  group.addLayout(row);
  return *row;
}

}  // namespace

SettingsWindow::SettingsWindow(SettingsForm &form, FocusTracker &focus) : FormWindow(form, focus), settings_(form) {
  move(screen()->availableGeometry().center() - rect().center());
}

void SettingsWindow::Build() {
  auto *groups = new QVBoxLayout(this);
  groups->setContentsMargins(margin, margin, margin, margin);
  groups->setSpacing(spacing);
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
  QWidget &areas = AddLabelled(zone, settings_.Label1(0), settings_.Combo2);
  zone.setStretchFactor(&areas, 1);

  QHBoxLayout &numbers = AddRow(group);
  AddLabelled(numbers, settings_.Label1(1), settings_.Text2).setFixedWidth(number_width);
  Add(numbers, settings_.Label1(2));
  numbers.addStretch();
  AddLabelled(numbers, settings_.Label1(3), settings_.Text1).setFixedWidth(number_width);

  QHBoxLayout &hint = AddRow(group);
  Add(hint, settings_.Label5);

  QHBoxLayout &position = AddRow(group);
  Add(position, settings_.Check4);
  position.addStretch();
  AddLabelled(position, settings_.Label1(9), settings_.Text6(0)).setFixedWidth(number_width);
  AddLabelled(position, settings_.Label1(10), settings_.Text6(1)).setFixedWidth(number_width);
}

void SettingsWindow::BuildBars(QBoxLayout &groups) {
  QVBoxLayout &group = AddGroup(groups);

  QHBoxLayout &place = AddRow(group);
  AddLabelled(place, settings_.Label1(5), settings_.Text3).setFixedWidth(number_width);
  AddLabelled(place, settings_.Label1(6), settings_.Text4).setFixedWidth(number_width);
  place.addStretch();
  Add(place, settings_.Check6);

  QHBoxLayout &colors = AddRow(group);
  Add(colors, settings_.Check3);
  colors.addStretch();
  const std::array labels = {&settings_.Label1(4), &settings_.Label1(11), &settings_.Label3};
  for (int box = 0; box < settings_.Picture1.Count(); ++box) {
    constexpr int swatch_size = 16;
    QWidget &swatch = Add(colors, settings_.Picture1(box));
    swatch.setFixedSize(swatch_size, swatch_size);
    Label &label = *labels[static_cast<std::size_t>(box)];
    Add(colors, label);
    swatch.setAccessibleName(ShownText(label.Caption()));
  }

  QHBoxLayout &code = AddRow(group);
  code.addStretch();
  Add(code, settings_.Label1(13));
  Add(code, settings_.Label1(14)).setFixedWidth(number_width);
}

void SettingsWindow::BuildEdge(QBoxLayout &groups) {
  QWidget &frame = *Bind(settings_.Frame1, *this, Placing::ByLayout);
  groups.addWidget(&frame);
  QHBoxLayout &row = AddRow(LayOut(frame));
  Add(row, settings_.Label4);
  row.addStretch();
  Add(row, settings_.Option1(0));
  QWidget &offset = Add(row, settings_.Text7);
  offset.setFixedWidth(number_width);
  offset.setAccessibleName(ShownText(settings_.Option1(0).Caption()));
  Add(row, settings_.Option1(1));
  Add(row, settings_.Option1(2));
}

void SettingsWindow::BuildLog(QBoxLayout &groups) {
  QHBoxLayout &row = AddRow(AddGroup(groups));
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
  AddLabelled(tone, settings_.Label1(7), settings_.Text5(0)).setFixedWidth(number_width);
  tone.addStretch();
  AddLabelled(tone, settings_.Label1(8), settings_.Text5(1)).setFixedWidth(number_width);
}

void SettingsWindow::BuildLastRow(QBoxLayout &groups) {
  QHBoxLayout &row = AddRow(groups);
  AddLabelled(row, settings_.Label1(15), settings_.Combo1);
  row.addStretch();
  Add(row, settings_.Command2);
}

QWidget &SettingsWindow::Add(QBoxLayout &row, Control &control) {
  QWidget &widget = *Bind(control, *row.parentWidget(), Placing::ByLayout);
  widget.setMaximumHeight(row_height);
  row.addWidget(&widget, 0, Qt::AlignVCenter);
  return widget;
}

QWidget &SettingsWindow::AddLabelled(QBoxLayout &row, Label &label, Control &control) {
  auto *text = dynamic_cast<QLabel *>(&Add(row, label));
  QWidget &widget = Add(row, control);
  widget.setAccessibleName(ShownText(label.Caption()).trimmed());
  // A combo box is read with its text for a name, and is known by its label.
  text->setBuddy(&widget);
  return widget;
}

}  // namespace borvane
