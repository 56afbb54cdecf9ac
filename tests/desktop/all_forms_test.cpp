#include <QAccessible>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QStyleOptionButton>
#include <QWindow>
#include <QtTest/QTest>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include "alert/frmQalert.h"
#include "bars/Form1.h"
#include "bars/bar_content.h"
#include "bars/newTagFrm.h"
#include "bars/paint_bar.h"
#include "desktop/windows_1252.h"
#include "info/Aboutfrm.h"
#include "info/banner.h"
#include "info/nobotherfrm.h"
#include "records/frmRecords.h"
#include "reports/ComPart.h"
#include "settings/conffrm.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

struct Named {
  const char *name;
  FormBase &(*form)();
};

void PrintTo(const Named &named, std::ostream *stream) { *stream << named.name; }

/// What holds for every window of the program.
class EveryForm : public testing::TestWithParam<Named> {
 protected:
  EveryForm() : form(GetParam().form()) {
    form.Show();
    Settle();
  }

  /// Calls `visit` for each control that has a widget, with its depth in frames.
  void Walk(const std::function<void(Control &, QWidget &, int)> &visit) { Walk(form, 0, visit); }

  FormWindow &window() { return rig.window(form); }

  QRect place(const QWidget &widget) { return {widget.mapTo(&window(), QPoint()), widget.size()}; }

  /// Whether the window is large enough to show any of it.
  bool IsInSight(const QWidget &widget) { return window().rect().intersects(place(widget)); }

  /// Which widgets the Tab key comes by, in its order.
  std::vector<QWidget *> TabOrder() {
    std::vector<QWidget *> order;
    for (QWidget *next = window().nextInFocusChain(); next != &window(); next = next->nextInFocusChain()) {
      if (next->isVisible() && next->isEnabled() && (next->focusPolicy() & Qt::TabFocus) != 0 &&
          next->focusProxy() == nullptr)
        order.push_back(next);
    }
    return order;
  }

  /// Whether `widget` is drawn after `other`, which is beside it.
  static bool IsInFront(QWidget &widget, QWidget &other) {
    const QObjectList &order = widget.parentWidget()->children();
    return order.indexOf(&widget) > order.indexOf(&other);
  }

  /// The texts that show under the pointer, over the widget and over what it consists of.
  static std::string HoverTexts(const Control &control, const QWidget &widget) {
    std::string texts;
    const auto add = [&](const QWidget &part) {
      if (!part.toolTip().isEmpty())
        texts += " hover \"" + part.toolTip().toStdString() + "\"";
    };
    add(widget);
    if (dynamic_cast<const Container *>(&control) == nullptr) {
      for (const QWidget *part : widget.findChildren<QWidget *>())
        add(*part);
    }
    return texts;
  }

  /// The window's layout, a control a line, and the order of the Tab key.
  std::string Layout() {
    std::ostringstream text;
    text << form.name() << " \"" << window().windowTitle().toStdString() << "\" " << window().width() << " x "
         << window().height() << "\n";
    Walk([&](Control &control, QWidget &widget, int depth) {
      const QRect there = place(widget);
      const std::string name = SpokenName(widget);
      text << std::string(static_cast<std::size_t>(depth + 1) * 2, ' ') << control.FullName() << " " << there.x() << ","
           << there.y() << " " << there.width() << " x " << there.height() << (name.empty() ? "" : " \"" + name + "\"")
           << (widget.isVisible() ? "" : " hidden") << (widget.isEnabled() ? "" : " disabled")
           << HoverTexts(control, widget) << "\n";
    });
    text << "tab order:";
    for (const QWidget *widget : TabOrder())
      text << " " << widget->objectName().toStdString();
    text << "\n";
    return text.str();
  }

  ScreenRig rig;
  FormBase &form;

 private:
  void Walk(const Container &container, int depth, const std::function<void(Control &, QWidget &, int)> &visit) {
    for (Control *control : container.children()) {
      auto *widget = window().findChild<QWidget *>(ShownText(control->FullName()));
      if (widget == nullptr)
        continue;
      visit(*control, *widget, depth);
      if (const auto *inner = dynamic_cast<const Container *>(control))
        Walk(*inner, depth + 1, visit);
    }
  }
};

