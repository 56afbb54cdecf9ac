#include <QDeadlineTimer>
#include <QThread>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "support/mirror/client.h"
#include "support/mirror/echo_server.h"

// How many clients a server has, and how much it keeps for them.

namespace borvane::mirror {
namespace {

TEST(Server, RefusesConnectionsBeyondTheLimitAndTakesThemAgainLater) {
  const EchoServer server({.connections = 3});
  std::vector<std::unique_ptr<Client>> clients;
  for (int i = 0; i < 3; ++i) {
    clients.push_back(std::make_unique<Client>(server.Port()));
    clients.back()->Send("GET / HTTP/1.1\r\n\r\n");
    EXPECT_EQ(clients.back()->Read().value().status, 200);
  }
  Client refused(server.Port());
  refused.Send("GET /refused HTTP/1.1\r\n\r\n");
  const Response refusal = refused.Read().value();
  EXPECT_EQ(refusal.status, 503);
  EXPECT_TRUE(refusal.body.endsWith("/refused")) << "sent after the request line was read";
  EXPECT_TRUE(refused.EndsWithin(15'000));

  clients.clear();
  std::optional<Response> response;
  for (int i = 0; i < 600 && (!response || response->status != 200); ++i) {
    QThread::msleep(50);
    response = Get(server.Port(), "/later");
  }
  EXPECT_EQ(response.value().body, "GET /later");
}

TEST(Server, RefusesConnectionsBeyondTheLimitOfAClientAndServesOthers) {
  const EchoServer server({.connections_of_a_client = 2});
  Client first(server.Port());
  Client second(server.Port());
  for (Client *client : {&first, &second}) {
    client->Send("GET /a HTTP/1.1\r\n\r\n");
    EXPECT_EQ(client->Read().value().status, 200);
  }
  EXPECT_EQ(Get(server.Port(), "/b").value().status, 503);
  Client other(server.Port(), QHostAddress::LocalHost, QHostAddress("127.0.0.2"));
  other.Send("GET /c HTTP/1.1\r\n\r\n");
  EXPECT_EQ(other.Read().value().status, 200);
}

TEST(Server, ClosesConnectionsBeyondTheRefusals) {
  const EchoServer server({.connections = 1, .refusals = 1, .head_ms = 60'000});
  Client served(server.Port());
  served.Send("GET /a HTTP/1.1\r\n\r\n");
  EXPECT_EQ(served.Read().value().status, 200);
  Client refused(server.Port());
  Client closed(server.Port());
  EXPECT_TRUE(closed.EndsWithin(15'000));
  refused.Send("GET /b HTTP/1.1\r\n\r\n");
  EXPECT_EQ(refused.Read().value().status, 503);
}

TEST(Server, ReadsNoFurtherRequestWhileAnswersWait) {
  const EchoServer server;
  Client client(server.Port());
  client.socket().setReadBufferSize(1);
  client.Send(QByteArray("GET /big HTTP/1.1\r\n\r\n").repeated(100));
  for (const QDeadlineTimer deadline(30'000); server.Requests() == 0 && !deadline.hasExpired();)
    QThread::msleep(20);
  QThread::msleep(500);
  EXPECT_LT(server.Requests(), 5);
  EXPECT_GE(server.Requests(), 1);
}

TEST(Server, CutsTheSlowestClientWhenTooMuchIsUnsent) {
  const EchoServer server({.unsent = 15'000'000});
  Client slowest(server.Port());
  slowest.socket().setReadBufferSize(1);
  slowest.Send("GET /big HTTP/1.1\r\n\r\n");
  ASSERT_TRUE(slowest.socket().waitForReadyRead(15'000));
  Client slow(server.Port());
  slow.socket().setReadBufferSize(1);
  slow.Send("GET /big HTTP/1.1\r\n\r\n");
  ASSERT_TRUE(slow.socket().waitForReadyRead(15'000));
  for (const QDeadlineTimer deadline(15'000); server.IsFirstBigHeld() && !deadline.hasExpired();)
    QThread::msleep(20);
  slowest.socket().setReadBufferSize(0);
  EXPECT_FALSE(slowest.Read()) << "it has lost the rest of its answer";
  slow.socket().setReadBufferSize(0);
  EXPECT_EQ(slow.Read().value().body, QByteArray(10'000'000, 'x'));
}

TEST(Server, CutsNobodyForABodyThatManyShare) {
  const EchoServer server({.unsent = 15'000'000});
  std::vector<std::unique_ptr<Client>> clients;
  for (int i = 0; i < 5; ++i) {
    clients.push_back(std::make_unique<Client>(server.Port()));
    clients.back()->socket().setReadBufferSize(1);
    clients.back()->Send("GET /shared HTTP/1.1\r\n\r\n");
    ASSERT_TRUE(clients.back()->socket().waitForReadyRead(15'000));
  }
  QThread::msleep(600);
  for (const auto &client : clients) {
    client->socket().setReadBufferSize(0);
    EXPECT_EQ(client->Read().value().body, QByteArray(10'000'000, 's'));
  }
}

}  // namespace
}  // namespace borvane::mirror
