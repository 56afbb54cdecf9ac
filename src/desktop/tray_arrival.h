#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <functional>

namespace borvane {

/// Waits until the desktop has a tray, of either kind: one that takes windows in, by X11, or one that is reached over
/// the session bus. Qt 6.4 must not be asked before: it decides for one of the kinds when it is first asked.
class TrayArrival final : public QObject, public QAbstractNativeEventFilter {
  Q_OBJECT

 public:
  /// `on_arrival` is called once, from the event loop, and never without a tray. Where the program cannot look for
  /// itself, it is called at once.
  explicit TrayArrival(std::function<void()> on_arrival);

 private:
  /// Asks the bus, without waiting, whether a tray shows what is registered there.
  Q_SLOT void Ask();

  bool nativeEventFilter(const QByteArray &type, void *message, qintptr *result) override;
  void Arrive();

  std::function<void()> on_arrival_;
  bool has_arrived_ = false;
};

}  // namespace borvane
