#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QStyleOptionFocusRect>

#include "desktop/widgets/binders.h"
#include "desktop/widgets/colors.h"
#include "desktop/widgets/fonts.h"
#include "desktop/widgets/label_text.h"
#include "desktop/widgets/twips.h"

namespace borvane {

namespace {

Qt::Alignment AlignmentOf(const Label &label) {
  switch (label.alignment()) {
    case Alignment::Right:
      return Qt::AlignRight | Qt::AlignTop;
    case Alignment::Center:
      return Qt::AlignHCenter | Qt::AlignTop;
    default:
      return Qt::AlignLeft | Qt::AlignTop;
  }
}

/// `place` grown to the size that the text needs, away from the edge at which the text begins.
QRect Grown(const QRect &place, const QSize &needed, Alignment alignment) {
  const QSize size = place.size().expandedTo(needed);
  const int extra = size.width() - place.width();
  int shift = 0;
  if (alignment == Alignment::Right)
    shift = extra;
  else if (alignment == Alignment::Center)
    shift = extra / 2;
  return {place.topLeft() - QPoint(shift, 0), size};
}

/// A label that only shows its text. The text may come from a page, so it is never taken as markup.
class PlainLabel final : public QLabel {
 public:
  PlainLabel(const Label &label, QWidget *parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setAlignment(AlignmentOf(label));
    setWordWrap(label.word_wrap());
  }
};

/// A label that can be clicked. It is a button for the keyboard and the screen reader, and looks like a label.
class LinkLabel final : public QPushButton {
 public:
  LinkLabel(const Label &label, QWidget *parent)
      : QPushButton(parent),
        text_flags_(static_cast<int>(AlignmentOf(label)) |
                    static_cast<int>(label.word_wrap() ? Qt::TextWordWrap : Qt::TextSingleLine)) {
    // A window with a pointer of its own keeps it over its links.
    if (parent->cursor().shape() != Qt::BitmapCursor)
      setCursor(Qt::PointingHandCursor);
    setAutoDefault(false);
    setFocusPolicy(Qt::TabFocus);
  }

  /// The text may come from a page: an "&" in it is no sign for a key.
  void setText(const QString &text) {
    caption_ = text;
    QPushButton::setText(QString(text).replace(QLatin1Char('&'), QLatin1String("&&")));
  }

  QSize sizeHint() const override { return TextSize(caption_, font()); }

 protected:
  void paintEvent(QPaintEvent * /*event*/) override {
    QPainter painter(this);
    QFont underlined = font();
    underlined.setUnderline(underlined.underline() || (underMouse() && isEnabled()));
    painter.setFont(underlined);
    const QPalette::ColorGroup group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    painter.setPen(palette().color(group, QPalette::WindowText));
    painter.drawText(rect(), text_flags_, caption_);
    if (hasFocus()) {
      QStyleOptionFocusRect option;
      option.initFrom(this);
      style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
  }

  void enterEvent(QEnterEvent * /*event*/) override { update(); }
  void leaveEvent(QEvent * /*event*/) override { update(); }

 private:
  int text_flags_;
  QString caption_;
};

template <class Widget>
class LabelBinder final : public Binder {
 public:
  LabelBinder(Label &label, Widget &widget, const Surroundings &surroundings)
      : Binder(label, widget, surroundings), label_(label), label_widget_(widget) {
    label_widget_.setBackgroundRole(QPalette::Window);
    label_widget_.setAutoFillBackground(label_.back_color().has_value());
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

  /// A colour of the system is another one when the desktop's colours change.
  bool eventFilter(QObject *object, QEvent *event) override {
    if (event->type() == QEvent::PaletteChange && object == &label_widget_ && !is_released())
      ShowColor();
    return Binder::eventFilter(object, event);
  }

  /// A label's positions are those of its container.
  QPoint MouseOrigin() const override { return -label_widget_.pos(); }

  /// A text that is larger than its label is not cut off.
  void Place() override {
    const QRect place = RectOf(label_.Left(), label_.Top(), label_.Width(), label_.Height());
    label_widget_.setGeometry(Grown(place, NeededSize(place.width()), label_.alignment()));
  }

 private:
  QSize NeededSize(int width) const {
    if (label_.auto_size())
      return {};
    if (!label_.word_wrap())
      return label_widget_.sizeHint();
    return WrappedTextSize(LabelText(label_.Caption()), label_widget_.font(), width);
  }

  void PlaceByText() {
    if (placing() == Placing::ByTwips)
      Place();
  }

  void ShowCaption() {
    label_widget_.setText(LabelText(label_.Caption()));
    PlaceByText();
  }

  void ShowColor() {
    QPalette palette;
    if (label_.back_color())
      palette = BackgroundPalette(*label_.back_color(), QApplication::palette());
    if (label_.ForeColor() == color_button_text) {
      label_widget_.setPalette(palette);
      return;
    }
    const QPalette &ground = label_.back_color() ? palette : label_widget_.parentWidget()->palette();
    const QColor color = TextColor(label_.ForeColor(), ground.color(QPalette::Window), QApplication::palette());
    palette.setColor(QPalette::Active, QPalette::WindowText, color);
    palette.setColor(QPalette::Inactive, QPalette::WindowText, color);
    label_widget_.setPalette(palette);
  }

  void ShowFont() {
    QFont font = ScreenFont(label_.font());
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
    return new LabelBinder<PlainLabel>(label, *new PlainLabel(label, &surroundings.parent), surroundings);

  auto *link = new LinkLabel(label, &surroundings.parent);
  auto *binder = new LabelBinder<LinkLabel>(label, *link, surroundings);
  QObject::connect(link, &QPushButton::clicked, binder,
                   [binder, &label] { binder->Enter([&] { label.Click.Raise(); }); });
  return binder;
}

}  // namespace borvane
