#include "support/fake_http.h"

#include <algorithm>
#include <stdexcept>

#include <gtest/gtest.h>

namespace borvane {

void FakeHttp::Serve(std::string_view address, std::string_view page, int waits) {
  servers_[std::string(address)] = {.waits = waits, .page = std::string(page)};
}

void FakeHttp::Refuse(std::string_view address) { servers_[std::string(address)] = {.is_reachable = false}; }

void FakeHttp::Break(std::string_view address) { servers_[std::string(address)] = {.is_broken = true}; }

bool FakeHttp::IsUnderWay(std::string_view address) const {
  return std::any_of(requests_.begin(), requests_.end(),
                     [&](const auto &entry) { return entry.second.address == address && !entry.second.is_done; });
}

FakeHttp::Server FakeHttp::ServerOf(std::string_view address) const {
  const auto server = servers_.find(std::string(address));
  return server == servers_.end() ? Server{.is_reachable = false} : server->second;
}

void FakeHttp::End(Request &request, TransferResult result) {
  request.is_done = true;
  request.result = std::move(result);
}

bool FakeHttp::PassWait() {
  bool has_ended = false;
  for (auto &[number, request] : requests_) {
    const Server server = ServerOf(request.address);
    ++request.waits;
    if (request.is_done || (server.holds && !request.fails) || request.waits < server.waits)
      continue;
    const bool fails = request.fails || !server.is_reachable;
    End(request, fails ? TransferResult{.failed = true, .text = {}} : TransferResult{.text = server.page});
    has_ended = true;
  }
  return has_ended;
}

bool FakeHttp::PassTime() {
  const auto oldest =
      std::find_if(requests_.begin(), requests_.end(), [](const auto &entry) { return !entry.second.is_done; });
  if (oldest == requests_.end())
    return false;
  Request &request = oldest->second;
  if (!ServerOf(request.address).holds)
    return true;  // its answer comes in a later wait
  const Date end = {request.started.seconds + seconds_to_time_out};
  if (clock_.Now() < end)
    clock_.Advance(static_cast<int>(end.seconds - clock_.Now().seconds));
  trace_.Add("time-out " + request.address);
  End(request, {.failed = true, .text = {}});
  return true;
}

TransferNumber FakeHttp::Start(std::string_view address) {
  trace_.Add("request " + std::string(address));
  if (ServerOf(address).is_broken)
    throw std::length_error("broken");
  const bool fails = requests_until_failure_ > 0 && --requests_until_failure_ == 0;
  requests_[++newest_] = {.address = std::string(address), .started = clock_.Now(), .fails = fails};
  return newest_;
}

bool FakeHttp::IsDone(TransferNumber transfer) const {
  const auto request = requests_.find(transfer);
  if (request == requests_.end()) {
    ADD_FAILURE() << "transfer " << transfer << " does not exist or has been taken";
    return true;
  }
  return request->second.is_done;
}

void FakeHttp::Cancel(TransferNumber transfer) {
  const auto request = requests_.find(transfer);
  if (request == requests_.end() || request->second.is_done)
    return;
  trace_.Add("cancel " + request->second.address);
  if (!ServerOf(request->second.address).is_stubborn)
    End(request->second, {.failed = true, .text = {}});
}

TransferResult FakeHttp::Take(TransferNumber transfer) {
  const auto request = requests_.find(transfer);
  if (request == requests_.end() || !request->second.is_done) {
    ADD_FAILURE() << "transfer " << transfer << " is taken before it is done, or twice";
    return {.failed = true, .text = {}};
  }
  TransferResult result = std::move(request->second.result);
  requests_.erase(request);
  return result;
}

}  // namespace borvane
