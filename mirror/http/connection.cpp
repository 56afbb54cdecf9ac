#include "http/connection.h"

#include <QPointer>
#include <utility>

namespace borvane::mirror {

namespace {

/// A body up to this size is sent with its head, a longer one from where it is, without a copy.
constexpr qsizetype short_body = 16 * 1024;

}  // namespace

Connection::Connection(qintptr descriptor, const QHostAddress &client, const Shared &shared, QObject *parent)
    : QObject(parent),
      shared_(shared),
      client_(client),
      socket_(
          descriptor, [this] { OnReceivable(); }, [this] { SendOn(); }) {
  Enter(State::Idle);
}

Connection::~Connection() { DropBody(); }

void Connection::RefuseRequest(int status) {
  refusal_ = status;
  RestartTime();
}

void Connection::CheckTime() {
  if (!deadline_.hasExpired())
    return;
  switch (state_) {
    case State::InHead:
      // The form of a refusal depends on the request line.
      if (!request_.target.isEmpty()) {
        Refuse(408);
        break;
      }
      [[fallthrough]];
    case State::Idle:
      Close();
      break;
    case State::Answering:
      Refuse(503);
      break;
    case State::Sending:
    case State::Lingering:
    case State::Ended:
      Abort();
  }
}

void Connection::OnReceivable() {
  if (state_ == State::Idle || state_ == State::InHead)
    ReadRequests();
  else if (state_ == State::Lingering)
    Discard();
  else
    // What is not read stays in the system's buffer, so that a client that sends faster than it takes is slowed down.
    socket_.WatchReceiving(false);
}

void Connection::ReadRequests() {
  bool has_received = false;
  while (state_ == State::Idle || state_ == State::InHead) {
    if (worth_reading_ && AnswerNext())
      continue;
    // A client that asks without a pause would keep all others waiting.
    if (std::exchange(has_received, true)) {
      socket_.WatchReceiving(true);
      return;
    }
    const qsizetype before = received_.size();
    switch (socket_.Receive(received_)) {
      case Received::Bytes:
        worth_reading_ =
            received_.indexOf('\n', before) >= 0 || static_cast<std::size_t>(received_.size()) > refused_beyond_;
        if (state_ == State::Idle)
          Enter(State::InHead);
        break;
      case Received::Nothing:
        socket_.WatchReceiving(true);
        return;
      case Received::End:
        Close();
        return;
      case Received::Failure:
        Abort();
        return;
    }
  }
}

void Connection::Discard() {
  QByteArray dropped;
  const Received outcome = socket_.Receive(dropped);
  if (outcome == Received::End || outcome == Received::Failure)
    Abort();
}

bool Connection::AnswerNext() {
  const std::string_view bytes(received_.constData(), static_cast<std::size_t>(received_.size()));
  const RequestReading reading = ReadRequest(bytes, shared_.limits);
  request_ = reading.request;
  switch (reading.status) {
    case RequestReading::Status::Incomplete:
      refused_beyond_ = reading.refused_beyond;
      worth_reading_ = false;
      return false;
    case RequestReading::Status::Refused:
      Refuse(reading.refusal);
      return true;
    case RequestReading::Status::Complete:
      received_.remove(0, static_cast<qsizetype>(reading.used));
      refused_beyond_ = 0;
      if (refusal_ != 0)
        Refuse(refusal_);
      else
        Ask();
      return true;
  }
  return false;
}

void Connection::Ask() {
  Enter(State::Answering);
  asking_ = true;
  // The client may have gone when the answer comes, or got another one for want of it.
  shared_.handler.Handle(request_, client_, [connection = QPointer<Connection>(this)](const Answer &answer) {
    if (connection && connection->state_ == State::Answering)
      connection->Give(answer, connection->request_.keep_alive ? Afterwards::KeepAlive : Afterwards::Close);
  });
  asking_ = false;
}

void Connection::Refuse(int status) {
  Give(shared_.handler.Refusal(status, request_.target, request_.host), Afterwards::Close);
}

void Connection::Give(const Answer &answer, Afterwards afterwards) {
  ++shared_.traffic.answers[answer.status];
  head_ = HeadText(answer, afterwards);
  const QByteArray body = request_.method == "HEAD" ? QByteArray() : answer.body;
  if (body.size() <= short_body) {
    head_ += body;
  } else {
    body_ = body;
    shared_.bodies.Add(body_);
    file_ = shared_.repeated_bodies.FileOf(body_);
  }
  sent_ = 0;
  afterwards_ = afterwards;
  Enter(State::Sending);
  SendOn();
}

void Connection::SendOn() {
  if (state_ == State::Sending && SendHead() && SendBody())
    OnSent();
}

/// Sends what is left of the head; whether that was all of it.
bool Connection::SendHead() {
  if (sent_ >= head_.size())
    return true;
  const QByteArrayView rest = QByteArrayView(head_).sliced(sent_);
  return OnSome(socket_.Send(rest, HasUnsentBody()), rest.size());
}

/// Sends what is left of the body; whether that was all of it.
bool Connection::SendBody() {
  const qsizetype from = sent_ - head_.size();
  const qsizetype left = body_.size() - from;
  if (left == 0)
    return true;
  qsizetype count = file_ ? socket_.SendFile(*file_, from, left) : -1;
  if (count < 0) {
    // Also where a system does not send from such a file.
    file_.reset();
    count = socket_.Send(QByteArrayView(body_).sliced(from));
  }
  return OnSome(count, left);
}

/// Notes that `count` bytes of those that were left have been sent, or that the connection is broken. Returns whether
/// they were all.
bool Connection::OnSome(qsizetype count, qsizetype left) {
  if (count < 0) {
    Abort();
    return false;
  }
  sent_ += count;
  if (count > 0)
    RestartTime();
  if (count < left)
    socket_.WatchSending(true);
  return count == left;
}

void Connection::OnSent() {
  socket_.WatchSending(false);
  head_.clear();
  DropBody();
  if (afterwards_ == Afterwards::Close) {
    Close();
    return;
  }
  request_ = {};
  worth_reading_ = !received_.isEmpty();
  Enter(received_.isEmpty() ? State::Idle : State::InHead);
  // An answer that came at once came from ReadRequests, which continues on its own.
  if (!asking_)
    ReadRequests();
}

void Connection::DropBody() {
  if (HasUnsentBody())
    shared_.bodies.Remove(body_);
  body_.clear();
  file_.reset();
}

void Connection::Close() {
  received_.clear();
  // To close at once would throw away the answer as well when bytes of the client are still unread.
  socket_.EndSending();
  Enter(State::Lingering);
  socket_.WatchReceiving(true);
}

void Connection::Abort() {
  socket_.WatchReceiving(false);
  socket_.WatchSending(false);
  DropBody();
  state_ = State::Ended;
  deleteLater();
}

void Connection::Enter(State state) {
  state_ = state;
  RestartTime();
}

void Connection::RestartTime() {
  const Limits &limits = shared_.limits;
  if (state_ == State::Sending)
    deadline_.setRemainingTime(limits.stall_ms);
  else if (state_ == State::Answering)
    deadline_.setRemainingTime(limits.answer_ms);
  else if (state_ == State::Lingering)
    deadline_.setRemainingTime(limits.linger_ms);
  else if (state_ == State::InHead || refusal_ != 0)
    deadline_.setRemainingTime(limits.head_ms);
  else
    deadline_.setRemainingTime(limits.idle_ms);
}

}  // namespace borvane::mirror
