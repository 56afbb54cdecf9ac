#include <QFontMetrics>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QStyleOptionFocusRect>
#include <string_view>

#include "desktop/widgets/binders.h"
#include "desktop/widgets/colors.h"
#include "desktop/widgets/twips.h"
#include "desktop/windows_1252.h"

namespace borvane {

namespace {

/// A label shows no more of its text, which may come from a host and be of any length. That is more than a screen is
/// wide, and Qt lays out whatever it is given, seen or not.
constexpr std::size_t most_shown = 1'000;

/// A label that only shows its text. The text may come from a page, so it is never taken as markup.
class PlainLabel final : public QLabel {
 public:
  explicit PlainLabel(QWidget *parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
  }
};

/// A label that can be clicked. It is a button for the keyboard and the screen reader, and looks like a label.
class LinkLabel final : public QPushButton {
 public:
  explicit LinkLabel(QWidget *parent) : QPushButton(parent) {
    setCursor(Qt::PointingHandCursor);
    setAutoDefault(false);
    setFocusPolicy(Qt::TabFocus);
  }

  /// The text may come from a page: an "&" in it is no sign for a key.
  void setText(const QString &text) {
    caption_ = text;
    QPushButton::setText(QString(text).replace(QLatin1Char('&'), QLatin1String("&&")));
  }

  QSize sizeHint() const override { return fontMetrics().size(Qt::TextSingleLine, caption_); }

 protected:
  void paintEvent(QPaintEvent * /*event*/) override {
    QPainter painter(this);
    QFont underlined = font();
    underlined.setUnderline(underlined.underline() || (underMouse() && isEnabled()));
    painter.setFont(underlined);
    const QPalette::ColorGroup group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    painter.setPen(palette().color(group, QPalette::WindowText));
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine, caption_);
    if (hasFocus()) {
      QStyleOptionFocusRect option;
      option.initFrom(this);
      style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
  }

  void enterEvent(QEnterEvent * /*event*/) override { update(); }
  void leaveEvent(QEvent * /*event*/) override { update(); }

 private:
  QString caption_;
};

template <class Widget>
class LabelBinder final : public Binder {
 public:
  LabelBinder(Label &label, Widget &widget, const Surroundings &surroundings)
      : Binder(label, widget, surroundings), label_(label), label_widget_(widget) {
    ShowFont();
    ShowColor();
    ShowCaption();
  }

 protected:
  void Show(const PropertyBase &property) override {
    // The hidden heartbeat beats on: a text that nobody sees costs nothing until it comes into sight.
    if (&property == &label_.Visible || (&property == &label_.Caption && label_.Visible()))
      ShowCaption();
    else if (&property == &label_.Caption)
      return;
    else if (&property == &label_.ForeColor)
      ShowColor();
    else
      ShowFont();
  }

  /// A text that is wider than its label is not cut off.
  void Place() override {
    const QRect place = RectOf(label_.Left(), label_.Top(), label_.Width(), label_.Height());
    label_widget_.setGeometry(QRect(place.topLeft(), place.size().expandedTo(label_widget_.sizeHint())));
  }

 private:
  void PlaceByText() {
    if (placing() == Placing::ByTwips)
      Place();
  }

  void ShowCaption() {
    label_widget_.setText(ShownText(std::string_view(label_.Caption()).substr(0, most_shown)));
    PlaceByText();
  }

  void ShowColor() {
    if (label_.ForeColor() == color_button_text) {
      label_widget_.setPalette({});
      return;
    }
    QPalette palette = label_widget_.palette();
    palette.setColor(QPalette::Active, QPalette::WindowText, ScreenColor(label_.ForeColor(), palette));
    palette.setColor(QPalette::Inactive, QPalette::WindowText, ScreenColor(label_.ForeColor(), palette));
    label_widget_.setPalette(palette);
  }

  void ShowFont() {
    QFont font = label_widget_.parentWidget()->font();
    if (!label_.FontName().empty())
      font.setFamilies(QStringList(ShownText(label_.FontName())) + font.families());
    font.setBold(label_.Bold());
    font.setUnderline(label_.Underline());
    label_widget_.setFont(font);
    PlaceByText();
  }

  Label &label_;
  Widget &label_widget_;
};

}  // namespace

Binder *BindLabel(Label &label, const Surroundings &surroundings) {
  if (!label.Click.IsWired())
    return new LabelBinder<PlainLabel>(label, *new PlainLabel(&surroundings.parent), surroundings);

  auto *link = new LinkLabel(&surroundings.parent);
  auto *binder = new LabelBinder<LinkLabel>(label, *link, surroundings);
  QObject::connect(link, &QPushButton::clicked, binder,
                   [binder, &label] { binder->Enter([&] { label.Click.Raise(); }); });
  return binder;
}

}  // namespace borvane
