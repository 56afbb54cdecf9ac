#include <QElapsedTimer>
#include <QThread>
#include <cerrno>

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "support/mirror/client.h"
#include "support/mirror/echo_server.h"
#include "support/mirror/flood.h"

// Clients that leave too early, are slow or send too much.

namespace borvane::mirror {
namespace {

int ConnectTo(quint16 port) {
  const int connection = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  EXPECT_EQ(::connect(connection, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
  return connection;
}

/// How a connection ends that sends the bytes and then only receives: 0 in good order, otherwise the system's error
/// number.
int EndOf(quint16 port, const QByteArray &bytes) {
  const int connection = ConnectTo(port);
  EXPECT_EQ(::send(connection, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL), bytes.size());
  char buffer[4096];
  ssize_t received = 0;
  while ((received = ::recv(connection, buffer, sizeof buffer, 0)) > 0) {
  }
  const int error = received == 0 ? 0 : errno;
  ::close(connection);
  return error;
}

TEST(Server, EndsInGoodOrderAlsoWhenItHasNotReadEverything) {
  const EchoServer server;
  const QByteArray rest(300'000, 'x');
  EXPECT_EQ(EndOf(server.Port(), "GET /a HTTP/1.0\r\n\r\n" + rest), 0);
  EXPECT_EQ(EndOf(server.Port(), "POST /a HTTP/1.1\r\nContent-Length: 300000\r\n\r\n" + rest), 0);
  EXPECT_EQ(EndOf(server.Port(), "GET /" + rest), 0);
}

/// All that comes on a connection whose client ends its sending side after the bytes.
QByteArray AllAfter(quint16 port, const QByteArray &bytes) {
  const int connection = ConnectTo(port);
  EXPECT_EQ(::send(connection, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL), bytes.size());
  ::shutdown(connection, SHUT_WR);
  QByteArray all;
  char buffer[4096];
  for (ssize_t received = 0; (received = ::recv(connection, buffer, sizeof buffer, 0)) > 0;) {
    all.append(buffer, received);
    if (all.size() < 100'000)
      QThread::msleep(1);
  }
  ::close(connection);
  return all;
}

TEST(Server, AnswersAClientThatHasEndedItsSendingSide) {
  const EchoServer server;
  EXPECT_TRUE(AllAfter(server.Port(), "GET /a HTTP/1.1\r\n\r\n").endsWith("\r\n\r\nGET /a"));
  EXPECT_TRUE(AllAfter(server.Port(), "GET /big HTTP/1.1\r\n\r\n").endsWith("\r\n\r\n" + QByteArray(10'000'000, 'x')));
  const QByteArray both = AllAfter(server.Port(), "GET /a HTTP/1.1\r\n\r\nGET /b HTTP/1.1\r\n\r\nGET /c HT");
  EXPECT_TRUE(both.contains("GET /a") && both.endsWith("\r\n\r\nGET /b")) << both.constData();
  EXPECT_EQ(AllAfter(server.Port(), "GET /a HTTP/1.1\r\n"), "");
  EXPECT_EQ(AllAfter(server.Port(), ""), "");
}

TEST(Server, ServesOthersWhileAClientIsSlow) {
  const EchoServer server;
  Client slow_to_send(server.Port());
  slow_to_send.Send("GET /");
  Client slow_to_take(server.Port());
  slow_to_take.socket().setReadBufferSize(1);
  slow_to_take.Send(QByteArray("GET /big HTTP/1.1\r\n\r\n").repeated(10));
  QElapsedTimer clock;
  clock.start();
  EXPECT_EQ(Get(server.Port(), "/quick").value().body, "GET /quick");
  EXPECT_LT(clock.elapsed(), 8000);
}

TEST(Server, ServesOthersWhileAClientAsksWithoutAPause) {
  const EchoServer server;
  const Flood flood(server.Port());
  ASSERT_TRUE(flood.GetsMore());
  for (int i = 0; i < 10; ++i)
    ASSERT_EQ(Get(server.Port(), "/quick").value_or(Response()).body, "GET /quick");
  EXPECT_TRUE(flood.GetsMore());
}

TEST(Server, EndsWhatIsTooSlowWhileAClientAsksWithoutAPause) {
  const EchoServer server({.head_ms = 5'000});
  const Flood flood(server.Port());
  ASSERT_TRUE(flood.GetsMore());
  Client slow(server.Port());
  slow.Send("GET /");
  EXPECT_TRUE(slow.EndsWithin(60'000));
  EXPECT_TRUE(flood.GetsMore());
}

TEST(Server, SurvivesClientsThatLeaveAfterAnyNumberOfBytes) {
  const EchoServer server;
  const QByteArray requests = "GET /a HTTP/1.1\r\nHost: x\r\n\r\nGET /big HTTP/1.1\r\n\r\n";
  for (qsizetype length = 0; length <= requests.size(); ++length) {
    Client client(server.Port());
    client.Send(requests.first(length));
    client.socket().abort();
  }
  EXPECT_EQ(Get(server.Port(), "/after").value().body, "GET /after");
}

TEST(Server, SurvivesClientsThatTakeOnlyPartOfAnAnswer) {
  const EchoServer server;
  for (const int taken : {1, 100, 10'000, 1'000'000, 9'000'000}) {
    Client client(server.Port());
    client.Send("GET /big HTTP/1.1\r\n\r\n");
    qint64 count = 0;
    while (count < taken && client.socket().waitForReadyRead(5000))
      count += client.socket().readAll().size();
    EXPECT_GE(count, taken);
    client.socket().abort();
  }
  EXPECT_EQ(Get(server.Port(), "/after").value().body, "GET /after");
}

}  // namespace
}  // namespace borvane::mirror
