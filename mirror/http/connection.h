#pragma once

#include <QDeadlineTimer>
#include <QHostAddress>

#include "http/handler.h"
#include "http/limits.h"
#include "http/repeated_bodies.h"
#include "http/socket.h"
#include "http/traffic.h"
#include "http/unsent_bodies.h"

namespace borvane::mirror {

/// One client's connection: reads requests, one after the other, and sends the answers in their order. It deletes
/// itself when it has ended.
class Connection : public QObject {
 public:
  /// What all connections of a server share; it outlives them.
  struct Shared {
    const Limits &limits;
    Handler &handler;
    UnsentBodies &bodies;
    RepeatedBodies &repeated_bodies;
    Traffic &traffic;
  };

  /// Takes over the connected socket `descriptor` of the client at that address.
  Connection(qintptr descriptor, const QHostAddress &client, const Shared &shared, QObject *parent);
  ~Connection() override;

  /// Answers the first request with that error status, and ends the connection.
  void RefuseRequest(int status);

  /// Ends the connection when its time for the next step is over.
  void CheckTime();

  /// Whether the client has to take more of a body.
  bool HasUnsentBody() const { return !body_.isEmpty(); }

  /// When the time for the next step is over.
  const QDeadlineTimer &deadline() const { return deadline_; }

  /// Ends the connection at once.
  void Abort();

 private:
  enum class State {
    Idle,       ///< waits for a request's first byte
    InHead,     ///< a request has begun
    Answering,  ///< waits for the answer to a request
    Sending,    ///< an answer is on its way
    Lingering,  ///< the last answer has gone; what still comes is dropped
    Ended,
  };

  void OnReceivable();
  void ReadRequests();
  void Discard();
  bool AnswerNext();
  void Ask();
  void Refuse(int status);
  void Give(const Answer &answer, Afterwards afterwards);
  void SendOn();
  bool SendHead();
  bool SendBody();
  bool OnSome(qsizetype count, qsizetype left);
  void OnSent();
  void DropBody();
  void Close();
  void Enter(State state);
  void RestartTime();

  const Shared shared_;
  const QHostAddress client_;
  Socket socket_;
  QByteArray received_;             ///< what no request has taken yet
  std::size_t refused_beyond_ = 0;  ///< see RequestReading
  bool worth_reading_ = false;      ///< whether `received_` may hold more of a request than at the last reading
  Request request_;                 ///< the one to be answered, as far as it was read
  int refusal_ = 0;                 ///< the status for any request; 0 when requests are answered
  bool asking_ = false;             ///< the handler is being called

  QByteArray head_;  ///< of the answer that is being sent, with the body when that is short
  QByteArray body_;
  std::shared_ptr<const MemoryFile> file_;  ///< with the bytes of the body; null when it is sent from where it is
  qsizetype sent_ = 0;                      ///< bytes of head and body
  Afterwards afterwards_ = Afterwards::KeepAlive;

  State state_ = State::Idle;
  QDeadlineTimer deadline_;
};

}  // namespace borvane::mirror
