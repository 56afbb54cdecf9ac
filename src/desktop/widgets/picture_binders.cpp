#include <QPainter>
#include <QPushButton>
#include <QStyle>

#include "desktop/widgets/binders.h"
#include "desktop/widgets/colors.h"
#include "desktop/widgets/pictures.h"
#include "desktop/windows_1252.h"

namespace borvane {

namespace {

/// A box filled with a colour. It is a button for the keyboard and the screen reader.
class Swatch final : public QPushButton {
 public:
  explicit Swatch(QWidget *parent) : QPushButton(parent) { setAutoDefault(false); }

  void ShowColor(Color color) {
    color_ = color;
    update();
  }

 protected:
  void paintEvent(QPaintEvent * /*event*/) override {
    QPainter painter(this);
    painter.setPen(QPen(hasFocus() ? palette().color(QPalette::Highlight) : LineColor(palette()), hasFocus() ? 2 : 1));
    painter.setBrush(ScreenColor(color_, palette()));
    painter.drawRect(rect().adjusted(hasFocus() ? 1 : 0, hasFocus() ? 1 : 0, -1, -1));
  }

 private:
  Color color_ = color_button_face;
};

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

/// A watermark: one of the program's own pictures, over what lies beneath.
class PictureWidget final : public QWidget {
 public:
  explicit PictureWidget(QWidget *parent) : QWidget(parent) {}

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
  return new PictureBoxBinder(picture_box, *new Swatch(&surroundings.parent), surroundings);
}

Binder *BindImage(Image &image, const Surroundings &surroundings) {
  return new ImageBinder(image, *new PictureWidget(&surroundings.parent), surroundings);
}

}  // namespace borvane
