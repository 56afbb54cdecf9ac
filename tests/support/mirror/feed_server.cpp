#include "support/mirror/feed_server.h"

#include <QHostAddress>
#include <QProcess>
#include <QSslServer>
#include <QSslSocket>
#include <QTimer>
#include <utility>

#include <gtest/gtest.h>
namespace borvane::mirror {

FeedServer::FeedServer(Answer answer) : server_(std::make_unique<QTcpServer>()), answer_(std::move(answer)) {
  Listen();
  root_ = QString("http://127.0.0.1:%1").arg(port_.Number());
}

FeedServer::FeedServer(Answer answer, const QSslConfiguration &certified) : answer_(std::move(answer)) {
  auto server = std::make_unique<QSslServer>();
  server->setSslConfiguration(certified);
  server_ = std::move(server);
  Listen();
  root_ = QString("https://feeds.localhost:%1").arg(port_.Number());
}

void FeedServer::Listen() {
  EXPECT_TRUE(server_->listen(QHostAddress::LocalHost, port_.Number()));
  QObject::connect(server_.get(), &QTcpServer::pendingConnectionAvailable, server_.get(), [this] {
    while (QTcpSocket *connection = server_->nextPendingConnection()) {
      QObject::connect(connection, &QTcpSocket::readyRead, server_.get(), [this, connection] { Read(*connection); });
      Read(*connection);
    }
  });
}

QString FeedServer::Url(const QString &target) const { return root_ + target; }

void FeedServer::Read(QTcpSocket &connection) {
  const QByteArray request = connection.peek(connection.bytesAvailable());
  if (!request.endsWith("\r\n\r\n"))
    return;
  connection.readAll();
  requests_ += request;
  answer_(connection);
}

QByteArray HttpAnswer(const QByteArray &status, const QByteArray &body, const QByteArrayList &headers) {
  QByteArray text = "HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n";
  for (const QByteArray &header : headers)
    text += header + "\r\n";
  return text + "\r\n" + body;
}

FeedServer::Answer Sends(const QByteArray &bytes) {
  return [bytes](QTcpSocket &connection) {
    connection.write(bytes);
    connection.disconnectFromHost();
  };
}

FeedServer::Answer SendsWithoutEnd(const QByteArray &bytes, const QByteArray &more) {
  return [bytes, more](QTcpSocket &connection) {
    connection.write(bytes);
    auto *again = new QTimer(&connection);
    again->callOnTimeout(&connection, [&connection, more] {
      const auto *tls = qobject_cast<QSslSocket *>(&connection);
      if (connection.bytesToWrite() + (tls != nullptr ? tls->encryptedBytesToWrite() : 0) < more.size())
        connection.write(more);
    });
    again->start(0);
  };
}

FeedServer::Answer SendsSlowly(const QByteArray &bytes, const QByteArray &more, int pause_ms) {
  return [bytes, more, pause_ms](QTcpSocket &connection) {
    connection.write(bytes);
    auto *pause = new QTimer(&connection);
    pause->callOnTimeout(&connection, [&connection, more] { connection.write(more); });
    pause->start(pause_ms);
  };
}

QByteArray Gzip(const QByteArray &text) {
  QProcess gzip;
  gzip.start("gzip", {"-c"});
  gzip.write(text);
  gzip.closeWriteChannel();
  EXPECT_TRUE(gzip.waitForFinished(60'000) && gzip.exitCode() == 0);
  return gzip.readAllStandardOutput();
}

}  // namespace borvane::mirror
