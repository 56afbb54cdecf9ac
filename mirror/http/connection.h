#pragma once

#include <QDeadlineTimer>
#include <QHostAddress>
#include <QTcpSocket>
#include <functional>

#include "http/answer.h"
#include "http/limits.h"
#include "http/request_reader.h"

namespace borvane::mirror {

/// Takes the answer to a request, once, in the server's thread.
using Reply = std::function<void(const Answer &)>;

/// Answers the request of the client at that address, at once or later.
using Handler = std::function<void(const Request &, const QHostAddress &client, const Reply &reply)>;

/// One client's connection: reads requests, one behind the other, and writes the answers in their order. It deletes
/// itself when it has ended.
class Connection : public QObject {
 public:
  /// Takes over the open socket `descriptor`. Limits and handler must outlive the connection.
  Connection(qintptr descriptor, const Limits &limits, const Handler &handler, QObject *parent);

  /// Answers with `status`, whatever the client has sent or will send, and ends the connection.
  void Refuse(int status);

  /// Ends the connection when its time for the next step is over.
  void CheckTime();

 private:
  enum class State {
    Idle,       ///< waits for a request's first byte
    InHead,     ///< a request has begun
    Answering,  ///< waits for the answer to a request
    Closing,    ///< the last answer is on its way
    Lingering,  ///< the last answer has gone; what still comes is thrown away
  };

  void ReadOn();
  bool AnswerNext();
  void Ask(const Request &request);
  void Give(const QByteArray &text, Afterwards afterwards);
  void Send(const QByteArray &text);
  void OnBytesWritten();
  void Close();
  void Enter(State state);
  void RestartTime();

  const Limits &limits_;
  const Handler &handler_;
  QTcpSocket socket_;
  QByteArray received_;     ///< what no request has taken yet
  std::size_t enough_ = 0;  ///< see RequestReading::enough
  bool worth_reading_ = false;
  bool sending_ = false;
  bool asking_ = false;  ///< the handler is being called
  State state_ = State::Idle;
  QDeadlineTimer deadline_;
};

}  // namespace borvane::mirror
