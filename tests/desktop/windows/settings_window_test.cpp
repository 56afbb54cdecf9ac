#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <algorithm>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "desktop/widgets/swatch.h"
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

/// A text without anything below its baseline in place of every text of the window.
void WriteCapitalsOn(FormWindow &window) {
  const QString capital = QStringLiteral("H");
  for (QLabel *label : window.findChildren<QLabel *>())
    label->setText(capital);
  for (QAbstractButton *button : window.findChildren<QAbstractButton *>()) {
    if (!button->text().isEmpty())
      button->setText(capital);
  }
  for (QLineEdit *edit : window.findChildren<QLineEdit *>())
    edit->setText(capital);
  for (QComboBox *box : window.findChildren<QComboBox *>()) {
    box->setItemText(0, capital);
    box->setCurrentIndex(0);
  }
}

/// Where a widget shows its text, without its frame and its mark.
QRect TextRect(const QWidget &widget) {
  const bool has_mark =
      qobject_cast<const QCheckBox *>(&widget) != nullptr || qobject_cast<const QRadioButton *>(&widget) != nullptr;
  if (has_mark)
    return widget.rect().adjusted(17, 0, 0, 0);
  if (qobject_cast<const QComboBox *>(&widget) != nullptr)
    return widget.rect().adjusted(4, 3, -24, -3);
  const bool has_frame =
      qobject_cast<const QLineEdit *>(&widget) != nullptr || qobject_cast<const QPushButton *>(&widget) != nullptr;
  return has_frame ? widget.rect().adjusted(4, 3, -4, -3) : widget.rect();
}

/// The lowest line of the picture with a dark point within `place`; -1 where there is none.
int Baseline(const QImage &picture, const QRect &place) {
  for (int y = place.bottom(); y >= place.top(); --y) {
    for (int x = place.left(); x <= place.right(); ++x) {
      if (qGray(picture.pixel(x, y)) < half)
        return y;
    }
  }
  return -1;
}

TEST_F(SettingsOnScreen, TextsOfARowAreOnOneLine) {
  conffrm->Option2(0).Value = true;
  conffrm->Check1.Value = 1;
  conffrm->Check4.Value = 1;
  conffrm->Label1(6).Enabled = true;
  WriteCapitalsOn(window());
  QApplication::focusWidget()->clearFocus();
  const QImage picture = Picture(window());

  const qreal scale = picture.devicePixelRatio();
  std::map<int, std::map<std::string, int>> rows;  // the baseline of each text, by the middle of its row
  for (const QWidget *widget : shown<QWidget>()) {
    const QRect text = TextRect(*widget).translated(widget->mapTo(&window(), QPoint()));
    const bool has_text =
        dynamic_cast<const QGroupBox *>(widget) == nullptr && dynamic_cast<const Swatch *>(widget) == nullptr;
    if (!has_text)
      continue;
    const int middle = text.center().y();
    const auto row =
        std::find_if(rows.begin(), rows.end(), [&](const auto &other) { return std::abs(other.first - middle) < 8; });
    std::map<std::string, int> &texts = row == rows.end() ? rows[middle] : row->second;
    const QRectF there(QRectF(text).topLeft() * scale, QSizeF(text.size()) * scale);
    texts[widget->objectName().toStdString()] = Baseline(picture, there.toRect());
  }
  EXPECT_EQ(rows.size(), 13u);
  std::size_t count = 0;
  for (const auto &[middle, texts] : rows) {
    const auto &[first, baseline] = *texts.begin();
    EXPECT_GT(baseline, 0) << first;
    for (const auto &[name, other] : texts)
      EXPECT_EQ(other, baseline) << name << " beside " << first;
    count += texts.size();
  }
  EXPECT_EQ(count, 47u);
}

TEST_F(SettingsOnScreen, NamesGroupsAndBoxesForAScreenReader) {
  const auto group_of = [this](const char *name) { return SpokenName(*rig.widget(*conffrm, name).parentWidget()); };
  for (const char *name : {"Option1(0)", "Option1(1)", "Option1(2)", "Text7"})
    EXPECT_EQ(group_of(name), "On edge detection") << name;
  for (const char *name : {"Option2(0)", "Option2(1)", "Text8"})
    EXPECT_EQ(group_of(name), "Log") << name;
  EXPECT_EQ(SpokenName(rig.widget(*conffrm, "Text7")), "On edge detection, Move");
}

}  // namespace
}  // namespace borvane
