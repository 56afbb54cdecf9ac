#pragma once

#include <vector>

#include "http/handler.h"

namespace borvane::mirror {

/// Passes each request to the first of several handlers that serves its target; 404 when none does.
class Router : public Handler {
 public:
  /// The handlers must outlive the router.
  explicit Router(std::vector<Handler *> handlers) : handlers_(std::move(handlers)) {}

  bool Serves(const QByteArray &target, const QByteArray &host) const override;
  void Handle(const Request &request, const QHostAddress &client, const Reply &reply) override;
  Answer Refusal(int status, const QByteArray &target, const QByteArray &host) const override;

 private:
  Handler *Find(const QByteArray &target, const QByteArray &host) const;

  const std::vector<Handler *> handlers_;
};

}  // namespace borvane::mirror
