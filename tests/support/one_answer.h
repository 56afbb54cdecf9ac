#pragma once

#include <string>
#include <utility>

#include "support/idle_host.h"

namespace borvane {

/// A network on which every request has the same answer at once.
class OneAnswer final : public HttpTransfer {
 public:
  void Set(std::string answer) { answer_ = std::move(answer); }

  TransferNumber Start(std::string_view /*address*/) override { return 1; }
  bool IsDone(TransferNumber /*transfer*/) const override { return true; }
  void Cancel(TransferNumber /*transfer*/) override {}
  TransferResult Take(TransferNumber /*transfer*/) override { return {.text = answer_}; }

 private:
  std::string answer_;
};

/// The services of `host` on that network.
inline Platform ServicesOver(OneAnswer &network, IdleHost &host) {
  const Platform idle = host.Services();
  return {.settings = idle.settings,
          .http = network,
          .events = idle.events,
          .clock = idle.clock,
          .random = idle.random,
          .message_box = idle.message_box,
          .shell = idle.shell,
          .files = idle.files,
          .sound = idle.sound,
          .region = idle.region,
          .process = idle.process};
}

}  // namespace borvane
