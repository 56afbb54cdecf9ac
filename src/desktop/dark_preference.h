#pragma once

#include <QDBusMessage>
#include <QObject>
#include <functional>

namespace borvane {

/// Reads from the desktop portal whether the user prefers dark windows, and follows changes. Qt 6.4 does not.
class DarkPreference final : public QObject {
  Q_OBJECT

 public:
  /// Asks without waiting. `on_reply` is called with the answer and with each change of it; never without a portal.
  explicit DarkPreference(std::function<void(bool is_preferred)> on_reply);

 private:
  // Takes the whole message: a slot for a QDBusVariant is refused while Qt's own thread has not yet registered that
  // type.
  Q_SLOT void OnSettingChanged(const QDBusMessage &change);

  void OnReply(const QVariant &value);

  std::function<void(bool)> on_reply_;
  bool has_changed_ = false;
};

}  // namespace borvane
