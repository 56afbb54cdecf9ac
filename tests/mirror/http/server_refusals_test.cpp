#include <gtest/gtest.h>

#include "support/mirror/client.h"
#include "support/mirror/echo_server.h"

// What a server does not take for a request.

namespace borvane::mirror {
namespace {

TEST(Server, RefusesWithAPageAndEndsTheConnection) {
  const EchoServer server;
  const auto refusal = [&](const QByteArray &bytes) {
    Client client(server.Port());
    client.Send(bytes);
    const std::optional<Response> response = client.Read();
    EXPECT_TRUE(response) << bytes.left(40).constData();
    if (!response)
      return 0;
    EXPECT_TRUE(response->body.contains("<h1>" + QByteArray::number(response->status)));
    EXPECT_EQ(response->headers["connection"], "close");
    EXPECT_TRUE(client.EndsWithin(15'000)) << bytes.left(40).constData();
    return response->status;
  };
  EXPECT_EQ(refusal("hello\r\n"), 400);
  EXPECT_EQ(refusal("POST / HTTP/1.1\r\nContent-Length: 5\r\n\r\nhello"), 405);
  EXPECT_EQ(refusal("GET / HTTP/1.1\r\nContent-Length: 5\r\n\r\nhello"), 413);
  EXPECT_EQ(refusal("GET / HTTP/3.0\r\n\r\n"), 505);
  EXPECT_EQ(refusal("GET / HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n0\r\n\r\n"), 501);
  EXPECT_EQ(refusal("GET /" + QByteArray(1'000'000, 'x')), 414) << "a line without an end";
  EXPECT_EQ(refusal("GET /" + QByteArray(64 * 1024, 'x') + " HTTP/1.1\r\n\r\n"), 414);
  EXPECT_EQ(refusal("GET / HTTP/1.1\r\n" + QByteArray("A: b\r\n").repeated(100'000) + "\r\n"), 431);
  EXPECT_EQ(server.Requests(), 0);
}

TEST(Server, SaysWhichMethodsItAllows) {
  const EchoServer server;
  Client client(server.Port());
  client.Send("DELETE / HTTP/1.1\r\n\r\n");
  EXPECT_EQ(client.Read().value().headers["allow"], "GET, HEAD");
}

TEST(Server, AnswersTheRequestsInFrontOfARefusal) {
  const EchoServer server;
  Client client(server.Port());
  client.Send("GET /a HTTP/1.1\r\n\r\nnonsense\r\n");
  EXPECT_EQ(client.Read().value().body, "GET /a");
  EXPECT_EQ(client.Read().value().status, 400);
  EXPECT_TRUE(client.EndsWithin(15'000));
}

}  // namespace
}  // namespace borvane::mirror
