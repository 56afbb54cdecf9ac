#include "bars/paint_bar.h"

#include "bars/newTagFrm.h"
#include "settings/conffrm.h"

namespace borvane {

namespace {

constexpr float gap_at_check_box = 200;

void PaintLabels(LongBarForm &bar, bool colorize) {
  for (int i = 0; i < bar.Label1.Count(); ++i) {
    const Color color = colorize ? conffrm->Picture1(i).BackColor() : color_inactive_caption_text;
    bar.Label2(i).ForeColor = color;
    bar.Label1(i).ForeColor = color;
  }
  // The labels of the time keep their weight, as on the short bar.
  for (Label *label : {&bar.Label2(0), &bar.Label2(1), &bar.Label1(0), &bar.Label1(1)})
    label->Bold = colorize;
}

}  // namespace

void PutAfter(Label &label, const Label &left_neighbour) {
  label.Left = left_neighbour.Left() + left_neighbour.Width() + label_gap;
}

void PaintBar() {
  LongBarForm &bar = *newTagFrm;
  PaintLabels(bar, conffrm->Check3.Value() == 1);

  PutAfter(bar.Label1(1), bar.Label1(0));
  PutAfter(bar.Label1(2), bar.Label1(1));

  // Meant (long-bar-groups-may-overlap): texts that are too long for the bar should be cut off. The groups are laid out
  // from both ends, whatever is between them.
  bar.Label2(2).Left = bar.Check1.Left() - bar.Label2(2).Width() - gap_at_check_box;
  bar.Label2(1).Left = bar.Label2(2).Left() - bar.Label2(1).Width() - label_gap;
  bar.Label2(0).Left = bar.Label2(1).Left() - bar.Label2(0).Width() - label_gap;
}

}  // namespace borvane
