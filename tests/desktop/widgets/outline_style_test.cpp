#include "desktop/widgets/outline_style.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QMenu>
#include <QRadioButton>
#include <QScrollBar>
#include <QStyleOption>
#include <QToolButton>
#include <QTreeView>
#include <algorithm>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "desktop/appearance.h"
#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

/// The colours of a dark desktop of KDE.
QPalette BreezeDark() {
  QPalette palette(QColor(49, 54, 59), QColor(42, 46, 50));
  palette.setColor(QPalette::Base, QColor(27, 30, 32));
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(role, QColor(252, 252, 252));
  palette.setColor(QPalette::Highlight, QColor(61, 174, 233));
  return palette;
}

struct Desk {
  const char *name;
  QPalette (*palette)();
};

void PrintTo(const Desk &desk, std::ostream *stream) { *stream << desk.name; }

class Outlines : public testing::TestWithParam<Desk> {
 protected:
  Outlines() {
    QApplication::setPalette(GetParam().palette());
    for (int row = 0; row < 100; ++row)
      sample->ListView1.ListItems.Add({"1.6"});
    sample->Toolbar1.Buttons(1).Value = 1;
    sample->Show();
    // The outline of what has the keyboard is the highlight's.
    rig.widget(*sample, "Link1").setFocus();
    Settle();
  }
  ~Outlines() override { QApplication::setPalette({}); }
  Outlines(const Outlines &) = delete;
  Outlines &operator=(const Outlines &) = delete;

  FormWindow &window() const { return rig.window(*sample); }

  /// The whole of a widget, or the part of it that `place` gives, in the window's pixels.
  QRect PlaceOf(const QWidget &widget, const QRect &place) const {
    return {widget.mapTo(&window(), place.topLeft()), place.size()};
  }
  QRect PlaceOf(const char *name) const {
    const QWidget &widget = rig.widget(*sample, name);
    return PlaceOf(widget, widget.rect());
  }

  /// Where the mark of a check box or an option button is.
  QRect MarkOf(const char *name, QStyle::SubElement mark) const {
    const QWidget &button = rig.widget(*sample, name);
    QStyleOptionButton option;
    option.initFrom(&button);
    return PlaceOf(button, button.style()->subElementRect(mark, &option, &button));
  }

  QRect SliderOfList() const {
    const auto &bar = *rig.widget<QTreeView>(*sample, "ListView1").verticalScrollBar();
    QStyleOptionSlider option;
    option.initFrom(&bar);
    option.orientation = Qt::Vertical;
    option.maximum = bar.maximum();
    option.pageStep = bar.pageStep();
    return PlaceOf(bar, bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, &bar));
  }

  /// Each control with an edge, by its name.
  std::map<std::string, QRect> Places() const {
    std::map<std::string, QRect> places;
    for (const char *name : {"Text1", "Text2", "Combo1", "Combo2", "Command1", "Picture1", "ListView1", "refresh"})
      places[name] = PlaceOf(name);
    places["Check1"] = MarkOf("Check1", QStyle::SE_CheckBoxIndicator);
    places["Option1(1)"] = MarkOf("Option1(1)", QStyle::SE_RadioButtonIndicator);
    places["slider"] = SliderOfList();
    const QWidget &bar = rig.widget(*sample, "StatusBar1");
    places["panel"] = PlaceOf(bar, bar.findChild<QLabel *>()->geometry());
    // The caption of a frame is in the middle of its upper edge.
    const QRect frame = PlaceOf("Frame1");
    places["Frame1"] = frame.adjusted(0, window().fontMetrics().height() / 2, 0, 0);
    return places;
  }

  /// How well the edge of a place stands out from the window, on its weakest side: the best of the outermost pixels in
  /// the middle of each.
  double WeakestEdge(const QImage &picture, const QRect &place) const {
    constexpr int depth = 2;
    const QColor ground = window().palette().color(QPalette::Window);
    const auto edge = [&](QPoint from, QPoint inwards) {
      double best = 0;
      for (int step = 0; step < depth; ++step)
        best = std::max(best, Contrast(picture.pixelColor(from + step * inwards), ground));
      return best;
    };
    const QPoint middle = place.center();
    return std::min({edge({place.left(), middle.y()}, {1, 0}), edge({place.right(), middle.y()}, {-1, 0}),
                     edge({middle.x(), place.top()}, {0, 1}), edge({middle.x(), place.bottom()}, {0, -1})});
  }

  void ExpectEdges(const char *state) const {
    const QImage picture = Picture(window());
    for (const auto &[name, place] : Places())
      EXPECT_GE(WeakestEdge(picture, place), 2) << state << " " << name;
  }

  ScreenRig rig;
};

TEST_P(Outlines, StandOutFromTheWindow) {
  ExpectEdges("enabled");
  for (Control *control : std::initializer_list<Control *>{
           &sample->Check1, &sample->Text1, &sample->Text2, &sample->Combo1, &sample->Combo2, &sample->Command1,
           &sample->Option1(0), &sample->Option1(1), &sample->Option1(2)})
    control->Enabled = false;
  ExpectEdges("disabled");
}

TEST_P(Outlines, AreWholeOnABoxThatIsTooSmallForItsMark) {
  sample->Check1.Caption = "";
  sample->Check1.Width = 225;
  sample->Check1.Height = 195;
  const QRect mark = MarkOf("Check1", QStyle::SE_CheckBoxIndicator);
  EXPECT_TRUE(PlaceOf("Check1").contains(mark));
  EXPECT_EQ(mark.size(), QSize(13, 13));
  EXPECT_GE(WeakestEdge(Picture(window()), mark), 2);
}

TEST_P(Outlines, OfAMenuStandsOutFromAList) {
  QMenu menu;
  menu.addAction("Grid lines");
  const QImage picture = Picture(menu);
  const QColor list = window().palette().color(QPalette::Base);
  const QPoint middle = picture.rect().center();
  for (const QPoint &edge : {QPoint(0, middle.y()), QPoint(picture.width() - 1, middle.y()), QPoint(middle.x(), 0),
                             QPoint(middle.x(), picture.height() - 1)})
    EXPECT_GE(Contrast(picture.pixelColor(edge), list), 2);
}

TEST_P(Outlines, ShowWhereTheKeyboardIs) {
  QWidget &box = rig.widget(*sample, "Text1");
  const QColor line = Picture(window()).pixelColor(PlaceOf("Text1").left(), PlaceOf("Text1").center().y());
  box.setFocus();
  const QColor focused = Picture(window()).pixelColor(PlaceOf("Text1").left(), PlaceOf("Text1").center().y());

  EXPECT_NE(focused, line);
  EXPECT_EQ(focused, box.palette().color(QPalette::Highlight));
}

QPalette Own() { return {}; }

INSTANTIATE_TEST_SUITE_P(On, Outlines,
                         testing::Values(Desk{"LightDesktop", Own}, Desk{"DarkDesktop", BreezeDark},
                                         Desk{"DarkPreference", DarkPalette}),
                         [](const testing::TestParamInfo<Desk> &desk) { return std::string(desk.param.name); });

}  // namespace
}  // namespace borvane
