#include "support/desktop/scripted_server.h"

#include <QHostAddress>
#include <utility>

namespace borvane {

ScriptedServer::ScriptedServer(Answer answer) : answer_(std::move(answer)) {
  EXPECT_TRUE(server_.listen(QHostAddress::LocalHost, port_.Number()));
  QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
    while (QTcpSocket *connection = server_.nextPendingConnection())
      QObject::connect(connection, &QTcpSocket::readyRead, &server_, [this, connection] { Read(*connection); });
  });
}

std::string ScriptedServer::address(std::string_view target) const {
  return "http://127.0.0.1:" + port() + std::string(target);
}

void ScriptedServer::Read(QTcpSocket &connection) {
  const QByteArray request = connection.peek(connection.bytesAvailable());
  if (!request.endsWith("\r\n\r\n"))
    return;
  connection.readAll();
  last_request_ = request.toStdString();
  request_lines_.push_back(last_request_.substr(0, last_request_.find("\r\n")));
  answer_(connection, request_lines_.back());
}

ScriptedServer::Answer Serves(const std::string &body, const std::string &status) {
  return Writes("HTTP/1.1 " + status + "\r\nContent-Length: " + std::to_string(body.size()) +
                "\r\nConnection: close\r\n\r\n" + body);
}

ScriptedServer::Answer Writes(const std::string &bytes) {
  return [bytes](QTcpSocket &connection, const std::string & /*request_line*/) {
    connection.write(QByteArray::fromStdString(bytes));
    connection.disconnectFromHost();
  };
}

ScriptedServer::Answer Holds() {
  return [](QTcpSocket & /*connection*/, const std::string & /*request_line*/) {};
}

}  // namespace borvane
