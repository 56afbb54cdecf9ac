#pragma once

#include <QAccessibleWidget>
#include <QWidget>

namespace borvane {

/// A widget that Qt itself has no kind for. A screen reader learns what it is; Qt would report an area of a window.
template <QAccessible::Role role>
class SpokenWidget : public QWidget {
 public:
  explicit SpokenWidget(QWidget *parent) : QWidget(parent) { QAccessible::installFactory(Speak); }

 private:
  static QAccessibleInterface *Speak(const QString & /*class_name*/, QObject *object) {
    auto *widget = dynamic_cast<SpokenWidget *>(object);
    return widget == nullptr ? nullptr : new QAccessibleWidget(widget, role);
  }
};

}  // namespace borvane
