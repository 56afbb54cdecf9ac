#include "monitoring/monitoring.h"

namespace borvane::mirror {

namespace {

constexpr const char *health_path = "/health";
constexpr const char *metrics_path = "/metrics";

Answer HealthAnswer(const QStringList &faults) {
  const QByteArray body = faults.isEmpty() ? QByteArray("ok") : faults.join('\n').toUtf8();
  return {.status = faults.isEmpty() ? 200 : 503, .type = "text/plain; charset=utf-8", .body = body + '\n'};
}

}  // namespace

bool Monitoring::Serves(const QByteArray &target, const QByteArray & /*host*/) const {
  const QByteArray path = PathOf(target);
  return path == health_path || path == metrics_path;
}

void Monitoring::Handle(const Request &request, const QHostAddress & /*client*/, const Reply &reply) {
  if (PathOf(request.target) == health_path)
    reply(HealthAnswer(FaultsOf(look_())));
  else
    reply({.type = "text/plain; version=0.0.4; charset=utf-8", .body = MetricsText(look_())});
}

}  // namespace borvane::mirror
