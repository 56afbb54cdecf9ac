#pragma once

#include <QSocketNotifier>
#include <QTimer>
#include <functional>
#include <map>
#include <memory>

#include "transfer/curl_library.h"

namespace borvane {

/// libcurl's multi interface on Qt's event loop: the library says which sockets and what time to watch for.
class CurlLoop {
 public:
  /// `ended` learns of each transfer that has ended and how, when no callback of the library is running; the handle has
  /// been taken out by then and may be added again.
  CurlLoop(const CurlLibrary &curl, std::function<void(CURL *, CURLcode)> ended);

  /// False when the library cannot take the transfer: `ended` will not be called then.
  [[nodiscard]] bool Add(CURL *easy);

  /// Ends the transfer of `easy` at once, if it is under way. `ended` is not called.
  void Remove(CURL *easy);

 private:
  /// A notifier may be dropped while it notifies.
  struct DropNotifier {
    void operator()(QSocketNotifier *notifier) const {
      notifier->setEnabled(false);
      notifier->deleteLater();
    }
  };
  using Notifier = std::unique_ptr<QSocketNotifier, DropNotifier>;
  struct Notifiers {
    Notifier read;
    Notifier write;
  };

  static int WatchSocket(CURL *easy, curl_socket_t socket, int what, void *loop, void *socket_data);
  static int SetTimer(CURLM *multi, long milliseconds, void *loop);
  void Watch(Notifier &notifier, curl_socket_t socket, QSocketNotifier::Type type, bool wanted);
  void Act(curl_socket_t socket, int events);

  const CurlLibrary &curl_;
  std::function<void(CURL *, CURLcode)> ended_;
  QTimer timer_;
  std::map<curl_socket_t, Notifiers> sockets_;
  std::unique_ptr<CURLM, decltype(CurlLibrary::multi_cleanup)> multi_;
};

}  // namespace borvane
