#pragma once

#include <map>
#include <string>

#include "platform/http_transfer.h"
#include "support/fake_clock.h"
#include "support/trace.h"

namespace borvane {

/// A network with scripted servers. An address without a server is an unreachable host. Answers come while the
/// program waits, not while it processes events.
class FakeHttp final : public HttpTransfer {
 public:
  /// A transfer without an answer fails after that time.
  static constexpr int seconds_to_time_out = 60;

  FakeHttp(Trace &trace, FakeClock &clock) : trace_(trace), clock_(clock) {}

  /// Answers requests of `address`, also those under way, with `page`. The answer comes at the wait with that number.
  void Serve(std::string_view address, std::string_view page, int waits = 1);
  void Refuse(std::string_view address);

  /// Requests of `address` throw a foreign exception.
  void Break(std::string_view address);

  /// Leaves requests of `address` without an answer. A stubborn one does not even end when it is cancelled.
  void Hold(std::string_view address) { servers_[std::string(address)] = {.holds = true}; }
  void HoldStubbornly(std::string_view address) {
    servers_[std::string(address)] = {.holds = true, .is_stubborn = true};
  }

  /// The request with that number, counted from 1 and from now, fails whatever its server answers.
  void FailRequest(int number) { requests_until_failure_ = number; }

  /// Whether a request of `address` is under way.
  bool IsUnderWay(std::string_view address) const;

  /// One wait passes: transfers whose answer is due end. Returns whether one has.
  bool PassWait();

  /// Nothing else happens: the oldest transfer without an answer times out, and the clock moves to that moment. Returns
  /// false when no transfer is under way.
  bool PassTime();

  TransferNumber Start(std::string_view address) override;
  bool IsDone(TransferNumber transfer) const override;
  void Cancel(TransferNumber transfer) override;
  TransferResult Take(TransferNumber transfer) override;

 private:
  struct Server {
    bool is_reachable = true;
    bool is_broken = false;
    bool holds = false;
    bool is_stubborn = false;
    int waits = 1;
    std::string page = {};
  };

  struct Request {
    std::string address;
    Date started;
    int waits = 0;
    bool fails = false;
    bool is_done = false;
    TransferResult result = {};
  };

  Server ServerOf(std::string_view address) const;
  static void End(Request &request, TransferResult result);

  Trace &trace_;
  FakeClock &clock_;
  std::map<std::string, Server> servers_;
  std::map<TransferNumber, Request> requests_;
  TransferNumber newest_ = 0;
  int requests_until_failure_ = 0;
};

}  // namespace borvane
