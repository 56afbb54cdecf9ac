#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <atomic>
#include <chrono>
#include <thread>

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace borvane::mirror {

/// A client that asks without a pause, in a thread of its own, and takes all answers. It ends with this object.
class Flood {
 public:
  explicit Flood(quint16 port) : connection_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(::connect(connection_, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    thread_ = std::thread([this] { Run(); });
  }
  Flood(const Flood &) = delete;
  Flood &operator=(const Flood &) = delete;
  ~Flood() {
    is_over_ = true;
    thread_.join();
    ::close(connection_);
  }

  /// Whether so many bytes of answers have come from now on, within a minute.
  bool GetsMore() const {
    constexpr qint64 many = 2'000'000;
    const qint64 enough = received_ + many;
    for (const QDeadlineTimer deadline(60'000); received_ < enough && !deadline.hasExpired();)
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return received_ >= enough;
  }

 private:
  void Run() {
    const QByteArray request = "HEAD / HTTP/1.1\r\nHost: southern.localhost\r\n\r\n";
    const QByteArray requests = request.repeated(2'000);
    QByteArray answers(1'000'000, '\0');
    qsizetype from = 0;  // where in the first request to go on
    while (!is_over_) {
      pollfd watched = {.fd = connection_, .events = POLLIN | POLLOUT, .revents = 0};
      ::poll(&watched, 1, 100);
      const auto count = static_cast<std::size_t>(requests.size() - from);
      if (const ssize_t sent = ::send(connection_, requests.constData() + from, count, MSG_NOSIGNAL | MSG_DONTWAIT);
          sent > 0)
        from = (from + sent) % request.size();
      const ssize_t received =
          ::recv(connection_, answers.data(), static_cast<std::size_t>(answers.size()), MSG_DONTWAIT);
      if (received == 0)
        return;
      if (received > 0)
        received_ += received;
    }
  }

  const int connection_;
  std::atomic<qint64> received_ = 0;
  std::atomic<bool> is_over_ = false;
  std::thread thread_;
};

}  // namespace borvane::mirror