TEST_P(EveryForm, HasUniqueNames) {
  std::set<std::string> names;
  Walk([&](Control &control, QWidget & /*widget*/, int /*depth*/) {
    EXPECT_TRUE(names.insert(control.FullName()).second) << control.FullName();
  });
}

TEST_P(EveryForm, HasTheIconOfTheRecordsWindow) {
  const auto icon = [](const FormWindow &shown) { return shown.windowHandle()->icon().pixmap(32, 32).toImage(); };
  frmRecords->Show();
  Settle();
  const QImage expected = icon(rig.window(*frmRecords));
  const QColor ground(0x1f, 0x3a, 0x4d);
  EXPECT_GT(PixelsOf(expected, ground), 200);
  EXPECT_EQ(icon(window()), expected);
}

/// What is outside of its window, and why.
const std::map<std::string, const char *> outside = {
    {"Form1.Label4", "below the edge of the bar, as designed"},
    {"Form1.Label2", "below the edge of the bar, as designed"},
    {"ComPart_thanks.Frame1", "below the edge of the window once a report is sent, as designed"},
    {"ComPart_list.ListView1", "to the right of the window until its user makes it wider, as designed"},
};

TEST_P(EveryForm, KeepsItsControlsInsideTheirPlace) {
  Walk([&](Control &control, QWidget &widget, int /*depth*/) {
    if (outside.contains(std::string(GetParam().name) + "." + control.FullName())) {
      EXPECT_FALSE(window().rect().intersects(place(widget))) << control.FullName();
    } else if (widget.isVisible()) {
      EXPECT_TRUE(widget.parentWidget()->rect().contains(widget.geometry())) << control.FullName();
    }
  });
}

TEST_P(EveryForm, CutsNoTextOff) {
  Walk([&](Control &control, QWidget &widget, int /*depth*/) {
    const bool has_text =
        qobject_cast<QLabel *>(&widget) != nullptr || qobject_cast<QAbstractButton *>(&widget) != nullptr;
    if (widget.isVisible() && has_text && dynamic_cast<PictureBox *>(&control) == nullptr) {
      EXPECT_GE(widget.width(), widget.sizeHint().width() - 1) << control.FullName();
      // Of a box without a text there is only its mark.
      const auto *button = qobject_cast<QAbstractButton *>(&widget);
      if (button == nullptr || !button->text().isEmpty()) {
        EXPECT_GE(widget.height(), widget.fontMetrics().height() - 1) << control.FullName();
      }
    }
  });
}

/// The mark of a check box is drawn whole.
TEST_P(EveryForm, CutsNoMarkOff) {
  Walk([&](Control &control, QWidget &widget, int /*depth*/) {
    if (const auto *box = qobject_cast<QCheckBox *>(&widget)) {
      QStyleOptionButton option;
      option.initFrom(box);
      const QRect mark = box->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, box);
      EXPECT_TRUE(box->rect().contains(mark)) << control.FullName();
    }
  });
}

/// What may overlap, the lower one first, and why. A name represents all controls that begin with it.
struct Overlap {
  const char *form;
  const char *lower;
  const char *upper;
  const char *why;
};
constexpr std::array overlaps = {
    Overlap{"newTagFrm", "Label1(", "Label2(", "the groups are laid out from both ends of the bar"},
    Overlap{"newTagFrm", "Picture1", "Check1",
            "the box with the texts is as long as the bar, the handle in front of it"},
};

