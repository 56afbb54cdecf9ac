#include "desktop/dark_preference.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <utility>

namespace borvane {

namespace {

constexpr const char *portal_path = "/org/freedesktop/portal/desktop";
constexpr const char *interface = "org.freedesktop.portal.Settings";
constexpr const char *setting_group = "org.freedesktop.appearance";
constexpr const char *setting_name = "color-scheme";

/// The value itself: an answer has it in two variants, a change in one.
QVariant Unwrapped(QVariant value) {
  while (value.metaType() == QMetaType::fromType<QDBusVariant>())
    value = value.value<QDBusVariant>().variant();
  return value;
}

}  // namespace

DarkPreference::DarkPreference(std::function<void(bool)> on_reply) : on_reply_(std::move(on_reply)) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected())
    return;
  // For a sender by its name Qt would first wait for the bus to look it up.
  const QString any_sender;
  bus.connect(any_sender, portal_path, interface, QStringLiteral("SettingChanged"), this,
              SLOT(OnSettingChanged(QDBusMessage)));

  QDBusMessage question = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"), portal_path,
                                                         interface, QStringLiteral("Read"));
  question << setting_group << setting_name;
  auto *reply = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
  connect(reply, &QDBusPendingCallWatcher::finished, this, [this, reply] {
    const QDBusPendingReply<QVariant> answer = *reply;
    // A change that was reported meanwhile is newer than the answer.
    if (answer.isValid() && !has_changed_)
      OnReply(answer.value());
    reply->deleteLater();
  });
}

void DarkPreference::OnSettingChanged(const QDBusMessage &change) {
  const QVariantList arguments = change.arguments();
  if (arguments.size() != 3 || arguments[0].toString() != setting_group || arguments[1].toString() != setting_name)
    return;
  has_changed_ = true;
  OnReply(arguments[2]);
}

void DarkPreference::OnReply(const QVariant &value) {
  constexpr uint dark = 1;
  on_reply_(Unwrapped(value).toUInt() == dark);
}

}  // namespace borvane
