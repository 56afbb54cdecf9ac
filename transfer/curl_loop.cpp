#include "transfer/curl_loop.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace borvane {

CurlLoop::CurlLoop(const CurlLibrary &curl, std::function<void(CURL *, CURLcode)> ended)
    : curl_(curl), ended_(std::move(ended)), multi_(curl.multi_init(), curl.multi_cleanup) {
  curl_.multi_setopt(multi_.get(), CURLMOPT_SOCKETFUNCTION, WatchSocket);
  curl_.multi_setopt(multi_.get(), CURLMOPT_SOCKETDATA, this);
  curl_.multi_setopt(multi_.get(), CURLMOPT_TIMERFUNCTION, SetTimer);
  curl_.multi_setopt(multi_.get(), CURLMOPT_TIMERDATA, this);
  timer_.setSingleShot(true);
  timer_.callOnTimeout([this] { Act(CURL_SOCKET_TIMEOUT, 0); });
}

bool CurlLoop::Add(CURL *easy) { return curl_.multi_add_handle(multi_.get(), easy) == CURLM_OK; }

void CurlLoop::Remove(CURL *easy) { curl_.multi_remove_handle(multi_.get(), easy); }

int CurlLoop::WatchSocket(CURL * /*easy*/, curl_socket_t socket, int what, void *loop, void * /*socket_data*/) {
  auto &self = *static_cast<CurlLoop *>(loop);
  if (what == CURL_POLL_REMOVE) {
    self.sockets_.erase(socket);
    return 0;
  }
  Notifiers &notifiers = self.sockets_[socket];
  self.Watch(notifiers.read, socket, QSocketNotifier::Read, (what & CURL_POLL_IN) != 0);
  self.Watch(notifiers.write, socket, QSocketNotifier::Write, (what & CURL_POLL_OUT) != 0);
  return 0;
}

void CurlLoop::Watch(Notifier &notifier, curl_socket_t socket, QSocketNotifier::Type type, bool wanted) {
  if (notifier == nullptr && wanted) {
    notifier.reset(new QSocketNotifier(socket, type));
    const int event = type == QSocketNotifier::Read ? CURL_CSELECT_IN : CURL_CSELECT_OUT;
    QObject::connect(notifier.get(), &QSocketNotifier::activated, &timer_,
                     [this, socket, event] { Act(socket, event); });
  }
  if (notifier != nullptr)
    notifier->setEnabled(wanted);
}

/// Only starts the timer, even for no time at all: the library must not be called from its own callback.
int CurlLoop::SetTimer(CURLM * /*multi*/, long milliseconds, void *loop) {
  auto &self = *static_cast<CurlLoop *>(loop);
  if (milliseconds < 0)
    self.timer_.stop();
  else
    self.timer_.start(static_cast<int>(std::min<long>(milliseconds, std::numeric_limits<int>::max())));
  return 0;
}

void CurlLoop::Act(curl_socket_t socket, int events) {
  int running = 0;
  curl_.multi_socket_action(multi_.get(), socket, events, &running);

  int left = 0;
  while (const CURLMsg *message = curl_.multi_info_read(multi_.get(), &left)) {
    CURL *easy = message->easy_handle;
    const CURLcode result = message->data.result;
    Remove(easy);
    ended_(easy, result);
  }
}

}  // namespace borvane
