#pragma once

#include <QEventLoop>
#include <QStringList>
#include <QTimer>
#include <optional>

#include "service/service.h"

namespace borvane::mirror {

/// A service whose clock stands still until the test moves it, and which keeps what it tells.
class ServiceUnderTest {
 public:
  explicit ServiceUnderTest(const StoreAddress &store, ServiceLimits limits = {})
      : service_({.store = store,
                  .newest_version = "2.3.5",
                  .limits = limits,
                  .clock = [this] { return now_; },
                  .tell = [this](const QString &line) { lines_.append(line); }}) {}

  /// The answer to a GET, waited for; status 0 when none comes within 20 seconds.
  ServiceAnswer Get(const QByteArray &target, const char *client = "10.0.0.1", const QByteArray &method = "GET") {
    std::optional<ServiceAnswer> answer;
    QEventLoop loop;
    service_.Answer(method, target, QHostAddress(client), [&answer, &loop](const ServiceAnswer &given) {
      answer = given;
      loop.quit();
    });
    QTimer::singleShot(20'000, &loop, &QEventLoop::quit);
    if (!answer)
      loop.exec();
    return answer.value_or(ServiceAnswer{.status = 0});
  }

  /// The answer to a command with what stands behind its name: its text, or its status when that is not 200.
  QByteArray Ask(const QByteArray &command, const char *client = "10.0.0.1") {
    const ServiceAnswer answer = Get("/cgi-bin/borvane/control.pl?cmd=" + command, client);
    return answer.status == 200 ? answer.body : QByteArray::number(answer.status);
  }

  /// Sends a command without waiting for its answer.
  void AskLater(const QByteArray &command) {
    service_.Answer("GET", "/cgi-bin/borvane/control.pl?cmd=" + command, QHostAddress("10.0.0.1"),
                    [](const ServiceAnswer &) {});
  }

  void Pass(qint64 milliseconds) { now_ += milliseconds; }

  /// What it has told so far.
  const QStringList &lines() const { return lines_; }

 private:
  qint64 now_ = 1'700'000'000'000;
  QStringList lines_;
  Service service_;
};

}  // namespace borvane::mirror
