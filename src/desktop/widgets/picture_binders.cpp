#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

#include "desktop/widgets/binders.h"
#include "desktop/widgets/colors.h"
#include "desktop/widgets/pictures.h"
#include "desktop/widgets/spoken_widget.h"
#include "desktop/widgets/swatch.h"
#include "desktop/windows_1252.h"

namespace borvane {

namespace {

class PictureBoxBinder final : public Binder {
 public:
  PictureBoxBinder(PictureBox &picture_box, Swatch &swatch, const Surroundings &surroundings)
      : Binder(picture_box, swatch, surroundings), picture_box_(picture_box), swatch_(swatch) {
    swatch_.ShowColor(picture_box_.BackColor());
    connect(&swatch_, &QPushButton::clicked, this, [this] { Enter([&] { picture_box_.Click.Raise(); }); });
  }

 protected:
  void Show(const PropertyBase & /*property*/) override { swatch_.ShowColor(picture_box_.BackColor()); }

 private:
  PictureBox &picture_box_;
  Swatch &swatch_;
};

/// A box filled with a colour that holds other controls, which have its colour as their background.
class ContainerBoxBinder final : public Binder {
 public:
  ContainerBoxBinder(PictureBox &picture_box, QWidget &box, const Surroundings &surroundings)
      : Binder(picture_box, box, surroundings), picture_box_(picture_box) {
    box.setAutoFillBackground(true);
    ShowColor();
  }

 protected:
  void Show(const PropertyBase & /*property*/) override { ShowColor(); }

  bool eventFilter(QObject *object, QEvent *event) override {
    if (object != &widget() || is_released())
      return false;
    if (event->type() == QEvent::PaletteChange)
      ShowColor();
    const bool is_mouse = event->type() == QEvent::MouseMove || event->type() == QEvent::MouseButtonRelease;
    if (is_mouse && !IsOnBox(static_cast<QMouseEvent &>(*event)))
      return false;
    if (event->type() == QEvent::MouseButtonRelease && IsClick(static_cast<QMouseEvent &>(*event)))
      Enter([this] { picture_box_.Click.Raise(); });
    return Binder::eventFilter(object, event);
  }

 private:
  void ShowColor() { widget().setPalette(BackgroundPalette(picture_box_.BackColor(), QApplication::palette())); }

  /// A control in the box passes on what it has no use for.
  bool IsOnBox(const QMouseEvent &event) const { return widget().childAt(event.position().toPoint()) == nullptr; }

  bool IsClick(const QMouseEvent &event) const {
    return event.button() == Qt::LeftButton && widget().rect().contains(event.position().toPoint());
  }

  PictureBox &picture_box_;
};

/// A watermark: one of the program's own pictures, over what lies beneath.
class PictureWidget final : public SpokenWidget<QAccessible::Graphic> {
 public:
  explicit PictureWidget(QWidget *parent) : SpokenWidget(parent) {}

  void ShowPicture(const std::string &name) {
    name_ = name;
    update();
  }

 protected:
  void paintEvent(QPaintEvent * /*event*/) override {
    QPainter painter(this);
    DrawPicture(painter, name_, rect(), WatermarkColor(palette()));
  }

 private:
  std::string name_;
};

class ImageBinder final : public Binder {
 public:
  ImageBinder(Image &image, PictureWidget &widget, const Surroundings &surroundings)
      : Binder(image, widget, surroundings), image_(image), picture_(widget) {
    Show(image_.Picture);
  }

 protected:
  void Show(const PropertyBase & /*property*/) override {
    picture_.ShowPicture(image_.Picture());
    picture_.setAccessibleName(ShownText(image_.Picture()));
  }

 private:
  Image &image_;
  PictureWidget &picture_;
};

}  // namespace

Binder *BindPictureBox(PictureBox &picture_box, const Surroundings &surroundings) {
  if (!picture_box.children().empty())
    return new ContainerBoxBinder(picture_box, *new SpokenWidget<QAccessible::Grouping>(&surroundings.parent),
                                  surroundings);
  return new PictureBoxBinder(picture_box, *new Swatch(&surroundings.parent), surroundings);
}

Binder *BindImage(Image &image, const Surroundings &surroundings) {
  return new ImageBinder(image, *new PictureWidget(&surroundings.parent), surroundings);
}

}  // namespace borvane
