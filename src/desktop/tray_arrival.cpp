#include "desktop/tray_arrival.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QGuiApplication>
#include <utility>

#include "desktop/x11_display.h"

#if QT_CONFIG(xcb)
#include <X11/Xlib.h>
#include <xcb/xcb.h>
#endif

namespace borvane {

namespace {

constexpr const char *service = "org.kde.StatusNotifierWatcher";
constexpr const char *watcher_path = "/StatusNotifierWatcher";

#if QT_CONFIG(xcb)
bool HasX11Tray(Display *display) {
  const QByteArray name = "_NET_SYSTEM_TRAY_S" + QByteArray::number(DefaultScreen(display));
  return XGetSelectionOwner(display, XInternAtom(display, name.constData(), False)) != 0;
}
#endif

}  // namespace

TrayArrival::TrayArrival(std::function<void()> on_arrival) : on_arrival_(std::move(on_arrival)) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) {
    Arrive();
    return;
  }
#if QT_CONFIG(xcb)
  if (Display *display = X11Display()) {
    if (HasX11Tray(display)) {
      Arrive();
      return;
    }
    qApp->installNativeEventFilter(this);
  }
#endif
  // The service may be there before the tray that it serves.
  const QString any_sender;
  bus.connect(any_sender, watcher_path, service, QStringLiteral("StatusNotifierHostRegistered"), this, SLOT(Ask()));
  const auto *watcher =
      new QDBusServiceWatcher(QString::fromLatin1(service), bus, QDBusServiceWatcher::WatchForRegistration, this);
  connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &TrayArrival::Ask);
  Ask();
}

void TrayArrival::Ask() {
  QDBusMessage question =
      QDBusMessage::createMethodCall(QString::fromLatin1(service), watcher_path,
                                     QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
  question.setAutoStartService(false);
  question << service << "IsStatusNotifierHostRegistered";
  auto *reply = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
  connect(reply, &QDBusPendingCallWatcher::finished, this, [this, reply] {
    const QDBusPendingReply<QVariant> answer = *reply;
    if (answer.isValid() && answer.value().toBool())
      Arrive();
    reply->deleteLater();
  });
}

bool TrayArrival::nativeEventFilter([[maybe_unused]] const QByteArray &type, [[maybe_unused]] void *message,
                                    qintptr * /*result*/) {
#if QT_CONFIG(xcb)
  // A new tray announces itself to everybody.
  constexpr unsigned sent_by_a_program = 0x80;
  const auto *event = static_cast<const xcb_generic_event_t *>(message);
  if (type == "xcb_generic_event_t" && (event->response_type & ~sent_by_a_program) == XCB_CLIENT_MESSAGE) {
    Display *display = X11Display();
    const auto *announcement = static_cast<const xcb_client_message_event_t *>(message);
    if (announcement->type == XInternAtom(display, "MANAGER", False) && HasX11Tray(display))
      Arrive();
  }
#endif
  return false;
}

void TrayArrival::Arrive() {
  if (has_arrived_)
    return;
  has_arrived_ = true;
  qApp->removeNativeEventFilter(this);
  // Not from within Qt's handling of what has been noticed.
  QMetaObject::invokeMethod(this, on_arrival_, Qt::QueuedConnection);
}

}  // namespace borvane
