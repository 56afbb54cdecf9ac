#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "scan/scanners.h"
#include "support/failure_of.h"
#include "support/program/list_pages.h"
#include "support/program/watching_rig.h"

namespace borvane {

/// Scans one page in a program of its own, and keeps what is left of the page.
struct PageRig : Rig {
  PageRig(Scanner scan, std::string text, int refresh_mode = 3) : page(std::move(text)) {
    start();
    watch_rows(frmRecords->ListView1, "ListView1");
    watch_rows(frmRecords->ListView2, "ListView2");
    clear_trace();
    Integer mode = refresh_mode;
    happen([&] { failure = FailureOf([&] { scan(mode, page); }); });
    EXPECT_EQ(mode, refresh_mode);
  }

  std::string page;
  int failure = -1;
};

/// How many rows are listed.
inline int Rows() { return frmRecords->ListView1.ListItems.Count(); }

/// The text of a row's sub-item.
inline std::string SubItem(int row, int number) {
  return std::string(frmRecords->ListView1.ListItems(row).SubItems(number));
}

/// A row's text and those of its sub-items, from 1 to 7.
inline std::vector<std::string> RowTexts(int row) {
  std::vector<std::string> texts = {frmRecords->ListView1.ListItems(row).Text};
  for (int number = 1; number <= 7; ++number)
    texts.push_back(SubItem(row, number));
  return texts;
}

/// `text` at a position: what is in front of it is filled with `filler`.
inline std::string AtPosition(int position, std::string_view text, char filler = '.') {
  return std::string(static_cast<std::size_t>(position - 1), filler) + std::string(text);
}

}  // namespace borvane
