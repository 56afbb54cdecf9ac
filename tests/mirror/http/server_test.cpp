#include "http/server.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QThread>
#include <atomic>
#include <cerrno>
#include <future>
#include <memory>

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "support/mirror/client.h"

namespace borvane::mirror {
namespace {

/// Answers with the request's method and target; "/big" with ten million bytes of its own, "/shared" with as many that
/// all such answers share. A refusal repeats the target.
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
    reply(answer);
  }

  Answer Refusal(int status, const QByteArray &target, const QByteArray & /*host*/) const override {
    Answer answer = StatusPage(status);
    answer.body += target.left(20);
    return answer;
  }

  int Requests() const { return requests_; }

  /// Whether a connection still holds the first answer to "/big".
  bool IsFirstBigHeld() const { return !first_big_.isDetached(); }

 private:
  QByteArray first_big_;
  const QByteArray shared_ = QByteArray(10'000'000, 's');
  std::atomic<int> requests_ = 0;
};

/// A server in a thread of its own, with an echo handler.
class EchoServer {
 public:
  explicit EchoServer(Limits limits = {}) {
    thread_.reset(QThread::create([this, limits] {
      Server server(limits, handler_);
      ready_.set_value(server.Listen(QHostAddress::LocalHost, 0).value_or(0));
      QEventLoop().exec();
    }));
    thread_->start();
    port_ = ready_.get_future().get();
  }
  ~EchoServer() {
    thread_->quit();
    thread_->wait();
  }

  quint16 Port() const { return port_; }
  int Requests() const { return handler_.Requests(); }
  bool IsFirstBigHeld() const { return handler_.IsFirstBigHeld(); }

 private:
  EchoHandler handler_;
  std::promise<quint16> ready_;
  std::unique_ptr<QThread> thread_;
  quint16 port_ = 0;
};

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

TEST(Server, AnswersTwoRequestsOfOnePacketInTheirOrder) {
  const EchoServer server;
  Client client(server.Port());
  client.Send("GET /1 HTTP/1.1\r\n\r\nGET /2 HTTP/1.1\r\n\r\nGET /3 HT");
  EXPECT_EQ(client.Read().value().body, "GET /1");
  EXPECT_EQ(client.Read().value().body, "GET /2");
  client.Send("TP/1.1\r\n\r\n");
  EXPECT_EQ(client.Read().value().body, "GET /3");
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

TEST(Server, TakesATargetOf64KiB) {
  const EchoServer server;
  Client client(server.Port());
  const QByteArray target = '/' + QByteArray(64 * 1024 - 1, 'x');
  client.Send("GET " + target + " HTTP/1.1\r\n\r\n");
  EXPECT_EQ(client.Read().value().body, "GET " + target);
}

TEST(Server, AnswersTheRequestsInFrontOfARefusal) {
  const EchoServer server;
  Client client(server.Port());
  client.Send("GET /a HTTP/1.1\r\n\r\nnonsense\r\n");
  EXPECT_EQ(client.Read().value().body, "GET /a");
  EXPECT_EQ(client.Read().value().status, 400);
  EXPECT_TRUE(client.EndsWithin(15'000));
}

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

TEST(Server, SendsALongAnswerWhole) {
  const EchoServer server;
  Client client(server.Port());
  client.Send(QByteArray("GET /big HTTP/1.1\r\n\r\n").repeated(5));
  for (int i = 0; i < 5; ++i)
    EXPECT_EQ(client.Read().value().body, QByteArray(10'000'000, 'x'));
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
