#pragma once

#include <QEventLoop>
#include <QStringList>
#include <QThread>
#include <QTimer>
#include <chrono>
#include <optional>

#include "service/service.h"

namespace borvane::mirror {

/// A service whose clock only the test moves, and the lines that it logs.
class ServiceUnderTest {
 public:
  explicit ServiceUnderTest(const StoreAddress &store, ServiceLimits limits = {})
      : service_({.store = store,
                  .newest_version = "2.3.5",
                  .limits = limits,
                  .forgetting_interval = std::chrono::milliseconds(5),
                  .clock = [this] { return now_; },
                  .log = [this](LogLevel, const QString &line) { lines_.append(line); }}) {}

  /// The answer to a GET, waited for; status 0 when none comes within 20 seconds.
  Answer Get(const QByteArray &target, const char *client = "10.0.0.1", const QByteArray &method = "GET") {
    return Send({.method = method, .target = target}, client);
  }

  /// The same for any request.
  Answer Send(const Request &request, const char *client = "10.0.0.1") {
    std::optional<Answer> answer;
    QEventLoop loop;
    service_.Handle(request, QHostAddress(client), [&answer, &loop](const Answer &given) {
      answer = given;
      loop.quit();
    });
    QTimer::singleShot(20'000, &loop, &QEventLoop::quit);
    if (!answer)
      loop.exec();
    return answer.value_or(Answer{.status = 0});
  }

  /// The answer to a command with what follows its name: its text, or its status when that is not 200.
  QByteArray Ask(const QByteArray &command, const char *client = "10.0.0.1") {
    const Answer answer = Get("/cgi-bin/borvane/control.pl?cmd=" + command, client);
    return answer.status == 200 ? answer.body : QByteArray::number(answer.status);
  }

  /// Asks until the answer is no failure of the store, for some seconds: the service pauses between its attempts.
  QByteArray AskUntilItWorks(const QByteArray &command) {
    QByteArray answer = Ask(command);
    for (int i = 0; i < 100 && answer == "503"; ++i) {
      QThread::msleep(100);
      answer = Ask(command);
    }
    return answer;
  }

  /// Sends a command without waiting for its answer.
  void AskLater(const QByteArray &command) {
    service_.Handle({.method = "GET", .target = "/cgi-bin/borvane/control.pl?cmd=" + command}, QHostAddress("10.0.0.1"),
                    [](const Answer &) {});
  }

  void Pass(qint64 milliseconds) { now_ += milliseconds; }

  bool KeepsAddresses() const { return service_.KeepsAddresses(); }

  bool Serves(const QByteArray &target, const QByteArray &host = {}) const { return service_.Serves(target, host); }

  /// The lines that it has logged.
  const QStringList &lines() const { return lines_; }

 private:
  qint64 now_ = 1'700'000'000'000;
  QStringList lines_;
  Service service_;
};

}  // namespace borvane::mirror
