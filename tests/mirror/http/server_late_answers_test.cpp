#include <QElapsedTimer>
#include <QThread>
#include <QTimer>

#include <gtest/gtest.h>
#include <sys/socket.h>

#include "support/mirror/client.h"
#include "support/mirror/server_in_a_thread.h"

// A server whose answers may come after its handler has returned.

namespace borvane::mirror {
namespace {

/// Answers "/late" and what begins so after 200 ms, "/later" after 800 ms, "/never" not at all, all else at once; each
/// with the request's method, target and client.
class SlowHandler : public Handler {
 public:
  bool Serves(const QByteArray & /*target*/, const QByteArray & /*host*/) const override { return true; }

  void Handle(const Request &request, const QHostAddress &client, const Reply &reply) override {
    const Answer answer = {.type = "text/plain",
                           .body = request.method + ' ' + request.target + ' ' + client.toString().toLatin1()};
    if (request.target.startsWith("/late"))
      QTimer::singleShot(request.target == "/later" ? 800 : 200, &context_, [reply, answer] { reply(answer); });
    else if (request.target != "/never")
      reply(answer);
  }

 private:
  QObject context_;
};

using SlowServer = ServerInAThread<SlowHandler>;

TEST(LateAnswer, ComesWholeOnTheSameConnection) {
  const SlowServer server;
  Client client(server.Port());
  for (int i = 0; i < 2; ++i) {
    client.Send("GET /late HTTP/1.1\r\n\r\n");
    EXPECT_EQ(client.Read().value().body, "GET /late 127.0.0.1");
  }
}

TEST(LateAnswer, KeepsItsPlaceAmongRequestsThatCameTogether) {
  const SlowServer server;
  Client client(server.Port());
  QByteArray requests;
  for (const char *target : {"/a", "/late1", "/b", "/late2", "/c"})
    requests += QByteArray("GET ") + target + " HTTP/1.1\r\n\r\n";
  client.Send(requests);
  for (const char *target : {"/a", "/late1", "/b", "/late2", "/c"})
    EXPECT_EQ(client.Read().value().body, QByteArray("GET ") + target + " 127.0.0.1");
}

TEST(LateAnswer, LeavesARequestThatComesMeanwhileForLater) {
  const SlowServer server;
  Client client(server.Port());
  client.Send("GET /late HTTP/1.1\r\n\r\n");
  QThread::msleep(50);
  client.SendByteByByte("GET /b HTTP/1.1\r\n\r\n");
  EXPECT_EQ(client.Read().value().body, "GET /late 127.0.0.1");
  EXPECT_EQ(client.Read().value().body, "GET /b 127.0.0.1");
}

TEST(LateAnswer, HasNoBodyForHead) {
  const SlowServer server;
  Client client(server.Port());
  client.Send("HEAD /late HTTP/1.1\r\n\r\nGET /b HTTP/1.1\r\n\r\n");
  EXPECT_EQ(client.Read(false).value().headers["content-length"], "20");
  EXPECT_EQ(client.Read().value().body, "GET /b 127.0.0.1");
}

TEST(LateAnswer, EndsTheConnectionWhenTheClientAskedForThat) {
  const SlowServer server;
  Client client(server.Port());
  client.Send("GET /late HTTP/1.1\r\nConnection: close\r\n\r\n");
  EXPECT_EQ(client.Read().value().body, "GET /late 127.0.0.1");
  EXPECT_TRUE(client.EndsWithin(15'000));
}

TEST(LateAnswer, HoldsUpNobodyElse) {
  const SlowServer server;
  Client waiting(server.Port());
  waiting.Send("GET /never HTTP/1.1\r\n\r\n");
  QElapsedTimer clock;
  clock.start();
  EXPECT_EQ(Get(server.Port(), "/quick").value().body, "GET /quick 127.0.0.1");
  EXPECT_LT(clock.elapsed(), 8000);
}

TEST(LateAnswer, ComesToAClientThatHasEndedItsSendingSide) {
  const SlowServer server;
  Client client(server.Port());
  client.Send("GET /late HTTP/1.1\r\n\r\n");
  ::shutdown(static_cast<int>(client.socket().socketDescriptor()), SHUT_WR);
  EXPECT_EQ(client.Read().value().body, "GET /late 127.0.0.1");
  EXPECT_TRUE(client.EndsWithin(15'000));
}

TEST(LateAnswer, MayComeAfterTheClientHasGone) {
  const SlowServer server;
  {
    Client client(server.Port());
    client.Send("GET /late HTTP/1.1\r\n\r\n");
    QThread::msleep(50);
  }
  QThread::msleep(300);
  EXPECT_EQ(Get(server.Port(), "/next").value().body, "GET /next 127.0.0.1");
}

TEST(LateAnswer, IsRefusedWhenItDoesNotCome) {
  const SlowServer server({.answer_ms = 300});
  Client client(server.Port());
  client.Send("GET /never HTTP/1.1\r\n\r\n");
  EXPECT_EQ(client.Read().value().status, 503);
  EXPECT_TRUE(client.EndsWithin(15'000));
}

TEST(LateAnswer, IsDroppedAfterARefusal) {
  // The times are looked at four times a second, so that the refusal comes some 300 ms before the answer.
  const SlowServer server({.answer_ms = 1});
  Client client(server.Port());
  client.Send("GET /later HTTP/1.1\r\n\r\n");
  EXPECT_EQ(client.Read().value().status, 503);
  EXPECT_TRUE(client.EndsWithin(15'000));
  QThread::msleep(700);
  EXPECT_EQ(Get(server.Port(), "/next").value().status, 200);
}

}  // namespace
}  // namespace borvane::mirror
