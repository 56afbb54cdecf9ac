#pragma once

#include <QHostAddress>
#include <functional>

#include "http/answer.h"
#include "http/request_reader.h"

namespace borvane::mirror {

/// Takes the answer to a request, once, in the server's thread.
using Reply = std::function<void(const Answer &)>;

/// Answers the requests for some of the server's targets.
class Handler {
 public:
  virtual ~Handler() = default;

  /// Whether this handler is responsible for the target, path and perhaps a query, on the host that the request names.
  virtual bool Serves(const QByteArray &target, const QByteArray &host) const = 0;

  /// Answers the request of the client at that address, at once or later.
  virtual void Handle(const Request &request, const QHostAddress &client, const Reply &reply) = 0;

  /// The answer with an error status to a request for the target, which may be cut short or malformed.
  virtual Answer Refusal(int status, const QByteArray & /*target*/, const QByteArray & /*host*/) const {
    return StatusPage(status);
  }
};

}  // namespace borvane::mirror
