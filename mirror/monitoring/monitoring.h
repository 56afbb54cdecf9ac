#pragma once

#include <functional>

#include "http/handler.h"
#include "monitoring/status.h"

namespace borvane::mirror {

/// Reports the state of the mirror, on every host: "/health" with 200 and "ok", or with 503 and a line for each thing
/// that is wrong; "/metrics" in the text form of Prometheus.
class Monitoring : public Handler {
 public:
  explicit Monitoring(std::function<Status()> look) : look_(std::move(look)) {}

  bool Serves(const QByteArray &target, const QByteArray &host) const override;
  void Handle(const Request &request, const QHostAddress &client, const Reply &reply) override;

 private:
  const std::function<Status()> look_;
};

}  // namespace borvane::mirror