TEST_P(EveryForm, LetsNothingOverlapButWhatMay) {
  std::vector<QWidget *> widgets;
  Walk([&](Control & /*control*/, QWidget &widget, int /*depth*/) {
    const bool is_empty_label = qobject_cast<QLabel *>(&widget) != nullptr && SpokenName(widget).empty();
    if (widget.isVisible() && !is_empty_label)
      widgets.push_back(&widget);
  });
  std::set<std::string> found;
  for (QWidget *lower : widgets) {
    for (QWidget *upper : widgets) {
      const bool are_beside = lower->parentWidget() == upper->parentWidget();
      if (!are_beside || IsInFront(*lower, *upper) || lower == upper || !place(*lower).intersects(place(*upper)))
        continue;
      const std::string names = lower->objectName().toStdString() + " " + upper->objectName().toStdString();
      const auto *row = std::find_if(overlaps.begin(), overlaps.end(), [&](const Overlap &overlap) {
        return GetParam().name == std::string_view(overlap.form) &&
               lower->objectName().startsWith(QLatin1String(overlap.lower)) &&
               upper->objectName().startsWith(QLatin1String(overlap.upper));
      });
      EXPECT_NE(row, overlaps.end()) << names;
      if (row != overlaps.end())
        found.insert(row->lower);
    }
  }
  const auto rows = std::count_if(overlaps.begin(), overlaps.end(), [&](const Overlap &overlap) {
    return GetParam().name == std::string_view(overlap.form);
  });
  EXPECT_EQ(found.size(), static_cast<std::size_t>(rows)) << "each row of the table is needed";
}

TEST_P(EveryForm, LetsNoTwoTextsOverlap) {
  std::vector<QWidget *> texts;
  Walk([&](Control & /*control*/, QWidget &widget, int /*depth*/) {
    if (widget.isVisible() && !SpokenName(widget).empty() && widget.findChildren<QWidget *>().empty())
      texts.push_back(&widget);
  });
  for (std::size_t i = 0; i < texts.size(); ++i) {
    for (std::size_t j = i + 1; j < texts.size(); ++j) {
      // Those beside each other have their table.
      const bool are_beside = texts[i]->parentWidget() == texts[j]->parentWidget();
      EXPECT_FALSE(!are_beside && place(*texts[i]).intersects(place(*texts[j])))
          << texts[i]->objectName().toStdString() << " " << texts[j]->objectName().toStdString();
    }
  }
}

TEST_P(EveryForm, NamesWhatAUserCanReach) {
  for (QWidget *widget : TabOrder())
    EXPECT_FALSE(SpokenName(*widget).empty() && widget->accessibleName().isEmpty())
        << widget->objectName().toStdString();
}

/// What can be clicked and is not in the order of the Tab key, and why.
const std::map<std::string, const char *> by_mouse_alone = {
    {"banner.Picture1", "the text in it does the same"},
};

TEST_P(EveryForm, CanBeReachedByTheTabKey) {
  const std::vector<QWidget *> order = TabOrder();
  Walk([&](Control &control, QWidget &widget, int /*depth*/) {
    const bool is_used = control.Click.IsWired() || control.LostFocus.IsWired();
    if (by_mouse_alone.contains(std::string(form.name()) + "." + control.FullName())) {
      EXPECT_TRUE(is_used) << control.FullName();
      EXPECT_EQ(widget.focusPolicy(), Qt::NoFocus) << control.FullName();
    } else if (is_used && widget.isVisible() && widget.isEnabled() && IsInSight(widget)) {
      EXPECT_NE(std::find(order.begin(), order.end(), &widget), order.end()) << control.FullName();
    }
  });
}

/// A kind of control: what a screen reader calls it, and why the Tab key does not come by it. Where it does, there is
/// no reason.
struct Kind {
  bool (*is_of_kind)(const Control &);
  QAccessible::Role role;
  const char *why_no_stop;
};

template <class T>
bool Is(const Control &control) {
  return dynamic_cast<const T *>(&control) != nullptr;
}

template <class T>
bool IsClicked(const Control &control) {
  return Is<T>(control) && control.Click.IsWired();
}

bool HoldsControls(const Control &control) {
  const auto *container = dynamic_cast<const Container *>(&control);
  return container != nullptr && !container->children().empty();
}

