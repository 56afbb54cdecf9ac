#pragma once

#include <atomic>

#include "support/mirror/server_in_a_thread.h"

namespace borvane::mirror {

/// Answers with the request's method and target; "/big" with ten million bytes of its own, "/shared" with as many that
/// all such answers share, "/page" with a million that they share. A refusal repeats the target.
class EchoHandler : public Handler {
 public:
  bool Serves(const QByteArray & /*target*/, const QByteArray & /*host*/) const override { return true; }

  void Handle(const Request &request, const QHostAddress & /*client*/, const Reply &reply) override {
    ++requests_;
    Answer answer = {.type = "text/plain", .body = request.method + ' ' + request.target};
    if (request.target == "/big")
      answer.body = QByteArray(10'000'000, 'x');
    if (request.target == "/big" && first_big_.isEmpty())
      first_big_ = answer.body;
    if (request.target == "/shared")
      answer.body = shared_;
    if (request.target == "/page")
      answer.body = Page();
    reply(answer);
  }

  Answer Refusal(int status, const QByteArray &target, const QByteArray & /*host*/) const override {
    Answer answer = StatusPage(status);
    answer.body += target.left(20);
    return answer;
  }

  int Requests() const { return requests_; }

  /// The body of "/page". No two parts of it are alike.
  static const QByteArray &Page() {
    static const QByteArray page = [] {
      QByteArray text;
      for (int i = 0; i < 100'000; ++i)
        text += QByteArray::number(i).rightJustified(9, '0') + '\n';
      return text;
    }();
    return page;
  }

  /// Whether a connection still holds the first answer to "/big".
  bool IsFirstBigHeld() const { return !first_big_.isDetached(); }

 private:
  QByteArray first_big_;
  const QByteArray shared_ = QByteArray(10'000'000, 's');
  std::atomic<int> requests_ = 0;
};

class EchoServer : public ServerInAThread<EchoHandler> {
 public:
  using ServerInAThread::ServerInAThread;

  int Requests() const { return handler().Requests(); }
  bool IsFirstBigHeld() const { return handler().IsFirstBigHeld(); }
};

}  // namespace borvane::mirror
