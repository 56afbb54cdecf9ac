#include "transfer/http_fetcher.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QtTest/QTest>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include "support/desktop/scripted_server.h"
#include "support/transfer/fetch.h"

namespace borvane {
namespace {

using namespace std::chrono_literals;
using Strings = std::vector<std::string>;

TEST(HttpFetcher, GivesTheBodyAsItCame) {
  const std::string body("<PRE>\r\n\xE9\0\x1A</PRE>", 16);
  ScriptedServer server(Serves(body));

  EXPECT_EQ(Fetch(server.address()), body);
}

TEST(HttpFetcher, SendsTheTargetByteForByte) {
  ScriptedServer server(Serves("x"));
  Fetch(server.address("/cgi-bin/control.pl?cmd=a b|c#d&e=\xE9\x80%41%zz//../<\">"));

  EXPECT_EQ(server.request_lines(),
            Strings({"GET /cgi-bin/control.pl?cmd=a b|c#d&e=\xE9\x80%41%zz//../<\"> HTTP/1.1"}));
}

TEST(HttpFetcher, LetsNoTargetAddALine) {
  ScriptedServer server(Serves("x"));
  Fetch(server.address("/a HTTP/1.1\r\nX-Evil: 1"));

  EXPECT_EQ(server.request_lines(), Strings({"GET /a HTTP/1.1%0D%0AX-Evil: 1 HTTP/1.1"}));
  EXPECT_EQ(server.last_request().find("\nX-Evil"), std::string::npos);
}

TEST(HttpFetcher, SendsHostAndNothingThatAsksForACoding) {
  ScriptedServer server(Serves("x"));
  Fetch("http://southern.localhost:" + server.port() + "/x");

  EXPECT_NE(server.last_request().find("Host: southern.localhost:" + server.port() + "\r\n"), std::string::npos);
  EXPECT_EQ(server.last_request().find("Accept-Encoding"), std::string::npos);
  EXPECT_EQ(server.last_request().find("User-Agent"), std::string::npos);
}

TEST(HttpFetcher, AsksNoProxyOfTheEnvironment) {
  ScriptedServer server(Serves("direct"));
  ScriptedServer proxy(Serves("by proxy"));
  qputenv("http_proxy", QByteArray::fromStdString(proxy.address()));
  const std::string text = Fetch(server.address());
  qunsetenv("http_proxy");

  EXPECT_EQ(text, "direct");
}

/// Whether each program that is started now would get the socket whose other end is at that port of this computer, or
/// not; nothing while there is no such socket.
std::optional<bool> IsInherited(const std::string &port) {
  for (int descriptor = 0; descriptor < 1024; ++descriptor) {
    sockaddr_in peer{};
    socklen_t size = sizeof(peer);
    if (getpeername(descriptor, reinterpret_cast<sockaddr *>(&peer), &size) == 0 && peer.sin_family == AF_INET &&
        std::to_string(ntohs(peer.sin_port)) == port)
      return (fcntl(descriptor, F_GETFD) & FD_CLOEXEC) == 0;
  }
  return {};
}

TEST(HttpFetcher, LeavesNoConnectionToAProgramThatIsStartedMeanwhile) {
  ScriptedServer server(Holds());
  RecordedFetcher http;
  http.Start(server.address());
  ASSERT_TRUE(QTest::qWaitFor([&] { return server.request_lines().size() == 1; }, fetch_timeout));

  EXPECT_EQ(IsInherited(server.port()), std::optional(false));
}

TEST(HttpFetcher, TakesEveryStatusForAnAnswer) {
  for (const char *status : {"404 Not Found", "500 Oh", "204 No", "301 Moved without a place", "304 Not Modified"}) {
    const bool has_body = std::string_view(status).starts_with("204") || std::string_view(status).starts_with("304");
    ScriptedServer server(Serves("page", status));
    EXPECT_EQ(Fetch(server.address()), has_body ? "" : "page") << status;
  }
}

TEST(HttpFetcher, TakesABodyUpToTheEndOfTheConnection) {
  ScriptedServer server(Writes("HTTP/1.0 200 OK\r\n\r\nno length"));

  EXPECT_EQ(Fetch(server.address()), "no length");
}

TEST(HttpFetcher, ReadsABodyInChunks) {
  ScriptedServer server(
      Writes("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n"));

  EXPECT_EQ(Fetch(server.address()), "abcde");
}

TEST(HttpFetcher, ReadsABodyInChunksWithATrailer) {
  const std::string chunks = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\nTrailer: X-Sum\r\n\r\n3\r\nabc\r\n0\r\n";
  ScriptedServer whole(Writes(chunks + "X-Sum: 1\r\nX-More: 2\r\n\r\n"));
  EXPECT_EQ(Fetch(whole.address()), "abc");

  ScriptedServer cut(Writes(chunks + "X-Sum: 1\r\n"));
  EXPECT_EQ(Fetch(cut.address()), "failed");
}

TEST(HttpFetcher, TakesTheAnswerAfterAnInterimOne) {
  ScriptedServer whole(Writes("HTTP/1.1 103 Early Hints\r\n\r\nHTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nab"));
  EXPECT_EQ(Fetch(whole.address()), "ab");

  ScriptedServer cut(Writes("HTTP/1.1 103 Early Hints\r\n\r\nHTTP/1.1 200 OK\r\nConte"));
  EXPECT_EQ(Fetch(cut.address()), "failed");
}

TEST(HttpFetcher, DoesNotUnpackABody) {
  ScriptedServer server(
      Writes("HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nContent-Length: 3\r\nConnection: close\r\n\r\nabc"));

  EXPECT_EQ(Fetch(server.address()), "abc");
}

TEST(HttpFetcher, FailsWhenNobodyListens) {
  ScriptedServer server(Holds());
  const std::string address = server.address();
  server.Close();

  EXPECT_EQ(Fetch(address), "failed");
}

TEST(HttpFetcher, FailsForAHostThatCannotBeReached) { EXPECT_EQ(Fetch("http://255.255.255.255/"), "failed"); }

TEST(HttpFetcher, FailsForWhatIsNoAddress) {
  EXPECT_EQ(Fetch(""), "failed");
  EXPECT_EQ(Fetch("file:///etc/passwd"), "failed");
  EXPECT_EQ(Fetch("http://ho st/"), "failed");
}

TEST(HttpFetcher, FailsWhenTheAnswerEndsTooSoon) {
  ScriptedServer in_body(Writes("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nabc"));
  EXPECT_EQ(Fetch(in_body.address()), "failed");
  ScriptedServer in_head(Writes("HTTP/1.1 200 OK\r\nConte"));
  EXPECT_EQ(Fetch(in_head.address()), "failed");
  ScriptedServer in_chunk(Writes("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n50\r\nabc"));
  EXPECT_EQ(Fetch(in_chunk.address()), "failed");
  ScriptedServer at_once(Writes(""));
  EXPECT_EQ(Fetch(at_once.address()), "failed");
}

TEST(HttpFetcher, FailsForGarbage) {
  ScriptedServer server(Writes("\x01\x02 this is no answer\r\n\r\n"));

  EXPECT_EQ(Fetch(server.address()), "failed");
}

TEST(HttpFetcher, FailsWhenTheTimeHasPassed) {
  ScriptedServer server(Holds());
  RecordedFetcher http({.time = 150ms});
  QElapsedTimer time;
  time.start();

  EXPECT_EQ(Fetch(http, server.address()), "failed");
  EXPECT_GE(time.elapsed(), 140);
  EXPECT_LT(time.elapsed(), fetch_timeout);
}

TEST(HttpFetcher, HasSixtySecondsAndSixtyFourMebibytes) {
  const FetchLimits limits;
  EXPECT_EQ(limits.time, 60s);
  EXPECT_EQ(limits.size, 67'108'864U);
  EXPECT_EQ(limits.redirects, 5);
}

TEST(HttpFetcher, TakesABodyOfTheLargestSizeAndFailsForOneByteMore) {
  constexpr std::size_t size = 1000;
  const std::string largest(size, 'x');
  for (const std::string head : {"HTTP/1.0 200 OK\r\n\r\n", "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n"}) {
    ScriptedServer fits(Writes(head + largest));
    RecordedFetcher http({.size = size});
    EXPECT_EQ(Fetch(http, fits.address()), largest);
    ScriptedServer does_not(Writes(head + largest + "x"));
    EXPECT_EQ(Fetch(http, does_not.address()), "failed");
  }
}

TEST(HttpFetcher, FailsForABodyOverSixtyFourMebibytes) {
  constexpr int chunk = 1 << 20;
  ScriptedServer server([](QTcpSocket &connection, const std::string & /*request_line*/) {
    connection.write("HTTP/1.0 200 OK\r\n\r\n");
    const auto more = [&connection] {
      if (connection.bytesToWrite() < chunk)
        connection.write(QByteArray(chunk, 'x'));
    };
    QObject::connect(&connection, &QTcpSocket::bytesWritten, &connection, more);
    more();
  });

  EXPECT_EQ(Fetch(server.address()), "failed");
}

TEST(HttpFetcher, TakesAnAnswerThatComesAByteAtATime) {
  const std::string answer = "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhello";
  ScriptedServer server([&](QTcpSocket &connection, const std::string & /*request_line*/) {
    auto *timer = new QTimer(&connection);
    QObject::connect(timer, &QTimer::timeout, &connection, [&connection, answer, at = std::size_t{0}]() mutable {
      if (at < answer.size())
        connection.write(&answer[at++], 1);
    });
    timer->start(1);
  });

  EXPECT_EQ(Fetch(server.address()), "hello");
}

}  // namespace
}  // namespace borvane
