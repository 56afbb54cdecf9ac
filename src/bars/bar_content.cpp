#include "bars/bar_content.h"

#include <string>

#include "bars/Form1.h"
#include "bars/newTagFrm.h"
#include "bars/paint_bar.h"
#include "basic/number.h"
#include "core/program.h"
#include "records/frmRecords.h"
#include "settings/conffrm.h"
#include "settings/values.h"

namespace borvane {

namespace {

// Meant (two-spellings-of-time): the two should be spelt alike. Only the strongest event's has a blank before its
// colon.
constexpr std::string_view time_of_newest = "time: ";
constexpr std::string_view time_of_strongest = "time : ";

/// The first stage of the update: colours and weights.
void PaintLabels(ShortBarForm &bar) {
  if (conffrm->Check3.Value() == 1) {
    for (int i = 0; i < bar.Label1.Count(); ++i) {
      bar.Label1(i).ForeColor = conffrm->Picture1(i).BackColor();
      // Meant (time-labels-are-never-bold): the three labels should have one weight. That of the time, the last one,
      // keeps its own.
      if (i < 2)
        bar.Label1(i).Bold = true;
    }
    return;
  }
  for (int i = 0; i < bar.Label1.Count(); ++i) {
    bar.Label1(i).ForeColor = color_inactive_caption_text;
    bar.Label1(i).Bold = false;
  }
}

std::string Text(std::string_view prefix, std::string_view text) { return std::string(prefix).append(text); }

/// A date and a time with two blanks between them.
std::string Moment(std::string_view prefix, std::string_view date, std::string_view time) {
  return Text(prefix, date).append("  ").append(time);
}

/// The four stored values of the strongest event ever read.
struct StrongestEvent {
  std::string magnitude;
  std::string place;
  std::string time;
  std::string date;
};

StrongestEvent StoredStrongest() {
  // Meant (update-on-refresh-changes-nothing): the second mode should show the strongest event of the list. With it the
  // stored magnitude stays empty, which is no number, and so no label of the bar changes.
  if (conffrm->Combo1.Text() != conffrm->Combo1.List(0))
    return {};
  StrongestEvent stored;
  stored.magnitude = ReadSetting(Setting::LastBig);
  stored.place = ReadSetting(Setting::BigPlace);
  stored.time = ReadSetting(Setting::BigTime);
  stored.date = ReadSetting(Setting::BigDate);
  return stored;
}

/// The row with the highest magnitude, the topmost of equals; row 0 with magnitude 0 when there is none above 0.
struct StrongestRow {
  float magnitude = 0;
  int row = 0;
};

StrongestRow FindStrongest(const ListRows &rows) {
  StrongestRow strongest;
  for (int row = 1; row <= rows.Count(); ++row) {
    const float magnitude = SinglePrefix(rows(row).Text);
    if (magnitude > strongest.magnitude)
      strongest = {.magnitude = magnitude, .row = row};
  }
  return strongest;
}

void ShowStored(LongBarForm &bar, const StrongestEvent &stored) {
  bar.Label2(0).Caption = Text("Strong: ", stored.magnitude);
  bar.Label2(1).Caption = Text("location: ", stored.place);
  bar.Label2(2).Caption = Moment(time_of_strongest, stored.date, stored.time);
}

void ShowListed(LongBarForm &bar, const ListRows &rows, const StrongestRow &strongest) {
  bar.Label2(0).Caption = Text("Strong: ", SingleText(strongest.magnitude, platform().region.DecimalSeparator()));
  // Meant (long-bar-stops-at-magnitude-zero): a list whose magnitudes are all 0 should leave the bar as it is or show a
  // row. There is no row 0, and the update ends with the magnitude written and nothing else.
  const ListItem &item = rows(strongest.row);
  // Meant (long-bar-reads-fixed-columns): the place should be read where the list has it. The columns are those of most
  // areas; with those of Alaska other texts are in their places.
  bar.Label2(1).Caption = Text("location: ", item.SubItems(6));
  bar.Label2(2).Caption = Moment(time_of_strongest, item.SubItems(1), item.SubItems(2));
}

void ShowNewest(LongBarForm &bar) {
  const ListItem &newest = frmRecords->ListView2.ListItems(1);
  bar.Label1(0).Caption = Text("Last: ", newest.Text);
  bar.Label1(1).Caption = Text("location: ", newest.SubItems(1));
  // Meant (long-bar-shows-the-day-twice): the time of the newest event has its day already. The date of the list is put
  // in front of it.
  const ListItem &first = frmRecords->ListView1.ListItems(1);
  bar.Label1(2).Caption = Moment(time_of_newest, first.SubItems(1), newest.SubItems(2));
}

}  // namespace

void UpdateShortBar() {
  ShortBarForm &bar = *Form1;
  PaintLabels(bar);

  // A label moves when its neighbour has its new text, and before it gets its own.
  const ListItem &newest = frmRecords->ListView2.ListItems(1);
  bar.Label1(0).Caption = Text("Mag: ", newest.Text);
  PutAfter(bar.Label1(1), bar.Label1(0));
  bar.Label1(1).Caption = Text("location: ", newest.SubItems(1));
  PutAfter(bar.Label1(2), bar.Label1(1));
  bar.Label1(2).Caption = Text("at: ", newest.SubItems(2));
}

void UpdateLongBar() {
  try {
    LongBarForm &bar = *newTagFrm;
    const StrongestEvent stored = StoredStrongest();
    const ListRows &rows = frmRecords->ListView1.ListItems;
    if (rows.Count() == 0)
      return;

    const StrongestRow strongest = FindStrongest(rows);
    // Meant (long-bar-needs-a-stored-number): a stored magnitude that is missing or ends in a mark should let the
    // list win. It is no number, and the bar keeps what it shows.
    if (StrictSingle(stored.magnitude) > strongest.magnitude)
      ShowStored(bar, stored);
    else
      ShowListed(bar, rows, strongest);
    ShowNewest(bar);
    PaintBar();
  } catch (const RuntimeError &) {
    // The labels that have been written keep their new text, the others their old one.
  }
}

}  // namespace borvane
