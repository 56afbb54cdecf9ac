#include "http/server.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

#include <gtest/gtest.h>

#include "support/mirror/client.h"
#include "support/mirror/echo_server.h"

namespace borvane::mirror {
namespace {

TEST(Server, AnswersARequest) {
  const EchoServer server;
  Client client(server.Port());
  client.Send("GET /a HTTP/1.1\r\nHost: x\r\n\r\n");
  const std::optional<Response> response = client.Read();
  ASSERT_TRUE(response);
  EXPECT_EQ(response->status, 200);
  EXPECT_EQ(response->body, "GET /a");
  EXPECT_EQ(response->headers["server"], "borvane-mirror/2.3.5");
  EXPECT_EQ(response->headers["content-type"], "text/plain");
  EXPECT_EQ(response->headers["content-length"], "6");
  EXPECT_EQ(response->headers["connection"], "keep-alive");
  EXPECT_TRUE(response->headers["date"].endsWith(" GMT"));
}

TEST(Server, AnswersManyRequestsOnOneConnection) {
  const EchoServer server;
  Client client(server.Port());
  for (int i = 0; i < 100; ++i) {
    const QByteArray target = "/" + QByteArray::number(i);
    client.Send("GET " + target + " HTTP/1.1\r\n\r\n");
    const std::optional<Response> response = client.Read();
    ASSERT_TRUE(response);
    EXPECT_EQ(response->body, "GET " + target);
  }
}

/// How many files this process has for bodies that are sent again.
qsizetype FilesInMemory() {
  const QFileInfoList descriptors = QDir("/proc/self/fd").entryInfoList(QDir::Files | QDir::System);
  return std::count_if(descriptors.begin(), descriptors.end(), [](const QFileInfo &descriptor) {
    return descriptor.symLinkTarget().contains("/memfd:borvane-page");
  });
}

TEST(Server, SendsTheSameLongBodyToSeveralClientsAgainAndAgain) {
  const EchoServer server;
  Client client(server.Port());
  Client other(server.Port());
  Client slow(server.Port());
  slow.socket().setReadBufferSize(1);
  slow.Send(QByteArray("GET /page HTTP/1.1\r\n\r\n").repeated(3));
  for (int i = 0; i < 5; ++i)
    for (Client *each : {&client, &other}) {
      each->Send("GET /page HTTP/1.1\r\n\r\nHEAD /page HTTP/1.1\r\n\r\nGET /1 HTTP/1.1\r\n\r\n");
      EXPECT_EQ(each->Read().value().body, EchoHandler::Page());
      EXPECT_EQ(each->Read(false).value().headers["content-length"], "1000000");
      EXPECT_EQ(each->Read().value().body, "GET /1");
    }
#ifdef Q_OS_LINUX
  EXPECT_EQ(FilesInMemory(), 1);
#endif
  slow.socket().setReadBufferSize(0);
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(slow.Read().value().body, EchoHandler::Page());
}

TEST(Server, AnswersTwoRequestsOfOnePacketInTheirOrder) {
  const EchoServer server;
  Client client(server.Port());
  client.Send("GET /1 HTTP/1.1\r\n\r\nGET /2 HTTP/1.1\r\n\r\nGET /3 HT");
  EXPECT_EQ(client.Read().value().body, "GET /1");
  EXPECT_EQ(client.Read().value().body, "GET /2");
  client.Send("TP/1.1\r\n\r\n");
  EXPECT_EQ(client.Read().value().body, "GET /3");
}

TEST(Server, AnswersRequestsThatComeTogetherHoweverManyTheyAre) {
  constexpr int count = 100'000;
  const EchoServer server;
  Client client(server.Port());
  client.Send(QByteArray("HEAD / HTTP/1.1\n\n").repeated(count) + "GET /last HTTP/1.0\n\n");
  while (client.socket().waitForReadyRead(15'000))
    client.socket().readAll();
  EXPECT_EQ(server.Requests(), count + 1);
}

TEST(Server, AnswersARequestThatComesByteByByte) {
  const EchoServer server;
  Client client(server.Port());
  client.SendByteByByte("GET /a b HTTP/1.1\r\nHost: x\r\n\r\n");
  EXPECT_EQ(client.Read().value().body, "GET /a b");
}

TEST(Server, TakesRawBlanksAndBytesAbove127) {
  const EchoServer server;
  Client client(server.Port());
  client.Send("GET /a b|c#d\xe9\xff HTTP/1.1\r\n\r\n");
  EXPECT_EQ(client.Read().value().body, "GET /a b|c#d\xe9\xff");
}

TEST(Server, TakesATargetOf64KiB) {
  const EchoServer server;
  Client client(server.Port());
  const QByteArray target = '/' + QByteArray(64 * 1024 - 1, 'x');
  client.Send("GET " + target + " HTTP/1.1\r\n\r\n");
  EXPECT_EQ(client.Read().value().body, "GET " + target);
}

TEST(Server, AnswersHeadWithTheLengthAndWithoutABody) {
  const EchoServer server;
  Client client(server.Port());
  client.Send("HEAD /a HTTP/1.1\r\n\r\nGET /b HTTP/1.1\r\n\r\n");
  const std::optional<Response> head = client.Read(false);
  EXPECT_EQ(head.value().headers["content-length"], "7");
  EXPECT_EQ(client.Read().value().body, "GET /b");
}

TEST(Server, EndsTheConnectionWhenItIsAskedTo) {
  const EchoServer server;
  for (const char *request : {"GET /a HTTP/1.1\r\nConnection: close\r\n\r\n", "GET /a HTTP/1.0\r\n\r\n"}) {
    Client client(server.Port());
    client.Send(request);
    const std::optional<Response> response = client.Read();
    EXPECT_EQ(response.value().body, "GET /a");
    EXPECT_EQ(response->headers["connection"], "close");
    EXPECT_TRUE(client.EndsWithin(15'000));
  }
}

TEST(Server, AnswersNothingAfterARequestThatEndsTheConnection) {
  const EchoServer server;
  Client client(server.Port());
  client.Send("GET /a HTTP/1.0\r\n\r\nGET /b HTTP/1.1\r\n\r\n" + QByteArray(100'000, 'x'));
  EXPECT_EQ(client.Read().value().body, "GET /a");
  EXPECT_TRUE(client.EndsWithin(15'000));
  EXPECT_EQ(server.Requests(), 1);
}

TEST(Server, SendsALongAnswerWhole) {
  const EchoServer server;
  Client client(server.Port());
  client.Send(QByteArray("GET /big HTTP/1.1\r\n\r\n").repeated(5));
  for (int i = 0; i < 5; ++i)
    EXPECT_EQ(client.Read().value().body, QByteArray(10'000'000, 'x'));
}

TEST(Server, SaysWhyItCannotListen) {
  EchoHandler handler;
  Server first({}, handler);
  const quint16 port = first.Listen(QHostAddress::LocalHost, 0).value();
  Server second({}, handler);
  EXPECT_EQ(second.Listen(QHostAddress::LocalHost, port), std::nullopt);
  EXPECT_EQ(second.ListenError(), QAbstractSocket::AddressInUseError);
  EXPECT_FALSE(second.ListenErrorText().isEmpty());
}

}  // namespace
}  // namespace borvane::mirror
