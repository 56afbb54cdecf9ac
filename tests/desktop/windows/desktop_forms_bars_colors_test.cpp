// What the two bars show on a screen: their texts, in which colours and weights, and how often they draw them.
#include <algorithm>
#include <array>

#include "bars/bar_content.h"
#include "bars/paint_bar.h"
#include "desktop/widgets/colors.h"
#include "records/frmRecords.h"
#include "support/desktop/bar_on_screen.h"

namespace borvane {
namespace {

constexpr std::array<const char *, 3> newest_texts = {"Label1(0)", "Label1(1)", "Label1(2)"};
constexpr std::array<const char *, 3> strongest_texts = {"Label2(0)", "Label2(1)", "Label2(2)"};

/// The three boxes for colours get ones that are easily distinguished.
constexpr std::array<Color, 3> own_colors = {Rgb(255, 255, 0), Rgb(60, 164, 255), Rgb(255, 0, 255)};

void ColorTags() {
  for (std::size_t i = 0; i < own_colors.size(); ++i)
    conffrm->Picture1(static_cast<int>(i)).BackColor = own_colors[i];
  conffrm->Check3.Value = 1;
}

/// Short texts, so that those of the long bar have room beside each other on a small screen.
void ShowShortTexts() {
  for (int i = 0; i < 3; ++i) {
    newTagFrm->Label1(i).Caption = "Mag 2.0";
    newTagFrm->Label2(i).Caption = "Mag 2.0";
  }
  PaintBar();
}

/// How many pixels of the picture are rather bright, in whichever colour.
int BrightPixels(const QImage &picture) {
  constexpr int bright = 100;
  int count = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const QColor pixel = picture.pixelColor(x, y);
      count += std::max({pixel.red(), pixel.green(), pixel.blue()}) > bright ? 1 : 0;
    }
  }
  return count;
}

/// Counts what is painted of a window.
class PaintsOf : public QObject {
 public:
  explicit PaintsOf(QWidget &window) {
    window.installEventFilter(this);
    for (QWidget *part : window.findChildren<QWidget *>())
      part->installEventFilter(this);
  }

  int count = 0;

 private:
  bool eventFilter(QObject * /*object*/, QEvent *event) override {
    count += event->type() == QEvent::Paint ? 1 : 0;
    return false;
  }
};

TEST_F(ShortBarOnScreen, HasReadableTextsOnBlackAndOnBlue) {
  UpdateShortBar();
  for (const bool is_open : {false, true}) {
    QWidget &box = widget(*Form1, "Picture1");
    if (is_open)
      Hover(box, {200, 2});
    const QColor ground = Picture(box).pixelColor(box.width() - 2, 2);
    EXPECT_EQ(ground, is_open ? QColor(0, 90, 245) : QColor(Qt::black));
    for (const char *name : {"Label1(0)", "Label1(1)", "Label1(2)"}) {
      const QColor text = widget(*Form1, name).palette().color(QPalette::WindowText);
      EXPECT_GE(Contrast(text, ground), 4.5) << name;
      EXPECT_GT(PixelsOf(Picture(widget(*Form1, name)), text, half), 5) << name;
    }
  }
}

TEST_F(ShortBarOnScreen, ShowsItsTextsInTheirOwnColorsAndWeights) {
  UpdateShortBar();
  std::array<int, 3> plain = {};
  for (std::size_t i = 0; i < plain.size(); ++i)
    plain.at(i) = BrightPixels(PartOf(*Form1, newest_texts.at(i)));
  ColorTags();
  UpdateShortBar();
  for (std::size_t i = 0; i < plain.size(); ++i) {
    const QImage text = PartOf(*Form1, newest_texts.at(i));
    EXPECT_GT(PixelsOf(text, ScreenColor(own_colors.at(i), {}), half), 5) << newest_texts.at(i);
    EXPECT_EQ(BrightPixels(text) * 5 > plain.at(i) * 6, i != 2) << newest_texts.at(i);
  }
  conffrm->Check3.Value = 0;
  UpdateShortBar();
  for (std::size_t i = 0; i < plain.size(); ++i)
    EXPECT_EQ(BrightPixels(PartOf(*Form1, newest_texts.at(i))), plain.at(i)) << newest_texts.at(i);
}

TEST_F(ShortBarOnScreen, PaintsNothingAtATickThatChangesNothing) {
  for (const int colorize : {0, 1}) {
    conffrm->Check3.Value = colorize;
    Form1->Timer1_Timer();
    Settle();
    const PaintsOf paints(rig.window(*Form1));
    for (int tick = 0; tick < 20; ++tick) {
      Form1->Timer1_Timer();
      Settle();
    }
    EXPECT_EQ(paints.count, 0) << colorize;
    frmRecords->ListView2.ListItems.SetText(1, colorize == 0 ? "5" : "6");
    Form1->Timer1_Timer();
    Settle();
    EXPECT_GT(paints.count, 0) << colorize;
  }
}

TEST_F(LongBarOnScreen, HasReadableTexts) {
  ShowShortTexts();
  for (const auto &texts : {newest_texts, strongest_texts}) {
    for (const char *name : texts) {
      const QColor text = widget(*newTagFrm, name).palette().color(QPalette::WindowText);
      EXPECT_GE(Contrast(text, Qt::black), 4.5) << name;
      EXPECT_GT(PixelsOf(PartOf(*newTagFrm, name), text, half), 5) << name;
      EXPECT_GT(PixelsOf(PartOf(*newTagFrm, name), Qt::black), 50) << name;
    }
  }
}

TEST_F(LongBarOnScreen, ShowsItsTextsInTheirOwnColorsAndWeights) {
  ShowShortTexts();
  for (const auto &texts : {newest_texts, strongest_texts}) {
    conffrm->Check3.Value = 0;
    PaintBar();
    std::array<int, 3> plain = {};
    for (std::size_t i = 0; i < plain.size(); ++i)
      plain.at(i) = BrightPixels(PartOf(*newTagFrm, texts.at(i)));
    ColorTags();
    PaintBar();
    for (std::size_t i = 0; i < plain.size(); ++i) {
      const QImage text = PartOf(*newTagFrm, texts.at(i));
      EXPECT_GT(PixelsOf(text, ScreenColor(own_colors.at(i), {}), half), 5) << texts.at(i);
      EXPECT_EQ(BrightPixels(text) * 5 > plain.at(i) * 6, i != 2) << texts.at(i);
    }
  }
}

TEST_F(LongBarOnScreen, PaintsNothingAtATickThatChangesNothing) {
  conffrm->Option1(2).Value = true;
  newTagFrm->IdleTicks = 590;
  Settle();
  const PaintsOf paints(rig.window(*newTagFrm));
  for (int tick = 0; tick < 20; ++tick) {
    newTagFrm->Timer1_Timer();
    Settle();
  }
  EXPECT_EQ(newTagFrm->IdleTicks, 10) << "one of the ticks has updated the bar";
  EXPECT_EQ(paints.count, 0);
}

TEST_F(LongBarOnScreen, HasAPurpleHandle) {
  QWidget &handle = widget(*newTagFrm, "Check1");
  EXPECT_EQ(Picture(handle).pixelColor(handle.width() - 1, 0), QColor(128, 0, 128));
  EXPECT_EQ(SpokenName(handle), "Menu");
}

}  // namespace
}  // namespace borvane
