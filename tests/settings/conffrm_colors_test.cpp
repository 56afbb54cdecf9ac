#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "bars/Form1.h"
#include "bars/bar_content.h"
#include "bars/colors.h"
#include "bars/newTagFrm.h"
#include "bars/paint_bar.h"
#include "core/program.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

TEST(ColorBox, GoesOnToTheNextColorAtEachClick) {
  WatchingRig rig;
  for (int click = 1; click <= 15; ++click) {
    rig.clear_trace();
    rig.click(conffrm->Picture1(1));
    EXPECT_EQ(conffrm->Picture1(1).BackColor(), ColorFromCode(click)) << click;
    EXPECT_EQ(conffrm->Label1(14).Caption(), std::to_string(click));
    EXPECT_EQ(rig.trace(), Lines{"write Color1= " + std::to_string(click)});
  }
}

TEST(ColorBox, IsBlackTwiceAfterTheLastColor) {
  RecordProperty("quirk", "code-sixteen-is-black");
  WatchingRig rig;
  for (int click = 1; click <= 18; ++click) {
    rig.click(conffrm->Picture1(0));
    if (click == 16 || click == 17) {
      EXPECT_EQ(conffrm->Picture1(0).BackColor(), 0u) << click;
    }
  }
  const Lines writes = rig.trace({"write"});
  ASSERT_EQ(writes.size(), 18u);
  EXPECT_EQ(Lines(writes.begin() + 14, writes.end()),
            (Lines{"write Color0= 15", "write Color0= 16", "write Color0= 0", "write Color0= 1"}));
}

TEST(ColorBox, StartsAtCodeOneInEveryRun) {
  RecordProperty("quirk", "color-codes-start-at-zero");
  Rig rig;
  rig.store()["Color1"] = " 12";
  rig.start();
  EXPECT_EQ(conffrm->Picture1(1).BackColor(), 0xFFA43Cu);
  rig.move_mouse_over(conffrm->Picture1(1));
  EXPECT_EQ(conffrm->Label1(14).Caption(), "0");
  rig.click(conffrm->Picture1(1));
  EXPECT_EQ(conffrm->Picture1(1).BackColor(), 0xFF0000u);
  EXPECT_EQ(conffrm->Label1(14).Caption(), "1");
}

TEST(ColorBox, HasACodeOfItsOwn) {
  WatchingRig rig;
  rig.click(conffrm->Picture1(0));
  rig.click(conffrm->Picture1(2));
  rig.click(conffrm->Picture1(2));
  EXPECT_EQ(rig.trace({"write"}), (Lines{"write Color0= 1", "write Color2= 1", "write Color2= 2"}));
  for (const auto &[box, code] : {std::pair(0, "1"), std::pair(1, "0"), std::pair(2, "2")}) {
    rig.move_mouse_over(conffrm->Picture1(box));
    EXPECT_EQ(conffrm->Label1(14).Caption(), code) << box;
  }
}

TEST(ColorBox, ShowsItsCodeInWholeNumbersBeyondTheTable) {
  WatchingRig rig;
  Module1->ColorCodes[0] = 300;
  rig.click(conffrm->Picture1(0));
  EXPECT_EQ(rig.trace(), Lines{"write Color0= 0"});
}

/// What an event does with that face up and that value of "Colorize Bar tags".
Lines WithFace(std::uint8_t face, int colorize, const std::function<void(Rig &)> &event) {
  WatchingRig rig;
  conffrm->Check3.Value = colorize;
  Module1->BarMode = face;
  rig.clear_trace();
  event(rig);
  return rig.trace({"load", "set", "write"});
}

