#include "http/connection.h"

#include <QPointer>
#include <QtGlobal>

#ifdef Q_OS_WIN
#include <winsock2.h>
#else
#include <sys/socket.h>
#endif

namespace borvane::mirror {

namespace {

constexpr qint64 chunk_size = 16 * 1024;

/// Tells the other side that nothing more will be sent, and goes on receiving, which Qt's sockets cannot.
void EndSending(qintptr descriptor) {
#ifdef Q_OS_WIN
  ::shutdown(static_cast<SOCKET>(descriptor), SD_SEND);
#else
  ::shutdown(static_cast<int>(descriptor), SHUT_WR);
#endif
}

}  // namespace

Connection::Connection(qintptr descriptor, const Limits &limits, const Handler &handler, QObject *parent)
    : QObject(parent), limits_(limits), handler_(handler) {
  connect(&socket_, &QTcpSocket::readyRead, this, [this] { ReadOn(); });
  connect(&socket_, &QTcpSocket::bytesWritten, this, [this] { OnBytesWritten(); });
  connect(&socket_, &QTcpSocket::disconnected, this, [this] { deleteLater(); });
  if (!socket_.setSocketDescriptor(descriptor)) {
    deleteLater();
    return;
  }
  // What is not read stays in the system's buffer, so that a client that sends faster than it takes is slowed down.
  socket_.setReadBufferSize(chunk_size);
  socket_.setSocketOption(QAbstractSocket::LowDelayOption, 1);
  Enter(State::Idle);
}

void Connection::Refuse(int status) {
  Send(WireText(StatusPage(status), true, Afterwards::Close));
  Close();
}

void Connection::CheckTime() {
  if (!deadline_.hasExpired())
    return;
  if (state_ == State::InHead && socket_.bytesToWrite() == 0)
    Refuse(408);
  else if (state_ == State::Answering && socket_.bytesToWrite() == 0)
    Refuse(503);
  else if (state_ == State::Idle && socket_.bytesToWrite() == 0)
    Close();
  else
    socket_.abort();
}

void Connection::ReadOn() {
  while (socket_.isOpen() && (state_ == State::Idle || state_ == State::InHead)) {
    if (static_cast<std::size_t>(socket_.bytesToWrite()) > limits_.unsent)
      return;
    if (worth_reading_ && AnswerNext())
      continue;
    const QByteArray chunk = socket_.read(chunk_size);
    if (chunk.isEmpty())
      return;
    received_ += chunk;
    worth_reading_ = chunk.contains('\n') || static_cast<std::size_t>(received_.size()) > enough_;
    if (state_ == State::Idle)
      Enter(State::InHead);
  }
  if (socket_.isOpen() && state_ != State::Answering)
    socket_.readAll();
}

bool Connection::AnswerNext() {
  const std::string_view bytes(received_.constData(), static_cast<std::size_t>(received_.size()));
  const RequestReading reading = ReadRequest(bytes, limits_);
  switch (reading.status) {
    case RequestReading::Status::Incomplete:
      enough_ = reading.enough;
      worth_reading_ = false;
      return false;
    case RequestReading::Status::Refused:
      Refuse(reading.refusal);
      return true;
    case RequestReading::Status::Complete:
      received_.remove(0, static_cast<qsizetype>(reading.used));
      enough_ = 0;
      Ask(reading.request);
      return true;
  }
  return false;
}

void Connection::Ask(const Request &request) {
  const Afterwards afterwards = request.keep_alive ? Afterwards::KeepAlive : Afterwards::Close;
  const bool with_body = request.method != "HEAD";
  Enter(State::Answering);
  asking_ = true;
  // The client may have gone when the answer comes, or got another one for want of it.
  handler_(request, socket_.peerAddress(),
           [connection = QPointer<Connection>(this), afterwards, with_body](const Answer &answer) {
             if (connection && connection->socket_.isOpen() && connection->state_ == State::Answering)
               connection->Give(WireText(answer, with_body, afterwards), afterwards);
           });
  asking_ = false;
}

void Connection::Give(const QByteArray &text, Afterwards afterwards) {
  Send(text);
  worth_reading_ = !received_.isEmpty();
  if (afterwards == Afterwards::Close)
    Close();
  else
    Enter(received_.isEmpty() ? State::Idle : State::InHead);
  // An answer that came at once came from ReadOn, which goes on by itself.
  if (!asking_)
    ReadOn();
}

void Connection::Send(const QByteArray &text) {
  sending_ = true;
  socket_.write(text);
  socket_.flush();
  sending_ = false;
}

void Connection::OnBytesWritten() {
  RestartTime();
  // What was written at once is told from inside Send, in the middle of a reading.
  if (sending_)
    return;
  if (state_ == State::Closing && socket_.bytesToWrite() == 0)
    Close();
  else if (worth_reading_ || socket_.bytesAvailable() > 0)
    ReadOn();
}

void Connection::Close() {
  received_.clear();
  if (socket_.bytesToWrite() > 0) {
    Enter(State::Closing);
    return;
  }
  // To close at once would throw away the answer as well when bytes of the client are still unread.
  EndSending(socket_.socketDescriptor());
  Enter(State::Lingering);
}

void Connection::Enter(State state) {
  state_ = state;
  RestartTime();
}

void Connection::RestartTime() {
  if (socket_.bytesToWrite() > 0)
    deadline_.setRemainingTime(limits_.stall_ms);
  else if (state_ == State::Idle)
    deadline_.setRemainingTime(limits_.idle_ms);
  else if (state_ == State::InHead)
    deadline_.setRemainingTime(limits_.head_ms);
  else if (state_ == State::Answering)
    deadline_.setRemainingTime(limits_.answer_ms);
  else
    deadline_.setRemainingTime(limits_.linger_ms);
}

}  // namespace borvane::mirror
