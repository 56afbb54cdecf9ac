#include "support/desktop/screen_rig.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QEvent>
#include <QtTest/QTest>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace borvane {

ScreenRig::ScreenRig(MessageBoxes boxes)
    : program_({store_, http_, events_, clock_, random_,
                boxes == MessageBoxes::Real ? static_cast<MessageBox &>(real_message_box_) : message_box_, shell_,
                files_, sound_, region_, process_},
               forms_) {}

ScreenRig::~ScreenRig() { forms_.Stop(); }

ScreenRig::LeftWindows::~LeftWindows() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

Lines ScreenRig::events() {
  Lines lines = trace_.All();
  trace_.Clear();
  return lines;
}

QWidget *ScreenRig::Find(const FormBase &form, const char *name) const {
  const FormWindow *window = forms_.WindowOf(form);
  return window == nullptr ? nullptr : window->findChild<QWidget *>(QString::fromLatin1(name));
}

void ScreenRig::Missing(const char *name) { throw std::logic_error(std::string("there is no such widget: ") + name); }

namespace {

std::string Spoken(QWidget &widget, QAccessible::Text text) {
  const QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(&widget);
  return interface == nullptr ? std::string() : interface->text(text).toStdString();
}

}  // namespace

std::string SpokenName(QWidget &widget) { return Spoken(widget, QAccessible::Name); }

std::string SpokenValue(QWidget &widget) { return Spoken(widget, QAccessible::Value); }

void SwitchOver(QWidget &widget) {
  QAccessible::queryAccessibleInterface(&widget)->actionInterface()->doAction(
      QAccessibleActionInterface::toggleAction());
}

void Write(QWidget &widget, const QString &text) {
  QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(&widget);
  const int length = interface->textInterface()->characterCount();
  interface->editableTextInterface()->replaceText(0, length, text);
}

void Settle() {
  QCoreApplication::processEvents();
  QCoreApplication::sendPostedEvents();
  QCoreApplication::processEvents();
}

QImage Picture(QWidget &widget) {
  Settle();
  return widget.grab().toImage();
}

namespace {

/// The relative luminance of sRGB.
double Luminance(const QColor &color) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

}  // namespace

double Contrast(const QColor &first, const QColor &second) {
  constexpr double glare = 0.05;
  const auto [dark, light] = std::minmax({Luminance(first), Luminance(second)});
  return (light + glare) / (dark + glare);
}

int PixelsOf(const QImage &picture, const QColor &color, int tolerance) {
  const auto is_near = [&](int a, int b) { return std::abs(a - b) <= tolerance; };
  int count = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const QColor pixel = picture.pixelColor(x, y);
      count += is_near(pixel.red(), color.red()) && is_near(pixel.green(), color.green()) &&
                       is_near(pixel.blue(), color.blue())
                   ? 1
                   : 0;
    }
  }
  return count;
}

}  // namespace borvane