const std::array kinds = {
    Kind{IsClicked<Label>, QAccessible::Button, nullptr},
    Kind{Is<Label>, QAccessible::StaticText, "it is a text"},
    Kind{Is<TextBox>, QAccessible::EditableText, nullptr},
    Kind{Is<CheckBox>, QAccessible::CheckBox, nullptr},
    Kind{Is<OptionButton>, QAccessible::RadioButton, nullptr},
    Kind{Is<CommandButton>, QAccessible::Button, nullptr},
    Kind{Is<ComboBox>, QAccessible::ComboBox, nullptr},
    Kind{HoldsControls, QAccessible::Grouping, "it holds what is read or reached"},
    Kind{Is<PictureBox>, QAccessible::Button, nullptr},
    Kind{Is<Image>, QAccessible::Graphic, "it is a picture"},
    Kind{Is<Toolbar>, QAccessible::ToolBar, "it holds the buttons that are reached"},
    Kind{Is<StatusBar>, QAccessible::StatusBar, "it shows texts"},
    Kind{Is<ListView>, QAccessible::Tree, nullptr},
};

/// What has no name for a screen reader, and why. A name represents all controls that begin with it.
const std::map<std::string, const char *> unnamed = {
    {"frmRecords.Label2(0)", "the area's name comes with its first page"},
    {"frmRecords.Label2(1)", "its latitude, likewise"},
    {"frmRecords.Label2(2)", "its longitude, likewise"},
    {"frmRecords.Label9", "the count of users comes with the first answer"},
    {"frmRecords.Frame4", "an outline without a caption; what is in it has names"},
    {"frmRecords.Toolbar1", "its buttons have names"},
    {"frmRecords.StatusBar1", "its panels have texts"},
    {"conffrm.Label1(14)", "a colour's code shows while the pointer is on its box"},
    {"frmQalert.Label2", "the place comes with the alert"},
    {"Form1.Picture1", "its labels have texts"},
    {"newTagFrm.Picture1", "its labels have texts"},
    {"banner.Picture1", "its label has a text"},
};

TEST_P(EveryForm, GivesEachControlARoleANameAndATabStopOrAReason) {
  const std::vector<QWidget *> order = TabOrder();
  Walk([&](Control &control, QWidget &widget, int /*depth*/) {
    const auto *kind =
        std::find_if(kinds.begin(), kinds.end(), [&](const Kind &other) { return other.is_of_kind(control); });
    ASSERT_NE(kind, kinds.end()) << control.FullName();
    const QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(&widget);
    ASSERT_NE(spoken, nullptr) << control.FullName();
    EXPECT_EQ(spoken->role(), kind->role) << control.FullName();

    const std::string name = std::string(GetParam().name) + "." + control.FullName();
    const bool may_be_unnamed =
        std::any_of(unnamed.begin(), unnamed.end(), [&](const auto &row) { return name.starts_with(row.first); });
    EXPECT_EQ(SpokenName(widget).empty() && widget.accessibleName().isEmpty(), may_be_unnamed) << name;

    const bool is_stop = std::find(order.begin(), order.end(), &widget) != order.end();
    if (widget.isVisible() && widget.isEnabled() && IsInSight(widget)) {
      EXPECT_EQ(is_stop, kind->why_no_stop == nullptr) << name;
    }
  });
}

TEST_P(EveryForm, IsLaidOutAsItsFileSays) {
  const std::string layout = Layout();
  const std::string file = std::string(BORVANE_CASES) + "/forms/" + GetParam().name + ".txt";
  std::stringstream expected;
  expected << std::ifstream(file).rdbuf();
  if (std::getenv("BORVANE_UPDATE") != nullptr && layout != expected.str())
    std::ofstream(file + ".new") << layout;

  EXPECT_EQ(layout, expected.str());
}

template <class T>
FormBase &Get() {
  return current->Reference<T>();
}

/// The popup as an alert shows it.
FormBase &GetAlert() {
  frmQalert->Label1.Caption = "5.2";
  return *frmQalert;
}

/// The about window once the users online have been counted.
FormBase &GetAbout() {
  frmRecords->Label9.Caption = "Users Online: 17";
  return *Aboutfrm;
}

/// The short bar as its first update shows it.
FormBase &GetShortBar() {
  UpdateShortBar();
  return *Form1;
}

