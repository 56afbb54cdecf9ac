#pragma once

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include "alert/quake_log.h"
#include "records/frmRecords.h"
#include "support/rig.h"

namespace borvane {

inline const std::string log_folder = "/documents/Borvane";
inline const std::string log_path = log_folder + "/quakes.log";

/// A started program whose list has three columns and no rows.
struct LogRig : Rig {
  LogRig() {
    start();
    frmRecords->ListView1.ColumnHeaders.Clear();
    for (const char *title : {"Magnitude", "Date", "Time"})
      frmRecords->ListView1.ColumnHeaders.Add(title);
    clear_trace();
  }

  void add_row(std::string text, std::initializer_list<std::string_view> further = {}) {
    frmRecords->ListView1.ListItems.Add({.Text = std::move(text), .SubItemTexts = further});
  }

  void write() { happen(WriteQuakeLog); }

  /// What is in the log; "none" when there is no file.
  std::string log() { return files().ContentOf(log_path).value_or("none"); }
};

}  // namespace borvane
