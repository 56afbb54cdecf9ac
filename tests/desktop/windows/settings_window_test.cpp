#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>

#include <gtest/gtest.h>

#include "settings/conffrm.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

class SettingsOnScreen : public testing::Test {
 protected:
  SettingsOnScreen() {
    conffrm->Show();
    Settle();
  }

  FormWindow &window() const { return rig.window(*conffrm); }

  /// The visible widgets of that kind that belong to a control.
  template <class Widget>
  QList<Widget *> shown() const {
    QList<Widget *> widgets;
    for (Widget *widget : window().template findChildren<Widget *>()) {
      if (widget->isVisible() && !widget->objectName().isEmpty())
        widgets.append(widget);
    }
    return widgets;
  }

  ScreenRig rig;
};

TEST_F(SettingsOnScreen, HasItsClientArea) {
  EXPECT_EQ(window().size(), QSize(386, 402));
  EXPECT_EQ(window().minimumSize(), window().maximumSize());
}

TEST_F(SettingsOnScreen, HasRoomForEveryText) {
  ASSERT_GT(shown<QLabel>().size(), 15);
  for (const QLabel *label : shown<QLabel>()) {
    EXPECT_GE(label->width(), label->sizeHint().width()) << label->text().toStdString();
    EXPECT_GE(label->height(), label->sizeHint().height()) << label->text().toStdString();
  }
  ASSERT_GT(shown<QAbstractButton>().size(), 10);
  for (const QAbstractButton *button : shown<QAbstractButton>()) {
    const int least = button->text().isEmpty() ? 0 : button->minimumSizeHint().width();
    EXPECT_GE(button->width(), least) << button->text().toStdString();
    EXPECT_GE(button->height(), button->fontMetrics().height()) << button->text().toStdString();
  }
  ASSERT_GT(shown<QLineEdit>().size(), 8);
  for (const QLineEdit *edit : shown<QLineEdit>()) {
    EXPECT_GE(edit->height(), edit->fontMetrics().height() + 4) << edit->objectName().toStdString();
    EXPECT_GE(edit->width(), 40) << edit->objectName().toStdString();
  }
  ASSERT_EQ(shown<QComboBox>().size(), 2);
  for (const QComboBox *box : shown<QComboBox>())
    EXPECT_GE(box->height(), box->fontMetrics().height() + 4) << box->objectName().toStdString();
}

TEST_F(SettingsOnScreen, SqueezesNoRow) {
  EXPECT_LE(window().layout()->minimumSize().height(), window().height());
  ASSERT_GT(shown<QLineEdit>().size(), 8);
  ASSERT_EQ(shown<QComboBox>().size(), 2);
  for (const QLineEdit *edit : shown<QLineEdit>())
    EXPECT_EQ(edit->height(), shown<QComboBox>().front()->height()) << edit->objectName().toStdString();
}

TEST_F(SettingsOnScreen, EverythingIsInItsGroupAndNothingOverAnother) {
  const QList<QWidget *> widgets = shown<QWidget>();
  ASSERT_GT(widgets.size(), 40);
  for (const QWidget *widget : widgets) {
    const QRect place(widget->mapTo(&window(), QPoint()), widget->size());
    EXPECT_TRUE(widget->parentWidget()->rect().contains(widget->geometry())) << widget->objectName().toStdString();
    for (const QWidget *other : widgets) {
      if (other == widget || other->isAncestorOf(widget) || widget->isAncestorOf(other))
        continue;
      EXPECT_FALSE(place.intersects(QRect(other->mapTo(&window(), QPoint()), other->size())))
          << widget->objectName().toStdString() << " over " << other->objectName().toStdString();
    }
  }
}

TEST_F(SettingsOnScreen, LabelsAreAtTheHeightOfTheirBoxes) {
  const auto middle = [this](const char *name) {
    const QWidget &widget = rig.widget(*conffrm, name);
    return 2 * widget.mapTo(&window(), QPoint()).y() + widget.height();
  };
  const std::pair<const char *, const char *> pairs[] = {
      {"Label1(0)", "Combo2"},   {"Label1(1)", "Text2"},    {"Label1(3)", "Text1"},     {"Label1(5)", "Text3"},
      {"Label1(6)", "Text4"},    {"Label1(9)", "Text6(0)"}, {"Label1(10)", "Text6(1)"}, {"Label1(7)", "Text5(0)"},
      {"Label1(8)", "Text5(1)"}, {"Label1(15)", "Combo1"},  {"Label1(12)", "Text8"}};
  for (const auto &[label, box] : pairs)
    EXPECT_LE(std::abs(middle(label) - middle(box)), 2) << label << " beside " << box;
}

}  // namespace
}  // namespace borvane