/// The long bar with texts as an update writes them.
FormBase &GetLongBar() {
  LongBarForm &bar = *newTagFrm;
  bar.Label1(0).Caption = "Last: 2.0";
  bar.Label1(1).Caption = "location: 4 km ( 2 mi) W of Castaic, CA";
  bar.Label1(2).Caption = "time: 2018/02/07  01:26:13, Wed 07";
  bar.Label2(0).Caption = "Strong: 5.2";
  bar.Label2(1).Caption = "location: 10 km ( 6 mi) SSW of Sylmar, CA";
  bar.Label2(2).Caption = "time : 2018/02/06  12:00:00";
  PaintBar();
  return bar;
}

/// The felt report as the list's menu opens it.
FormBase &GetReport() {
  ComPart->Label2(1).Caption = "3.1-2024:02:29-23:59:59-34.000N-117.000W";
  return *ComPart;
}

/// The same after a report has been sent.
FormBase &GetThanks() {
  GetReport();
  ComPart->Frame1.Top = 6825;
  ComPart->Frame2.Visible = true;
  ComPart->Label2(2).Visible = true;
  return *ComPart;
}

/// The list of what others have reported.
FormBase &GetReportList() {
  GetReport();
  ComPart->Frame1.Visible = false;
  ComPart->ListView1.Visible = true;
  return *ComPart;
}

INSTANTIATE_TEST_SUITE_P(All, EveryForm,
                         testing::Values(Named{"frmRecords", Get<RecordsForm>}, Named{"conffrm", Get<SettingsForm>},
                                         Named{"frmQalert", GetAlert}, Named{"Form1", GetShortBar},
                                         Named{"newTagFrm", GetLongBar}, Named{"banner", Get<BannerForm>},
                                         Named{"Aboutfrm", GetAbout}, Named{"nobotherfrm", Get<UserNoteForm>},
                                         Named{"ComPart", GetReport}, Named{"ComPart_thanks", GetThanks},
                                         Named{"ComPart_list", GetReportList}),
                         [](const testing::TestParamInfo<Named> &named) { return std::string(named.param.name); });

/// Expects the Tab key to come by the window's widgets in the order in which the eye meets them, from the top down and
/// from the left in a row. Returns how many there are.
int ExpectTabToFollowTheEye(const FormWindow &window) {
  constexpr int same_row = 8;
  QPoint last;
  int count = 0;
  for (QWidget *next = window.nextInFocusChain(); next != &window; next = next->nextInFocusChain()) {
    if (!next->isVisible() || (next->focusPolicy() & Qt::TabFocus) == 0 || next->focusProxy() != nullptr)
      continue;
    const QPoint middle = next->mapTo(&window, next->rect().center());
    const bool follows =
        middle.y() > last.y() + same_row || (std::abs(middle.y() - last.y()) <= same_row && middle.x() > last.x());
    EXPECT_TRUE(follows) << next->objectName().toStdString();
    last = middle;
    ++count;
  }
  return count;
}

TEST(SettingsTabOrder, FollowsTheEye) {
  ScreenRig rig;
  conffrm->Check1.Value = 1;
  conffrm->Check4.Value = 1;
  for (int i : {0, 1})
    conffrm->Option2(i).Enabled = true;
  conffrm->Show();
  Settle();

  EXPECT_GT(ExpectTabToFollowTheEye(rig.window(*conffrm)), 25);
}

TEST(ReportTabOrder, FollowsTheEye) {
  ScreenRig rig;
  ComPart->Check1.Value = 1;
  ComPart->Command1(ReportForm::button_submit).Enabled = true;
  ComPart->Show();
  Settle();

  EXPECT_EQ(ExpectTabToFollowTheEye(rig.window(*ComPart)), 18);
}

TEST(ReportTabOrder, FollowsTheEyeInTheThanks) {
  ScreenRig rig;
  ComPart->Frame1.Visible = false;
  ComPart->Frame2.Visible = true;
  ComPart->Show();
  Settle();

  EXPECT_EQ(ExpectTabToFollowTheEye(rig.window(*ComPart)), 5);
}

}  // namespace
}  // namespace borvane
