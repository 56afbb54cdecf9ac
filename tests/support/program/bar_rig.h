#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "bars/Form1.h"
#include "bars/newTagFrm.h"
#include "controls/key_codes.h"
#include "support/program/watching_rig.h"

namespace borvane {

/// A program that watches Los Angeles, with the auto refresh on and its one event of magnitude 2.0 listed. The bars'
/// own buttons put them on the screen, which is 19200 twips wide.
struct BarRig : WatchingRig {
  static constexpr float screen_width = 19200;

  BarRig() {
    press(frmRecords->Toolbar1, RecordsForm::button_refresh);
    clear_trace();
  }

  ShortBarForm &open_short_bar() {
    press(frmRecords->Toolbar1, RecordsForm::button_short_bar);
    clear_trace();
    return *Form1;
  }

  LongBarForm &open_long_bar() {
    press(frmRecords->Toolbar1, RecordsForm::button_long_bar);
    clear_trace();
    return *newTagFrm;
  }

  /// A key is released while `form` has the keyboard.
  void key(FormBase &form, int code, int shift = 0) {
    happen([&] { form.Form_KeyUp(code, shift); });
  }

  /// The pointer moves over `control`, to that place in its container or, for a picture box, in itself.
  void move_mouse_over(Control &control, float x, float y) {
    happen([&] { control.MouseMove.Raise({.button = 0, .shift = 0, .x = x, .y = y}); });
  }

  void release_mouse_on(Control &control, int button) {
    happen([&] { control.MouseUp.Raise({.button = button, .shift = 0}); });
  }

  /// The user chooses that entry at the next popup menu.
  void choose_next(MenuItem &entry) {
    screen().on_popup = [this, &entry](Menu &) {
      screen().on_popup = {};
      entry.Click.Raise();
    };
  }

  /// Replaces the rows of the list of events. A row is a magnitude and the texts of the further columns.
  static void list(std::initializer_list<std::vector<std::string>> rows) {
    ListRows &items = frmRecords->ListView1.ListItems;
    items.Clear();
    for (const std::vector<std::string> &row : rows)
      items.Add(
          {.Text = row[0], .SubItemTexts = PackedTexts(std::vector<std::string_view>(row.begin() + 1, row.end()))});
  }

  /// A row as most areas have it.
  static std::vector<std::string> row(std::string magnitude, std::string place, std::string date = "2018/02/07",
                                      std::string time = "01:26:13") {
    return {std::move(magnitude), std::move(date), std::move(time),  "34.495N",
            "118.667W",           "26.5",          std::move(place), "recenteqs/Quakes/ci1.html"};
  }
};

/// The captions of a bar's labels.
template <std::size_t N>
Lines Captions(ControlArray<Label, N> &labels) {
  Lines captions;
  for (int i = 0; i < labels.Count(); ++i)
    captions.push_back(labels(i).Caption());
  return captions;
}

}  // namespace borvane