TEST(ColorBox, RepaintsTheBarThatIsUpWhileTagsAreColored) {
  const auto click = [](Rig &rig) {
    rig.watch(conffrm->Picture1(0), conffrm->Picture1(0).BackColor, "BackColor");
    rig.watch(conffrm->Label1(14), conffrm->Label1(14).Caption, "Label1(14)");
    rig.click(conffrm->Picture1(0));
  };
  const auto steps_and = [](const Lines &repaint) {
    Lines lines = {"set BackColor=16711680", "set Label1(14)=1", "write Color0= 1"};
    lines.insert(lines.end(), repaint.begin(), repaint.end());
    return lines;
  };
  EXPECT_EQ(WithFace(face_short_bar, 1, click).at(3), "load Form1");
  EXPECT_EQ(WithFace(face_long_bar, 1, click).at(3), "load newTagFrm");
  EXPECT_EQ(WithFace(face_records, 1, click), steps_and({}));
  for (const int off : {0, 2}) {
    EXPECT_EQ(WithFace(face_short_bar, off, click), steps_and({})) << off;
    EXPECT_EQ(WithFace(face_long_bar, off, click), steps_and({})) << off;
  }
}

/// The colours of the first labels of both bars, the short one first, which are loaded.
std::vector<Color> BarColors() { return {Form1->Label1(0).ForeColor(), newTagFrm->Label1(0).ForeColor()}; }

TEST(ColorBox, ShowsItsColorOnTheBarThatIsUpAtOnce) {
  constexpr Color plain = 0x80000013;
  constexpr Color blue = 0xFF0000;
  for (const std::uint8_t face : {face_short_bar, face_long_bar}) {
    WatchingRig rig;
    rig.happen(UpdateShortBar);
    rig.happen(PaintBar);
    Module1->BarMode = face;
    conffrm->Check3.Value = 1;
    EXPECT_EQ(BarColors(), (std::vector<Color>{plain, plain}));
    rig.click(conffrm->Picture1(0));
    EXPECT_EQ(BarColors(),
              (face == face_short_bar ? std::vector<Color>{blue, plain} : std::vector<Color>{plain, blue}));
  }
}

TEST(ColorizeBox, ShowsItsStateOnTheBarThatIsUpAtOnce) {
  constexpr Color plain = 0x80000013;
  constexpr Color black = 0;
  for (const std::uint8_t face : {face_short_bar, face_long_bar}) {
    WatchingRig rig;
    rig.happen(UpdateShortBar);
    rig.happen(PaintBar);
    Module1->BarMode = face;
    conffrm->Check3.Value = 1;
    rig.release_mouse_on(conffrm->Check3);
    EXPECT_EQ(BarColors(),
              (face == face_short_bar ? std::vector<Color>{black, plain} : std::vector<Color>{plain, black}));
    conffrm->Check3.Value = 0;
    rig.release_mouse_on(conffrm->Check3);
    EXPECT_EQ(BarColors(), (std::vector<Color>{plain, plain}));
  }
}

TEST(ColorizeBox, IsStoredAndRepaintsTheBarThatIsUpWhenTheMouseIsReleased) {
  const auto release = [](Rig &rig) { rig.release_mouse_on(conffrm->Check3); };
  EXPECT_EQ(WithFace(face_records, 1, release), Lines{"write Colorize= 1"});
  EXPECT_EQ(WithFace(face_short_bar, 1, release), (Lines{"write Colorize= 1", "load Form1"}));
  EXPECT_EQ(WithFace(face_long_bar, 1, release), (Lines{"write Colorize= 1", "load newTagFrm"}));
  EXPECT_EQ(WithFace(face_short_bar, 0, release), (Lines{"write Colorize= 0", "load Form1"}));
  EXPECT_EQ(WithFace(face_long_bar, 0, release), (Lines{"write Colorize= 0", "load newTagFrm"}));
}

TEST(ColorizeBox, StoresNothingWhenTheKeyboardTicksIt) {
  RecordProperty("quirk", "two-boxes-act-on-the-mouse-alone");
  for (const std::uint8_t face : {face_records, face_short_bar, face_long_bar})
    EXPECT_TRUE(WithFace(face, 0, [](Rig &rig) { rig.tick_off(conffrm->Check3, 1); }).empty());
  EXPECT_TRUE(WithFace(face_records, 0, [](Rig &rig) { rig.tick_off(conffrm->Check2, 1); }).empty());
}

}  // namespace
}  // namespace borvane
