#include <QElapsedTimer>
#include <QThread>

#include <gtest/gtest.h>

#include "support/mirror/client.h"
#include "support/mirror/echo_server.h"

// How long a server waits for its clients.

namespace borvane::mirror {
namespace {

TEST(Server, RefusesAHeadThatDoesNotComeToItsEnd) {
  const EchoServer server({.head_ms = 300});
  QElapsedTimer clock;
  clock.start();
  Client client(server.Port());
  std::optional<Response> response;
  client.Send("GET /a HTTP/1.1\r\nHos");
  response = client.Read();
  EXPECT_EQ(response.value().status, 408);
  EXPECT_TRUE(response->body.endsWith("/a"));
  EXPECT_TRUE(client.EndsWithin(15'000));
  EXPECT_GE(clock.elapsed(), 300);
  EXPECT_LT(clock.elapsed(), 9000);
}

TEST(Server, EndsWithoutAnAnswerWhenTheRequestLineStaysIncomplete) {
  const EchoServer server({.head_ms = 300});
  Client client(server.Port());
  client.Send("GET / HT");
  EXPECT_TRUE(client.EndsWithin(15'000));
}

TEST(Server, CountsTheTimeOfAHeadFromItsFirstByteHoweverManyFollow) {
  const EchoServer server({.head_ms = 500});
  Client client(server.Port());
  client.Send("GET / HTTP/1.1\r\n");
  QElapsedTimer clock;
  clock.start();
  while (clock.elapsed() < 20'000 && !client.socket().waitForReadyRead(50))
    client.Send("A");
  EXPECT_EQ(client.Read().value().status, 408);
  EXPECT_LT(clock.elapsed(), 15'000);
}

TEST(Server, EndsAnIdleConnectionWithoutAnAnswer) {
  const EchoServer server({.idle_ms = 300});
  Client fresh(server.Port());
  Client used(server.Port());
  used.Send("GET / HTTP/1.1\r\n\r\n");
  EXPECT_EQ(used.Read().value().status, 200);
  EXPECT_TRUE(fresh.EndsWithin(15'000));
  EXPECT_TRUE(used.EndsWithin(15'000));
}

TEST(Server, CutsAClientThatDoesNotTakeItsAnswer) {
  const EchoServer server({.stall_ms = 300});
  Client client(server.Port());
  client.socket().setReadBufferSize(1);
  client.Send(QByteArray("GET /big HTTP/1.1\r\n\r\n").repeated(10));
  QThread::msleep(4000);
  client.socket().setReadBufferSize(0);
  while (client.socket().waitForReadyRead(1000) || client.socket().bytesAvailable() > 0)
    client.socket().readAll();
  EXPECT_FALSE(client.IsOpen());
}

}  // namespace
}  // namespace borvane::mirror
