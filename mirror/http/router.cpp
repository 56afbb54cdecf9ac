#include "http/router.h"

#include <algorithm>

namespace borvane::mirror {

bool Router::Serves(const QByteArray &target, const QByteArray &host) const { return Find(target, host) != nullptr; }

void Router::Handle(const Request &request, const QHostAddress &client, const Reply &reply) {
  if (Handler *handler = Find(request.target, request.host))
    handler->Handle(request, client, reply);
  else
    reply(StatusPage(404));
}

Answer Router::Refusal(int status, const QByteArray &target, const QByteArray &host) const {
  const Handler *handler = Find(target, host);
  return handler ? handler->Refusal(status, target, host) : StatusPage(status);
}

Handler *Router::Find(const QByteArray &target, const QByteArray &host) const {
  const auto found = std::find_if(handlers_.begin(), handlers_.end(),
                                  [&](const Handler *handler) { return handler->Serves(target, host); });
  return found == handlers_.end() ? nullptr : *found;
}

}  // namespace borvane::mirror
