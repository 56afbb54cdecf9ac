#include <QEvent>
#include <QLabel>
#include <QStatusBar>
#include <list>

#include "desktop/widgets/binders.h"
#include "desktop/widgets/label_text.h"
#include "desktop/widgets/twips.h"

namespace borvane {

namespace {

/// Shows one panel of a status bar. Its label has no accessible name, which a screen reader would read in place of the
/// text.
class PanelWatcher final : public PropertyWatcher {
 public:
  PanelWatcher(StatusPanel &panel, QLabel &label) : panel_(panel), label_(label) {
    panel_.Watch(this);
    PropertyChanged(panel_.Text);
  }

  void PropertyChanged(const PropertyBase & /*property*/) override {
    label_.setText(OneLine(LabelText(panel_.Text())));
  }

  void Release() { panel_.Watch(nullptr); }

 private:
  StatusPanel &panel_;
  QLabel &label_;
};

/// A status bar lies along the lower edge of its window and is as wide as it.
class StatusBarBinder final : public Binder {
 public:
  StatusBarBinder(StatusBar &status_bar, QStatusBar &widget, const Surroundings &surroundings)
      : Binder(status_bar, widget, surroundings), status_bar_(status_bar) {
    widget.setSizeGripEnabled(false);
    // The panels keep their widths also where the window is narrower than all of them together.
    float left = 0;
    for (int number = 1; number <= status_bar_.PanelCount(); ++number) {
      StatusPanel &panel = status_bar_.Panels(number);
      MakePanel(panel).setGeometry(RectOf(left, 0, panel.Width, status_bar_.Height()).marginsRemoved({1, 2, 1, 2}));
      left += panel.Width;
    }
    surroundings.parent.installEventFilter(this);
    Place();
  }

  void Release() override {
    Binder::Release();
    for (PanelWatcher &watcher : watchers_)
      watcher.Release();
  }

 protected:
  void Place() override {
    const QWidget &window = *widget().parentWidget();
    const int height = PixelsOf(status_bar_.Height());
    widget().setGeometry(0, window.height() - height, window.width(), height);
  }

  bool eventFilter(QObject *object, QEvent *event) override {
    if (object == widget().parentWidget() && event->type() == QEvent::Resize && !is_released())
      Place();
    return Binder::eventFilter(object, event);
  }

 private:
  QLabel &MakePanel(StatusPanel &panel) {
    auto *label = new QLabel(&widget());
    label->setTextFormat(Qt::PlainText);
    label->setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Sunken));
    watchers_.emplace_back(panel, *label);
    return *label;
  }

  StatusBar &status_bar_;
  std::list<PanelWatcher> watchers_;
};

}  // namespace

Binder *BindStatusBar(StatusBar &status_bar, const Surroundings &surroundings) {
  return new StatusBarBinder(status_bar, *new QStatusBar(&surroundings.parent), surroundings);
}

}  // namespace borvane
