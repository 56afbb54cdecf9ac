#pragma once

#include <QTcpServer>
#include <QTcpSocket>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "support/reserved_port.h"

namespace borvane {

/// A web server on a port of this computer that does what the test has set, byte by byte.
class ScriptedServer {
 public:
  /// What is done with a request, given as its first line.
  using Answer = std::function<void(QTcpSocket &connection, const std::string &request_line)>;

  explicit ScriptedServer(Answer answer);

  /// The address of `target` here.
  std::string address(std::string_view target = "/") const;
  std::string port() const { return std::to_string(port_.Number()); }

  /// The requests so far: their first lines, and the last one whole.
  const std::vector<std::string> &request_lines() const { return request_lines_; }
  const std::string &last_request() const { return last_request_; }

  /// Takes no more connections: the port refuses them.
  void Close() { server_.close(); }

 private:
  void Read(QTcpSocket &connection);

  ReservedPort port_;  ///< its own also after Close()
  QTcpServer server_;
  Answer answer_;
  std::vector<std::string> request_lines_;
  std::string last_request_;
};

/// Answers every request with that body and closes.
ScriptedServer::Answer Serves(const std::string &body, const std::string &status = "200 OK");

/// Writes these bytes and closes.
ScriptedServer::Answer Writes(const std::string &bytes);

/// Reads the request and says nothing.
ScriptedServer::Answer Holds();

}  // namespace borvane
